#include "coverage.h"

#include <set>

namespace declarium::win32_library {
namespace {

bool IsWithin(const std::string& area, const std::string& outer) {
  return area == outer || area.starts_with(outer + ".");
}

bool IsComOrWinRt(const std::string& area) {
  return IsWithin(area, "System.Com") || IsWithin(area, "System.WinRT");
}

}  // namespace

Coverage CoverageOfConstants(const Metadata& metadata,
                             const std::function<bool(const std::string&)>& has) {
  std::set<std::string> names;
  for (const MetaEnum& item : metadata.enums)
    if (!IsComOrWinRt(item.area))
      for (const auto& [name, value] : item.values) names.insert(name);
  for (const MetaConstant& item : metadata.constants)
    if (!IsComOrWinRt(item.area)) names.insert(item.name);
  Coverage coverage{.listed = names.size()};
  for (const std::string& name : names) coverage.there += has(name) ? 1 : 0;
  return coverage;
}

}  // namespace declarium::win32_library
