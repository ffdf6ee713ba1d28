#include "cli/parsed_json.h"

#include <nlohmann/json.hpp>

#include "text/text.h"

namespace declarium::cli {
namespace {

using nlohmann::ordered_json;

ordered_json PlacedObject(const std::string& source, const vb::Place& place) {
  return {{"source", source}, {"line", place.line}, {"column", place.column}};
}

ordered_json ValueOf(const vb::Value& value) {
  switch (value.type) {
    case vb::Value::Type::kString:
      return ToUtf8(value.text);
    case vb::Value::Type::kDouble:
      return value.real;
    default:
      return value.whole;
  }
}

// The type that a constant without one takes from its value.
const char* TypeOf(const vb::Value& value) {
  switch (value.type) {
    case vb::Value::Type::kInteger:
      return "Integer";
    case vb::Value::Type::kLong:
      return "Long";
    case vb::Value::Type::kLongLong:
      return "LongLong";
    case vb::Value::Type::kDouble:
      return "Double";
    case vb::Value::Type::kString:
      return "String";
  }
  return "";
}

void AddConstant(const vb::Constant& constant, vb::Definitions& definitions, ordered_json& object) {
  const auto value = definitions.ValueOf(constant);
  object["type"] = ToUtf8(constant.type.Text());
  if (!value) return;
  if (constant.type.name.empty()) object["type"] = TypeOf(*value);
  object["value"] = ValueOf(*value);
}

ordered_json ParameterObject(const vb::Parameter& parameter, vb::Target target) {
  const bool by_value = parameter.passing == vb::Passing::kByValue;
  const bool is_array = parameter.is_array || parameter.is_param_array;
  return {{"name", ToUtf8(parameter.name)},
          {"passing", by_value ? "ByVal" : "ByRef"},
          {"type", ToUtf8(parameter.type.Text()) + (is_array ? "()" : "")},
          {"bytes", vb::ArgumentBytes(parameter, target)},
          {"optional", parameter.is_optional}};
}

void AddExternal(std::u16string_view name, const vb::External& external, vb::Target target,
                 ordered_json& object) {
  object["lib"] = ToUtf8(external.library);
  object["entry"] = ToUtf8(external.EntryOr(name));
  object["ptrsafe"] = external.is_ptr_safe;
  object["result"] = ToUtf8(external.result.Text()) + (external.result.is_array ? "()" : "");
  object["params"] = ordered_json::array();
  for (const auto& parameter : external.parameters)
    object["params"].push_back(ParameterObject(parameter, target));
}

void AddRecord(const vb::Record& record, vb::Definitions& definitions, ordered_json& object) {
  const auto layout = definitions.LayoutOf(record);
  if (layout) object["size"] = layout->extent.size;
  object["members"] = ordered_json::array();
  for (std::size_t i = 0; i < record.members.size(); ++i) {
    const auto& member = record.members[i];
    ordered_json parsed = {{"name", ToUtf8(member.name)}, {"type", ToUtf8(member.type.Text())}};
    if (layout) {
      const auto& place = layout->places[i];
      if (place.count) parsed["count"] = *place.count;
      parsed["offset"] = place.offset;
      parsed["size"] = place.size;
      if (place.fixed_length) parsed["length"] = *place.fixed_length;
    }
    object["members"].push_back(std::move(parsed));
  }
}

void AddEnumeration(const vb::Enumeration& enumeration, vb::Definitions& definitions,
                    ordered_json& object) {
  object["members"] = ordered_json::array();
  for (const auto& member : enumeration.members) {
    ordered_json parsed = {{"name", ToUtf8(member.name)}};
    if (const auto value = definitions.ValueOf(member.name)) parsed["value"] = ValueOf(*value);
    object["members"].push_back(std::move(parsed));
  }
}

const char* ProcedureWord(vb::Procedure::Kind kind) {
  switch (kind) {
    case vb::Procedure::Kind::kSub:
      return "Sub";
    case vb::Procedure::Kind::kFunction:
      return "Function";
    case vb::Procedure::Kind::kPropertyGet:
      return "Property Get";
    case vb::Procedure::Kind::kPropertyLet:
      return "Property Let";
    case vb::Procedure::Kind::kPropertySet:
      return "Property Set";
  }
  return "";
}

}  // namespace

const char* DeclarationWord(const vb::Declaration& declaration) {
  if (declaration.As<vb::Constant>() != nullptr) return "const";
  if (declaration.As<vb::External>() != nullptr) return "declare";
  return declaration.As<vb::Record>() != nullptr ? "type" : "enum";
}

const char* ScopeWord(vb::Scope scope) {
  switch (scope) {
    case vb::Scope::kPublic:
      return "Public";
    case vb::Scope::kPrivate:
      return "Private";
    case vb::Scope::kLocal:
      return "Local";
  }
  return "";
}

ordered_json DeclarationObject(const std::string& source, const vb::Module& module,
                               const vb::Declaration& declaration, vb::Definitions& definitions) {
  auto object = PlacedObject(source, declaration.place);
  object["kind"] = DeclarationWord(declaration);
  object["name"] = ToUtf8(declaration.name);
  object["scope"] = ScopeWord(declaration.scope);
  object["condition"] = ToUtf8(module.conditions[declaration.condition].text);
  object["text"] = ToUtf8(declaration.text);
  if (const auto* const constant = declaration.As<vb::Constant>())
    AddConstant(*constant, definitions, object);
  if (const auto* const external = declaration.As<vb::External>())
    AddExternal(declaration.name, *external, definitions.TargetSystem(), object);
  if (const auto* const record = declaration.As<vb::Record>())
    AddRecord(*record, definitions, object);
  if (const auto* const enumeration = declaration.As<vb::Enumeration>())
    AddEnumeration(*enumeration, definitions, object);
  return object;
}

ordered_json ErrorObject(const std::string& source, const vb::SyntaxError& error) {
  auto object = PlacedObject(source, error.place);
  object["kind"] = "error";
  object["expected"] = error.expected;
  object["found"] = ToUtf8(error.found);
  return object;
}

ordered_json ModuleObject(const std::string& source, const vb::Module& module) {
  ordered_json object = {{"source", source},
                         {"kind", "module"},
                         {"name", ToUtf8(module.Name())},
                         {"module", vb::ModuleKindText(module.kind)},
                         {"lines", module.lines},
                         {"declarations_end", module.declarations_end}};
  object["options"] = ordered_json::array();
  for (const auto& option : module.options) object["options"].push_back(ToUtf8(option.text));
  object["attributes"] = ordered_json::object();
  for (const auto& attribute : module.attributes)
    object["attributes"][ToUtf8(attribute.name)] = ToUtf8(attribute.value);
  object["procedures"] = ordered_json::array();
  for (const auto& procedure : module.procedures) {
    object["procedures"].push_back({{"kind", ProcedureWord(procedure.kind)},
                                    {"name", ToUtf8(procedure.name)},
                                    {"scope", ScopeWord(procedure.scope)},
                                    {"line", procedure.place.line},
                                    {"end", procedure.end_line}});
  }
  return object;
}

ordered_json ProjectObject(const std::string& source, const vb::Project& project) {
  ordered_json object = {{"source", source}, {"kind", "project"}, {"name", ToUtf8(project.name)}};
  object["constants"] = ordered_json::object();
  for (const auto& constant : project.constants)
    object["constants"][ToUtf8(constant.name)] = ToUtf8(constant.value);
  object["references"] = ordered_json::array();
  for (const auto& reference : project.references) {
    object["references"].push_back({{"line", reference.place.line},
                                    {"id", ToUtf8(reference.id)},
                                    {"path", ToUtf8(reference.path)},
                                    {"description", ToUtf8(reference.description)}});
  }
  return object;
}

ordered_json UseObject(const std::string& source, const vb::NameUse& use) {
  auto object = PlacedObject(source, use.place);
  object["kind"] = "use";
  object["name"] = ToUtf8(use.name);
  return object;
}

}  // namespace declarium::cli
