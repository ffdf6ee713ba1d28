#include "plan/wanted_items.h"

#include <optional>
#include <set>
#include <utility>

#include "source/item_text.h"
#include "text/text.h"
#include "vb/layout.h"
#include "vb/name_use.h"
#include "vb/runtime_names.h"

namespace declarium::plan {
namespace {

class Collector {
 public:
  explicit Collector(std::span<const Library* const> libraries) : libraries_(libraries) {}

  WantedItems Collect(std::span<const ItemView> asked) {
    for (const auto& item : asked) Add(item, 0, {});
    // The list grows while it is walked: what an item needs is one level further.
    for (std::size_t i = 0; i < wanted_.items.size(); ++i) AddNeedsOf(i);
    return std::move(wanted_);
  }

 private:
  void Add(const ItemView& item, int level, std::u16string_view via) {
    if (!met_.emplace(item.kind, LowerCase(item.name)).second) return;
    wanted_.items.push_back({item.kind, std::u16string(item.name), std::u16string(item.item), level,
                             std::u16string(via)});
  }

  void AddNeedsOf(std::size_t position) {
    // A copy: the list moves while it grows.
    const auto user = wanted_.items[position];
    const auto text = ItemText(user.kind, user.name, user.item);
    for (const auto& use : vb::ReadNameUses(text, vb::ReadModule(text))) {
      if (!use.qualifier.empty()) continue;
      const auto kind = use.kind == vb::UseKind::kType ? Kind::kType : Kind::kConst;
      if (kind == Kind::kType && vb::BuiltInExtent(use.name, vb::Target::kVba7x64)) continue;
      const bool is_runtime =
          kind == Kind::kType ? vb::IsRuntimeType(use.name) : vb::IsRuntimeValue(use.name);
      if (const auto found = Find(kind, use.name)) {
        Add(*found, user.level + 1, user.name);
      } else if (!is_runtime && met_.emplace(kind, LowerCase(use.name)).second) {
        wanted_.unknown.push_back({kind, std::u16string(use.name), user.name});
      }
    }
  }

  [[nodiscard]] std::optional<ItemView> Find(Kind kind, std::u16string_view name) const {
    for (const auto* const library : libraries_)
      if (const auto found = FindItem(*library, kind, name)) return found;
    return std::nullopt;
  }

  std::span<const Library* const> libraries_;
  std::set<std::pair<Kind, std::u16string>> met_;
  WantedItems wanted_;
};

}  // namespace

WantedItems WithNeeds(std::span<const ItemView> asked, std::span<const Library* const> libraries) {
  return Collector(libraries).Collect(asked);
}

}  // namespace declarium::plan
