// What stands in the registry so that VBA editors find the add-in that runs in their process: its
// class with a DLL for each bitness, and the editors' lists of add-ins. Everything belongs to the
// user; the editors look nowhere else.
#pragma once

#include <array>
#include <expected>
#include <string>
#include <string_view>

#include "host/registration.h"
#include "win32/registry.h"

namespace declarium {

// The full paths of the DLLs; "" for an editor of that bitness that there is nothing for, as on a
// Windows of 32 bits.
struct VbaDlls {
  std::u16string narrow = {};  // for editors of 32 bits
  std::u16string wide = {};    // for editors of 64 bits
};

// What belongs to the editors of one bitness.
struct VbaEditors {
  std::u16string_view list;  // the key of their list of add-ins
  RegistryView view;         // where they look for classes
  std::u16string VbaDlls::* dll;
  std::u16string_view file;  // the DLL's name
};

inline constexpr std::array<VbaEditors, 2> kVbaEditors = {{
    {u"Software\\Microsoft\\VBA\\VBE\\6.0\\Addins", RegistryView::k32Bit, &VbaDlls::narrow,
     u"DeclariumVba32.dll"},
    {u"Software\\Microsoft\\VBA\\VBE\\6.0\\Addins64", RegistryView::k64Bit, &VbaDlls::wide,
     u"DeclariumVba64.dll"},
}};

// An editor loads the add-in at its start; it writes 0 itself when the add-in fails.
inline constexpr std::uint32_t kLoadInEditors = 3;

// The keys, relative to the user's part.
[[nodiscard]] std::u16string VbaAddInKey(const VbaEditors& editors, const ServerIdentity& add_in);
[[nodiscard]] std::u16string InprocServerKey(const ServerIdentity& add_in);

// Writes everything for the DLLs that there are. An editor that stopped loading the add-in loads it
// again. What a failure leaves unwritten stays so; registering again completes it.
[[nodiscard]] std::expected<void, RegistryError> RegisterVba(Registry& registry,
                                                             const ServerIdentity& add_in,
                                                             const VbaDlls& dlls);

// Removes everything RegisterVba wrote, also keys above that it had to create and that are empty
// now. Goes on after a failure and returns the first one.
[[nodiscard]] std::expected<void, RegistryError> UnregisterVba(Registry& registry,
                                                               const ServerIdentity& add_in);

}  // namespace declarium
