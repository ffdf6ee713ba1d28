// Every declaration of a project outside procedures, one row each. What else is known of a
// declaration is told by its row.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "plan/project_modules.h"
#include "vb/module.h"

namespace declarium::audit {

inline constexpr std::size_t kNoRow = static_cast<std::size_t>(-1);

// What is audited.
struct Subject {
  std::span<const plan::ModuleText> modules;  // parsed
  std::vector<bool> is_shared = {};  // by module: another project has it too; empty for none
  std::u16string_view project_name = {};
  vb::ProjectConstants constants = {};
  bool is_whole = true;  // all modules that can see each other are there
};

enum class Sort : unsigned char { kConst, kDeclare, kType, kEnum };

// "const", "declare", "type" or "enum".
[[nodiscard]] std::string_view SortText(Sort sort);

struct Row {
  std::size_t module;
  const vb::Declaration* declaration;
  Sort sort;
  bool is_public;  // for other modules
  // Whether others than the modules here may use it: a public one of a class, which a component
  // shows to other programs, and every public one when modules are missing.
  bool may_be_used_elsewhere;
};

// In the order of modules and places.
[[nodiscard]] std::vector<Row> TableOf(const Subject& subject);

// The row that declares what stands at an offset of the module's text; kNoRow for none, and for one
// of several in one statement, "Const A = 1, B = A".
class RowFinder {
 public:
  explicit RowFinder(const Subject& subject, std::span<const Row> rows);

  [[nodiscard]] std::size_t Find(std::size_t module, std::size_t offset) const;
  // Whether another row is in the same statement.
  [[nodiscard]] bool SharesStatement(std::size_t row) const { return shares_[row]; }

 private:
  struct Range {
    std::size_t begin;
    std::size_t end;
    std::size_t row;
  };

  std::vector<std::vector<Range>> ranges_;  // by module
  std::vector<bool> shares_;                // by row
};

}  // namespace declarium::audit
