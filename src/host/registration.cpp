#include "host/registration.h"

#include <array>

#include "host/registry_writer.h"

namespace declarium {
namespace {

constexpr std::u16string_view kClasses = u"Software\\Classes\\";
constexpr std::u16string_view kClassIds = u"Software\\Classes\\CLSID";
constexpr std::u16string_view kAddIns = u"Software\\Microsoft\\Visual Basic\\6.0\\Addins";
constexpr std::array<std::u16string_view, 3> kAboveAddIns = {
    kAddIns, u"Software\\Microsoft\\Visual Basic\\6.0", u"Software\\Microsoft\\Visual Basic"};

std::u16string Joined(std::u16string_view a, std::u16string_view b) {
  return std::u16string(a).append(b);
}

void WriteClass(RegistryWriter& writer, const ServerIdentity& server, std::u16string_view program,
                RegistryRoot root, ServerLog log) {
  const auto class_id = TextValue(server.class_id);
  const auto description = TextValue(server.description);
  writer.Write(root, ProgIdKey(server), u"", description);
  writer.Write(root, ProgIdKey(server) + u"\\CLSID", u"", class_id);
  writer.Write(root, ClassKey(server), u"", description);
  writer.Write(root, ClassKey(server) + u"\\ProgID", u"", TextValue(server.prog_id));
  // The system adds switches of its own.
  const auto* switches = log == ServerLog::kOn ? u"\" /Log" : u"\"";
  writer.Write(root, LocalServerKey(server), u"", TextValue(Joined(u"\"", program) + switches));
  writer.Write(root, LocalServerKey(server), u"ServerExecutable", TextValue(program));
}

void WriteAddIn(RegistryWriter& writer, const ServerIdentity& server) {
  const auto root = RegistryRoot::kCurrentUser;
  const auto key = AddInKey(server);
  writer.Write(root, key, u"FriendlyName", TextValue(server.friendly_name));
  writer.Write(root, key, u"Description", TextValue(server.description));
  // What the user chose in the host's list stays.
  writer.WriteNumberOnce(root, key, u"LoadBehavior", kLoadAtStartup);
  writer.WriteNumberOnce(root, key, u"CommandLineSafe", 0);
}

}  // namespace

std::u16string ProgIdKey(const ServerIdentity& server) {
  return Joined(kClasses, server.prog_id);
}

std::u16string ClassKey(const ServerIdentity& server) {
  return Joined(kClassIds, u"\\").append(server.class_id);
}

std::u16string LocalServerKey(const ServerIdentity& server) {
  return ClassKey(server) + u"\\LocalServer32";
}

std::u16string AddInKey(const ServerIdentity& server) {
  return Joined(kAddIns, u"\\").append(server.prog_id);
}

std::expected<void, RegistryError> RegisterServer(Registry& registry, const ServerIdentity& server,
                                                  std::u16string_view program,
                                                  RegistrationScope scope, ServerLog log) {
  RegistryWriter writer(registry);
  WriteClass(writer, server, program, ClassesRoot(scope), log);
  WriteAddIn(writer, server);
  return writer.Result();
}

std::expected<void, RegistryError> RegisterServerClass(Registry& registry,
                                                       const ServerIdentity& server,
                                                       std::u16string_view program, ServerLog log) {
  RegistryWriter writer(registry);
  WriteClass(writer, server, program, RegistryRoot::kCurrentUser, log);
  return writer.Result();
}

std::expected<void, RegistryError> UnregisterServer(Registry& registry,
                                                    const ServerIdentity& server,
                                                    RegistrationScope scope) {
  const auto classes = ClassesRoot(scope);
  std::expected<void, RegistryError> result;
  const auto keep_first = [&result](std::expected<void, RegistryError> outcome) {
    if (result) result = std::move(outcome);
  };
  keep_first(registry.DeleteTree(classes, ProgIdKey(server)));
  keep_first(registry.DeleteTree(classes, ClassKey(server)));
  keep_first(registry.DeleteTree(RegistryRoot::kCurrentUser, AddInKey(server)));
  registry.DeleteIfEmpty(classes, kClassIds);
  for (const auto key : kAboveAddIns) registry.DeleteIfEmpty(RegistryRoot::kCurrentUser, key);
  return result;
}

}  // namespace declarium
