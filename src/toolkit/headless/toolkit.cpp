#include "toolkit/headless/toolkit.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <utility>

#include "toolkit/headless/form.h"

namespace declarium::headless {

// While it lives the forms that were there before take no input; of a form that is shown as a
// dialog, until that is hidden, before its handlers have returned.
class HeadlessToolkit::OpenDialog {
 public:
  OpenDialog(HeadlessToolkit& toolkit, HeadlessForm* dialog) : toolkit_(toolkit), dialog_(dialog) {
    blocked_.reserve(toolkit.forms_.size());  // a form that is blocked must be found again
    for (HeadlessForm* form : toolkit.forms_) {
      if (form == dialog) continue;
      form->Block();
      blocked_.push_back(form);
    }
    if (dialog_) dialog_->SetOnHide([this] { Unblock(); });
    ++toolkit_.open_dialogs_;
  }
  ~OpenDialog() {
    --toolkit_.open_dialogs_;
    if (dialog_) dialog_->SetOnHide({});
    Unblock();
  }
  OpenDialog(const OpenDialog&) = delete;
  OpenDialog& operator=(const OpenDialog&) = delete;

 private:
  void Unblock() {
    for (HeadlessForm* form : std::exchange(blocked_, {})) {
      if (std::ranges::find(toolkit_.forms_, form) != toolkit_.forms_.end()) form->Unblock();
    }
  }

  HeadlessToolkit& toolkit_;
  HeadlessForm* dialog_;
  std::vector<HeadlessForm*> blocked_;
};

HeadlessToolkit::HeadlessToolkit() = default;
HeadlessToolkit::~HeadlessToolkit() {
  to_destroy_.clear();
}

std::unique_ptr<Form> HeadlessToolkit::CreateForm(const FormDefinition& definition) {
  RequireValid(definition);
  return std::make_unique<HeadlessForm>(*this, definition);
}

Answer HeadlessToolkit::ShowMessage(const Message& message, OpenMessage& box) {
  std::optional<OpenDialog> open;
  if (box.Place() == MessagePlace::kActiveForm) open.emplace(*this, nullptr);
  std::optional<Answer> ended;
  const OpenMessage::Shown shown(box, [&ended](Answer answer) { ended = answer; });
  const Answer answer = script_.Ask(message);
  return ended.value_or(answer);
}

std::u16string HeadlessToolkit::AskText(std::u16string_view prompt,
                                        std::u16string_view initial_text) {
  const OpenDialog open(*this, nullptr);
  return script_.Ask(TextQuestion{std::u16string(prompt), std::u16string(initial_text)});
}

std::optional<std::u16string> HeadlessToolkit::ChooseFileToOpen(const FileDialog& dialog) {
  const OpenDialog open(*this, nullptr);
  return script_.Ask(OpenQuestion{dialog});
}

std::optional<std::u16string> HeadlessToolkit::ChooseFileToSave(const FileDialog& dialog) {
  const OpenDialog open(*this, nullptr);
  return script_.Ask(SaveQuestion{dialog});
}

std::optional<Color> HeadlessToolkit::AskColor(Color initial) {
  const OpenDialog open(*this, nullptr);
  return script_.Ask(ColorQuestion{initial});
}

bool HeadlessToolkit::OpenDocument(std::u16string_view path) {
  std::error_code ignored;
  if (refuse_documents_ || !std::filesystem::exists(path, ignored)) return false;
  documents_.emplace_back(path);
  return true;
}

void HeadlessToolkit::ShowModally(HeadlessForm& form) {
  const OpenDialog open(*this, &form);
  script_.Ask(ModalForm{form.Name()}, form);
  if (form.Visible()) throw std::logic_error("the modal form " + form.Name() + " was left open");
}

void HeadlessToolkit::PaintForms() {
  const std::vector<HeadlessForm*> forms = forms_;
  for (HeadlessForm* form : forms) form->PaintPictures();
}

void HeadlessToolkit::ProcessPendingEvents() {
  while (!pending_.empty()) {
    const std::function<void()> action = std::move(pending_.front());
    pending_.pop_front();
    action();
  }
  PaintForms();
}

bool HeadlessToolkit::FireNextTimer(std::uint32_t limit) {
  HeadlessTimer* first = nullptr;
  for (const HeadlessForm* form : forms_) {
    if (!form->IsLoaded()) continue;
    for (HeadlessTimer* timer : form->Timers()) {
      if (timer->Runs() && (!first || timer->Due() < first->Due())) first = timer;
    }
  }
  if (!first || first->Due() > limit) return false;
  now_ = std::max(now_, first->Due());
  first->Fire();
  return true;
}

void HeadlessToolkit::Advance(std::uint32_t milliseconds) {
  const std::uint32_t end = now_ + milliseconds;
  ProcessPendingEvents();
  EndTurn();
  while (FireNextTimer(end)) {
    ProcessPendingEvents();
    EndTurn();
  }
  now_ = end;
}

void HeadlessToolkit::EndTurn() {
  if (open_dialogs_ > 0) return;
  const auto destroyed = std::exchange(to_destroy_, {});
}

int HeadlessToolkit::Run() {
  constexpr std::uint32_t kForever = 0xFFFFFFFF;
  exit_code_.reset();
  while (true) {
    ProcessPendingEvents();
    EndTurn();
    if (exit_code_) return *exit_code_;
    if (!FireNextTimer(kForever)) throw std::logic_error("nothing can happen any more");
  }
}

void HeadlessToolkit::Unregister(HeadlessForm& form) {
  std::erase(forms_, &form);
  std::erase(activation_order_, &form);
  if (active_ == &form) active_ = nullptr;
}

void HeadlessToolkit::Activate(HeadlessForm& form) {
  if (active_ == &form) return;
  HeadlessForm* previous = active_;
  active_ = &form;
  std::erase(activation_order_, &form);
  activation_order_.push_back(&form);
  if (previous && previous->Visible()) previous->on_deactivate.Raise();
  form.on_activate.Raise();
  if (active_ == &form) form.TakeFocus();
}

void HeadlessToolkit::Deactivate(HeadlessForm& form) {
  std::erase(activation_order_, &form);
  if (form.KeptFocus() == focused_) focused_ = nullptr;
  if (active_ != &form) return;
  active_ = nullptr;
  if (!activation_order_.empty()) Activate(*activation_order_.back());
}

void HeadlessToolkit::SetFocusedControl(Control* control) {
  if (control == focused_) return;
  Control* previous = focused_;
  focused_ = control;
  if (previous) previous->on_lost_focus.Raise();
  if (control && focused_ == control) control->on_got_focus.Raise();
}

}  // namespace declarium::headless
