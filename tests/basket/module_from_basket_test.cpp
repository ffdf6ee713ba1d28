#include "basket/module_from_basket.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "text/text.h"
#include "vb/module.h"

namespace declarium {
namespace {

ModuleOrigin Origin() {
  return {u"Api.list", {{u"Win32.api", u"Windows", 0x1234567890ABCDEF}}, vb::Audience::kVb6};
}

Basket SmallBasket() {
  Basket basket;
  basket.Add(Kind::kConst, u"A",
             u"\x0E"
             u"B + 1");
  basket.Add(Kind::kConst, u"B",
             u"\x0E"
             u"1");
  basket.Add(Kind::kDeclare, u"Beep", u"\n\"kernel32\" (ByVal f As Long)");
  basket.Add(Kind::kType, u"POINT", u"\x0Cx As Long\ry As Long");
  return basket;
}

std::vector<BasketModule> Made(const Basket& basket, const ModuleOrigin& origin = Origin()) {
  return ModulesFromBasket(basket, u"Api", origin, KnowledgeOf64({}));
}

TEST(ModuleFromBasket, TellsWhatItWasMadeFrom) {
  const auto modules = Made(SmallBasket());
  ASSERT_EQ(modules.size(), 1U);
  EXPECT_EQ(ToUtf8(modules[0].text),
            "Attribute VB_Name = \"Api\"\r\n"
            "' Made by declarium-cli generate from Api.list. Change the list, not this module.\r\n"
            "' Library: Windows (Win32.api), content 1234567890abcdef\r\n"
            "' Target: vb6\r\n"
            "Option Explicit\r\n"
            "\r\n"
            "Public Const B = 1\r\n"
            "Public Const A = B + 1\r\n"
            "Public Declare Sub Beep Lib \"kernel32\" (ByVal f As Long)\r\n"
            "\r\n"
            "Public Type POINT\r\n"
            "\tx As Long\r\n"
            "\ty As Long\r\n"
            "End Type\r\n");
}

TEST(ModuleFromBasket, IsWrittenForItsTarget) {
  auto origin = Origin();
  origin.target = vb::Audience::kVba7Only;
  const auto text = ToUtf8(Made(SmallBasket(), origin).front().text);
  EXPECT_NE(text.find("' Target: vba7-only\r\n"), std::string::npos);
  EXPECT_NE(text.find("Public Declare PtrSafe Sub Beep"), std::string::npos);
}

TEST(ModuleFromBasket, KnowsItsOwnAgain) {
  const auto text = Made(SmallBasket()).front().text;
  EXPECT_TRUE(IsModuleFromBasket(text));
  EXPECT_TRUE(IsModuleFromBasket(text, u"Api.list"));
  EXPECT_FALSE(IsModuleFromBasket(text, u"Api"));
  EXPECT_FALSE(IsModuleFromBasket(u"Attribute VB_Name = \"Api\"\r\n' Made by hand\r\n"));
  EXPECT_FALSE(IsModuleFromBasket(u""));
}

TEST(ModuleFromBasket, ALineEndInATitleStaysInTheComment) {
  auto origin = Origin();
  origin.libraries[0].title = u"A\r\nSub B()";
  const auto text = Made(SmallBasket(), origin).front().text;
  EXPECT_NE(text.find(u"' Library: A  Sub B() (Win32.api)"), std::u16string::npos);
}

// Each declaration stands in one of the modules, and each is within what Visual Basic takes.
TEST(ModuleFromBasket, TooMuchForOneModuleBecomesSeveral) {
  Basket basket;
  constexpr std::size_t kDeclares = 3100;
  for (std::size_t i = 0; i < kDeclares; ++i)
    basket.Add(Kind::kDeclare, u"P" + CountText(10000 + i), u"\n\"dll\" ()");
  const auto modules = Made(basket);
  EXPECT_EQ(modules.size(), 3U);
  std::size_t found = 0;
  for (std::size_t i = 0; i < modules.size(); ++i) {
    EXPECT_EQ(modules[i].name, i == 0 ? u"Api" : u"Api" + CountText(i + 1));
    const auto module = vb::ReadModule(modules[i].text);
    EXPECT_EQ(module.Name(), modules[i].name);
    EXPECT_LE(module.declarations.size(), kMostDeclares);
    found += module.declarations.size();
  }
  EXPECT_EQ(found, kDeclares);
}

TEST(ModuleFromBasket, LinesAreCountedAsTheyStandInTheModule) {
  Basket basket;
  std::u16string members = u"\x0C";
  for (int i = 0; i < 1000; ++i)
    members += u"a" + CountText(static_cast<unsigned>(i)) + u" As Long\r";
  members.pop_back();
  for (std::size_t i = 0; i < 100; ++i) basket.Add(Kind::kType, u"T" + CountText(i), members);
  const auto modules = Made(basket);
  EXPECT_EQ(modules.size(), 2U);
  for (const auto& module : modules)
    EXPECT_LE(static_cast<std::size_t>(std::ranges::count(module.text, u'\n')), kMostModuleLines);
}

}  // namespace
}  // namespace declarium
