// Shows the demo form filled with entries and writes its picture: win32_screenshot FILE.bmp
#include <cstdint>
#include <fstream>
#include <vector>

#include "toolkit/captioned.h"
#include "toolkit/demo_form.h"
#include "toolkit/list_view.h"
#include "toolkit/picture_box.h"
#include "toolkit/progress_bar.h"
#include "toolkit/rich_text.h"
#include "toolkit/row_list.h"
#include "toolkit/text_box.h"
#include "toolkit/toolbar.h"
#include "toolkit/win32/form.h"
#include "toolkit/win32/toolkit.h"
#include "win32/system.h"

namespace declarium {
namespace {

using namespace win32;

void FillLists(Form& form) {
  auto& list = form.Get<ListBox>("List1");
  list.AddRows(std::vector<std::u16string_view>{
      u"GetActiveWindow", u"GetAsyncKeyState", u"GetCursorPos", u"GetDC", u"GetDesktopWindow",
      u"GetTickCount", u"GetWindowPlacement", u"SetWindowPos", u"ShowWindow"});
  list.SetListIndex(6);
  form.Get<ComboBox>("Combo1").SetListIndex(1);
  form.Get<TextBox>("Text1").SetText(u"getwindowp");
  auto& view = form.Get<ListView>("View1");
  view.Append({u"GWL_STYLE", 1});
  view.Append({u"GetWindowPlacement", 2});
  view.Append({u"ShowWindow", 2});
  view.Append({u"RECT", 3});
  view.Select(2);
  form.Get<ListView>("View2").Append({u"POINTAPI", 3});
  form.Get<ListView>("View2").Append({u"WINDOWPLACEMENT", 3});
}

void FillDisplay(RichText& display) {
  const auto insert = [&](Color color, std::u16string_view text) {
    display.SetInsertionColor(color);
    display.Insert(text);
  };
  insert(0x800000, u"Declare Function ");
  insert(0x000000, u"GetWindowPlacement ");
  insert(0x800000, u"Lib ");
  insert(0x000000, u"\"user32\" (");
  insert(0x800000, u"ByVal ");
  insert(0x000000, u"hwnd ");
  insert(0x800000, u"As Long");
  insert(0x000000, u", lpwndpl ");
  insert(0x800000, u"As ");
  insert(0x000000, u"WINDOWPLACEMENT) ");
  insert(0x800000, u"As Long\r\n");
  insert(0x008000, u"' poloha a stav okna; žltý kôň");
  display.SetCaretToStart();
}

void WriteBitmap(HWND window, const char* path) {
  RECT area{};
  GetWindowRect(window, &area);
  const int width = area.right - area.left, height = area.bottom - area.top;
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  const UniqueDevice memory(CreateCompatibleDC(nullptr));
  const UniqueBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  const HGDIOBJ before = SelectObject(memory.Get(), bitmap.Get());
  const HDC screen = GetDC(nullptr);
  BitBlt(memory.Get(), 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
  ReleaseDC(nullptr, screen);
  SelectObject(memory.Get(), before);
  const DWORD size = static_cast<DWORD>(width * height * 4);
  BITMAPFILEHEADER header{};
  header.bfType = 0x4D42;
  header.bfOffBits = sizeof header + sizeof info.bmiHeader;
  header.bfSize = header.bfOffBits + size;
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(&header), sizeof header);
  file.write(reinterpret_cast<const char*>(&info.bmiHeader), sizeof info.bmiHeader);
  file.write(static_cast<const char*>(bits), size);
}

void HandleEventsFor(Toolkit& toolkit, DWORD milliseconds) {
  const DWORD begin = GetTickCount();
  while (GetTickCount() - begin < milliseconds) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    toolkit.ProcessPendingEvents();
  }
}

}  // namespace
}  // namespace declarium

int main(int argc, char** argv) {
  using namespace declarium;
  if (argc != 2) return 2;
  Win32Toolkit toolkit;
  const auto form = toolkit.CreateForm(demo::kForm);
  form->Get<PictureBox>("Picture1").on_paint = [](Canvas& canvas) {
    for (int x = 2; x < canvas.Extent().width - 2; x += 2) {
      canvas.Invert({x, 2, 1, 1});
      canvas.Invert({x, canvas.Extent().height - 3, 1, 1});
    }
  };
  FillLists(*form);
  FillDisplay(form->Get<RichText>("RTB"));
  form->Get<CheckBox>("Check1").SetValue(1);
  form->Get<CheckBox>("Check2").SetValue(2);
  form->Get<ProgressBar>("PB").SetValue(60);
  form->Show();
  HandleEventsFor(toolkit, 1000);
  WriteBitmap(dynamic_cast<Win32Form&>(*form).Window(), argv[1]);
}
