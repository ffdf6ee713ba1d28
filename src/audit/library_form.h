// A declaration of a library as it would stand in the place of one of a project.
#pragma once

#include <string>
#include <string_view>

#include "audit/line_edits.h"
#include "audit/table.h"
#include "library/library.h"
#include "vb/module.h"

namespace declarium::audit {

class LibraryForm {
 public:
  // With the scope word of `replaced`, or none where it has none.
  LibraryForm(const vb::Declaration& replaced, const ItemView& item);
  LibraryForm(const LibraryForm&) = delete;
  LibraryForm& operator=(const LibraryForm&) = delete;

  // Source with CR LF between its lines, without a line end or comment behind the last.
  [[nodiscard]] std::u16string_view Text() const;
  // The same with what the library has behind it; what Parsed() refers into.
  [[nodiscard]] std::u16string_view Source() const { return text_; }
  // What the text declares; null when it cannot be read, or is more than one declaration.
  [[nodiscard]] const vb::Declaration* Declared() const;
  [[nodiscard]] const vb::Module& Parsed() const { return parsed_; }

 private:
  std::u16string text_;
  vb::Module parsed_;
};

// The lines of `declaration`, which has them for its own, with `form` in its place: indented like
// its first line, and with the comment behind its last one.
[[nodiscard]] std::u16string LinesWith(std::u16string_view form, const vb::Declaration& declaration,
                                       std::u16string_view module_text, const ModuleLines& lines);

}  // namespace declarium::audit
