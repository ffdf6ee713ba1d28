// The declarations of a project as the project's form shows them.
#pragma once

#include <cstddef>
#include <string>

#include "host/project_plan.h"
#include "toolkit/list_view.h"

namespace declarium {

// "MAX_PATH – Module1, riadok 3 – zostane: ... – používa: Main 2, Form1 – inak v databáze"
[[nodiscard]] std::u16string ProjectRow(const ProjectPlan& plan, std::size_t row);

// The icon of the row's kind; an enumeration has none.
[[nodiscard]] int ProjectRowIcon(const ProjectPlan& plan, std::size_t row);

// A box where something can be done or left out, and is not done yet.
[[nodiscard]] CheckMark ProjectRowMark(const ProjectPlan& plan, std::size_t row);

// Whether something was found about the row, or is to be done.
[[nodiscard]] bool IsProjectFinding(const ProjectPlan& plan, std::size_t row);

// What stands there now and what comes for it, with captions. An empty text shows nothing.
struct ProjectRowDetail {
  std::u16string about;  // all users and all that was found
  std::u16string before_caption;
  std::u16string before;
  std::u16string after_caption;
  std::u16string after;
};
[[nodiscard]] ProjectRowDetail DetailOf(const ProjectPlan& plan, std::size_t row);

}  // namespace declarium
