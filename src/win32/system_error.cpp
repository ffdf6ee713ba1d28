#include "win32/system_error.h"

#include <string_view>

#include "win32/unique_handle.h"
#include "win32/wide.h"

namespace declarium::win32 {

std::u16string SystemErrorText(DWORD code) {
  UniqueHandle<wchar_t*, LocalFree> text;
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
      nullptr, code, 0, reinterpret_cast<wchar_t*>(text.Receive()), 0, nullptr);
  std::wstring_view sentence(text.Get(), length);
  sentence = sentence.substr(0, sentence.find_last_not_of(L"\r\n. ") + 1);
  return FromWide(sentence.empty() ? L"error " + std::to_wstring(code) : std::wstring(sentence));
}

}  // namespace declarium::win32
