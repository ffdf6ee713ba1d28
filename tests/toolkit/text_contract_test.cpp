#include "toolkit/contract.h"

namespace declarium {
namespace {

class TextBoxContract : public ShownContract, public ::testing::WithParamInterface<const char*> {
 protected:
  TextBoxContract() {
    box().SetText(u"");
    box().on_change = [this] { changes_.push_back(box().Text()); };
  }

  TextBox& box() { return Get<TextBox>(GetParam()); }
  std::vector<std::u16string> changes_;
};

INSTANTIATE_TEST_SUITE_P(Both, TextBoxContract, ::testing::Values("Text1", "Text2"));

TEST_P(TextBoxContract, SettingTheTextFiresChange) {
  box().SetText(u"Žltý");
  EXPECT_EQ(box().Text(), u"Žltý");
  EXPECT_THAT(changes_, ElementsAre(u"Žltý"));
}

TEST_P(TextBoxContract, SettingTheSameTextFiresNothing) {
  box().SetText(u"abc");
  box().SetText(u"abc");
  EXPECT_THAT(changes_, ElementsAre(u"abc"));
}

TEST_P(TextBoxContract, SettingTheTextPutsTheCaretAtItsStart) {
  box().SetText(u"abc");
  EXPECT_EQ(box().SelectionStart(), 0);
  EXPECT_EQ(box().SelectionLength(), 0);
}

TEST_P(TextBoxContract, TypingChangesCharacterByCharacter) {
  box().SetFocus();
  user().Type(u"gé");
  EXPECT_THAT(changes_, ElementsAre(u"g", u"gé"));
}

TEST_P(TextBoxContract, TypingReplacesTheSelection) {
  box().SetText(u"abcd");
  box().SetFocus();
  box().Select(1, 2);
  EXPECT_EQ(box().SelectionStart(), 1);
  EXPECT_EQ(box().SelectionLength(), 2);
  user().Type(u"X");
  EXPECT_EQ(box().Text(), u"aXd");
  EXPECT_EQ(box().SelectionStart(), 2);
}

struct WordDeletion {
  std::u16string_view text;
  int start, length;
  std::u16string_view left;
};

TEST_P(TextBoxContract, ControlDeleteDeletesUpToTheNextWord) {
  for (const auto& [text, start, length, left] : {
           WordDeletion{u"one two three", 0, 0, u"two three"},
           WordDeletion{u"one two three", 2, 0, u"ontwo three"},
           WordDeletion{u"one two three", 3, 0, u"onetwo three"},
           WordDeletion{u"one two three", 8, 0, u"one two "},
           WordDeletion{u"one two three", 1, 7, u"othree"},
           WordDeletion{u"MAX_PATH1*(Žlť", 0, 0, u"*(Žlť"},
           WordDeletion{u"MAX_PATH1*(Žlť", 9, 0, u"MAX_PATH1Žlť"},
           WordDeletion{u"one", 3, 0, u"one"},
           WordDeletion{u"", 0, 0, u""},
       }) {
    box().SetText(text);
    box().SetFocus();
    box().Select(start, length);
    changes_.clear();
    user().PressKey(key::kDelete, {.control = true});
    EXPECT_EQ(box().Text(), left) << start;
    EXPECT_EQ(box().SelectionStart(), start);
    EXPECT_EQ(changes_.empty(), text == left);
  }
}

TEST_P(TextBoxContract, TheCaretCanGoToTheEnd) {
  box().SetText(u"abcd");
  box().SetCaretToEnd();
  EXPECT_EQ(box().SelectionStart(), 4);
  box().Select(2, 100);
  EXPECT_EQ(box().SelectionStart(), 2);
  EXPECT_EQ(box().SelectionLength(), 2);
}

TEST_P(TextBoxContract, ASwallowedKeyPressTypesNothing) {
  box().SetFocus();
  box().on_key_press = [](KeyPress& press) {
    if (press.character == u'x') press.Swallow();
  };
  user().Type(u"axb");
  EXPECT_EQ(box().Text(), u"ab");
}

TEST_P(TextBoxContract, AKeyPressMayBecomeAnotherCharacter) {
  box().SetFocus();
  box().on_key_press = [](KeyPress& press) { press.character = u'ž'; };
  user().Type(u"a");
  EXPECT_EQ(box().Text(), u"ž");
}

TEST_P(TextBoxContract, ASwallowedKeyDownHasNoEffectAndNoKeyPress) {
  box().SetText(u"abc");
  box().SetCaretToEnd();
  box().SetFocus();
  box().on_key_down = [this](KeyDown& down) {
    log_.push_back("down " + std::to_string(down.code));
    down.Swallow();
  };
  box().on_key_press = Log("press");
  user().PressKey(key::kBackspace);
  EXPECT_EQ(box().Text(), u"abc");
  EXPECT_THAT(TakeLog(), ElementsAre("down 8"));
}

TEST_P(TextBoxContract, LongTextsAreKept) {
  const std::u16string text(200'000, u'a');
  box().SetText(text);
  EXPECT_EQ(box().Text().size(), text.size());
}

TEST_F(ShownContract, TheFirstTextComesFromTheTable) {
  EXPECT_EQ(Get<TextBox>("Text2").Text(), u"Const A = 1");
}

TEST_F(ShownContract, EnterReachesASingleLineBoxOfAFormWithoutADefaultButton) {
  auto& box = Get<TextBox>("Text1");
  box.SetFocus();
  box.on_key_down = [this](KeyDown& down) {
    log_.push_back("down " + std::to_string(down.code));
    down.Swallow();
  };
  user().PressKey(key::kEnter);
  user().PressKey(key::kUp);
  user().PressKey(key::kEscape);
  EXPECT_THAT(TakeLog(), ElementsAre("down 13", "down 38", "down 27"));
}

TEST_F(ShownContract, EnterBeginsANewLineInAMultiLineBox) {
  auto& box = Get<TextBox>("Text2");
  box.SetText(u"a");
  box.SetCaretToEnd();
  box.SetFocus();
  user().PressKey(key::kEnter);
  EXPECT_EQ(box.Text(), u"a\r\n");
}

TEST_F(ShownContract, TheDisplayShowsPiecesInTheirColors) {
  auto& rich = Get<RichText>("RTB");
  rich.SetVisible(false);
  rich.Clear();
  rich.SetInsertionColor(0x800000);
  rich.Insert(u"Const");
  rich.SetInsertionColor(0x000000);
  rich.Insert(u" ");
  rich.Insert(u"A = 1");
  rich.Insert(u"\r\n");
  rich.SetInsertionColor(0x008000);
  rich.Insert(u"\t'Žltý");
  rich.SetCaretToStart();
  rich.SetVisible(true);
  EXPECT_EQ(rich.Text(), u"Const A = 1\r\n\t'Žltý");
  EXPECT_THAT(rich.Runs(),
              ElementsAre(ColoredRun{0x800000, u"Const"}, ColoredRun{0x000000, u" A = 1\r\n"},
                          ColoredRun{0x008000, u"\t'Žltý"}));
}

TEST_F(ShownContract, InsertingGoesOnBehindTheTextAfterTheCaretWasPutToTheStart) {
  auto& rich = Get<RichText>("RTB");
  rich.Insert(u"a");
  rich.SetCaretToStart();
  rich.Insert(u"b");
  EXPECT_EQ(rich.Text(), u"ab");
}

TEST_F(ShownContract, AClearedDisplayIsEmpty) {
  auto& rich = Get<RichText>("RTB");
  rich.Insert(u"abc");
  rich.Clear();
  EXPECT_EQ(rich.Text(), u"");
  EXPECT_THAT(rich.Runs(), IsEmpty());
}

}  // namespace
}  // namespace declarium
