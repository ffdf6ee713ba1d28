#include "cli/names.h"

#include "cli/nearest_names.h"
#include "cli/output.h"
#include "cli/session.h"

#include "text/text.h"

namespace declarium::cli {

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

std::vector<ItemPlace> ResolvePlaces(const Library& library, std::span<const std::string> names) {
  std::vector<ItemPlace> places;
  std::string faults;
  const auto add_fault = [&faults](const std::string& fault) {
    if (!faults.empty()) faults += '\n';
    faults += fault;
  };
  for (const auto& argument : names) {
    const auto sought = ReadSoughtName(FromUtf8(argument));
    const auto candidates = FindSought(library, sought);
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
