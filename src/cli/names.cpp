#include "cli/names.h"

#include <algorithm>

#include "cli/nearest_names.h"
#include "cli/output.h"
#include "cli/session.h"

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

// `find` looks an item of a kind up by its name; `library` has at least the names.
template <class FindItem>
std::vector<ItemView> Resolve(const Library& library, std::span<const std::string> names,
                              FindItem find) {
  const auto find_in_kinds = [&](const SoughtName& sought) -> std::optional<ItemView> {
    for (const auto kind : sought.kinds) {
      if (const auto item = find(kind, sought.name)) return item;
    }
    return std::nullopt;
  };
  std::vector<ItemView> items;
  std::string unknown;
  for (const auto& argument : names) {
    const auto sought = Parse(argument);
    if (const auto item = find_in_kinds(sought)) {
      items.push_back(*item);
    } else {
      if (!unknown.empty()) unknown += '\n';
      unknown += UnknownName(library, sought, argument);
    }
  }
  if (!unknown.empty()) throw CommandFailed(ExitStatus::kNothingFound, unknown);
  return items;
}

}  // namespace

std::optional<Kind> KindOfWord(std::string_view word) {
  const auto text = FromUtf8(word);
  const auto found = std::ranges::find_if(
      kKinds, [&](Kind kind) { return EqualIgnoringCase(KindName(kind), text); });
  if (found == kKinds.end()) return std::nullopt;
  return *found;
}

std::vector<ItemView> ResolveNames(const Library& library, std::span<const std::string> names) {
  return Resolve(library, names, [&](Kind kind, std::u16string_view name) {
    return FindItem(library, kind, name);
  });
}

std::vector<ItemView> ResolveNames(const LibraryExcerpt& excerpt,
                                   std::span<const std::string> names) {
  return Resolve(excerpt.Names(), names,
                 [&](Kind kind, std::u16string_view name) { return excerpt.Find(kind, name); });
}

}  // namespace declarium::cli
