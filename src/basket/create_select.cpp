#include "basket/create_select.h"

#include <algorithm>

#include "source/item_text.h"
#include "text/text.h"

namespace declarium {
namespace {

constexpr char16_t kFieldSeparator = 0;

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

std::optional<ItemView> FindRecorded(const GroupedEntry& entry,
                                     std::span<const std::u16string> record) {
  const auto kind = KindOfIcon(entry.icon);
  if (!kind) return std::nullopt;
  const auto key = ItemKey(KindCode(*kind), entry.text);
  const auto element = std::ranges::find_if(
      record, [&](const std::u16string& candidate) { return candidate.starts_with(key); });
  if (element == record.end()) return std::nullopt;
  const auto fields = Split(*element, kFieldSeparator);
  if (fields.size() < 3) return std::nullopt;
  return ItemView{*kind, fields[1], fields[2]};
}

std::u16string CreateSelect(std::span<const GroupedEntry> entries,
                            std::span<const std::u16string> record, std::u16string_view scope) {
  std::u16string result;
  for (const auto& entry : entries) {
    const auto item = FindRecorded(entry, record);
    if (!item) continue;
    if (item->kind == Kind::kType) result += kCrLf;
    AppendItemText(item->kind, item->name, item->item, scope, result);
    result += kCrLf;
  }
  return TidyLineEnds(result);
}

}  // namespace declarium
