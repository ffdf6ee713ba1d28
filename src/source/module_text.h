// Putting the basket's text into a module file.
#pragma once

#include <expected>
#include <string>
#include <string_view>

#include "text/encoding.h"

namespace declarium {

// Whether the last three characters of the file name, in any case, are those of a source module of
// the host language: frm, ctl, dob, pag, bas or cls.
[[nodiscard]] bool IsSourceModuleName(std::u16string_view file_name);

enum class LineEnd { kCrAndLf, kLf, kCr };

// "crlf", "lf" or "cr".
[[nodiscard]] std::string_view LineEndName(LineEnd line_end);

struct ChangedModule {
  std::string bytes;
  std::u16string inserted;  // the text with the module's line ends
  Encoding encoding;        // of the module
  LineEnd line_end;         // of the line that the text stands behind; CR LF without one
};

// The bytes of a source module with `text`, whose line ends are CR LF, behind its header: behind
// the last of its first run of "Attribute" lines; without one behind the designer's block of a form
// or a class, otherwise behind the first line. The attributes of single members, which stand among
// the code ("Attribute Name.VB_..."), are none of the header. `text` is followed by a line end of
// its own; a content without a line end gets a line end and `text` behind it. Every byte that was
// there stays, and what comes has the module's line ends and its encoding, which is `otherwise`
// where the bytes do not tell. Fails with the first character of `text` that the encoding does not
// have.
[[nodiscard]] std::expected<ChangedModule, char16_t> InsertIntoModule(
    std::string_view bytes, std::u16string_view text, const Encoding& otherwise = kLibraryEncoding);

}  // namespace declarium
