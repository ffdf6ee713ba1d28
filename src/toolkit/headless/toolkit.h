// The backend without windows: forms and controls keep their state and raise their events, dialogs
// are answered by a script, time passes when a test says so.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "toolkit/headless/dialog_script.h"
#include "toolkit/toolkit.h"

namespace declarium::headless {

class HeadlessForm;

class HeadlessToolkit : public Toolkit {
 public:
  HeadlessToolkit();
  ~HeadlessToolkit() override;

  [[nodiscard]] std::unique_ptr<Form> CreateForm(const FormDefinition& definition) override;
  void SetApplicationTitle(std::u16string_view title) override { title_ = title; }

  using Toolkit::ShowMessage;
  Answer ShowMessage(const Message& message, OpenMessage& box) override;
  [[nodiscard]] std::u16string AskText(std::u16string_view prompt,
                                       std::u16string_view initial_text) override;
  [[nodiscard]] std::optional<std::u16string> ChooseFileToOpen(const FileDialog& dialog) override;
  [[nodiscard]] std::optional<std::u16string> ChooseFileToSave(const FileDialog& dialog) override;
  [[nodiscard]] std::optional<Color> AskColor(Color initial) override;

  [[nodiscard]] std::u16string ClipboardText() const override { return clipboard_; }
  void SetClipboardText(std::u16string_view text) override { clipboard_ = text; }
  void ClearClipboard() override { clipboard_.clear(); }

  // Succeeds for every file that is there.
  [[nodiscard]] bool OpenDocument(std::u16string_view path) override;

  [[nodiscard]] MousePointer Pointer() const override { return pointers_.back(); }
  // Makes room for the pointer that follows another one, which is set in destructors.
  void SetPointer(MousePointer pointer) override {
    if (pointer != MousePointer::kDefault) pointers_.reserve(pointers_.size() + 2);
    pointers_.push_back(pointer);
  }

  void ProcessPendingEvents() override;
  // Time passes from one timer to the next. Throws std::logic_error when nothing can happen any
  // more and nobody has called Quit.
  int Run() override;
  void Quit(int exit_code) override { exit_code_ = exit_code; }
  // Here also until Advance has control again, since most tests do not Run.
  void DestroyLater(std::shared_ptr<void> object) override {
    to_destroy_.push_back(std::move(object));
  }

  [[nodiscard]] std::uint32_t TickCount() const override { return now_; }
  [[nodiscard]] bool IsModalOpen() const override { return open_dialogs_ > 0; }

  // For tests.
  [[nodiscard]] DialogScript& Script() { return script_; }
  [[nodiscard]] std::u16string ApplicationTitle() const { return title_; }
  // The documents opened so far, in order.
  [[nodiscard]] const std::vector<std::u16string>& OpenedDocuments() const { return documents_; }
  // From now on no program is there that shows a document.
  void RefuseDocuments() { refuse_documents_ = true; }
  // Every pointer set so far, in order; the first is the default one.
  [[nodiscard]] const std::vector<MousePointer>& Pointers() const { return pointers_; }
  // Lets time pass: timers fire at their moments, pending events are processed.
  void Advance(std::uint32_t milliseconds);
  // Puts an action into the queue of pending events.
  void Post(std::function<void()> action) { pending_.push_back(std::move(action)); }
  [[nodiscard]] bool QuitWasCalled() const { return exit_code_.has_value(); }
  // The forms that exist, in the order of their making.
  [[nodiscard]] const std::vector<HeadlessForm*>& Forms() const { return forms_; }
  [[nodiscard]] HeadlessForm* ActiveForm() const { return active_; }
  [[nodiscard]] Control* FocusedControl() const { return focused_; }
  // Where the mouse pointer stands on the screen.
  [[nodiscard]] Point CursorPosition() const { return cursor_; }
  void SetCursorPosition(Point at) { cursor_ = at; }

  // The work areas of the screens, one of 1920 x 1080 at first.
  [[nodiscard]] const std::vector<Rect>& Screens() const { return screens_; }
  void SetScreens(std::vector<Rect> screens) { screens_ = std::move(screens); }

  // The forms' side.
  void Register(HeadlessForm& form) { forms_.push_back(&form); }
  void Unregister(HeadlessForm& form);
  void Activate(HeadlessForm& form);
  // Another form becomes the active one.
  void Deactivate(HeadlessForm& form);
  void ShowModally(HeadlessForm& form);
  void SetFocusedControl(Control* control);
  [[nodiscard]] const std::uint32_t& Clock() const { return now_; }

 private:
  class OpenDialog;

  // One turn of Advance or Run is over: no event is running unless a dialog is open.
  void EndTurn();
  void PaintForms();
  // Advances the clock to the timer that is due first, if that is not later than `limit`, and fires
  // it. False when there is none.
  bool FireNextTimer(std::uint32_t limit);

  DialogScript script_;
  std::u16string title_;
  std::u16string clipboard_;
  std::vector<std::u16string> documents_;
  bool refuse_documents_ = false;
  std::vector<MousePointer> pointers_{MousePointer::kDefault};
  std::deque<std::function<void()>> pending_;
  std::vector<HeadlessForm*> forms_;
  std::vector<HeadlessForm*> activation_order_;  // the active form last
  HeadlessForm* active_ = nullptr;
  Control* focused_ = nullptr;
  Point cursor_;
  std::vector<Rect> screens_{{0, 0, 1920, 1080}};
  std::uint32_t now_ = 1000;
  int open_dialogs_ = 0;
  std::optional<int> exit_code_;
  std::vector<std::shared_ptr<void>> to_destroy_;
};

}  // namespace declarium::headless
