#include "parameter_rules.h"

#include <algorithm>
#include <array>
#include <map>
#include <span>

#include "parameter_names.h"
#include "record_names.h"
#include "vb/name.h"

namespace declarium::win32_library {
namespace {

struct NamedParameter {
  std::string_view procedure;  // without A or W
  std::string_view parameter;  // lower case
};

// Messages carry numbers, texts and records; names of resources may be numbers.
constexpr std::array<NamedParameter, 21> kAnything = {{
    {"SendMessage", "lparam"},
    {"SendMessageTimeout", "lparam"},
    {"SendMessageCallback", "lparam"},
    {"SendNotifyMessage", "lparam"},
    {"SendDlgItemMessage", "lparam"},
    {"PostMessage", "lparam"},
    {"PostThreadMessage", "lparam"},
    {"LoadBitmap", "lpbitmapname"},
    {"LoadImage", "name"},
    {"LoadMenu", "lpmenuname"},
    {"LoadAccelerators", "lptablename"},
    {"FindResource", "lpname"},
    {"FindResource", "lptype"},
    {"FindResourceEx", "lpname"},
    {"FindResourceEx", "lptype"},
    {"CreateDialogParam", "lptemplatename"},
    {"DialogBoxParam", "lptemplatename"},
    {"EnumResourceNames", "lptype"},
    {"EnumResourceLanguages", "lptype"},
    {"EnumResourceLanguages", "lpname"},
    {"UpdateResource", "lptype"},
}};

// The system's own cursors and icons are asked for by number, and lengths of texts at an address.
constexpr std::array<NamedParameter, 3> kAddresses = {{
    {"LoadCursor", "lpcursorname"},
    {"LoadIcon", "lpiconname"},
    {"lstrlen", "lpstring"},
}};

bool IsProcedure(const std::string& name, std::string_view plain) {
  if (!name.starts_with(plain)) return false;
  const std::string_view ending = std::string_view(name).substr(plain.size());
  return ending.empty() || ending == "A" || ending == "W";
}

bool IsNamed(std::span<const NamedParameter> list, const Function& function,
             const std::string& lower_name) {
  return std::ranges::any_of(list, [&](const NamedParameter& named) {
    return lower_name == named.parameter && IsProcedure(function.name, named.procedure);
  });
}

bool Frees(const std::string& procedure) {
  return procedure.find("Free") != std::string::npos || procedure.starts_with("free") ||
         procedure.find("Unmap") != std::string::npos;
}

bool IsUntypedOrText(const HeaderType& target) {
  return target.kind == TypeKind::kVoid || target.IsNamed("BYTE") || target.IsText() ||
         target.IsWideText();
}

}  // namespace

std::string FamiliarCase(const std::string& name) {
  static const std::map<std::string, std::string> spellings = [] {
    std::map<std::string, std::string> result;
    for (const char* spelling :
         {"hWnd",     "hDC",     "Left",    "Top",    "Right",  "Bottom",     "Width",
          "Height",   "Name",    "Value",   "Index",  "Count",  "Key",        "Item",
          "Text",     "Caption", "Tag",     "Font",   "Color",  "Data",       "Flags",
          "Size",     "Length",  "Path",    "Parent", "Handle", "Number",     "Source",
          "Message",  "Style",   "State",   "Mode",   "Format", "Title",      "Action",
          "Enabled",  "Visible", "Picture", "Image",  "Icon",   "X",          "Y",
          "Button",   "Shift",   "Cancel",  "Result", "Buffer", "Position",   "Start",
          "Status",   "Version", "Level",   "Code",   "Keys",   "Attributes", "Description",
          "FileName", "Filter",  "Row",     "Column", "Form",   "Control",    "Copies"})
      result.emplace(vb::Lower(spelling), spelling);
    return result;
  }();
  const auto found = spellings.find(vb::Lower(name));
  return found == spellings.end() ? name : found->second;
}

ParameterRules::ParameterRules(const Headers& headers, const Metadata& metadata)
    : headers_(headers), metadata_(metadata) {
  for (const Function& function : headers.functions) {
    if (function.result.kind == TypeKind::kPointer &&
        function.result.target->kind == TypeKind::kRecord)
      returned_.insert(function.result.target->record);
    for (const Parameter& parameter : function.parameters) {
      const HeaderType* target = parameter.type.target.get();
      if (target != nullptr && target->kind == TypeKind::kPointer &&
          target->target->kind == TypeKind::kRecord)
        given_back_.insert(target->target->record);
    }
  }
}

const MetaValue* ParameterRules::FactsOf(const Function& function, std::size_t index) const {
  const MetaFunction* facts = metadata_.FindFunction(function.name);
  if (facts == nullptr || facts->parameters.size() != function.parameters.size()) return nullptr;
  return &facts->parameters[index];
}

bool ParameterRules::IsHandedOn(const HeaderType& target, bool freeing) const {
  if (target.kind != TypeKind::kRecord) return false;
  return returned_.contains(target.record) || (freeing && given_back_.contains(target.record));
}

bool ParameterRules::IsRecordOrNumber(const HeaderType& target) const {
  if (target.IsText() || target.IsWideText()) return false;
  if (target.kind != TypeKind::kRecord)
    return target.kind == TypeKind::kInteger || target.kind == TypeKind::kReal ||
           target.kind == TypeKind::kPointer;
  const Record& record = headers_.records[target.record];
  return record.is_complete && !IsInterface(record) && !IsHandle(record) &&
         record.tag != "tagVARIANT";
}

Passed ParameterRules::Of(const Function& function, std::size_t index) const {
  const HeaderType& type = function.parameters[index].type;
  const bool pointer = type.kind == TypeKind::kPointer;
  const std::string name = vb::Lower(NameOf(function, index));
  if (IsNamed(kAnything, function, name) && !(pointer && type.target->IsWideText()))
    return Passed::kAsAnything;
  if (IsNamed(kAddresses, function, name)) return Passed::kAsAddress;
  if (!pointer) return Passed::kAsDeclared;
  const MetaValue* facts = FactsOf(function, index);
  const HeaderType& target = *type.target;
  if (facts != nullptr && facts->Has("reserved")) return Passed::kAsAddress;
  if (type.IsNamed("RPC_CSTR")) return Passed::kAsText;
  const bool freeing = Frees(function.name);
  if (freeing && IsUntypedOrText(target)) return Passed::kAsAddress;
  if (IsHandedOn(target, freeing)) return Passed::kAsAddress;
  if (facts != nullptr && facts->Has("optional") && IsRecordOrNumber(target))
    return Passed::kAsAnything;
  return Passed::kAsDeclared;
}

std::string ParameterRules::NameOf(const Function& function, std::size_t index) const {
  std::string name = function.parameters[index].name;
  const MetaValue* facts = name.empty() ? FactsOf(function, index) : nullptr;
  if (facts != nullptr) name = facts->name;
  if (name.empty() || IsPlaceholder(name)) {
    const std::string by_type = NameByType(function.parameters[index].type, headers_);
    if (!by_type.empty()) name = by_type;
  }
  return FamiliarCase(name);
}

}  // namespace declarium::win32_library
