#include <algorithm>
#include <set>
#include <utility>

#include "coverage.h"
#include "library_file.h"
#include "metadata_source.h"

namespace declarium::win32_library {
namespace {

template <typename Row>
std::string Counts(const std::string& kind, const std::vector<Row>& rows, const LeftOut& left_out) {
  const auto single = std::ranges::count_if(
      rows, [](const Row& row) { return row.header.starts_with(kMetadataFolder); });
  std::vector<std::pair<int, std::string>> reasons;
  int total = 0;
  for (const auto& [reason, count] : left_out) {
    reasons.emplace_back(-count, reason);
    total += count;
  }
  std::ranges::sort(reasons);
  std::string text = "\n## " + kind + "\n\n" + std::to_string(rows.size()) + " in the libraries, " +
                     std::to_string(single) + " of them from the metadata alone; " +
                     std::to_string(total) + " left out:\n\n| left out | because |\n|---:|---|\n";
  for (const auto& [count, reason] : reasons)
    text += "| " + std::to_string(-count) + " | " + reason + " |\n";
  return text;
}

// A row may be in several libraries.
std::string LibraryTable(const std::vector<LibraryPart>& parts) {
  std::string text = "\n| library | Declare | Const | Type |\n|---|---:|---:|---:|\n";
  for (const LibraryPart& part : parts)
    text += "| `" + part.file + ".api` | " + std::to_string(part.library.declares.size()) + " | " +
            std::to_string(part.library.constants.size()) + " | " +
            std::to_string(part.library.types.size()) + " |\n";
  return text;
}

std::string ConstantCoverage(const Library& library, const Metadata& metadata) {
  std::set<std::string> names;
  for (const ConstRow& row : library.constants) names.insert(row.name);
  const auto [listed, there] =
      CoverageOfConstants(metadata, [&](const std::string& name) { return names.contains(name); });
  return "\nOf the " + std::to_string(listed) +
         " constants that the metadata has outside COM and WinRT " + std::to_string(there) +
         " are there.\n";
}

}  // namespace

std::string ReportOf(const Library& library, const std::vector<LibraryPart>& parts,
                     const Metadata& metadata) {
  return "# The Win32 libraries: what is in them and what is not\n\n"
         "Written by `tools/win32-library/generate`; the rules are in `docs/win32-library.md`.\n" +
         LibraryTable(parts) + ConstantCoverage(library, metadata) +
         Counts("Declare", library.declares, library.declares_left_out) +
         Counts("Const", library.constants, library.constants_left_out) +
         Counts("Type", library.types, library.types_left_out);
}

}  // namespace declarium::win32_library
