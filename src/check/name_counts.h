// How often the names that modules declare stand in their code.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "vb/surroundings.h"

namespace declarium::check {

// What a name that is watched shows of the code that holds it.
enum class Watched : unsigned char {
  kNothing = 0,
  kAddresses = 1,  // it may hand over addresses, or sizes of records
  kAmbiguous = 2,  // it may use a name that several modules make public
};
[[nodiscard]] constexpr Watched operator|(Watched a, Watched b) {
  return static_cast<Watched>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}
[[nodiscard]] constexpr bool Has(Watched all, Watched one) {
  return (static_cast<unsigned>(all) & static_cast<unsigned>(one)) != 0;
}

// How often each declared name stands somewhere else than in its declarations.
class NameCounts {
 public:
  // The name is declared in the module; names that are not are not counted. Modules come in order.
  void Declare(std::u16string_view name, std::size_t module);

  // Count says so from now on.
  void Watch(std::u16string_view name, Watched what);

  void BeginModule(std::size_t module) { module_ = module; }
  // What the name is watched for.
  Watched Count(std::u16string_view name);
  [[nodiscard]] bool IsUsed(std::u16string_view name) const;
  // Whether several modules declare the name.
  [[nodiscard]] bool IsDeclaredTwice(std::u16string_view name) const;
  // `module` must declare the name.
  [[nodiscard]] bool IsUsedIn(std::size_t module, std::u16string_view name) const;

 private:
  // Uses less declarations. A declaration counts as a use when its module is read.
  struct Counts {
    std::ptrdiff_t all = 0;
    std::vector<std::pair<std::size_t, std::ptrdiff_t>> by_module;  // those that declare it
    Watched watched = Watched::kNothing;
  };
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const {
      return std::hash<std::u16string_view>()(text);
    }
  };

  static constexpr std::size_t kFilterBits = 1 << 20;

  [[nodiscard]] static std::size_t FilterBit(std::u16string_view name);

  std::unordered_map<std::u16string, Counts, Hash, std::equal_to<>> counts_;  // by lower case
  // Most names in code are not declared by it: they are not looked up where no bit says so.
  std::vector<bool> filter_ = std::vector<bool>(kFilterBits);
  std::size_t module_ = 0;
  std::u16string lowered_;  // reused
};

// What a module shows of its code.
struct WatchedPlaces {
  std::vector<std::size_t> addresses;  // where names stand that are watched for them; in order
  bool has_ambiguous = false;
};

// Counts the names in `text`, what stands in comments and texts left out. A member that may hold a
// size is watched like an address.
[[nodiscard]] WatchedPlaces CountNames(std::u16string_view text, NameCounts& counts);

// Watches the words of the language that give addresses, and LongPtr; and members and variables of
// that type.
void WatchAddresses(NameCounts& names);
void WatchMembers(const vb::MemberTypes& members, NameCounts& names);
void WatchVariables(const vb::Variables& variables, NameCounts& names);

}  // namespace declarium::check
