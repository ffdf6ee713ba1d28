#include "host/server_switches.h"

#include <array>
#include <optional>
#include <string_view>

#include "text/text.h"

namespace declarium {
namespace {

struct Switch {
  std::u16string_view name;
  ServerTask task;
  RegistrationScope scope;
};

constexpr std::array<Switch, 7> kSwitches = {{
    {u"embedding", ServerTask::kServe, RegistrationScope::kUser},
    {u"automation", ServerTask::kServe, RegistrationScope::kUser},
    {u"regserver", ServerTask::kRegister, RegistrationScope::kUser},
    {u"regserver:machine", ServerTask::kRegister, RegistrationScope::kMachine},
    {u"unregserver", ServerTask::kUnregister, RegistrationScope::kUser},
    {u"unregserver:machine", ServerTask::kUnregister, RegistrationScope::kMachine},
    {u"doctor", ServerTask::kDoctor, RegistrationScope::kUser},
}};

std::optional<Switch> FindSwitch(std::u16string_view argument) {
  if (argument.empty() || (argument[0] != u'-' && argument[0] != u'/')) return std::nullopt;
  for (const auto& candidate : kSwitches) {
    if (EqualIgnoringCase(argument.substr(1), candidate.name)) return candidate;
  }
  return std::nullopt;
}

}  // namespace

ServerSwitches ParseServerSwitches(std::span<const std::u16string> arguments) {
  ServerSwitches switches;
  for (const auto& argument : arguments) {
    if (const auto found = FindSwitch(argument)) {
      switches.task = found->task;
      switches.scope = found->scope;
    } else {
      switches.rest.push_back(argument);
    }
  }
  return switches;
}

}  // namespace declarium
