// The code module that the programmer is working on, followed through the host's events.
#pragma once

#include <functional>
#include <memory>

#include "host/host_object_model.h"

namespace declarium {

// Owned by a std::shared_ptr: the host's events take a share while they are handled, since each
// call that handles them may let the host in, which may disconnect.
class ActiveCodeModule final : public ComponentEvents,
                               public std::enable_shared_from_this<ActiveCodeModule> {
 public:
  // `changed` is called after each replacement, also one by none.
  ActiveCodeModule(std::shared_ptr<HostApplication> application, std::function<void()> changed);

  // Subscribes to the host's events and takes what is active now. A host that refuses the
  // subscription is asked again by Refresh only.
  void Follow();

  // Takes what the host says is active now; a failing host means none.
  void Refresh();

  // Ends the events and forgets the host for good. There is no active code module afterwards, and
  // `changed` is called no more.
  void Stop();

  // Null when there is none. Who keeps the module over a call that lets events in keeps a share.
  [[nodiscard]] std::shared_ptr<CodeModule> Module() const noexcept { return module_; }

  // One turn of the 100 ms timer CodeModuleChecker: reads CountOfLines and ignores any error. A
  // host that does not say when another component is selected is asked for it instead. Does nothing
  // while a turn before it waits for its answer.
  void Check();

  void ComponentSelected(std::unique_ptr<CodeModule> module) override;
  void ComponentRemoved(CodeModule& removed) override;
  void SelectionMayHaveChanged() override { Refresh(); }

 private:
  [[nodiscard]] std::unique_ptr<CodeModule> Ask();

  std::shared_ptr<HostApplication> application_;  // null when stopped
  std::function<void()> changed_;
  std::shared_ptr<CodeModule> module_;
  int replacements_ = 0;  // of the module, so far
  bool checking_ = false;
  std::unique_ptr<Subscription> subscription_;
};

}  // namespace declarium
