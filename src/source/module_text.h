// Putting the basket's text into a module file.
#pragma once

#include <string>
#include <string_view>

namespace declarium {

// Whether the last three characters of the file name, in any case, are those of a source module of
// the host language: frm, ctl, dob, pag, bas or cls.
[[nodiscard]] bool IsSourceModuleName(std::u16string_view file_name);

// The content of a source module with `text` put behind its first "Attribute" line that is not the
// file's first line, or behind the first line when there is none; `text` is followed by a line end
// of its own. A content without a line end gets a line end and `text` behind it.
[[nodiscard]] std::u16string InsertIntoModule(std::u16string_view content,
                                              std::u16string_view text);

}  // namespace declarium
