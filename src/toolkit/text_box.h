// Plain text that the user edits, of one line or several. Lines end with CR LF; positions count
// UTF-16 units from 0.
#pragma once

#include <string>
#include <string_view>

#include "toolkit/control.h"

namespace declarium {

class TextBox : public Control {
 public:
  [[nodiscard]] virtual std::u16string Text() const = 0;
  // Replaces the text, puts the caret at its start and raises on_change; nothing happens when the
  // text is the same already.
  void SetText(std::u16string_view text);

  // Where the selection begins, and its length (0: only the caret stands there).
  [[nodiscard]] virtual int SelectionStart() const = 0;
  [[nodiscard]] virtual int SelectionLength() const = 0;
  // Positions behind the end mean the end.
  virtual void Select(int start, int length) = 0;
  void SetCaret(int position) { Select(position, 0); }
  void SetCaretToEnd() { SetCaret(static_cast<int>(Text().size())); }

  // Whether a shortcut edits the text of a box that has the focus, so that it is no command then.
  [[nodiscard]] static bool Edits(int key, const Modifiers& modifiers);
  // What Ctrl+Delete does: deletes the selection or, without one, up to where the next word begins.
  void DeleteWord();

  Event<> on_change;  // the text changed, by the user or from code

 protected:
  using Control::Control;

 private:
  // As if the user typed `text` over the selection.
  virtual void TypeOver(std::u16string_view text) = 0;
  // Shows the text without raising an event.
  virtual void ShowText(std::u16string_view text) = 0;
};

}  // namespace declarium
