#include "basket/list_selection.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>

#include "needs/shared_items.h"
#include "text/text.h"
#include "vb/layout.h"
#include "vb/like.h"

namespace declarium {
namespace {

std::u16string KeyOf(Kind kind, std::u16string_view name) {
  return static_cast<char16_t>(KindCode(kind)) + LowerCase(name);
}

ItemView ItemAt(const Library& library, const ItemPlace& place) {
  const auto& lists = library[place.kind];
  return {place.kind, lists.names[place.position], lists.ItemAt(place.position)};
}

class Selector {
 public:
  Selector(const ListFile& list, Libraries libraries) : libraries_(libraries) {
    for (const auto& line : list.lines) Take(line);
  }

  ListSelection Result() && { return std::move(selection_); }

 private:
  using FaultKind = LineFault::Kind;

  void Take(const ListLine& line) {
    if (line.takes_away) {
      TakeAway(line);
    } else if (line.is_pattern) {
      AddPattern(line);
    } else {
      AddName(line);
    }
  }

  void AddName(const ListLine& line) {
    for (const auto* const library : libraries_) {
      const auto places = FindSought(*library, line.sought);
      if (places.size() > 1)
        return selection_.faults.push_back({FaultKind::kSeveralSpellings, &line, library});
      if (!places.empty()) return Add(*library, places.front());
    }
    selection_.faults.push_back({FaultKind::kUnknown, &line});
  }

  void AddPattern(const ListLine& line) {
    bool fits = false;
    ForEachFitting(line, [&](const Library& library, const ItemPlace& place) {
      fits = true;
      Add(library, place);
    });
    if (!fits) selection_.faults.push_back({FaultKind::kUnknown, &line});
  }

  template <class Use>
  void ForEachFitting(const ListLine& line, const Use& use) const {
    const LikePattern pattern(LowerCase(line.sought.name));
    std::u16string scratch;
    for (const auto* const library : libraries_) {
      for (const auto kind : line.sought.kinds) {
        const auto& names = (*library)[kind].names;
        for (std::size_t i = 0; i < names.size(); ++i)
          if (pattern.MatchesLowerCaseOf(names[i], scratch)) use(*library, ItemPlace{kind, i});
      }
    }
  }

  void Add(const Library& library, const ItemPlace& place) {
    const auto item = ItemAt(library, place);
    if (chosen_.insert(KeyOf(item.kind, item.name)).second) selection_.items.push_back(item);
  }

  void TakeAway(const ListLine& line) {
    const LikePattern pattern(LowerCase(line.sought.name));
    std::u16string scratch;
    const auto is_meant = [&](const ItemView& item) {
      if (std::ranges::find(line.sought.kinds, item.kind) == line.sought.kinds.end()) return false;
      return line.is_pattern ? pattern.MatchesLowerCaseOf(item.name, scratch)
                             : EqualIgnoringCase(item.name, line.sought.name);
    };
    const auto gone = std::erase_if(selection_.items, [&](const ItemView& item) {
      const bool goes = is_meant(item);
      if (goes) chosen_.erase(KeyOf(item.kind, item.name));
      return goes;
    });
    if (gone == 0)
      selection_.faults.push_back(
          {IsInLibraries(line) ? FaultKind::kTakesNothing : FaultKind::kUnknown, &line});
  }

  [[nodiscard]] bool IsInLibraries(const ListLine& line) const {
    bool is_in = false;
    if (line.is_pattern) {
      ForEachFitting(line, [&](const Library&, const ItemPlace&) { is_in = true; });
      return is_in;
    }
    return std::ranges::any_of(libraries_, [&](const Library* library) {
      return !FindSought(*library, line.sought).empty();
    });
  }

  Libraries libraries_;
  ListSelection selection_;
  std::unordered_set<std::u16string> chosen_;
};

// As it is spelled, else in any spelling.
std::optional<ItemView> FindIn(Libraries libraries, Kind kind, std::u16string_view name) {
  const SoughtName sought{{&kind, 1}, std::u16string(name)};
  for (const auto* const library : libraries) {
    const auto places = FindSought(*library, sought);
    if (!places.empty()) return ItemAt(*library, places.front());
  }
  return std::nullopt;
}

// The analysis of an item is textual: a word that is no name, such as a lone operator, is none.
bool IsMissed(Kind kind, std::u16string_view name) {
  if (name.empty() || !vb::StartsName(name.front())) return false;
  return kind != Kind::kType || !vb::BuiltInExtent(name, vb::Target::kVb6);
}

}  // namespace

ListSelection SelectItems(const ListFile& list, Libraries libraries) {
  return Selector(list, libraries).Result();
}

std::vector<MissingNeed> AddWithNeeds(Basket& basket, std::span<const ItemView> items,
                                      Libraries libraries) {
  std::vector<MissingNeed> missing;
  std::vector<ItemView> open(items.begin(), items.end());
  std::unordered_set<std::u16string> met;
  for (const auto& item : open) met.insert(KeyOf(item.kind, item.name));
  for (std::size_t i = 0; i < open.size(); ++i) {
    const auto item = open[i];
    basket.Add(item.kind, item.name, item.item);
    for (const auto& [name, icon] : CreateShared(item.kind, item.item)) {
      const auto kind = *KindOfIcon(icon);
      if (!met.insert(KeyOf(kind, name)).second) continue;
      if (const auto found = FindIn(libraries, kind, name)) {
        open.push_back(*found);
      } else if (IsMissed(kind, name)) {
        missing.push_back({kind, name, std::u16string(item.name)});
      }
    }
  }
  return missing;
}

}  // namespace declarium
