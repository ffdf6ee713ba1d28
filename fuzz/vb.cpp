// Any text as a module: its tokens are the text again, its declarations stand where they are said
// to, and what they mean is told without fault. The same text as a project: its paths and constants
// stand where they are said to.
#include "fuzz/input.h"
#include "vb/definitions.h"
#include "vb/project.h"

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

void CheckProject(std::u16string_view text) {
  const auto stands_at = [text](const vb::Place& place, std::u16string_view part) {
    return text.substr(place.offset, part.size()) == part;
  };
  const auto project = vb::ReadProject(text);
  for (const auto& module : project.modules)
    Require(stands_at(module.place, module.path), "a module stands at its place");
  for (const auto& reference : project.references)
    Require(reference.path.empty() || stands_at(reference.place, reference.path),
            "a reference stands at its place");
  for (const auto& constant : project.constants)
    Require(stands_at(constant.place, constant.name), "a constant stands at its place");
  for (const auto& error : project.errors)
    Require(error.place.offset <= text.size(), "a project's error stands in the text");
  for (const auto& each : vb::ReadProjectGroup(text).projects)
    Require(stands_at(each.place, each.path), "a project stands at its place");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto text = DecodeCodePage(fuzz::Bytes(data, size));
  CheckTokens(text);
  CheckProject(text);
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
