#include "win32/system_registry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "vb/number.h"
#include "win32/system.h"

namespace declarium::win32 {
namespace {

using testing::UnorderedElementsAre;

constexpr auto kUser = RegistryRoot::kCurrentUser;

// Keys of this process alone, which are gone afterwards.
class SystemRegistryTest : public testing::Test {
 protected:
  SystemRegistryTest() { EXPECT_TRUE(registry_.DeleteTree(kUser, key_)); }
  ~SystemRegistryTest() override { EXPECT_TRUE(registry_.DeleteTree(kUser, key_)); }

  const std::u16string key_ =
      u"Software\\Declarium tests\\Registry " + NumberText(GetCurrentProcessId());
  SystemRegistry registry_;
};

TEST_F(SystemRegistryTest, AnAbsentValueIsNone) {
  EXPECT_FALSE(registry_.Read(kUser, key_, u""));
  ASSERT_TRUE(registry_.CreateKey(kUser, key_));
  EXPECT_FALSE(registry_.Read(kUser, key_, u"A"));
}

TEST_F(SystemRegistryTest, ValuesOfAnyTypeComeBackAsTheyWere) {
  for (const auto& value : {TextValue(u"Ž"), NumberValue(7), RegistryValue{3, "ab"},
                            RegistryValue{2, std::string(6, '\0')},
                            RegistryValue{3, std::string(9000, 'x')}, RegistryValue{3, ""}}) {
    ASSERT_TRUE(registry_.Write(kUser, key_ + u"\\below", u"A", value));
    EXPECT_EQ(registry_.Read(kUser, key_ + u"\\below", u"a"), value) << value.type;
  }
}

TEST_F(SystemRegistryTest, NamesTheKeysDirectlyBelow) {
  EXPECT_TRUE(registry_.SubKeys(kUser, key_).empty());
  ASSERT_TRUE(registry_.CreateKey(kUser, key_ + u"\\one\\deep"));
  ASSERT_TRUE(registry_.CreateKey(kUser, key_ + u"\\two"));
  EXPECT_THAT(registry_.SubKeys(kUser, key_), UnorderedElementsAre(u"one", u"two"));
}

TEST_F(SystemRegistryTest, RemovesAKeyOnlyWhenItHoldsNothing) {
  ASSERT_TRUE(registry_.Write(kUser, key_ + u"\\value", u"", TextValue(u"x")));
  ASSERT_TRUE(registry_.CreateKey(kUser, key_ + u"\\key\\below"));
  ASSERT_TRUE(registry_.CreateKey(kUser, key_ + u"\\empty"));
  for (const auto* name : {u"\\value", u"\\key", u"\\empty", u"\\absent"}) {
    registry_.DeleteIfEmpty(kUser, key_ + name);
  }
  EXPECT_THAT(registry_.SubKeys(kUser, key_), UnorderedElementsAre(u"value", u"key"));
}

TEST_F(SystemRegistryTest, RemovingWhatIsAbsentSucceeds) {
  EXPECT_TRUE(registry_.DeleteTree(kUser, key_ + u"\\none"));
}

TEST_F(SystemRegistryTest, AFailureNamesTheKeyAndTheSystemsNumber) {
  const std::u16string too_long(300, u'x');
  const auto created = registry_.CreateKey(kUser, too_long);
  ASSERT_FALSE(created);
  EXPECT_EQ(created.error().key, too_long);
  EXPECT_NE(created.error().code, 0u);
}

TEST_F(SystemRegistryTest, ExpandsTheNamesOfEnvironmentVariables) {
  SetEnvironmentVariableW(L"DECLARIUM_TEST_FOLDER", L"C:\\Žltý");
  EXPECT_EQ(registry_.Expand(u"%DECLARIUM_TEST_FOLDER%\\a.exe"), u"C:\\Žltý\\a.exe");
  EXPECT_EQ(registry_.Expand(u"no variable"), u"no variable");
  EXPECT_EQ(registry_.Expand(u""), u"");
}

}  // namespace
}  // namespace declarium::win32
