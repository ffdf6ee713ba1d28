// The window system as the program sees it: makes forms, shows the ready-made dialogs, runs the
// events. Exactly one thread uses it. Dialogs are modal to the active form, and events of timers
// and of other forms' painting go on while one is open.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "toolkit/boundary.h"
#include "toolkit/color.h"
#include "toolkit/dialogs.h"
#include "toolkit/event.h"
#include "toolkit/form.h"
#include "toolkit/form_definition.h"
#include "toolkit/input.h"

namespace declarium {

class Toolkit {
 public:
  virtual ~Toolkit();
  Toolkit() = default;
  Toolkit(const Toolkit&) = delete;
  Toolkit& operator=(const Toolkit&) = delete;

  // Builds a form, not yet loaded. Throws std::logic_error for a faulty table. The form must not
  // outlive the toolkit.
  [[nodiscard]] virtual std::unique_ptr<Form> CreateForm(const FormDefinition& definition) = 0;

  // The title of message and input boxes.
  virtual void SetApplicationTitle(std::u16string_view title) = 0;

  Answer ShowMessage(const Message& message);
  // `box` outlives the call.
  virtual Answer ShowMessage(const Message& message, OpenMessage& box) = 0;
  // The text typed; empty when cancelled.
  [[nodiscard]] virtual std::u16string AskText(std::u16string_view prompt,
                                               std::u16string_view initial_text) = 0;
  // The full path chosen; nullopt when cancelled. The open dialog accepts existing files only; the
  // save dialog asks before it accepts an existing one.
  [[nodiscard]] virtual std::optional<std::u16string> ChooseFileToOpen(
      const FileDialog& dialog) = 0;
  [[nodiscard]] virtual std::optional<std::u16string> ChooseFileToSave(
      const FileDialog& dialog) = 0;
  // The color chosen, beginning with `initial`; nullopt when cancelled.
  [[nodiscard]] virtual std::optional<Color> AskColor(Color initial) = 0;

  // The clipboard's text; empty when it holds none.
  [[nodiscard]] virtual std::u16string ClipboardText() const = 0;
  // Replaces what is there, in every format.
  virtual void SetClipboardText(std::u16string_view text) = 0;
  virtual void ClearClipboard() = 0;

  // Shows a file, named by its full path, in the program that the system has for files of its kind.
  // False when there is no such file or no such program; the user is not notified then.
  [[nodiscard]] virtual bool OpenDocument(std::u16string_view path) = 0;

  // The pointer of the whole program; kDefault lets each control show its own.
  [[nodiscard]] virtual MousePointer Pointer() const = 0;
  virtual void SetPointer(MousePointer pointer) = 0;

  // Handles every event that is waiting, painting included, then returns.
  virtual void ProcessPendingEvents() = 0;
  // Handles events until Quit; returns its exit code.
  virtual int Run() = 0;
  virtual void Quit(int exit_code) = 0;

  // Keeps `object` until Run has control again, which is when no event is running, not even one
  // that processes other events meanwhile. For the owner of a form that may be in one.
  virtual void DestroyLater(std::shared_ptr<void> object) = 0;

  // Milliseconds since some moment before; wraps around after 49 days.
  [[nodiscard]] virtual std::uint32_t TickCount() const = 0;

  // Whether a modal form or a dialog is open.
  [[nodiscard]] virtual bool IsModalOpen() const = 0;

  // Where the system enters the program: the backend runs all that it calls through this.
  Boundary boundary;

  // F1 was pressed, with no other key held, in a form with this help topic (empty: it has none)
  // that has no menu entry for the key. No control sees the key.
  Event<std::string_view> on_help;
};

}  // namespace declarium
