// What the command-line tool writes for a procedure with everything it needs.
#include <fstream>
#include <set>

#include "gmock/gmock.h"
#include "gtest/gtest.h"

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

constexpr const char* kLibrary = DECLARIUM_SOURCE_DIR "/data/Win32.api";

std::vector<std::string> FunctionsByUse() {
  std::ifstream file(DECLARIUM_SOURCE_DIR "/tests/win32_library/functions_by_use.txt");
  std::vector<std::string> names;
  for (std::string name; file >> name;) names.push_back(name);
  return names;
}

std::string BasketText(const Toolchain& toolchain, const std::string& function) {
  return toolchain.Output(std::string(DECLARIUM_CLI) + " basket " + kLibrary +
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

TEST(BasketOfTheLibrary, TheCheckFindsWhatIsMissing) {
  EXPECT_THAT(Faults("Public Declare Sub F Lib \"x\" (r As RECT)\r\n"),
              ::testing::ElementsAre("RECT is not declared"));
  EXPECT_THAT(Faults("Public Const A = 1\r\nPublic Declare Sub A Lib \"x\" ()\r\n"),
              ::testing::ElementsAre("A is declared twice"));
}

}  // namespace
}  // namespace declarium::win32_library_test
