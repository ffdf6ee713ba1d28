// The program registered as an add-in from a folder of its own, and stand-in IDEs that connect it.
#pragma once

#include <string>

#include "host/ide_driver.h"
#include "window/outside_fixture.h"

namespace declarium {

inline const std::string kAddIn = "Declarium.Connect";

// Runs a task of the program that ends by itself; its exit status.
int RunTask(const std::filesystem::path& program, const wchar_t* task);

// What the basket with the constant A inserts; its text ends with a line break.
inline const std::string kConstant = "Private Const A = 1\\n";

// The library of each test is WinLibrary, opened when the add-in is connected.
class AddInTest : public OutsideTest {
 protected:
  void SetUp() override;
  // The library and the settings that open it.
  void PutLibrary();
  // Requires that the process of the add-in has ended by then.
  void TearDown() override;

  // A project with one module, selected.
  void OpenModule(IdeProcess& ide, const std::string& text, int type = 1);
  // Connects the IDE and drives the add-in's process from then on.
  void Connect(IdeProcess& ide);
  void AttachToAddIn();
  // Connects one more IDE to the process that is driven already.
  void ConnectAlso(IdeProcess& ide);
  void Disconnect(IdeProcess& ide);
  // Clicks the toolbar button and waits for the main window.
  void ClickButton(IdeProcess& ide);
  // Puts the constant A into the basket, through the window.
  void AddConstant();
  // Clicks "insert" when it is enabled; AskToInsert returns the question that comes then.
  void ClickInsert();
  [[nodiscard]] HWND AskToInsert();
  // Inserts the basket and answers the question, which names `module`.
  void Insert(int answer, std::u16string_view module = u"Module1");
  // Whether the module comes to hold this text, as the IDE's line protocol writes it.
  [[nodiscard]] bool ModuleBecomes(IdeProcess& ide, const std::string& text);
  [[nodiscard]] bool Ends();
  // Whether no process of the program is left with a main window.
  [[nodiscard]] static bool IsGone();
};

}  // namespace declarium
