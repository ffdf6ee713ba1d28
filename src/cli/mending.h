// Writes the edits of findings into module files.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/session.h"

#include "check/finding.h"

namespace declarium::cli {

// Of `edits`, sorted, those that do not touch one before them; equal ones once.
[[nodiscard]] std::vector<check::Edit> WithoutOverlaps(std::vector<check::Edit> edits);

// Makes the edits in the file, whose text was read as `text`. What they leave alone stays byte for
// byte. Throws CommandFailed, with nothing changed, when the file cannot be read or written, or
// does not say `text` any more.
void MendFile(const Session& session, const std::string& file, std::u16string_view text,
              const std::vector<check::Edit>& edits);

}  // namespace declarium::cli
