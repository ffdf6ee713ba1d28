#include <fstream>
#include <sstream>

#include "header_reader.h"

namespace declarium::win32_library {
namespace {

// Appends what one line of the list means; false when the line is not understood.
bool ReadLine(const std::string& line, std::vector<HeaderUnit>& units) {
  std::istringstream words(line);
  std::string verb;
  if (!(words >> verb) || verb.starts_with('#')) return true;
  if (verb.starts_with('[') && verb.ends_with(']')) {
    units.push_back({verb.substr(1, verb.size() - 2), ""});
    return true;
  }
  std::string name;
  if (units.empty() || !(words >> name)) return false;
  std::string value;
  std::getline(words >> std::ws, value);
  std::string& source = units.back().source;
  if (verb == "define")
    source.append("#define ").append(name).append(" ").append(value).append("\n");
  if (verb == "include") source.append("#include <").append(name).append(">\n");
  return verb == "define" || verb == "include";
}

}  // namespace

std::expected<std::vector<HeaderUnit>, std::string> ReadHeaderUnits(const std::string& path) {
  std::ifstream file(path);
  if (!file) return std::unexpected(path + ": cannot be read");
  std::vector<HeaderUnit> units;
  for (std::string line; std::getline(file, line);)
    if (!ReadLine(line, units)) return std::unexpected(path + ": not understood: " + line);
  return units;
}

std::expected<HeaderUnit, std::string> ReadAdditions(const std::string& path) {
  std::ifstream file(path);
  if (!file) return std::unexpected(path + ": cannot be read");
  return HeaderUnit{std::string(kAdditions),
                    {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()}};
}

}  // namespace declarium::win32_library
