#include "library_builder.h"

#include <algorithm>
#include <map>
#include <utility>

#include "header_reader.h"
#include "metadata_source.h"
#include "record_names.h"
#include "vb/name.h"

namespace declarium::win32_library {
namespace {

using Names = std::set<std::string>;  // in lower case

constexpr const char* kTakenByProcedure = "a procedure has the name";
constexpr const char* kTakenByRecord = "a record has the name";
constexpr const char* kTakenByOther = "another of its kind has the name";
constexpr const char* kDecided = "neither source is right";
constexpr const char* kUncertain = "the metadata does not tell its size for certain";
constexpr const char* kHoldsOther = "it holds a record on which the sources disagree";

bool IsFromMetadata(const std::string& header) {
  return header.starts_with(kMetadataFolder);
}

// Whether the overrides give the name to another source than the one that declares it there.
bool IsDecidedAgainst(const Overrides& overrides, const std::string& kind, const std::string& name,
                      const std::string& header) {
  const Override* decided = header == kAdditions ? nullptr : FindOverride(overrides, kind, name);
  if (decided == nullptr || decided->side == Side::kHeaders) return false;
  return decided->side == Side::kNeither || !IsFromMetadata(header);
}

// The declares and records of all units, made with the constants that there are.
class Pass {
 public:
  Pass(const std::vector<Headers>& units, const Knowledge& knowledge,
       const ConstantTranslator& constants)
      : knowledge_(knowledge), constants_(constants) {
    for (const Headers& unit : units) {
      if (&unit == &units.back()) AddAliases();  // the headers' go before the metadata's records
      TranslateUnit(unit);
    }
    AddAliases();
    AddRows(FamiliarRows(knowledge_.libraries, knowledge_.platform));
    AddRows(knowledge_.hand_kept);
  }

  Library library;

 private:
  struct Claim {
    std::string name;
    std::string header;
    long size;
  };

  void TranslateUnit(const Headers& unit) {
    RecordTranslator records(
        unit, [this](const std::string& name) { return constants_.ValueOf(name); },
        knowledge_.platform);
    const std::set<int> repeated = ClaimNames(unit, records);
    for (int index = 0; index < static_cast<int>(unit.records.size()); ++index)
      if (!repeated.contains(index)) {
        TakeRecord(unit.records[index], records.Translate(index));
        for (TypeRow& form : records.FormsOf(index))
          aliases_.push_back({std::move(form), unit.records[index].size});
      }
    DeclareTranslator declares(unit, knowledge_, records);
    for (const Function& function : unit.functions)
      if (!IsDecidedAgainst(knowledge_.overrides, "Declare", function.name, function.header) &&
          seen_functions_.insert(function.name).second)
        TakeDeclare(declares.Translate(function));
  }

  // Gives every record its name or takes it out; returns those that an earlier unit has made.
  std::set<int> ClaimNames(const Headers& unit, RecordTranslator& records) {
    std::set<int> repeated;
    std::set<int> differing;
    for (int index = 0; index < static_cast<int>(unit.records.size()); ++index) {
      const Record& record = unit.records[index];
      const std::string name = RecordName(record);
      if (name.empty() || !record.is_complete || record.header.empty()) continue;
      if (const char* reason = ReasonAgainst(record, name)) {
        records.LeaveOut(index, reason);
        continue;
      }
      if (IsDecidedAgainst(knowledge_.overrides, "Type", name, record.header)) {
        repeated.insert(index);  // known by its name; the metadata's is the row
        differing.insert(index);
        continue;
      }
      const std::string lower = vb::Lower(name);
      const auto [claim, is_new] = claims_.emplace(lower, Claim{name, record.header, record.size});
      if (is_new)
        claimed_in_[lower] = &unit;
      else if (&unit != claimed_in_[lower] && IsSame(claim->second, record, name))
        repeated.insert(index);
      else
        records.LeaveOut(index, kTakenByOther);
      if (IsFromMetadata(record.header) && claim->second.size != record.size)
        differing.insert(index);
    }
    if (!differing.empty()) LeaveOutHolders(unit, std::move(differing), records);
    return repeated;
  }

  // Why a record is no candidate; nullptr when it is one. An uncertain record of the metadata is
  // still known by the name of a record that the headers have.
  const char* ReasonAgainst(const Record& record, const std::string& name) const {
    const Override* decided = FindOverride(knowledge_.overrides, "Type", name);
    if (decided != nullptr && decided->side == Side::kNeither) return kDecided;
    const bool uncertain = record.header.starts_with(kUncertainFolder);
    return uncertain && !made_types_.contains(vb::Lower(name)) ? kUncertain : nullptr;
  }

  // Whether the record is the one that an earlier unit has under the name.
  bool IsSame(const Claim& first, const Record& record, const std::string& name) const {
    if (IsFromMetadata(record.header))
      return first.name == name && made_types_.contains(vb::Lower(name));
    return first.header == record.header && first.name == name && first.size == record.size;
  }

  // Records of a unit cannot hold those that have another size in the library; another unit may
  // have them right.
  void LeaveOutHolders(const Headers& unit, std::set<int> differing, RecordTranslator& records) {
    for (bool found = true; found;) {
      found = false;
      for (int index = 0; index < static_cast<int>(unit.records.size()); ++index) {
        if (differing.contains(index) || !HoldsOneOf(unit.records[index], differing)) continue;
        records.LeaveOut(index, kHoldsOther);
        GiveBack(unit, unit.records[index]);
        found = differing.insert(index).second;
      }
    }
  }

  void GiveBack(const Headers& unit, const Record& record) {
    const std::string lower = vb::Lower(RecordName(record));
    const auto claimed = claimed_in_.find(lower);
    if (claimed == claimed_in_.end() || claimed->second != &unit) return;
    claims_.erase(lower);
    claimed_in_.erase(claimed);
  }

  static bool HoldsOneOf(const Record& record, const std::set<int>& indexes) {
    return std::ranges::any_of(record.fields, [&](const Field& field) {
      const HeaderType* type = &field.type;
      while (type->kind == TypeKind::kArray) type = type->target.get();
      return type->kind == TypeKind::kRecord && indexes.contains(type->record);
    });
  }

  // Records without any name of their own are parts of others and no candidates.
  void TakeRecord(const Record& record, const std::expected<TypeRow, std::string>& row) {
    if (row) {
      library.types.push_back(*row);
      made_types_.insert(vb::Lower(row->name));
      for (const std::string& name : record.aliases)
        aliases_.push_back({AliasOf(record, *row, name), record.size});
    } else if (!record.header.empty() && (!record.tag.empty() || !record.typedefs.empty()) &&
               counted_records_.insert(record.header + " " + record.tag + RecordName(record))
                   .second) {
      ++library.types_left_out[row.error()];
    }
  }

  // The same record under another name.
  static TypeRow AliasOf(const Record& record, TypeRow row, const std::string& name) {
    row.name = name;
    const std::string remark = "'record: " + HeaderName(record);
    if (row.members.front() != remark) row.members.insert(row.members.begin(), remark);
    return row;
  }

  // An alias only takes a name that nothing else has.
  void AddAliases() {
    for (auto& [row, size] : std::exchange(aliases_, {})) {
      const std::string lower = vb::Lower(row.name);
      if (constants_.Has(lower) ||
          !claims_.emplace(lower, Claim{row.name, row.header, size}).second)
        continue;
      made_types_.insert(lower);
      library.types.push_back(std::move(row));
    }
  }

  void TakeDeclare(std::expected<DeclareRow, std::string> row) {
    if (row && !declare_names_.insert(vb::Lower(row->name)).second)
      row = std::unexpected(kTakenByOther);
    if (row)
      library.declares.push_back(std::move(*row));
    else
      ++library.declares_left_out[row.error()];
  }

  // Those whose names nothing else has.
  void AddRows(const std::vector<DeclareRow>& rows) {
    for (const DeclareRow& row : rows)
      if (declare_names_.insert(vb::Lower(row.name)).second) library.declares.push_back(row);
  }

  const Knowledge& knowledge_;
  const ConstantTranslator& constants_;
  std::map<std::string, Claim> claims_;
  std::map<std::string, const Headers*> claimed_in_;
  std::set<std::string> counted_records_;
  std::set<std::string> seen_functions_;
  Names declare_names_;
  Names made_types_;
  std::vector<std::pair<TypeRow, long>> aliases_;  // of the unit at hand, with their sizes
};

// The constants of a unit without those that another source has right.
std::vector<Constant> DecidedConstants(const Headers& unit, const Overrides& overrides) {
  std::vector<Constant> constants = unit.constants;
  std::erase_if(constants, [&](const Constant& constant) {
    const Override* decided = FindOverride(overrides, "Const", constant.name);
    const bool is_for_headers = decided != nullptr && decided->side == Side::kHeaders;
    return (is_for_headers && IsFromMetadata(constant.header)) ||
           IsDecidedAgainst(overrides, "Const", constant.name, constant.header);
  });
  return constants;
}

template <typename Row>
Names NamesOf(const std::vector<Row>& rows) {
  Names names;
  for (const Row& row : rows) names.insert(vb::Lower(row.name));
  return names;
}

template <typename Row>
void SortByName(std::vector<Row>& rows) {
  std::ranges::sort(rows, {}, [](const Row& row) { return vb::Lower(row.name); });
}

}  // namespace

Library BuildLibrary(const std::vector<Headers>& units, const Knowledge& knowledge,
                     const Sources64& sources64) {
  ConstantTranslator constants;
  for (const Headers& unit : units) constants.Add(DecidedConstants(unit, knowledge.overrides));
  // The first pass collects the names of procedures and records, the second knows the constants
  // left.
  const Library first = Pass(units, knowledge, constants).library;
  for (const std::string& name : NamesOf(first.declares))
    constants.LeaveOut(name, kTakenByProcedure);
  for (const std::string& name : NamesOf(first.types)) constants.LeaveOut(name, kTakenByRecord);
  Library library = Pass(units, knowledge, constants).library;
  AddForms64(library, Pass(sources64.units, sources64.knowledge, constants).library,
             sources64.exports, sources64.knowledge.metadata, sources64.successors);
  library.constants = constants.Rows(library.constants_left_out);
  SortByName(library.declares);
  SortByName(library.types);
  return library;
}

}  // namespace declarium::win32_library
