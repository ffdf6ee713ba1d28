#include "vb/layout.h"

#include "gtest/gtest.h"

#include "vb/name.h"
#include "vb/procedure.h"

namespace declarium::vb {
namespace {

std::optional<long> Lengths(std::string_view name) {
  return name == "MAX_PATH" ? std::optional(260L) : std::nullopt;
}

std::optional<Extent> Records(std::string_view name) {
  return name == "POINTAPI" ? std::optional(Extent{8, 4}) : std::nullopt;
}

RecordLayout Layout(const std::vector<std::string>& lines) {
  std::vector<Member> members;
  for (const std::string& line : lines) members.push_back(ParseMember(line, Lengths).value());
  return LayOut(members, Records).value();
}

TEST(Layout, AlignsMembersToTheirSizeButNeverBeyondFour) {
  const RecordLayout layout =
      Layout({"a As Byte", "b As Integer", "c As Byte", "d As Long", "e As Currency", "f As Byte"});
  ASSERT_EQ(layout.places.size(), 6u);
  EXPECT_EQ(layout.places[1].offset, 2);
  EXPECT_EQ(layout.places[3].offset, 8);
  EXPECT_EQ(layout.places[4].offset, 12);
  EXPECT_EQ(layout.places[5].offset, 20);
  EXPECT_EQ(layout.extent.size, 24);
}

TEST(Layout, PutsACurrencyAtAMultipleOfFour) {
  EXPECT_EQ(Layout({"a As Long", "b As Currency"}).extent.size, 12);
  EXPECT_EQ(Layout({"a As Integer", "b As Double"}).places[1].offset, 4);
}

TEST(Layout, CountsArraysAndFixedTexts) {
  const RecordLayout layout = Layout({"a(3) As Byte", "b(1 To 3) As Integer",
                                      "c As String * MAX_PATH", "d As String", "e(1) As POINTAPI"});
  EXPECT_EQ(layout.places[0].size, 4);
  EXPECT_EQ(layout.places[1].size, 6);
  EXPECT_EQ(layout.places[2].offset, 10);
  EXPECT_EQ(layout.places[2].size, 260);
  EXPECT_EQ(layout.places[3].offset, 272);
  EXPECT_EQ(layout.places[4].size, 16);
}

TEST(Layout, ARecordOfSmallMembersIsNotRoundedUp) {
  EXPECT_EQ(Layout({"a As Integer", "b As Byte"}).extent.size, 4);
  EXPECT_EQ(Layout({"a(2) As Byte"}).extent.size, 3);
}

TEST(Layout, RefusesWhatItDoesNotKnow) {
  EXPECT_FALSE(LayOut({ParseMember("a As Unknown", Lengths).value()}, Records));
  for (const char* line : {"a", "a(x) As Long", "a(3 As Long", "a As String * UNKNOWN",
                           "a As Long Long", "Loop As Long", "a(5 To 1) As Long"})
    EXPECT_FALSE(ParseMember(line, Lengths)) << line;
}

TEST(Procedure, IsTakenApart) {
  const auto procedure = ParseProcedure(
      "\"user32\" Alias \"FA\" (ByVal a As Long, b As RECT, ByVal c As Currency, ByRef d As "
      "Double) As Long");
  ASSERT_TRUE(procedure) << procedure.error();
  EXPECT_EQ(procedure->library, "user32");
  EXPECT_EQ(procedure->alias, "FA");
  EXPECT_EQ(procedure->result_type, "Long");
  ASSERT_EQ(procedure->parameters.size(), 4u);
  EXPECT_EQ(procedure->parameters[1].passing, Passing::kByReference);
  EXPECT_EQ(procedure->ArgumentBytes(), 4 + 4 + 8 + 4);
}

TEST(Procedure, WithoutParametersTakesNoBytes) {
  EXPECT_EQ(ParseProcedure("\"kernel32\" () As Long")->ArgumentBytes(), 0);
  EXPECT_EQ(ParseProcedure("\"user32\" ()")->result_type, "");
}

TEST(Procedure, IsRefusedWhenItIsNotOne) {
  for (const char* text :
       {"user32 ()", "\"user32\"", "\"user32\" (ByVal a)", "\"user32\" (a As Long",
        "\"user32\" () Long", "\"user32\" (ByVal Loop As Long)"})
    EXPECT_FALSE(ParseProcedure(text)) << text;
}

TEST(Name, IsLegalOrMadeSo) {
  EXPECT_TRUE(IsLegalName("WM_USER"));
  EXPECT_FALSE(IsLegalName("1A"));
  EXPECT_FALSE(IsLegalName("_A"));
  EXPECT_FALSE(IsLegalName("sTrInG"));
  EXPECT_EQ(LegalName("__reserved"), "reserved");
  EXPECT_EQ(LegalName("type"), "type_");
  EXPECT_EQ(LegalName("_"), "");
}

}  // namespace
}  // namespace declarium::vb
