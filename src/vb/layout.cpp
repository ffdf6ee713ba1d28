#include "vb/layout.h"

#include <algorithm>
#include <charconv>
#include <map>

#include "vb/name.h"

namespace declarium::vb {
namespace {

std::vector<std::string_view> Words(std::string_view line) {
  std::vector<std::string_view> words;
  for (std::size_t begin = 0; begin < line.size();) {
    const std::size_t end = std::min(line.find(' ', begin), line.size());
    if (end > begin) words.push_back(line.substr(begin, end - begin));
    begin = end + 1;
  }
  return words;
}

std::optional<long> Number(std::string_view text, const LengthLookup& lengths) {
  long value = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
  if (read.ec == std::errc() && read.ptr == text.data() + text.size()) return value;
  return lengths ? lengths(text) : std::nullopt;
}

// The number of elements between the bounds of "3" or "1 To 4".
std::optional<long> ElementCount(std::string_view bounds, const LengthLookup& lengths) {
  const std::vector<std::string_view> words = Words(bounds);
  const bool range = words.size() == 3 && words[1] == "To";
  if (words.size() != 1 && !range) return std::nullopt;
  const auto low = range ? Number(words[0], lengths) : 0;
  const auto high = Number(words.back(), lengths);
  if (!low || !high || *high < *low) return std::nullopt;
  return *high - *low + 1;
}

long RoundUp(long value, long alignment) {
  return (value + alignment - 1) / alignment * alignment;
}

std::optional<Extent> ElementExtent(const Member& member, const RecordLookup& records) {
  if (member.fixed_length) return Extent{*member.fixed_length, 1};
  const auto own = BuiltInExtent(member.type_name);
  return own || !records ? own : records(member.type_name);
}

}  // namespace

std::optional<Extent> BuiltInExtent(std::string_view type_name) {
  static const std::map<std::string, Extent, std::less<>> extents = {
      {"byte", {1, 1}},     {"boolean", {2, 2}}, {"integer", {2, 2}},
      {"long", {4, 4}},     {"single", {4, 4}},  {"double", {8, 4}},
      {"currency", {8, 4}}, {"date", {8, 4}},    {"string", {4, 4}}};
  const auto found = extents.find(Lower(type_name));
  return found == extents.end() ? std::nullopt : std::optional(found->second);
}

std::expected<Member, std::string> ParseMember(std::string_view line, const LengthLookup& lengths) {
  const std::string shown = "\"" + std::string(line) + "\"";
  Member member;
  const std::size_t as = line.find(" As ");
  if (as == std::string_view::npos) return std::unexpected(shown + " has no type");
  std::string_view name = line.substr(0, as);
  if (const std::size_t open = name.find('('); open != std::string_view::npos) {
    if (!name.ends_with(')')) return std::unexpected(shown + " has no closing bracket");
    const auto count = ElementCount(name.substr(open + 1, name.size() - open - 2), lengths);
    if (!count) return std::unexpected(shown + " has bounds that are no numbers");
    member.count = *count;
    name = name.substr(0, open);
  }
  if (!IsLegalName(name)) return std::unexpected(shown + " has no legal name");
  member.name = name;
  const std::vector<std::string_view> words = Words(line.substr(as + 4));
  const bool fixed = words.size() == 3 && words[0] == "String" && words[1] == "*";
  if (words.size() != 1 && !fixed) return std::unexpected(shown + " has no legal type");
  member.type_name = words[0];
  if (!fixed) return member;
  member.fixed_length = Number(words[2], lengths);
  if (!member.fixed_length || *member.fixed_length < 1)
    return std::unexpected(shown + " has a length that is no number");
  return member;
}

std::expected<RecordLayout, std::string> LayOut(const std::vector<Member>& members,
                                                const RecordLookup& records) {
  RecordLayout layout;
  for (const Member& member : members) {
    const auto element = ElementExtent(member, records);
    if (!element) return std::unexpected("the type " + member.type_name + " is not known");
    const long offset = RoundUp(layout.extent.size, element->alignment);
    layout.places.push_back({offset, element->size * member.count});
    layout.extent.size = offset + element->size * member.count;
    layout.extent.alignment = std::max(layout.extent.alignment, element->alignment);
  }
  layout.extent.size = RoundUp(layout.extent.size, layout.extent.alignment);
  return layout;
}

}  // namespace declarium::vb
