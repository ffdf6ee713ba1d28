#include "constant_sets.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

#include "vb/name.h"

namespace declarium::win32_library {
namespace {

// What all names begin with, up to an underscore: "SWP_". Empty when that is no word.
std::string CommonPrefix(const std::vector<std::string>& names) {
  std::string common = names.front();
  for (const std::string& name : names)
    common.resize(
        static_cast<std::size_t>(std::ranges::mismatch(common, name).in1 - common.begin()));
  const std::size_t end = common.rfind('_');
  return end == std::string::npos ? "" : common.substr(0, end + 1);
}

}  // namespace

std::expected<Prefixes, std::string> ReadPrefixes(const std::string& path) {
  std::ifstream file(path);
  if (!file) return std::unexpected(path + ": cannot be read");
  Prefixes prefixes;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.starts_with('#')) continue;
    std::istringstream words(line);
    std::string row;
    std::string value;
    words >> row >> value;
    std::vector<std::string> list;
    for (std::string prefix; words >> prefix;) list.push_back(prefix);
    if (list.empty()) return std::unexpected(path + ": no beginning: " + line);
    if (!prefixes.emplace(row + " " + value, std::move(list)).second)
      return std::unexpected(path + ": there twice: " + line);
  }
  return prefixes;
}

ConstantSets::ConstantSets(const std::vector<ConstRow>& constants, const Metadata& metadata) {
  for (const ConstRow& row : constants) rows_.emplace(vb::Lower(row.name), row);
  for (const MetaEnum& item : metadata.enums) AddEnumeration(item);
  ExtendByPrefix();
}

void ConstantSets::AddEnumeration(const MetaEnum& item) {
  ConstantSet set{item.name, item.is_flags, {}, {}};
  for (const auto& [name, value] : item.values)
    if (const auto row = rows_.find(vb::Lower(name)); row != rows_.end())
      set.constants.push_back(row->second.name);
  if (!set.constants.empty()) sets_.emplace(item.name, std::move(set));
}

// A constant that no enumeration has goes to the set whose constants begin as it does, the longest
// beginning first, when only one set has that and they come from the same header.
void ConstantSets::ExtendByPrefix() {
  std::map<std::string, Owner> owners;
  std::set<std::string> listed;
  for (const auto& [name, set] : sets_) {
    for (const std::string& constant : set.constants) listed.insert(vb::Lower(constant));
    const std::string prefix = CommonPrefix(set.constants);
    if (prefix.size() < 3 || set.constants.size() < 2) continue;
    const auto [owner, is_new] = owners.emplace(prefix, Owner{name});
    if (!is_new) owner->second.is_alone = false;
  }
  for (const auto& [lower, row] : rows_) {
    if (listed.contains(lower)) continue;
    ConstantSet* set = OwnerOf(row.name, owners);
    if (set == nullptr) continue;
    const std::string& first = rows_.at(vb::Lower(set->constants.front())).header;
    if (first == row.header) set->by_prefix.push_back(row.name);
  }
}

ConstantSet* ConstantSets::OwnerOf(const std::string& constant,
                                   const std::map<std::string, Owner>& owners) {
  for (std::size_t end = constant.rfind('_'); end != std::string::npos && end > 0;
       end = constant.rfind('_', end - 1)) {
    const auto owner = owners.find(constant.substr(0, end + 1));
    if (owner != owners.end())
      return owner->second.is_alone ? &sets_.at(owner->second.set) : nullptr;
  }
  return nullptr;
}

const ConstantSet* ConstantSets::Find(const std::string& enumeration) const {
  const auto found = sets_.find(enumeration);
  return found == sets_.end() ? nullptr : &found->second;
}

const ConstantSet* ConstantSets::WithPrefixes(const std::vector<std::string>& prefixes) {
  std::string name;
  for (const std::string& prefix : prefixes) name += (name.empty() ? "" : ",") + prefix + "*";
  if (const ConstantSet* known = Find(name)) return known;
  ConstantSet set{name, false, {}, {}};
  for (const auto& [lower, row] : rows_)
    if (std::ranges::any_of(
            prefixes, [&row](const std::string& prefix) { return row.name.starts_with(prefix); }))
      set.by_prefix.push_back(row.name);
  if (set.by_prefix.empty()) return nullptr;
  return &sets_.emplace(name, std::move(set)).first->second;
}

}  // namespace declarium::win32_library
