#include "basket/closure.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "basket/create_select.h"
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

namespace {

// Walks from records to the records that are their members and lists each behind its members.
class RecordOrder {
 public:
  explicit RecordOrder(const Basket& basket) : basket_(basket) {}

  void Add(const GroupedEntry& record) {
    if (!met_.insert(LowerCase(record.text)).second) return;
    if (const auto item = FindRecorded(record, basket_.Record())) {
      for (const auto& member : CreateShared(item->kind, item->item)) {
        if (const auto* entry = FindRecord(member.text)) Add(*entry);
      }
    }
    ordered_.push_back(record);
  }

  [[nodiscard]] GroupedList Take() { return std::move(ordered_); }

 private:
  [[nodiscard]] const GroupedEntry* FindRecord(std::u16string_view name) const {
    const auto found = std::ranges::find_if(basket_.Entries(), [name](const GroupedEntry& entry) {
      return entry.icon == IconOf(Kind::kType) && EqualIgnoringCase(entry.text, name);
    });
    return found == basket_.Entries().end() ? nullptr : &*found;
  }

  const Basket& basket_;
  GroupedList ordered_;
  std::set<std::u16string> met_;
};

}  // namespace

GroupedList WithMembersFirst(const Basket& basket) {
  GroupedList entries;
  RecordOrder records(basket);
  for (const auto& entry : basket.Entries()) {
    if (entry.icon == IconOf(Kind::kType)) {
      records.Add(entry);
    } else {
      entries.push_back(entry);
    }
  }
  std::ranges::move(records.Take(), std::back_inserter(entries));
  return entries;
}

}  // namespace declarium
