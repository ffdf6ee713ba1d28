// The program behind the editor's button: started by the first click, and again when it has ended
// or died meanwhile.
#pragma once

#include "host/com/host_calls.h"
#include "vba/editor_object.h"

namespace declarium::vba {

class ProgramLink {
 public:
  explicit ProgramLink(com::HostObject application) : application_(std::move(application)) {}
  ProgramLink(const ProgramLink&) = delete;
  ProgramLink& operator=(const ProgramLink&) = delete;
  ~ProgramLink() { Disconnect(); }

  // Shows the program's main window, which works in this editor then. Waits until the program runs
  // and calls of it are answered meanwhile.
  [[nodiscard]] HostResult<> ShowWindow();

  // Takes the editor away from the program; it is never started again.
  void Disconnect();

 private:
  [[nodiscard]] HostResult<> Connect();
  [[nodiscard]] HostResult<> AskToShow();
  // Without a word to the program.
  void Forget();

  com::HostObject application_;
  com::HostObject program_;
  win32::ComPtr<EditorObject> editor_;  // what the program has of the editor
};

// What to tell of a click that showed nothing.
[[nodiscard]] std::u16string NotShownText(const HostError& error);

}  // namespace declarium::vba
