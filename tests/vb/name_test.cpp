#include "vb/name.h"

#include "gtest/gtest.h"

namespace declarium::vb {
namespace {

TEST(Name, IsLegalOrMadeSo) {
  EXPECT_TRUE(IsLegalName("WM_USER"));
  EXPECT_FALSE(IsLegalName("1A"));
  EXPECT_FALSE(IsLegalName("_A"));
  EXPECT_FALSE(IsLegalName("sTrInG"));
  EXPECT_EQ(LegalName("__reserved"), "reserved");
  EXPECT_EQ(LegalName("type"), "type_");
  EXPECT_EQ(LegalName("_"), "");
  EXPECT_TRUE(IsReservedWord(u"WithEvents"));
  EXPECT_FALSE(IsReservedWord(u"MAX_PATH"));
}

}  // namespace
}  // namespace declarium::vb
