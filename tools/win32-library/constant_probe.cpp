#include "constant_probe.h"

#include <map>
#include <string_view>

#include "clang_unit.h"

namespace declarium::win32_library {
namespace {

// Two variables are declared for each macro: one with the type of the expression, and one that a
// pointer made from a number can be read from.
constexpr std::string_view kTyped = "declarium_typed_";
constexpr std::string_view kAddress = "declarium_address_";

// A macro with braces, statements or open brackets would take the declarations behind it along.
bool CanBeProbed(const Constant& constant) {
  int depth = 0;
  for (const Token& token : constant.tokens) {
    if (token.text == "(") ++depth;
    if (token.text == ")" && --depth < 0) return false;
    if (token.text == "{" || token.text == "}" || token.text == ";" || token.text.starts_with('#'))
      return false;
  }
  return depth == 0 && !constant.is_enumerator;
}

// The macro as one expression: a list with commas, which initializes a record, is refused by
// _Generic and not taken for its last number.
std::string OneExpression(const std::string& name) {
  return "_Generic(" + name + ", default: (" + name + "))";
}

std::string ProbeSource(const std::vector<Constant>& constants) {
  std::string source;
  for (const Constant& constant : constants) {
    if (!CanBeProbed(constant)) continue;
    const std::string expression = OneExpression(constant.name);
    source.append("__auto_type ").append(kTyped).append(constant.name);
    source.append(" = ").append(expression).append(";\n");
    source.append("unsigned long ").append(kAddress).append(constant.name);
    source.append(" = (unsigned long)").append(expression).append(";\n");
  }
  return source;
}

void TakeInteger(CXEvalResult result, long size, Constant& constant) {
  constant.value = Constant::Value::kInteger;
  constant.size = size;
  constant.integer = clang_EvalResult_isUnsignedInt(result) != 0
                         ? static_cast<std::int64_t>(clang_EvalResult_getAsUnsigned(result))
                         : clang_EvalResult_getAsLongLong(result);
}

void TakeValue(CXCursor variable, Constant& constant) {
  CXEvalResult result = clang_Cursor_Evaluate(variable);
  if (result == nullptr) return;
  const CXEvalResultKind kind = clang_EvalResult_getKind(result);
  if (kind == CXEval_Int)
    TakeInteger(result, static_cast<long>(clang_Type_getSizeOf(clang_getCursorType(variable))),
                constant);
  if (kind == CXEval_Float) {
    constant.value = Constant::Value::kReal;
    constant.real = clang_EvalResult_getAsDouble(result);
  }
  clang_EvalResult_dispose(result);
}

}  // namespace

void EvaluateConstants(const std::string& source, std::vector<Constant>& constants) {
  const ClangUnit unit(source + "\n" + ProbeSource(constants), MacroRecord::kDropped);
  std::map<std::string, Constant*> by_name;
  for (Constant& constant : constants) by_name[constant.name] = &constant;
  unit.ForEachTopLevel([&](CXCursor cursor) {
    if (clang_getCursorKind(cursor) != CXCursor_VarDecl) return;
    const std::string name = TakeText(clang_getCursorSpelling(cursor));
    const bool typed = name.starts_with(kTyped);
    if (!typed && !name.starts_with(kAddress)) return;
    Constant& constant = *by_name.at(name.substr(typed ? kTyped.size() : kAddress.size()));
    if (constant.value == Constant::Value::kNone) TakeValue(cursor, constant);
  });
}

}  // namespace declarium::win32_library
