#include "win32/unique_handle.h"

#include <utility>
#include <vector>

#include "gmock/gmock.h"
#include "gtest/gtest.h"

namespace declarium::win32 {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<int>& Closed() {
  static std::vector<int> closed;
  return closed;
}

struct NumberTraits {
  using Handle = int;
  static constexpr Handle kNone = -1;
  static void Close(Handle handle) {
    Closed().push_back(handle);
    SetLastError(99);
  }
};
using Number = UniqueHandle<NumberTraits>;
static_assert(!std::is_copy_constructible_v<Number> && !std::is_copy_assignable_v<Number>);

class UniqueHandleTest : public ::testing::Test {
 protected:
  UniqueHandleTest() { Closed().clear(); }
};

TEST_F(UniqueHandleTest, AnEmptyOneClosesNothing) {
  {
    const Number none;
  }
  EXPECT_THAT(Closed(), IsEmpty());
}

TEST_F(UniqueHandleTest, TheEndOfItsLifeClosesTheHandle) {
  {
    const Number one(1);
  }
  EXPECT_THAT(Closed(), ElementsAre(1));
}

TEST_F(UniqueHandleTest, MovingLeavesTheSourceEmpty) {
  Number one(1);
  const Number moved(std::move(one));
  EXPECT_FALSE(one);  // NOLINT(bugprone-use-after-move): an empty source is what is promised
  EXPECT_EQ(moved.Get(), 1);
  EXPECT_THAT(Closed(), IsEmpty());
}

TEST_F(UniqueHandleTest, AssigningOverALiveHandleClosesIt) {
  Number one(1);
  one = Number(2);
  EXPECT_THAT(Closed(), ElementsAre(1));
  EXPECT_EQ(one.Get(), 2);
}

TEST_F(UniqueHandleTest, AssigningToItselfKeepsTheHandle) {
  Number one(1);
  Number& same = one;
  one = std::move(same);
  EXPECT_EQ(one.Get(), 1);
  EXPECT_THAT(Closed(), IsEmpty());
}

TEST_F(UniqueHandleTest, ResettingToTheSameHandleKeepsItOpen) {
  Number one(1);
  one.Reset(1);
  EXPECT_THAT(Closed(), IsEmpty());
  one.Reset();
  EXPECT_THAT(Closed(), ElementsAre(1));
}

TEST_F(UniqueHandleTest, AReleasedHandleStaysOpen) {
  Number one(1);
  EXPECT_EQ(one.Release(), 1);
  EXPECT_FALSE(one);
  EXPECT_THAT(Closed(), IsEmpty());
}

TEST_F(UniqueHandleTest, ClosingKeepsTheLastError) {
  Number one(1);
  SetLastError(5);
  one.Reset();
  EXPECT_EQ(GetLastError(), 5u);
}

}  // namespace
}  // namespace declarium::win32
