// frmPlan: shows what an insertion into a module would do, entry by entry, and takes the user's
// choices before anything changes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "plan/insertion_plan.h"
#include "source/display_colors.h"
#include "toolkit/form.h"
#include "toolkit/form_definition.h"
#include "toolkit/toolkit.h"

namespace declarium {

enum class PlanPurpose { kInsertMissing, kCompleteModule };

struct PlanSubject {
  PlanPurpose purpose = PlanPurpose::kInsertMissing;
  std::u16string_view module;  // the name of the module
  // Rows behind the entries for what the plan says nothing about.
  std::vector<std::u16string> notes = {};
};

// True when the user agreed to the plan as it is then.
[[nodiscard]] bool AgreeToPlan(Toolkit& toolkit, Form& owner, const DisplayColors& colors,
                               const PlanSubject& subject, plan::InsertionPlan& plan);

// The row of an entry: its name and what happens to it.
[[nodiscard]] std::u16string PlanRow(const plan::PlannedEntry& entry);

[[nodiscard]] const FormDefinition& PlanFormDefinition();

}  // namespace declarium
