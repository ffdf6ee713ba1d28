#include "facts/facts_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <string>

#include "facts/dll_key.h"
#include "support/temporary_folder.h"
#include "text/text.h"

namespace declarium {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::string_view kFacts =
    "Declarium facts 1\n"
    "D\tgetinner\tDeclare PtrSafe Sub GetInner Lib \"user32\" (ByVal Point As LongLong)\n"
    "D\tgetold\t!it exists in 32 bits only\n"
    "T\tpacked\ta As LongPtr|b(3) As Byte\n"
    "c\tmax_path\tminwindef.h\n"
    "c\tplain\n"
    "d\tgetouter\tsample.h\tuser32\tGetOuterA\t5.1.2600 metadata\te\twide=GetOuterW "
    "close=CloseOuter\t||HANDLE||LongPtr\thWnd|i?|HWND||LongPtr\tnFlags|i|UINT|OUTER_"
    "FLAGS\tlpOuter|o|OUTER *||*\tnZero|ir|DWORD\n"
    "d\tresetall\tsample.h\tuser32\n"
    "s\tOUTER_FLAGS\tf\tOF_ONE OF_TWO\tOF_OTHER\n"
    "t\trect\twindef.h\tLeft||LONG\tstyle||DWORD|OUTER_FLAGS\n";

FactsFile Facts(std::string_view text) {
  return FactsFile::Of(ViewOf(std::string(text)), "sample.facts").value();
}

TEST(DllKey, IsTheNameWithoutFolderEndingAndCase) {
  for (const auto* written : {u"User32", u"user32.DLL", u" user32 ", u"C:\\Windows/USER32.dll"})
    EXPECT_EQ(DllKey(written), u"user32");
  EXPECT_EQ(DllKey(u"winspool.drv"), u"winspool.drv");
  EXPECT_EQ(DllKey(u""), u"");
}

TEST(FactsFile, TellsWhatIsKnownOfAProcedure) {
  const auto file = Facts(kFacts);
  const auto facts = file.Find(Kind::kDeclare, u"GetOuter");
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->header, "sample.h");
  EXPECT_EQ(facts->library, "user32");
  EXPECT_EQ(facts->entry, "GetOuterA");
  EXPECT_EQ(facts->since, "5.1.2600");
  EXPECT_EQ(facts->since_source, "metadata");
  EXPECT_TRUE(facts->sets_last_error);
  ASSERT_EQ(facts->related.size(), 2);
  EXPECT_EQ(facts->related[0].how, "wide");
  EXPECT_EQ(facts->related[0].name, "GetOuterW");
  EXPECT_EQ(facts->related[1].name, "CloseOuter");
}

TEST(FactsFile, TellsHowParametersArePassed) {
  const auto file = Facts(kFacts);
  const auto values = file.Find(Kind::kDeclare, u"GetOuter")->values;
  ASSERT_EQ(values.size(), 4);
  EXPECT_EQ(values[0].name, "hWnd");
  EXPECT_EQ(values[0].c_type, "HWND");
  EXPECT_TRUE(values[0].is_in && values[0].is_optional && !values[0].is_out);
  EXPECT_EQ(values[1].set, "OUTER_FLAGS");
  EXPECT_TRUE(values[2].is_out && !values[2].is_in);
  EXPECT_EQ(values[2].c_type, "OUTER *");
  EXPECT_TRUE(values[3].is_reserved);
}

TEST(FactsFile, TellsWhatTypesAreIn64Bits) {
  const auto file = Facts(kFacts);
  const auto facts = file.Find(Kind::kDeclare, u"GetOuter");
  EXPECT_EQ(facts->result.c_type, "HANDLE");
  EXPECT_EQ(facts->result.type64, "LongPtr");
  EXPECT_EQ(facts->values[0].type64, "LongPtr");
  EXPECT_EQ(facts->values[1].type64, "");
  EXPECT_EQ(facts->values[2].type64, "*");
}

TEST(FactsFile, TellsFormsOf64BitsThatAreOthers) {
  const auto file = Facts(kFacts);
  EXPECT_EQ(file.FindForm64(Kind::kDeclare, u"GetInner")->text,
            "Declare PtrSafe Sub GetInner Lib \"user32\" (ByVal Point As LongLong)");
  EXPECT_EQ(file.FindForm64(Kind::kDeclare, u"GetOld")->reason, "it exists in 32 bits only");
  EXPECT_EQ(file.FindForm64(Kind::kDeclare, u"GetOld")->text, "");
  EXPECT_EQ(file.FindForm64(Kind::kType, u"Packed")->text, "a As LongPtr|b(3) As Byte");
  EXPECT_FALSE(file.FindForm64(Kind::kType, u"GetOld"));
  EXPECT_FALSE(file.FindForm64(Kind::kDeclare, u"GetOuter"));
}

TEST(FactsFile, TellsMembersAndTheirConstants) {
  const auto file = Facts(kFacts);
  const auto facts = file.Find(Kind::kType, u"RECT");
  ASSERT_TRUE(facts);
  ASSERT_EQ(facts->values.size(), 2);
  const auto set = file.FindSet(facts->values[1].set);
  EXPECT_TRUE(set.is_flags);
  EXPECT_THAT(set.constants, ElementsAre("OF_ONE", "OF_TWO"));
  EXPECT_THAT(set.by_prefix, ElementsAre("OF_OTHER"));
}

TEST(FactsFile, FindsNamesInAnyCaseAndOfTheKindOnly) {
  const auto file = Facts(kFacts);
  EXPECT_EQ(file.Find(Kind::kConst, u"Max_Path")->header, "minwindef.h");
  EXPECT_FALSE(file.Find(Kind::kConst, u"rect"));
  EXPECT_FALSE(file.Find(Kind::kDeclare, u"GetOute"));
  EXPECT_FALSE(file.Find(Kind::kDeclare, u"GetOuter2"));
  EXPECT_FALSE(file.Find(Kind::kType, u""));
}

TEST(FactsFile, FieldsThatALineLacksAreEmpty) {
  const auto file = Facts(kFacts);
  EXPECT_EQ(file.Find(Kind::kConst, u"plain")->header, "");
  const auto facts = file.Find(Kind::kDeclare, u"ResetAll");
  EXPECT_EQ(facts->library, "user32");
  EXPECT_EQ(facts->since, "");
  EXPECT_FALSE(facts->sets_last_error);
  EXPECT_THAT(facts->values, IsEmpty());
}

TEST(FactsFile, ASetThatIsNotThereHasNoConstants) {
  const auto file = Facts(kFacts);
  EXPECT_THAT(file.FindSet("OTHER").constants, IsEmpty());
  EXPECT_THAT(file.FindSet("").constants, IsEmpty());
}

TEST(FactsFile, LineEndsOfBothKindsAndAMissingLastOneAreRead) {
  const auto file = Facts("Declarium facts 1\r\nc\ta\tone.h\r\nc\tb\ttwo.h");
  EXPECT_EQ(file.Find(Kind::kConst, u"a")->header, "one.h");
  EXPECT_EQ(file.Find(Kind::kConst, u"b")->header, "two.h");
}

TEST(FactsFile, AFileWithoutLinesKnowsNothing) {
  EXPECT_FALSE(Facts("Declarium facts 1").Find(Kind::kConst, u"a"));
  EXPECT_FALSE(Facts("Declarium facts 1\n").Find(Kind::kConst, u"a"));
  EXPECT_FALSE(Facts("Declarium facts 1\n\n\n").Find(Kind::kConst, u"a"));
}

TEST(FactsFile, AnythingElseIsNoFactsFile) {
  for (const char* text :
       {"", "\n", "Declarium facts 2\n", "Win32 API\x02", "declarium facts 1\n"}) {
    const auto file = FactsFile::Of(ViewOf(text), "other.facts");
    ASSERT_FALSE(file) << text;
    EXPECT_EQ(file.error().kind, ErrorKind::kInvalidFormat);
    EXPECT_EQ(file.error().Message(), "other.facts: is no facts file");
  }
}

// Names of any length in any number, each found and no other.
TEST(FactsFile, FindsEveryLineByHalving) {
  std::mt19937 random(14);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same names each time
  for (int round = 0; round < 200; ++round) {
    std::set<std::string> names;
    for (unsigned i = random() % 40; i > 0; --i) {
      std::string name;
      for (unsigned length = 1 + random() % 4; length > 0; --length)
        name += static_cast<char>('a' + random() % 3);
      names.insert(name);
    }
    std::string text = "Declarium facts 1\n";
    for (const auto& name : names) text += "c\t" + name + "\t" + name + ".h\n";
    const auto file = Facts(text);
    for (const auto& name : names)
      EXPECT_EQ(file.Find(Kind::kConst, FromUtf8(name))->header, name + ".h");
    for (const char* other : {"aaaaa", "b ", "d", "0"})
      EXPECT_FALSE(file.Find(Kind::kConst, FromUtf8(other)));
  }
}

TEST(FactsFile, StandsBesideItsLibraryUnderTheSameName) {
  const TemporaryFolder folder;
  folder.Put("Own.facts", kFacts);
  EXPECT_TRUE(FactsFile::OpenBeside(folder / "Own.api"));
  const auto missing = FactsFile::OpenBeside(folder / "Other.api");
  ASSERT_FALSE(missing);
  EXPECT_EQ(missing.error().kind, ErrorKind::kCannotRead);
}

}  // namespace
}  // namespace declarium
