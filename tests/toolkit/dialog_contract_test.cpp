#include <filesystem>

#include "toolkit/contract.h"

namespace declarium {
namespace {

class DialogContract : public Contract {
 protected:
  DialogContract() : dialog_(toolkit().CreateForm(demo::kDialog)) {
    Button("Command1").on_click = Log("ok");
    Button("Command2").on_click = Log("cancel");
    Box().on_key_down = Log("key");
    dialog_->Show();
  }

  CommandButton& Button(std::string_view name) { return dialog_->Get<CommandButton>(name); }
  TextBox& Box() { return dialog_->Get<TextBox>("Text1"); }

  std::unique_ptr<Form> dialog_;
};

TEST_F(DialogContract, EnterClicksTheDefaultButtonAndRaisesNoKey) {
  Box().SetFocus();
  user().PressKey(key::kEnter);
  EXPECT_THAT(TakeLog(), ElementsAre("ok"));
}

TEST_F(DialogContract, EscapeClicksTheCancelButtonAndRaisesNoKey) {
  Box().SetFocus();
  user().PressKey(key::kEscape);
  EXPECT_THAT(TakeLog(), ElementsAre("cancel"));
}

TEST_F(DialogContract, EnterOnAnotherButtonClicksThatOne) {
  Button("Command2").SetFocus();
  user().PressKey(key::kEnter);
  EXPECT_THAT(TakeLog(), ElementsAre("cancel"));
}

TEST_F(DialogContract, EnterInAMultiLineBoxIsALineEnd) {
  auto& box = dialog_->Get<TextBox>("Text2");
  box.SetFocus();
  user().PressKey(key::kEnter);
  EXPECT_THAT(TakeLog(), IsEmpty());
  EXPECT_EQ(box.Text(), u"\r\n");
}

TEST_F(DialogContract, EnterInAControlThatTakesItIsItsKey) {
  const auto results = toolkit().CreateForm(demo::kResults);
  results->Get<CommandButton>("Command1").on_click = Log("ok");
  auto& view = results->Get<ListView>("View1");
  view.on_key_down = [this](KeyDown& down) { log_.push_back(std::to_string(down.code)); };
  results->Show();
  view.SetFocus();
  user().PressKey(key::kEnter);
  EXPECT_THAT(TakeLog(), ElementsAre("13"));
}

TEST_F(DialogContract, AWindowIsNotMadeSmallerThanItsMinimum) {
  const auto results = toolkit().CreateForm(demo::kResults);
  results->Show();
  user().Resize(*results, {20, 20});
  EXPECT_EQ(results->ScaleWidth(), 150);
  EXPECT_EQ(results->ScaleHeight(), 100);
  results->SetOuterHeight(20);
  EXPECT_EQ(results->ScaleHeight(), 100);
}

TEST_F(DialogContract, ADisabledDefaultButtonIsNotClicked) {
  Button("Command1").SetEnabled(false);
  Box().SetFocus();
  user().PressKey(key::kEnter);
  EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(DialogContract, FocusMovesBetweenForms) {
  form().Show();
  form().on_deactivate = Log("main deactivated");
  dialog_->on_activate = Log("dialog activated");
  Get<TextBox>("Text1").on_lost_focus = Log("main lost");
  Button("Command2").on_got_focus = Log("dialog got");
  Button("Command2").SetFocus();
  const auto log = TakeLog();
  EXPECT_THAT(log, ::testing::IsSupersetOf(
                       {"main deactivated", "dialog activated", "main lost", "dialog got"}));
  EXPECT_TRUE(Button("Command2").HasFocus());
  EXPECT_FALSE(Get<TextBox>("Text1").HasFocus());
}

TEST_F(DialogContract, MessagesReturnTheAnswer) {
  user().AnswerNextMessage(Answer::kNo);
  EXPECT_EQ(toolkit().ShowMessage({.text = u"Ponechať pôvodné položky?",
                                   .buttons = MessageButtons::kYesNo,
                                   .icon = MessageIcon::kExclamation}),
            Answer::kNo);
  user().AnswerNextMessage(Answer::kCancel);
  EXPECT_EQ(toolkit().ShowMessage({.text = u"?", .buttons = MessageButtons::kYesNoCancel}),
            Answer::kCancel);
}

TEST_F(DialogContract, AMessageMovesNoFocusBetweenControls) {
  Box().SetFocus();
  Box().on_lost_focus = Log("lost");
  Box().on_got_focus = Log("got");
  dialog_->on_activate = Log("activate");
  user().AnswerNextMessage(Answer::kOk);
  toolkit().ShowMessage({.text = u"abc"});
  EXPECT_THAT(TakeLog(), IsEmpty());
  EXPECT_TRUE(Box().HasFocus());
}

TEST_F(DialogContract, TheInputBoxReturnsTheText) {
  user().AnswerNextText(u"Moja databáza");
  EXPECT_EQ(toolkit().AskText(u"Zadajte názov databázy", u""), u"Moja databáza");
}

TEST_F(DialogContract, ACancelledInputBoxReturnsAnEmptyText) {
  user().AnswerNextText(u"");
  EXPECT_EQ(toolkit().AskText(u"Zadajte nový názov databázy.", u"Stará"), u"");
}

TEST_F(DialogContract, F1AsksForTheHelpOfTheFormAndReachesNoControl) {
  toolkit().on_help = [this](std::string_view topic) {
    log_.push_back("help " + std::string(topic));
  };
  Box().SetFocus();
  user().PressKey(key::kF1);
  EXPECT_THAT(TakeLog(), ElementsAre("help dialog"));
}

TEST_F(DialogContract, F1WithAnotherKeyHeldIsAKeyOfTheControl) {
  toolkit().on_help = Log("help");
  Box().SetFocus();
  user().PressKey(key::kF1, {.control = true});
  EXPECT_THAT(TakeLog(), ElementsAre("key"));
}

TEST_F(DialogContract, AFormWithoutAHelpTopicTellsAnEmptyOne) {
  toolkit().on_help = [this](std::string_view topic) {
    log_.push_back("help " + std::string(topic));
  };
  form().Show();
  Get<TextBox>("Text1").SetFocus();
  user().PressKey(key::kF1);
  EXPECT_THAT(TakeLog(), ElementsAre("help "));
}

TEST_F(DialogContract, ADocumentThatIsNotThereIsNotOpened) {
  const auto missing = std::filesystem::temp_directory_path() / "declarium-no-such-page.html";
  EXPECT_FALSE(toolkit().OpenDocument(missing.u16string()));
}

TEST_F(DialogContract, TheStyleOfAMessageIsTheHostsNumber) {
  EXPECT_EQ((Message{.buttons = MessageButtons::kAbortRetryIgnore, .icon = MessageIcon::kCritical}
                 .Style()),
            18);
  EXPECT_EQ((Message{.buttons = MessageButtons::kYesNo,
                     .icon = MessageIcon::kExclamation,
                     .default_button = DefaultButton::kSecond}
                 .Style()),
            4 + 48 + 256);
}

}  // namespace
}  // namespace declarium
