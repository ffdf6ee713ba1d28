#include "host/com/registry_win32.h"

#include <array>
#include <windows.h>

#include "host/com/automation.h"

namespace declarium::com {
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

class OpenedKey {
 public:
  OpenedKey(RegistryRoot root, std::u16string_view key, REGSAM access)
      : status_(RegOpenKeyExW(RootKey(root), Wide(key).c_str(), 0, access, &key_)) {}
  OpenedKey(const OpenedKey&) = delete;
  OpenedKey& operator=(const OpenedKey&) = delete;
  ~OpenedKey() {
    if (status_ == ERROR_SUCCESS) RegCloseKey(key_);
  }
  explicit operator bool() const noexcept { return status_ == ERROR_SUCCESS; }
  [[nodiscard]] HKEY get() const noexcept { return key_; }

 private:
  HKEY key_ = nullptr;
  LSTATUS status_;
};

std::optional<RegistryData> ReadText(HKEY key, const std::wstring& name) {
  DWORD bytes = 0;
  if (RegGetValueW(key, nullptr, name.c_str(), RRF_RT_REG_SZ, nullptr, nullptr, &bytes) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::wstring text(bytes / sizeof(wchar_t), L'\0');
  if (RegGetValueW(key, nullptr, name.c_str(), RRF_RT_REG_SZ, nullptr, text.data(), &bytes) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  text.resize(bytes / sizeof(wchar_t));
  while (!text.empty() && text.back() == L'\0') text.pop_back();
  return Narrow16(text);
}

std::expected<void, RegistryError> Outcome(RegistryRoot root, std::u16string_view key,
                                           LSTATUS status) {
  if (status == ERROR_SUCCESS) return {};
  return std::unexpected(
      RegistryError{root, std::u16string(key), static_cast<std::uint32_t>(status)});
}

LSTATUS SetValue(HKEY key, std::u16string_view name, const RegistryData& data) {
  const std::wstring wide_name = Wide(name);
  if (const auto* number = std::get_if<std::uint32_t>(&data)) {
    return RegSetValueExW(key, wide_name.c_str(), 0, REG_DWORD,
                          reinterpret_cast<const BYTE*>(number), sizeof *number);
  }
  const std::wstring text = Wide(std::get<std::u16string>(data));
  return RegSetValueExW(key, wide_name.c_str(), 0, REG_SZ,
                        reinterpret_cast<const BYTE*>(text.c_str()),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

class WindowsRegistry final : public Registry {
 public:
  std::optional<RegistryData> Read(RegistryRoot root, std::u16string_view key,
                                   std::u16string_view name, RegistryView view) const override {
    const OpenedKey opened(root, key, KEY_QUERY_VALUE | ViewFlag(view));
    if (!opened) return std::nullopt;
    const std::wstring wide_name = Wide(name);
    DWORD number = 0;
    DWORD bytes = sizeof number;
    if (RegGetValueW(opened.get(), nullptr, wide_name.c_str(), RRF_RT_REG_DWORD, nullptr, &number,
                     &bytes) == ERROR_SUCCESS) {
      return std::uint32_t{number};
    }
    return ReadText(opened.get(), wide_name);
  }

  std::vector<std::u16string> SubKeys(RegistryRoot root, std::u16string_view key) const override {
    std::vector<std::u16string> names;
    const OpenedKey opened(root, key, KEY_ENUMERATE_SUB_KEYS);
    if (!opened) return names;
    std::array<wchar_t, 256> name{};
    for (DWORD i = 0;; ++i) {
      auto length = static_cast<DWORD>(name.size());
      if (RegEnumKeyExW(opened.get(), i, name.data(), &length, nullptr, nullptr, nullptr,
                        nullptr) != ERROR_SUCCESS) {
        return names;
      }
      names.push_back(Narrow16(std::wstring_view(name.data(), length)));
    }
  }

  std::expected<void, RegistryError> Write(RegistryRoot root, std::u16string_view key,
                                           std::u16string_view name,
                                           const RegistryData& data) override {
    HKEY created = nullptr;
    LSTATUS status = RegCreateKeyExW(RootKey(root), Wide(key).c_str(), 0, nullptr, 0, KEY_SET_VALUE,
                                     nullptr, &created, nullptr);
    if (status == ERROR_SUCCESS) {
      status = SetValue(created, name, data);
      RegCloseKey(created);
    }
    return Outcome(root, key, status);
  }

  std::expected<void, RegistryError> DeleteTree(RegistryRoot root,
                                                std::u16string_view key) override {
    const LSTATUS status = RegDeleteTreeW(RootKey(root), Wide(key).c_str());
    return Outcome(root, key, status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status);
  }

  void DeleteIfEmpty(RegistryRoot root, std::u16string_view key) override {
    DWORD keys = 1;
    DWORD values = 1;
    {
      const OpenedKey opened(root, key, KEY_QUERY_VALUE);
      if (!opened ||
          RegQueryInfoKeyW(opened.get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr,
                           &values, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
        return;
      }
    }
    if (keys == 0 && values == 0) RegDeleteKeyW(RootKey(root), Wide(key).c_str());
  }
};

}  // namespace

std::unique_ptr<Registry> SystemRegistry() {
  return std::make_unique<WindowsRegistry>();
}

}  // namespace declarium::com
