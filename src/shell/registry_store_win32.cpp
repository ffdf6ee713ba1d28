#include <utility>
#include <windows.h>

#include "shell/registry_store.h"

namespace declarium {

namespace {

// Owns a registry key; null when it could not be opened.
class OpenKey {
 public:
  OpenKey(std::u16string_view path, REGSAM access) {
    const std::wstring wide(path.begin(), path.end());
    if (::RegOpenKeyExW(HKEY_CURRENT_USER, wide.c_str(), 0, access, &key_) != ERROR_SUCCESS) {
      key_ = nullptr;
    }
  }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;
  ~OpenKey() {
    if (key_) ::RegCloseKey(key_);
  }

  [[nodiscard]] HKEY Get() const { return key_; }

 private:
  HKEY key_ = nullptr;
};

}  // namespace

bool RegistryStore::CreateKey(std::u16string_view key) {
  const std::wstring wide(key.begin(), key.end());
  HKEY created = nullptr;
  if (::RegCreateKeyExW(HKEY_CURRENT_USER, wide.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                        &created, nullptr) != ERROR_SUCCESS) {
    return false;
  }
  ::RegCloseKey(created);
  return true;
}

std::optional<SettingsStore::StoredValue> RegistryStore::Read(std::u16string_view key,
                                                              std::u16string_view name) const {
  const OpenKey open(key, KEY_QUERY_VALUE);
  if (!open.Get()) return std::nullopt;
  const std::wstring wide(name.begin(), name.end());
  // Another process may make the value longer between the question for its size and the reading.
  DWORD type = 0;
  DWORD size = 0;
  std::string bytes;
  LSTATUS status = ::RegQueryValueExW(open.Get(), wide.c_str(), nullptr, &type, nullptr, &size);
  while (status == ERROR_SUCCESS || status == ERROR_MORE_DATA) {
    bytes.resize(size);
    status = ::RegQueryValueExW(open.Get(), wide.c_str(), nullptr, &type,
                                reinterpret_cast<BYTE*>(bytes.data()), &size);
    if (status == ERROR_SUCCESS && size <= bytes.size()) {
      bytes.resize(size);
      return StoredValue{type, std::move(bytes)};
    }
  }
  return std::nullopt;
}

bool RegistryStore::Write(std::u16string_view key, std::u16string_view name,
                          const StoredValue& value) {
  const OpenKey open(key, KEY_SET_VALUE);
  if (!open.Get()) return false;
  const std::wstring wide(name.begin(), name.end());
  return ::RegSetValueExW(open.Get(), wide.c_str(), 0, value.type,
                          reinterpret_cast<const BYTE*>(value.bytes.data()),
                          static_cast<DWORD>(value.bytes.size())) == ERROR_SUCCESS;
}

}  // namespace declarium
