#include "parameter_names.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "record_names.h"
#include "vb/name.h"

namespace declarium::win32_library {
namespace {

// Types of all sorts of values.
constexpr std::array<std::string_view, 44> kPlainTypes = {
    "ATOM",    "BOOL",     "BOOLEAN",   "BYTE",     "CHAR",   "DOUBLE",   "DWORD",    "DWORD32",
    "FLOAT",   "GLdouble", "GLenum",    "GLfloat",  "GLint",  "GLsizei",  "GLuint",   "HANDLE",
    "INT",     "INT32",    "INT64",     "LONG",     "LPARAM", "LRESULT",  "OLECHAR",  "PVOID",
    "REAL",    "SHORT",    "SIZE_T",    "UCHAR",    "UINT",   "UINT32",   "ULONG",    "ULONGLONG",
    "USHORT",  "VOID",     "WCHAR",     "WORD",     "WPARAM", "LONG_PTR", "UINT_PTR", "ULONG_PTR",
    "INT_PTR", "LPVOID",   "DWORDLONG", "DWORD_PTR"};

bool IsUpper(char c) {
  return c >= 'A' && c <= 'Z';
}
bool IsLower(char c) {
  return c >= 'a' && c <= 'z';
}

bool IsShouted(std::string_view name) {
  return std::ranges::none_of(name, IsLower);
}

// "Logfont" of LOGFONT, "CustomLineCap" of CustomLineCap.
std::string Capitalized(std::string_view name) {
  std::string result = IsShouted(name) ? vb::Lower(name) : std::string(name);
  if (!result.empty() && IsLower(result.front()))
    result.front() = static_cast<char>(result.front() - 'a' + 'A');
  return result;
}

// "graphics" of Graphics.
std::string Uncapitalized(std::string_view name) {
  std::string result = Capitalized(name);
  if (!result.empty() && IsUpper(result.front()))
    result.front() = static_cast<char>(result.front() - 'A' + 'a');
  return result;
}

// The name of a class of GDI+ behind its prefix.
std::string_view WithoutPrefix(std::string_view name) {
  return name.starts_with("Gp") && name.size() > 2 && IsUpper(name[2]) ? name.substr(2) : name;
}

bool IsHandle(std::string_view name) {
  return name.size() > 2 && name.front() == 'H' && IsShouted(name) && name != "HRESULT";
}

bool IsTextUnit(const HeaderType& target) {
  return target.kind == TypeKind::kInteger &&
         (target.IsNamed("CHAR") || target.IsNamed("WCHAR") || target.IsNamed("OLECHAR") ||
          (target.size == 1 && target.is_signed));
}

// The name of the record without the A of an ANSI one, which the library leaves out too.
std::string RecordWord(const Record& record) {
  std::string name = RecordName(record);
  const bool is_ansi = name.size() > 2 && name.ends_with('A') && IsShouted(name);
  if (is_ansi) name.pop_back();
  return name;
}

std::string NameOfAddress(const HeaderType& target, const Headers& headers) {
  if (IsTextUnit(target)) return "lpsz";
  if (target.kind == TypeKind::kRecord) {
    const std::string word = RecordWord(headers.records[target.record]);
    return word.empty() ? "" : "lp" + Capitalized(WithoutPrefix(word));
  }
  const std::string inner = NameByType(target, headers);
  return inner.empty() || inner.starts_with("lp") ? inner : "lp" + Capitalized(inner);
}

}  // namespace

bool IsPlaceholder(const std::string& name) {
  return name.starts_with("param") && name.size() > 5 &&
         name.find_first_not_of("0123456789", 5) == std::string::npos;
}

std::string NameByType(const HeaderType& type, const Headers& headers) {
  if (!type.names.empty() && IsHandle(type.names.front()))
    return "h" + Capitalized(type.names.front().substr(1));
  if (type.kind == TypeKind::kPointer) return NameOfAddress(*type.target, headers);
  if (type.names.empty() || std::ranges::find(kPlainTypes, type.names.front()) != kPlainTypes.end())
    return "";
  return Uncapitalized(WithoutPrefix(type.names.front()));
}

}  // namespace declarium::win32_library
