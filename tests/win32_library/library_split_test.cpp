// How rows are parted into libraries, on declarations made up for it.
#include "library_split.h"

#include "gmock/gmock.h"
#include "gtest/gtest.h"

#include "support/temporary_folder.h"

namespace declarium::win32_library {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::expected<Areas, std::string> AreasIn(const std::string& text) {
  const TemporaryFolder folder;
  folder.Put("areas.txt", text);
  return ReadAreas((folder / "areas.txt").string());
}

TEST(ListOfAreas, SaysTheLibraryOfAHeader) {
  const Areas areas =
      AreasIn("# comment\n\n[A] Title A\na.h\nb.h needed\n[B_C] Title B\nmetadata/X below 20\n")
          .value();
  ASSERT_EQ(areas.titles.size(), 2);
  EXPECT_EQ(areas.titles[1].file, "B_C");
  EXPECT_EQ(areas.titles[1].title, "Title B");
  EXPECT_EQ(areas.homes.at("a.h").library, 0);
  EXPECT_FALSE(areas.homes.at("a.h").needed_only);
  EXPECT_TRUE(areas.homes.at("b.h").needed_only);
  EXPECT_EQ(areas.homes.at("metadata/X").library, 1);
  EXPECT_EQ(areas.homes.at("metadata/X").limit, 20);
}

TEST(ListOfAreas, RefusesWhatIsNotOfItsForm) {
  EXPECT_THAT(AreasIn("a.h\n").error(), HasSubstr("before the first library"));
  EXPECT_THAT(AreasIn("[A]\n").error(), HasSubstr("no title"));
  EXPECT_THAT(AreasIn("[A] A\na.h\na.h\n").error(), HasSubstr("there twice"));
  EXPECT_THAT(AreasIn("[A] A\na.h perhaps\n").error(), HasSubstr("unknown mark"));
  EXPECT_THAT(AreasIn("[A] A\na.h below\n").error(), HasSubstr("unknown mark"));
  EXPECT_THAT(AreasIn("[A] A\na.h needed 3\n").error(), HasSubstr("unknown mark"));
  EXPECT_THAT(AreasIn("# nothing\n").error(), HasSubstr("no library"));
  EXPECT_THAT(ReadAreas("no such file").error(), HasSubstr("cannot be read"));
}

template <typename Row>
std::vector<std::string> Names(const std::vector<Row>& rows) {
  std::vector<std::string> names;
  names.reserve(rows.size());
  for (const Row& row : rows) names.push_back(row.name);
  return names;
}

ConstRow Constant(const std::string& name, const std::string& header,
                  const std::string& value = "1") {
  return {name, "Long", value, header};
}

MetaEnum EnumOf(const std::string& name, const std::vector<std::string>& constants) {
  MetaEnum result{name, "Area", "UInt32", true, {}};
  for (const std::string& constant : constants) result.values.emplace_back(constant, 1);
  return result;
}

// A library with what the metadata says of it.
struct Sample {
  Library library;
  Metadata metadata;
  std::string areas = "[First] First\nfirst.h\n[Last] Last\nlast.h\n";

  [[nodiscard]] std::vector<LibraryPart> Parts() const {
    ConstantSets sets(library.constants, metadata);
    return SplitLibrary(library, AreasIn(areas).value(), metadata, sets, {});
  }
};

TEST(Split, GivesEachRowToTheLibraryOfItsHeader) {
  Sample sample;
  sample.library.constants = {Constant("A", "first.h"), Constant("B", "last.h"),
                              Constant("C", "unknown.h")};
  const auto parts = sample.Parts();
  ASSERT_EQ(parts.size(), 2);
  EXPECT_EQ(parts[0].file, "First");
  EXPECT_THAT(Names(parts[0].library.constants), ElementsAre("A"));
  EXPECT_THAT(Names(parts[1].library.constants), ElementsAre("B", "C"));
}

TEST(Split, GivesAlongWhatARowNeeds) {
  Sample sample;
  sample.library.constants = {Constant("A", "first.h", "B + 1"),
                              Constant("B", "last.h", "C"),
                              Constant("C", "last.h"),
                              Constant("LENGTH", "last.h"),
                              {"TEXT", "String", "\"C\"", "first.h"}};
  sample.library.declares = {
      {"F", "Declare Sub F Lib \"x\" (r As OUTER, ByVal n As Long)", "first.h"}};
  sample.library.types = {{"INNER", {"'header: LENGTH", "s As String * LENGTH"}, "last.h", {}, {}},
                          {"OTHER", {"x As Long"}, "last.h", {}, {}},
                          {"OUTER", {"i(3) As INNER"}, "last.h", {}, {}}};
  const auto parts = sample.Parts();
  EXPECT_THAT(Names(parts[0].library.constants), ElementsAre("A", "B", "C", "LENGTH", "TEXT"));
  EXPECT_THAT(Names(parts[0].library.types), ElementsAre("INNER", "OUTER"));
  EXPECT_THAT(Names(parts[1].library.types), ElementsAre("INNER", "OTHER", "OUTER"));
  EXPECT_THAT(Names(parts[1].library.declares), IsEmpty());
}

Sample WithAnEnumeration() {
  Sample sample;
  sample.library.constants = {Constant("AB_FIVE", "last.h", "5"), Constant("AB_OTHER", "last.h"),
                              Constant("AB_TEN", "last.h", "10")};
  sample.library.declares = {{"F",
                              "Declare Sub F Lib \"x\" (ByVal n As Long)",
                              "first.h",
                              "F",
                              {{"n", "", "FLAGS", 0, true}}}};
  sample.metadata.enums = {EnumOf("FLAGS", {"AB_FIVE", "AB_TEN"})};
  return sample;
}

TEST(Split, GivesAlongTheEnumerationOfAParameterButNotWhatBeginsLikeIt) {
  EXPECT_THAT(Names(WithAnEnumeration().Parts()[0].library.constants),
              ElementsAre("AB_FIVE", "AB_TEN"));
}

TEST(Split, GivesAlongOnlyTheConstantsBelowTheLimitOfTheirHeader) {
  Sample sample = WithAnEnumeration();
  sample.areas = "[First] First\nfirst.h\n[Last] Last\nlast.h below 10\n";
  EXPECT_THAT(Names(sample.Parts()[0].library.constants), ElementsAre("AB_FIVE"));
  EXPECT_THAT(Names(sample.Parts()[1].library.constants),
              ElementsAre("AB_FIVE", "AB_OTHER", "AB_TEN"));
}

TEST(Split, OfAHeaderThatIsThereOnlyAsNeededTheOtherConstantsGoByTheirArea) {
  Sample sample;
  sample.library.constants = {Constant("ALONE", "some.h"), Constant("USED", "some.h")};
  sample.library.declares = {{"F", "Declare Sub F Lib \"x\" ()", "some.h"}};
  sample.library.types = {{"R", {"s As String * USED"}, "some.h", {}, {}}};
  sample.metadata.constants = {{"ALONE", "Things.Small", std::int64_t{1}}};
  sample.areas = "[First] First\nsome.h needed\n[Things] Things\nmetadata/Things\n[Last] Last\n";
  const auto parts = sample.Parts();
  EXPECT_THAT(Names(parts[0].library.declares), ElementsAre("F"));
  EXPECT_THAT(Names(parts[0].library.types), ElementsAre("R"));
  EXPECT_THAT(Names(parts[0].library.constants), ElementsAre("USED"));
  EXPECT_THAT(Names(parts[1].library.constants), ElementsAre("ALONE", "USED"));
  EXPECT_THAT(parts[2].library.constants, IsEmpty());
}

TEST(Split, AHeaderThatTheListDoesNotNameGoesByTheAreaOfMostOfItsRows) {
  Sample sample;
  sample.library.constants = {Constant("A", "some.h"), Constant("B", "some.h"),
                              Constant("C", "some.h")};
  sample.metadata.constants = {{"A", "Things.Small", std::int64_t{1}},
                               {"B", "Things.Small", std::int64_t{1}},
                               {"C", "Else", std::int64_t{1}}};
  sample.areas = "[First] First\nmetadata/Else\n[Things] Things\nmetadata/Things\n[Last] Last\n";
  EXPECT_THAT(Names(sample.Parts()[1].library.constants), ElementsAre("A", "B", "C"));
}

}  // namespace
}  // namespace declarium::win32_library
