// A standard module made from a basket: a header that tells what it was made from, and the basket's
// text with Public in front of every declaration. The same basket and origin give the same text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "basket/basket.h"
#include "target/form_for_64.h"
#include "vb/audience.h"

namespace declarium {

// What Visual Basic takes in one module. It documents the lines; the number of Declares depends on
// their lengths, and this many of any length do.
inline constexpr std::size_t kMostModuleLines = 65534;
inline constexpr std::size_t kMostDeclares = 1500;

// A library by what does not change with the computer: no path, no time.
struct LibraryOrigin {
  std::u16string file_name;
  std::u16string title;
  std::uint64_t hash = 0;  // of its bytes
};

struct ModuleOrigin {
  std::u16string list;  // the file name of the list
  std::vector<LibraryOrigin> libraries;
  vb::Audience target = vb::Audience::kVb6;
};

struct BasketModule {
  std::u16string name;  // of the module: that asked for, and with 2, 3 ... behind it
  std::u16string text;
};

// The basket as one module of this name, or as the fewest of nearly equal length that keep within
// what Visual Basic takes. Public declarations see each other across modules.
[[nodiscard]] std::vector<BasketModule> ModulesFromBasket(const Basket& basket,
                                                          std::u16string_view name,
                                                          const ModuleOrigin& origin,
                                                          const KnowledgeOf64& knowledge);

// Whether the text of a module begins as one that was made so, from a list of this file name; from
// any for an empty one.
[[nodiscard]] bool IsModuleFromBasket(std::u16string_view text, std::u16string_view list = {});

}  // namespace declarium
