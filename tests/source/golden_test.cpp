// Whole texts against files below tests/source/golden.
#include "support/golden.h"

#include <filesystem>
#include <gtest/gtest.h>

#include "basket/insertion_text.h"
#include "basket/recorded_items.h"
#include "library/item.h"
#include "library/library.h"
#include "source/format_text.h"
#include "source/item_text.h"
#include "text/code_page.h"

namespace declarium {
namespace {

const std::filesystem::path kGolden = DECLARIUM_SOURCE_DIR "/tests/source/golden";

void ExpectGolden(const std::string& name, std::u16string_view text) {
  ExpectGoldenFile(kGolden / name, EncodeCodePage(text));
}

struct Item {
  Kind kind;
  std::u16string_view name;
  std::u16string_view item;
};

// In the order of a basket.
constexpr Item kItems[] = {
    {Kind::kConst, u"APP_NAME", u"\x0E\"As Long, (String)\""},
    {Kind::kConst, u"FLAGS", u"\x0E(SW_SHOW Or &H100) And Not SW_HIDE"},
    {Kind::kConst, u"SW_SHOW",
     u"Long\x0E"
     u"5 'shows  the window"},
    {Kind::kDeclare, u"FindFirstFile",
     u"\x0B\"kernel32\" Alias \"FindFirstFileA\"     (ByVal lpFileName As String, lpFindFileData "
     u"As WIN32_FIND_DATA) As Long"},
    {Kind::kDeclare, u"Sleep", u"\n\"kernel32\" ( ByVal dwMilliseconds As Long )"},
    {Kind::kType, u"RECT", u"'in pixels\x0CLeft As Long\rTop As Long"},
    {Kind::kType, u"WIN32_FIND_DATA",
     u"\x0C"
     u"dwFileAttributes As Long\r'the names of Type String\rcFileName As String * "
     u"MAX_PATH\rreserved(0 To 3) As Byte\r\rrc As RECT"},
};

std::u16string BasketText() {
  std::vector<GroupedEntry> entries;
  std::vector<std::u16string> record;
  for (const auto& [kind, name, item] : kItems) {
    entries.push_back({std::u16string(name), IconOf(kind)});
    record.push_back(ItemKey(KindCode(kind), name) + u'\0' + std::u16string(item));
  }
  return CreateSelect(entries, record, kPublic);
}

TEST(Golden, Basket) {
  ExpectGolden("basket.golden", BasketText());
}

TEST(Golden, Export) {
  Library library;
  for (const auto& [kind, name, item] : kItems) {
    auto lists = library[kind];
    lists.names.Add(name);
    lists.items.Add(item);
    library.SetItems(kind, std::move(lists));
  }
  ExpectGolden("export.golden", ExportText(library));
}

// One run a line: its color, then its text with CR LF written as "\n".
std::u16string RunLines(std::u16string_view text) {
  std::u16string lines;
  for (const auto& [color, piece] : FormatText(text)) {
    lines += color == TextColor::kKeyword   ? u"keyword|"
             : color == TextColor::kComment ? u"comment|"
                                            : u"normal |";
    for (const char16_t unit : piece) {
      if (unit == u'\r') continue;
      if (unit == u'\n') {
        lines += u"\\n";
      } else {
        lines += unit;
      }
    }
    lines += u"|\r\n";
  }
  return lines;
}

TEST(Golden, Colors) {
  ExpectGolden("colors.golden", RunLines(BasketText()));
}

TEST(Golden, ColorsOfAWholeModule) {
  ExpectGolden("declarations.golden",
               RunLines(DecodeCodePage(ReadGolden(kGolden / "declarations.bas"))));
}

}  // namespace
}  // namespace declarium
