#include "shell/ui/splash.h"

#include <gtest/gtest.h>

#include "toolkit/headless/form.h"
#include "toolkit/headless/picture_box.h"
#include "toolkit/headless/toolkit.h"
#include "toolkit/headless/user.h"
#include "toolkit/timer.h"

namespace declarium {
namespace {

using headless::HeadlessForm;
using headless::HeadlessPictureBox;

class SplashTest : public testing::Test {
 protected:
  [[nodiscard]] HeadlessForm& Window() const { return *toolkit_.Forms().front(); }
  [[nodiscard]] HeadlessPictureBox& Picture() const {
    return Window().Get<HeadlessPictureBox>("picSplash");
  }

  headless::HeadlessToolkit toolkit_;
  headless::HeadlessUser user_{toolkit_};
  Splash splash_{toolkit_};
};

TEST_F(SplashTest, IsNotShownBeforeItIsAskedFor) {
  EXPECT_TRUE(FindDefinitionFaults(SplashFormDefinition()).empty());
  EXPECT_FALSE(Window().Visible());
}

TEST_F(SplashTest, IsShownAboveEverythingUntilItsTimerFires) {
  splash_.Show();
  EXPECT_TRUE(Window().Visible());
  EXPECT_TRUE(Window().IsTopmost());
  toolkit_.Advance(1999);
  EXPECT_TRUE(Window().Visible());
  toolkit_.Advance(1);
  EXPECT_TRUE(Window().IsUnloaded());
  EXPECT_FALSE(Window().Get<Timer>("tmrUnload").Enabled());
}

TEST_F(SplashTest, AClickClosesIt) {
  splash_.Show();
  user_.MouseDown(Picture(), {.button = MouseButton::kLeft});
  EXPECT_TRUE(Window().IsUnloaded());
}

TEST_F(SplashTest, AKeyClosesIt) {
  splash_.Show();
  user_.PressKey(key::kEscape);
  EXPECT_TRUE(Window().IsUnloaded());
}

TEST_F(SplashTest, IsGoneWhenItsFormIsUnloaded) {
  splash_.Show();
  EXPECT_TRUE(Window().Unload());
  EXPECT_FALSE(Window().Visible());
  toolkit_.Advance(5000);
  EXPECT_FALSE(Window().Visible());
}

TEST_F(SplashTest, ShowsTheProgramsNameIconAndVersionInsideItsWindow) {
  splash_.Show();
  toolkit_.ProcessPendingEvents();
  const auto& surface = Picture().Surface();
  std::vector<std::u16string> texts;
  for (const auto& [area, text] : surface.Texts()) {
    texts.push_back(text);
    EXPECT_LE(area.left + area.width, surface.Extent().width);
    EXPECT_LE(area.top + area.height, surface.Extent().height);
  }
  EXPECT_EQ(texts,
            (std::vector<std::u16string>{
                u"Declarium 3.0", u"Knižnica deklarácií pre Visual Basic 6.0", u"Verzia 3.0.0"}));
  ASSERT_EQ(surface.Pictures().size(), 1U);
  EXPECT_EQ(surface.Pictures()[0].icon, Icon::kApplication);
}

}  // namespace
}  // namespace declarium
