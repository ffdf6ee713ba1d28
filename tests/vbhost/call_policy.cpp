#include "vbhost/call_policy.h"

#include <objidl.h>

namespace declarium::vbhost {

HRESULT CallPolicy::Enter(const std::string& name) {
  names_.push_back(name);
  if (until_death_ > 0 && --until_death_ == 0) TerminateProcess(GetCurrentProcess(), 3);
  if (until_failure_ > 0 && --until_failure_ == 0) return failure_;
  const auto failing = failing_members_.find(name.substr(name.find('.') + 1));
  return failing == failing_members_.end() ? S_OK : failing->second;
}

void CallPolicy::Reset() {
  names_.clear();
  rejected_ = 0;
}

void CallPolicy::FailCall(int number, HRESULT result) {
  until_failure_ = number;
  failure_ = result;
}

void CallPolicy::FailMember(const std::string& member, HRESULT result) {
  failing_members_[member] = result;
}

void CallPolicy::Lie(const std::string& member, const std::string& answer) {
  lies_[member] = answer;
}

const std::string* CallPolicy::LieOf(const std::string& name) const {
  const auto lie = lies_.find(name.substr(name.find('.') + 1));
  return lie == lies_.end() ? nullptr : &lie->second;
}

void CallPolicy::DieAtCall(int number) {
  until_death_ = number;
}

void CallPolicy::Clear() {
  until_failure_ = 0;
  until_death_ = 0;
  failing_members_.clear();
  lies_.clear();
  busy_calls_ = 0;
}

void CallPolicy::BeBusy(DWORD answer, int count) {
  busy_answer_ = answer;
  busy_calls_ = count;
}

DWORD CallPolicy::AnswerToIncomingCall() {
  if (busy_calls_ == 0) return SERVERCALL_ISHANDLED;
  if (busy_calls_ > 0) --busy_calls_;
  ++rejected_;
  return busy_answer_;
}

}  // namespace declarium::vbhost
