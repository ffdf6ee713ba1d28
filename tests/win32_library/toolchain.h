// The mingw-w64 compilers and tools, as the source of facts.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "hand_kept.h"
#include "header_reader.h"
#include "metadata.h"
#include "overrides.h"

namespace declarium::win32_library_test {

class Toolchain {
 public:
  // Works in a new folder, which is removed in the end.
  explicit Toolchain(win32_library::Platform platform = win32_library::Platform::kX86);
  ~Toolchain();
  Toolchain(const Toolchain&) = delete;
  Toolchain& operator=(const Toolchain&) = delete;

  // Whether the compilers of both platforms are installed.
  [[nodiscard]] static bool IsInstalled();

  [[nodiscard]] win32_library::Platform Platform() const { return platform_; }

  // What the command writes to standard output. Throws std::runtime_error, with what it wrote to
  // standard error, when it fails.
  [[nodiscard]] std::string Output(const std::string& command) const;

  // The contents of the named sections of `source` compiled. Throws when it does not compile.
  // Preprocessed source takes names as they are, which macros would replace.
  [[nodiscard]] std::map<std::string, std::string> Sections(
      const std::string& source, const std::vector<std::string>& names) const;

  // The symbols that the compiled source refers to and does not define, without the underscore
  // that C puts before each: "GetTickCount@0".
  [[nodiscard]] std::vector<std::string> UndefinedSymbols(const std::string& source) const;

  // `source` preprocessed, in lines that begin with no "#".
  [[nodiscard]] std::string Preprocessed(const std::string& source) const;

  // The macros that `source` leaves defined, of those that stand for one word: that word.
  [[nodiscard]] std::map<std::string, std::string> Synonyms(const std::string& source) const;

  // The headers that `source` includes, below the include folder.
  [[nodiscard]] std::vector<std::string> HeadersIn(const std::string& source) const;

 private:
  [[nodiscard]] std::string CompiledObject(const std::string& source) const;
  [[nodiscard]] std::string Write(const std::string& source) const;
  [[nodiscard]] std::string Compile(std::string_view options) const;

  win32_library::Platform platform_;
  std::filesystem::path folder_;
};

// The metadata that the library is made from. Throws when it cannot be read.
[[nodiscard]] const win32_library::Metadata& TheMetadata(
    win32_library::Platform platform = win32_library::Platform::kX86);

// What is decided between the sources. Throws when it cannot be read.
[[nodiscard]] const win32_library::Overrides& TheOverrides();

// The declared units of headers, the additions and the metadata as the last, and for every header
// the first unit that includes it.
struct UnitMap {
  std::vector<win32_library::HeaderUnit> units;
  std::map<std::string, std::size_t> unit_of_header;
};
[[nodiscard]] UnitMap ReadUnitMap(const Toolchain& toolchain);

// The procedures of the hand-kept list. Throws when it cannot be read.
[[nodiscard]] const std::vector<win32_library::DeclareRow>& TheHandKept();

// The unit of each row, by kind and name, from the provenance file; none for those of the hand-kept
// list. Throws when a row's header is in no unit.
[[nodiscard]] std::map<std::string, std::size_t> ReadProvenance(const UnitMap& units);

}  // namespace declarium::win32_library_test
