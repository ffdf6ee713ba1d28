#include "record_aliases.h"

#include <algorithm>
#include <map>
#include <set>

#include "record_names.h"
#include "vb/name.h"

namespace declarium::win32_library {
namespace {

using Indexes = std::map<std::string, int>;  // by lower-cased name

bool IsCandidate(const Record& record) {
  return record.is_complete && !record.header.empty() && !IsHandle(record) && !IsInterface(record);
}

// XA and X_A without the ending; empty when the name has neither.
std::string WithoutAnsiEnding(const std::string& name) {
  if (name.ends_with("_A")) return name.substr(0, name.size() - 2);
  return name.ends_with('A') ? name.substr(0, name.size() - 1) : std::string();
}

std::string WideTwin(const std::string& ansi) {
  return ansi.substr(0, ansi.size() - 1) + "W";
}

bool IsTagOnly(const Record& record, const std::string& name) {
  return record.typedefs.empty() && name.starts_with("tag") && name.size() > 3;
}

Indexes IndexesByName(const Headers& headers) {
  Indexes indexes;
  for (int i = 0; i < static_cast<int>(headers.records.size()); ++i)
    if (IsCandidate(headers.records[i]))
      if (const std::string name = RecordName(headers.records[i]); !name.empty())
        indexes.emplace(vb::Lower(name), i);
  return indexes;
}

void Rename(Record& record, int index, const std::string& plain, Indexes& indexes) {
  const std::string lower = vb::Lower(plain);
  if (!vb::IsLegalName(plain) || indexes.contains(lower)) return;
  record.plain_name = plain;
  indexes.emplace(lower, index);
}

void GivePlainNames(Headers& headers, Indexes& indexes) {
  const Indexes first = indexes;
  for (const auto& [lower, index] : first) {
    Record& record = headers.records[index];
    std::string name = RecordName(record);
    if (IsTagOnly(record, name)) Rename(record, index, name = name.substr(3), indexes);
    const std::string plain = WithoutAnsiEnding(name);
    const std::string twin = vb::Lower(WideTwin(name));
    if (!plain.empty() && (first.contains(twin) || first.contains("tag" + twin)))
      Rename(record, index, plain, indexes);
  }
}

// Internal spellings, and the ANSI spelling of a record with a plain name, are of no use.
bool IsWorthAnAlias(const std::string& name, const Record& record) {
  return vb::IsLegalName(name) && !name.starts_with("tag") && !name.ends_with('_') &&
         WithoutAnsiEnding(name) != RecordName(record);
}

class Aliases {
 public:
  Aliases(Headers& headers, const Indexes& indexes) : headers_(headers), indexes_(indexes) {
    for (const auto& [lower, index] : indexes) taken_.insert(lower);
  }

  void AddTypedefs() {
    for (const auto& [lower, index] : indexes_)
      for (const std::string& name : headers_.records[index].typedefs) Add(name, index);
  }

  void AddMacros() {
    for (const Constant& macro : headers_.constants) {
      if (macro.tokens.size() != 1 || macro.tokens[0].kind != TokenKind::kIdentifier) continue;
      const auto target = indexes_.find(vb::Lower(macro.tokens[0].text));
      if (target != indexes_.end() && !macro.name.ends_with('A')) Add(macro.name, target->second);
    }
  }

 private:
  void Add(const std::string& name, int index) {
    Record& record = headers_.records[index];
    if (IsWorthAnAlias(name, record) && taken_.insert(vb::Lower(name)).second)
      record.aliases.push_back(name);
  }

  Headers& headers_;
  const Indexes& indexes_;
  std::set<std::string> taken_;
};

}  // namespace

void NameRecords(Headers& headers) {
  Indexes indexes = IndexesByName(headers);
  GivePlainNames(headers, indexes);
  Aliases aliases(headers, indexes);
  aliases.AddTypedefs();
  aliases.AddMacros();
}

}  // namespace declarium::win32_library
