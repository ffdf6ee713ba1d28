#include "vb/layout.h"

#include <algorithm>

#include "text/text.h"

namespace declarium::vb {
namespace {

using NoLayout = std::unexpected<std::string>;

// Far beyond what the language takes, and no sum of two such sizes leaves a 32-bit number.
constexpr long kLargest = 1L << 28;

// An element of a member: passed, in memory and written.
struct Element {
  Extent passed;
  Extent in_memory;
  long written = 0;
  std::optional<long> fixed_length;
};

long RoundUp(long value, long alignment) {
  return (value + alignment - 1) / alignment * alignment;
}

Element Uniform(Extent extent) {
  return {extent, extent, extent.size, std::nullopt};
}

std::expected<Element, std::string> ElementOf(const Member& member, Target target,
                                              const LengthLookup& lengths,
                                              const RecordLookup& records) {
  const auto& type = member.type;
  if (!type.length.empty()) {
    const auto length = lengths(type.length);
    if (!length || *length < 1 || *length > kLargest)
      return NoLayout("the length " + ToUtf8(type.length) + " is not known");
    return Element{{*length, 1}, {2 * *length, 2}, *length, length};
  }
  if (const auto own = BuiltInExtent(type.name, target)) return Uniform(*own);
  const auto record = records(type.name);
  if (!record) return NoLayout("the type " + ToUtf8(type.name) + " is not known");
  return Element{record->extent, record->in_memory, record->written, std::nullopt};
}

// The number of elements; bounds that are not known give the reason.
std::expected<long, std::string> CountOf(const Member& member, const LengthLookup& lengths) {
  long count = 1;
  for (const auto& bounds : member.dimensions) {
    const auto low = bounds.lower.empty() ? 0 : lengths(bounds.lower);
    const auto high = lengths(bounds.upper);
    if (!low || !high || *high < *low || *high > kLargest || *low < -kLargest)
      return NoLayout("the bounds of " + ToUtf8(member.name) + " are not known");
    if (__builtin_mul_overflow(count, *high - *low + 1, &count))
      return NoLayout(ToUtf8(member.name) + " is too large");
  }
  return count;
}

void Append(Extent& record, const Extent& element, long count, long& offset) {
  offset = RoundUp(record.size, element.alignment);
  record.size = offset + element.size * count;
  record.alignment = std::max(record.alignment, element.alignment);
}

}  // namespace

std::optional<Extent> BuiltInExtent(std::u16string_view type_name, Target target) {
  static constexpr std::pair<std::u16string_view, long> kSizes[] = {
      {u"Long", 4},   {u"Integer", 2},  {u"Byte", 1},    {u"Boolean", 2},
      {u"Single", 4}, {u"Double", 8},   {u"Date", 8},    {u"Currency", 8},
      {u"String", 0}, {u"LongLong", 8}, {u"LongPtr", 0}, {u"Object", 0}};
  const long limit = Is64Bit(target) ? 8 : 4;
  if (EqualIgnoringCase(type_name, u"Variant")) return Extent{Is64Bit(target) ? 24 : 16, limit};
  for (const auto& [name, bytes] : kSizes) {
    if (!EqualIgnoringCase(type_name, name)) continue;
    const long size = bytes == 0 ? PointerBytes(target) : bytes;
    return Extent{size, std::min(size, limit)};
  }
  return std::nullopt;
}

std::expected<RecordLayout, std::string> LayOut(const Record& record, Target target,
                                                const LengthLookup& lengths,
                                                const RecordLookup& records) {
  RecordLayout layout;
  const Extent pointer{PointerBytes(target), PointerBytes(target)};
  for (const auto& member : record.members) {
    const bool is_dynamic = member.is_array && member.dimensions.empty();
    const auto element =
        is_dynamic ? Uniform(pointer) : ElementOf(member, target, lengths, records);
    if (!element) return NoLayout(element.error());
    const auto count = CountOf(member, lengths);
    if (!count) return NoLayout(count.error());
    MemberPlace place;
    long in_memory = 0;
    const bool is_too_large = *count > kLargest / std::max(element->in_memory.size, 1L) ||
                              layout.in_memory.size > kLargest;
    if (is_too_large) return NoLayout(ToUtf8(member.name) + " is too large");
    Append(layout.extent, element->passed, *count, place.offset);
    Append(layout.in_memory, element->in_memory, *count, in_memory);
    layout.written += element->written * *count;
    place.size = element->passed.size * *count;
    if (!is_dynamic) place.count = *count;
    place.fixed_length = element->fixed_length;
    layout.places.push_back(place);
  }
  layout.extent.size = RoundUp(layout.extent.size, layout.extent.alignment);
  layout.in_memory.size = RoundUp(layout.in_memory.size, layout.in_memory.alignment);
  return layout;
}

long ArgumentBytes(const Parameter& parameter, Target target) {
  const bool is_address =
      parameter.passing == Passing::kByReference || parameter.is_array || parameter.is_param_array;
  if (is_address || Is64Bit(target)) return PointerBytes(target);
  const auto own = BuiltInExtent(parameter.type.name, target);
  return own ? RoundUp(own->size, 4) : 4;
}

}  // namespace declarium::vb
