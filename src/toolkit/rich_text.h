// The colored display: text that is appended piece by piece in a color. The user reads, selects
// and copies, but does not edit. On a background other than white, which a user's color scheme may
// have, a color that cannot be read there is shown as that scheme's color for text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "toolkit/color.h"
#include "toolkit/control.h"

namespace declarium {

struct ColoredRun {
  Color color = kBlack;
  std::u16string text = {};
  bool operator==(const ColoredRun&) const = default;
};

class RichText : public Control {
 public:
  // Empties the text.
  virtual void Clear() = 0;
  // The color of what is inserted next.
  virtual void SetInsertionColor(Color color) = 0;
  // Inserts behind what was inserted last. CR LF begins a new line.
  virtual void Insert(std::u16string_view text) = 0;
  // Puts the caret before the first character and shows the first line.
  virtual void SetCaretToStart() = 0;

  // The text, with CR LF between lines.
  [[nodiscard]] virtual std::u16string Text() const = 0;
  // The text in the longest pieces of one color, as they are shown, in order.
  [[nodiscard]] virtual std::vector<ColoredRun> Runs() const = 0;

 protected:
  using Control::Control;
};

}  // namespace declarium
