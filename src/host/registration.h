// What stands in the registry so that the host finds and starts the add-in: the class with its
// program, and the host's own list of add-ins.
#pragma once

#include <cstdint>
#include <expected>
#include <string>
#include <string_view>

#include "win32/registry.h"

namespace declarium {

// Whose classes are written. The host's list of add-ins is per user either way.
enum class RegistrationScope {
  kUser,     // needs no rights; not seen by a host that runs as administrator
  kMachine,  // needs administrator rights
};

// How a server is known to the system and to the host.
struct ServerIdentity {
  std::u16string_view class_id;  // with braces
  std::u16string_view prog_id;
  std::u16string_view friendly_name;
  std::u16string_view description;
};

inline constexpr ServerIdentity kDeclariumServer = {
    u"{E935511A-4C2D-4094-9A51-D7CF1373CE55}",
    u"Declarium.Connect",
    u"Declarium",
    u"Libraries of external declarations: Declare, Const and Type",
};

// The add-in in a VBA editor: a DLL in the editor's process, which starts the server.
inline constexpr ServerIdentity kVbaAddIn = {
    u"{2021681C-F335-4390-B8E0-53F2A23E0CCB}",
    u"Declarium.Vba",
    u"Declarium",
    u"Libraries of external declarations: Declare, Const and Type",
};

// The bit of LoadBehavior that loads the add-in when the host starts.
inline constexpr std::uint32_t kLoadAtStartup = 1;

// The keys, relative to their root. The program's key is below the class's.
[[nodiscard]] std::u16string ProgIdKey(const ServerIdentity& server);
[[nodiscard]] std::u16string ClassKey(const ServerIdentity& server);
[[nodiscard]] std::u16string LocalServerKey(const ServerIdentity& server);
[[nodiscard]] std::u16string AddInKey(const ServerIdentity& server);  // in the user's part

[[nodiscard]] constexpr RegistryRoot ClassesRoot(RegistrationScope scope) noexcept {
  return scope == RegistrationScope::kUser ? RegistryRoot::kCurrentUser
                                           : RegistryRoot::kLocalMachine;
}

// Whether a server that the system starts writes a log.
enum class ServerLog { kOff, kOn };

// Writes everything for the program at `program` (a full path); whether the host loads the add-in
// at its start stays as the user chose it. What a failure leaves unwritten
// stays so; registering again completes it.
[[nodiscard]] std::expected<void, RegistryError> RegisterServer(Registry& registry,
                                                                const ServerIdentity& server,
                                                                std::u16string_view program,
                                                                RegistrationScope scope,
                                                                ServerLog log = ServerLog::kOff);

// As RegisterServer for the user, without the host's list: a class that other programs start.
[[nodiscard]] std::expected<void, RegistryError> RegisterServerClass(
    Registry& registry, const ServerIdentity& server, std::u16string_view program,
    ServerLog log = ServerLog::kOff);

// Removes everything RegisterServer wrote, also keys above that it had to create and that are empty
// now. Goes on after a failure and returns the first one.
[[nodiscard]] std::expected<void, RegistryError> UnregisterServer(Registry& registry,
                                                                  const ServerIdentity& server,
                                                                  RegistrationScope scope);

}  // namespace declarium
