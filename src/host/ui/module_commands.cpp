#include "host/ui/module_commands.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <optional>
#include <utility>

#include "host/code_reading.h"
#include "host/line_edits.h"
#include "host/ui/edit_outcome.h"
#include "host/ui/reading_window.h"
#include "library/kind.h"
#include "plan/missing_names.h"
#include "text/text.h"
#include "text/user_texts.h"
#include "toolkit/held_flag.h"

namespace declarium {
namespace {

std::vector<LineEdit> EditsOf(const plan::InsertionPlan& plan) {
  std::vector<LineEdit> edits;
  for (auto& insertion : plan.Insertions()) {
    edits.push_back({.line = static_cast<int>(insertion.line), .text = std::move(insertion.text)});
  }
  return edits;
}

constexpr EditOutcomeTexts kInsertionTexts = {.changed = texts::kModuleChanged,
                                              .refused = texts::kEditRefused,
                                              .partly = texts::kEditPartly,
                                              .unknown = texts::kEditUnknown};

// "Name – ambiguous: Const Name, Declare Name"
std::vector<std::u16string> AmbiguousRows(const std::vector<plan::MissingName>& missing) {
  std::vector<std::u16string> rows;
  for (const auto& name : missing) {
    if (!name.IsAmbiguous()) continue;
    std::u16string row = name.name + u" – " + std::u16string(texts::kPlanAmbiguous);
    for (const auto& candidate : name.candidates) {
      if (&candidate != &name.candidates.front()) row += u", ";
      row.append(KindName(candidate.item.kind)).append(u" ").append(candidate.item.name);
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

std::vector<std::u16string> NotesOf(const plan::WantedItems& wanted,
                                    const std::vector<std::u16string>& unread) {
  std::vector<std::u16string> notes;
  notes.reserve(wanted.unknown.size() + unread.size());
  for (const auto& need : wanted.unknown) {
    notes.push_back(need.name + u" – " + std::u16string(texts::kPlanUnknown) + need.via);
  }
  for (const auto& module : unread) {
    notes.push_back(module + u" – " + std::u16string(texts::kPlanUnread));
  }
  return notes;
}

}  // namespace

// The active module and the others of its project, as they were read. The active one is the first.
struct ModuleCommands::Reading {
  std::vector<ReadCode> codes;
  std::vector<std::u16string> unread;
  std::deque<vb::Module> parsed;
  std::optional<plan::ProjectModules> modules;

  void Parse(std::u16string_view project_name) {
    std::vector<plan::ModuleText> texts;
    for (const auto& code : codes) {
      parsed.push_back(vb::ReadModule(code.text, code.kind));
      texts.push_back({.name = code.name, .text = code.text, .parsed = &parsed.back()});
    }
    modules.emplace(texts, project_name);
  }
};

ModuleCommands::ModuleCommands(Toolkit& toolkit, Form& owner, const DisplayColors& colors,
                               ModuleCommandLinks links)
    : toolkit_(toolkit), owner_(owner), colors_(colors), links_(std::move(links)) {}

void ModuleCommands::InsertMissing() {
  Run(PlanPurpose::kInsertMissing, [this](Reading&, const LibrariesInUse& libraries) {
    return Wanted{.items = plan::WithNeeds(links_.basket(), libraries.all)};
  });
}

void ModuleCommands::CompleteModule() {
  Run(PlanPurpose::kCompleteModule, [this](Reading& reading, const LibrariesInUse& libraries) {
    const auto missing =
        plan::FindMissing(*reading.modules, 0, libraries.all, links_.options().target);
    return Wanted{.items = plan::WithNeeds(plan::CertainItems(missing), libraries.all),
                  .ambiguous = AmbiguousRows(missing)};
  });
}

void ModuleCommands::Run(
    PlanPurpose purpose,
    const std::function<Wanted(Reading&, const LibrariesInUse&)>& find_wanted) {
  // Reading lets events in.
  if (running_) return;
  const HeldFlag running(running_);
  const auto connection = links_.connection();
  if (!connection) return;
  const auto reading = Read(*connection);
  if (!reading) return;
  if (reading->parsed.front().is_header_open) return Say(texts::kModuleHeaderOpen);
  const auto libraries = links_.libraries();
  const auto wanted = find_wanted(*reading, libraries);
  plan::InsertionPlan plan(*reading->modules, 0, wanted.items.items, links_.options());
  PlanSubject subject{
      .purpose = purpose, .module = reading->codes.front().name, .notes = wanted.ambiguous};
  std::ranges::move(NotesOf(wanted.items, reading->unread), std::back_inserter(subject.notes));
  if (AgreeToPlan(toolkit_, owner_, colors_, subject, plan)) Insert(*connection, *reading, plan);
}

std::unique_ptr<ModuleCommands::Reading> ModuleCommands::Read(HostConnection& connection) {
  const auto module = connection.ActiveModule();
  if (!module) {
    Say(texts::kNoModuleToRead);
    return nullptr;
  }
  auto active = ReadModule(module);
  auto project = active ? active->component->Project()
                        : HostResult<std::unique_ptr<HostProject>>(std::unexpected(active.error()));
  if (!project || !connection.IsConnected()) {
    Say(texts::kHostDoesNotAnswer);
    return nullptr;
  }
  ProjectReading others(*std::move(project), &*active);
  const auto end =
      ReadWithWindow(toolkit_, owner_, others, [&connection] { return connection.IsConnected(); });
  if (end == ReadingEnd::kFailed) Say(texts::kHostDoesNotAnswer);
  if (end != ReadingEnd::kWhole) return nullptr;
  auto reading = std::make_unique<Reading>();
  reading->codes = std::move(others.Modules());
  reading->codes.insert(reading->codes.begin(), *std::move(active));
  reading->unread = others.Unread();
  reading->Parse(others.ProjectName());
  return reading;
}

void ModuleCommands::Insert(HostConnection& connection, const Reading& reading,
                            const plan::InsertionPlan& plan) {
  // The form has let the host in, which may have disconnected.
  const auto application = connection.Application();
  if (!application) return Say(texts::kHostDoesNotAnswer);
  const auto& active = reading.codes.front();
  const auto edits = EditsOf(plan);
  const auto report = ApplyEdits(*active.module, active.text, edits);
  if (report.outcome != EditReport::Outcome::kDone)
    return Say(OutcomeText(kInsertionTexts, edits, report));
  KeepCaretInView(*application, *active.module);
}

void ModuleCommands::Say(std::u16string_view text) {
  toolkit_.ShowMessage({std::u16string(text), MessageButtons::kOk, MessageIcon::kExclamation});
}

}  // namespace declarium
