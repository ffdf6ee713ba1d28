// Library files for the commands: paths from arguments, loading and saving that end the command on
// failure.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "cli/replacement.h"
#include "cli/session.h"

#include "library/library.h"
#include "library/library_excerpt.h"
#include "text/encoding.h"

namespace declarium::cli {

// The path in a UTF-8 argument.
[[nodiscard]] std::filesystem::path PathOf(const std::string& argument);

// Throws CommandFailed for a file that cannot be read or is no library.
[[nodiscard]] Library LoadLibrary(const std::string& file);

// The same for a command that needs only names or a few items.
[[nodiscard]] LibraryExcerpt OpenExcerpt(const std::string& file);

// Writes a library that LoadLibrary read, or one without a stamp whose file did not exist, to its
// path. Throws CommandFailed, with the file unchanged, when it cannot be written and, unless
// forced, when somebody else has changed or made it since.
void SaveLibrary(const Session& session, const Library& library, Force force);

// The encoding of a name that the user gave; that of libraries for an empty name. Throws
// CommandFailed for an unknown one.
[[nodiscard]] Encoding EncodingOf(const std::string& name);

// Makes `bytes` the content of the file. Throws CommandFailed.
void WriteBytes(const Session& session, std::string_view bytes, const std::string& file);

// Writes `text` in the encoding of libraries and source files. Throws CommandFailed.
void WriteSource(const Session& session, std::u16string_view text, const std::string& file);

// A title that a library can keep. Throws CommandFailed, which names the character, for any other.
[[nodiscard]] std::u16string CheckedTitle(const std::string& argument);

}  // namespace declarium::cli
