// Whether a module has a declaration already.
//
//   insert    nothing of this name counts in the module: it is missing
//   present   the module, or a public declaration of another one, says the same (plan/meaning.h)
//   differs   a declaration of the same kind and name says something else
//   clash     the name is taken by something else
//
// A member of an Enum with the value of a constant is present for it. Private declarations of other
// modules do not count, nor do branches of #If that the target leaves out.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "library/kind.h"
#include "plan/missing_branches.h"
#include "plan/project_modules.h"
#include "vb/audience.h"

namespace declarium::plan {

enum class Does : unsigned char { kInsert, kPresent, kDiffers, kClash };

// "insert", "present", "differs" or "clash".
[[nodiscard]] std::string_view DoesText(Does does);

// What has a name.
enum class Holder : unsigned char {
  kConst,
  kDeclare,
  kType,
  kEnum,
  kEnumMember,
  kVariable,
  kEvent,
  kControl,
  kProcedure,
  kModule,
};

// "constant", "Declare", "Type", "Enum", "member of an Enum", "variable" and so on.
[[nodiscard]] std::string_view HolderText(Holder holder);

// What stands under a name.
struct Found {
  std::size_t module = 0;  // its position
  std::u16string name;     // of the module
  std::uint32_t line = 1;  // of the module's text
  Holder holder = Holder::kConst;
  std::u16string text;  // the declaration as it is written; of anything else its line
};

struct Presence {
  Does does = Does::kInsert;
  std::optional<Found> found;               // also what other branches have, for kInsert
  std::optional<MissingBranches> branches;  // where it is missing, when not everywhere
};

class PresenceFinder {
 public:
  // For the module at position `module`. `wanted` are the modules that declare what is wanted, as
  // the target has it. All of them must outlive the finder.
  PresenceFinder(ProjectModules& project, std::size_t module, vb::Audience target,
                 std::span<const vb::Module* const> wanted);

  // `wanted` declares the name.
  [[nodiscard]] Presence Find(Kind kind, std::u16string_view name, const vb::Module& wanted);

 private:
  struct Occurrence {
    vb::Meaning meaning;
    std::uint32_t condition;         // of its module
    std::uint32_t member_condition;  // of a member of an Enum
  };
  struct System {
    vb::Target target;
    vb::Definitions definitions;  // of what is wanted
  };

  [[nodiscard]] std::vector<Occurrence> OccurrencesOf(Kind kind, std::u16string_view name) const;
  [[nodiscard]] vb::Branch BranchOf(const Occurrence& occurrence, vb::Target target);
  [[nodiscard]] bool IsSame(const Occurrence& occurrence, Kind kind, const vb::Module& wanted,
                            System& system);
  [[nodiscard]] bool HasKind(const Occurrence& occurrence, Kind kind) const;
  [[nodiscard]] Found FoundAt(const Occurrence& occurrence) const;
  // Those branches of the module itself that declare the name.
  [[nodiscard]] MissingBranches BranchesWithout(std::span<const Occurrence> occurrences) const;

  ProjectModules& project_;
  std::size_t module_;
  std::deque<System> systems_;
};

}  // namespace declarium::plan
