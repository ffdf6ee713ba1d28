// What happens to the calls that an add-in makes: counted, recorded, rejected, failed or deadly.
#pragma once

#include <map>
#include <string>
#include <vector>
#include <windows.h>

namespace declarium::vbhost {

class CallPolicy {
 public:
  // Called for each call before it does anything; `name` is "Object.Member". The result is what the
  // call returns unless it is S_OK.
  [[nodiscard]] HRESULT Enter(const std::string& name);

  // Calls from now on, until the next Reset, by number.
  void Reset();
  // The `number`th call from now on (1 is the next) returns `result`.
  void FailCall(int number, HRESULT result);
  // Every call of the member returns `result`; S_OK ends that. "Member" without the object.
  void FailMember(const std::string& member, HRESULT result);
  // Every call of the member succeeds and answers this, whatever it should: a whole number as such,
  // "nothing" with an empty value, other words as text. "Member" without the object.
  void Lie(const std::string& member, const std::string& answer);
  // What to answer in the place of "Object.Member"; null for the truth.
  [[nodiscard]] const std::string* LieOf(const std::string& name) const;
  // The process ends inside the `number`th call from now on.
  void DieAtCall(int number);
  void Clear();

  // Incoming calls are rejected: the next `count` ones, all when negative.
  void BeBusy(DWORD answer, int count);
  // For the message filter.
  [[nodiscard]] DWORD AnswerToIncomingCall();

  [[nodiscard]] int count() const noexcept { return static_cast<int>(names_.size()); }
  [[nodiscard]] const std::vector<std::string>& names() const noexcept { return names_; }
  [[nodiscard]] int rejected() const noexcept { return rejected_; }

 private:
  std::vector<std::string> names_;
  int until_failure_ = 0;
  HRESULT failure_ = S_OK;
  int until_death_ = 0;
  std::map<std::string, HRESULT> failing_members_;
  std::map<std::string, std::string> lies_;
  DWORD busy_answer_ = 0;
  int busy_calls_ = 0;
  int rejected_ = 0;
};

}  // namespace declarium::vbhost
