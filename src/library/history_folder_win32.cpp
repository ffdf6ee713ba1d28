#include <optional>
#include <string>

#include "library/history_folder.h"
#include "win32/system.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;

std::optional<std::wstring> Variable(const wchar_t* name) {
  std::wstring value(::GetEnvironmentVariableW(name, nullptr, 0), L'\0');
  if (value.empty()) return std::nullopt;
  value.resize(::GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
  return value;
}

std::optional<std::wstring> Setting() {
  constexpr auto kKey = L"Software\\Brindlework\\Declarium 3.0";
  constexpr auto kName = L"HistoryFolder";
  DWORD bytes = 0;
  if (::RegGetValueW(HKEY_CURRENT_USER, kKey, kName, RRF_RT_REG_SZ, nullptr, nullptr, &bytes) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::wstring value(bytes / sizeof(wchar_t), L'\0');
  if (::RegGetValueW(HKEY_CURRENT_USER, kKey, kName, RRF_RT_REG_SZ, nullptr, value.data(),
                     &bytes) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  value.resize(value.find(L'\0') == value.npos ? value.size() : value.find(L'\0'));
  return value;
}

}  // namespace

fs::path HistoryFolder() {
  auto chosen = Variable(L"DECLARIUM_HISTORY");
  if (!chosen) chosen = Setting();
  if (chosen) {
    std::error_code failed;
    return chosen->empty() || *chosen == L"none" ? fs::path() : fs::absolute(*chosen, failed);
  }
  const auto local = Variable(L"LOCALAPPDATA");
  return local ? fs::path(*local) / "Declarium" / "History" : fs::path();
}

}  // namespace declarium
