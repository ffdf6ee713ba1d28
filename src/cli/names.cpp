#include "cli/names.h"

#include <algorithm>

#include "cli/nearest_names.h"
#include "cli/output.h"
#include "cli/session.h"

#include "library/find_item_index.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

struct SoughtName {
  std::span<const Kind> kinds;  // where to look, in this order
  std::u16string name;
};

SoughtName Parse(std::string_view argument) {
  if (const auto colon = argument.find(':'); colon != argument.npos) {
    if (const auto kind = KindOfWord(argument.substr(0, colon))) {
      const auto position = static_cast<std::size_t>(KindCode(*kind));
      return {std::span(kKinds).subspan(position, 1), FromUtf8(argument.substr(colon + 1))};
    }
  }
  return {kKinds, FromUtf8(argument)};
}

std::string UnknownName(const Library& library, const SoughtName& sought,
                        std::string_view argument) {
  std::string message = "no item named " + OneLine(FromUtf8(argument));
  const auto nearest = NearestNames(library, sought.kinds, sought.name);
  for (const auto& item : nearest) {
    message += &item == &nearest.front() ? "; did you mean " : ", ";
    message += QualifiedName(item.kind, item.name);
  }
  return nearest.empty() ? message : message + "?";
}

// The one item that is spelled as sought, else one of every other spelling in the first kind that
// has any.
std::vector<ItemPlace> Candidates(const Library& library, const SoughtName& sought) {
  std::vector<ItemPlace> others;
  for (const auto kind : sought.kinds) {
    const auto& names = library[kind].names;
    const auto [first, last] = FindSpellings(sought.name, names);
    for (auto position = first; position < last; ++position) {
      if (names[position] == sought.name) return {{kind, position}};
    }
    if (!others.empty()) continue;
    for (auto position = first; position < last; ++position) {
      if (position == first || names[position] != names[position - 1]) {
        others.push_back({kind, position});
      }
    }
  }
  return others;
}

std::string SeveralSpellings(const Library& library, std::span<const ItemPlace> places,
                             std::string_view argument) {
  std::string message =
      "no item is spelled " + OneLine(FromUtf8(argument)) + " exactly; which is meant: ";
  for (const auto& [kind, position] : places) {
    if (position != places.front().position) message += ", ";
    message += QualifiedName(kind, library[kind].names[position]);
  }
  return message + "?";
}

}  // namespace

std::optional<Kind> KindOfWord(std::string_view word) {
  const auto text = FromUtf8(word);
  const auto found = std::ranges::find_if(
      kKinds, [&](Kind kind) { return EqualIgnoringCase(KindName(kind), text); });
  if (found == kKinds.end()) return std::nullopt;
  return *found;
}

std::vector<ItemPlace> ResolvePlaces(const Library& library, std::span<const std::string> names) {
  std::vector<ItemPlace> places;
  std::string faults;
  const auto add_fault = [&faults](const std::string& fault) {
    if (!faults.empty()) faults += '\n';
    faults += fault;
  };
  for (const auto& argument : names) {
    const auto sought = Parse(argument);
    const auto candidates = Candidates(library, sought);
    if (candidates.empty()) {
      add_fault(UnknownName(library, sought, argument));
    } else if (candidates.size() > 1) {
      add_fault(SeveralSpellings(library, candidates, argument));
    } else {
      places.push_back(candidates.front());
    }
  }
  if (!faults.empty()) throw CommandFailed(ExitStatus::kNothingFound, faults);
  return places;
}

std::vector<ItemView> ResolveNames(const Library& library, std::span<const std::string> names) {
  std::vector<ItemView> items;
  for (const auto& [kind, position] : ResolvePlaces(library, names)) {
    const auto& lists = library[kind];
    items.push_back({kind, lists.names[position], lists.ItemAt(position)});
  }
  return items;
}

std::vector<ItemView> ResolveNames(const LibraryExcerpt& excerpt,
                                   std::span<const std::string> names) {
  std::vector<ItemView> items;
  for (const auto& [kind, position] : ResolvePlaces(excerpt.Names(), names)) {
    items.push_back(excerpt.ItemAt(kind, position));
  }
  return items;
}

}  // namespace declarium::cli
