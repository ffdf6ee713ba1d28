// A stand-in VBA editor with the add-in's DLL in its process, and the program behind it.
#pragma once

#include <string>

#include "addin/addin_fixture.h"

namespace declarium {

inline const std::string kVbaConnect = "connect Declarium.Vba";
inline const std::string kVbaDisconnect = "disconnect Declarium.Vba";

class VbaEditor : public IdeProcess {
 public:
  VbaEditor() : IdeProcess(Face::kVbaEditor) {}
};

class VbaTest : public AddInTest {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Connects the add-in; the program does not run yet.
  void Connect(VbaEditor& editor);
  // Clicks the button and drives the program's process from then on, once its window is shown.
  void Open(VbaEditor& editor);
  // Ends the program as a crash does, and waits until the system has noticed.
  void KillProgram();
  // The text of the next box of that process, once OK has been pressed.
  [[nodiscard]] static std::u16string AnswerBoxOf(const window_driver::DrivenProgram& process);
};

}  // namespace declarium
