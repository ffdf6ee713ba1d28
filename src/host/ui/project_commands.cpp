#include "host/ui/project_commands.h"

#include <string>
#include <utility>

#include "host/code_reading.h"
#include "host/ui/project_form.h"
#include "host/ui/reading_window.h"
#include "library/ui/file_messages.h"
#include "text/user_texts.h"
#include "toolkit/held_flag.h"

namespace declarium {

ProjectCommands::ProjectCommands(Toolkit& toolkit, Form& owner, const DisplayColors& colors,
                                 ProjectCommandLinks links)
    : toolkit_(toolkit), owner_(owner), colors_(colors), links_(std::move(links)) {}

void ProjectCommands::ShowProject() {
  // Reading lets events in.
  if (running_) return;
  const HeldFlag running(running_);
  const auto connection = links_.connection();
  if (!connection) return;
  auto project = Read(*connection, owner_);
  if (!project) return;
  std::optional<ProjectPlan> plan;
  {
    const HourglassPointer hourglass(toolkit_);
    plan.emplace(*std::move(project), links_.libraries());
  }
  declarium::ShowProject(toolkit_, owner_, colors_, *plan,
                         {.read = [&](Form& owner) { return Read(*connection, owner); },
                          .is_connected = [&] { return connection->IsConnected(); }});
}

std::optional<ReadProject> ProjectCommands::Read(HostConnection& connection, Form& owner) {
  const auto application = connection.Application();
  auto project =
      application
          ? application->ActiveProject()
          : HostResult<std::unique_ptr<HostProject>>(std::unexpected(HostError{kUnreliableAnswer}));
  if (!project || !connection.IsConnected()) {
    Say(texts::kHostDoesNotAnswer);
    return std::nullopt;
  }
  if (!*project) {
    Say(texts::kNoProjectToRead);
    return std::nullopt;
  }
  ProjectReading reading(*std::move(project));
  const auto end =
      ReadWithWindow(toolkit_, owner, reading, [&connection] { return connection.IsConnected(); });
  if (end == ReadingEnd::kFailed) Say(texts::kHostDoesNotAnswer);
  if (end != ReadingEnd::kWhole) return std::nullopt;
  return ReadProject{.name = reading.ProjectName(),
                     .codes = std::move(reading.Modules()),
                     .unread = reading.Unread()};
}

void ProjectCommands::Say(std::u16string_view text) {
  toolkit_.ShowMessage({std::u16string(text), MessageButtons::kOk, MessageIcon::kExclamation});
}

}  // namespace declarium
