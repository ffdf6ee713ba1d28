// What Microsoft's metadata of the Windows API says of procedures: the second source of the
// library. The files are described in metadata/README.md.
#pragma once

#include <expected>
#include <map>
#include <string>
#include <vector>

namespace declarium::win32_library {

struct MetaParameter {
  std::string name;
  std::vector<std::string> attributes;

  [[nodiscard]] bool Has(const std::string& attribute) const;
};

struct MetaFunction {
  std::string name;
  std::string library;  // as a Declare names it: lower case, without ".dll"
  std::vector<MetaParameter> parameters;
};

// What there is on 32-bit Windows.
struct Metadata {
  std::map<std::string, MetaFunction, std::less<>> functions;  // by exported name

  // The function of the name, nullptr when there is none.
  [[nodiscard]] const MetaFunction* FindFunction(std::string_view name) const;
};

// Reads the compressed files of the folder with xz. The reason in words on failure.
[[nodiscard]] std::expected<Metadata, std::string> ReadMetadata(const std::string& folder);

}  // namespace declarium::win32_library
