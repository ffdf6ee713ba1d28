#include "text_records.h"

#include <algorithm>
#include <string>

namespace declarium::win32_library {
namespace {

bool IsAnsiRecord(const Record& record) {
  if (!record.plain_name.empty()) return true;
  const std::string& tag = record.tag;
  return std::ranges::any_of(record.typedefs, [&](const std::string& plain) {
    return std::ranges::find(record.typedefs, plain + "A") != record.typedefs.end() ||
           tag == plain + "A";
  });
}

bool GivesBack(const std::string& procedure) {
  if (procedure.starts_with("GetOpenFileName") || procedure.starts_with("GetSaveFileName"))
    return false;
  return procedure.find("Get") != std::string::npos ||
         procedure.find("Enum") != std::string::npos ||
         procedure.find("Query") != std::string::npos ||
         procedure.find("Read") != std::string::npos || procedure.find("Find") != std::string::npos;
}

}  // namespace

std::set<int> TextRecords(const Headers& headers) {
  std::set<int> taken;
  std::set<int> given_back;
  for (const Function& function : headers.functions) {
    for (const Parameter& parameter : function.parameters) {
      const HeaderType* target = parameter.type.target.get();
      if (parameter.type.kind != TypeKind::kPointer || target->kind != TypeKind::kRecord) continue;
      const bool from_ansi = function.name.ends_with("A");
      (from_ansi && !GivesBack(function.name) ? taken : given_back).insert(target->record);
    }
  }
  std::set<int> result;
  for (const int index : taken)
    if (!given_back.contains(index) && IsAnsiRecord(headers.records[index])) result.insert(index);
  return result;
}

}  // namespace declarium::win32_library
