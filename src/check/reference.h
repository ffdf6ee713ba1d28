// The libraries that declarations are checked against: their rows by name and, for procedures, by
// DLL and entry, with the facts beside them. A row is read when it is asked for.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "check/c_type.h"
#include "check/row_table.h"
#include "facts/facts_file.h"
#include "library/library.h"
#include "vb/definitions.h"
#include "vb/module.h"

namespace declarium::check {

// A row as the language reads it.
struct KnownRow {
  std::u16string name;
  std::u16string text;  // what the declaration refers into
  vb::Module module;
  const vb::Declaration* declaration = nullptr;  // null for a row that cannot be read
  std::optional<RowFacts> facts;
  Kind kind = Kind::kConst;
  const FactsFile* facts_file = nullptr;

  // Whether only types differ in 64 bits, so that the facts say all.
  [[nodiscard]] bool HasFactsFor64() const { return facts && !facts_file->FindForm64(kind, name); }
};

class KnownProcedure {
 public:
  KnownProcedure(const KnownRow& row, std::u16string dll) : row_(&row), dll_(std::move(dll)) {}

  // Whether the row declares a procedure; nothing else may be asked of one that does not.
  [[nodiscard]] bool IsReadable() const {
    return row_->declaration != nullptr && row_->declaration->As<vb::External>() != nullptr;
  }
  [[nodiscard]] const std::u16string& Name() const { return row_->name; }
  [[nodiscard]] const std::u16string& Dll() const { return dll_; }  // its key
  [[nodiscard]] std::u16string_view Entry() const;
  [[nodiscard]] const vb::External& External() const;
  // Null where nothing is known of the parameter. `position` counts from 0.
  [[nodiscard]] const ValueFacts* FactsOf(std::size_t position) const;
  [[nodiscard]] CType TypeOf(std::size_t position) const;
  // Whether only types differ in 64 bits.
  [[nodiscard]] bool HasFactsFor64() const { return row_->HasFactsFor64(); }
  // The result's type in 64 bits where it is another one than in the row; empty otherwise.
  [[nodiscard]] std::string_view Result64() const;
  // The first version of Windows that has it, as the facts say it; may be empty.
  [[nodiscard]] std::string_view Since() const;

 private:
  const KnownRow* row_;
  std::u16string dll_;
};

class Reference {
 public:
  // The library and its facts, null for none, must outlive the reference. What an earlier library
  // has counts before what a later one has.
  void Add(const Library& library, const FactsFile* facts);

  [[nodiscard]] bool IsEmpty() const { return sources_.empty(); }
  [[nodiscard]] bool KnowsDll(std::u16string_view dll) const;
  // All procedures of this entry, in upper and lower case as spelled, in any DLL.
  [[nodiscard]] std::vector<const KnownProcedure*> Entries(std::u16string_view entry);
  // Those of one DLL, given by its key; the first that has the name `preferred`, or the first.
  [[nodiscard]] const KnownProcedure* FindEntry(std::u16string_view dll, std::u16string_view entry,
                                                std::u16string_view preferred);
  // The entries of the DLL that are spelled nearly like this one, in any case; the nearest first.
  [[nodiscard]] std::vector<std::u16string_view> NearEntries(std::u16string_view dll,
                                                             std::u16string_view entry) const;

  // The record of this name, null for none.
  [[nodiscard]] const KnownRow* FindRecord(std::u16string_view name);
  [[nodiscard]] std::optional<vb::RecordLayout> LayoutOf(std::u16string_view record,
                                                         vb::Target target);
  // The value of a constant; nothing when no library has it, or it has none.
  [[nodiscard]] std::optional<vb::Value> ValueOf(std::u16string_view name);

 private:
  struct Source {
    const Library* library;
    const FactsFile* facts;
  };
  // Where a row stands.
  struct RowPlace {
    std::uint32_t source;
    std::uint32_t position;  // in the lists of its kind
  };
  struct EntryRow {
    RowPlace place;
    std::uint32_t dll;          // of dlls_
    std::u16string_view entry;  // in the library
    std::unique_ptr<KnownProcedure> procedure = nullptr;
  };
  struct Dll {
    std::u16string key;
    std::vector<std::u16string_view> entries;
  };
  // Those that were read, by their positions among the rows of the kind.
  using RowsByPosition = std::unordered_map<std::uint32_t, const KnownRow*>;

  void AddEntries(std::uint32_t source);
  [[nodiscard]] std::uint32_t DllOf(std::u16string_view written);
  [[nodiscard]] std::u16string_view NameAt(Kind kind, const RowPlace& place) const;
  [[nodiscard]] const Dll* FindDll(std::u16string_view key) const;
  [[nodiscard]] vb::Evaluated Evaluate(std::u16string_view expression);
  const KnownRow* ReadRow(Kind kind, const RowPlace& place);
  const KnownRow* FindRow(Kind kind, std::u16string_view name, RowsByPosition& rows);
  [[nodiscard]] const KnownProcedure* ProcedureOf(EntryRow& row);

  std::vector<Source> sources_;
  std::vector<EntryRow> entries_;
  RowTable entries_by_name_;
  std::vector<Dll> dlls_;
  std::unordered_map<std::u16string_view, std::uint32_t> dlls_as_written_;
  struct RowsOfKind {
    std::vector<RowPlace> places;
    RowTable by_name;
  };
  RowsOfKind kinds_[kKindCount];
  std::deque<KnownRow> rows_;
  RowsByPosition records_;
  RowsByPosition constants_;
  std::unordered_set<std::u16string> open_;  // names that are being evaluated
};

}  // namespace declarium::check
