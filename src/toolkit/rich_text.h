// The coloured display: text that is appended piece by piece in a colour. The user reads, selects
// and copies, but does not edit. On a background other than white, which a user's colour scheme may
// have, a colour that cannot be read there is shown as that scheme's colour for text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "toolkit/colour.h"
#include "toolkit/control.h"

namespace declarium {

struct ColouredRun {
  Colour colour = kBlack;
  std::u16string text = {};
  bool operator==(const ColouredRun&) const = default;
};

class RichText : public Control {
 public:
  // Empties the text.
  virtual void Clear() = 0;
  // The colour of what is inserted next.
  virtual void SetInsertionColour(Colour colour) = 0;
  // Inserts behind what was inserted last. CR LF begins a new line.
  virtual void Insert(std::u16string_view text) = 0;
  // Puts the caret before the first character and shows the first line.
  virtual void SetCaretToStart() = 0;

  // The text, with CR LF between lines.
  [[nodiscard]] virtual std::u16string Text() const = 0;
  // The text in the longest pieces of one colour, as they are shown, in order.
  [[nodiscard]] virtual std::vector<ColouredRun> Runs() const = 0;

 protected:
  using Control::Control;
};

}  // namespace declarium
