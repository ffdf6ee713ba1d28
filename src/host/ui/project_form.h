// frmProject: every declaration of the host's project, what was found about it, and what is done
// about it, module by module.
#pragma once

#include <functional>
#include <optional>

#include "host/project_plan.h"
#include "source/display_colors.h"
#include "toolkit/form.h"
#include "toolkit/form_definition.h"
#include "toolkit/toolkit.h"

namespace declarium {

struct ProjectFormLinks {
  // Reads the project again; nothing when that failed, which the user knows, or was cancelled.
  std::function<std::optional<ReadProject>(Form& owner)> read;
  // Whether the host is there: whatever lets events in may have let it disconnect.
  std::function<bool()> is_connected;
};

// Returns when the user closes the window.
void ShowProject(Toolkit& toolkit, Form& owner, const DisplayColors& colors, ProjectPlan& plan,
                 const ProjectFormLinks& links);

[[nodiscard]] const FormDefinition& ProjectFormDefinition();

}  // namespace declarium
