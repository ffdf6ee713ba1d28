// What the rules see: the subject with what its names mean, the libraries, the options, and where
// findings go.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "check/finding.h"
#include "check/reference.h"
#include "check/subject.h"

namespace declarium::check {

struct WindowsVersion {
  int major = 0;
  int minor = 0;
  friend auto operator<=>(const WindowsVersion&, const WindowsVersion&) = default;
};

struct Options {
  Audience audience = Audience::kVb6;
  std::optional<WindowsVersion> windows = {};  // the oldest that must do
  // Asked before every step of the work: false stops it, and the findings are not complete then.
  std::function<bool()> go_on = [] { return true; };
};

// The systems that compile a declaration.
struct Systems {
  bool vb6 = false;
  bool vba32 = false;
  bool vba64 = false;
  bool twin_basic = false;
  bool is_certain = true;       // false for a branch of #If that a project decides
  std::uint32_t condition = 0;  // the branch

  [[nodiscard]] bool Any() const { return vb6 || vba32 || vba64 || twin_basic; }
  [[nodiscard]] bool Have32Bits() const { return vb6 || vba32; }
  [[nodiscard]] bool Have64Bits() const { return vba64 || twin_basic; }
  // Whether one system certainly compiles both.
  [[nodiscard]] bool Share(const Systems& other) const {
    const bool knows_both = is_certain && other.is_certain;
    if (!knows_both && condition != other.condition) return false;
    return (vb6 && other.vb6) || (vba32 && other.vba32) || (vba64 && other.vba64) ||
           (twin_basic && other.twin_basic);
  }
};

// A Type or Enum of the subject.
struct DeclaredType {
  const vb::Declaration* declaration;
  std::size_t module;
};

class Context {
 public:
  // What is handed over must outlive the context.
  Context(const Subject& subject, Reference& reference, const Options& options);

  [[nodiscard]] const Subject& Checked() const { return subject_; }
  [[nodiscard]] Reference& Libraries() { return reference_; }
  [[nodiscard]] const Options& Wanted() const { return options_; }
  [[nodiscard]] bool Checks64Bits() const { return options_.audience != Audience::kVb6; }

  // The Type or Enum that the name means in the module: its own first; null for none. A qualifier
  // in front is passed over.
  [[nodiscard]] const DeclaredType* FindType(std::u16string_view name, std::size_t module) const;
  // The record of that name; null for an enumeration too.
  [[nodiscard]] const vb::Record* FindRecord(std::u16string_view name, std::size_t module) const;

  [[nodiscard]] vb::Definitions& Definitions32() { return definitions32_; }
  [[nodiscard]] vb::Definitions& Definitions64() { return definitions64_; }

  std::vector<Finding> findings;

 private:
  const Subject& subject_;
  Reference& reference_;
  Options options_;
  vb::Definitions definitions32_;
  vb::Definitions definitions64_;
  std::unordered_map<std::u16string, std::vector<DeclaredType>> types_;  // by lower-cased name
};

// One module of the subject.
class ModuleContext {
 public:
  ModuleContext(Context& whole, std::size_t module);

  Context& whole;
  const std::size_t module;
  const std::u16string_view text;
  const vb::Module& parsed;

  // What names mean here: the module's own declarations before those of the others.
  [[nodiscard]] vb::Definitions& Definitions32() {
    return Made(definitions32_, whole.Definitions32());
  }
  [[nodiscard]] vb::Definitions& Definitions64() {
    return Made(definitions64_, whole.Definitions64());
  }

  [[nodiscard]] const Systems& SystemsOf(std::uint32_t condition) const {
    return systems_[condition];
  }
  [[nodiscard]] const Systems& SystemsOf(const vb::Declaration& declaration) const {
    return systems_[declaration.condition];
  }

  // The record of that name whose own size `member` holds: it is the first; null for none.
  [[nodiscard]] const vb::Record* FindSizedRecord(std::u16string_view name,
                                                  std::u16string_view member) const;

  // Adds a finding about a declaration.
  Finding& Report(RuleId rule, const vb::Declaration& declaration, const vb::Place& place,
                  std::string message) const;
  // Adds one about code or the module.
  Finding& Report(RuleId rule, const vb::Place& place, std::u16string_view name,
                  std::string message) const;

  // The place of a part of the declaration's text; where the declaration begins for a text that is
  // no part of it.
  [[nodiscard]] vb::Place PlaceOf(const vb::Declaration& declaration,
                                  std::u16string_view part) const;
  [[nodiscard]] bool Holds(std::u16string_view part) const;
  // `part`, which the module's text holds, replaced.
  [[nodiscard]] Edit Replacing(std::u16string_view part, std::u16string_view by) const;
  // Something put behind `part`.
  [[nodiscard]] Edit Behind(std::u16string_view part, std::u16string_view what) const;

 private:
  vb::Definitions& Made(std::optional<vb::Definitions>& definitions, vb::Definitions& all) const;

  std::vector<Systems> systems_;                  // by condition
  std::optional<vb::Definitions> definitions32_;  // made when they are asked for
  std::optional<vb::Definitions> definitions64_;
};

// Whether the type is the language's own of this name and no array.
[[nodiscard]] bool IsType(const vb::TypeReference& type, std::u16string_view name);

// Whether a record's member of this name holds the record's own size.
[[nodiscard]] bool IsSizeMember(std::u16string_view name);

// `text` in double quotes for messages, UTF-8.
[[nodiscard]] std::string Quoted(std::u16string_view text);

}  // namespace declarium::check
