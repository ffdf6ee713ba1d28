#include "shell/ui/options_dialog.h"

#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "shell/memory_store.h"
#include "shell/settings.h"
#include "toolkit/captioned.h"
#include "toolkit/headless/form.h"
#include "toolkit/headless/picture_box.h"
#include "toolkit/headless/toolkit.h"
#include "toolkit/headless/user.h"

namespace declarium {
namespace {

using headless::ColourQuestion;
using headless::HeadlessPictureBox;

constexpr DisplayColours kColours{.keyword = 0x112233, .comment = 0x445566, .normal = 0x778899};

class OptionsDialogTest : public testing::Test {
 protected:
  // Opens the dialog, in which the user does `actions`, then leaves it by the button of this name.
  void Open(std::string_view button, const std::function<void(Form&)>& actions = [](Form&) {}) {
    toolkit_.Script().InForm("frmOptions", [&](Form& form) {
      actions(form);
      user_.Click(form.Get<CommandButton>(button));
    });
    ShowOptionsDialog(toolkit_, nullptr, store_, colours_);
  }

  static HeadlessPictureBox& Swatch(Form& form, int index) {
    return form.Get<HeadlessPictureBox>("picColor" + std::to_string(index));
  }
  [[nodiscard]] bool IsMarked(Form& form, int index) {
    toolkit_.ProcessPendingEvents();
    auto& swatch = Swatch(form, index);
    return swatch.Surface().PixelAt({0, 0}) != swatch.BackColour();
  }
  [[nodiscard]] std::vector<Colour> ColoursAskedFor() {
    std::vector<Colour> colours;
    for (const auto& asked : toolkit_.Script().AskedSoFar()) {
      if (const auto* colour = std::get_if<ColourQuestion>(&asked)) {
        colours.push_back(colour->initial);
      }
    }
    return colours;
  }

  headless::HeadlessToolkit toolkit_;
  headless::HeadlessUser user_{toolkit_};
  MemoryStore store_;
  DisplayColours colours_ = kColours;
};

TEST_F(OptionsDialogTest, IsAModalDialogWithItsTexts) {
  EXPECT_TRUE(FindDefinitionFaults(OptionsFormDefinition()).empty());
  EXPECT_EQ(OptionsFormDefinition().caption, u"Nastavenia");
  Open("Command1", [this](Form& form) {
    EXPECT_TRUE(toolkit_.IsModalOpen());
    EXPECT_EQ(form.Get<Label>("Label1").Caption(), u"Farba kľúčových slov");
    EXPECT_EQ(form.Get<Label>("Label2").Caption(), u"Farba komentárov");
    EXPECT_EQ(form.Get<Label>("Label3").Caption(), u"Farba ostatných slov");
    EXPECT_EQ(form.Get<CommandButton>("Command2").Caption(), u"OK");
    EXPECT_EQ(form.Get<CommandButton>("Command1").Caption(), u"&Zrušiť");
  });
  EXPECT_FALSE(toolkit_.IsModalOpen());
}

TEST_F(OptionsDialogTest, ShowsTheThreeColoursInItsSwatches) {
  Open("Command1", [this](Form& form) {
    toolkit_.ProcessPendingEvents();
    const Colour expected[] = {0x112233, 0x445566, 0x778899};
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(Swatch(form, i).BackColour(), expected[i]);
      EXPECT_EQ(Swatch(form, i).Surface().PixelAt({10, 10}), expected[i]);
    }
  });
}

TEST_F(OptionsDialogTest, OkTakesTheColoursOverAndStoresThem) {
  Open("Command2", [this](Form& form) {
    for (int i = 0; i < 3; ++i) Swatch(form, i).SetBackColour(static_cast<Colour>(i + 1));
    EXPECT_EQ(colours_, kColours);
    EXPECT_TRUE(store_.written.empty());
  });
  EXPECT_EQ(colours_, (DisplayColours{1, 2, 3}));
  EXPECT_EQ(ReadColours(store_), (DisplayColours{1, 2, 3}));
  EXPECT_EQ(store_.Type(kSettingsKey, u"KeywordColor"), 4U);
}

TEST_F(OptionsDialogTest, OkWithoutChangesWritesTheColoursAnyway) {
  Open("Command2");
  EXPECT_EQ(store_.written,
            (std::vector<std::u16string>{u"KeywordColor", u"CommentColor", u"NormalColor"}));
  EXPECT_EQ(ReadColours(store_), kColours);
}

TEST_F(OptionsDialogTest, OkTakesTheColoursOverWhenTheyCannotBeStored) {
  store_.fails = true;
  Open("Command2", [](Form& form) { Swatch(form, 0).SetBackColour(5); });
  EXPECT_EQ(colours_.keyword, 5U);
}

TEST_F(OptionsDialogTest, CancelAndClosingKeepTheColours) {
  Open("Command1", [](Form& form) { Swatch(form, 0).SetBackColour(5); });
  toolkit_.Script().InForm("frmOptions", [this](Form& form) {
    Swatch(form, 0).SetBackColour(5);
    user_.Close(form);
  });
  ShowOptionsDialog(toolkit_, nullptr, store_, colours_);
  EXPECT_EQ(colours_, kColours);
  EXPECT_TRUE(store_.written.empty());
}

TEST_F(OptionsDialogTest, EnterAcceptsAndEscapeCancels) {
  toolkit_.Script().InForm("frmOptions", [this](Form& form) {
    Swatch(form, 1).SetBackColour(7);
    user_.PressKey(key::kEscape);
  });
  ShowOptionsDialog(toolkit_, nullptr, store_, colours_);
  EXPECT_EQ(colours_, kColours);
  toolkit_.Script().InForm("frmOptions", [this](Form& form) {
    Swatch(form, 1).SetBackColour(7);
    user_.PressKey(key::kEnter);
  });
  ShowOptionsDialog(toolkit_, nullptr, store_, colours_);
  EXPECT_EQ(colours_.comment, 7U);
}

TEST_F(OptionsDialogTest, ADoubleClickChoosesTheSwatchsColour) {
  toolkit_.Script().InForm("frmOptions", [this](Form& form) {
    for (int i = 0; i < 3; ++i) user_.DoubleClick(Swatch(form, i));
    for (int i = 0; i < 3; ++i)
      EXPECT_EQ(Swatch(form, i).BackColour(), 10U + static_cast<Colour>(i));
    user_.Click(form.Get<CommandButton>("Command2"));
  });
  for (const Colour colour : {10, 11, 12}) toolkit_.Script().AnswerColour(colour);
  ShowOptionsDialog(toolkit_, nullptr, store_, colours_);
  EXPECT_EQ(ColoursAskedFor(), (std::vector<Colour>{0x112233, 0x445566, 0x778899}));
  EXPECT_EQ(colours_, (DisplayColours{10, 11, 12}));
}

TEST_F(OptionsDialogTest, TheSwatchKeepsItsColourWhenTheChooserIsCancelled) {
  toolkit_.Script().InForm("frmOptions", [this](Form& form) {
    user_.DoubleClick(Swatch(form, 1));
    EXPECT_EQ(Swatch(form, 1).BackColour(), kColours.comment);
    user_.Click(form.Get<CommandButton>("Command1"));
  });
  toolkit_.Script().AnswerColour(std::nullopt);
  ShowOptionsDialog(toolkit_, nullptr, store_, colours_);
  EXPECT_EQ(ColoursAskedFor(), std::vector<Colour>{kColours.comment});
}

TEST_F(OptionsDialogTest, SpaceChoosesTheFocusedSwatchsColourAndOtherKeysDoNothing) {
  toolkit_.Script().InForm("frmOptions", [this](Form& form) {
    user_.PressKey(Swatch(form, 2), key::kSpace);
    for (const int code : {key::kUp, key::kDown, static_cast<int>('A'), key::kDelete}) {
      user_.PressKey(code);
    }
    user_.Click(form.Get<CommandButton>("Command2"));
  });
  toolkit_.Script().AnswerColour(0x00FF00);
  ShowOptionsDialog(toolkit_, nullptr, store_, colours_);
  EXPECT_EQ(ColoursAskedFor(), std::vector<Colour>{kColours.normal});
  EXPECT_EQ(colours_.normal, 0x00FF00U);
}

TEST_F(OptionsDialogTest, TheChooserStartsFromTheColourChosenBefore) {
  toolkit_.Script().InForm("frmOptions", [this](Form& form) {
    user_.DoubleClick(Swatch(form, 0));
    user_.DoubleClick(Swatch(form, 0));
    user_.Click(form.Get<CommandButton>("Command1"));
  });
  toolkit_.Script().AnswerColour(1);
  toolkit_.Script().AnswerColour(2);
  ShowOptionsDialog(toolkit_, nullptr, store_, colours_);
  EXPECT_EQ(ColoursAskedFor(), (std::vector<Colour>{kColours.keyword, 1}));
}

TEST_F(OptionsDialogTest, TheMarkFollowsTheFocusThroughTheSwatches) {
  Open("Command1", [this](Form& form) {
    for (int focused = 0; focused < 3; ++focused) {
      for (int i = 0; i < 3; ++i) EXPECT_EQ(IsMarked(form, i), i == focused) << i << focused;
      user_.PressKey(key::kTab);
    }
    EXPECT_TRUE(form.Get<CommandButton>("Command2").HasFocus());
    for (int i = 0; i < 3; ++i) EXPECT_FALSE(IsMarked(form, i));
  });
}

TEST_F(OptionsDialogTest, TheMarkIsADottedFrameThatInvertsAnyColour) {
  for (const Colour colour : {kBlack, kWhite, Colour{0x123456}}) {
    Open("Command1", [this, colour](Form& form) {
      auto& swatch = Swatch(form, 0);
      swatch.SetBackColour(colour);
      toolkit_.ProcessPendingEvents();
      const auto& surface = swatch.Surface();
      const auto [width, height] = surface.Extent();
      for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
          const bool edge = x == 0 || y == 0 || x == width - 1 || y == height - 1;
          const bool dot = edge && (x + y) % 2 == 0;
          ASSERT_EQ(surface.PixelAt({x, y}), dot ? colour ^ 0xFFFFFF : colour) << x << " " << y;
        }
      }
    });
  }
}

TEST_F(OptionsDialogTest, CanBeOpenedAgain) {
  Open("Command2", [](Form& form) { Swatch(form, 0).SetBackColour(5); });
  Open("Command1", [](Form& form) { EXPECT_EQ(Swatch(form, 0).BackColour(), 5U); });
}

}  // namespace
}  // namespace declarium
