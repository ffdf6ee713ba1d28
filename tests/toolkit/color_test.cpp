#include "toolkit/color.h"

#include <gtest/gtest.h>

namespace declarium {
namespace {

constexpr Color kBlue = 0xFF0000;
constexpr Color kGreen = 0x008000;
constexpr Color kYellow = 0x00FFFF;

TEST(ReadableColor, OnWhiteEveryColorIsShownAsItIs) {
  for (const Color color : {kBlack, kBlue, kGreen, kYellow, kWhite}) {
    EXPECT_EQ(ReadableOn(kWhite, color, kBlack), color);
  }
}

TEST(ReadableColor, OnBlackWhatCannotBeReadGivesWayToTheSchemesTextColor) {
  EXPECT_EQ(ReadableOn(kBlack, kBlack, kWhite), kWhite);
  EXPECT_EQ(ReadableOn(kBlack, kBlue, kWhite), kWhite);
  EXPECT_EQ(ReadableOn(kBlack, kGreen, kWhite), kGreen);
  EXPECT_EQ(ReadableOn(kBlack, kYellow, kWhite), kYellow);
}

TEST(ReadableColor, TheBackgroundItselfIsNeverTheColorOfText) {
  for (const Color background : {Color{0x202020}, Color{0x800000}, Color{0xC0C0C0}, kYellow}) {
    EXPECT_EQ(ReadableOn(background, background, 0x123456), 0x123456U);
  }
}

}  // namespace
}  // namespace declarium
