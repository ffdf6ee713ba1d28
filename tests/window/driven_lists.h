// Lists, combo boxes, list views and toolbars of another program (window_driver.h).
#pragma once

#include <string>
#include <string_view>
#include <vector>
#include <windows.h>

namespace declarium::window_driver {

// List boxes. The selected row is -1 without one.
[[nodiscard]] std::vector<std::u16string> ListRows(HWND list);
[[nodiscard]] int SelectedRow(HWND list);
void ClickRow(HWND list, int row);
void DoubleClickRow(HWND list, int row);

// Combo boxes. The form is notified of a chosen row as of a user's choice.
[[nodiscard]] std::vector<std::u16string> ComboRows(HWND combo);
[[nodiscard]] int ChosenRow(HWND combo);
void ChooseRow(HWND combo, int row);

// List views: entries as "icon name".
[[nodiscard]] int EntryCount(HWND view);
[[nodiscard]] std::vector<std::u16string> Entries(HWND view);
[[nodiscard]] int SelectedEntry(HWND view);
void ClickEntry(HWND view, int entry);
void DoubleClickEntry(HWND view, int entry);
// A place on the entry, in physical pixels of the view's inner area.
[[nodiscard]] POINT PlaceOfEntry(HWND view, int entry);

// Toolbars: buttons by their place among buttons and gaps.
[[nodiscard]] bool IsButtonEnabled(HWND toolbar, int button);
void ClickButton(HWND toolbar, int button);

// Notifies a form that it is on a screen of so many dots per inch now, where `place` is meant for
// it.
void ChangeResolutionOf(HWND form, int dpi, const RECT& place);

}  // namespace declarium::window_driver
