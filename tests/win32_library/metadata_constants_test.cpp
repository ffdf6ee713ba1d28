// How the metadata's constants become C and rows, on some made up for it.
#include "metadata_constants.h"

#include "gmock/gmock.h"
#include "gtest/gtest.h"

#include "constant_translator.h"
#include "coverage.h"

namespace declarium::win32_library {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

Metadata MetadataOf(const std::vector<MetaEnum>& enums,
                    const std::vector<MetaConstant>& constants) {
  Metadata metadata;
  metadata.enums = enums;
  metadata.constants = constants;
  return metadata;
}

std::string SourceOf(const MetaConstant& constant) {
  return ConstantsSource(MetadataOf({}, {constant}), {});
}

TEST(ConstantsOfTheMetadata, AreEnumeratorsAndTextMacrosInTheFileOfTheirArea) {
  const std::string source = ConstantsSource(
      MetadataOf({{"FLAGS", "Some.Area", "UInt32", true, {{"FLAG_A", 16}}},
                  {"KIND", "Some.Area", "Int32", false, {{"KIND_A", 16}}}},
                 {{"NAME", "Other", std::string("a \"b\"")}, {"HALF", "Other", 0.5}}),
      {});
  EXPECT_THAT(source, HasSubstr("#line 1 \"metadata/Some.Area\"\nenum { FLAG_A = 0x10 };\n"
                                "enum { KIND_A = 16 };\n\n#line 1 \"metadata/Other\"\n"
                                "#define NAME \"a \\\"b\\\"\"\n"));
  EXPECT_THAT(source, HasSubstr("#define HALF 5.0000000000000000e-01"));
}

TEST(ConstantsOfTheMetadata, AreThereOnceAndNotUnderATakenName) {
  const Metadata metadata =
      MetadataOf({{"FLAGS", "Area", "UInt32", false, {{"A", 1}, {"B", 2}}}},
                 {{"A", "Area", std::int64_t{3}}, {"TAKEN", "Area", std::int64_t{4}}});
  const std::string source = ConstantsSource(metadata, {"TAKEN"});
  EXPECT_THAT(source, HasSubstr("enum { A = 1 };"));
  EXPECT_THAT(source, Not(HasSubstr("3")));
  EXPECT_THAT(source, Not(HasSubstr("TAKEN")));
}

TEST(ConstantsOfTheMetadata, AreNotThereWhereEnumerationsDifferOnTheName) {
  const std::string source =
      ConstantsSource(MetadataOf({{"FIRST", "Area", "Int32", false, {{"None", 0}, {"Same", 5}}},
                                  {"SECOND", "Area", "Int32", false, {{"None", 1}, {"Same", 5}}}},
                                 {}),
                      {});
  EXPECT_THAT(source, Not(HasSubstr("None")));
  EXPECT_THAT(source, HasSubstr("enum { Same = 5 };"));
}

TEST(ConstantsOfTheMetadata, KeepTheBitsOf32AndAreMacrosWhereTheyNeed64) {
  EXPECT_THAT(SourceOf({"A", "X", std::int64_t{0xFFFFFFFF}}), HasSubstr("enum { A = -0x1 };"));
  EXPECT_THAT(SourceOf({"A", "X", std::int64_t{0x80000000}}),
              HasSubstr("enum { A = (-0x7FFFFFFF - 1) };"));
  EXPECT_THAT(SourceOf({"A", "X", std::int64_t{0x100000000}}),
              HasSubstr("#define A 4294967296ULL"));
  EXPECT_THAT(SourceOf({"A", "X", std::int64_t{0xFFFFFFFF}, true}),
              HasSubstr("#define A 4294967295ULL"));
  EXPECT_THAT(SourceOf({"A", "X", std::int64_t{1}, true}), HasSubstr("enum { A = 1 };"));
}

TEST(ConstantsOfTheMetadata, EscapeWhatNoTextOfTheLanguageHolds) {
  EXPECT_THAT(SourceOf({"A", "X", std::string("a\nb\\\xC4\x8D", 6)}),
              HasSubstr("#define A \"a\\012b\\\\\\304\\215\""));
}

Constant Enumerator(const std::string& name, long value, const std::string& header) {
  Constant constant;
  constant.name = name;
  constant.is_enumerator = true;
  constant.header = header;
  constant.value = Constant::Value::kInteger;
  constant.integer = value;
  constant.size = 4;
  return constant;
}

TEST(Constants, AreTheMetadatasWhereTheHeadersHaveNoValue) {
  Constant fragment;
  fragment.name = "A";
  fragment.tokens = {{TokenKind::kIdentifier, "no_value"}};
  fragment.header = "some.h";
  ConstantTranslator translator;
  translator.Add({fragment, Enumerator("B", 1, "some.h")});
  translator.Add({Enumerator("A", 5, "other.h")});  // which has the same line
  EXPECT_EQ(translator.ValueOf("A"), std::nullopt);
  translator.Add({Enumerator("A", 7, "metadata/Area"), Enumerator("B", 2, "metadata/Area")});
  EXPECT_EQ(translator.ValueOf("A"), 7);
  EXPECT_EQ(translator.ValueOf("B"), 1);
  LeftOut left_out;
  static_cast<void>(translator.Rows(left_out));
  EXPECT_TRUE(left_out.empty());
}

TEST(CoverageOfConstants, CountsNamesOnceAndWithoutComAndWinRt) {
  const Metadata metadata = MetadataOf({{"FLAGS", "Area", "UInt32", false, {{"A", 1}, {"B", 2}}},
                                        {"COM", "System.Com.Events", "Int32", false, {{"C", 1}}}},
                                       {{"A", "Area", std::int64_t{1}},
                                        {"D", "System.WinRT", std::int64_t{1}},
                                        {"E", "System.ComponentServices", std::int64_t{1}}});
  const auto [listed, there] =
      CoverageOfConstants(metadata, [](const std::string& name) { return name != "B"; });
  EXPECT_EQ(listed, 3);
  EXPECT_EQ(there, 2);
}

}  // namespace
}  // namespace declarium::win32_library
