// A report on why the host does or does not find the add-in: every key that matters, what stands
// there, what is wrong with it and how to mend that.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/registration.h"

namespace declarium {

enum class FindingLevel { kFine, kWarning, kWrong };

enum class FindingKind {
  kLoadsAtStart,
  kLoadsByHand,
  kLoadsOnCommandLine,
  kNotListed,
  kLoadBehaviorUnreadable,
  kListedForOtherUser,
  kNoClassId,
  kClassId,
  kForeignClassId,
  kNoServer,
  kServer,
  kServerIsMissing,
  kServerIsFolder,
  kServerIsOtherProgram,
  kServerIsOtherCopy,
  kNoServerExecutable,
  kOnlyWideServer,
  kCannotStart,
  kUserOnly,
  kEditorsNotRegistered,
  kEditorsLoad,
  kEditorsGaveUp,
  kNoDll,
  kDll,
  kDllIsMissing,
  kDllIsOtherCopy,
};

// What is said of a kind of finding, in the report and in the guide.
struct FindingText {
  FindingKind kind;
  FindingLevel level;  // at most, where another entry is used before the one it is about
  std::u16string_view what;
  std::u16string_view mend;  // "" when there is nothing to mend
};

// One for each kind, in the order of the kinds.
[[nodiscard]] std::span<const FindingText> FindingTexts() noexcept;

struct Finding {
  FindingKind kind;
  FindingLevel level;
  std::u16string text;  // where, what and the mend
};

enum class FileKind { kMissing, kFolder, kFile };

// Facts from outside the registry.
struct DoctorFacts {
  std::u16string program;  // the full path of the running program
  std::function<FileKind(std::u16string_view path)> kind_of;
};

// Looks at everything, also after something wrong was found.
[[nodiscard]] std::vector<Finding> ExamineRegistration(const Registry& registry,
                                                       const ServerIdentity& server,
                                                       const DoctorFacts& facts);

// The same for the add-in of the VBA editors, one bitness after the other. Editors that it is not
// registered for are fine.
[[nodiscard]] std::vector<Finding> ExamineVbaRegistration(const Registry& registry,
                                                          const ServerIdentity& add_in,
                                                          const DoctorFacts& facts);

// Whether the host can load the add-in: nothing wrong was found.
[[nodiscard]] bool CanBeLoaded(std::span<const Finding> findings);

// One line per finding, "ok", "warning" or "WRONG" first, and a last line with the verdict on the
// IDE, and on VBA editors where the add-in is registered for them. CR LF.
[[nodiscard]] std::u16string DoctorReport(std::span<const Finding> findings,
                                          std::span<const Finding> of_vba);

}  // namespace declarium
