#include "toolchain.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <stdexcept>

#include "coff_object.h"
#include "hand_kept.h"
#include "metadata_source.h"

namespace declarium::win32_library_test {
namespace {

using win32_library::Platform;

constexpr std::string_view kCompilers[] = {"i686-w64-mingw32-gcc-posix",
                                           "x86_64-w64-mingw32-gcc-posix"};

std::string_view CompilerOf(Platform platform) {
  return kCompilers[static_cast<std::size_t>(platform)];
}

std::string ReadAll(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

Toolchain::Toolchain(win32_library::Platform platform)
    : platform_(platform),
      folder_(std::filesystem::temp_directory_path() /
              ("win32_library_" + std::to_string(std::random_device()()))) {
  std::filesystem::create_directories(folder_);
}

Toolchain::~Toolchain() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

bool Toolchain::IsInstalled() {
  return std::ranges::all_of(kCompilers, [](std::string_view compiler) {
    const std::string command = "command -v " + std::string(compiler) + " >/dev/null 2>&1";
    return std::system(command.c_str()) == 0;
  });
}

std::string Toolchain::Compile(std::string_view options) const {
  return std::string(CompilerOf(platform_)) + " -w " + std::string(options) + " ";
}

std::string Toolchain::Output(const std::string& command) const {
  const std::string out = (folder_ / "out").string();
  const std::string err = (folder_ / "err").string();
  if (std::system((command + " >" + out + " 2>" + err).c_str()) != 0)
    throw std::runtime_error(command + "\n" + ReadAll(err).substr(0, 2000));
  return ReadAll(out);
}

std::string Toolchain::Write(const std::string& source) const {
  const std::filesystem::path path = folder_ / "probe.c";
  std::ofstream(path, std::ios::binary) << source;
  return path.string();
}

std::map<std::string, std::string> Toolchain::Sections(
    const std::string& source, const std::vector<std::string>& names) const {
  const std::string bytes = CompiledObject(source);
  const auto parsed = win32_library::ReadObject(bytes);
  if (!parsed) throw std::runtime_error("the compiler made no object");
  std::map<std::string, std::string> sections;
  for (const std::string& name : names) sections[name] = parsed->Content(name);
  return sections;
}

std::string Toolchain::CompiledObject(const std::string& source) const {
  const std::string object = (folder_ / "probe.o").string();
  static_cast<void>(
      Output(Compile("-O0 -fno-toplevel-reorder -c") + Write(source) + " -o " + object));
  return ReadAll(object);
}

std::vector<std::string> Toolchain::UndefinedSymbols(const std::string& source) const {
  const std::string bytes = CompiledObject(source);
  const auto parsed = win32_library::ReadObject(bytes);
  if (!parsed) throw std::runtime_error("the compiler made no object");
  std::vector<std::string> symbols;
  for (const auto& symbol : parsed->symbols)
    if (symbol.section == 0 && symbol.name.starts_with('_'))
      symbols.push_back(symbol.name.substr(1));
  return symbols;
}

std::string Toolchain::Preprocessed(const std::string& source) const {
  return Output(Compile("-E -P") + Write(source));
}

std::map<std::string, std::string> Toolchain::Synonyms(const std::string& source) const {
  std::istringstream lines(Output(Compile("-E -dM") + Write(source)));
  std::map<std::string, std::string> synonyms;
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string define;
    std::string name;
    std::string value;
    std::string more;
    if (words >> define >> name >> value && !(words >> more)) synonyms.emplace(name, value);
  }
  return synonyms;
}

std::vector<std::string> Toolchain::HeadersIn(const std::string& source) const {
  std::istringstream words(Output(Compile("-M") + Write(source)));
  constexpr std::string_view kFolder = "/include/";
  std::vector<std::string> headers;
  for (std::string word; words >> word;) {
    const std::size_t folder = word.find(kFolder);
    if (folder != std::string::npos) headers.push_back(word.substr(folder + kFolder.size()));
  }
  return headers;
}

const win32_library::Metadata& TheMetadata(Platform platform) {
  constexpr const char* kFolder = DECLARIUM_SOURCE_DIR "/tools/win32-library/metadata";
  static const auto x86 = win32_library::ReadMetadata(kFolder, Platform::kX86);
  static const auto x64 = win32_library::ReadMetadata(kFolder, Platform::kX64);
  const auto& metadata = platform == Platform::kX86 ? x86 : x64;
  if (!metadata) throw std::runtime_error(metadata.error());
  return *metadata;
}

const win32_library::Overrides& TheOverrides() {
  static const auto overrides =
      win32_library::ReadOverrides(DECLARIUM_SOURCE_DIR "/tools/win32-library/overrides.txt");
  if (!overrides) throw std::runtime_error(overrides.error());
  return *overrides;
}

const std::vector<win32_library::DeclareRow>& TheHandKept() {
  static const auto rows =
      win32_library::ReadHandKept(DECLARIUM_SOURCE_DIR "/tools/win32-library/hand_kept.bas");
  if (!rows) throw std::runtime_error(rows.error());
  return *rows;
}

UnitMap ReadUnitMap(const Toolchain& toolchain) {
  auto units =
      win32_library::ReadHeaderUnits(DECLARIUM_SOURCE_DIR "/tools/win32-library/headers.txt");
  if (!units) throw std::runtime_error(units.error());
  UnitMap map{std::move(*units), {}};
  for (std::size_t i = 0; i < map.units.size(); ++i)
    for (const std::string& header : toolchain.HeadersIn(map.units[i].source))
      map.unit_of_header.emplace(header, i);
  auto additions =
      win32_library::ReadAdditions(DECLARIUM_SOURCE_DIR "/tools/win32-library/additions.c");
  if (!additions) throw std::runtime_error(additions.error());
  map.unit_of_header.emplace(additions->name, map.units.size());
  map.units.push_back(std::move(*additions));
  map.units.push_back({"metadata", win32_library::MetadataSource(TheMetadata(toolchain.Platform()),
                                                                 TheOverrides())});
  return map;
}

std::map<std::string, std::size_t> ReadProvenance(const UnitMap& units) {
  std::ifstream file(DECLARIUM_SOURCE_DIR "/data/Win32.provenance.tsv");
  std::map<std::string, std::size_t> result;
  std::string line;
  std::getline(file, line);
  while (std::getline(file, line)) {
    const std::size_t tab = line.rfind('\t');
    const std::string header = line.substr(tab + 1);
    if (header.starts_with(win32_library::kMetadataFolder)) {
      result[line.substr(0, tab)] = units.units.size() - 1;
      continue;
    }
    if (header == win32_library::kHandKept) continue;
    const auto unit = units.unit_of_header.find(header);
    if (unit == units.unit_of_header.end())
      throw std::runtime_error("a header that no unit includes: " + line);
    result[line.substr(0, tab)] = unit->second;
  }
  return result;
}

}  // namespace declarium::win32_library_test
