// Changes of a module by whole lines, as a host and a file can make them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text/edit.h"

namespace declarium::audit {

// The physical lines of a text; numbers count from 1.
class ModuleLines {
 public:
  // `text` must outlive the lines.
  explicit ModuleLines(std::u16string_view text);

  [[nodiscard]] std::uint32_t Count() const { return static_cast<std::uint32_t>(starts_.size()); }
  // Without its line end; empty for no line.
  [[nodiscard]] std::u16string_view At(std::uint32_t line) const;
  // The line end; empty for a last line without one.
  [[nodiscard]] std::u16string_view EndOf(std::uint32_t line) const;
  [[nodiscard]] bool IsBlank(std::uint32_t line) const;
  // Whether nothing but a comment stands there.
  [[nodiscard]] bool IsComment(std::uint32_t line) const;
  // Where the line begins in the text; the text's end behind the last.
  [[nodiscard]] std::size_t Start(std::uint32_t line) const;

 private:
  std::u16string_view text_;
  std::vector<std::size_t> starts_;
};

struct LineEdit {
  std::size_t module = 0;
  std::uint32_t line = 1;   // the first, 1-based
  std::uint32_t count = 1;  // of the lines that go
  // What comes for them, lines with CR LF between them and none behind the last.
  std::optional<std::u16string> text = {};

  friend bool operator==(const LineEdit&, const LineEdit&) = default;
};

// A declaration that goes, by its lines.
struct RemovedLines {
  std::uint32_t first;
  std::uint32_t last;
};

// What removes these declarations, each alone on its lines and in order, from a module whose
// declarations outside procedures stand on `declared`. Comments directly above go with what they
// are certainly about: they stand behind another declaration or an empty line below one, and
// everything that follows them up to the next empty line, comment or code goes. Of two empty lines
// that meet one goes.
[[nodiscard]] std::vector<LineEdit> EditsToRemove(std::size_t module, const ModuleLines& lines,
                                                  const std::vector<RemovedLines>& removed,
                                                  const std::vector<RemovedLines>& declared);

// The edits, in order and of one module, by offsets of its text: whole lines. What comes ends as
// the last of the lines that go.
[[nodiscard]] std::vector<Edit> TextEdits(const ModuleLines& lines,
                                          const std::vector<LineEdit>& edits);

}  // namespace declarium::audit
