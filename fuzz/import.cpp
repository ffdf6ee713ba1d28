// Any source text: bytes and decoded text are read alike, the line routines keep their promises,
// and a library can keep what either reading gives.
#include <algorithm>

#include "fuzz/input.h"
#include "import/reading.h"
#include "library/file_format.h"
#include "text/text.h"

using namespace declarium;
using fuzz::Require;

namespace {

void RequireEqual(const ParsedItems& a, const ParsedItems& b) {
  for (const auto kind : kKinds) {
    Require(a[kind].names == b[kind].names, "bytes give the names that text gives");
    Require(a[kind].items == b[kind].items, "bytes give the items that text gives");
    Require(a[kind].names.size() == a[kind].items.size(), "every name has an item");
    for (const auto name : a[kind].names) {
      Require(!name.empty() && !name.contains(u' '), "a name is one word");
    }
  }
  Require(std::ranges::equal(a.skipped, b.skipped, {}, &SkippedLine::number, &SkippedLine::number),
          "bytes skip the lines that text skips");
  Require(std::ranges::is_sorted(a.skipped, {}, &SkippedLine::number), "skipped lines in order");
}

void RequireKeepable(const ParsedItems& parsed) {
  for (const auto kind : kKinds) {
    for (const auto name : parsed[kind].names) Require(IsKeepable(name), "a name can be kept");
    for (const auto item : parsed[kind].items) Require(IsKeepable(item), "an item can be kept");
  }
}

void CheckLine(std::u16string_view line) {
  const auto normalized = NormalizeLine(line);
  Require(!normalized.starts_with(u' ') && !normalized.contains(u'\t'),
          "a normalized line has no tab and no blank in front");
  for (const int n : {1, 2, 3, 5}) {
    Require(line.ends_with(RestAfterBlank(line, n)), "the rest is the end of the line");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto bytes = fuzz::Bytes(data, size);
  auto source = ReadSource(bytes);
  for (const auto line : Split(source.text, kCrLf)) CheckLine(line);
  JoinContinuedLines(source);
  RequireEqual(ParseSourceFile(bytes), ParseDeclarations(source));
  const auto encoding = RecognizeEncoding(bytes, kLibraryEncoding);
  const auto literal = ParseSourceFile(bytes, encoding);
  RequireKeepable(literal);
  RequireKeepable(ReadAsVisualBasic(DecodeText(bytes, encoding), literal).items);
  return 0;
}
