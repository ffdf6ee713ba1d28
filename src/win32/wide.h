// The program's text and the system's: both are UTF-16, in strings of different types.
#pragma once

#include <string>
#include <string_view>

#include "win32/system.h"

namespace declarium::win32 {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

// The text itself, for functions that end at its NUL; valid as long as `text`.
[[nodiscard]] inline const wchar_t* Wide(const std::u16string& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
}

// The storage of `text`, for functions that fill it.
[[nodiscard]] inline wchar_t* WideBuffer(std::u16string& text) {
  return reinterpret_cast<wchar_t*>(text.data());
}

[[nodiscard]] inline std::wstring WideString(std::u16string_view text) {
  return {text.begin(), text.end()};
}

[[nodiscard]] inline std::u16string FromWide(std::wstring_view text) {
  return {text.begin(), text.end()};
}

[[nodiscard]] inline LPARAM TextParameter(const std::u16string& text) {
  return reinterpret_cast<LPARAM>(text.c_str());
}

[[nodiscard]] inline std::u16string WindowText(HWND window) {
  std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(window)), u'\0');
  const int size = GetWindowTextW(window, WideBuffer(text), static_cast<int>(text.size()) + 1);
  text.resize(static_cast<std::size_t>(size));
  return text;
}

}  // namespace declarium::win32
