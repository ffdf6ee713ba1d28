#include "check/c_type.h"

#include <algorithm>
#include <utility>

namespace declarium::check {
namespace {

// In the order of their bytes.
constexpr std::string_view kShorts[] = {
    "ATOM",   "BOOLEAN", "BYTE",  "Byte",   "CHAR",          "Int16",
    "LANGID", "SHORT",   "UCHAR", "UInt16", "USHORT",        "VARIANT_BOOL",
    "WCHAR",  "WORD",    "char",  "short",  "unsigned char", "unsigned short"};
constexpr std::string_view kNumbers[] = {
    "ACCESS_MASK", "CALID",    "CALTYPE",  "COLORREF", "DWORD", "HRESULT",      "INT",
    "INT32",       "Int32",    "LCID",     "LCTYPE",   "LONG",  "LONG32",       "MCIDEVICEID",
    "MCIERROR",    "MMRESULT", "NTSTATUS", "REGSAM",   "SCODE", "UINT",         "UINT32",
    "UInt32",      "ULONG",    "ULONG32",  "int",      "long",  "unsigned int", "unsigned long"};
constexpr std::string_view kHandles[] = {
    "HACCEL",    "HANDLE",       "HBITMAP",  "HBRUSH",     "HCONV",
    "HCURSOR",   "HDC",          "HDDEDATA", "HDESK",      "HDROP",
    "HDWP",      "HENHMETAFILE", "HFONT",    "HGDIOBJ",    "HGLOBAL",
    "HGLRC",     "HHOOK",        "HICON",    "HIMAGELIST", "HIMC",
    "HINSTANCE", "HINTERNET",    "HKEY",     "HKL",        "HLOCAL",
    "HMENU",     "HMETAFILE",    "HMIDIIN",  "HMIDIOUT",   "HMIXER",
    "HMODULE",   "HMONITOR",     "HPALETTE", "HPEN",       "HRGN",
    "HRSRC",     "HSZ",          "HTHEME",   "HTREEITEM",  "HWAVEIN",
    "HWAVEOUT",  "HWINSTA",      "HWND",     "SC_HANDLE",  "SERVICE_STATUS_HANDLE",
    "SOCKET"};
constexpr std::string_view kWides[] = {"DWORD_PTR", "INT_PTR", "LONG_PTR", "LPARAM",    "LRESULT",
                                       "SIZE_T",    "SSIZE_T", "UINT_PTR", "ULONG_PTR", "WPARAM"};
constexpr std::string_view kTexts[] = {"LPCSTR", "LPSTR", "PCHAR", "PCSTR", "PSTR"};
constexpr std::string_view kWideTexts[] = {"BSTR",   "LPCOLESTR", "LPCWSTR", "LPOLESTR",
                                           "LPWSTR", "PCWSTR",    "PWCHAR",  "PWSTR"};
constexpr std::string_view kAddresses[] = {"FARPROC",
                                           "PACL",
                                           "PBOOL",
                                           "PBYTE",
                                           "PDWORD",
                                           "PFILETIME",
                                           "PHANDLE",
                                           "PINT",
                                           "PLONG",
                                           "PLUID",
                                           "PSECURITY_DESCRIPTOR",
                                           "PSID",
                                           "PUCHAR",
                                           "PUINT",
                                           "PULONG",
                                           "PVOID",
                                           "PWORD",
                                           "REFCLSID",
                                           "REFGUID",
                                           "REFIID"};

template <std::size_t kCount>
bool IsOneOf(std::string_view name, const std::string_view (&names)[kCount]) {
  return std::ranges::find(names, name) != std::end(names);
}

std::string_view WithoutBlanks(std::string_view text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  while (text.ends_with(' ')) text.remove_suffix(1);
  return text;
}

std::string_view WithoutConst(std::string_view text) {
  text = WithoutBlanks(text);
  if (text.starts_with("const ")) text.remove_prefix(6);
  for (const std::string_view word : {"const", "restrict"}) {
    text = WithoutBlanks(text);
    if (text.ends_with(word) && text != word) text.remove_suffix(word.size());
  }
  return WithoutBlanks(text);
}

CType PointerTo(std::string_view target) {
  if (target == "CHAR" || target == "char") return CType::kText;
  if (target == "WCHAR" || target == "wchar_t" || target == "OLECHAR") return CType::kWideText;
  return CType::kAddress;
}

}  // namespace

CType CTypeOf(std::string_view c_type) {
  const auto name = WithoutConst(c_type);
  if (name.ends_with('*')) return PointerTo(WithoutConst(name.substr(0, name.size() - 1)));
  if (name == "BOOL") return CType::kBool;
  if (IsOneOf(name, kShorts)) return CType::kShort;
  if (IsOneOf(name, kNumbers)) return CType::kNumber;
  if (IsOneOf(name, kHandles)) return CType::kHandle;
  if (IsOneOf(name, kWides)) return CType::kWide;
  if (IsOneOf(name, kTexts)) return CType::kText;
  if (IsOneOf(name, kWideTexts)) return CType::kWideText;
  const bool is_long_pointer =
      name.size() > 3 && name.starts_with("LP") && name[2] >= 'A' && name[2] <= 'Z';
  const bool is_callback = name.size() > 4 && name.ends_with("PROC");
  if (is_long_pointer || is_callback || IsOneOf(name, kAddresses)) return CType::kAddress;
  return CType::kUnknown;
}

}  // namespace declarium::check
