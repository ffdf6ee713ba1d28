// The metadata as C, so that a compiler lays out its records and both sources pass through the same
// translation and the same checks.
#pragma once

#include <string>
#include <string_view>

#include "metadata.h"
#include "overrides.h"

namespace declarium::win32_library {

// Declarations of the metadata stand, to the compiler, in a file of this folder named for the area:
// "metadata/UI.Shell".
inline constexpr std::string_view kMetadataFolder = "metadata/";

// Records whose size the metadata does not tell for certain stand in files of this one.
inline constexpr std::string_view kUncertainFolder = "metadata/uncertain/";

// A C source that compiles by itself: the functions that VB can call, the records that these take
// and that the overrides decide for the metadata, and all constants but those with the name of
// anything else. A record stands behind those that it holds.
[[nodiscard]] std::string MetadataSource(const Metadata& metadata, const Overrides& overrides);

// The same of all records, and of nothing else.
[[nodiscard]] std::string RecordsSource(const Metadata& metadata);

}  // namespace declarium::win32_library
