// Which declarations can be changed without asking.
#pragma once

#include <set>
#include <string_view>
#include <vector>

#include "audit/alike.h"
#include "audit/line_edits.h"
#include "audit/uses.h"

namespace declarium::audit {

// Why something is left to a person.
enum class Obstacle : unsigned char {
  kNone,
  kCondition,         // it stands inside #If
  kFaults,            // its module has lines that cannot be read
  kOtherProject,      // another project has the module, too
  kSharesLine,        // something else stands on its lines
  kMissingModules,    // not all modules of the project are there
  kQuiet,             // a comment ' nocheck keeps it
  kNeeded,            // something that stays needs it
  kDiffers,           // the others of the name differ
  kNotExchangeable,   // they mean the same, with other types or parameter names
  kEnumeration,       // code may name it in front of its members
  kShownByClass,      // a class shows it to others
  kNoStandardModule,  // only a standard module can have it for all
  kNameTaken,         // something else has the name, too
  kQualified,         // code names a module in front of it
  kOthersMeanIt,      // a module that does not declare it has the name from elsewhere
  kNeedsPrivate,      // it holds a record that is Private
  kLeftOut,           // the user leaves it out
  kSaysTheSame,       // the library's form differs in its words alone
  kUnreadable,        // the library's form cannot be read
  kOtherEntry,        // the library's form calls another procedure of a DLL
  kOtherCalls,        // calls as they stand do not fit the library's form
  kNamedArguments,    // code names parameters, which the library's form names otherwise
  kOtherMembers,      // the library's record has members of other names or kinds
  kOtherValue,        // the library's value is a text for a number, or none that can be told
  kOtherNames,        // the library's form uses names that this one does not
  kHoldsComments,     // its comments would be lost
  kStandsForOthers,   // it becomes the one for other modules first
};

// A clause for people, "it stands inside #If".
[[nodiscard]] std::string_view ObstacleText(Obstacle obstacle);

// Answers by row. What is handed over must outlive it.
class Certainty {
 public:
  Certainty(const Subject& subject, const std::vector<Row>& rows, const Uses& uses,
            const RowFinder& finder, const std::vector<ModuleLines>& lines);

  // What keeps the row's lines from being changed or removed.
  [[nodiscard]] Obstacle ToChange(std::size_t row) const { return obstacles_[row]; }

  // What keeps one of the rows, which are all of a name and kind that are there, from standing for
  // all of them as Public; `keeper` becomes that one. Whether what it holds is Public is not asked.
  [[nodiscard]] Obstacle ToMerge(const std::vector<std::size_t>& group, const Likeness& likeness,
                                 const Rest& rest, std::size_t& keeper) const;

 private:
  [[nodiscard]] Obstacle FindObstacle(std::size_t row, const RowFinder& finder,
                                      const ModuleLines& lines) const;
  void FindOtherNames();
  [[nodiscard]] std::size_t KeeperOf(const std::vector<std::size_t>& group, const Rest& rest) const;
  [[nodiscard]] Obstacle ToStandFor(const std::vector<std::size_t>& group, std::size_t keeper,
                                    const Rest& rest) const;
  [[nodiscard]] bool IsAlone(const std::vector<std::size_t>& group, const Rest& rest) const;

  // The modules that uses which are there name in front of the name.
  [[nodiscard]] std::set<std::size_t> NamedWith(std::size_t name, const Rest& rest) const;
  // Whether modules that declare none of the group use its name.
  [[nodiscard]] bool IsUsedOutside(const std::vector<std::size_t>& group, const Rest& rest) const;

  const Subject& subject_;
  const std::vector<Row>& rows_;
  const Uses& uses_;
  std::vector<Obstacle> obstacles_;
  std::vector<bool> is_taken_;  // by name: something else has it
};

}  // namespace declarium::audit
