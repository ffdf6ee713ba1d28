// Any module, rewritten for any target: written again it is the same, and nothing but whole lines
// of declarations differs.
#include "target/rewrite.h"

#include "fuzz/input.h"

using namespace declarium;
using fuzz::Require;

namespace {

constexpr std::string_view kFacts =
    "Declarium facts 1\n"
    "D\tb\t!none\n"
    "T\tr\ta As Long|b(3) As Byte\n"
    "d\ta\th\tu\t\t\t\t\t||HWND||LongPtr\tx|i|HWND||LongPtr\ty||||*\n"
    "d\tb\th\tu\t\t\t\t\t\tx\n"
    "t\tm\th\ta||HWND||LongPtr\tb\n"
    "t\tr\th\ta\tb\n";

KnowledgeOf64 Knowledge() {
  std::vector<FactsFile> facts;
  facts.push_back(FactsFile::Of(ViewOf(std::string(kFacts)), "sample.facts").value());
  return KnowledgeOf64(std::move(facts));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto knowledge = Knowledge();
  auto bytes = fuzz::Bytes(data, size);
  const auto text = DecodeCodePage(bytes);
  for (const auto target :
       {vb::Audience::kVba7, vb::Audience::kVba7Only, vb::Audience::kTwinBasic}) {
    const auto kind = vb::ModuleKind::kStandard;
    const auto once = RewriteDeclarations(text, kind, target, knowledge);
    const auto twice = RewriteDeclarations(once.text, kind, target, knowledge);
    Require(twice.text == once.text, "written again it is the same");
    std::size_t done = 0;
    std::u16string old;
    std::u16string now;
    for (const auto& replacement : once.replacements) {
      Require(replacement.begin >= done && replacement.end >= replacement.begin &&
                  replacement.end <= text.size(),
              "replacements follow each other");
      now += text.substr(done, replacement.begin - done) + replacement.text;
      done = replacement.end;
    }
    now += text.substr(done);
    Require(now == once.text, "nothing else changes");
  }
  return 0;
}
