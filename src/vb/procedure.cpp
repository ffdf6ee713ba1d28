#include "vb/procedure.h"

#include "vb/name.h"

namespace declarium::vb {
namespace {

using Failure = std::unexpected<std::string>;

// Takes `beginning` off the front of `text`; false and unchanged when it does not stand there.
bool Take(std::string_view& text, std::string_view beginning) {
  if (!text.starts_with(beginning)) return false;
  text.remove_prefix(beginning.size());
  return true;
}

// Takes a text in quotes off the front.
bool TakeQuoted(std::string_view& text, std::string& content) {
  if (!Take(text, "\"")) return false;
  const std::size_t end = text.find('"');
  if (end == std::string_view::npos || end == 0) return false;
  content = text.substr(0, end);
  text.remove_prefix(end + 1);
  return true;
}

std::expected<ProcedureParameter, std::string> ParseParameter(std::string_view text) {
  const std::string shown = "\"" + std::string(text) + "\"";
  ProcedureParameter parameter;
  if (Take(text, "ByVal "))
    parameter.passing = Passing::kByValue;
  else
    Take(text, "ByRef ");
  const std::size_t as = text.find(" As ");
  if (as == std::string_view::npos) return Failure(shown + " has no type");
  parameter.name = text.substr(0, as);
  parameter.type_name = text.substr(as + 4);
  if (!IsLegalName(parameter.name)) return Failure(shown + " has no legal name");
  if (!IsLegalName(parameter.type_name) && !IsReservedWord(parameter.type_name))
    return Failure(shown + " has no legal type");
  return parameter;
}

std::expected<std::vector<ProcedureParameter>, std::string> ParseParameters(std::string_view text) {
  std::vector<ProcedureParameter> parameters;
  while (!text.empty()) {
    const std::size_t comma = text.find(", ");
    auto parameter = ParseParameter(text.substr(0, comma));
    if (!parameter) return Failure(parameter.error());
    parameters.push_back(std::move(*parameter));
    text = comma == std::string_view::npos ? std::string_view() : text.substr(comma + 2);
  }
  return parameters;
}

}  // namespace

long Procedure::ArgumentBytes() const {
  long bytes = 0;
  for (const ProcedureParameter& parameter : parameters) {
    const std::string type = Lower(parameter.type_name);
    const bool wide = type == "currency" || type == "double" || type == "date";
    bytes += parameter.passing == Passing::kByValue && wide ? 8 : 4;
  }
  return bytes;
}

std::expected<Procedure, std::string> ParseProcedure(std::string_view text) {
  Procedure procedure;
  if (!TakeQuoted(text, procedure.library)) return Failure("no library in quotes");
  if (Take(text, " Alias ") && !TakeQuoted(text, procedure.alias))
    return Failure("no alias in quotes");
  if (!Take(text, " (")) return Failure("no list of parameters");
  const std::size_t end = text.find(')');
  if (end == std::string_view::npos) return Failure("the list of parameters does not end");
  auto parameters = ParseParameters(text.substr(0, end));
  if (!parameters) return Failure(parameters.error());
  procedure.parameters = std::move(*parameters);
  text.remove_prefix(end + 1);
  if (Take(text, " As "))
    procedure.result_type = text;
  else if (!text.empty())
    return Failure("something stands behind the list of parameters");
  return procedure;
}

}  // namespace declarium::vb
