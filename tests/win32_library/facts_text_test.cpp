// How facts and sets of constants are made, on declarations made up for it.
#include "facts_text.h"

#include <fstream>

#include "gmock/gmock.h"
#include "gtest/gtest.h"

#include "support/temporary_folder.h"

namespace declarium::win32_library {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

ConstRow Constant(const std::string& name, const std::string& header = "some.h") {
  return {name, "Long", "1", header};
}

MetaEnum EnumOf(const std::string& name, const std::vector<std::string>& constants) {
  MetaEnum result{name, "Area", "UInt32", true, {}};
  for (const std::string& constant : constants) result.values.emplace_back(constant, 1);
  return result;
}

TEST(ConstantSets, HaveTheConstantsOfAnEnumerationThatTheLibraryHas) {
  Metadata metadata;
  metadata.enums = {EnumOf("FLAGS", {"AB_ONE", "AB_TWO", "AB_OTHER"}), EnumOf("NONE", {"X_ONE"})};
  const ConstantSets sets({Constant("AB_ONE"), Constant("AB_TWO")}, metadata);
  ASSERT_NE(sets.Find("FLAGS"), nullptr);
  EXPECT_THAT(sets.Find("FLAGS")->constants, ElementsAre("AB_ONE", "AB_TWO"));
  EXPECT_TRUE(sets.Find("FLAGS")->is_flags);
  EXPECT_EQ(sets.Find("NONE"), nullptr);
  EXPECT_EQ(sets.Find("OTHER"), nullptr);
}

TEST(ConstantSets, TakeAConstantOfNoEnumerationByItsBeginningAndHeader) {
  Metadata metadata;
  metadata.enums = {EnumOf("FLAGS", {"AB_ONE", "AB_TWO"})};
  const ConstantSets sets({Constant("AB_ONE"), Constant("AB_TWO"), Constant("AB_LATER"),
                           Constant("AB_ELSEWHERE", "other.h"), Constant("ABOVE")},
                          metadata);
  EXPECT_THAT(sets.Find("FLAGS")->by_prefix, ElementsAre("AB_LATER"));
}

TEST(ConstantSets, TheLongestBeginningGoesFirst) {
  Metadata metadata;
  metadata.enums = {EnumOf("STYLE", {"WS_CHILD", "WS_POPUP"}),
                    EnumOf("EX_STYLE", {"WS_EX_LEFT", "WS_EX_RIGHT"})};
  const ConstantSets sets({Constant("WS_CHILD"), Constant("WS_POPUP"), Constant("WS_EX_LEFT"),
                           Constant("WS_EX_RIGHT"), Constant("WS_EX_NEW"), Constant("WS_NEW")},
                          metadata);
  EXPECT_THAT(sets.Find("STYLE")->by_prefix, ElementsAre("WS_NEW"));
  EXPECT_THAT(sets.Find("EX_STYLE")->by_prefix, ElementsAre("WS_EX_NEW"));
}

TEST(ConstantSets, ABeginningThatTwoEnumerationsHaveTellsNothing) {
  Metadata metadata;
  metadata.enums = {EnumOf("SHOW", {"SW_HIDE", "SW_SHOW"}),
                    EnumOf("SCROLL", {"SW_ERASE", "SW_INVALIDATE"})};
  const ConstantSets sets({Constant("SW_HIDE"), Constant("SW_SHOW"), Constant("SW_ERASE"),
                           Constant("SW_INVALIDATE"), Constant("SW_MAX")},
                          metadata);
  EXPECT_THAT(sets.Find("SHOW")->by_prefix, IsEmpty());
  EXPECT_THAT(sets.Find("SCROLL")->by_prefix, IsEmpty());
}

TEST(ConstantSets, OfAListHoldWhatBeginsAsItSays) {
  const Metadata metadata;
  ConstantSets sets({Constant("WM_CLOSE"), Constant("EM_SETSEL"), Constant("WMX_NO")}, metadata);
  const ConstantSet* set = sets.WithPrefixes({"WM_", "EM_"});
  ASSERT_NE(set, nullptr);
  EXPECT_EQ(set->name, "WM_*,EM_*");
  EXPECT_THAT(set->constants, IsEmpty());
  EXPECT_THAT(set->by_prefix, ElementsAre("EM_SETSEL", "WM_CLOSE"));
  EXPECT_EQ(sets.WithPrefixes({"LB_"}), nullptr);
}

std::expected<Prefixes, std::string> PrefixesIn(const std::string& text) {
  const TemporaryFolder folder;
  folder.Put("prefixes.txt", text);
  return ReadPrefixes((folder / "prefixes.txt").string());
}

TEST(ListOfPrefixes, HasBeginningsByRowAndName) {
  const auto prefixes = PrefixesIn("# comment\n\nSendMessage Msg WM_ EM_\n").value();
  EXPECT_EQ(prefixes.size(), 1);
  EXPECT_THAT(prefixes.at("SendMessage Msg"), ElementsAre("WM_", "EM_"));
}

TEST(ListOfPrefixes, RefusesALineWithoutABeginningAndOneThereTwice) {
  EXPECT_THAT(PrefixesIn("SendMessage Msg\n").error(), HasSubstr("no beginning"));
  EXPECT_THAT(PrefixesIn("F a WM_\nF a EM_\n").error(), HasSubstr("there twice"));
  EXPECT_THAT(ReadPrefixes("no such file").error(), HasSubstr("cannot be read"));
}

MetaFunction FunctionOf(const std::string& name, const std::string& result,
                        std::vector<MetaValue> parameters) {
  MetaFunction function;
  function.name = name;
  function.result = result;
  function.since = "windows5.1.2600";
  function.last_error = true;
  function.parameters = std::move(parameters);
  return function;
}

// A library of the rows, with what the metadata says of them.
struct Sample {
  Library library;
  Metadata metadata;

  void Add(const DeclareRow& row, const MetaFunction& function) {
    library.declares.push_back(row);
    metadata.function_positions[function.name] = metadata.functions.size();
    metadata.functions.push_back(function);
  }
  [[nodiscard]] std::string Facts(const Prefixes& prefixes = {}) const {
    ConstantSets sets(library.constants, metadata);
    return FactsOf(library, metadata, sets, prefixes);
  }
};

TEST(Facts, OfAProcedureComeFromBothSources) {
  Sample sample;
  sample.library.constants = {Constant("AB_ONE")};
  sample.metadata.enums = {EnumOf("FLAGS", {"AB_ONE"})};
  sample.Add({"Open",
              "Declare Function Open Lib \"x\" Alias \"OpenA\" (ByVal n As Long, r As Any) As Long",
              "some.h",
              "OpenA",
              {{"n", "", "UINT", 0, true}, {"r", "", "REC *", 1, false, "*"}},
              {.c_type = "HANDLE", .type64 = "LongPtr"}},
             FunctionOf("OpenA", "HANDLE",
                        {{"n", "FLAGS", {"in"}}, {"r", "*REC", {"in", "out", "optional"}}}));
  EXPECT_EQ(sample.Facts(),
            "Declarium facts 1\n"
            "c\tab_one\tsome.h\n"
            "d\topen\tsome.h\tx\tOpenA\t5.1.2600 metadata\te\t\t||HANDLE||LongPtr\t"
            "n|i|UINT|FLAGS\tr|io?|REC *||*\n"
            "s\tFLAGS\tf\tAB_ONE\n");
}

TEST(Facts, OfAProcedureThatCDoesNotDeclareAreThoseOfItsRow) {
  Sample sample;
  sample.library.declares = {
      {"CopyMemory", "Declare Sub CopyMemory Lib \"k\" Alias \"M\" (a As Any, ByVal n As Long)",
       "h.h"}};
  EXPECT_EQ(sample.Facts(), "Declarium facts 1\nd\tcopymemory\th.h\tk\tM\t\t\t\t\ta\tn\n");
}

TEST(Facts, HaveALineForAFormOf64BitsThatIsAnother) {
  Sample sample;
  sample.library.declares = {{.name = "P",
                              .line = "Declare Sub P Lib \"x\" ()",
                              .header = "h.h",
                              .form64 = "Declare PtrSafe Sub P Lib \"x\" (ByVal a As LongLong)"}};
  sample.library.types = {{"R", {"a As Long"}, "h.h", {}, {}, "!it cannot be"}};
  EXPECT_EQ(sample.Facts(),
            "Declarium facts 1\n"
            "D\tp\tDeclare PtrSafe Sub P Lib \"x\" (ByVal a As LongLong)\n"
            "T\tr\t!it cannot be\n"
            "d\tp\th.h\tx\n"
            "t\tr\th.h\n");
}

DeclareRow Plain(const std::string& name) {
  return {name, "Declare Function " + name + " Lib \"x\" () As Long", "h.h", name, {}};
}

TEST(Facts, NameTheOtherEntryAndWhatCloses) {
  Sample sample;
  sample.metadata.typedefs = {{"HTHING", "IntPtr", "CloseThing"},
                              {"HMOD", "IntPtr", "FreeLibrary"}};
  sample.Add({"Open", "Declare Function Open Lib \"x\" Alias \"OpenA\" () As Long", "h.h", "OpenA"},
             FunctionOf("OpenA", "HTHING", {}));
  sample.Add(Plain("OpenW"), FunctionOf("OpenW", "HTHING", {}));
  sample.Add(Plain("GetThing"), FunctionOf("GetThing", "HTHING", {}));
  sample.Add(Plain("LoadIt"), FunctionOf("LoadIt", "HMOD", {}));
  sample.Add(Plain("RunIt"), FunctionOf("RunIt", "HMOD", {}));
  sample.Add(Plain("CloseThing"), FunctionOf("CloseThing", "BOOL", {}));
  sample.Add(Plain("FreeLibrary"), FunctionOf("FreeLibrary", "BOOL", {}));
  const std::string facts = sample.Facts();
  EXPECT_THAT(facts, HasSubstr("\twide=OpenW close=CloseThing\n"));
  EXPECT_THAT(facts, HasSubstr("\tansi=Open close=CloseThing\n"));
  EXPECT_THAT(facts, HasSubstr("d\tgetthing\th.h\tx\t\t5.1.2600 metadata\te\n"));
  EXPECT_THAT(facts, HasSubstr("d\tloadit\th.h\tx\t\t5.1.2600 metadata\te\tclose=FreeLibrary\n"));
  EXPECT_THAT(facts, HasSubstr("d\trunit\th.h\tx\t\t5.1.2600 metadata\te\n"));
}

TEST(Facts, OfAMemberGoByItsNameInCAlsoWithinAUnion) {
  Sample sample;
  sample.library.constants = {Constant("AB_ONE"), Constant("CD_ONE")};
  sample.library.types = {
      {"REC",
       {"a As Long", "b_ As Long", "c As Long", "filler(3) As Byte"},
       "some.h",
       {"RECA"},
       {{"a", "a", "DWORD"}, {"b_", "b", "DWORD"}, {"c", "c", "KIND"}, {"filler"}}}};
  sample.metadata.enums = {EnumOf("FLAGS", {"AB_ONE"}), EnumOf("KIND", {"CD_ONE"})};
  MetaRecord nested;
  nested.members = {{"b", "FLAGS", {}}};
  MetaRecord record;
  record.name = "RECA";
  record.members = {{"a", "UInt32", {}}, {"c", "UInt32", {}}};
  record.nested = {nested};
  sample.metadata.records = {record};
  EXPECT_THAT(sample.Facts(),
              HasSubstr("t\trec\tsome.h\ta||DWORD\tb_||DWORD|FLAGS\tc||KIND|KIND\tfiller\n"));
  EXPECT_THAT(sample.Facts({{"REC a", {"AB_"}}}), HasSubstr("\ta||DWORD|AB_*\t"));
}

TEST(Facts, HaveOfASetOnlyWhatTheLibraryHas) {
  Sample sample;
  sample.library.constants = {Constant("AB_ONE")};
  sample.library.types = {{"REC",
                           {"a As Long", "b As Long"},
                           "some.h",
                           {},
                           {{"a", "a", "FLAGS"}, {"b", "b", "OTHERS"}}}};
  sample.metadata.enums = {EnumOf("FLAGS", {"AB_ONE", "AB_TWO"}), EnumOf("OTHERS", {"CD_ONE"})};
  ConstantSets sets({Constant("AB_ONE"), Constant("AB_TWO"), Constant("CD_ONE")}, sample.metadata);
  EXPECT_EQ(FactsOf(sample.library, sample.metadata, sets, {}),
            "Declarium facts 1\n"
            "c\tab_one\tsome.h\n"
            "s\tFLAGS\tf\tAB_ONE\n"
            "t\trec\tsome.h\ta||FLAGS|FLAGS\tb||OTHERS\n");
}

TEST(Facts, HaveNoSetThatNothingUses) {
  Sample sample;
  sample.library.constants = {Constant("AB_ONE")};
  sample.metadata.enums = {EnumOf("FLAGS", {"AB_ONE"})};
  EXPECT_THAT(sample.Facts(), Not(HasSubstr("FLAGS")));
}

}  // namespace
}  // namespace declarium::win32_library
