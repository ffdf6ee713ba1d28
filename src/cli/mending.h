// Writes changes into module files so that nothing else in them changes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/session.h"

#include "text/edit.h"
#include "text/encoding.h"

namespace declarium::cli {

// Of `edits`, sorted, those that do not touch one before them; equal ones once.
[[nodiscard]] std::vector<Edit> WithoutOverlaps(std::vector<Edit> edits);

// The bytes of the file, whose text was read as `text`, with `now` in its place, in the file's own
// encoding, which is `otherwise` where the bytes do not tell, and with its mark. Throws
// CommandFailed when the file cannot be read, does not say `text` any more, or cannot keep `now`.
[[nodiscard]] std::string BytesWith(const std::string& file, std::u16string_view text,
                                    std::u16string_view now,
                                    const Encoding& otherwise = kLibraryEncoding);

// Makes the edits in the file, whose text was read as `text`. What they leave alone stays byte for
// byte. Throws CommandFailed, with nothing changed, when the file cannot be read or written, or
// does not say `text` any more.
void MendFile(const Session& session, const std::string& file, std::u16string_view text,
              const std::vector<Edit>& edits, const Encoding& otherwise = kLibraryEncoding);

}  // namespace declarium::cli
