#include "plan/declaration_section.h"

#include <gtest/gtest.h>

#include "text/text.h"

namespace declarium::plan {
namespace {

// The places that a constant gets with every limit above: "0 3 3".
std::string PlacesIn(std::u16string_view text, Kind kind = Kind::kConst) {
  const auto module = vb::ReadModule(text);
  const DeclarationSection section(text, module);
  std::string places;
  for (std::uint32_t low = 0; low <= module.declarations_end; ++low)
    places += std::to_string(section.PlaceFor(kind, low, kNoLimit)) + " ";
  return places;
}

TEST(DeclarationSection, OpensNoPlaceInsideWhatBelongsTogether) {
  struct Case {
    std::u16string_view text;
    std::string_view places;
  };
  const Case kCases[] = {
      {u"", "0 "},
      {u"Sub S()\nEnd Sub", "0 "},
      {u"Dim x\nDim y\n", "2 2 2 "},
      {u"Type T\na As Long\nEnd Type\n", "3 3 3 3 "},
      {u"#If X Then\nDim x\n#End If\n", "3 3 3 3 "},
      {u"#If X Then\nSub S()\nEnd Sub\n#End If\n", "0 0 "},
      {u"Dim x, _\n y\n", "2 2 2 "},
      {u"Dim x\n' c\nSub S()\nEnd Sub", "1 1 1 "},
      {u"Option Explicit\nSub S()\nEnd Sub", "1 1 "},
  };
  for (const auto& [text, places] : kCases) EXPECT_EQ(PlacesIn(text), places) << ToUtf8(text);
}

TEST(DeclarationSection, PrefersThePlaceBehindTheLastOfTheKind) {
  const std::u16string_view text = u"Const A = 1\nConst B = 1\nDim x\nConst C = 1\nDim y\n";
  const auto module = vb::ReadModule(text);
  const DeclarationSection section(text, module);
  EXPECT_EQ(section.PlaceFor(Kind::kConst, 0, kNoLimit), 4u);
  EXPECT_EQ(section.PlaceFor(Kind::kConst, 0, 3), 2u);
  EXPECT_EQ(section.PlaceFor(Kind::kConst, 5, kNoLimit), 5u);
  EXPECT_EQ(section.PlaceFor(Kind::kType, 0, kNoLimit), 5u);
  EXPECT_EQ(section.PlaceFor(Kind::kType, 0, 2), 2u);
  EXPECT_TRUE(section.IsOf(Kind::kConst, 2));
  EXPECT_FALSE(section.IsOf(Kind::kConst, 3));
}

}  // namespace
}  // namespace declarium::plan
