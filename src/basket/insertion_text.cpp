#include "basket/insertion_text.h"

#include "basket/recorded_items.h"
#include "source/item_text.h"
#include "text/text.h"

namespace declarium {
namespace {

// Three line ends in a row become two, once, and none is left at either end.
std::u16string TidyLineEnds(std::u16string_view text) {
  const auto tidy = Replace(text, u"\r\n\r\n\r\n", u"\r\n\r\n");
  std::u16string_view inner = tidy;
  while (inner.ends_with(kCrLf)) inner.remove_suffix(kCrLf.size());
  while (inner.starts_with(kCrLf)) inner.remove_prefix(kCrLf.size());
  return std::u16string(inner).append(kCrLf);
}

}  // namespace

std::u16string CreateSelect(std::span<const GroupedEntry> entries,
                            std::span<const std::u16string> record, std::u16string_view scope) {
  const RecordedItems recorded(record);
  std::u16string result;
  for (const auto& entry : entries) {
    const auto item = recorded.Find(entry);
    if (!item) continue;
    if (item->kind == Kind::kType) result += kCrLf;
    AppendItemText(item->kind, item->name, item->item, scope, result);
    result += kCrLf;
  }
  return TidyLineEnds(result);
}

}  // namespace declarium
