// win32_library SOURCE_FOLDER IMPORT_FOLDER IMPORT_FOLDER_64 OUT_FOLDER: makes the libraries of
// areas.txt, the facts beside them, Win32.provenance.tsv and Win32.report.md in OUT_FOLDER from the
// lists headers.txt, libraries.txt, overrides.txt and prefixes.txt, the metadata, additions.c and
// hand_kept.bas in SOURCE_FOLDER, and the import libraries in IMPORT_FOLDER; the 64-bit forms from
// hand_kept64.bas, successors64.txt and the import libraries in IMPORT_FOLDER_64.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "facts_text.h"
#include "hand_kept.h"
#include "header_reader.h"
#include "library_builder.h"
#include "library_file.h"
#include "library_split.h"
#include "metadata.h"
#include "metadata_source.h"
#include "overrides.h"
#include "record_aliases.h"
#include "stale_decisions.h"

namespace {

using namespace declarium::win32_library;

int Fail(const std::string& reason) {
  std::cerr << "win32_library: " << reason << '\n';
  return 1;
}

std::string ListOf(const std::vector<std::string>& lines) {
  std::string list;
  for (const std::string& line : lines) list += "\n  " + line;
  return list;
}

// Reads those of the listed import libraries that the folder has to have, or may have: some are for
// 32 bits only.
template <class Libraries>
std::expected<Libraries, std::string> ReadLibraries(const std::string& list,
                                                    const std::string& folder, bool must_exist) {
  std::ifstream file(list);
  if (!file) return std::unexpected(list + ": cannot be read");
  Libraries libraries;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with('#')) continue;
    std::istringstream names(line);
    for (std::string name; names >> name;) {
      const std::string path = folder + "/lib" + name + ".a";
      if (!must_exist && !std::filesystem::exists(path)) continue;
      if (const auto added = libraries.Add(path); !added) return std::unexpected(added.error());
    }
  }
  return libraries;
}

std::expected<std::vector<Headers>, std::string> ReadUnits(const std::vector<HeaderUnit>& units,
                                                           Platform platform) {
  std::vector<Headers> result;
  for (const HeaderUnit& unit : units) {
    auto headers = ReadHeaders(unit, platform);
    if (!headers) return std::unexpected(headers.error());
    NameRecords(*headers);
    result.push_back(std::move(*headers));
  }
  return result;
}

bool WriteText(const std::string& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  file << text;
  return file.good();
}

// What the additions, the headers' units and the metadata declare: what an earlier source has is
// its own.
std::expected<std::vector<Headers>, std::string> UnitsOf(const std::string& source,
                                                         const Metadata& metadata,
                                                         const Overrides& overrides,
                                                         Platform platform) {
  auto additions = ReadAdditions(source + "/additions.c");
  if (!additions) return std::unexpected(additions.error());
  auto units = ReadHeaderUnits(source + "/headers.txt");
  if (!units) return std::unexpected(units.error());
  units->insert(units->begin(), std::move(*additions));
  units->push_back({"metadata", MetadataSource(metadata, overrides)});
  return ReadUnits(*units, platform);
}

struct Folders {
  std::string source;
  std::string imports;
  std::string imports64;
  std::string out;
};

int Generate(const Folders& folders) {
  const auto& [source, imports, imports64, out] = folders;
  const std::string list = source + "/libraries.txt";
  const auto libraries = ReadLibraries<ImportLibraries>(list, imports, true);
  if (!libraries) return Fail(libraries.error());
  const auto exports64 = ReadLibraries<Exports64>(list, imports64, false);
  if (!exports64) return Fail(exports64.error());
  const auto metadata = ReadMetadata(source + "/metadata");
  if (!metadata) return Fail(metadata.error());
  const auto metadata64 = ReadMetadata(source + "/metadata", Platform::kX64);
  if (!metadata64) return Fail(metadata64.error());
  const auto overrides = ReadOverrides(source + "/overrides.txt");
  if (!overrides) return Fail(overrides.error());
  const auto hand_kept = ReadHandKept(source + "/hand_kept.bas");
  if (!hand_kept) return Fail(hand_kept.error());
  const auto hand_kept64 = ReadHandKept(source + "/hand_kept64.bas");
  if (!hand_kept64) return Fail(hand_kept64.error());
  const auto successors = ReadSuccessors(source + "/successors64.txt");
  if (!successors) return Fail(successors.error());
  const auto prefixes = ReadPrefixes(source + "/prefixes.txt");
  if (!prefixes) return Fail(prefixes.error());
  const auto areas = ReadAreas(source + "/areas.txt");
  if (!areas) return Fail(areas.error());
  const auto units = UnitsOf(source, *metadata, *overrides, Platform::kX86);
  if (!units) return Fail(units.error());
  if (const auto stale = StaleDecisions(*units, *libraries, *overrides); !stale.empty())
    return Fail("decided without need in overrides.txt:" + ListOf(stale));
  const auto units64 = UnitsOf(source, *metadata64, *overrides, Platform::kX64);
  if (!units64) return Fail(units64.error());
  const Knowledge knowledge64{*libraries, *metadata64, *overrides, *hand_kept64, Platform::kX64};
  const Library library = BuildLibrary(*units, {*libraries, *metadata, *overrides, *hand_kept},
                                       {*units64, knowledge64, *exports64, *successors});
  ConstantSets sets(library.constants, *metadata);
  const auto parts = SplitLibrary(library, *areas, *metadata, sets, *prefixes);
  for (const LibraryPart& part : parts) {
    const std::string path = out + "/" + part.file;
    if (const auto written = WriteLibrary(part.library, part.title, path + ".api"); !written) {
      static_cast<void>(WriteText(path + ".rejected.bas", SourceOf(part.library)));
      return Fail(part.file + ": " + written.error());
    }
    if (!WriteText(path + ".facts", FactsOf(part.library, *metadata, sets, *prefixes)))
      return Fail("cannot write " + path + ".facts");
  }
  const std::string report = ReportOf(library, parts, *metadata);
  if (!WriteText(out + "/Win32.provenance.tsv", ProvenanceOf(library)) ||
      !WriteText(out + "/Win32.report.md", report))
    return Fail("cannot write into " + out);
  std::cout << report;
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5)
    return Fail("usage: win32_library SOURCE_FOLDER IMPORT_FOLDER IMPORT_FOLDER_64 OUT_FOLDER");
  return Generate({argv[1], argv[2], argv[3], argv[4]});
}
