#include "render/create_select.h"

#include <algorithm>

#include "basic/text.h"
#include "database/kind.h"
#include "render/item_text.h"

namespace declarium {
namespace {

constexpr char16_t kFieldSeparator = 0;

void AppendEntry(Kind kind, std::u16string_view record_element, std::u16string_view scope,
                 std::u16string& result) {
  const auto fields = Split(record_element, kFieldSeparator);
  if (fields.size() < 3) return;
  if (kind == Kind::kType) result += kCrLf;
  AppendItemText(kind, fields[1], fields[2], scope, result);
  result += kCrLf;
}

// Three line ends in a row become two, once, and none is left at either end.
std::u16string TidyLineEnds(std::u16string_view text) {
  const auto tidy = Replace(text, u"\r\n\r\n\r\n", u"\r\n\r\n");
  std::u16string_view inner = tidy;
  while (inner.ends_with(kCrLf)) inner.remove_suffix(kCrLf.size());
  while (inner.starts_with(kCrLf)) inner.remove_prefix(kCrLf.size());
  return std::u16string(inner).append(kCrLf);
}

}  // namespace

std::u16string ItemKey(int kind_code, std::u16string_view name) {
  std::u16string key(1, static_cast<char16_t>(u'0' + kind_code));
  key += kFieldSeparator;
  return key.append(name);
}

std::u16string CreateSelect(std::span<const GroupedEntry> entries,
                            std::span<const std::u16string> record, std::u16string_view scope) {
  std::u16string result;
  for (const auto& [name, icon] : entries) {
    const auto kind = KindOfIcon(icon);
    if (!kind) continue;
    const auto key = ItemKey(KindCode(*kind), name);
    const auto element = std::ranges::find_if(
        record, [&](const std::u16string& candidate) { return candidate.starts_with(key); });
    if (element != record.end()) AppendEntry(*kind, *element, scope, result);
  }
  return TidyLineEnds(result);
}

}  // namespace declarium
