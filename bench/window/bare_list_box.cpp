// What filling a list costs without a program around it: one window with one list box, and nothing
// but the names that it shows.
//
//     bare_list_box.exe NAMES
//
// NAMES is a file of names in UTF-16, each with a zero behind it. The window comes up with the list
// filled. The message kEmpty empties the list, kFill fills it again and returns when it is painted.
#include "bench/window/bare_list_box.h"

#include <vector>

#include "win32/program.h"
#include "win32/unique_handle.h"
#include "win32/wide.h"

namespace {

using namespace declarium::bench;
namespace win32 = declarium::win32;

std::vector<wchar_t> ReadNames(const wchar_t* path) {
  const win32::UniqueFile file(
      CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  if (!file) return {};
  const DWORD size = GetFileSize(file.Get(), nullptr);
  std::vector<wchar_t> names(size / sizeof(wchar_t));
  DWORD read = 0;
  ReadFile(file.Get(), names.data(), size, &read, nullptr);
  return names;
}

std::vector<wchar_t> names;
HWND list;

void Fill() {
  SendMessageW(list, WM_SETREDRAW, FALSE, 0);
  SendMessageW(list, LB_INITSTORAGE, names.size() / 8,
               static_cast<LPARAM>(names.size() * sizeof(wchar_t)));
  const wchar_t* const end = names.data() + names.size();
  for (const wchar_t* name = names.data(); name != end; name += lstrlenW(name) + 1) {
    SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
  }
  SendMessageW(list, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(list, nullptr, TRUE);
  UpdateWindow(list);
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case kEmpty:
      return SendMessageW(list, LB_RESETCONTENT, 0, 0);
    case kFill:
      Fill();
      return SendMessageW(list, LB_GETCOUNT, 0, 0);
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
    default:
      return DefWindowProcW(window, message, wparam, lparam);
  }
}

HWND MakeWindow(HINSTANCE instance) {
  WNDCLASSW description{};
  description.lpfnWndProc = Procedure;
  description.hInstance = instance;
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  description.lpszClassName = L"BareListBox";
  RegisterClassW(&description);
  return CreateWindowExW(0, description.lpszClassName, L"", WS_OVERLAPPEDWINDOW, 100, 100, 520, 400,
                         nullptr, nullptr, instance, nullptr);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, wchar_t*, int) {
  const auto arguments = win32::ProgramArguments();
  if (arguments.size() != 1) return 2;
  names = ReadNames(win32::Wide(arguments[0]));

  const HWND window = MakeWindow(instance);
  list = CreateWindowExW(WS_EX_CLIENTEDGE, L"LISTBOX", nullptr,
                         WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT, 0,
                         0, 300, 360, window, nullptr, instance, nullptr);
  SetPropW(window, L"Name", reinterpret_cast<HANDLE>(UINT_PTR{GlobalAddAtomW(kBareListBoxName)}));
  Fill();
  ShowWindow(window, SW_SHOWNORMAL);
  UpdateWindow(window);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return 0;
}
