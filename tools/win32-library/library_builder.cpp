#include "library_builder.h"

#include <algorithm>
#include <map>

#include "record_names.h"
#include "vb/name.h"

namespace declarium::win32_library {
namespace {

using Names = std::set<std::string>;  // in lower case

constexpr const char* kTakenByProcedure = "a procedure has the name";
constexpr const char* kTakenByRecord = "a record has the name";
constexpr const char* kTakenByOther = "another of its kind has the name";

// The declares and records of all units, made with the constants that there are.
class Pass {
 public:
  Pass(const std::vector<Headers>& units, const ImportLibraries& libraries,
       const Metadata& metadata, const ConstantTranslator& constants)
      : libraries_(libraries), metadata_(metadata), constants_(constants) {
    for (const Headers& unit : units) TranslateUnit(unit);
    AddFamiliar();
    AddAliases();
  }

  Library library;

 private:
  struct Claim {
    std::string name;
    std::string header;
    long size;
  };

  void TranslateUnit(const Headers& unit) {
    RecordTranslator records(unit,
                             [this](const std::string& name) { return constants_.ValueOf(name); });
    const std::set<int> repeated = ClaimNames(unit, records);
    for (int index = 0; index < static_cast<int>(unit.records.size()); ++index)
      if (!repeated.contains(index)) TakeRecord(unit.records[index], records.Translate(index));
    DeclareTranslator declares(unit, libraries_, metadata_, records);
    for (const Function& function : unit.functions)
      if (seen_functions_.insert(function.name).second) TakeDeclare(declares.Translate(function));
  }

  // Gives every record its name or takes it out; returns those that an earlier unit has made.
  std::set<int> ClaimNames(const Headers& unit, RecordTranslator& records) {
    std::set<int> repeated;
    for (int index = 0; index < static_cast<int>(unit.records.size()); ++index) {
      const Record& record = unit.records[index];
      const std::string name = RecordName(record);
      if (name.empty() || !record.is_complete || record.header.empty()) continue;
      const std::string lower = vb::Lower(name);
      const auto [claim, is_new] = claims_.emplace(lower, Claim{name, record.header, record.size});
      const Claim& first = claim->second;
      if (!is_new && first.header == record.header && first.name == name &&
          first.size == record.size && &unit != claimed_in_[lower])
        repeated.insert(index);
      else if (!is_new)
        records.LeaveOut(index, kTakenByOther);
      if (is_new) claimed_in_[lower] = &unit;
    }
    return repeated;
  }

  // Records without any name of their own are parts of others and no candidates.
  void TakeRecord(const Record& record, const std::expected<TypeRow, std::string>& row) {
    if (row) {
      library.types.push_back(*row);
      for (const std::string& name : record.aliases)
        aliases_.push_back(AliasOf(record, *row, name));
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
    for (TypeRow& row : aliases_) {
      const std::string lower = vb::Lower(row.name);
      if (constants_.Has(lower) || !claims_.emplace(lower, Claim{row.name, row.header, 0}).second)
        continue;
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

  void AddFamiliar() {
    for (DeclareRow& row : FamiliarRows(libraries_))
      if (declare_names_.insert(vb::Lower(row.name)).second)
        library.declares.push_back(std::move(row));
  }

  const ImportLibraries& libraries_;
  const Metadata& metadata_;
  const ConstantTranslator& constants_;
  std::map<std::string, Claim> claims_;
  std::map<std::string, const Headers*> claimed_in_;
  std::set<std::string> counted_records_;
  std::set<std::string> seen_functions_;
  Names declare_names_;
  std::vector<TypeRow> aliases_;
};

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

Library BuildLibrary(const std::vector<Headers>& units, const ImportLibraries& libraries,
                     const Metadata& metadata) {
  ConstantTranslator constants;
  for (const Headers& unit : units) constants.Add(unit.constants);
  // The first pass collects the names of procedures and records, the second knows the constants
  // left.
  const Library first = Pass(units, libraries, metadata, constants).library;
  for (const std::string& name : NamesOf(first.declares))
    constants.LeaveOut(name, kTakenByProcedure);
  for (const std::string& name : NamesOf(first.types)) constants.LeaveOut(name, kTakenByRecord);
  Library library = Pass(units, libraries, metadata, constants).library;
  library.constants = constants.Rows(library.constants_left_out);
  SortByName(library.declares);
  SortByName(library.types);
  return library;
}

}  // namespace declarium::win32_library
