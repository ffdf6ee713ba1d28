#include "metadata.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>

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

bool IsForThisProcessor(const Json& object) {
  const auto found = object.find("arch");
  return found == object.end() || std::ranges::find(*found, "X86") != found->end();
}

MetaParameter ParameterOf(const Json& entry) {
  MetaParameter parameter{entry.at(0), {}};
  if (entry.size() > 2)
    for (const Json& attribute : entry[2]) parameter.attributes.push_back(attribute);
  return parameter;
}

MetaFunction FunctionOf(const Json& object) {
  MetaFunction function;
  function.name = object.at("name");
  function.library = vb::Lower(object.at("dll").get<std::string>());
  if (function.library.ends_with(".dll")) function.library.resize(function.library.size() - 4);
  for (const Json& entry : object.value("params", Json::array()))
    function.parameters.push_back(ParameterOf(entry));
  return function;
}

}  // namespace

bool MetaParameter::Has(const std::string& attribute) const {
  return std::ranges::find(attributes, attribute) != attributes.end();
}

const MetaFunction* Metadata::FindFunction(std::string_view name) const {
  const auto found = functions.find(name);
  return found == functions.end() ? nullptr : &found->second;
}

std::expected<Metadata, std::string> ReadMetadata(const std::string& folder) {
  Metadata metadata;
  const auto read = ForEachObject(folder + "/functions.jsonl.xz", [&](const Json& object) {
    if (!IsForThisProcessor(object)) return;
    MetaFunction function = FunctionOf(object);
    metadata.functions.emplace(function.name, std::move(function));
  });
  if (!read) return std::unexpected(read.error());
  return metadata;
}

}  // namespace declarium::win32_library
