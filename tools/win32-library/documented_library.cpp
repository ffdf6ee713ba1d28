#include "documented_library.h"

#include <array>
#include <string_view>

namespace declarium::win32_library {
namespace {

struct Instead {
  std::string_view metadata;
  std::string_view documented;
};

// bluetoothapis came with Windows 8 and xinputuap is for store programs only; the others are there
// wherever the procedures are. The scaling procedures' documentation names Shcore.dll, and that of
// the names of directory services NTDSAPI, which had them before dsparse was split off.
constexpr std::array<Instead, 6> kInstead = {{
    {"bluetoothapis", "bthprops.cpl"},
    {"bthprops", "bthprops.cpl"},
    {"dsparse", "ntdsapi"},
    {"xinputuap", "xinput1_4"},
    {"api-ms-win-shcore-scaling-l1-1-", "shcore"},
    {"winspool", "winspool.drv"},
}};

}  // namespace

std::string DocumentedLibrary(const MetaFunction& function) {
  for (const auto& [metadata, documented] : kInstead)
    if (function.library == metadata ||
        (metadata.ends_with('-') && function.library.starts_with(metadata)))
      return std::string(documented);
  return function.library;
}

}  // namespace declarium::win32_library
