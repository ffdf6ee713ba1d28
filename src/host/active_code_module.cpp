#include "host/active_code_module.h"

#include <utility>

namespace declarium {
namespace {

bool IsNamed(CodeModule* module, std::u16string_view name) {
  if (!module) return false;
  const auto own_name = module->ComponentName();
  return own_name && *own_name == name;
}

}  // namespace

ActiveCodeModule::ActiveCodeModule(std::shared_ptr<HostApplication> application,
                                   std::function<void()> changed)
    : application_(std::move(application)), changed_(std::move(changed)) {}

void ActiveCodeModule::Follow() {
  if (auto subscription = application_->SubscribeComponents(*this)) {
    subscription_ = std::move(*subscription);
  }
  Refresh();
}

void ActiveCodeModule::Stop() {
  subscription_.reset();
  module_.reset();
  application_.reset();
}

std::unique_ptr<CodeModule> ActiveCodeModule::Ask() {
  // The host may disconnect the add-in from within the call.
  const auto application = application_;
  if (!application) return nullptr;
  auto module = application->ActiveModule();
  return module ? std::move(*module) : nullptr;
}

void ActiveCodeModule::Refresh() {
  ComponentSelected(Ask());
}

void ActiveCodeModule::Check() {
  const auto module = module_;
  if (!module) return;
  [[maybe_unused]] const auto lines = module->CountOfLines();
}

void ActiveCodeModule::ComponentSelected(std::unique_ptr<CodeModule> module) {
  if (!application_) return;
  module_ = std::move(module);
  changed_();
}

void ActiveCodeModule::ComponentRemoved(std::u16string_view name) {
  // A module that no longer answers is as good as removed.
  if (!module_ || (module_->ComponentName() && !IsNamed(module_.get(), name))) return;
  auto next = Ask();
  // Some hosts report the removal while the component is still the selected one.
  if (IsNamed(next.get(), name)) next = nullptr;
  ComponentSelected(std::move(next));
}

}  // namespace declarium
