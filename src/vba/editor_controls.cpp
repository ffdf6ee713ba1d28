#include "vba/editor_controls.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "host/com/event_sink.h"
#include "host/com/vb_members.h"
#include "host/toolbar_face.h"
#include "text/user_texts.h"
#include "vba/picture.h"
#include "vba/vba_members.h"

namespace declarium::vba {
namespace {

namespace vb = com::vb;
using com::HostObject;
using com::Then;
using com::Variant;

constexpr std::u16string_view kStandardBar = u"Standard";
constexpr std::u16string_view kMenuBar = u"Menu Bar";
constexpr std::u16string_view kAddInsBar = u"Add-Ins";

// Clicks are reported to every control of one tag, so each has its own.
constexpr std::u16string_view kButtonTag = u"Declarium.Vba.Button";
constexpr std::u16string_view kMenuEntryTag = u"Declarium.Vba.MenuEntry";

// More of one tag, or in one menu, is nobody's.
constexpr int kMostLeftovers = 20;
constexpr int kMostMenus = 100;

HostResult<HostObject> BarNamed(const HostObject& bars, std::u16string_view name) {
  return bars.Object(vb::kItem, {Variant(name)});
}

void RemoveLeftovers(const HostObject& bars, std::u16string_view tag) {
  for (int i = 0; i < kMostLeftovers; ++i) {
    const auto found = bars.CallObject(
        kFindControl, {Variant::Missing(), Variant::Missing(), Variant(tag), Variant::Missing()});
    if (!found || !*found || !found->Do(vb::kDelete)) return;
  }
}

// The menu of add-ins hangs in the menu bar, under a name that the user's language does not change.
HostObject AddInsMenu(const HostObject& menu_bar) {
  const auto controls = menu_bar.Object(vb::kControls);
  if (!controls) return {};
  const int count = std::min(controls->Number(kCountOfControls).value_or(0), kMostMenus);
  for (int i = 1; i <= count; ++i) {
    const auto control = controls->Object(vb::kItem, {Variant(i)});
    if (!control || control->Number(kControlType).value_or(0) != kControlPopup) continue;
    const auto bar = control->Object(kPopupBar);
    if (bar && bar->Text(kBarName).value_or(u"") == kAddInsBar) return *bar;
  }
  return {};
}

// Some editors have the menu by its name, the others in the menu bar; without one the entry stands
// in the menu bar itself.
HostResult<HostObject> BarForEntry(const HostObject& bars) {
  if (auto menu = BarNamed(bars, kAddInsBar); menu && *menu) return menu;
  const auto menu_bar = BarNamed(bars, kMenuBar);
  if (!menu_bar) return menu_bar;
  const auto menu = AddInsMenu(*menu_bar);
  return menu ? menu : *menu_bar;
}

HostResult<HostObject> AddTo(const HostResult<HostObject>& bar) {
  return Then(Then(bar, [](const HostObject& found) { return found.Object(vb::kControls); }),
              [](const HostObject& controls) {
                return controls.CallObject(
                    vb::kAdd, {Variant(vb::kControlButton), Variant::Missing(), Variant::Missing(),
                               Variant::Missing(), Variant::Boolean(true)});
              });
}

void SetPicture(const HostObject& control) {
  const auto face = PictureOf(ToolbarFace());
  const auto mask = PictureOf(ToolbarFaceMask());
  if (!face || !mask || !control.Put(kPicture, Variant(face.Get()))) return;
  [[maybe_unused]] const auto masked = control.Put(kMask, Variant(mask.Get()));
}

struct ControlTexts {
  std::u16string_view tag;
  std::u16string_view caption;
  std::u16string_view tooltip;  // none when empty
};

HostResult<> Name(const HostObject& control, const ControlTexts& texts) {
  if (auto put = control.Put(vb::kCaption, Variant(texts.caption)); !put) return put;
  if (auto put = control.Put(kTag, Variant(texts.tag)); !put) return put;
  return texts.tooltip.empty() ? HostResult<>()
                               : control.Put(vb::kTooltipText, Variant(texts.tooltip));
}

HostResult<std::unique_ptr<Subscription>> Complete(const HostObject& control,
                                                   const ControlTexts& texts, Boundary& boundary,
                                                   const std::function<void()>& clicked) {
  if (const auto named = Name(control, texts); !named) return std::unexpected(named.error());
  SetPicture(control);
  return com::Advise(control, kButtonEventSet, boundary,
                     [clicked](DISPID event, std::span<const VARIANT>) {
                       if (event == vb::kClick) clicked();
                     });
}

}  // namespace

EditorControls::EditorControls(const HostObject& application, Boundary& boundary,
                               const std::function<void()>& clicked) {
  const auto bars = application.Object(vb::kCommandBars);
  if (!bars) return;
  const auto place = [&](const HostResult<HostObject>& bar, const ControlTexts& texts) {
    RemoveLeftovers(*bars, texts.tag);
    const auto control = AddTo(bar);
    if (!control) return;
    auto clicks = Complete(*control, texts, boundary, clicked);
    // A button that does nothing is worse than none.
    if (clicks) {
      placed_.push_back({*control, *std::move(clicks)});
    } else {
      [[maybe_unused]] const auto deleted = control->Do(vb::kDelete);
    }
  };
  place(BarNamed(*bars, kStandardBar), {kButtonTag, texts::kHostButton, texts::kHostButton});
  place(BarForEntry(*bars), {kMenuEntryTag, texts::kHostMenuEntry, u""});
}

void EditorControls::Remove() {
  for (auto& placed : std::exchange(placed_, {})) {
    placed.clicks.reset();
    [[maybe_unused]] const auto deleted = placed.control.Do(vb::kDelete);
  }
}

}  // namespace declarium::vba
