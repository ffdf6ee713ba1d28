// Any module content and inserted text: the text is in the result once more, and nothing is lost.
#include "fuzz/input.h"
#include "source/module_text.h"
#include "text/text.h"

using namespace declarium;
using fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  auto bytes = fuzz::Bytes(data, size);
  const auto text = fuzz::TakeText(bytes);
  const auto content = DecodeCodePage(bytes);
  const auto result = InsertIntoModule(content, text);
  Require(result.size() == content.size() + text.size() + kCrLf.size(),
          "the result is the content, the text and one line end");

  // The result cut at some place is a beginning of the content, the text, and the rest of it.
  bool is_inserted = false;
  for (std::size_t end = 0; end + text.size() <= result.size() && !is_inserted; ++end) {
    if (result.compare(end, text.size(), text) != 0) continue;
    const auto before = std::u16string_view(result).substr(0, end);
    const auto behind = std::u16string_view(result).substr(end + text.size());
    const auto kept = before.size() >= 2 ? before.size() - kCrLf.size() : 0;
    is_inserted = before.ends_with(kCrLf) && content.starts_with(before.substr(0, kept)) &&
                  ((content.starts_with(before) && content.substr(kept) == behind) ||
                   (content.size() == kept && behind.empty()));
  }
  Require(is_inserted, "the text stands behind a line end of the content");
  return 0;
}
