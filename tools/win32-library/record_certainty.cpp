#include "record_certainty.h"

#include <algorithm>
#include <unordered_map>

namespace declarium::win32_library {
namespace {

class Certainty {
 public:
  explicit Certainty(const Metadata& metadata) {
    for (const MetaRecord& record : metadata.records) records_.emplace(record.name, &record);
    for (const MetaEnum& item : metadata.enums)
      if (item.base == "UInt32") unsigned_enums_.insert(item.name);
  }

  bool IsCertain(const MetaRecord& record) const {
    return std::ranges::all_of(record.members,
                               [this](const MetaValue& member) { return IsCertain(member); }) &&
           std::ranges::all_of(record.nested,
                               [this](const MetaRecord& nested) { return IsCertain(nested); });
  }

 private:
  bool IsCertain(const MetaValue& member) const {
    if (HoldsAddresses(member.type)) return true;
    const std::string base = BaseOf(member.type);
    if (unsigned_enums_.contains(base)) return false;
    const auto held = records_.find(base);
    return held == records_.end() || IsCertain(*held->second);
  }

  std::unordered_map<std::string, const MetaRecord*> records_;
  std::set<std::string> unsigned_enums_;
};

}  // namespace

std::set<std::string> UncertainRecords(const Metadata& metadata) {
  const Certainty certainty(metadata);
  std::set<std::string> names;
  for (const MetaRecord& record : metadata.records)
    if (!certainty.IsCertain(record)) names.insert(record.name);
  return names;
}

}  // namespace declarium::win32_library
