// win32_library SOURCE_FOLDER IMPORT_FOLDER OUT_FOLDER: makes the libraries of areas.txt, each with
// its facts file, Win32.provenance.tsv and Win32.report.md in OUT_FOLDER from the lists
// headers.txt, libraries.txt, overrides.txt, prefixes.txt and areas.txt, the metadata, additions.c
// and hand_kept.bas in SOURCE_FOLDER, and the import libraries in IMPORT_FOLDER.
#include <cstdio>
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

namespace {

using namespace declarium::win32_library;

int Fail(const std::string& reason) {
  std::cerr << "win32_library: " << reason << '\n';
  return 1;
}

std::expected<ImportLibraries, std::string> ReadLibraries(const std::string& list,
                                                          const std::string& folder) {
  std::ifstream file(list);
  if (!file) return std::unexpected(list + ": cannot be read");
  ImportLibraries libraries;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with('#')) continue;
    std::istringstream names(line);
    for (std::string name; names >> name;)
      if (const auto added = libraries.Add(folder + "/lib" + name + ".a"); !added)
        return std::unexpected(added.error());
  }
  return libraries;
}

std::expected<std::vector<Headers>, std::string> ReadUnits(const std::vector<HeaderUnit>& units) {
  std::vector<Headers> result;
  for (const HeaderUnit& unit : units) {
    auto headers = ReadHeaders(unit);
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

// The additions, the headers' units and the metadata: what an earlier source has is its own.
std::expected<std::vector<HeaderUnit>, std::string> UnitsOf(const std::string& source,
                                                            const Metadata& metadata,
                                                            const Overrides& overrides) {
  auto additions = ReadAdditions(source + "/additions.c");
  if (!additions) return std::unexpected(additions.error());
  auto units = ReadHeaderUnits(source + "/headers.txt");
  if (!units) return std::unexpected(units.error());
  units->insert(units->begin(), std::move(*additions));
  units->push_back({"metadata", MetadataSource(metadata, overrides)});
  return units;
}

int Generate(const std::string& source, const std::string& imports, const std::string& out) {
  const auto libraries = ReadLibraries(source + "/libraries.txt", imports);
  if (!libraries) return Fail(libraries.error());
  const auto metadata = ReadMetadata(source + "/metadata");
  if (!metadata) return Fail(metadata.error());
  const auto overrides = ReadOverrides(source + "/overrides.txt");
  if (!overrides) return Fail(overrides.error());
  const auto hand_kept = ReadHandKept(source + "/hand_kept.bas");
  if (!hand_kept) return Fail(hand_kept.error());
  const auto prefixes = ReadPrefixes(source + "/prefixes.txt");
  if (!prefixes) return Fail(prefixes.error());
  const auto areas = ReadAreas(source + "/areas.txt");
  if (!areas) return Fail(areas.error());
  const auto sources = UnitsOf(source, *metadata, *overrides);
  if (!sources) return Fail(sources.error());
  const auto units = ReadUnits(*sources);
  if (!units) return Fail(units.error());
  const Library library = BuildLibrary(*units, {*libraries, *metadata, *overrides, *hand_kept});
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
  const std::string report = ReportOf(library, parts);
  if (!WriteText(out + "/Win32.provenance.tsv", ProvenanceOf(library)) ||
      !WriteText(out + "/Win32.report.md", report))
    return Fail("cannot write into " + out);
  std::cout << report;
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return Fail("usage: win32_library SOURCE_FOLDER IMPORT_FOLDER OUT_FOLDER");
  return Generate(argv[1], argv[2], argv[3]);
}
