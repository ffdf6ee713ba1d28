// Any item string through the analysers of shared items.
#include <set>

#include "basket/basket.h"
#include "fuzz/input.h"
#include "needs/shared_items.h"
#include "source/item_text.h"
#include "text/text.h"

using namespace declarium;
using fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto item = DecodeCodePage(fuzz::Bytes(data, size));
  for (const auto kind : kKinds) {
    const auto shared = CreateShared(kind, item);
    std::set<std::pair<int, std::u16string>> met;
    for (const auto& [text, icon] : shared) {
      Require(icon == IconOf(Kind::kConst) || icon == IconOf(Kind::kType), "constants and records");
      Require(kind == Kind::kType || text.size() <= item.size(), "a name comes from the item");
      met.emplace(icon, LowerCase(text));
    }
    // A constant behind the first record escapes the search for its like; nothing else does.
    Require(kind == Kind::kType || met.size() == shared.size(), "no name twice");

    Basket basket;
    Require(basket.Add(kind, u"Name", item) == 1 && !basket.Add(kind, u"NAME", item),
            "a name is added once");
    const auto text = basket.Text(u"Private");
    Require(text.ends_with(kCrLf), "the text ends in a line end");
    Require(text.starts_with(std::u16string(u"Private ").append(KindName(kind))),
            "the basket renders what it holds");
  }
  return 0;
}
