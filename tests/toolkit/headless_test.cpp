#include <stdexcept>

#include "gmock/gmock.h"
#include "gtest/gtest.h"

#include "toolkit/demo_form.h"
#include "toolkit/headless/form.h"
#include "toolkit/headless/toolkit.h"
#include "toolkit/headless/user.h"
#include "toolkit/timer.h"

namespace declarium::headless {
namespace {

using ::testing::ElementsAre;

class HeadlessTest : public ::testing::Test {
 protected:
  HeadlessToolkit toolkit_;
  HeadlessUser user_{toolkit_};
  std::unique_ptr<Form> form_ = toolkit_.CreateForm(demo::kForm);
};

TEST_F(HeadlessTest, AnUnexpectedDialogIsAnError) {
  EXPECT_THROW(toolkit_.ShowMessage({.text = u"?"}), std::logic_error);
  toolkit_.Script().AnswerText(u"abc");
  EXPECT_THROW(toolkit_.ShowMessage({.text = u"?"}), std::logic_error);
}

TEST_F(HeadlessTest, TheScriptRecordsWhatWasAskedInOrder) {
  DialogScript& script = toolkit_.Script();
  script.AnswerFile(u"C:\\a.api");
  script.AnswerFile(std::nullopt);
  script.AnswerColor(0x112233);
  script.AnswerMessage(Answer::kYes);
  const FileDialog dialog{.filter = u"Api Database|*.api"};
  EXPECT_EQ(toolkit_.ChooseFileToOpen(dialog), u"C:\\a.api");
  EXPECT_EQ(toolkit_.ChooseFileToSave(dialog), std::nullopt);
  EXPECT_EQ(toolkit_.AskColor(5), 0x112233u);
  EXPECT_EQ(toolkit_.ShowMessage({.text = u"?"}), Answer::kYes);
  EXPECT_THAT(script.AskedSoFar(),
              ElementsAre(Asked(OpenQuestion{dialog}), Asked(SaveQuestion{dialog}),
                          Asked(ColorQuestion{5}), Asked(Message{.text = u"?"})));
  EXPECT_THAT(script.MessageTexts(), ElementsAre(u"?"));
  EXPECT_EQ(script.Remaining(), 0u);
}

TEST_F(HeadlessTest, AnActionRunsWhileItsDialogIsOpen) {
  form_->Show();
  bool ran = false;
  toolkit_.Script().AnswerMessage(Answer::kOk, [&] {
    ran = true;
    EXPECT_TRUE(toolkit_.IsModalOpen());
    EXPECT_THROW(user_.Click(form_->Get<CommandButton>("Command1")), std::logic_error);
  });
  toolkit_.ShowMessage({.text = u"?"});
  EXPECT_TRUE(ran);
  EXPECT_NO_THROW(user_.Click(form_->Get<CommandButton>("Command1")));
}

TEST_F(HeadlessTest, AModalFormLeftOpenIsAnError) {
  const auto dialog = toolkit_.CreateForm(demo::kDialog);
  toolkit_.Script().InForm("frmDialog", [](Form&) {});
  EXPECT_THROW(dialog->Show(ShowMode::kModal), std::logic_error);
}

TEST_F(HeadlessTest, TheUserCannotUseWhatIsHiddenOrDisabled) {
  auto& button = form_->Get<CommandButton>("Command1");
  EXPECT_THROW(user_.Click(button), std::logic_error);
  form_->Show();
  button.SetEnabled(false);
  EXPECT_THROW(user_.Click(button), std::logic_error);
  button.SetEnabled(true);
  button.SetVisible(false);
  EXPECT_THROW(user_.Click(button), std::logic_error);
  EXPECT_THROW(user_.ChooseMenu(*form_, "mnuSave"), std::logic_error);
  EXPECT_THROW(user_.ClickToolbar(form_->Get<Toolbar>("Toolbar1"), "save"), std::logic_error);
}

TEST_F(HeadlessTest, TimePassesOnlyWhenTold) {
  form_->Load();
  auto& timer = form_->Get<Timer>("Timer1");
  int fired = 0;
  timer.on_timer = [&] { ++fired; };
  timer.SetEnabled(true);
  toolkit_.ProcessPendingEvents();
  EXPECT_EQ(fired, 0);
  const std::uint32_t begin = toolkit_.TickCount();
  toolkit_.Advance(59);
  EXPECT_EQ(fired, 2);
  toolkit_.Advance(1);
  EXPECT_EQ(fired, 3);
  EXPECT_EQ(toolkit_.TickCount() - begin, 60u);
}

TEST_F(HeadlessTest, DraggedEntriesReachTheirTarget) {
  form_->Show();
  auto& from = form_->Get<ListView>("View2");
  auto& to = form_->Get<ListView>("View1");
  from.Append({u"RECT", 3});
  from.SetDragTarget(&to);
  int dropped = 0;
  to.on_drop = [&](const Drop& drop) {
    EXPECT_EQ(drop.source, &from);
    dropped = drop.position;
  };
  user_.DragEntry(from, 1, to);
  EXPECT_EQ(dropped, 1);
}

TEST_F(HeadlessTest, RunFailsWhenNothingCanHappen) {
  EXPECT_THROW(toolkit_.Run(), std::logic_error);
}

}  // namespace
}  // namespace declarium::headless
