// What the command-line tool writes for a procedure with everything it needs.
#include "basket/closure.h"

#include <algorithm>
#include <fstream>
#include <set>

#include "gmock/gmock.h"
#include "gtest/gtest.h"

#include "basket/basket.h"
#include "basket/insertion_order.h"
#include "basket/insertion_text.h"
#include "bundled.h"
#include "import/merge.h"
#include "import/parser.h"
#include "library/library_file.h"
#include "needs/shared_items.h"
#include "text/code_page.h"
#include "text/text.h"
#include "toolchain.h"

namespace declarium::win32_library_test {
namespace {

using ::testing::IsEmpty;

std::vector<std::string> FunctionsByUse() {
  std::ifstream file(DECLARIUM_SOURCE_DIR "/tests/win32_library/functions_by_use.txt");
  std::vector<std::string> names;
  for (std::string name; file >> name;) names.push_back(name);
  return names;
}

std::string BasketText(const Toolchain& toolchain, const std::string& function) {
  return toolchain.Output(std::string(DECLARIUM_CLI) + " basket " + LibraryPath("Win32") +
                          " declare:" + function + " --closure --scope Public");
}

// The text as the importer reads it.
ParsedItems Parse(const std::string& text) {
  return ParseDeclarations(ReadSource(std::string_view(text)));
}

Library DatabaseOf(const ParsedItems& parsed) {
  Library library;
  MergeItems(library, parsed, Existing::kReplace);
  return library;
}

bool IsOwnType(std::u16string_view name) {
  return name == u"Single" || name == u"Date" || name == u"Object";
}

// The names that the text refers to and does not declare, and those it declares twice.
std::vector<std::string> Faults(const std::string& text) {
  const ParsedItems parsed = Parse(text);
  const Library library = DatabaseOf(parsed);
  std::vector<std::string> faults;
  std::set<std::u16string> declared;
  for (const Kind kind : kKinds) {
    // A record may have the name of a procedure.
    if (kind == Kind::kType) declared.clear();
    for (const std::u16string_view name : parsed[kind].names)
      if (!declared.insert(LowerCase(name)).second)
        faults.push_back(EncodeCodePage(name) + " is declared twice");
    for (const std::u16string_view item : parsed[kind].items)
      for (const GroupedEntry& entry : CreateShared(kind, item))
        if (!FindItem(library, *KindOfIcon(entry.icon), entry.text) && !IsOwnType(entry.text))
          faults.push_back(EncodeCodePage(entry.text) + " is not declared");
  }
  return faults;
}

TEST(BasketOfTheLibrary, HoldsEverythingThatAProcedureNeedsOnce) {
  const std::vector<std::string> functions = FunctionsByUse();
  ASSERT_GE(functions.size(), 200u);
  const Toolchain toolchain;
  for (const std::string& function : functions) {
    const std::string text = BasketText(toolchain, function);
    EXPECT_NE(text.find(" " + function + " Lib "), std::string::npos) << function;
    EXPECT_THAT(Faults(text), IsEmpty()) << function;
  }
}

// The records that stand before a record that is one of their members, or before themselves.
std::vector<std::string> RecordsUsedTooEarly(const std::string& text) {
  const ParsedItems parsed = Parse(text);
  const auto& [names, items] = parsed[Kind::kType];
  std::set<std::u16string> all;
  for (const auto name : names) all.insert(LowerCase(name));
  std::vector<std::string> faults;
  std::set<std::u16string> defined;
  for (std::size_t i = 0; i < names.size(); ++i) {
    for (const GroupedEntry& entry : CreateShared(Kind::kType, items[i])) {
      const auto member = LowerCase(entry.text);
      if (entry.icon == IconOf(Kind::kType) && all.contains(member) && !defined.contains(member))
        faults.push_back(EncodeCodePage(names[i]) + " stands before " + EncodeCodePage(entry.text));
    }
    defined.insert(LowerCase(names[i]));
  }
  return faults;
}

TEST(BasketOfTheLibrary, HoldsEveryRecordBehindTheRecordsThatAreItsMembers) {
  const Toolchain toolchain;
  for (const std::string& function : FunctionsByUse()) {
    EXPECT_THAT(RecordsUsedTooEarly(BasketText(toolchain, function)), IsEmpty()) << function;
  }
}

TEST(BasketOfTheLibrary, TheCheckFindsARecordUsedTooEarly) {
  EXPECT_THAT(RecordsUsedTooEarly("Type A\r\n\tb As B\r\nEnd Type\r\n"
                                  "Type B\r\n\tx As Long\r\nEnd Type\r\n"),
              ::testing::ElementsAre("A stands before B"));
}

TEST(BasketOfTheLibrary, HoldsConstantsBeforeTheRecordsThatTheyGiveLengths) {
  const Toolchain toolchain;
  const std::string text = BasketText(toolchain, "FindFirstFile");
  const std::size_t constant = text.find("Public Const MAX_PATH As Long = 260");
  const std::size_t use = text.find("cFileName As String * MAX_PATH");
  ASSERT_NE(constant, std::string::npos);
  ASSERT_NE(use, std::string::npos);
  EXPECT_LT(constant, use);
}

// What a row's text with everything that it needs declares, from its first line to its last.
struct DeclaredNames {
  std::vector<std::u16string> names;  // kind digit and lower-cased name
  std::vector<std::string> too_early;
};

std::u16string_view NextWord(std::u16string_view& line) {
  const auto end = line.find(u' ');
  const auto word = line.substr(0, end);
  line.remove_prefix(end == line.npos ? line.size() : end + 1);
  return word;
}

// Kind digit and lower-cased name of what a line declares; empty for a line inside a record.
std::u16string DeclaredBy(std::u16string_view line) {
  if (NextWord(line) != u"Private") return {};
  const auto word = NextWord(line);
  if (word == u"Const") return u"0" + LowerCase(NextWord(line));
  if (word == u"Type") return u"2" + LowerCase(NextWord(line));
  NextWord(line);
  return u"1" + LowerCase(NextWord(line));
}

// Lower-cased runs of letters, digits and underscores outside literals behind the first "=" or, in
// a record, behind the member's name.
std::vector<std::u16string> WordsUsed(std::u16string_view line) {
  std::vector<std::u16string> words;
  if (line.starts_with(u"\t\t\t")) return words;
  auto start = line.starts_with(u'\t') ? line.find_first_of(u" (") : line.find(u'=');
  const auto is_word = [](char16_t unit) {
    return unit == u'_' || IsDigit(unit) || (LowerCase(unit) >= u'a' && LowerCase(unit) <= u'z');
  };
  while (start < line.size()) {
    if (line[start] == u'"') start = std::min(line.find(u'"', start + 1), line.size() - 1);
    auto end = start;
    while (end < line.size() && is_word(line[end])) ++end;
    if (end > start) words.push_back(LowerCase(line.substr(start, end - start)));
    start = end + 1;
  }
  return words;
}

DeclaredNames Declared(std::u16string_view text, const std::set<std::u16string>& listed) {
  DeclaredNames declared;
  std::set<std::u16string> above;
  std::u16string record;
  for (const auto line : Split(text, kCrLf)) {
    const auto name = DeclaredBy(line);
    if (name.starts_with(u'1')) {
      declared.names.push_back(name);
      continue;
    }
    for (const auto& word : WordsUsed(line)) {
      for (const char16_t kind : {u'0', u'2'}) {
        const auto used = kind + word;
        if (listed.contains(used) && !above.contains(used)) {
          declared.too_early.push_back(EncodeCodePage(line));
        }
      }
    }
    if (name.starts_with(u'2')) record = name;
    if (name.starts_with(u'0')) above.insert(name);
    if (line == u"End Type") above.insert(record);
    if (!name.empty()) declared.names.push_back(name);
  }
  return declared;
}

Basket WithClosure(const Library& library, const ItemView& item) {
  Basket basket;
  basket.Add(item.kind, item.name, item.item);
  for (const Reference& reference : FollowSharedItems(library, item)) {
    if (const auto& found = reference.found) basket.Add(found->kind, found->name, found->item);
  }
  return basket;
}

void CheckEveryRow(const Library& library) {
  for (const Kind kind : kKinds) {
    const auto& [names, items] = library[kind];
    for (std::size_t i = 0; i < names.size(); ++i) {
      const Basket basket = WithClosure(library, {kind, names[i], items.At(i)});
      const GroupedList order = InsertionOrder(basket);
      std::vector<std::u16string> listed;
      for (const auto& [name, icon] : order) {
        listed.push_back(static_cast<char16_t>(u'0' + icon - 1) + LowerCase(name));
      }
      const auto text = CreateSelect(order, basket.Record(), kPrivate);
      const auto declared = Declared(text, {listed.begin(), listed.end()});
      ASSERT_EQ(declared.names, listed) << EncodeCodePage(text);
      ASSERT_THAT(declared.too_early, IsEmpty()) << EncodeCodePage(text);
    }
  }
}

class BasketOfALibrary : public ::testing::TestWithParam<std::string> {};

INSTANTIATE_TEST_SUITE_P(Bundled, BasketOfALibrary, ::testing::ValuesIn(LibraryNames()),
                         [](const auto& tested) { return tested.param; });

TEST_P(BasketOfALibrary, EveryRowWithWhatItNeedsHoldsEachListedItemOnceBehindWhatThatUses) {
  const auto library = LoadLibraryFile(LibraryPath(GetParam()));
  ASSERT_TRUE(library);
  ASSERT_TRUE(library->HasItems());
  CheckEveryRow(*library);
}

TEST(BasketOfTheLibrary, TheCheckFindsAConstantOrRecordUsedTooEarly) {
  const std::set<std::u16string> listed = {u"0a", u"0b", u"2r", u"2s"};
  EXPECT_THAT(Declared(u"Private Const A = 1+b\r\nPrivate Const B = 1\r\n", listed).too_early,
              ::testing::ElementsAre("Private Const A = 1+b"));
  EXPECT_THAT(Declared(u"Private Type R\r\n\tm(1 To 2) As S\r\nEnd Type\r\n"
                       u"Private Type S\r\n\tm As Long\r\nEnd Type\r\n",
                       listed)
                  .too_early,
              ::testing::ElementsAre("\tm(1 To 2) As S"));
}

TEST(BasketOfTheLibrary, TheCheckFindsWhatIsMissing) {
  EXPECT_THAT(Faults("Public Declare Sub F Lib \"x\" (r As RECT)\r\n"),
              ::testing::ElementsAre("RECT is not declared"));
  EXPECT_THAT(Faults("Public Const A = 1\r\nPublic Declare Sub A Lib \"x\" ()\r\n"),
              ::testing::ElementsAre("A is declared twice"));
}

}  // namespace
}  // namespace declarium::win32_library_test
