#include "win32/system_error.h"

#include <gtest/gtest.h>

namespace declarium::win32 {
namespace {

TEST(SystemError, IsTheSystemsSentenceWithoutItsEnd) {
  const auto text = SystemErrorText(ERROR_ACCESS_DENIED);
  ASSERT_FALSE(text.empty());
  EXPECT_NE(text, SystemErrorText(ERROR_FILE_NOT_FOUND));
  EXPECT_FALSE(text.ends_with(u'.') || text.ends_with(u'\n') || text.ends_with(u'\r'));
}

TEST(SystemError, AnUnknownNumberIsNamed) {
  EXPECT_EQ(SystemErrorText(0x2FFFFFFF), u"error 805306367");
}

}  // namespace
}  // namespace declarium::win32
