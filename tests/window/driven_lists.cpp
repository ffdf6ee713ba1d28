#include "window/driven_lists.h"

#include <algorithm>
#include <stdexcept>
#include <windows.h>
// after windows.h
#include <commctrl.h>

#include "win32/unique_handle.h"
#include "window/window_driver.h"

namespace declarium::window_driver {
namespace {

// A value in the memory of a window's process, for messages that pass pointers and that the system
// does not carry from one process to another.
template <class Value>
class ValueThere {
 public:
  ValueThere(HWND window, const Value& value) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    process_.Reset(
        OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id));
    place_ = VirtualAllocEx(process_.Get(), nullptr, sizeof(Value), MEM_COMMIT, PAGE_READWRITE);
    if (!place_) throw std::runtime_error("no memory in the driven program");
    Write(value);
  }
  ValueThere(const ValueThere&) = delete;
  ValueThere& operator=(const ValueThere&) = delete;
  ~ValueThere() { VirtualFreeEx(process_.Get(), place_, 0, MEM_RELEASE); }

  [[nodiscard]] LPARAM Parameter() const { return reinterpret_cast<LPARAM>(place_); }
  // The address of a member there.
  template <class Member>
  [[nodiscard]] Member* AddressOf(std::size_t offset) const {
    return reinterpret_cast<Member*>(static_cast<char*>(place_) + offset);
  }
  void Write(const Value& value) {
    WriteProcessMemory(process_.Get(), place_, &value, sizeof value, nullptr);
  }
  [[nodiscard]] Value Read() const {
    Value value{};
    ReadProcessMemory(process_.Get(), place_, &value, sizeof value, nullptr);
    return value;
  }

 private:
  win32::UniqueKernelObject process_;
  void* place_ = nullptr;
};

POINT CenterOf(const RECT& area) {
  return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

struct RowMessages {
  UINT count, length, text;
};
constexpr RowMessages kListMessages = {LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT};
constexpr RowMessages kComboMessages = {CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT};

// The program may change its list between the questions: a row that is gone by then is empty.
std::u16string RowAt(HWND window, const RowMessages& messages, WPARAM row) {
  const auto length = Ask(window, messages.length, row);
  if (length < 0) return {};
  // Longer than answered, since the row may be another one by now.
  std::u16string text(static_cast<std::size_t>(length) + 1024, u'\0');
  const auto size = Ask(window, messages.text, row, reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(std::max<LRESULT>(size, 0)));
  return text;
}

std::vector<std::u16string> Rows(HWND window, const RowMessages& messages) {
  std::vector<std::u16string> rows;
  const auto count = Ask(window, messages.count);
  for (LRESULT row = 0; row < count; ++row) {
    rows.push_back(RowAt(window, messages, static_cast<WPARAM>(row)));
  }
  return rows;
}

POINT PlaceOfRow(HWND list, int row) {
  Ask(list, LB_SETTOPINDEX, static_cast<WPARAM>(row));
  RECT area{};
  Ask(list, LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&area));
  return CenterOf(area);
}

struct EntryText {
  LVITEMW item;
  wchar_t text[260];
};

std::u16string EntryAt(HWND view, int entry) {
  ValueThere<EntryText> there(view, EntryText{});
  EntryText asked{};
  asked.item.mask = LVIF_TEXT | LVIF_IMAGE;
  asked.item.iItem = entry;
  asked.item.pszText = there.AddressOf<wchar_t>(offsetof(EntryText, text));
  asked.item.cchTextMax = 260;
  there.Write(asked);
  Ask(view, LVM_GETITEMW, 0, there.Parameter());
  asked = there.Read();
  return std::u16string(1, static_cast<char16_t>(u'0' + asked.item.iImage)) + u" " +
         reinterpret_cast<const char16_t*>(asked.text);
}

}  // namespace

std::vector<std::u16string> ListRows(HWND list) {
  return Rows(list, kListMessages);
}

int SelectedRow(HWND list) {
  return static_cast<int>(Ask(list, LB_GETCURSEL));
}

void ClickRow(HWND list, int row) {
  Click(list, PlaceOfRow(list, row));
}

void DoubleClickRow(HWND list, int row) {
  DoubleClick(list, PlaceOfRow(list, row));
}

std::vector<std::u16string> ComboRows(HWND combo) {
  return Rows(combo, kComboMessages);
}

int ChosenRow(HWND combo) {
  return static_cast<int>(Ask(combo, CB_GETCURSEL));
}

void ChooseRow(HWND combo, int row) {
  Ask(combo, CB_SETCURSEL, static_cast<WPARAM>(row));
  const auto id = static_cast<WORD>(GetDlgCtrlID(combo));
  PostMessageW(GetParent(combo), WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE),
               reinterpret_cast<LPARAM>(combo));
}

int EntryCount(HWND view) {
  return static_cast<int>(Ask(view, LVM_GETITEMCOUNT));
}

std::vector<std::u16string> Entries(HWND view) {
  std::vector<std::u16string> entries;
  const int count = EntryCount(view);
  for (int entry = 0; entry < count; ++entry) entries.push_back(EntryAt(view, entry));
  return entries;
}

int SelectedEntry(HWND view) {
  return static_cast<int>(Ask(view, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

POINT PlaceOfEntry(HWND view, int entry) {
  Ask(view, LVM_ENSUREVISIBLE, static_cast<WPARAM>(entry), FALSE);
  RECT area{};
  area.left = LVIR_LABEL;
  const ValueThere<RECT> there(view, area);
  Ask(view, LVM_GETITEMRECT, static_cast<WPARAM>(entry), there.Parameter());
  area = there.Read();
  return {area.left + 4, (area.top + area.bottom) / 2};
}

void ClickEntry(HWND view, int entry) {
  Click(view, PlaceOfEntry(view, entry));
}

void DoubleClickEntry(HWND view, int entry) {
  DoubleClick(view, PlaceOfEntry(view, entry));
}

bool IsButtonEnabled(HWND toolbar, int button) {
  return Ask(toolbar, TB_ISBUTTONENABLED, static_cast<WPARAM>(button)) != 0;
}

void ClickButton(HWND toolbar, int button) {
  const ValueThere<RECT> there(toolbar, RECT{});
  Ask(toolbar, TB_GETITEMRECT, static_cast<WPARAM>(button), there.Parameter());
  Click(toolbar, CenterOf(there.Read()));
}

void ChangeResolutionOf(HWND form, int dpi, const RECT& place) {
  const ValueThere<RECT> there(form, place);
  Ask(form, WM_DPICHANGED, MAKEWPARAM(dpi, dpi), there.Parameter());
}

}  // namespace declarium::window_driver
