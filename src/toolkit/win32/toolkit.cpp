#include "toolkit/win32/toolkit.h"

#include <algorithm>
#include <utility>

#include "toolkit/win32/form.h"
#include "win32/system.h"
#include "win32/wide.h"

namespace declarium::win32 {

namespace {

const wchar_t* CursorOf(MousePointer pointer) {
  switch (pointer) {
    case MousePointer::kSizeNorthSouth:
      return IDC_SIZENS;
    case MousePointer::kSizeWestEast:
      return IDC_SIZEWE;
    case MousePointer::kHourglass:
      return IDC_WAIT;
    default:
      return IDC_ARROW;
  }
}

}  // namespace

Win32Toolkit::Win32Toolkit() {
  const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES |
                                                         ICC_BAR_CLASSES | ICC_LISTVIEW_CLASSES |
                                                         ICC_PROGRESS_CLASS};
  InitCommonControlsEx(&classes);
  custom_colors_.fill(RGB(255, 255, 255));
}

std::unique_ptr<Form> Win32Toolkit::CreateForm(const FormDefinition& definition) {
  RequireValid(definition);
  return std::make_unique<Win32Form>(*this, definition);
}

void Win32Toolkit::Unregister(Win32Form& form) {
  std::erase(forms_, &form);
  if (active_ == &form) active_ = nullptr;
}

bool Win32Toolkit::Translate(MSG& message) const {
  const HWND root = GetAncestor(message.hwnd, GA_ROOT);
  const auto form = std::ranges::find(forms_, root, &Win32Form::Window);
  return form != forms_.end() && root && (*form)->Keys().Translate(message);
}

void Win32Toolkit::Dispatch(MSG& message) {
  bool translated = true;  // a key whose command failed has had its effect
  boundary.Run([&] { translated = Translate(message); });
  if (translated) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

void Win32Toolkit::ProcessPendingEvents() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      Quit(static_cast<int>(message.wParam));
    } else {
      Dispatch(message);
    }
  }
}

void Win32Toolkit::HandleNext() {
  MSG message;
  if (GetMessageW(&message, nullptr, 0, 0) <= 0) {
    Quit(static_cast<int>(message.wParam));
  } else {
    Dispatch(message);
  }
}

void Win32Toolkit::RunUntil(const std::function<bool()>& done) {
  while (!done() && !exit_code_) HandleNext();
}

int Win32Toolkit::Run() {
  exit_code_.reset();
  while (!exit_code_) {
    HandleNext();
    // Destroying raises events, which may put in more.
    const auto destroyed = std::exchange(to_destroy_, {});
  }
  return *exit_code_;
}

void Win32Toolkit::Quit(int exit_code) {
  exit_code_ = exit_code;
  PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);  // wakes the loops that wait
}

void Win32Toolkit::DestroyLater(std::shared_ptr<void> object) {
  to_destroy_.push_back(std::move(object));
}

void Win32Toolkit::FormActivated(Win32Form& form) {
  if (active_ == &form) return;
  Win32Form* previous = std::exchange(active_, &form);
  if (previous && previous->Visible()) previous->on_deactivate.Raise();
  form.on_activate.Raise();
}

void Win32Toolkit::FormHidden(Win32Form& form) {
  if (active_ == &form) active_ = nullptr;
}

void Win32Toolkit::ControlFocused(Control* control) {
  if (control == focused_) return;
  Control* previous = std::exchange(focused_, control);
  if (previous) previous->on_lost_focus.Raise();
  if (control && focused_ == control) control->on_got_focus.Raise();
}

void Win32Toolkit::SetPointer(MousePointer pointer) {
  pointer_ = pointer;
  // The window under the pointer chooses again when the program's pointer is gone.
  if (!ShowPointer(MousePointer::kDefault)) {
    POINT at;
    if (GetCursorPos(&at)) SetCursorPos(at.x, at.y);
  }
}

bool Win32Toolkit::ShowPointer(MousePointer own) const {
  const MousePointer shown = pointer_ == MousePointer::kDefault ? own : pointer_;
  if (shown == MousePointer::kDefault) return false;
  SetCursor(LoadCursorW(nullptr, CursorOf(shown)));
  return true;
}

HWND Win32Toolkit::OwnerWindow() const {
  return active_ && active_->Visible() ? active_->Window() : nullptr;
}

ModalScope::ModalScope(Win32Toolkit& toolkit, const Win32Form* except) : toolkit_(toolkit) {
  blocked_.reserve(toolkit.Forms().size());  // a form that is blocked must be found again
  for (Win32Form* form : toolkit.Forms()) {
    if (form == except) continue;
    form->Block();
    blocked_.push_back(form);
  }
  toolkit_.BeginModal();
}

ModalScope::~ModalScope() {
  Unblock();
  toolkit_.EndModal();
}

void ModalScope::Unblock() {
  for (Win32Form* form : blocked_) {
    if (std::ranges::find(toolkit_.Forms(), form) != toolkit_.Forms().end()) form->Unblock();
  }
  blocked_.clear();
}

}  // namespace declarium::win32
