#include "window/outside_fixture.h"

#include "win32/program.h"

namespace declarium {
namespace {

using namespace std::string_literals;
using namespace window_driver;

std::filesystem::path ProgramUnderTest() {
  const std::filesystem::path own(win32::ProgramPath());
  return (own.parent_path() / "../../src/app/Declarium.exe").lexically_normal();
}

}  // namespace

std::string WinLibrary(std::string_view title) {
  return std::string(title) +
         "\x02"
         "A\0B\0MAX_PATH\x01"
         "Beep\0GetTickCount\0GetWindow\x01"
         "POINTAPI\0RECT\x02"
         "\x0e"
         "1\0Long\x0e"
         "A + 1\0\x0e"
         "260\x01"
         "\x0a\"kernel32\" (ByVal f As Long)\0"
         "\x0b\"kernel32\" () As Long\0"
         "\x0b\"user32\" (r As RECT, p As POINTAPI) As Long\x01"
         "\x0cx As Long\x0dy As Long\0"
         "\x0c"
         "a As POINTAPI\x0ds As String * MAX_PATH"s;
}

std::string OtherLibrary() {
  return "Other\x02"
         "C\x01\x01\x02\x0e"
         "3\x01\x01"s;
}

OutsideTest::OutsideTest() {
  std::filesystem::copy_file(ProgramUnderTest(), FileAt("Declarium.exe"));
  // What one test could not save is not offered to the next.
  SetEnvironmentVariableW(L"DECLARIUM_HISTORY", FileAt("history").c_str());
}

// The program stores its settings before these are put back.
OutsideTest::~OutsideTest() {
  program_.reset();
  SetEnvironmentVariableW(L"DECLARIUM_HISTORY", nullptr);
}

void OutsideTest::Put(std::string_view name, std::string_view bytes) const {
  folder_.Put(name, bytes);
}

std::string OutsideTest::BytesOf(std::string_view name) const {
  return ContentOf(FileAt(name));
}

bool OutsideTest::ComesToHold(std::string_view name, std::string_view bytes) const {
  return Eventually([&] { return BytesOf(name) == bytes; });
}

void OutsideTest::Start(const std::wstring& arguments) {
  program_.reset();
  program_ = std::make_unique<DrivenProgram>(FileAt("Declarium.exe"), arguments);
}

void OutsideTest::StartAndShow(const std::wstring& arguments) {
  Start(arguments);
  AwaitMain();
}

void OutsideTest::Kill() {
  program_.reset();
}

void OutsideTest::StartIn(const std::filesystem::path& folder, const std::wstring& arguments) {
  program_.reset();
  program_ = std::make_unique<DrivenProgram>(FileAt("Declarium.exe"), arguments, folder);
  AwaitMain();
}

void OutsideTest::Attach(DWORD process) {
  program_.reset();
  program_ = std::make_unique<DrivenProgram>(process);
}

void OutsideTest::AwaitMain() {
  main_ = Program().Form("frmMain");
}

HWND OutsideTest::Control(std::string_view name) const {
  return FindControl(main_, name);
}

void OutsideTest::ChooseMenu(std::string_view name) const {
  window_driver::ChooseMenu(main_, name);
}

void OutsideTest::ClickToolbar(std::string_view key) const {
  window_driver::ClickToolbar(main_, key);
}

bool OutsideTest::ToolbarEnabled(std::string_view key) const {
  return window_driver::ToolbarEnabled(main_, key);
}

void OutsideTest::ChooseKind(int kind) const {
  ChooseRow(Control("cmbSelector"), kind);
}

void OutsideTest::ClickItem(std::string_view list, int row, std::u16string_view code_start) const {
  const HWND window = Control(list);
  WaitFor(std::string(list), [&] {
    return IsWindowVisible(window) && static_cast<int>(ListRows(window).size()) > row;
  });
  ClickRow(window, row);
  WaitFor("the item's code", [&] { return TextOf(Control("RTB")).starts_with(code_start); });
}

bool OutsideTest::CaptionBecomes(std::u16string_view caption) const {
  return Eventually([&] { return Caption() == caption; });
}

bool OutsideTest::CodeBecomes(std::u16string_view code) const {
  return Eventually([&] { return TextOf(Control("RTB")) == code; });
}

bool OutsideTest::ListBecomes(std::string_view list, const Rows& rows) const {
  return Eventually([&] { return ListRows(Control(list)) == rows; });
}

bool OutsideTest::EntriesBecome(std::string_view view, const Rows& entries) const {
  return Eventually([&] { return Entries(Control(view)) == entries; });
}

void OutsideTest::AnswerMessage(std::u16string_view text, int button) const {
  const HWND dialog = Program().Dialog();
  EXPECT_EQ(MessageOf(dialog), text);
  PressInDialog(dialog, button);
}

void OutsideTest::AnswerFile(std::string_view name) const {
  window_driver::AnswerFile(Program(), Program().Dialog(), FileAt(name));
}

void OutsideTest::AnswerFileThatExists(std::string_view name) const {
  const HWND dialog = Program().Dialog();
  window_driver::AnswerFile(Program(), dialog, FileAt(name));
  PressInDialog(Program().Dialog(dialog), IDYES);
}

void OutsideTest::AnswerText(std::u16string_view text) const {
  window_driver::AnswerText(Program(), text);
}

void OutsideTest::Close() const {
  PostMessageW(main_, WM_CLOSE, 0, 0);
}

}  // namespace declarium
