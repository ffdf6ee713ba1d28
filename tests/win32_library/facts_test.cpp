// What the facts files say of the bundled libraries, held against the libraries themselves.
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "bundled.h"
#include "facts/facts_file.h"
#include "library/library_file.h"
#include "source/item_text.h"
#include "text/text.h"
#include "vb/module.h"

namespace declarium {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;

// A library and the facts beside it.
struct Bundled {
  Library rows;
  FactsFile facts;
};

const Bundled& BundledNamed(const std::string& name) {
  static std::map<std::string, Bundled> loaded;
  const std::string path = win32_library_test::LibraryPath(name);
  if (!loaded.contains(name))
    loaded.emplace(name,
                   Bundled{LoadLibraryFile(path).value(), FactsFile::OpenBeside(path).value()});
  return loaded.at(name);
}

ValueFacts Value(const RowFacts& facts, std::string_view name) {
  for (const auto& value : facts.values)
    if (value.name == name) return value;
  ADD_FAILURE() << "no value named " << name;
  return {};
}

// Each library by itself.
class BundledFacts : public ::testing::TestWithParam<std::string> {
 protected:
  static const Library& Rows() { return BundledNamed(GetParam()).rows; }
  static const FactsFile& Facts() { return BundledNamed(GetParam()).facts; }
  // Calls `take` with each row of the kind and its facts.
  template <typename Take>
  static void ForEachRow(Kind kind, const Take& take) {
    const auto& lists = Rows()[kind];
    for (std::size_t i = 0; i < lists.names.size(); ++i) {
      const auto name = lists.names[i];
      const auto facts = Facts().Find(kind, name);
      ASSERT_TRUE(facts) << ToUtf8(name);
      take(name, lists.ItemAt(i), *facts);
    }
  }
};

INSTANTIATE_TEST_SUITE_P(Libraries, BundledFacts,
                         ::testing::ValuesIn(win32_library_test::LibraryNames()),
                         [](const auto& tested) { return tested.param; });

// The library that desktop programs use.
class Win32Facts : public ::testing::Test {
 protected:
  static const FactsFile& Facts() { return BundledNamed("Win32").facts; }
};

std::vector<std::string> NamesOf(const std::vector<ValueFacts>& values) {
  std::vector<std::string> names;
  names.reserve(values.size());
  for (const auto& value : values) names.emplace_back(value.name);
  return names;
}

// The names of a row's parameters or members, as the language reads it.
std::vector<std::string> NamesIn(std::u16string_view text) {
  const auto module = vb::ReadModule(text);
  std::vector<std::string> names;
  for (const auto& declaration : module.declarations) {
    if (const auto* external = declaration.As<vb::External>())
      for (const auto& parameter : external->parameters) names.push_back(ToUtf8(parameter.name));
    if (const auto* record = declaration.As<vb::Record>())
      for (const auto& member : record->members) names.push_back(ToUtf8(member.name));
  }
  return names;
}

TEST_P(BundledFacts, EveryRowHasAHeader) {
  for (const Kind kind : kKinds)
    ForEachRow(kind, [](auto name, auto, const RowFacts& facts) {
      EXPECT_FALSE(facts.header.empty()) << ToUtf8(name);
    });
}

TEST_P(BundledFacts, ProceduresHaveTheLibraryEntryAndParametersOfTheirRows) {
  ForEachRow(Kind::kDeclare, [](auto name, auto item, const RowFacts& facts) {
    const auto text = ItemText(Kind::kDeclare, name, item);
    const auto module = vb::ReadModule(text);
    ASSERT_EQ(module.declarations.size(), 1) << ToUtf8(name);
    const auto* external = module.declarations[0].template As<vb::External>();
    EXPECT_EQ(facts.library, ToUtf8(external->library)) << ToUtf8(name);
    EXPECT_EQ(facts.entry, ToUtf8(external->alias)) << ToUtf8(name);
    EXPECT_EQ(NamesOf(facts.values), NamesIn(text)) << ToUtf8(name);
  });
}

TEST_P(BundledFacts, RecordsHaveTheMembersOfTheirRows) {
  ForEachRow(Kind::kType, [](auto name, auto item, const RowFacts& facts) {
    EXPECT_EQ(NamesOf(facts.values), NamesIn(ItemText(Kind::kType, name, item))) << ToUtf8(name);
  });
}

TEST_P(BundledFacts, ConstantsThatBelongSomewhereAreInTheLibrary) {
  std::set<std::string> sets;
  for (const Kind kind : {Kind::kDeclare, Kind::kType})
    ForEachRow(kind, [&](auto, auto, const RowFacts& facts) {
      for (const auto& value : facts.values)
        if (!value.set.empty()) sets.emplace(value.set);
    });
  for (const auto& name : sets) {
    const auto set = Facts().FindSet(name);
    EXPECT_FALSE(set.constants.empty() && set.by_prefix.empty()) << name;
    for (const auto& list : {set.constants, set.by_prefix})
      for (const auto constant : list)
        EXPECT_TRUE(FindItem(Rows(), Kind::kConst, FromUtf8(constant))) << constant;
  }
}

TEST_P(BundledFacts, RelatedProceduresAreInTheLibrary) {
  ForEachRow(Kind::kDeclare, [](auto name, auto, const RowFacts& facts) {
    for (const auto& related : facts.related)
      EXPECT_TRUE(FindItem(Rows(), Kind::kDeclare, FromUtf8(related.name)))
          << ToUtf8(name) << " " << related.name;
  });
}

TEST_F(Win32Facts, HaveTheConstantsOfManyParameters) {
  std::ifstream file(DECLARIUM_SOURCE_DIR "/data/Win32.facts");
  int sets = 0;
  for (std::string line; std::getline(file, line);) sets += line.starts_with("s\t") ? 1 : 0;
  EXPECT_GT(sets, 500);
}

// By the documentation of SetWindowPos.
TEST_F(Win32Facts, SetWindowPosTakesItsFlags) {
  const auto facts = Facts().Find(Kind::kDeclare, u"SetWindowPos").value();
  EXPECT_EQ(facts.library, "user32");
  EXPECT_EQ(facts.header, "winuser.h");
  EXPECT_TRUE(facts.sets_last_error);
  EXPECT_TRUE(Value(facts, "hWndInsertAfter").is_optional);
  EXPECT_EQ(Value(facts, "uFlags").c_type, "UINT");
  const auto set = Facts().FindSet(Value(facts, "uFlags").set);
  EXPECT_TRUE(set.is_flags);
  EXPECT_THAT(set.constants, IsSupersetOf({"SWP_NOSIZE", "SWP_NOMOVE", "SWP_NOZORDER"}));
}

TEST_F(Win32Facts, AConstantOfNoEnumerationJoinsByItsBeginning) {
  const auto facts = Facts().Find(Kind::kDeclare, u"SendMessage").value();
  const auto set = Facts().FindSet(Value(facts, "Msg").set);
  EXPECT_THAT(set.constants, IsEmpty());
  EXPECT_THAT(set.by_prefix, IsSupersetOf({"WM_CLOSE", "EM_SETSEL", "LB_ADDSTRING"}));
  EXPECT_THAT(set.by_prefix, Not(Contains("WS_CHILD")));
}

TEST_F(Win32Facts, AHandleIsClosedByWhatItsTypeSays) {
  const auto closing = [](std::u16string_view name) {
    std::vector<std::string> closed;
    const auto row = Facts().Find(Kind::kDeclare, name).value();
    for (const auto& related : row.related)
      if (related.how == "close") closed.emplace_back(related.name);
    return closed;
  };
  EXPECT_THAT(closing(u"CreateFile"), ElementsAre("CloseHandle"));
  EXPECT_THAT(closing(u"LoadLibrary"), ElementsAre("FreeLibrary"));
  EXPECT_THAT(closing(u"ShellExecute"), IsEmpty());
  EXPECT_THAT(closing(u"GetCurrentProcess"), IsEmpty());
}

TEST_F(Win32Facts, EveryLineOfTheListOfPrefixesIsUsed) {
  std::ifstream list(DECLARIUM_SOURCE_DIR "/tools/win32-library/prefixes.txt");
  int lines = 0;
  for (std::string line; std::getline(list, line);) {
    if (line.empty() || line.starts_with('#')) continue;
    std::istringstream words(line);
    std::string row;
    std::string value;
    std::string set;
    words >> row >> value;
    for (std::string prefix; words >> prefix;) set += (set.empty() ? "" : ",") + prefix + "*";
    auto facts = Facts().Find(Kind::kType, FromUtf8(row));
    if (!facts) facts = Facts().Find(Kind::kDeclare, FromUtf8(row));
    ASSERT_TRUE(facts) << line;
    EXPECT_EQ(Value(*facts, value).set, set) << line;
    ++lines;
  }
  EXPECT_GT(lines, 50);
}

TEST_P(BundledFacts, TheLinesAreInOrder) {
  std::ifstream file(DECLARIUM_SOURCE_DIR "/data/" + GetParam() + ".facts");
  ASSERT_TRUE(file);
  std::string before;
  std::getline(file, before);
  before.clear();
  for (std::string line; std::getline(file, line); before = line) EXPECT_LT(before, line);
}

}  // namespace
}  // namespace declarium
