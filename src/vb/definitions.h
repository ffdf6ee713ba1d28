// What the declarations of modules mean for a target: the values of constants and the layouts of
// records, by their names.
#pragma once

#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "vb/expression.h"
#include "vb/layout.h"
#include "vb/module.h"

namespace declarium::vb {

// Whether a branch of conditional compilation is compiled.
enum class Branch { kCompiled, kLeftOut, kUnknown };

// The constants of #If that a module's project defines.
using ProjectConstants = std::span<const CompilerConstant>;

// For each condition of the module, what the module's own #Const, its project and the target say,
// the first of them that knows a name; one that none knows leaves the branch unknown.
[[nodiscard]] std::vector<Branch> BranchesOf(const Module& module, Target target,
                                             ProjectConstants constants = {});

class Definitions {
 public:
  // Names that are not found are looked up in `outer`, which must outlive this one; null for none.
  explicit Definitions(Target target, Definitions* outer = nullptr)
      : target_(target), outer_(outer) {}

  // Takes in the constants, enumerations and records of the module, which must stay in place, but
  // for those that the target and the project leave out. Of several of one name the first counts.
  void Add(const Module& module, ProjectConstants constants = {});

  [[nodiscard]] Target TargetSystem() const { return target_; }
  // The value of a constant or of an enumeration's member; a qualifier in front is passed over.
  [[nodiscard]] Evaluated ValueOf(std::u16string_view name);
  [[nodiscard]] Evaluated ValueOf(const Constant& constant);
  [[nodiscard]] std::expected<RecordLayout, std::string> LayoutOf(const Record& record);

 private:
  struct Named {
    const Constant* constant = nullptr;  // or else the member of an enumeration
    const Enumeration* enumeration = nullptr;
    std::size_t base = 0;  // the member that this one counts up from, and how far
    std::size_t above = 0;
    std::optional<Evaluated> value;
    bool is_open = false;  // being evaluated
  };
  struct NamedRecord {
    const Record* record = nullptr;  // null for an enumeration
    std::optional<std::optional<RecordLayout>> layout;
    bool is_open = false;
  };

  void AddMembers(const Enumeration& enumeration, const std::vector<Branch>& branches);
  [[nodiscard]] Evaluated Compute(Named& named);
  [[nodiscard]] Evaluated ValueOfMember(const Named& named);
  [[nodiscard]] Evaluated Evaluate(std::u16string_view expression);
  [[nodiscard]] std::optional<RecordLayout> RecordOf(std::u16string_view name);

  Target target_;
  Definitions* outer_;
  int depth_ = 0;  // of names inside names, which goes onto the stack
  std::unordered_map<std::u16string, Named> values_;  // by lower-cased name
  std::unordered_map<std::u16string, NamedRecord> records_;
};

}  // namespace declarium::vb
