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
#include "toolkit/row_list.h"

namespace declarium {
namespace {

using headless::ColorQuestion;
using headless::HeadlessPictureBox;

constexpr DisplayColors kColors{.keyword = 0x112233, .comment = 0x445566, .normal = 0x778899};

class OptionsDialogTest : public testing::Test {
 protected:
  // Opens the dialog, in which the user does `actions`, then leaves it by the button of this name.
  void Open(std::string_view button, const std::function<void(Form&)>& actions = [](Form&) {}) {
    toolkit_.Script().InForm("frmOptions", [&](Form& form) {
      actions(form);
      user_.Click(form.Get<CommandButton>(button));
    });
    ShowOptionsDialog(toolkit_, nullptr, store_, colors_, target_);
  }

  static HeadlessPictureBox& Swatch(Form& form, int index) {
    return form.Get<HeadlessPictureBox>("picColor" + std::to_string(index));
  }
  [[nodiscard]] bool IsMarked(Form& form, int index) {
    toolkit_.ProcessPendingEvents();
    auto& swatch = Swatch(form, index);
    return swatch.Surface().PixelAt({0, 0}) != swatch.BackColor();
  }
  [[nodiscard]] std::vector<Color> ColorsAskedFor() {
    std::vector<Color> colors;
    for (const auto& asked : toolkit_.Script().AskedSoFar()) {
      if (const auto* color = std::get_if<ColorQuestion>(&asked)) {
        colors.push_back(color->initial);
      }
    }
    return colors;
  }

  headless::HeadlessToolkit toolkit_;
  headless::HeadlessUser user_{toolkit_};
  MemoryStore store_;
  DisplayColors colors_ = kColors;
  vb::Audience target_ = vb::Audience::kVb6;
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

TEST_F(OptionsDialogTest, ShowsTheThreeColorsInItsSwatches) {
  Open("Command1", [this](Form& form) {
    toolkit_.ProcessPendingEvents();
    const Color expected[] = {0x112233, 0x445566, 0x778899};
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(Swatch(form, i).BackColor(), expected[i]);
      EXPECT_EQ(Swatch(form, i).Surface().PixelAt({10, 10}), expected[i]);
    }
  });
}

TEST_F(OptionsDialogTest, OkTakesTheColorsOverAndStoresThem) {
  Open("Command2", [this](Form& form) {
    for (int i = 0; i < 3; ++i) Swatch(form, i).SetBackColor(static_cast<Color>(i + 1));
    EXPECT_EQ(colors_, kColors);
    EXPECT_TRUE(store_.written.empty());
  });
  EXPECT_EQ(colors_, (DisplayColors{1, 2, 3}));
  EXPECT_EQ(ReadColors(store_), (DisplayColors{1, 2, 3}));
  EXPECT_EQ(store_.Type(kSettingsKey, u"KeywordColor"), 4U);
}

TEST_F(OptionsDialogTest, OkWithoutChangesWritesTheColorsAnyway) {
  Open("Command2");
  EXPECT_EQ(store_.written,
            (std::vector<std::u16string>{u"KeywordColor", u"CommentColor", u"NormalColor"}));
  EXPECT_EQ(ReadColors(store_), kColors);
}

TEST_F(OptionsDialogTest, OkTakesTheColorsOverWhenTheyCannotBeStored) {
  store_.fails = true;
  Open("Command2", [](Form& form) { Swatch(form, 0).SetBackColor(5); });
  EXPECT_EQ(colors_.keyword, 5U);
}

TEST_F(OptionsDialogTest, CancelAndClosingKeepTheColors) {
  Open("Command1", [](Form& form) { Swatch(form, 0).SetBackColor(5); });
  toolkit_.Script().InForm("frmOptions", [this](Form& form) {
    Swatch(form, 0).SetBackColor(5);
    user_.Close(form);
  });
  ShowOptionsDialog(toolkit_, nullptr, store_, colors_, target_);
  EXPECT_EQ(colors_, kColors);
  EXPECT_TRUE(store_.written.empty());
}

TEST_F(OptionsDialogTest, EnterAcceptsAndEscapeCancels) {
  toolkit_.Script().InForm("frmOptions", [this](Form& form) {
    Swatch(form, 1).SetBackColor(7);
    user_.PressKey(key::kEscape);
  });
  ShowOptionsDialog(toolkit_, nullptr, store_, colors_, target_);
  EXPECT_EQ(colors_, kColors);
  toolkit_.Script().InForm("frmOptions", [this](Form& form) {
    Swatch(form, 1).SetBackColor(7);
    user_.PressKey(key::kEnter);
  });
  ShowOptionsDialog(toolkit_, nullptr, store_, colors_, target_);
  EXPECT_EQ(colors_.comment, 7U);
}

TEST_F(OptionsDialogTest, ADoubleClickChoosesTheSwatchsColor) {
  toolkit_.Script().InForm("frmOptions", [this](Form& form) {
    for (int i = 0; i < 3; ++i) user_.DoubleClick(Swatch(form, i));
    for (int i = 0; i < 3; ++i) EXPECT_EQ(Swatch(form, i).BackColor(), 10U + static_cast<Color>(i));
    user_.Click(form.Get<CommandButton>("Command2"));
  });
  for (const Color color : {10, 11, 12}) toolkit_.Script().AnswerColor(color);
  ShowOptionsDialog(toolkit_, nullptr, store_, colors_, target_);
  EXPECT_EQ(ColorsAskedFor(), (std::vector<Color>{0x112233, 0x445566, 0x778899}));
  EXPECT_EQ(colors_, (DisplayColors{10, 11, 12}));
}

TEST_F(OptionsDialogTest, TheSwatchKeepsItsColorWhenTheChooserIsCancelled) {
  toolkit_.Script().InForm("frmOptions", [this](Form& form) {
    user_.DoubleClick(Swatch(form, 1));
    EXPECT_EQ(Swatch(form, 1).BackColor(), kColors.comment);
    user_.Click(form.Get<CommandButton>("Command1"));
  });
  toolkit_.Script().AnswerColor(std::nullopt);
  ShowOptionsDialog(toolkit_, nullptr, store_, colors_, target_);
  EXPECT_EQ(ColorsAskedFor(), std::vector<Color>{kColors.comment});
}

TEST_F(OptionsDialogTest, SpaceChoosesTheFocusedSwatchsColorAndOtherKeysDoNothing) {
  toolkit_.Script().InForm("frmOptions", [this](Form& form) {
    user_.PressKey(Swatch(form, 2), key::kSpace);
    for (const int code : {key::kUp, key::kDown, static_cast<int>('A'), key::kDelete}) {
      user_.PressKey(code);
    }
    user_.Click(form.Get<CommandButton>("Command2"));
  });
  toolkit_.Script().AnswerColor(0x00FF00);
  ShowOptionsDialog(toolkit_, nullptr, store_, colors_, target_);
  EXPECT_EQ(ColorsAskedFor(), std::vector<Color>{kColors.normal});
  EXPECT_EQ(colors_.normal, 0x00FF00U);
}

TEST_F(OptionsDialogTest, TheChooserStartsFromTheColorChosenBefore) {
  toolkit_.Script().InForm("frmOptions", [this](Form& form) {
    user_.DoubleClick(Swatch(form, 0));
    user_.DoubleClick(Swatch(form, 0));
    user_.Click(form.Get<CommandButton>("Command1"));
  });
  toolkit_.Script().AnswerColor(1);
  toolkit_.Script().AnswerColor(2);
  ShowOptionsDialog(toolkit_, nullptr, store_, colors_, target_);
  EXPECT_EQ(ColorsAskedFor(), (std::vector<Color>{kColors.keyword, 1}));
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

TEST_F(OptionsDialogTest, TheMarkIsADottedFrameThatInvertsAnyColor) {
  for (const Color color : {kBlack, kWhite, Color{0x123456}}) {
    Open("Command1", [this, color](Form& form) {
      auto& swatch = Swatch(form, 0);
      swatch.SetBackColor(color);
      toolkit_.ProcessPendingEvents();
      const auto& surface = swatch.Surface();
      const auto [width, height] = surface.Extent();
      for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
          const bool edge = x == 0 || y == 0 || x == width - 1 || y == height - 1;
          const bool dot = edge && (x + y) % 2 == 0;
          ASSERT_EQ(surface.PixelAt({x, y}), dot ? color ^ 0xFFFFFF : color) << x << " " << y;
        }
      }
    });
  }
}

TEST_F(OptionsDialogTest, ShowsTheTargetAmongThoseThereAre) {
  for (const auto target : vb::kAudiences) {
    target_ = target;
    Open("Command1", [&](Form& form) {
      const auto& box = form.Get<ComboBox>("cmbTarget");
      EXPECT_EQ(box.RowCount(), 4);
      EXPECT_EQ(box.Text(), TargetText(target));
    });
  }
  EXPECT_EQ(TargetText(vb::Audience::kVb6), u"Visual Basic 6.0");
  EXPECT_EQ(TargetText(vb::Audience::kVba7), u"VBA 7 aj Visual Basic 6.0");
  EXPECT_EQ(TargetText(vb::Audience::kVba7Only), u"VBA 7 (Office 2010 a novší)");
  EXPECT_EQ(TargetText(vb::Audience::kTwinBasic), u"twinBASIC");
}

TEST_F(OptionsDialogTest, OkTakesTheTargetOverAndStoresIt) {
  Open("Command2", [this](Form& form) {
    user_.ChooseRow(form.Get<ComboBox>("cmbTarget"), 2);
    EXPECT_EQ(target_, vb::Audience::kVb6);
  });
  EXPECT_EQ(target_, vb::Audience::kVba7Only);
  EXPECT_EQ(ReadAudience(store_), vb::Audience::kVba7Only);
  Open("Command2", [this](Form& form) { user_.ChooseRow(form.Get<ComboBox>("cmbTarget"), 0); });
  EXPECT_EQ(ReadAudience(store_), vb::Audience::kVb6);
}

TEST_F(OptionsDialogTest, CancelKeepsTheTarget) {
  Open("Command1", [this](Form& form) { user_.ChooseRow(form.Get<ComboBox>("cmbTarget"), 1); });
  EXPECT_EQ(target_, vb::Audience::kVb6);
  EXPECT_TRUE(store_.written.empty());
}

TEST_F(OptionsDialogTest, TheTargetComesLastInTheOrderOfTheTabKey) {
  Open("Command1", [this](Form& form) {
    for (int i = 0; i < 5; ++i) user_.PressKey(key::kTab);
    EXPECT_TRUE(form.Get<ComboBox>("cmbTarget").HasFocus());
    user_.PressKey(key::kTab);
    EXPECT_TRUE(Swatch(form, 0).HasFocus());
  });
}

TEST_F(OptionsDialogTest, TheColorsAndButtonsKeepTheirPlaces) {
  Open("Command1", [](Form& form) {
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(Swatch(form, i).Bounds(), (Rect{172, 12 + i * 30, 72, 24}));
    }
    EXPECT_EQ(form.Get<CommandButton>("Command2").Bounds(), (Rect{84, 112, 76, 25}));
    EXPECT_EQ(form.Get<CommandButton>("Command1").Bounds(), (Rect{168, 112, 76, 25}));
  });
}

TEST_F(OptionsDialogTest, CanBeOpenedAgain) {
  Open("Command2", [](Form& form) { Swatch(form, 0).SetBackColor(5); });
  Open("Command1", [](Form& form) { EXPECT_EQ(Swatch(form, 0).BackColor(), 5U); });
}

}  // namespace
}  // namespace declarium
