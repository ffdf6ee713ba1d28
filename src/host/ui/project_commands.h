// The command that reads the host's project, shows its declarations, and does about them what the
// user agrees to.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "check/known_libraries.h"
#include "host/host_connection.h"
#include "host/project_plan.h"
#include "source/display_colors.h"
#include "toolkit/form.h"
#include "toolkit/toolkit.h"

namespace declarium {

struct ProjectCommandLinks {
  std::function<std::shared_ptr<HostConnection>()> connection;  // null without a host
  // What the declarations are compared with: the open library before the others.
  std::function<std::unique_ptr<check::KnownLibraries>()> libraries;
};

class ProjectCommands {
 public:
  // Everything given by reference must outlive the commands.
  ProjectCommands(Toolkit& toolkit, Form& owner, const DisplayColors& colors,
                  ProjectCommandLinks links);

  // Nothing happens without a host, or while it is running already.
  void ShowProject();

 private:
  // Nothing when the user cancelled, or knows by now that it failed.
  [[nodiscard]] std::optional<ReadProject> Read(HostConnection& connection, Form& owner);
  void Say(std::u16string_view text);

  Toolkit& toolkit_;
  Form& owner_;
  const DisplayColors& colors_;
  ProjectCommandLinks links_;
  bool running_ = false;
};

}  // namespace declarium
