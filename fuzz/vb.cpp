// Any text as a module: its tokens are the text again, its declarations stand where they are said
// to, and what they mean is told without fault.
#include "fuzz/input.h"
#include "vb/definitions.h"
#include "vb/module.h"

using namespace declarium;
using fuzz::Require;

namespace {

void CheckTokens(std::u16string_view text) {
  std::size_t end = 0;
  vb::Tokenizer tokenizer(text);
  for (auto token = tokenizer.Next(); token.kind != vb::TokenKind::kEnd; token = tokenizer.Next()) {
    Require(token.place.offset == end && !token.text.empty(), "tokens stand side by side");
    end += token.text.size();
    Require(token.text == text.substr(token.place.offset, token.text.size()), "a token is text");
  }
  Require(end == text.size(), "the tokens are the whole text");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto text = DecodeCodePage(fuzz::Bytes(data, size));
  CheckTokens(text);
  const auto module = vb::ReadModule(text);
  vb::Definitions definitions(vb::Target::kVba7x64);
  definitions.Add(module);
  for (const auto& declaration : module.declarations) {
    const auto start = declaration.place.offset;
    Require(declaration.text == std::u16string_view(text).substr(start, declaration.text.size()),
            "a declaration stands at its place");
    Require(declaration.condition < module.conditions.size(), "its condition is known");
    (void)definitions.ValueOf(declaration.name);
    if (const auto* const record = declaration.As<vb::Record>())
      (void)definitions.LayoutOf(*record);
  }
  for (const auto& error : module.errors)
    Require(error.place.offset <= text.size(), "an error stands in the text");
  return 0;
}
