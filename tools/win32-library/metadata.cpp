#include "metadata.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <functional>
#include <limits>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>

#include "vb/name.h"

namespace declarium::win32_library {
namespace {

using Json = nlohmann::json;
using Result = std::expected<void, std::string>;

struct PipeCloser {
  void operator()(std::FILE* pipe) const { pclose(pipe); }
};

// The uncompressed text; empty when it cannot be had.
std::string Uncompressed(const std::string& path) {
  const std::unique_ptr<std::FILE, PipeCloser> pipe(popen(("xz -dc '" + path + "'").c_str(), "r"));
  if (pipe == nullptr) return "";
  std::string text;
  std::array<char, 65536> block{};
  while (const std::size_t count = std::fread(block.data(), 1, block.size(), pipe.get()))
    text.append(block.data(), count);
  return text;
}

// Calls `take` with each line's object.
Result ForEachObject(const std::string& path, const std::function<void(const Json&)>& take) {
  const std::string text = Uncompressed(path);
  if (text.empty()) return std::unexpected(path + ": cannot be read");
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    const Json object =
        Json::parse(text.begin() + static_cast<std::ptrdiff_t>(begin),
                    text.begin() + static_cast<std::ptrdiff_t>(end), nullptr, false);
    if (object.is_discarded()) return std::unexpected(path + ": no JSON Lines");
    take(object);
    begin = end + 1;
  }
  return {};
}

bool IsFor(Platform platform, const Json& object) {
  const auto found = object.find("arch");
  return found == object.end() ||
         std::ranges::find(*found, platform == Platform::kX86 ? "X86" : "X64") != found->end();
}

MetaValue ValueOf(const Json& entry) {
  MetaValue value{entry.at(0), entry.at(1), {}};
  if (entry.size() > 2)
    for (const Json& attribute : entry[2]) value.attributes.push_back(attribute);
  return value;
}

std::vector<MetaValue> ValuesOf(const Json& list) {
  std::vector<MetaValue> values;
  for (const Json& entry : list) values.push_back(ValueOf(entry));
  return values;
}

MetaFunction FunctionOf(const Json& object) {
  MetaFunction function;
  function.name = object.at("name");
  function.library = vb::Lower(object.at("dll").get<std::string>());
  if (function.library.ends_with(".dll")) function.library.resize(function.library.size() - 4);
  function.area = object.at("area");
  function.result = object.at("result");
  function.since = object.value("since", "");
  function.last_error = object.value("last_error", false);
  function.parameters = ValuesOf(object.value("params", Json::array()));
  return function;
}

MetaRecord RecordOf(const Json& object, Platform platform) {
  MetaRecord record;
  record.name = object.at("name");
  record.area = object.value("area", "");
  record.is_union = object.at("kind") == "union";
  record.pack = object.value("pack", 0);
  if (object.contains("members")) record.members = ValuesOf(object["members"]);
  if (object.contains("nested"))
    for (const Json& nested : object["nested"])
      if (IsFor(platform, nested)) record.nested.push_back(RecordOf(nested, platform));
  return record;
}

// Whether the text is the number of a GUID: 00000000-0000-0000-C000-000000000046.
bool IsGuid(const std::string& text) {
  constexpr std::string_view kForm = "00000000-0000-0000-0000-000000000000";
  return std::ranges::equal(text, kForm, [](char c, char form) {
    return form == '-' ? c == '-' : std::isxdigit(static_cast<unsigned char>(c)) != 0;
  });
}

// A GUID as the system writes it.
std::string InBraces(std::string guid) {
  std::ranges::transform(guid, guid.begin(),
                         [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return "{" + guid + "}";
}

// The number; the largest one where it does not fit.
std::int64_t WholeOf(const Json& value) {
  constexpr auto kLargest = std::numeric_limits<std::int64_t>::max();
  if (!value.is_number_unsigned()) return value.get<std::int64_t>();
  return static_cast<std::int64_t>(
      std::min(value.get<std::uint64_t>(), static_cast<std::uint64_t>(kLargest)));
}

MetaEnum EnumOf(const Json& object) {
  MetaEnum result{
      object.at("name"), object.at("area"), object.at("base"), object.value("flags", false), {}};
  for (const Json& value : object.value("values", Json::array()))
    result.values.emplace_back(value.at(0), WholeOf(value.at(1)));
  return result;
}

MetaConstant ConstantOf(const Json& object) {
  const Json& value = object.at("value");
  const std::string type = object.at("is");
  MetaConstant constant{object.at("name"), object.at("area"), std::int64_t{0},
                        type == "Int64" || type == "UInt64"};
  if (type == "String") {
    // An empty text has no value.
    std::string text = value.is_null() ? "" : value.get<std::string>();
    constant.value = IsGuid(text) ? InBraces(std::move(text)) : std::move(text);
  } else if (type == "Single" || type == "Double") {
    constant.value = value.get<double>();
  } else {
    constant.value = WholeOf(value);
  }
  return constant;
}

// Appends what one file holds; the first of a name is the one.
template <typename Item>
Result ReadInto(const std::string& path, Platform platform,
                const std::function<Item(const Json&)>& make, std::vector<Item>& items) {
  std::set<std::string> names;
  return ForEachObject(path, [&](const Json& object) {
    if (IsFor(platform, object) && names.insert(object.at("name")).second)
      items.push_back(make(object));
  });
}

}  // namespace

bool MetaValue::Has(const std::string& attribute) const {
  return std::ranges::find(attributes, attribute) != attributes.end();
}

const MetaFunction* Metadata::FindFunction(std::string_view name) const {
  const auto found = function_positions.find(name);
  return found == function_positions.end() ? nullptr : &functions[found->second];
}

std::string BaseOf(const std::string& type) {
  return type.substr(std::min(type.find_first_not_of("*[]0123456789"), type.size()));
}

bool HoldsAddresses(const std::string& type) {
  return type.find('*') != std::string::npos;
}

std::expected<Metadata, std::string> ReadMetadata(const std::string& folder, Platform platform) {
  Metadata metadata;
  const auto record_of = [platform](const Json& object) { return RecordOf(object, platform); };
  const auto typedef_of = [](const Json& object) {
    return MetaTypedef{object.at("name"), object.value("is", ""), object.value("free", "")};
  };
  const auto functions = ReadInto<MetaFunction>(folder + "/functions.jsonl.xz", platform,
                                                FunctionOf, metadata.functions);
  const auto records =
      ReadInto<MetaRecord>(folder + "/records.jsonl.xz", platform, record_of, metadata.records);
  const auto enums =
      ReadInto<MetaEnum>(folder + "/enums.jsonl.xz", platform, EnumOf, metadata.enums);
  const auto typedefs =
      ReadInto<MetaTypedef>(folder + "/typedefs.jsonl.xz", platform, typedef_of, metadata.typedefs);
  const auto constants = ReadInto<MetaConstant>(folder + "/constants.jsonl.xz", platform,
                                                ConstantOf, metadata.constants);
  for (const Result& read : {functions, records, enums, typedefs, constants})
    if (!read) return std::unexpected(read.error());
  for (std::size_t i = 0; i < metadata.functions.size(); ++i)
    metadata.function_positions.emplace(metadata.functions[i].name, i);
  return metadata;
}

}  // namespace declarium::win32_library
