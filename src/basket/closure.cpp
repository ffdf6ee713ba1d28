#include "basket/closure.h"

#include <set>
#include <utility>

#include "needs/shared_items.h"
#include "text/text.h"

namespace declarium {

std::vector<Reference> FollowSharedItems(const Library& library, const ItemView& start) {
  std::vector<Reference> references;
  std::set<std::pair<Kind, std::u16string>> met = {{start.kind, LowerCase(start.name)}};
  const auto add_shared_items_of = [&](const ItemView& item, int level) {
    for (const auto& [text, icon] : CreateShared(item.kind, item.item)) {
      const auto kind = *KindOfIcon(icon);
      if (!met.emplace(kind, LowerCase(text)).second) continue;
      const auto found = FindItem(library, kind, text);
      references.push_back({kind, std::u16string(found ? found->name : text), found, level,
                            std::u16string(item.name)});
    }
  };
  add_shared_items_of(start, 1);
  // The list grows while it is walked: what a reference refers to is one level further.
  for (std::size_t i = 0; i < references.size(); ++i) {
    if (const auto item = references[i].found) add_shared_items_of(*item, references[i].level + 1);
  }
  return references;
}

}  // namespace declarium
