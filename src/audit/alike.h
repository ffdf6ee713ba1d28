// Which declarations of one name and kind are alike.
#pragma once

#include <cstddef>
#include <vector>

#include "audit/uses.h"

namespace declarium::audit {

struct Likeness {
  // By row. Rows of one name and kind that mean the same have the same number.
  std::vector<std::size_t> meaning;
  // The same for rows of which one can take the place of the other in all code: constants have the
  // same type, parameters the same names, and what is named inside is alike in this way too.
  std::vector<std::size_t> exchange;
};

[[nodiscard]] Likeness LikenessOf(plan::ProjectModules& modules, const std::vector<Row>& rows,
                                  const Uses& uses, const Rest& rest);

}  // namespace declarium::audit
