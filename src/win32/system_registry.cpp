#include "win32/system_registry.h"

#include <array>
#include <utility>

#include "win32/unique_handle.h"
#include "win32/wide.h"

namespace declarium::win32 {

namespace {

HKEY RootKey(RegistryRoot root) {
  switch (root) {
    case RegistryRoot::kCurrentUser:
      return HKEY_CURRENT_USER;
    case RegistryRoot::kLocalMachine:
      return HKEY_LOCAL_MACHINE;
    case RegistryRoot::kUsers:
      break;
  }
  return HKEY_USERS;
}

REGSAM ViewFlag(RegistryView view) {
  switch (view) {
    case RegistryView::kOwn:
      return 0;
    case RegistryView::k32Bit:
      return KEY_WOW64_32KEY;
    case RegistryView::k64Bit:
      break;
  }
  return KEY_WOW64_64KEY;
}

// None when the key cannot be opened.
UniqueRegistryKey Open(RegistryRoot root, std::u16string_view key, REGSAM access) {
  HKEY opened = nullptr;
  const LSTATUS status = RegOpenKeyExW(RootKey(root), WideString(key).c_str(), 0, access, &opened);
  return UniqueRegistryKey(status == ERROR_SUCCESS ? opened : nullptr);
}

LSTATUS Create(RegistryRoot root, std::u16string_view key, RegistryView view,
               UniqueRegistryKey& created) {
  return RegCreateKeyExW(RootKey(root), WideString(key).c_str(), 0, nullptr, 0,
                         KEY_SET_VALUE | ViewFlag(view), nullptr, created.Receive(), nullptr);
}

LSTATUS DeleteKey(RegistryRoot root, std::u16string_view key, RegistryView view) {
  const std::wstring name = WideString(key);
  if (view == RegistryView::kOwn) return RegDeleteKeyW(RootKey(root), name.c_str());
  return RegDeleteKeyExW(RootKey(root), name.c_str(), ViewFlag(view), 0);
}

// With everything below it.
LSTATUS DeleteTreeIn(RegistryRoot root, std::u16string_view key, RegistryView view) {
  constexpr REGSAM kAll = DELETE | KEY_ENUMERATE_SUB_KEYS | KEY_QUERY_VALUE | KEY_SET_VALUE;
  UniqueRegistryKey opened;
  LSTATUS status = RegOpenKeyExW(RootKey(root), WideString(key).c_str(), 0, kAll | ViewFlag(view),
                                 opened.Receive());
  if (status == ERROR_SUCCESS) status = RegDeleteTreeW(opened.Get(), nullptr);
  opened.Reset();
  return status == ERROR_SUCCESS ? DeleteKey(root, key, view) : status;
}

std::expected<void, RegistryError> Outcome(RegistryRoot root, std::u16string_view key,
                                           LSTATUS status) {
  if (status == ERROR_SUCCESS) return {};
  return std::unexpected(
      RegistryError{root, std::u16string(key), static_cast<std::uint32_t>(status)});
}

}  // namespace

std::optional<RegistryValue> SystemRegistry::Read(RegistryRoot root, std::u16string_view key,
                                                  std::u16string_view name,
                                                  RegistryView view) const {
  const auto opened = Open(root, key, KEY_QUERY_VALUE | ViewFlag(view));
  if (!opened) return std::nullopt;
  const std::wstring wide_name = WideString(name);
  const auto query = [&](BYTE* bytes, DWORD& type, DWORD& size) {
    return RegQueryValueExW(opened.Get(), wide_name.c_str(), nullptr, &type, bytes, &size);
  };
  // Another process may make the value longer between the question for its size and the reading.
  DWORD type = 0;
  DWORD size = 0;
  std::string bytes;
  LSTATUS status = query(nullptr, type, size);
  while (status == ERROR_SUCCESS || status == ERROR_MORE_DATA) {
    bytes.resize(size);
    status = query(reinterpret_cast<BYTE*>(bytes.data()), type, size);
    if (status == ERROR_SUCCESS && size <= bytes.size()) {
      bytes.resize(size);
      return RegistryValue{type, std::move(bytes)};
    }
  }
  return std::nullopt;
}

std::vector<std::u16string> SystemRegistry::SubKeys(RegistryRoot root,
                                                    std::u16string_view key) const {
  std::vector<std::u16string> names;
  const auto opened = Open(root, key, KEY_ENUMERATE_SUB_KEYS);
  if (!opened) return names;
  std::array<wchar_t, 256> name{};
  for (DWORD i = 0;; ++i) {
    auto length = static_cast<DWORD>(name.size());
    if (RegEnumKeyExW(opened.Get(), i, name.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
        ERROR_SUCCESS) {
      return names;
    }
    names.push_back(FromWide({name.data(), length}));
  }
}

std::u16string SystemRegistry::Expand(std::u16string_view text) const {
  const std::u16string source(text);
  std::u16string expanded(ExpandEnvironmentStringsW(Wide(source), nullptr, 0), u'\0');
  const DWORD size = ExpandEnvironmentStringsW(Wide(source), WideBuffer(expanded),
                                               static_cast<DWORD>(expanded.size()));
  if (size == 0 || size > expanded.size()) return source;
  expanded.resize(size - 1);
  return expanded;
}

std::expected<void, RegistryError> SystemRegistry::CreateKey(RegistryRoot root,
                                                             std::u16string_view key) {
  UniqueRegistryKey created;
  return Outcome(root, key, Create(root, key, RegistryView::kOwn, created));
}

std::expected<void, RegistryError> SystemRegistry::Write(RegistryRoot root, std::u16string_view key,
                                                         std::u16string_view name,
                                                         const RegistryValue& value,
                                                         RegistryView view) {
  UniqueRegistryKey created;
  LSTATUS status = Create(root, key, view, created);
  if (status == ERROR_SUCCESS) {
    status = RegSetValueExW(created.Get(), WideString(name).c_str(), 0, value.type,
                            reinterpret_cast<const BYTE*>(value.bytes.data()),
                            static_cast<DWORD>(value.bytes.size()));
  }
  return Outcome(root, key, status);
}

std::expected<void, RegistryError> SystemRegistry::DeleteTree(RegistryRoot root,
                                                              std::u16string_view key,
                                                              RegistryView view) {
  const LSTATUS status = DeleteTreeIn(root, key, view);
  return Outcome(root, key, status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status);
}

void SystemRegistry::DeleteIfEmpty(RegistryRoot root, std::u16string_view key, RegistryView view) {
  DWORD keys = 1;
  DWORD values = 1;
  auto opened = Open(root, key, KEY_QUERY_VALUE | ViewFlag(view));
  if (!opened || RegQueryInfoKeyW(opened.Get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr,
                                  &values, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
    return;
  }
  opened.Reset();
  if (keys == 0 && values == 0) DeleteKey(root, key, view);
}

}  // namespace declarium::win32
