#include "toolkit/backend.h"
#include "toolkit/headless/form.h"
#include "toolkit/headless/picture_box.h"
#include "toolkit/headless/toolkit.h"
#include "toolkit/headless/user.h"

namespace declarium {

namespace {

using namespace headless;

class HeadlessBackend : public Backend {
 public:
  Toolkit& TheToolkit() override { return toolkit_; }

  void Click(CommandButton& button) override { user_.Click(button); }
  void Click(CheckBox& box) override { user_.Click(box); }
  void ChooseRow(RowList& list, int row) override { user_.ChooseRow(list, row); }
  void ClickEntry(ListView& list, int position, MouseButton button) override {
    user_.ClickEntry(list, position, button);
  }
  void ClickEmptySpace(ListView& list) override { user_.ClickEmptySpace(list); }
  void DoubleClickEntry(ListView& list, int position) override {
    user_.DoubleClickEntry(list, position);
  }
  void ClickCheckBox(ListView& list, int position) override { user_.ClickCheckBox(list, position); }
  void DoubleClickEmptySpace(ListView& list) override { user_.DoubleClickEmptySpace(list); }
  void ClickToolbar(Toolbar& toolbar, std::string_view key) override {
    user_.ClickToolbar(toolbar, key);
  }
  void ChooseMenu(Form& form, std::string_view name) override { user_.ChooseMenu(form, name); }
  void PressKey(int code, Modifiers modifiers) override { user_.PressKey(code, modifiers); }
  void Type(std::u16string_view text) override { user_.Type(text); }
  void MouseDown(Control& control, const MouseEvent& event) override {
    user_.MouseDown(control, event);
  }
  void MouseMove(Control& control, const MouseEvent& event) override {
    user_.MouseMove(control, event);
  }
  void MouseUp(Control& control, const MouseEvent& event) override {
    user_.MouseUp(control, event);
  }
  void DoubleClick(Control& control) override { user_.DoubleClick(control); }
  void Close(Form& form) override { user_.Close(form); }
  void Resize(Form& form, Size outer) override { user_.Resize(form, outer); }

  void AnswerNextMessage(Answer answer) override { toolkit_.Script().AnswerMessage(answer); }
  void AnswerNextText(std::u16string_view text) override { toolkit_.Script().AnswerText(text); }
  void InNextModalForm(std::string_view name, std::function<void(Form&)> action) override {
    toolkit_.Script().InForm(name, std::move(action));
  }
  void ChooseInNextPopup(Form& form, std::string_view name) override {
    dynamic_cast<HeadlessForm&>(form).ChooseInNextPopup(name);
  }
  bool WaitUntil(const std::function<bool()>& done) override {
    for (int step = 0; step < 5000 && !done(); ++step) toolkit_.Advance(1);
    return done();
  }
  Color PixelOf(PictureBox& box, Point at) override {
    return dynamic_cast<HeadlessPictureBox&>(box).Surface().PixelAt(at);
  }

 private:
  HeadlessToolkit toolkit_;
  HeadlessUser user_{toolkit_};
};

}  // namespace

std::unique_ptr<Backend> MakeBackend() {
  return std::make_unique<HeadlessBackend>();
}

}  // namespace declarium
