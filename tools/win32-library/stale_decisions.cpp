#include "stale_decisions.h"

#include <algorithm>
#include <map>
#include <span>

#include "constant_translator.h"
#include "record_names.h"

namespace declarium::win32_library {
namespace {

// What is said of a row: its value, or its size, and the places of its members by their paths.
using Statement = std::map<std::string, std::string>;
constexpr const char* kItself = "";

// Whether they say different things of anything that both speak of.
bool Differ(const Statement& a, const Statement& b) {
  return std::ranges::any_of(a, [&](const auto& said) {
    const auto other = b.find(said.first);
    return other != b.end() && other->second != said.second;
  });
}

Statement Itself(long number) {
  return {{kItself, std::to_string(number)}};
}

// The members of a record, and those of records among them. Members of what has no name are the
// record's own.
void AddMembers(const Headers& unit, const Record& record, const std::string& path, long bits,
                Statement& statement) {
  for (const Field& field : record.fields) {
    const long place = bits + field.offset_bits;
    const std::string inner = field.name.empty() ? path : path + "." + field.name;
    if (!field.name.empty())
      statement[inner] = std::to_string(place) + ":" + std::to_string(field.type.size);
    if (field.type.kind == TypeKind::kRecord && field.type.record >= 0)
      AddMembers(unit, unit.records[static_cast<std::size_t>(field.type.record)], inner, place,
                 statement);
  }
}

// The bytes of the arguments.
Statement ArgumentsOf(const Function& function) {
  constexpr long kSlot = 4;
  long bytes = 0;
  for (const Parameter& parameter : function.parameters)
    bytes += (parameter.type.size + kSlot - 1) / kSlot * kSlot;
  return Itself(bytes);
}

// What the units of one source declare, by kind and name with a tab between them. Of one name there
// are several statements where units have different ones.
class Declared {
 public:
  explicit Declared(std::span<const Headers> units) {
    ConstantTranslator constants;
    for (const Headers& unit : units) constants.Add(unit.constants);
    LeftOut left_out;
    for (const ConstRow& row : constants.Rows(left_out)) {
      const auto number = constants.ValueOf(row.name);
      Add("Const", row.name, number ? Itself(*number) : Statement{{kItself, row.value}});
    }
    for (const Headers& unit : units) {
      for (const Record& record : unit.records)
        if (record.is_complete) AddRecord(unit, record);
      for (const Function& function : unit.functions)
        Add("Declare", function.name, ArgumentsOf(function));
    }
  }

  [[nodiscard]] std::vector<Statement> Find(const std::string& kind_and_name) const {
    const auto [first, last] = statements_.equal_range(kind_and_name);
    std::vector<Statement> found;
    for (auto entry = first; entry != last; ++entry) found.push_back(entry->second);
    return found;
  }

 private:
  void Add(const std::string& kind, const std::string& name, Statement statement) {
    statements_.emplace(kind + "\t" + name, std::move(statement));
  }

  void AddRecord(const Headers& unit, const Record& record) {
    Statement statement = Itself(record.size);
    AddMembers(unit, record, "", 0, statement);
    Add("Type", RecordName(record), std::move(statement));
  }

  std::multimap<std::string, Statement> statements_;
};

// What a decision is between.
class Sides {
 public:
  Sides(const std::vector<Headers>& units, const ImportLibraries& libraries)
      : headers_(std::span(units).first(units.size() - 1)),
        metadata_(std::span(units).last(1)),
        libraries_(libraries) {}

  [[nodiscard]] bool Disagree(const std::string& kind_and_name) const {
    const auto metadata = metadata_.Find(kind_and_name);
    return !metadata.empty() &&
           std::ranges::any_of(OfTheHeaders(kind_and_name), [&](const Statement& statement) {
             return Differ(statement, metadata.front());
           });
  }

  [[nodiscard]] bool IsDeclared(const std::string& kind_and_name) const {
    return !headers_.Find(kind_and_name).empty() || !metadata_.Find(kind_and_name).empty();
  }

 private:
  [[nodiscard]] std::vector<Statement> OfTheHeaders(const std::string& kind_and_name) const {
    constexpr std::string_view kDeclare = "Declare\t";
    if (!kind_and_name.starts_with(kDeclare)) return headers_.Find(kind_and_name);
    const ImportEntry* entry = libraries_.Find(kind_and_name.substr(kDeclare.size()));
    if (entry == nullptr) return {};
    return {Itself(entry->argument_bytes)};
  }

  Declared headers_;
  Declared metadata_;
  const ImportLibraries& libraries_;
};

}  // namespace

std::vector<std::string> StaleDecisions(const std::vector<Headers>& units,
                                        const ImportLibraries& libraries,
                                        const Overrides& overrides) {
  const Sides sides(units, libraries);
  std::vector<std::string> stale;
  for (const auto& [name, decided] : overrides)
    if ((decided.side == Side::kMetadata && !sides.Disagree(name)) ||
        (decided.side == Side::kNeither && !sides.IsDeclared(name)))
      stale.push_back(name);
  return stale;
}

}  // namespace declarium::win32_library
