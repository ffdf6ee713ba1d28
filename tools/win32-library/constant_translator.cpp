#include "constant_translator.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "c_expression.h"
#include "metadata_source.h"
#include "string_macro.h"
#include "text/text.h"
#include "vb/name.h"

namespace declarium::win32_library {
namespace {

using NoConstant = std::unexpected<std::string>;

constexpr std::size_t kLongestText = 900;

// 32-bit values keep their bits; wider ones must be the same number in 32 bits with a sign.
std::optional<std::int32_t> LongOf(const Constant& constant) {
  if (constant.size <= 4) return static_cast<std::int32_t>(constant.integer);
  if (constant.integer < std::numeric_limits<std::int32_t>::min() ||
      constant.integer > std::numeric_limits<std::int32_t>::max())
    return std::nullopt;
  return static_cast<std::int32_t>(constant.integer);
}

// The shortest text that is exactly the number, when VB's 15 digits are enough for it.
std::optional<std::string> RealLiteral(double value) {
  constexpr int kDigits = 15;
  std::array<char, 40> text{};
  const auto written = std::to_chars(text.data(), text.data() + text.size(), value,
                                     std::chars_format::general, kDigits);
  double back = 0;
  std::from_chars(text.data(), written.ptr, back);
  if (back != value) return std::nullopt;
  std::string literal(text.data(), written.ptr);
  std::ranges::replace(literal, 'e', 'E');
  return literal;
}

std::string BasicLiteral(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + "\"";
}

// The line reader takes an apostrophe in a text for the beginning of a comment and changes blanks
// around it.
bool SurvivesTheLineReader(const std::string& text) {
  const std::size_t apostrophe = text.find('\'');
  return apostrophe == std::string::npos ||
         (text.find("  ") == std::string::npos && text.find("' ") == std::string::npos);
}

// The reason why a macro without a value has none.
std::string NoValueReason(const std::vector<Token>& tokens) {
  if (HoldsStringLiteral(tokens)) return "a text with characters that no VB literal can hold";
  const bool initializer = std::ranges::any_of(tokens, [](const Token& token) {
    return token.text == "{" || token.text == "DEFINE_GUIDSTRUCT";
  });
  return initializer ? "a GUID or another initializer of a record"
                     : "no constant expression: a function, a type or a fragment";
}

std::expected<vb::Value, std::string> TextValue(const Constant& constant,
                                                const MacroLookup& macros) {
  const auto text = StringOf(constant.tokens, macros);
  if (!text) return NoConstant(NoValueReason(constant.tokens));
  if (!SurvivesTheLineReader(*text)) return NoConstant("a text that the importer would change");
  if (text->size() > kLongestText) return NoConstant("longer than a line of VB");
  return vb::Value::String(FromUtf8(*text));
}

std::expected<vb::Value, std::string> ValueFor(const Constant& constant,
                                               const MacroLookup& macros) {
  if (constant.value == Constant::Value::kInteger) {
    const auto number = LongOf(constant);
    return number ? std::expected<vb::Value, std::string>(vb::Value::Long(*number))
                  : NoConstant("a value beyond 32 bits");
  }
  if (constant.value == Constant::Value::kReal) {
    if (!RealLiteral(constant.real)) return NoConstant("a fraction of more than 15 digits");
    return vb::Value::Double(constant.real);
  }
  return TextValue(constant, macros);
}

std::string NameProblem(const std::string& name) {
  if (name.starts_with('_')) return "a name with a leading underscore, internal to the headers";
  if (name.find("As") != std::string::npos)
    return "a name with \"As\" in it, where the importer would cut the line";
  if (!vb::IsLegalName(name)) return "no legal name";
  return "";
}

}  // namespace

void ConstantTranslator::Add(const std::vector<Constant>& constants) {
  for (const Constant& constant : constants)
    if (!constant.is_enumerator) macros_.emplace(constant.name, constant.tokens);
  for (const Constant& constant : constants) AddOne(constant);
}

void ConstantTranslator::AddOne(const Constant& constant) {
  const std::string lower = vb::Lower(constant.name);
  if (const auto known = candidates_.find(lower); known != candidates_.end()) {
    if (known->second.constant.name != constant.name)
      left_out_.emplace(constant.name, "another constant has the name in other letters");
    return;
  }
  // The units of headers share many.
  if (left_out_.contains(constant.name) && !constant.header.starts_with(kMetadataFolder)) return;
  const MacroLookup macros = [this](const std::string& name) {
    const auto found = macros_.find(name);
    return found == macros_.end() ? nullptr : &found->second;
  };
  auto value = ValueFor(constant, macros);
  const std::string problem = value ? NameProblem(constant.name) : value.error();
  if (!problem.empty()) {
    left_out_.emplace(constant.name, problem);
    return;
  }
  left_out_.erase(constant.name);
  candidates_.emplace(lower, Candidate{constant, std::move(*value)});
}

void ConstantTranslator::LeaveOut(const std::string& lower_name, const std::string& reason) {
  const auto found = candidates_.find(lower_name);
  if (found == candidates_.end()) return;
  left_out_.emplace(found->second.constant.name, reason);
  candidates_.erase(found);
}

bool ConstantTranslator::Has(const std::string& lower_name) const {
  return candidates_.contains(lower_name);
}

std::optional<long> ConstantTranslator::ValueOf(const std::string& name) const {
  const auto found = candidates_.find(vb::Lower(name));
  if (found == candidates_.end() || found->second.constant.name != name ||
      found->second.value.type != vb::Value::Type::kLong)
    return std::nullopt;
  return static_cast<long>(found->second.value.whole);
}

vb::Evaluated ConstantTranslator::LookUp(std::string_view name) const {
  const auto value = ValueOf(std::string(name));
  return value ? vb::Evaluated(vb::Value::Long(*value)) : NoConstant("not in the library");
}

// An expression of other constants where VB computes the compiler's value from it, a literal
// otherwise.
std::string ConstantTranslator::TextFor(const Candidate& candidate) const {
  const auto& [constant, value] = candidate;
  if (value.type == vb::Value::Type::kString) return BasicLiteral(ToUtf8(value.text));
  if (value.type == vb::Value::Type::kDouble) return *RealLiteral(value.real);
  const auto text = RewriteExpression(constant.tokens, [&](const std::string& name) {
    return ValueOf(name).has_value() && name != constant.name && !name.ends_with('_');
  });
  if (text && text->size() < kLongestText) {
    const auto computed = vb::Evaluate(
        FromUtf8(*text), [this](std::u16string_view name) { return LookUp(ToUtf8(name)); });
    if (computed && vb::ConvertTo(u"Long", *computed) == value) return *text;
  }
  return NumberLiteral(static_cast<std::int32_t>(value.whole), NotationOf(constant.tokens));
}

std::vector<ConstRow> ConstantTranslator::Rows(LeftOut& left_out) const {
  for (const auto& [name, reason] : left_out_) ++left_out[reason];
  std::vector<ConstRow> rows;
  for (const auto& [lower, candidate] : candidates_) {
    const char* type = candidate.value.type == vb::Value::Type::kString   ? "String"
                       : candidate.value.type == vb::Value::Type::kDouble ? "Double"
                                                                          : "Long";
    rows.push_back({candidate.constant.name, type, TextFor(candidate), candidate.constant.header});
  }
  return rows;
}

}  // namespace declarium::win32_library
