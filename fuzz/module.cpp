// Any module and inserted text: the text is in the result, and no byte of the module is touched.
#include <algorithm>

#include "fuzz/input.h"
#include "source/module_text.h"

using namespace declarium;
using fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  auto bytes = fuzz::Bytes(data, size);
  const auto text = fuzz::TakeText(bytes);
  const auto module = InsertIntoModule(bytes, text);
  Require(module.has_value(), "text of a library can be put into any module");

  // The module cut at some place is a beginning of the old bytes, what came, and their rest.
  const auto came = module->bytes.size() - bytes.size();
  const auto same = std::ranges::mismatch(bytes, module->bytes).in1 - bytes.begin();
  bool is_inserted = false;
  for (std::size_t end = 0; end <= static_cast<std::size_t>(same) && !is_inserted; ++end) {
    is_inserted = std::string_view(module->bytes).substr(end + came) == bytes.substr(end);
  }
  Require(is_inserted, "every old byte stays");
  const auto text_again =
      DecodeText(module->bytes, module->encoding).find(module->inserted) != std::u16string::npos;
  Require(text_again, "the text is in the module");
  return 0;
}
