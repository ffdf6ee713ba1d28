// The backend with real windows.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "toolkit/toolkit.h"
#include "toolkit/win32/accessibility.h"
#include "win32/system.h"
#include "win32/unique_handle.h"

namespace declarium::win32 {

class Win32Form;

// The thread's use of COM, its clipboard and dragging included.
class OleUse {
 public:
  OleUse() : result_(OleInitialize(nullptr)) {}
  // A use that failed has none to give up: that would be another's.
  ~OleUse() {
    if (SUCCEEDED(result_)) OleUninitialize();
  }
  OleUse(const OleUse&) = delete;
  OleUse& operator=(const OleUse&) = delete;

 private:
  HRESULT result_;
};

class Win32Toolkit : public Toolkit {
 public:
  Win32Toolkit();

  [[nodiscard]] std::unique_ptr<Form> CreateForm(const FormDefinition& definition) override;
  void SetApplicationTitle(std::u16string_view title) override { title_ = title; }

  using Toolkit::ShowMessage;
  Answer ShowMessage(const Message& message, OpenMessage& box) override;
  [[nodiscard]] std::u16string AskText(std::u16string_view prompt,
                                       std::u16string_view initial_text) override;
  [[nodiscard]] std::optional<std::u16string> ChooseFileToOpen(const FileDialog& dialog) override;
  [[nodiscard]] std::optional<std::u16string> ChooseFileToSave(const FileDialog& dialog) override;
  [[nodiscard]] std::optional<Color> AskColor(Color initial) override;

  [[nodiscard]] std::u16string ClipboardText() const override;
  void SetClipboardText(std::u16string_view text) override;
  void ClearClipboard() override;

  [[nodiscard]] bool OpenDocument(std::u16string_view path) override;

  [[nodiscard]] MousePointer Pointer() const override { return pointer_; }
  void SetPointer(MousePointer pointer) override;

  void ProcessPendingEvents() override;
  int Run() override;
  void Quit(int exit_code) override;
  void DestroyLater(std::shared_ptr<void> object) override;
  [[nodiscard]] std::uint32_t TickCount() const override { return GetTickCount(); }
  [[nodiscard]] bool IsModalOpen() const override { return open_dialogs_ > 0; }

  // The backend's side.
  [[nodiscard]] const std::vector<Win32Form*>& Forms() const { return forms_; }
  void Register(Win32Form& form) { forms_.push_back(&form); }
  void Unregister(Win32Form& form);
  // Handles events until `done` holds or the program is to end.
  void RunUntil(const std::function<bool()>& done);
  // The form became the active one: on_deactivate of the last one, on_activate.
  void FormActivated(Win32Form& form);
  void FormHidden(Win32Form& form);
  [[nodiscard]] Win32Form* ActiveForm() const { return active_; }
  // The control has the focus: on_lost_focus of the last one, on_got_focus.
  void ControlFocused(Control* control);
  [[nodiscard]] Control* FocusedControl() const { return focused_; }
  // Shows the program's pointer or, when that is the default, `own`. False when both are default.
  [[nodiscard]] bool ShowPointer(MousePointer own) const;

  [[nodiscard]] Accessibility& TheAccessibility() { return accessibility_; }

  void BeginModal() { ++open_dialogs_; }
  void EndModal() { --open_dialogs_; }
  // The focused control is going away; no event.
  void ForgetFocus() { focused_ = nullptr; }

 private:
  // `owner` may be null.
  Answer ShowBox(const Message& message, OpenMessage& box, HWND owner);
  // Waits for a message and handles it.
  void HandleNext();
  void Dispatch(MSG& message);
  // False when the message is for its window.
  [[nodiscard]] bool Translate(MSG& message) const;
  [[nodiscard]] HWND ClipboardOwner() const;
  // The window that dialogs stand in front of.
  [[nodiscard]] HWND OwnerWindow() const;

  OleUse ole_;  // until everything below is gone
  std::u16string title_;
  std::vector<Win32Form*> forms_;
  Win32Form* active_ = nullptr;
  Control* focused_ = nullptr;
  MousePointer pointer_ = MousePointer::kDefault;
  std::array<COLORREF, 16> custom_colors_;
  // Not shown, and made for the first use of the clipboard.
  mutable UniqueWindow clipboard_owner_;
  Accessibility accessibility_;
  int open_dialogs_ = 0;
  std::optional<int> exit_code_;
  std::vector<std::shared_ptr<void>> to_destroy_;
};

// While it lives, the forms that were there before take no input, but for `except`.
class ModalScope {
 public:
  ModalScope(Win32Toolkit& toolkit, const Win32Form* except);
  ~ModalScope();
  ModalScope(const ModalScope&) = delete;
  ModalScope& operator=(const ModalScope&) = delete;
  // Ends it early.
  void Unblock();

 private:
  Win32Toolkit& toolkit_;
  std::vector<Win32Form*> blocked_;
};

}  // namespace declarium::win32
