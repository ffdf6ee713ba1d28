// What an insertion into a module of a project would do, entry by entry, and the lines that do it.
// Nothing is changed by a plan: it reads, takes choices and gives lines.
// What an entry does is plan/presence.h's word, where it goes plan/placement.h's. What differs or
// clashes stays out unless it is inserted under another name. A declaration in a branch of #If
// counts for that branch: what the others lack goes into #If lines of the same expressions.
#pragma once

#include <cstdint>
#include <deque>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "plan/placement.h"
#include "plan/presence.h"
#include "plan/project_modules.h"
#include "plan/renaming.h"
#include "plan/wanted_items.h"
#include "target/rewrite.h"
#include "vb/audience.h"

namespace declarium::plan {

struct PlannedEntry {
  Kind kind = Kind::kConst;
  std::u16string name;
  int level = 0;       // 0 for what was asked for
  std::u16string via;  // what needs it
  Does does = Does::kInsert;
  std::optional<Found> found;  // not for kInsert, unless other branches have it
  std::u16string text;         // as it is or would be inserted: lines with CR LF between them
  std::u16string new_name;     // the other name that it is inserted under; empty for its own
  bool is_left_out = false;
  bool is_needed = true;  // false when only what differs, clashes or is left out needs it

  [[nodiscard]] bool IsInserted() const {
    return is_needed && !is_left_out && (does == Does::kInsert || !new_name.empty());
  }
};

struct PlanOptions {
  vb::Scope scope = vb::Scope::kPrivate;  // kPublic counts in standard modules only
  vb::Audience target = vb::Audience::kVb6;
  const KnowledgeOf64* knowledge = nullptr;  // needed for any other target than kVb6
};

enum class NameRefusal : unsigned char { kNotLegal, kTaken };

class InsertionPlan {
 public:
  // The plan for the module at position `module`. `project` and what it refers to must outlive the
  // plan, `options.knowledge` the construction and every change of a choice.
  InsertionPlan(ProjectModules& project, std::size_t module, std::span<const WantedItem> wanted,
                const PlanOptions& options);

  // In the order of what is wanted.
  [[nodiscard]] const std::vector<PlannedEntry>& Entries() const { return entries_; }
  // The scope that the module's kind leaves: Private in classes, forms, controls and designers.
  [[nodiscard]] vb::Scope Scope() const { return scope_; }

  // The choices. Positions are those of Entries().
  void LeaveOut(std::size_t entry, bool is_left_out);
  // Keeps what differs or clashes: takes the entry's other name back.
  void Keep(std::size_t entry);
  // Inserts it under this name. Others in the insertion that use it use the new name then.
  std::expected<void, NameRefusal> InsertAs(std::size_t entry, std::u16string_view new_name);
  // A name like the entry's that InsertAs takes.
  [[nodiscard]] std::u16string FreeName(std::size_t entry) const;

  // Whether the module takes nothing, as the header of its designer has no End: what is inserted
  // would become a part of it. IsEmpty() holds then.
  [[nodiscard]] bool IsRefused() const;
  // Whether anything would be inserted.
  [[nodiscard]] bool IsEmpty() const;
  // One for each place, from the top down. Made from the bottom up, the lines of those above stay
  // right.
  [[nodiscard]] std::vector<LineInsertion> Insertions() const;

 private:
  // An entry as source, with the scope word.
  struct Source {
    std::u16string text;                           // as the library has it
    std::u16string rewritten;                      // for the target
    vb::Module module;                             // of what was rewritten
    std::optional<MissingBranches> branches = {};  // where it is missing, when not everywhere
  };

  void ReadSources(std::span<const WantedItem> wanted);
  void FindNeeds();
  void Decide();
  // What follows from the choices.
  void Renew();
  [[nodiscard]] NewNames Renames() const;
  [[nodiscard]] bool IsFree(std::size_t entry, std::u16string_view name) const;
  [[nodiscard]] std::u16string Rewritten(std::u16string_view text) const;
  // The text of the pieces of one place, before anything is renamed.
  [[nodiscard]] std::u16string TextOf(std::span<const Piece> pieces,
                                      std::span<const std::size_t> entries,
                                      const PlacedPieces& placed) const;

  ProjectModules& project_;
  std::size_t module_;
  PlanOptions options_;
  vb::Scope scope_;
  std::vector<PlannedEntry> entries_;
  std::deque<Source> sources_;                   // one for each entry
  std::vector<std::vector<std::size_t>> needs_;  // of each entry, among the entries
};

}  // namespace declarium::plan
