#include "toolkit/win32/text.h"

#include <algorithm>
#include <cwchar>
#include <string>
#include <utility>

#include "toolkit/held_flag.h"
#include "toolkit/win32/fonts.h"
#include "toolkit/win32/scale.h"
#include "win32/system.h"

namespace declarium::win32 {

namespace {

constexpr WPARAM kMostText = 0x7FFFFFFE;

NativeClass TextBoxClass(const ControlDefinition& definition) {
  DWORD style = WS_CLIPSIBLINGS | ES_AUTOHSCROLL;
  if (definition.kind == ControlKind::kMultiLineTextBox) {
    style |= ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL | WS_VSCROLL | WS_HSCROLL;
  }
  return {L"EDIT", style, WS_EX_CLIENTEDGE};
}

// The full path of a library of the system's. By its bare name one that lies beside the program,
// put there by anybody, would come first.
std::wstring SystemLibrary(const wchar_t* name) {
  std::wstring folder(MAX_PATH, L'\0');
  folder.resize(GetSystemDirectoryW(folder.data(), MAX_PATH));
  return folder + L'\\' + name;
}

NativeClass RichTextClass() {
  // Loaded for the rest of the program's life: its window class is needed that long.
  static const HMODULE library = LoadLibraryW(SystemLibrary(L"riched20.dll").c_str());
  static_cast<void>(library);
  return {L"RichEdit20W", WS_CLIPSIBLINGS | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_READONLY |
                              ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_NOHIDESEL | WS_BORDER};
}

const wchar_t* CodeFace() {
  static const wchar_t* const face = FindCodeFace();
  return face;
}

CHARFORMAT2W CodeFormat() {
  CHARFORMAT2W format{};
  format.cbSize = sizeof format;
  format.dwMask = CFM_FACE | CFM_SIZE | CFM_CHARSET | CFM_BOLD;
  format.yHeight = kCodePoints * 20;
  format.bCharSet = DEFAULT_CHARSET;
  format.bPitchAndFamily = FIXED_PITCH | FF_MODERN;
  std::wcsncpy(format.szFaceName, CodeFace(), LF_FACESIZE - 1);
  return format;
}

}  // namespace

Win32TextBox::Win32TextBox(Win32Form& form, const ControlDefinition& definition)
    : Win32Control(form, definition, TextBoxClass(definition)) {
  Send(EM_LIMITTEXT, kMostText);
}

int Win32TextBox::SelectionStart() const {
  DWORD start = 0;
  Send(EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
  return static_cast<int>(start);
}

int Win32TextBox::SelectionLength() const {
  DWORD start = 0, end = 0;
  Send(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  return static_cast<int>(end - start);
}

void Win32TextBox::Select(int start, int length) {
  const int size = GetWindowTextLengthW(Handle());
  const int begin = std::clamp(start, 0, size);
  const int end = begin + std::clamp(length, 0, size - begin);
  Send(EM_SETSEL, static_cast<WPARAM>(begin), end);
  Send(EM_SCROLLCARET);
}

void Win32TextBox::ShowText(std::u16string_view text) {
  const HeldFlag showing(showing_);
  SetWindowTextW(Handle(), Wide(std::u16string(text)));
}

void Win32TextBox::TypeOver(std::u16string_view text) {
  const std::u16string terminated(text);
  Send(EM_REPLACESEL, TRUE, TextParameter(terminated));
}

// The native control would delete the rest of the line.
std::optional<LRESULT> Win32TextBox::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  const auto answer = Win32Control::OnMessage(message, wparam, lparam);
  if (answer || message != WM_KEYDOWN || !Edits(static_cast<int>(wparam), HeldModifiers())) {
    return answer;
  }
  DeleteWord();
  return 0;
}

void Win32TextBox::OnCommand(int code) {
  if (code == EN_CHANGE && !showing_) on_change.Raise();
}

Win32RichText::Win32RichText(Win32Form& form, const ControlDefinition& definition)
    : Win32Control(form, definition, RichTextClass()) {
  Send(EM_EXLIMITTEXT, 0, kMostText);
  FollowColorScheme();
}

void Win32RichText::FollowColorScheme() {
  Flush();
  background_ = ToColorRef(kWindowColor);
  Send(EM_SETBKGNDCOLOR, FALSE, static_cast<LPARAM>(background_));
  const std::vector<ColoredRun> runs = std::exchange(written_, {});
  const Color next = color_;
  Clear();
  for (const auto& [color, text] : runs) {
    SetInsertionColor(color);
    Insert(text);
  }
  SetCaretToStart();
  color_ = next;
}

void Win32RichText::SetVisible(bool visible) {
  Flush();
  Win32Control::SetVisible(visible);
}

void Win32RichText::Refresh() {
  Flush();
  Win32Control::Refresh();
}

std::optional<LRESULT> Win32RichText::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCPAINT) {
    const LRESULT result = PassOn(message, wparam, lparam);
    PaintBorder();
    return result;
  }
  if (message == WM_SYSCOLORCHANGE) FollowColorScheme();
  return Win32Control::OnMessage(message, wparam, lparam);
}

// The control draws its border black; the other lists and boxes have a gray one.
void Win32RichText::PaintBorder() const {
  RECT area{};
  GetWindowRect(Handle(), &area);
  OffsetRect(&area, -area.left, -area.top);
  const HDC device = GetWindowDC(Handle());
  FrameRect(device, &area, GetSysColorBrush(COLOR_BTNSHADOW));
  ReleaseDC(Handle(), device);
}

void Win32RichText::Clear() {
  pending_.clear();
  written_.clear();
  SetWindowTextW(Handle(), L"");
  const CHARFORMAT2W format = CodeFormat();
  Send(EM_SETCHARFORMAT, SCF_ALL, reinterpret_cast<LPARAM>(&format));
}

void Win32RichText::SetInsertionColor(Color color) {
  if (color == color_) return;
  Flush();
  color_ = color;
}

void Win32RichText::Flush() const {
  if (pending_.empty()) return;
  const LONG behind = GetWindowTextLengthW(Handle());  // at least the number of positions
  CHARRANGE end{behind, behind};
  Send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&end));
  CHARFORMAT2W format = CodeFormat();
  format.dwMask |= CFM_COLOR;
  format.crTextColor = ReadableOn(background_, ToColorRef(color_), ToColorRef(kWindowTextColor));
  Send(EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
  Send(EM_REPLACESEL, FALSE, TextParameter(pending_));
  written_.push_back({color_, std::exchange(pending_, {})});
}

void Win32RichText::SetCaretToStart() {
  Flush();
  CHARRANGE start{0, 0};
  Send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&start));
  Send(WM_VSCROLL, SB_TOP);
  Send(WM_HSCROLL, SB_LEFT);
}

std::u16string Win32RichText::Text() const {
  std::u16string text = WindowText(Handle());
  return text + pending_;
}

Color Win32RichText::ColorAt(int position) const {
  CHARRANGE one{position, position + 1};
  Send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&one));
  CHARFORMAT2W format{};
  format.cbSize = sizeof format;
  Send(EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
  return format.crTextColor;
}

std::vector<ColoredRun> Win32RichText::Runs() const {
  Flush();
  CHARRANGE selection{};
  Send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selection));
  std::vector<ColoredRun> runs;
  int position = 0;  // the native control counts one position for a line end
  for (const char16_t unit : Text()) {
    if (unit == u'\n') {
      runs.back().text += unit;
      continue;
    }
    const Color color = ColorAt(position++);
    if (runs.empty() || runs.back().color != color) runs.push_back({color});
    runs.back().text += unit;
  }
  Send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&selection));
  return runs;
}

}  // namespace declarium::win32
