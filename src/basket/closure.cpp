#include "basket/closure.h"

#include <set>
#include <utility>

#include "needs/shared_items.h"
#include "text/text.h"

namespace declarium {
namespace {

class Follower {
 public:
  // `facts` may be null.
  Follower(const Library& library, const FactsFile* facts) : library_(library), facts_(facts) {}

  std::vector<Reference> Follow(const ItemView& start) {
    met_.emplace(start.kind, LowerCase(start.name));
    AddAllOf(start, 1);
    // The list grows while it is walked: what a reference refers to is one level further.
    for (std::size_t i = 0; i < references_.size(); ++i) {
      if (const auto item = references_[i].found) AddAllOf(*item, references_[i].level + 1);
    }
    return std::move(references_);
  }

 private:
  void AddAllOf(const ItemView& item, int level) {
    for (const auto& [text, icon] : CreateShared(item.kind, item.item)) {
      Add(item, *KindOfIcon(icon), text, level);
    }
    if (facts_ != nullptr) AddConstantsOf(item, level);
  }

  void AddConstantsOf(const ItemView& item, int level) {
    const auto facts = facts_->Find(item.kind, item.name);
    if (!facts) return;
    for (const auto& value : facts->values) {
      const auto set = facts_->FindSet(value.set);
      for (const auto& list : {set.constants, set.by_prefix}) {
        for (const auto name : list) {
          const auto text = FromUtf8(name);
          if (FindItem(library_, Kind::kConst, text)) Add(item, Kind::kConst, text, level);
        }
      }
    }
  }

  void Add(const ItemView& user, Kind kind, std::u16string_view text, int level) {
    if (!met_.emplace(kind, LowerCase(text)).second) return;
    const auto found = FindItem(library_, kind, text);
    references_.push_back({kind, std::u16string(found ? found->name : text), found, level,
                           std::u16string(user.name)});
  }

  const Library& library_;
  const FactsFile* facts_;
  std::vector<Reference> references_;
  std::set<std::pair<Kind, std::u16string>> met_;
};

}  // namespace

std::vector<Reference> FollowSharedItems(const Library& library, const ItemView& start) {
  return Follower(library, nullptr).Follow(start);
}

std::vector<Reference> FollowSharedItems(const Library& library, const ItemView& start,
                                         const FactsFile& facts) {
  return Follower(library, &facts).Follow(start);
}

}  // namespace declarium
