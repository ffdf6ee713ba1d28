#include "toolkit/win32/list_view.h"

#include <cstdlib>
#include <string>
#include <utility>

#include "text/text.h"
#include "toolkit/win32/scale.h"
#include "win32/system.h"

namespace declarium::win32 {

namespace {

constexpr UINT kSynchronize = WM_APP + 1;

}  // namespace

Win32ListView::Win32ListView(Win32Form& form, const ControlDefinition& definition)
    : Win32Control(form, definition,
                   {WC_LISTVIEWW,
                    WS_CLIPSIBLINGS | LVS_REPORT | LVS_NOCOLUMNHEADER | LVS_SINGLESEL |
                        LVS_SHOWSELALWAYS | LVS_OWNERDATA | LVS_SHAREIMAGELISTS,
                    WS_EX_CLIENTEDGE}),
      has_check_boxes_(definition.check_boxes) {
  // The control would look after its scroll bars at each of these steps.
  Send(WM_SETREDRAW, FALSE);
  column_width_ = definition.bounds.width - 20;
  LVCOLUMNW column{};
  column.mask = LVCF_WIDTH;
  column.cx = ToPhysical(column_width_, Dpi());
  Send(LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
  const DWORD style =
      LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | (has_check_boxes_ ? LVS_EX_CHECKBOXES : 0);
  Send(LVM_SETEXTENDEDLISTVIEWSTYLE, style, static_cast<LPARAM>(style));
  if (has_check_boxes_) Send(LVM_SETCALLBACKMASK, LVIS_STATEIMAGEMASK);
  Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(form.SmallPictures()));
  Send(WM_SETREDRAW, TRUE);
}

void Win32ListView::OnResolutionChanged() {
  Win32Control::OnResolutionChanged();
  Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(TheForm().SmallPictures()));
  ShowColumnWidth();
}

void Win32ListView::Insert(int position, const ListEntry& entry) {
  entries_.Insert(position, entry);
  ListChanged();
}

void Win32ListView::ShowEntries(std::unique_ptr<const ListEntries> entries) {
  entries_.Show(std::move(entries));
  behind_ = true;
  Synchronize();
}

void Win32ListView::Remove(int position) {
  entries_.Remove(position);
  ListChanged();
}

void Win32ListView::Clear() {
  entries_.Clear();
  ListChanged();
}

void Win32ListView::SetCheck(int position, CheckMark check) {
  entries_.SetCheck(position, check);
  RedrawEntry(position);
}

void Win32ListView::RedrawEntry(int position) const {
  if (!behind_) Send(LVM_REDRAWITEMS, static_cast<WPARAM>(position - 1), position - 1);
}

void Win32ListView::SwitchCheck(int position) {
  if (!entries_.SwitchCheck(position)) return;
  RedrawEntry(position);
  NotifyWinEvent(EVENT_OBJECT_STATECHANGE, Handle(), OBJID_CLIENT, position);
  on_item_check.Raise(position);
}

void Win32ListView::ListChanged() {
  behind_ = true;
  if (posted_) return;
  posted_ = true;
  PostMessageW(Handle(), kSynchronize, 0, 0);
}

void Win32ListView::Synchronize() const {
  if (!behind_) return;
  behind_ = false;
  const bool hold_back = Visible() && ScrollBarChanges();
  if (hold_back) DefWindowProcW(Handle(), WM_SETREDRAW, FALSE, 0);
  synchronizing_ = true;
  Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(Count()), LVSICF_NOSCROLL);
  synchronizing_ = false;
  ShowSelected();
  if (hold_back) DefWindowProcW(Handle(), WM_SETREDRAW, TRUE, 0);
  RedrawWindow(Handle(), nullptr, nullptr,
               RDW_INVALIDATE | (hold_back ? RDW_FRAME | RDW_ERASE : 0));
}

// A scroll bar that comes or goes would be painted several times over at once, which takes longer
// than most searches that fill the list; it is painted with the list instead. The control's own
// answer to WM_SETREDRAW holds back the entries only.
bool Win32ListView::ScrollBarChanges() const {
  const auto page = Send(LVM_GETCOUNTPERPAGE);
  return (Send(LVM_GETITEMCOUNT) > page) != (Count() > page);
}

// Setting the state of all entries in one message would go through each of them, which takes longer
// than most searches that fill the list.
void Win32ListView::ShowSelected() const {
  synchronizing_ = true;
  const auto focused =
      static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), MAKELPARAM(LVNI_FOCUSED, 0)));
  SetState(focused + 1, 0);
  SetState(marked_, 0);
  marked_ = Selected();
  SetState(marked_, LVIS_SELECTED | LVIS_FOCUSED);
  synchronizing_ = false;
}

void Win32ListView::SetState(int position, UINT state) const {
  if (position < 1) return;  // the message would mean every entry
  LVITEMW item{};
  item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  item.state = state;
  Send(LVM_SETITEMSTATE, static_cast<WPARAM>(position - 1), reinterpret_cast<LPARAM>(&item));
}

void Win32ListView::Select(int position) {
  entries_.Select(position);
  Synchronize();
  ShowSelected();
}

void Win32ListView::EnsureVisible(int position) {
  Synchronize();
  Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(position - 1), FALSE);
}

bool Win32ListView::IsOnCheckBox(Point at) const {
  LVHITTESTINFO info{};
  info.pt = {ToPhysical(at.x, Dpi()), ToPhysical(at.y, Dpi())};
  Send(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&info));
  return has_check_boxes_ && (info.flags & LVHT_ONITEM) == LVHT_ONITEMSTATEICON;
}

int Win32ListView::HitTest(Point at) const {
  Synchronize();
  LVHITTESTINFO info{};
  info.pt = {ToPhysical(at.x, Dpi()), ToPhysical(at.y, Dpi())};
  const int item = static_cast<int>(Send(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&info)));
  return item < 0 || (info.flags & LVHT_ONITEM) == 0 ? -1 : item + 1;
}

void Win32ListView::SetColumnWidth(int width) {
  if (width == column_width_) return;
  column_width_ = width;
  ShowColumnWidth();
}

void Win32ListView::ShowColumnWidth() {
  Send(LVM_SETCOLUMNWIDTH, 0, ToPhysical(column_width_, Dpi()));
}

void Win32ListView::Refresh() {
  Synchronize();
  Win32Control::Refresh();
}

std::optional<LRESULT> Win32ListView::OnNotify(NMHDR& header) {
  switch (header.code) {
    case LVN_GETDISPINFOW:
      GiveText(reinterpret_cast<NMLVDISPINFOW&>(header));
      return 0;
    case LVN_ITEMCHANGED:
      ItemChanged(reinterpret_cast<NMLISTVIEW&>(header));
      return 0;
    case LVN_ODFINDITEMW:
      return FindBeginning(reinterpret_cast<NMLVFINDITEMW&>(header));
    default:
      return std::nullopt;
  }
}

void Win32ListView::GiveText(NMLVDISPINFOW& info) const {
  LVITEMW& item = info.item;
  if (item.iItem < 0 || item.iItem >= Count()) return;
  const ListEntry entry = Entry(item.iItem + 1);
  if (item.mask & LVIF_TEXT) {
    lstrcpynW(item.pszText, Wide(std::u16string(entry.text)), item.cchTextMax);
  }
  if (item.mask & LVIF_IMAGE) item.iImage = entry.icon;
  // The first state picture is the empty box, the second the checked one.
  if (item.mask & LVIF_STATE) item.state |= INDEXTOSTATEIMAGEMASK(static_cast<UINT>(entry.check));
}

LRESULT Win32ListView::FindBeginning(const NMLVFINDITEMW& wanted) const {
  if ((wanted.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0 || Count() == 0) return -1;
  const std::u16string text = FromWide(wanted.lvfi.psz);
  const int first = wanted.iStart < 0 ? 0 : wanted.iStart;
  for (int step = 0; step < Count(); ++step) {
    const int item = (first + step) % Count();
    if (EqualIgnoringCase(Entry(item + 1).text.substr(0, text.size()), text)) return item;
  }
  return -1;
}

void Win32ListView::ItemChanged(const NMLISTVIEW& change) {
  if (synchronizing_ || change.iItem < 0) return;
  const bool selected = (change.uNewState & LVIS_SELECTED) && !(change.uOldState & LVIS_SELECTED);
  if (!selected) return;
  marked_ = change.iItem + 1;
  if (marked_ == Selected()) return;
  entries_.Select(marked_);
  on_item_click.Raise(marked_);
}

std::optional<LRESULT> Win32ListView::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case kSynchronize:
      posted_ = false;
      Synchronize();
      return 0;
    // The native control would wait for the release inside the press, and would give up the
    // selection on empty space.
    case WM_LBUTTONDOWN:
      Press(MouseButton::kLeft, wparam, lparam);
      return 0;
    case WM_RBUTTONDOWN:
      Press(MouseButton::kRight, wparam, lparam);
      return 0;
    case WM_KEYDOWN:
    case WM_CHAR:
      if (has_check_boxes_ && wparam == VK_SPACE) return SpaceBar(message, wparam, lparam);
      break;
    case WM_LBUTTONDBLCLK:
      on_double_click.Raise();
      return 0;
    case WM_MOUSEMOVE:
      FollowDrag(lparam);
      break;
    case WM_LBUTTONUP:
      EndDrag(lparam);
      break;
    case WM_CAPTURECHANGED:
      dragging_ = false;
      break;
    default:
      break;
  }
  return Win32Control::OnMessage(message, wparam, lparam);
}

// The native control would look for an entry that begins with a blank.
std::optional<LRESULT> Win32ListView::SpaceBar(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_CHAR) return 0;
  const auto answer = Win32Control::OnMessage(message, wparam, lparam);
  if (!answer) SwitchCheck(Selected());
  return 0;
}

void Win32ListView::Press(MouseButton button, WPARAM keys, LPARAM place) {
  SetFocus();
  const MouseEvent event = MouseEventOf(button, keys, place);
  const int position = HitTest(event.at);
  if (position > 0) {
    Select(position);
    on_item_click.Raise(position);
    if (button == MouseButton::kLeft && IsOnCheckBox(event.at)) return SwitchCheck(position);
  }
  pressed_ = button == MouseButton::kLeft ? position : -1;
  pressed_at_ = {GET_X_LPARAM(place), GET_Y_LPARAM(place)};
  on_mouse_down.Raise(event);
  // From here on, since a quick hand has left the list before the first notification of a move.
  if (pressed_ > 0 && drag_target_) SetCapture(Handle());
}

void Win32ListView::FollowDrag(LPARAM place) {
  if (pressed_ < 1 || !drag_target_ || dragging_ || GetKeyState(VK_LBUTTON) >= 0) return;
  const bool moved = std::abs(GET_X_LPARAM(place) - pressed_at_.x) > GetSystemMetrics(SM_CXDRAG) ||
                     std::abs(GET_Y_LPARAM(place) - pressed_at_.y) > GetSystemMetrics(SM_CYDRAG);
  if (!moved) return;
  dragging_ = true;
  SetCursor(LoadCursorW(nullptr, IDC_HAND));
}

void Win32ListView::EndDrag(LPARAM place) {
  const int position = std::exchange(pressed_, -1);
  const bool was_dragging = std::exchange(dragging_, false);
  if (GetCapture() == Handle()) ReleaseCapture();
  if (!was_dragging) return;
  POINT at{GET_X_LPARAM(place), GET_Y_LPARAM(place)};
  ClientToScreen(Handle(), &at);
  const HWND under = WindowFromPoint(at);
  const Widget* widget = TheForm().WidgetOf(under);
  if (!widget || &widget->TheControl() != drag_target_ || position > Count()) return;
  ScreenToClient(under, &at);
  drag_target_->on_drop.Raise(Drop{
      .source = this, .position = position, .at = {ToPixels(at.x, Dpi()), ToPixels(at.y, Dpi())}});
}

}  // namespace declarium::win32
