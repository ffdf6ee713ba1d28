// What can be done about a project's declarations without asking: unused ones go, and of those that
// are alike in several modules one stays, as Public.
#pragma once

#include <cstddef>
#include <vector>

#include "audit/certainty.h"

namespace declarium::audit {

// What becomes of a row.
struct Fate {
  enum class Does : unsigned char {
    kStays,
    kGoes,            // it is not used, or only by what goes
    kGoesForAnother,  // `keeper` stands for it
    kBecomesPublic,   // for those that go for it
    kReplaced,        // by the library's form
  };
  Does does = Does::kStays;
  std::size_t keeper = kNoRow;
  Obstacle to_remove = Obstacle::kNone;  // why an unused one stays
  Obstacle to_merge = Obstacle::kNone;   // why one of several of a name stays
  // Why one that differs from the library stays; none where that was not asked.
  Obstacle to_replace = Obstacle::kNone;
};

// By row. Whatever is done makes nothing else unused that could go, and code that is there means
// what it meant. `kept` tells by row what, if anything, demands that it stays as it is.
[[nodiscard]] std::vector<Fate> PlanCleanUp(const std::vector<Row>& rows, const Uses& uses,
                                            const Certainty& certainty, const Likeness& likeness,
                                            const Rest& all, const std::vector<Obstacle>& kept);

}  // namespace declarium::audit
