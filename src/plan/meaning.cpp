#include "plan/meaning.h"

#include <algorithm>

#include "facts/dll_key.h"
#include "text/text.h"
#include "vb/token.h"

namespace declarium::plan {
namespace {

using vb::Token;
using vb::TokenKind;

// Names in any case, no matter which blanks.
bool AreSameWords(std::u16string_view a, std::u16string_view b) {
  vb::Tokenizer a_tokens(a);
  vb::Tokenizer b_tokens(b);
  for (;;) {
    const auto a_token = a_tokens.NextSignificant();
    const auto b_token = b_tokens.NextSignificant();
    if (a_token.kind != b_token.kind) return false;
    if (a_token.kind == TokenKind::kEnd) return true;
    const bool is_text = a_token.kind == TokenKind::kString;
    if (is_text ? a_token.text != b_token.text : !EqualIgnoringCase(a_token.text, b_token.text))
      return false;
  }
}

double NumberOf(const vb::Value& value) {
  return value.type == vb::Value::Type::kDouble ? value.real : static_cast<double>(value.whole);
}

// Compares two declarations of one kind.
class Comparison {
 public:
  Comparison(vb::Definitions& a, vb::Definitions& b) : a_(a), b_(b) {}

  [[nodiscard]] bool IsSame(const vb::Constant& a, const vb::Constant& b) const {
    const auto a_value = a_.ValueOf(a);
    const auto b_value = b_.ValueOf(b);
    if (a_value && b_value) return IsSameValue(*a_value, *b_value);
    return !a_value && !b_value && AreSameWords(a.value, b.value) && IsSame(a.type, b.type);
  }

  [[nodiscard]] bool IsSame(const vb::External& a, std::u16string_view a_name,
                            const vb::External& b, std::u16string_view b_name) const {
    return a.is_function == b.is_function && a.is_ptr_safe == b.is_ptr_safe &&
           a.is_wide == b.is_wide && DllKey(a.library) == DllKey(b.library) &&
           a.EntryOr(a_name) == b.EntryOr(b_name) &&
           (!a.is_function || IsSame(a.result, b.result)) &&
           std::ranges::equal(a.parameters, b.parameters,
                              [this](const auto& each, const auto& other) {
                                return IsSameParameter(each, other);
                              });
  }

  [[nodiscard]] bool IsSame(const vb::Record& a, const vb::Record& b) const {
    return std::ranges::equal(a.members, b.members, [this](const auto& each, const auto& other) {
      return EqualIgnoringCase(each.name, other.name) && each.is_array == other.is_array &&
             (each.condition == 0) == (other.condition == 0) && IsSame(each.type, other.type) &&
             std::ranges::equal(each.dimensions, other.dimensions,
                                [this](const auto& bounds, const auto& others) {
                                  return IsSameNumber(bounds.lower, others.lower) &&
                                         IsSameNumber(bounds.upper, others.upper);
                                });
    });
  }

 private:
  [[nodiscard]] bool IsSame(const vb::TypeReference& a, const vb::TypeReference& b) const {
    return a.is_array == b.is_array && AreSameWords(a.name, b.name) &&
           a.length.empty() == b.length.empty() && IsSameNumber(a.length, b.length);
  }

  [[nodiscard]] bool IsSameParameter(const vb::Parameter& a, const vb::Parameter& b) const {
    return a.passing == b.passing && a.is_optional == b.is_optional &&
           a.is_param_array == b.is_param_array && a.is_array == b.is_array &&
           IsSame(a.type, b.type) && AreSameWords(a.default_value, b.default_value);
  }

  // A bound or a length; an empty one is 0.
  [[nodiscard]] bool IsSameNumber(std::u16string_view a, std::u16string_view b) const {
    if (a == b && a.find_first_not_of(u"0123456789") == a.npos) return true;
    const auto a_value = ValueOf(a_, a);
    const auto b_value = ValueOf(b_, b);
    if (a_value && b_value) return IsSameValue(*a_value, *b_value);
    return !a_value && !b_value && AreSameWords(a, b);
  }

  static vb::Evaluated ValueOf(vb::Definitions& definitions, std::u16string_view expression) {
    vb::Constant constant;
    constant.value = expression.empty() ? u"0" : expression;
    return definitions.ValueOf(constant);
  }

  vb::Definitions& a_;
  vb::Definitions& b_;
};

}  // namespace

bool IsSameValue(const vb::Value& a, const vb::Value& b) {
  const bool is_text = a.type == vb::Value::Type::kString;
  if (is_text != (b.type == vb::Value::Type::kString)) return false;
  if (is_text) return a.text == b.text;
  const bool is_real = a.type == vb::Value::Type::kDouble || b.type == vb::Value::Type::kDouble;
  return is_real ? NumberOf(a) == NumberOf(b) : a.whole == b.whole;
}

bool MeanTheSame(const DefinedDeclaration& a, const DefinedDeclaration& b) {
  const Comparison comparison(*a.definitions, *b.definitions);
  const auto& [name, other_name] = std::pair(a.declaration->name, b.declaration->name);
  if (const auto* const constant = a.declaration->As<vb::Constant>()) {
    const auto* const other = b.declaration->As<vb::Constant>();
    return other != nullptr && comparison.IsSame(*constant, *other);
  }
  if (const auto* const external = a.declaration->As<vb::External>()) {
    const auto* const other = b.declaration->As<vb::External>();
    return other != nullptr && comparison.IsSame(*external, name, *other, other_name);
  }
  if (const auto* const record = a.declaration->As<vb::Record>()) {
    const auto* const other = b.declaration->As<vb::Record>();
    return other != nullptr && comparison.IsSame(*record, *other);
  }
  return false;
}

}  // namespace declarium::plan
