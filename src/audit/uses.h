// Who uses the declarations of a project, and what that is when some of them are gone.
//
// A name means the module's own declarations of it, or else the public ones of the others; where
// several could be meant, all are used. Which kind of declaration could be meant where is not
// asked: a name that is used keeps all that bear it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "audit/table.h"

namespace declarium::audit {

struct Use {
  std::size_t name;                      // of Uses
  std::size_t module;                    // where it stands
  std::optional<std::size_t> qualifier;  // the module that it names
  std::size_t inside;                    // the row whose declaration it stands in, kNoRow for none
  std::uint32_t line;
};

// Which rows there are and which of them are public, as a clean-up would leave them.
struct Rest {
  std::vector<bool> is_there;
  std::vector<bool> is_public;
};

class Uses {
 public:
  // Reads the code of all modules. What is handed over must outlive it.
  Uses(const Subject& subject, const plan::ProjectModules& modules, const std::vector<Row>& rows,
       const RowFinder& finder);

  [[nodiscard]] const std::vector<Use>& All() const { return uses_; }
  // All rows that declare the name, as their own or as an enumeration's member.
  [[nodiscard]] const std::vector<std::size_t>& RowsNamed(std::size_t name) const {
    return rows_of_[name];
  }
  // The uses of the name, by their positions.
  [[nodiscard]] const std::vector<std::size_t>& OfName(std::size_t name) const {
    return of_names_[name];
  }
  // The uses, by their positions, that stand in the row's declaration.
  [[nodiscard]] const std::vector<std::size_t>& InsideOf(std::size_t row) const {
    return inside_[row];
  }
  // The name of a declaration, without regard to case.
  [[nodiscard]] std::size_t NameOf(std::size_t row) const { return names_of_rows_[row]; }

  // By row, whether something needs it: code, what may be used elsewhere, `kept`, or a declaration
  // that is needed.
  [[nodiscard]] std::vector<bool> Needed(const Rest& rest,
                                         const std::vector<std::size_t>& kept = {}) const;

 private:
  friend class Meant;

  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const {
      return std::hash<std::u16string_view>()(text);
    }
  };
  using Names = std::unordered_map<std::u16string, std::size_t, Hash, std::equal_to<>>;

  static constexpr std::size_t kFilterBits = 1 << 16;

  // The same for every case of a name.
  [[nodiscard]] static std::size_t FilterBit(std::u16string_view name);
  void AddName(std::u16string_view name, std::size_t row);
  void ReadModule(const Subject& subject, std::size_t module, const RowFinder& finder,
                  const std::unordered_map<std::u16string, std::size_t>& modules);

  const std::vector<Row>& rows_;
  Names names_;  // by lower case
  // Most names in code are not declared by it: they are not looked up where no bit says so.
  std::vector<bool> filter_ = std::vector<bool>(kFilterBits);
  std::vector<std::vector<std::size_t>> rows_of_;  // in the order of modules
  std::vector<std::size_t> names_of_rows_;
  std::vector<Use> uses_;
  std::vector<std::vector<std::size_t>> of_names_;
  std::vector<std::vector<std::size_t>> inside_;  // by row, the uses in its declaration
  std::u16string lowered_;                        // reused
};

// What uses mean when these rows are there. Made once for many questions: a name may be declared in
// every module of thousands, and used there ten times.
class Meant {
 public:
  // Both must outlive it, `rest` unchanged.
  Meant(const Uses& uses, const Rest& rest);

  // Calls `take` with every row that the use means.
  template <class Take>
  void ForEach(const Use& use, const Take& take) const {
    const auto module = use.qualifier.value_or(use.module);
    const auto& rows = uses_.rows_of_[use.name];
    const auto module_of = [this](std::size_t row) { return uses_.rows_[row].module; };
    bool has_own = false;
    for (auto own = std::ranges::lower_bound(rows, module, {}, module_of);
         own != rows.end() && uses_.rows_[*own].module == module; ++own) {
      if (!rest_.is_there[*own]) continue;
      // A branch of #If may be left out, and then another one is meant.
      has_own = has_own || uses_.rows_[*own].declaration->condition == 0;
      take(*own);
    }
    if (has_own || use.qualifier) return;
    for (const auto row : public_rows_[use.name])
      if (uses_.rows_[row].module != use.module) take(row);
  }

 private:
  const Uses& uses_;
  const Rest& rest_;
  std::vector<std::vector<std::size_t>> public_rows_;  // by name, those that are there
};

}  // namespace declarium::audit
