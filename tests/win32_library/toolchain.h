// The 32-bit mingw-w64 compiler and tools, as the source of facts.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "header_reader.h"

namespace declarium::win32_library_test {

class Toolchain {
 public:
  // Works in a new folder, which is removed in the end.
  Toolchain();
  ~Toolchain();
  Toolchain(const Toolchain&) = delete;
  Toolchain& operator=(const Toolchain&) = delete;

  // Whether the compiler is installed.
  [[nodiscard]] static bool IsInstalled();

  // What the command writes to standard output. Throws std::runtime_error, with what it wrote to
  // standard error, when it fails.
  [[nodiscard]] std::string Output(const std::string& command) const;

  // The contents of the named sections of `source` compiled. Throws when it does not compile.
  // Preprocessed source takes names as they are, which macros would replace.
  [[nodiscard]] std::map<std::string, std::string> Sections(
      const std::string& source, const std::vector<std::string>& names) const;

  // `source` preprocessed, in lines that begin with no "#".
  [[nodiscard]] std::string Preprocessed(const std::string& source) const;

  // The headers that `source` includes, below the include folder.
  [[nodiscard]] std::vector<std::string> HeadersIn(const std::string& source) const;

 private:
  [[nodiscard]] std::string Write(const std::string& source) const;

  std::filesystem::path folder_;
};

// The declared units of headers, and for every header the first unit that includes it.
struct UnitMap {
  std::vector<win32_library::HeaderUnit> units;
  std::map<std::string, std::size_t> unit_of_header;
};
[[nodiscard]] UnitMap ReadUnitMap(const Toolchain& toolchain);

// The unit of each row, by kind and name, from the provenance file. Throws when a row's header is
// in no unit.
[[nodiscard]] std::map<std::string, std::size_t> ReadProvenance(const UnitMap& units);

}  // namespace declarium::win32_library_test
