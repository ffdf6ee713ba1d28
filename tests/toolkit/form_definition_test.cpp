#include "toolkit/form_definition.h"

#include <stdexcept>

#include "gmock/gmock.h"
#include "gtest/gtest.h"

#include "toolkit/demo_form.h"

namespace declarium {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(FormDefinitionTest, ASoundTableHasNoFaults) {
  EXPECT_THAT(FindDefinitionFaults(demo::kForm), IsEmpty());
  EXPECT_NO_THROW(RequireValid(demo::kDialog));
  EXPECT_NO_THROW(RequireValid(demo::kBar));
}

TEST(FormDefinitionTest, EveryFaultIsNamed) {
  static constexpr ToolbarButtonDefinition kButtons[] = {
      {.key = "new"}, {.key = ""}, {.key = ""}, {.key = "new"}};
  static constexpr ControlDefinition kControls[] = {
      {.kind = ControlKind::kToolbar, .name = "Toolbar1", .buttons = kButtons},
      {.kind = ControlKind::kLabel, .name = ""},
      {.kind = ControlKind::kCommandButton, .name = "A", .role = ButtonRole::kDefault},
      {.kind = ControlKind::kCommandButton, .name = "B", .role = ButtonRole::kDefault}};
  static constexpr MenuDefinition kMenus[] = {{.level = 1, .name = "A"}};
  const FormDefinition form{.name = "frmX", .controls = kControls, .menus = kMenus};
  EXPECT_THAT(FindDefinitionFaults(form),
              ElementsAre("two buttons new in Toolbar1", "control without a name",
                          "more than one default button", "two components named A",
                          "menu entry A has no parent"));
  EXPECT_THROW(RequireValid(form), std::logic_error);
}

TEST(FormDefinitionTest, ShortcutsAreWrittenAsMenusShowThem) {
  EXPECT_EQ(ShortcutText({}), u"");
  EXPECT_EQ(ShortcutText({'S', {.control = true}}), u"Ctrl+S");
  EXPECT_EQ(ShortcutText({'S', {.shift = true, .control = true}}), u"Ctrl+Shift+S");
  EXPECT_EQ(ShortcutText({key::kDelete, {}}), u"Delete");
  EXPECT_EQ(ShortcutText({key::kF2, {}}), u"F2");
  EXPECT_EQ(ShortcutText({key::kF10, {.alt = true}}), u"Alt+F10");
}

TEST(FormDefinitionTest, LabelsAndBarsAreNoTabStopsButCanBeMadeOne) {
  EXPECT_FALSE(IsTabStop({.kind = ControlKind::kLabel, .name = "a"}));
  EXPECT_FALSE(IsTabStop({.kind = ControlKind::kPictureBox, .name = "a"}));
  EXPECT_TRUE(
      IsTabStop({.kind = ControlKind::kPictureBox, .name = "a", .tab_stop = TabStop::kYes}));
  EXPECT_TRUE(IsTabStop({.kind = ControlKind::kListBox, .name = "a"}));
  EXPECT_FALSE(IsTabStop({.kind = ControlKind::kListBox, .name = "a", .tab_stop = TabStop::kNo}));
}

}  // namespace
}  // namespace declarium
