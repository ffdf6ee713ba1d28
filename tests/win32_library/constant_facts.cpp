#include "constant_facts.h"

#include <cstring>
#include <set>
#include <stdexcept>

#include "text/text.h"
#include "vb/expression.h"
#include "vb/name.h"

namespace declarium::win32_library_test {
namespace {

template <typename Number>
Number NumberAt(const std::string& bytes, std::size_t offset) {
  Number number;
  if (offset + sizeof number > bytes.size()) throw std::runtime_error("the probe is too short");
  std::memcpy(&number, bytes.data() + offset, sizeof number);
  return number;
}

// The compiled form of a whole number: low, size, wide.
constexpr std::size_t kWholeEntry = 16;

std::string WholeSource(const std::vector<std::string>& names) {
  std::string source =
      "\n__attribute__((section(\".whole\"))) const struct { unsigned long low; unsigned long "
      "size; long long wide; } declarium_whole[] = {\n";
  for (const std::string& name : names)
    source.append("{(unsigned long)(")
        .append(name)
        .append("), sizeof(")
        .append(name)
        .append("), __builtin_choose_expr(sizeof(")
        .append(name)
        .append(") == 8, (")
        .append(name)
        .append("), 0)},\n");
  return source + "};\n";
}

std::string RealSource(const std::vector<std::string>& names) {
  std::string source = "\n__attribute__((section(\".real\"))) const double declarium_real[] = {\n";
  for (const std::string& name : names) source.append("(").append(name).append("),\n");
  return source + "};\n";
}

// A line for each text that the preprocessor expands.
std::string TextSource(const std::vector<std::string>& names) {
  std::string source;
  for (const std::string& name : names)
    source.append("\ndeclarium_text ").append(name).append(" ;");
  return source;
}

// The characters of the literals in a preprocessed line.
std::string LiteralText(std::string_view line) {
  std::string text;
  bool inside = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') {
      inside = !inside;
    } else if (inside) {
      if (line[i] == '\\') ++i;
      text += line[i];
    }
  }
  return text;
}

struct Names {
  std::vector<std::string> whole;
  std::vector<std::string> real;
  std::vector<std::string> text;
};

void CompileUnit(const Names& names, const std::string& headers, const Toolchain& toolchain,
                 ConstantFacts& facts) {
  const auto sections = toolchain.Sections(
      headers + WholeSource(names.whole) + RealSource(names.real), {".whole", ".real"});
  for (std::size_t i = 0; i < names.whole.size(); ++i) {
    const std::string& bytes = sections.at(".whole");
    ConstantFact fact;
    fact.low = NumberAt<std::uint32_t>(bytes, i * kWholeEntry);
    fact.size = NumberAt<std::int32_t>(bytes, i * kWholeEntry + 4);
    fact.wide = NumberAt<std::int64_t>(bytes, i * kWholeEntry + 8);
    facts[names.whole[i]] = fact;
  }
  for (std::size_t i = 0; i < names.real.size(); ++i)
    facts[names.real[i]] = {.kind = ConstantFact::Kind::kReal,
                            .real = NumberAt<double>(sections.at(".real"), i * sizeof(double)),
                            .text = ""};
  const std::string expanded = toolchain.Preprocessed(headers + TextSource(names.text));
  constexpr std::string_view kMark = "declarium_text";
  std::size_t position = 0;
  for (const std::string& name : names.text) {
    position = expanded.find(kMark, position);
    if (position == std::string::npos) throw std::runtime_error(name + " was not expanded");
    position += kMark.size();
    const std::size_t end = std::min(expanded.find(kMark, position), expanded.size());
    facts[name] = {
        .kind = ConstantFact::Kind::kText,
        .text = LiteralText(std::string_view(expanded).substr(position, end - position))};
  }
}

// Evaluates constants by way of the rows that they name.
class Evaluator {
 public:
  explicit Evaluator(const Rows& rows) : rows_(rows) {}

  vb::Evaluated ValueOf(std::string_view name) {
    const std::string lower = vb::Lower(name);
    const auto position = rows_.constant_positions.find(lower);
    if (position == rows_.constant_positions.end())
      return std::unexpected(std::string(name) + " is not in the library");
    if (const auto known = values_.find(lower); known != values_.end()) return known->second;
    if (!in_progress_.insert(lower).second) return std::unexpected("it refers to itself");
    const ConstRow& row = rows_.constants[position->second];
    const auto value = vb::Evaluate(
        FromUtf8(row.value), [this](std::u16string_view inner) { return ValueOf(ToUtf8(inner)); });
    vb::Evaluated result = value ? vb::ConvertTo(FromUtf8(row.type), *value) : value;
    in_progress_.erase(lower);
    values_.emplace(lower, result);
    return result;
  }

 private:
  const Rows& rows_;
  std::map<std::string, vb::Evaluated> values_;
  std::set<std::string> in_progress_;
};

bool Agree(const vb::Value& value, const ConstantFact& fact) {
  switch (fact.kind) {
    case ConstantFact::Kind::kText:
      return value.type == vb::Value::Type::kString && ToUtf8(value.text) == fact.text;
    case ConstantFact::Kind::kReal:
      return value.type == vb::Value::Type::kDouble && value.real == fact.real;
    case ConstantFact::Kind::kWhole:
      break;
  }
  if (value.type != vb::Value::Type::kLong) return false;
  if (fact.size == 8) return value.whole == fact.wide;
  return static_cast<std::uint32_t>(value.whole) == fact.low;
}

}  // namespace

ConstantFacts CompileConstants(const Rows& rows, const Toolchain& toolchain, const UnitMap& units,
                               const std::map<std::string, std::size_t>& provenance) {
  std::vector<Names> names(units.units.size());
  for (const ConstRow& row : rows.constants) {
    Names& unit = names[provenance.at("Const\t" + row.name)];
    (row.type == "String"   ? unit.text
     : row.type == "Double" ? unit.real
                            : unit.whole)
        .push_back(row.name);
  }
  ConstantFacts facts;
  for (std::size_t i = 0; i < names.size(); ++i)
    CompileUnit(names[i], units.units[i].source, toolchain, facts);
  return facts;
}

std::vector<std::string> DifferingConstants(const Rows& rows, const ConstantFacts& facts) {
  std::vector<std::string> names;
  Evaluator evaluator(rows);
  for (const ConstRow& row : rows.constants) {
    const auto fact = facts.find(row.name);
    if (fact == facts.end()) continue;
    const auto value = evaluator.ValueOf(row.name);
    if (!value || !Agree(*value, fact->second)) names.push_back(row.name);
  }
  return names;
}

Mismatches CheckConstants(const Rows& rows, const ConstantFacts& facts) {
  Mismatches mismatches;
  Evaluator evaluator(rows);
  for (const ConstRow& row : rows.constants) {
    const auto value = evaluator.ValueOf(row.name);
    const auto fact = facts.find(row.name);
    if (!value)
      mismatches.push_back(row.name + ": " + value.error());
    else if (fact == facts.end() || !Agree(*value, fact->second))
      mismatches.push_back(row.name + " = " + row.value + " is not what the compiler says");
  }
  return mismatches;
}

}  // namespace declarium::win32_library_test
