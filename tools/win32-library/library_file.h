// Writes the library: as source text, through the importer into the library file, and the files
// beside it.
#pragma once

#include <expected>
#include <filesystem>
#include <string>
#include <vector>

#include "library_split.h"
#include "rows.h"

namespace declarium::win32_library {

// The library as VB source with CR LF line ends: constants, procedures, records.
[[nodiscard]] std::string SourceOf(const Library& library);

// Imports the source into a new library titled `title` and saves it. Fails, with the reason, when
// the importer skips a line or gives back another name or text than a row has.
[[nodiscard]] std::expected<void, std::string> WriteLibrary(const Library& library,
                                                            const std::string& title,
                                                            const std::filesystem::path& path);

// One line for each row: kind, name and header with tabs between.
[[nodiscard]] std::string ProvenanceOf(const Library& library);

// How many rows of each kind there are, in all and in each library, how much of the metadata that
// is, and how many candidates were left out why.
[[nodiscard]] std::string ReportOf(const Library& library, const std::vector<LibraryPart>& parts,
                                   const Metadata& metadata);

}  // namespace declarium::win32_library
