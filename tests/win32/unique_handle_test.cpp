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

HANDLE Handle(std::intptr_t number) {
  return reinterpret_cast<HANDLE>(number);
}

void Close(HANDLE handle) {
  Closed().push_back(static_cast<int>(reinterpret_cast<std::intptr_t>(handle)));
  SetLastError(99);
}

using Number = UniqueHandle<HANDLE, Close, -1>;
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
    const Number one(Handle(1));
  }
  EXPECT_THAT(Closed(), ElementsAre(1));
}

TEST_F(UniqueHandleTest, MovingLeavesTheSourceEmpty) {
  Number one(Handle(1));
  const Number moved(std::move(one));
  EXPECT_FALSE(one);  // NOLINT(bugprone-use-after-move): an empty source is what is promised
  EXPECT_EQ(moved.Get(), Handle(1));
  EXPECT_THAT(Closed(), IsEmpty());
}

TEST_F(UniqueHandleTest, AssigningOverALiveHandleClosesIt) {
  Number one(Handle(1));
  one = Number(Handle(2));
  EXPECT_THAT(Closed(), ElementsAre(1));
  EXPECT_EQ(one.Get(), Handle(2));
}

TEST_F(UniqueHandleTest, AssigningToItselfKeepsTheHandle) {
  Number one(Handle(1));
  Number& same = one;
  one = std::move(same);
  EXPECT_EQ(one.Get(), Handle(1));
  EXPECT_THAT(Closed(), IsEmpty());
}

TEST_F(UniqueHandleTest, ResettingToTheSameHandleKeepsItOpen) {
  Number one(Handle(1));
  one.Reset(Handle(1));
  EXPECT_THAT(Closed(), IsEmpty());
  one.Reset();
  EXPECT_THAT(Closed(), ElementsAre(1));
}

TEST_F(UniqueHandleTest, AReleasedHandleStaysOpen) {
  Number one(Handle(1));
  EXPECT_EQ(one.Release(), Handle(1));
  EXPECT_FALSE(one);
  EXPECT_THAT(Closed(), IsEmpty());
}

TEST_F(UniqueHandleTest, ReceivingClosesWhatIsOwnedAndOwnsWhatComes) {
  {
    Number one(Handle(1));
    *one.Receive() = Handle(2);
    EXPECT_THAT(Closed(), ElementsAre(1));
  }
  EXPECT_THAT(Closed(), ElementsAre(1, 2));
}

TEST_F(UniqueHandleTest, AnInvalidFileHandleIsNone) {
  EXPECT_FALSE(UniqueFile(INVALID_HANDLE_VALUE));
  EXPECT_FALSE(UniqueKernelObject(nullptr));
}

TEST_F(UniqueHandleTest, ClosingKeepsTheLastError) {
  Number one(Handle(1));
  SetLastError(5);
  one.Reset();
  EXPECT_EQ(GetLastError(), 5u);
}

}  // namespace
}  // namespace declarium::win32
