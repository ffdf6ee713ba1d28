#include "vb/layout.h"

#include "gtest/gtest.h"

#include "text/text.h"
#include "vb/expression.h"
#include "vb/module.h"

namespace declarium::vb {
namespace {

std::optional<long> Lengths(std::u16string_view expression) {
  if (expression == u"MAX_PATH") return 260;
  const auto value = Evaluate(
      expression, [](std::u16string_view) -> Evaluated { return std::unexpected("unknown"); });
  return value ? std::optional(static_cast<long>(value->whole)) : std::nullopt;
}

std::optional<RecordLayout> Records(std::u16string_view name) {
  if (name != u"POINTAPI") return std::nullopt;
  return RecordLayout{{8, 4}, {}, {8, 4}, 8};
}

std::expected<RecordLayout, std::string> TryLayout(const std::string& members, Target target) {
  const auto text = FromUtf8("Type T\n" + members + "\nEnd Type");
  const auto module = ReadModule(text);
  if (!module.errors.empty()) return std::unexpected("refused");
  return LayOut(*module.declarations.at(0).As<Record>(), target, Lengths, Records);
}

RecordLayout Layout(const std::string& members, Target target = Target::kVb6) {
  return TryLayout(members, target).value();
}

TEST(Layout, AlignsMembersToTheirSizeButNeverBeyondFour) {
  const RecordLayout layout =
      Layout("a As Byte\nb As Integer\nc As Byte\nd As Long\ne As Currency\nf As Byte");
  ASSERT_EQ(layout.places.size(), 6u);
  EXPECT_EQ(layout.places[1].offset, 2);
  EXPECT_EQ(layout.places[3].offset, 8);
  EXPECT_EQ(layout.places[4].offset, 12);
  EXPECT_EQ(layout.places[5].offset, 20);
  EXPECT_EQ(layout.extent.size, 24);
}

TEST(Layout, PutsACurrencyAtAMultipleOfFour) {
  EXPECT_EQ(Layout("a As Long\nb As Currency").extent.size, 12);
  EXPECT_EQ(Layout("a As Integer\nb As Double").places[1].offset, 4);
}

TEST(Layout, AlignsToEightIn64Bits) {
  const auto layout = Layout("a As Long\nb As Currency\nc As LongPtr", Target::kVba7x64);
  EXPECT_EQ(layout.places[1].offset, 8);
  EXPECT_EQ(layout.extent.size, 24);
  EXPECT_EQ(Layout("a As Byte\nb As LongPtr", Target::kVba7x32).extent.size, 8);
  EXPECT_EQ(Layout("a As Byte\nb As String", Target::kTwinBasic).extent.size, 16);
  EXPECT_EQ(Layout("a As Byte\nb As Variant", Target::kVba7x64).extent.size, 32);
}

TEST(Layout, CountsArraysAndFixedTexts) {
  const RecordLayout layout = Layout(
      "a(3) As Byte\nb(1 To 3) As Integer\nc As String * MAX_PATH\nd As String\n"
      "e(1) As POINTAPI\nf(1, 1 To 3) As Long\ng() As Double");
  EXPECT_EQ(layout.places[0].size, 4);
  EXPECT_EQ(layout.places[1].size, 6);
  EXPECT_EQ(layout.places[2].offset, 10);
  EXPECT_EQ(layout.places[2].size, 260);
  EXPECT_EQ(layout.places[2].fixed_length, 260);
  EXPECT_EQ(layout.places[3].offset, 272);
  EXPECT_EQ(layout.places[4].size, 16);
  EXPECT_EQ(layout.places[5].count, 6);
  EXPECT_EQ(layout.places[6].size, 4);
  EXPECT_EQ(layout.places[6].count, std::nullopt);
}

TEST(Layout, ARecordOfSmallMembersIsNotRoundedUp) {
  EXPECT_EQ(Layout("a As Integer\nb As Byte").extent.size, 4);
  EXPECT_EQ(Layout("a(2) As Byte").extent.size, 3);
}

// Len leaves out what lies between members, LenB counts two bytes a character.
TEST(Layout, TellsWhatLenAndLenBSay) {
  const auto layout = Layout("a As Byte\nb As Long\nc As String * 3\nd As POINTAPI");
  EXPECT_EQ(layout.extent.size, 20);
  EXPECT_EQ(layout.written, 1 + 4 + 3 + 8);
  EXPECT_EQ(layout.in_memory.size, 24);
}

TEST(Layout, RefusesWhatItDoesNotKnow) {
  for (const char* line :
       {"a As Unknown", "a", "a(x) As Long", "a(3 As Long", "a As String * UNKNOWN",
        "a As Long Long", "a(5 To 1) As Long", "a(2000000000, 2000000000, 2000000000) As Long"})
    EXPECT_FALSE(TryLayout(line, Target::kVb6)) << line;
}

long Bytes(const std::string& parameters, Target target) {
  const auto text = FromUtf8("Declare Sub S Lib \"l\" (" + parameters + ")");
  const auto module = ReadModule(text);
  long bytes = 0;
  for (const auto& parameter : module.declarations.at(0).As<External>()->parameters)
    bytes += ArgumentBytes(parameter, target);
  return bytes;
}

TEST(Arguments, TakeFourBytesOrWhatTheirValueTakes) {
  EXPECT_EQ(
      Bytes("ByVal a As Long, b As RECT, ByVal c As Currency, ByRef d As Double", Target::kVb6),
      4 + 4 + 8 + 4);
  EXPECT_EQ(Bytes("", Target::kVb6), 0);
  EXPECT_EQ(Bytes("ByVal a As Byte, ByVal v As Variant, ByVal s As String", Target::kVb6), 24);
  EXPECT_EQ(Bytes("ByVal a As Byte, b As Any", Target::kVba7x64), 16);
}

}  // namespace
}  // namespace declarium::vb
