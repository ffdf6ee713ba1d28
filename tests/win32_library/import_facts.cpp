#include "import_facts.h"

#include <fstream>
#include <sstream>

#include "documented_library.h"
#include "metadata_source.h"
#include "vb/name.h"

namespace declarium::win32_library_test {
namespace {

constexpr std::string_view kFolder = "/usr/i686-w64-mingw32/lib/";

std::vector<std::string> ArchiveNames() {
  std::ifstream file(DECLARIUM_SOURCE_DIR "/tools/win32-library/libraries.txt");
  std::vector<std::string> names;
  for (std::string line; std::getline(file, line);) {
    std::istringstream words(line.starts_with('#') ? "" : line);
    for (std::string name; words >> name;) names.push_back(name);
  }
  return names;
}

// The dynamic libraries that an archive imports from.
std::vector<std::string> LibrariesOf(const std::string& archive, const Toolchain& toolchain) {
  std::istringstream lines(toolchain.Output("i686-w64-mingw32-dlltool -I " + archive));
  std::vector<std::string> libraries;
  for (std::string line; std::getline(lines, line);) {
    line = vb::Lower(line);
    if (line.ends_with(".dll")) line.resize(line.size() - 4);
    libraries.push_back(line);
  }
  return libraries;
}

void ReadArchive(const std::string& archive, const Toolchain& toolchain, ImportFacts& facts) {
  const std::vector<std::string> libraries = LibrariesOf(archive, toolchain);
  std::istringstream lines(toolchain.Output("i686-w64-mingw32-nm " + archive));
  for (std::string line; std::getline(lines, line);) {
    constexpr std::string_view kImport = " __imp__";
    const std::size_t begin = line.find(kImport);
    const std::size_t at = line.rfind('@');
    if (begin == std::string::npos || at == std::string::npos || at + 1 == line.size() ||
        line.find_first_not_of("0123456789", at + 1) != std::string::npos)
      continue;
    const std::string name = line.substr(begin + kImport.size(), at - begin - kImport.size());
    for (const std::string& library : libraries)
      facts[library + " " + name] = std::stol(line.substr(at + 1));
  }
}

}  // namespace

ByteCounts CountWithTheCompiler(const Toolchain& toolchain) {
  constexpr std::string_view kMark = "__attribute__((stdcall)) ";
  const std::string source = win32_library::MetadataSource(TheMetadata(), TheOverrides());
  std::string table = "\nvoid *declarium_procedures[] = {\n";
  for (std::size_t at = source.find(kMark); at != std::string::npos; at = source.find(kMark, at)) {
    at += kMark.size();
    table += "(void *)" + source.substr(at, source.find('(', at) - at) + ",\n";
  }
  ByteCounts counts;
  for (const std::string& symbol : toolchain.UndefinedSymbols(source + table + "};\n")) {
    const std::size_t at = symbol.rfind('@');
    if (at != std::string::npos) counts[symbol.substr(0, at)] = std::stol(symbol.substr(at + 1));
  }
  return counts;
}

ImportFacts ReadImportLibraries(const Toolchain& toolchain, const ByteCounts& counts) {
  ImportFacts facts;
  for (const std::string& name : ArchiveNames())
    ReadArchive(std::string(kFolder) + "lib" + name + ".a", toolchain, facts);
  for (const auto& [name, bytes] : counts) {
    const auto& function = *TheMetadata().FindFunction(name);
    const std::string entry = win32_library::DocumentedLibrary(function) + " " + name;
    const auto* decided = win32_library::FindOverride(TheOverrides(), "Declare", name);
    if (decided != nullptr && decided->side == win32_library::Side::kMetadata)
      facts[entry] = bytes;
    else
      facts.emplace(entry, bytes);
  }
  return facts;
}

Mismatches CheckDeclares(const Rows& rows, const ImportFacts& facts) {
  Mismatches mismatches;
  for (const DeclareRow& row : rows.declares) {
    const auto meaning = MeaningOf(row);
    if (!meaning) {
      mismatches.push_back(row.name + ": " + meaning.error());
      continue;
    }
    const auto fact = facts.find(meaning->library + " " + meaning->entry);
    if (fact == facts.end())
      mismatches.push_back(row.name + ": " + meaning->library + " has no " + meaning->entry);
    else if (fact->second != meaning->argument_bytes)
      mismatches.push_back(row.name + " takes " + std::to_string(fact->second) + " bytes, not " +
                           std::to_string(meaning->argument_bytes));
  }
  return mismatches;
}

}  // namespace declarium::win32_library_test
