#include "areas.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <optional>
#include <sstream>

#include "metadata_source.h"

namespace declarium::win32_library {
namespace {

// "HEADER", "HEADER needed" or "HEADER below N"; nullopt when the words behind the header are
// others.
std::optional<std::pair<std::string, Home>> HomeIn(const std::string& line, std::size_t library) {
  std::istringstream words(line);
  std::string header;
  std::string mark;
  words >> header >> mark;
  Home home{.library = library, .needed_only = mark == "needed"};
  if (mark == "below" ? !(words >> home.limit) : !mark.empty() && !home.needed_only)
    return std::nullopt;
  std::string rest;
  if (words >> rest) return std::nullopt;
  return std::pair(header, home);
}

// "[FILE] TITLE"; nullopt when it is not of this form.
std::optional<Areas::Title> TitleIn(const std::string& line) {
  const std::size_t end = line.find("] ");
  if (end == std::string::npos) return std::nullopt;
  return Areas::Title{.file = line.substr(1, end - 1), .title = line.substr(end + 2)};
}

// The number that a constant's text is; nullopt for text, fractions and expressions.
std::optional<long> PlainNumber(const std::string& value) {
  long number = 0;
  const char* end = value.data() + value.size();
  const auto read = std::from_chars(value.data(), end, number);
  return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}

}  // namespace

std::expected<Areas, std::string> ReadAreas(const std::string& path) {
  std::ifstream file(path);
  if (!file) return std::unexpected(path + ": cannot be read");
  Areas areas;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.starts_with('#')) continue;
    if (line.starts_with('[')) {
      const auto title = TitleIn(line);
      if (!title) return std::unexpected(path + ": no title: " + line);
      areas.titles.push_back(*title);
      continue;
    }
    if (areas.titles.empty()) return std::unexpected(path + ": before the first library: " + line);
    const auto home = HomeIn(line, areas.titles.size() - 1);
    if (!home) return std::unexpected(path + ": unknown mark: " + line);
    if (!areas.homes.insert(*home).second) return std::unexpected(path + ": there twice: " + line);
  }
  if (areas.titles.empty()) return std::unexpected(path + ": no library");
  return areas;
}

Homes::Homes(const Library& library, const Areas& areas, const Metadata& metadata)
    : areas_(areas), metadata_(metadata) {
  CollectAreas();
  CountHeaders(library);
}

void Homes::CollectAreas() {
  for (const MetaEnum& item : metadata_.enums)
    for (const auto& [name, value] : item.values) constant_areas_.emplace(name, item.area);
  for (const MetaConstant& item : metadata_.constants)
    constant_areas_.emplace(item.name, item.area);
  for (const MetaRecord& item : metadata_.records) record_areas_.emplace(item.name, item.area);
}

// Which area most rows of a header have.
void Homes::CountHeaders(const Library& library) {
  std::map<std::string, std::map<std::string, int>> counts;
  const auto count = [&](const std::string& header, const std::string& area) {
    if (!area.empty()) ++counts[header][area];
  };
  for (const ConstRow& row : library.constants) count(row.header, AreaOf(row));
  for (const DeclareRow& row : library.declares) count(row.header, AreaOf(row));
  for (const TypeRow& row : library.types) count(row.header, AreaOf(row));
  for (const auto& [header, areas] : counts)
    area_of_header_[header] =
        std::ranges::max_element(areas, {}, [](const auto& entry) { return entry.second; })->first;
}

std::string Homes::AreaOf(const ConstRow& row) const {
  const auto found = constant_areas_.find(row.name);
  return found == constant_areas_.end() ? "" : found->second;
}

std::string Homes::AreaOf(const DeclareRow& row) const {
  const MetaFunction* facts = metadata_.FindFunction(row.function);
  return facts == nullptr ? "" : facts->area;
}

std::string Homes::AreaOf(const TypeRow& row) const {
  for (const std::string& name : row.c_names)
    if (const auto found = record_areas_.find(name); found != record_areas_.end())
      return found->second;
  return "";
}

const Home* Homes::Listed(const std::string& place, Rows rows) const {
  const auto listed = areas_.homes.find(place);
  if (listed == areas_.homes.end()) return nullptr;
  return rows == Rows::kConstants && listed->second.needed_only ? nullptr : &listed->second;
}

// The home of the narrowest listed area that the area is or is below.
const Home* Homes::ListedArea(std::string area, Rows rows) const {
  for (;;) {
    if (const Home* home = Listed(area, rows)) return home;
    const std::size_t dot = area.rfind('.');
    if (dot == std::string::npos) return nullptr;
    area.resize(dot);
  }
}

const Home* Homes::Find(const std::string& header, const std::string& area, Rows rows) const {
  if (const Home* home = Listed(header, rows)) return home;
  const std::string folder(kMetadataFolder);
  if (header.starts_with(kUncertainFolder))
    return ListedArea(folder + header.substr(kUncertainFolder.size()), rows);
  if (header.starts_with(kMetadataFolder)) return ListedArea(header, rows);
  const auto most = area_of_header_.find(header);
  return ListedArea(folder + (most == area_of_header_.end() ? area : most->second), rows);
}

std::size_t Homes::LibraryOf(const Home* home) const {
  return home == nullptr ? areas_.titles.size() - 1 : home->library;
}

std::size_t Homes::Of(const ConstRow& row) const {
  return LibraryOf(Find(row.header, AreaOf(row), Rows::kConstants));
}

std::size_t Homes::Of(const DeclareRow& row) const {
  return LibraryOf(Find(row.header, AreaOf(row), Rows::kOthers));
}

std::size_t Homes::Of(const TypeRow& row) const {
  return LibraryOf(Find(row.header, AreaOf(row), Rows::kOthers));
}

bool Homes::GoesAlong(const ConstRow& row) const {
  const Home* home = Find(row.header, AreaOf(row), Rows::kConstants);
  if (home == nullptr || home->limit == Home().limit) return true;
  const auto number = PlainNumber(row.value);
  return number && *number < home->limit;
}

}  // namespace declarium::win32_library
