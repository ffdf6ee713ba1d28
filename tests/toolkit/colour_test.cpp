#include "toolkit/colour.h"

#include <gtest/gtest.h>

namespace declarium {
namespace {

constexpr Colour kBlue = 0xFF0000;
constexpr Colour kGreen = 0x008000;
constexpr Colour kYellow = 0x00FFFF;

TEST(ReadableColour, OnWhiteEveryColourIsShownAsItIs) {
  for (const Colour colour : {kBlack, kBlue, kGreen, kYellow, kWhite}) {
    EXPECT_EQ(ReadableOn(kWhite, colour, kBlack), colour);
  }
}

TEST(ReadableColour, OnBlackWhatCannotBeReadGivesWayToTheSchemesTextColour) {
  EXPECT_EQ(ReadableOn(kBlack, kBlack, kWhite), kWhite);
  EXPECT_EQ(ReadableOn(kBlack, kBlue, kWhite), kWhite);
  EXPECT_EQ(ReadableOn(kBlack, kGreen, kWhite), kGreen);
  EXPECT_EQ(ReadableOn(kBlack, kYellow, kWhite), kYellow);
}

TEST(ReadableColour, TheBackgroundItselfIsNeverTheColourOfText) {
  for (const Colour background : {Colour{0x202020}, Colour{0x800000}, Colour{0xC0C0C0}, kYellow}) {
    EXPECT_EQ(ReadableOn(background, background, 0x123456), 0x123456U);
  }
}

}  // namespace
}  // namespace declarium
