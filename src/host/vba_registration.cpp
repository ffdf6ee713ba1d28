#include "host/vba_registration.h"

#include "host/registry_writer.h"

namespace declarium {
namespace {

constexpr auto kUser = RegistryRoot::kCurrentUser;
constexpr std::u16string_view kClassesOfDlls = u"Software\\Classes\\CLSID";
constexpr std::array<std::u16string_view, 3> kAboveLists = {u"Software\\Microsoft\\VBA\\VBE\\6.0",
                                                            u"Software\\Microsoft\\VBA\\VBE",
                                                            u"Software\\Microsoft\\VBA"};

void WriteDllClass(RegistryWriter& writer, const ServerIdentity& add_in, const VbaEditors& editors,
                   std::u16string_view dll) {
  const auto description = TextValue(add_in.description);
  const auto in = [&](const std::u16string& key, std::u16string_view name,
                      const RegistryValue& value) {
    writer.Write(kUser, key, name, value, editors.view);
  };
  in(ClassKey(add_in), u"", description);
  in(ClassKey(add_in) + u"\\ProgID", u"", TextValue(add_in.prog_id));
  in(InprocServerKey(add_in), u"", TextValue(dll));
  in(InprocServerKey(add_in), u"ThreadingModel", TextValue(u"Apartment"));
}

void WriteListEntry(RegistryWriter& writer, const ServerIdentity& add_in,
                    const VbaEditors& editors) {
  const auto key = VbaAddInKey(editors, add_in);
  writer.Write(kUser, key, u"FriendlyName", TextValue(add_in.friendly_name));
  writer.Write(kUser, key, u"Description", TextValue(add_in.description));
  writer.Write(kUser, key, u"LoadBehavior", NumberValue(kLoadInEditors));
  writer.Write(kUser, key, u"CommandLineSafe", NumberValue(0));
}

}  // namespace

std::u16string VbaAddInKey(const VbaEditors& editors, const ServerIdentity& add_in) {
  return std::u16string(editors.list).append(u"\\").append(add_in.prog_id);
}

std::u16string InprocServerKey(const ServerIdentity& add_in) {
  return ClassKey(add_in) + u"\\InprocServer32";
}

std::expected<void, RegistryError> RegisterVba(Registry& registry, const ServerIdentity& add_in,
                                               const VbaDlls& dlls) {
  RegistryWriter writer(registry);
  writer.Write(kUser, ProgIdKey(add_in), u"", TextValue(add_in.description));
  writer.Write(kUser, ProgIdKey(add_in) + u"\\CLSID", u"", TextValue(add_in.class_id));
  for (const auto& editors : kVbaEditors) {
    const auto& dll = dlls.*editors.dll;
    if (dll.empty()) continue;
    WriteDllClass(writer, add_in, editors, dll);
    WriteListEntry(writer, add_in, editors);
  }
  return writer.Result();
}

std::expected<void, RegistryError> UnregisterVba(Registry& registry, const ServerIdentity& add_in) {
  std::expected<void, RegistryError> result;
  const auto keep_first = [&result](std::expected<void, RegistryError> outcome) {
    if (result) result = std::move(outcome);
  };
  keep_first(registry.DeleteTree(kUser, ProgIdKey(add_in)));
  for (const auto& editors : kVbaEditors) {
    keep_first(registry.DeleteTree(kUser, ClassKey(add_in), editors.view));
    keep_first(registry.DeleteTree(kUser, VbaAddInKey(editors, add_in)));
    registry.DeleteIfEmpty(kUser, kClassesOfDlls, editors.view);
    registry.DeleteIfEmpty(kUser, editors.list);
  }
  for (const auto key : kAboveLists) registry.DeleteIfEmpty(kUser, key);
  return result;
}

}  // namespace declarium
