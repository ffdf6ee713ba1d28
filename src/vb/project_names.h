// What names mean in the modules of a project.
//
// A module's own declarations come before the public ones of the others. Of those that stand in
// branches of #If all are given: which one counts is the reader's business. Records, enumerations
// and classes are types; what is a value is everything else, enumerations and modules too, because
// they stand in front of a dot.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "vb/name_use.h"

namespace declarium::vb {

// One thing that a name stands for.
struct Meaning {
  enum class Kind : unsigned char {
    kDeclaration,
    kEnumMember,
    kMember,  // a variable, an event or a control
    kProcedure,
    kModule,
  };
  Kind kind = Kind::kDeclaration;
  std::size_t module = 0;    // its position
  std::size_t position = 0;  // in the module's declarations, members or procedures
  std::size_t inside = 0;    // of kEnumMember: its position in the enumeration
};

class ProjectNames {
 public:
  explicit ProjectNames(std::u16string_view project_name = {}) : project_name_(project_name) {}

  // The modules get positions from 0 in the order in which they come, and must outlive the names.
  // `name` is for one whose text has no VB_Name, as a code pane's.
  void Add(const Module& module, std::u16string_view name = {});

  [[nodiscard]] const Module& ModuleAt(std::size_t position) const { return *modules_[position]; }

  // What a use in the module means; empty when nothing in the project declares it.
  [[nodiscard]] std::vector<Meaning> MeaningsOf(std::size_t module, const NameUse& use) const;
  // What the bare name means there as a value, or as a type.
  [[nodiscard]] std::vector<Meaning> FindValue(std::size_t module, std::u16string_view name) const;
  [[nodiscard]] std::vector<Meaning> FindType(std::size_t module, std::u16string_view name) const;

  // Where it is declared; line 1 of a module.
  [[nodiscard]] Place PlaceOf(const Meaning& meaning) const;
  // Null for what is no declaration; the enumeration of a member.
  [[nodiscard]] const Declaration* DeclarationOf(const Meaning& meaning) const;

 private:
  enum class Sort : unsigned char { kValue, kType };
  struct Entry {
    Meaning meaning;
    bool is_public;  // for other modules
    bool is_value;
    bool is_type;
  };
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const {
      return std::hash<std::u16string_view>()(text);
    }
  };

  void AddEntry(std::u16string_view name, const Entry& entry);
  void AddDeclarations(std::size_t module);
  [[nodiscard]] const std::vector<Entry>* EntriesOf(std::u16string_view name) const;
  [[nodiscard]] std::vector<Meaning> Find(std::size_t module, std::u16string_view name,
                                          Sort sort) const;
  [[nodiscard]] std::vector<Meaning> FindQualified(std::size_t module, const NameUse& use) const;

  std::u16string project_name_;
  std::vector<const Module*> modules_;
  std::unordered_map<std::u16string, std::vector<Entry>, Hash, std::equal_to<>> entries_;
  mutable std::u16string lowered_;  // reused
};

}  // namespace declarium::vb
