#include "host/active_code_module.h"

#include <utility>

#include "toolkit/held_flag.h"

namespace declarium {
ActiveCodeModule::ActiveCodeModule(std::shared_ptr<HostApplication> application,
                                   std::function<void()> changed)
    : application_(std::move(application)), changed_(std::move(changed)) {}

void ActiveCodeModule::Follow() {
  const auto application = application_;
  if (!application) return;
  auto subscription = application->SubscribeComponents(shared_from_this());
  if (subscription && application_) subscription_ = std::move(*subscription);
  Refresh();
}

void ActiveCodeModule::Stop() {
  // First, so that what the host reports while it takes its objects back changes nothing.
  const auto application = std::exchange(application_, nullptr);
  subscription_.reset();
  module_.reset();
}

std::unique_ptr<CodeModule> ActiveCodeModule::Ask() {
  // The host may disconnect the add-in from within the call.
  const auto application = application_;
  if (!application) return nullptr;
  auto module = application->ActiveModule();
  return module ? std::move(*module) : nullptr;
}

void ActiveCodeModule::Refresh() {
  const int seen = replacements_;
  auto module = Ask();
  // What the host reported while it was asked is newer than its answer.
  if (replacements_ == seen) ComponentSelected(std::move(module));
}

void ActiveCodeModule::Check() {
  // A slow host must not be asked again from within the call that it has not answered yet.
  const auto application = application_;
  if (!application || checking_) return;
  const HeldFlag checking(checking_);
  if (application->HasMovedSelection()) return Refresh();
  const auto module = module_;
  if (!module) return;
  [[maybe_unused]] const auto lines = module->CountOfLines(BusyHost::kGiveUp);
}

void ActiveCodeModule::ComponentSelected(std::unique_ptr<CodeModule> module) {
  if (!application_) return;
  ++replacements_;
  // Giving the last module back calls the host as well.
  std::shared_ptr<CodeModule> last = std::exchange(module_, std::move(module));
  last.reset();
  if (application_) changed_();
}

void ActiveCodeModule::ComponentRemoved(CodeModule& removed) {
  const auto module = module_;
  // A module that no longer answers is as good as removed.
  if (!module || !module->IsSameAs(removed).value_or(true)) return;
  auto next = Ask();
  // Some hosts report the removal while the component is still the selected one.
  if (next && next->IsSameAs(removed).value_or(true)) next = nullptr;
  ComponentSelected(std::move(next));
}

}  // namespace declarium
