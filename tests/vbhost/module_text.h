// The text of one code module of the stand-in IDE, with the line rules of the real one. Lines are
// 1-based.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace declarium::vbhost {

class ModuleText {
 public:
  // Replaces the whole text; an empty text has no line.
  void Set(std::u16string_view text);

  [[nodiscard]] int CountOfLines() const noexcept { return static_cast<int>(lines_.size()); }

  // The number of the last line of the declarations section. Without a procedure that is the last
  // line of the module; otherwise the last line with code before the first procedure, so blank
  // lines and comments directly above a procedure belong to it.
  [[nodiscard]] int CountOfDeclarationLines() const;

  // `count` lines from `first`, joined by CR LF. False when they do not all exist.
  [[nodiscard]] bool Lines(int first, int count, std::u16string& text) const;

  // Inserts the lines of `text` before `line`; a line behind the end means the end. False when
  // `line` is less than 1.
  [[nodiscard]] bool InsertLines(int line, std::u16string_view text);

  [[nodiscard]] bool DeleteLines(int first, int count);

  // The whole text.
  [[nodiscard]] std::u16string text() const;

 private:
  [[nodiscard]] bool HasLines(int first, int count) const noexcept;

  std::vector<std::u16string> lines_;
};

}  // namespace declarium::vbhost
