#include "record_names.h"

#include <algorithm>

#include "vb/name.h"

namespace declarium::win32_library {
namespace {

// An underscore at the end of a member line would continue it on the next one.
bool IsUsable(const std::string& name) {
  return vb::IsLegalName(name) && !name.ends_with('_');
}

// The typedef or tag that the record's name is made from.
std::string ChosenName(const Record& record) {
  const auto& names = record.typedefs;
  for (const std::string& plain : names)
    if (std::ranges::find(names, plain + "A") != names.end() && IsUsable(plain)) return plain;
  for (const std::string& name : names)
    if (IsUsable(name)) return name;
  return IsUsable(record.tag) ? record.tag : std::string();
}

}  // namespace

std::string RecordName(const Record& record) {
  std::string name = record.plain_name.empty() ? ChosenName(record) : record.plain_name;
  return name == "POINT" ? "POINTAPI" : name;
}

std::string HeaderName(const Record& record) {
  std::string name = ChosenName(record);
  if (std::ranges::find(record.typedefs, name) != record.typedefs.end()) return name;
  return (record.is_union ? "union " : "struct ") + name;
}

bool IsInterface(const Record& record) {
  if (record.tag.ends_with("Vtbl") || record.tag.ends_with("VTable")) return true;
  if (record.fields.size() == 1 && record.fields[0].name == "lpVtbl") return true;
  const auto is_function = [](const Field& field) {
    return field.type.kind == TypeKind::kPointer && field.type.target->kind == TypeKind::kFunction;
  };
  return record.fields.size() > 2 && record.fields[0].name == "QueryInterface" &&
         std::ranges::all_of(record.fields, is_function);
}

bool IsHandle(const Record& record) {
  return record.tag.ends_with("__");
}

bool IsWideInteger(const HeaderType& type) {
  return type.size == 8 && (type.IsNamed("LARGE_INTEGER") || type.IsNamed("ULARGE_INTEGER") ||
                            type.IsNamed("CY") || type.IsNamed("CURRENCY"));
}

}  // namespace declarium::win32_library
