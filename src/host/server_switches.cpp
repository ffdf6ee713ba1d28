#include "host/server_switches.h"

#include <algorithm>
#include <array>

#include "text/text.h"

namespace declarium {
namespace {

template <ServerTask task, RegistrationScope scope = RegistrationScope::kUser>
void SetTask(ServerSwitches& switches) {
  switches.task = task;
  switches.scope = scope;
}

constexpr std::array<ServerSwitch, 11> kSwitches = {{
    {u"RegServer", u"registers the add-in for the current user", SetTask<ServerTask::kRegister>},
    {u"RegServer:machine", u"registers it for every user; needs an administrator",
     SetTask<ServerTask::kRegister, RegistrationScope::kMachine>},
    {u"RegServer:vba", u"registers the add-in of the VBA editors for the current user",
     SetTask<ServerTask::kRegisterVba>},
    {u"UnregServer", u"removes every registration of the current user",
     SetTask<ServerTask::kUnregister>},
    {u"UnregServer:machine", u"removes the registration of every user; needs an administrator",
     SetTask<ServerTask::kUnregister, RegistrationScope::kMachine>},
    {u"Doctor", u"reports what the IDE finds of the registration, and what mends it",
     SetTask<ServerTask::kDoctor>},
    {u"Quiet", u"with the above: shows no box where there is no console",
     [](ServerSwitches& switches) { switches.quiet = true; }},
    {u"Log",
     u"writes calls and failures to %LOCALAPPDATA%\\Declarium\\Log; with /RegServer each time that "
     u"the IDE starts the program",
     [](ServerSwitches& switches) { switches.log = true; }},
    {u"Embedding", u"is how Windows starts the program for the IDE", SetTask<ServerTask::kServe>},
    {u"Automation", u"is the same", SetTask<ServerTask::kServe>},
    {u"?", u"shows this", SetTask<ServerTask::kHelp>},
}};

const ServerSwitch* FindSwitch(std::u16string_view argument) {
  if (argument.empty() || (argument[0] != u'-' && argument[0] != u'/')) return nullptr;
  const auto found = std::ranges::find_if(kSwitches, [&](const ServerSwitch& candidate) {
    return EqualIgnoringCase(argument.substr(1), candidate.name);
  });
  return found == kSwitches.end() ? nullptr : &*found;
}

std::size_t LongestName() {
  std::size_t longest = 0;
  for (const auto& one : kSwitches) longest = std::max(longest, one.name.size());
  return longest;
}

}  // namespace

std::span<const ServerSwitch> AllServerSwitches() noexcept {
  return kSwitches;
}

ServerSwitches ParseServerSwitches(std::span<const std::u16string> arguments) {
  ServerSwitches switches;
  for (const auto& argument : arguments) {
    if (const auto* found = FindSwitch(argument)) {
      found->apply(switches);
    } else {
      switches.rest.push_back(argument);
    }
  }
  return switches;
}

std::u16string SwitchHelp() {
  std::u16string help(u"Declarium.exe [SWITCH...] [LIBRARY.api]\r\n\r\n");
  for (const auto& one : kSwitches) {
    help.append(u"/").append(one.name);
    help.append(LongestName() - one.name.size() + 2, u' ').append(one.purpose).append(kCrLf);
  }
  return help.append(
      u"\r\nA switch may begin with \"-\" and be in any case. Exit status: 0 done, 1 not.\r\n");
}

}  // namespace declarium
