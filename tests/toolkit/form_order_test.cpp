// The order of windows on the screen, which only real ones have.
#include <gtest/gtest.h>

#include "toolkit/demo_form.h"
#include "toolkit/win32/form.h"
#include "toolkit/win32/toolkit.h"

namespace declarium::win32 {
namespace {

HWND WindowOf(const Form& form) {
  return dynamic_cast<const Win32Form&>(form).Window();
}

bool IsAbove(const Form& upper, const Form& lower) {
  for (HWND window = WindowOf(upper); window; window = GetWindow(window, GW_HWNDNEXT)) {
    if (window == WindowOf(lower)) return true;
  }
  return false;
}

TEST(FormOrder, BroughtToTheTopAFormIsAboveTheActiveOneWhichStaysActive) {
  Win32Toolkit toolkit;
  const auto form = toolkit.CreateForm(demo::kForm);
  const auto other = toolkit.CreateForm(demo::kDialog);
  form->Show();
  other->Show();
  toolkit.ProcessPendingEvents();
  ASSERT_TRUE(IsAbove(*other, *form));
  bool activated = false;
  form->on_activate = [&] { activated = true; };
  form->BringToTop();
  toolkit.ProcessPendingEvents();
  EXPECT_TRUE(IsAbove(*form, *other));
  EXPECT_FALSE(activated);
  EXPECT_EQ(toolkit.ActiveForm(), other.get());
  EXPECT_EQ(GetActiveWindow(), WindowOf(*other));
  // It does not stay there.
  EXPECT_EQ(GetWindowLongPtrW(WindowOf(*form), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
  other->BringToTop();
  EXPECT_TRUE(IsAbove(*other, *form));
}

}  // namespace
}  // namespace declarium::win32
