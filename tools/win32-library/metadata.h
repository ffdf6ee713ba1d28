// Microsoft's metadata of the Windows API: the second source of the library. What the files hold
// stands in metadata/README.md.
#pragma once

#include <expected>
#include <map>
#include <string>
#include <variant>
#include <vector>

#include "header_model.h"

namespace declarium::win32_library {

// A parameter or member. The type is a name with "*" in front for each pointer and "[n]" for
// arrays.
struct MetaValue {
  std::string name;
  std::string type;
  std::vector<std::string> attributes;

  [[nodiscard]] bool Has(const std::string& attribute) const;
};

struct MetaFunction {
  std::string name;
  std::string library;  // as a Declare names it: lower case, without ".dll"
  std::string area;
  std::string result;
  std::string since;
  bool last_error = false;
  std::vector<MetaValue> parameters;
};

struct MetaRecord {
  std::string name;
  std::string area;
  bool is_union = false;
  int pack = 0;  // 0: natural alignment
  std::vector<MetaValue> members;
  std::vector<MetaRecord> nested;  // records that only this one uses
};

struct MetaEnum {
  std::string name;
  std::string area;
  std::string base;
  bool is_flags = false;
  std::vector<std::pair<std::string, std::int64_t>> values;
};

struct MetaTypedef {
  std::string name;
  std::string is;    // a native type, "callback" or "interface"
  std::string free;  // the function that closes such a handle, empty when none is known
};

struct MetaConstant {
  std::string name;
  std::string area;
  std::variant<std::int64_t, double, std::string> value;  // a GUID is text in braces
  bool is_wide = false;                                   // a whole number of 8 bytes
};

// What there is on one form of Windows, in the order of the files.
struct Metadata {
  std::vector<MetaFunction> functions;
  std::vector<MetaRecord> records;
  std::vector<MetaEnum> enums;
  std::vector<MetaTypedef> typedefs;
  std::vector<MetaConstant> constants;

  // Functions by exported name: indexes into the list above, the first of each name.
  std::map<std::string, std::size_t, std::less<>> function_positions;

  // The function of the name, nullptr when there is none.
  [[nodiscard]] const MetaFunction* FindFunction(std::string_view name) const;
};

// The name in a type: what is left without pointers and bounds.
[[nodiscard]] std::string BaseOf(const std::string& type);

// Whether values of the type are addresses, or arrays of them, and not what stands there.
[[nodiscard]] bool HoldsAddresses(const std::string& type);

// Reads the compressed files of the folder with xz. The reason in words on failure.
[[nodiscard]] std::expected<Metadata, std::string> ReadMetadata(const std::string& folder,
                                                                Platform platform = Platform::kX86);

}  // namespace declarium::win32_library
