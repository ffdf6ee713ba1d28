#include "text_checks.h"

#include <algorithm>
#include <set>

#include "needs/shared_items.h"
#include "source/item_text.h"
#include "text/code_page.h"
#include "text/text.h"
#include "vb/name.h"

namespace declarium::win32_library_test {
namespace {

constexpr std::size_t kLongestLine = 1023;
constexpr std::u16string_view kLongestScope = u"Private";

bool IsOwnType(std::u16string_view name) {
  return name == u"Single" || name == u"Date" || name == u"Object";
}

// The first name in the list that is not legal or is there twice; empty when all are well.
std::string BadName(const std::vector<std::string>& names) {
  std::set<std::string> seen;
  for (const std::string& name : names)
    if (!vb::IsLegalName(name) || !seen.insert(vb::Lower(name)).second) return name;
  return "";
}

std::vector<std::string> ParameterNames(const DeclareRow& row) {
  const auto meaning = MeaningOf(row);
  return meaning ? meaning->parameters : std::vector<std::string>();
}

std::vector<std::string> MemberNames(const TypeRow& row) {
  std::vector<std::string> names;
  for (const MemberRow& member : row.members) names.push_back(member.Name());
  return names;
}

bool HasLongLine(Kind kind, std::u16string_view name, std::u16string_view item) {
  std::u16string text;
  AppendItemText(kind, name, item, kLongestScope, text);
  return std::ranges::any_of(Split(text, kCrLf),
                             [](std::u16string_view line) { return line.size() > kLongestLine; });
}

void CheckKind(const Library& library, Kind kind, Mismatches& mismatches) {
  const KindLists& lists = library[kind];
  std::set<std::string> seen;
  for (std::size_t i = 0; i < lists.names.size(); ++i) {
    const std::string name = EncodeCodePage(lists.names[i]);
    if (!vb::IsLegalName(name)) mismatches.push_back(name + " is no name");
    if (!seen.insert(vb::Lower(name)).second) mismatches.push_back(name + " is there twice");
    if (HasLongLine(kind, lists.names[i], lists.ItemAt(i)))
      mismatches.push_back(name + " has a line that is too long");
  }
}

}  // namespace

Mismatches CheckNamesAndLines(const Library& library, const Rows& rows) {
  Mismatches mismatches;
  for (const Kind kind : kKinds) CheckKind(library, kind, mismatches);
  for (const DeclareRow& row : rows.declares)
    if (const std::string bad = BadName(ParameterNames(row)); !bad.empty())
      mismatches.push_back(row.name + ": parameter " + bad);
  for (const TypeRow& row : rows.types)
    if (const std::string bad = BadName(MemberNames(row)); !bad.empty())
      mismatches.push_back(row.name + ": member " + bad);
  return mismatches;
}

Mismatches CheckSharedItems(const Library& library) {
  Mismatches mismatches;
  for (const Kind kind : kKinds) {
    const KindLists& lists = library[kind];
    for (std::size_t i = 0; i < lists.names.size(); ++i)
      for (const GroupedEntry& entry : CreateShared(kind, lists.ItemAt(i)))
        if (!FindItem(library, *KindOfIcon(entry.icon), entry.text) && !IsOwnType(entry.text))
          mismatches.push_back(EncodeCodePage(lists.names[i]) + " refers to " +
                               EncodeCodePage(entry.text));
  }
  return mismatches;
}

}  // namespace declarium::win32_library_test
