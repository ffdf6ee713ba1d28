#include "agreement.h"

#include <cstdint>
#include <cstring>
#include <map>
#include <stdexcept>
#include <unordered_map>

#include "constant_facts.h"
#include "documented_library.h"
#include "metadata_source.h"
#include "record_certainty.h"

namespace declarium::win32_library_test {
namespace {

using win32_library::MetaFunction;
using win32_library::MetaRecord;
using win32_library::MetaValue;

ConstantFact FactOf(std::int64_t value) {
  return {.low = static_cast<std::uint32_t>(value), .size = 4, .text = ""};
}

ConstantFacts FactsOfTheMetadata() {
  ConstantFacts facts;
  for (const auto& item : TheMetadata().enums)
    for (const auto& [name, value] : item.values) facts.emplace(name, FactOf(value));
  for (const auto& constant : TheMetadata().constants) {
    ConstantFact fact = {.text = ""};
    if (const auto* whole = std::get_if<std::int64_t>(&constant.value)) fact = FactOf(*whole);
    if (const auto* real = std::get_if<double>(&constant.value))
      fact = {.kind = ConstantFact::Kind::kReal, .real = *real, .text = ""};
    if (const auto* text = std::get_if<std::string>(&constant.value))
      fact = {.kind = ConstantFact::Kind::kText, .text = *text};
    facts.emplace(constant.name, fact);
  }
  return facts;
}

bool Agree(const DeclareMeaning& meaning, const MetaFunction& function, long bytes) {
  const std::string library = win32_library::DocumentedLibrary(function);
  return meaning.argument_bytes == bytes && meaning.has_result == (function.result != "Void") &&
         (library.starts_with("api-ms-") || library == meaning.library);
}

// What the metadata has under the name that C has for a row's record.
class MetaRecords {
 public:
  MetaRecords() : uncertain_(win32_library::UncertainRecords(TheMetadata())) {
    for (const MetaRecord& record : TheMetadata().records) records_.emplace(record.name, &record);
  }

  // nullptr when the metadata has no such record, or does not tell its size.
  [[nodiscard]] const MetaRecord* Find(const std::string& header_name) const {
    const auto found = records_.find(header_name.substr(header_name.find(' ') + 1));
    if (found == records_.end() || uncertain_.contains(found->first)) return nullptr;
    return found->second->members.empty() ? nullptr : found->second;
  }

 private:
  std::unordered_map<std::string, const MetaRecord*> records_;
  std::set<std::string> uncertain_;
};

bool IsCompared(const MetaValue& member, const RecordFact& fact) {
  return member.name != "_bitfield" && fact.fields.contains(member.name);
}

// The sizes of records and the places of members, compiled from the metadata.
class Layouts {
 public:
  void Add(const TypeRow& row, const MetaRecord& record, const RecordFact& fact) {
    pairs_.push_back({&row, &record});
    numbers_ += "sizeof(" + record.name + "),\n";
    for (const MetaValue& member : record.members)
      if (IsCompared(member, fact))
        numbers_ += "__builtin_offsetof(" + record.name + ", " + member.name + "),\n";
  }

  Disagreements Compare(const RecordFacts& facts, const Toolchain& toolchain) {
    const std::string source = win32_library::RecordsSource(TheMetadata()) +
                               "\n__attribute__((section(\".number\"))) const long "
                               "declarium_numbers[] = {\n" +
                               numbers_ + "};\n";
    bytes_ = toolchain.Sections(source, {".number"}).at(".number");
    Disagreements names;
    for (const auto& [row, record] : pairs_)
      if (!Agrees(*record, facts.at(row->name))) names.insert("Type\t" + row->name);
    return names;
  }

 private:
  struct Pair {
    const TypeRow* row;
    const MetaRecord* record;
  };

  bool Agrees(const MetaRecord& record, const RecordFact& fact) {
    bool agrees = NextNumber() == fact.size;
    for (const MetaValue& member : record.members)
      if (IsCompared(member, fact))
        agrees = (NextNumber() == fact.fields.at(member.name).offset) && agrees;
    return agrees;
  }

  long NextNumber() {
    std::int32_t number = 0;
    if (at_ + sizeof number > bytes_.size()) throw std::runtime_error("the probe is too short");
    std::memcpy(&number, bytes_.data() + at_, sizeof number);
    at_ += sizeof number;
    return number;
  }

  std::vector<Pair> pairs_;
  std::string numbers_;
  std::string bytes_;
  std::size_t at_ = 0;
};

}  // namespace

Disagreements DifferingConstants(const Rows& rows) {
  Disagreements names;
  for (const std::string& name : DifferingConstants(rows, FactsOfTheMetadata()))
    names.insert("Const\t" + name);
  return names;
}

Disagreements DifferingDeclares(const Rows& rows, const ByteCounts& counts) {
  Disagreements names;
  for (const DeclareRow& row : rows.declares) {
    const auto meaning = MeaningOf(row);
    const auto count = meaning ? counts.find(meaning->entry) : counts.end();
    if (count == counts.end()) continue;
    if (!Agree(*meaning, *TheMetadata().FindFunction(meaning->entry), count->second))
      names.insert("Declare\t" + meaning->entry);
  }
  return names;
}

Disagreements DifferingRecords(const Rows& rows, const RecordFacts& facts,
                               const Toolchain& toolchain) {
  const MetaRecords records;
  Layouts layouts;
  for (const TypeRow& row : rows.types)
    if (const MetaRecord* record = records.Find(row.header_name))
      layouts.Add(row, *record, facts.at(row.name));
  return layouts.Compare(facts, toolchain);
}

}  // namespace declarium::win32_library_test
