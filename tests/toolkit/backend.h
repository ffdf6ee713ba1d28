// What the contract suite needs of a backend: its toolkit, and a user of the forms. Each
// backend's test program links its own MakeBackend.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "toolkit/captioned.h"
#include "toolkit/list_view.h"
#include "toolkit/picture_box.h"
#include "toolkit/row_list.h"
#include "toolkit/text_box.h"
#include "toolkit/toolbar.h"
#include "toolkit/toolkit.h"

namespace declarium {

class Backend {
 public:
  virtual ~Backend() = default;
  virtual Toolkit& TheToolkit() = 0;

  // What a person does. Every function returns when its events have been handled.
  virtual void Click(CommandButton& button) = 0;
  virtual void Click(CheckBox& box) = 0;
  virtual void ChooseRow(RowList& list, int row) = 0;
  virtual void ClickEntry(ListView& list, int position, MouseButton button) = 0;
  virtual void ClickCheckBox(ListView& list, int position) = 0;
  virtual void ClickEmptySpace(ListView& list) = 0;
  virtual void DoubleClickEntry(ListView& list, int position) = 0;
  virtual void DoubleClickEmptySpace(ListView& list) = 0;
  virtual void ClickToolbar(Toolbar& toolbar, std::string_view key) = 0;
  virtual void ChooseMenu(Form& form, std::string_view name) = 0;
  virtual void PressKey(int code, Modifiers modifiers) = 0;
  void PressKey(int code) { PressKey(code, {}); }
  virtual void Type(std::u16string_view text) = 0;
  virtual void MouseDown(Control& control, const MouseEvent& event) = 0;
  virtual void MouseMove(Control& control, const MouseEvent& event) = 0;
  virtual void MouseUp(Control& control, const MouseEvent& event) = 0;
  virtual void DoubleClick(Control& control) = 0;
  virtual void Close(Form& form) = 0;
  virtual void Resize(Form& form, Size outer) = 0;

  // The next dialog is answered so.
  virtual void AnswerNextMessage(Answer answer) = 0;
  virtual void AnswerNextText(std::u16string_view text) = 0;
  // `action` runs while the modal form of that name is shown next.
  virtual void InNextModalForm(std::string_view name, std::function<void(Form&)> action) = 0;
  virtual void ChooseInNextPopup(Form& form, std::string_view name) = 0;
  // Handles events until `done` holds, at most five seconds of the backend's time. Whether it
  // holds.
  virtual bool WaitUntil(const std::function<bool()>& done) = 0;
  // The color of a picture box's pixel, as last painted.
  virtual Color PixelOf(PictureBox& box, Point at) = 0;
};

std::unique_ptr<Backend> MakeBackend();

}  // namespace declarium
