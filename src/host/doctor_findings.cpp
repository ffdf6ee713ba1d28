// The table of everything that the report can say. The guide shows it, too.
#include <array>

#include "host/doctor.h"

namespace declarium {
namespace {

using enum FindingKind;
using enum FindingLevel;

constexpr std::u16string_view kRegister = u"run /RegServer";
constexpr std::u16string_view kRegisterVba = u"run /RegServer:vba";
constexpr std::u16string_view kCheckInManager =
    u"check Load on Startup in the IDE's Add-In Manager to have it always";

constexpr std::array<FindingText, 26> kTexts = {{
    {kLoadsAtStart, kFine, u"the IDE loads the add-in at its start", u""},
    {kLoadsByHand, kWarning, u"the IDE loads the add-in by hand only, with Loaded/Unloaded",
     kCheckInManager},
    {kLoadsOnCommandLine, kWarning,
     u"the IDE loads the add-in by itself only when it runs from the command line",
     kCheckInManager},
    {kNotListed, kWrong, u"missing, the IDE does not list the add-in for this user", kRegister},
    {kLoadBehaviorUnreadable, kWrong, u"LoadBehavior is no number", kRegister},
    {kListedForOtherUser, kWarning, u"the add-in is registered for another user",
     u"run /RegServer as the user of the IDE"},
    {kNoClassId, kFine, u"not registered", u""},
    {kClassId, kFine, u"this program's class", u""},
    {kForeignClassId, kWrong, u"not this program's class", kRegister},
    {kNoServer, kFine, u"nothing", u""},
    {kServer, kFine, u"this program", u""},
    {kServerIsMissing, kWrong, u"does not exist", kRegister},
    {kServerIsFolder, kWrong, u"is a folder", kRegister},
    {kServerIsOtherProgram, kWrong, u"is another program", kRegister},
    {kServerIsOtherCopy, kWarning, u"is another copy of the program",
     u"run /RegServer with the copy that the IDE is to load"},
    {kNoServerExecutable, kWarning, u"ServerExecutable is missing", kRegister},
    {kOnlyWideServer, kWrong,
     u"Only the 64-bit view has the program, and the IDE is a 32-bit program",
     u"run /RegServer with the 32-bit Declarium.exe"},
    {kCannotStart, kWrong, u"The class cannot be started", kRegister},
    {kUserOnly, kWarning,
     u"The class is registered for this user only: an IDE that runs as administrator does not see "
     u"it",
     u"run /RegServer:machine as administrator if yours does"},
    {kEditorsNotRegistered, kFine, u"not registered for these VBA editors", u""},
    {kEditorsLoad, kFine, u"these VBA editors load the add-in at their start", u""},
    {kEditorsGaveUp, kWrong, u"these VBA editors do not load the add-in, as after a failure",
     kRegisterVba},
    {kNoDll, kWrong, u"no DLL is registered", kRegisterVba},
    {kDll, kFine, u"this program's DLL", u""},
    {kDllIsMissing, kWrong, u"the DLL does not exist", kRegisterVba},
    {kDllIsOtherCopy, kWarning, u"is the DLL of another copy of the program",
     u"run /RegServer:vba with the copy that the editors are to load"},
}};

constexpr bool StandInTheOrderOfTheKinds() {
  for (std::size_t i = 0; i < kTexts.size(); ++i) {
    if (kTexts[i].kind != static_cast<FindingKind>(i)) return false;
  }
  return true;
}
static_assert(StandInTheOrderOfTheKinds());

}  // namespace

std::span<const FindingText> FindingTexts() noexcept {
  return kTexts;
}

}  // namespace declarium
