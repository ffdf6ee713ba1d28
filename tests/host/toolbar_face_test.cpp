#include "host/toolbar_face.h"

#include <gtest/gtest.h>

#include "host/busy_host.h"

namespace declarium {
namespace {

TEST(ToolbarFace, IsASixteenColorBitmap) {
  const auto face = ToolbarFace();
  ASSERT_EQ(face.size(), 40u + 16 * 4 + 16 * 8);
  EXPECT_EQ(face[0], 40);
  EXPECT_EQ(face[4], kFaceSize);
  EXPECT_EQ(face[8], kFaceSize);
  EXPECT_EQ(face[14], 4);
  // The last color of the standard order is white.
  EXPECT_EQ(face[40 + 15 * 4], 255);
}

TEST(ToolbarFace, MaskIsWhiteExactlyWhereTheFaceIsNotDrawn) {
  const auto mask = ToolbarFaceMask();
  ASSERT_EQ(mask.size(), 40u + 2 * 4 + 16 * 4);
  EXPECT_EQ(mask[14], 1);
  const auto row = [&](int from_bottom) { return mask.begin() + 48 + from_bottom * 4; };
  // The lowest row is transparent; the one above has two transparent pixels on each side.
  EXPECT_EQ(row(0)[0], 0xFF);
  EXPECT_EQ(row(0)[1], 0xFF);
  EXPECT_EQ(row(1)[0], 0xC0);
  EXPECT_EQ(row(1)[1], 0x03);
}

TEST(BusyHost, IsWaitedForUpToALimit) {
  using std::chrono::milliseconds;
  EXPECT_EQ(PauseBeforeRetry(BusyHost::kWaitFor, milliseconds(0)), kBusyHostPause);
  EXPECT_EQ(PauseBeforeRetry(BusyHost::kWaitFor, kBusyHostLimit - milliseconds(1)), kBusyHostPause);
  EXPECT_EQ(PauseBeforeRetry(BusyHost::kWaitFor, kBusyHostLimit), std::nullopt);
  EXPECT_EQ(PauseBeforeRetry(BusyHost::kGiveUp, milliseconds(0)), std::nullopt);
}

}  // namespace
}  // namespace declarium
