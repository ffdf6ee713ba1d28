// The headless controls whose state is a value or two.
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

#include "toolkit/captioned.h"
#include "toolkit/headless/control.h"
#include "toolkit/menu.h"
#include "toolkit/progress_bar.h"
#include "toolkit/timer.h"
#include "toolkit/toolbar.h"
#include "toolkit/toolbar_keys.h"

namespace declarium::headless {

using HeadlessLabel = HeadlessCaptioned<Label>;
using HeadlessFrame = HeadlessCaptioned<Frame>;
using HeadlessCommandButton = HeadlessCaptioned<CommandButton>;

class HeadlessCheckBox : public HeadlessCaptioned<CheckBox> {
 public:
  using HeadlessCaptioned::HeadlessCaptioned;
  [[nodiscard]] int Value() const override { return value_; }

 private:
  void ShowValue(int value) override { value_ = value; }

  int value_ = 0;
};

class HeadlessProgressBar : public HeadlessControl<ProgressBar> {
 public:
  using HeadlessControl::HeadlessControl;
  [[nodiscard]] int Maximum() const override { return maximum_; }
  void SetMaximum(int maximum) override {
    maximum_ = std::max(maximum, 0);
    value_ = std::min(value_, maximum_);
  }
  [[nodiscard]] int Value() const override { return value_; }
  void SetValue(int value) override { value_ = std::clamp(value, 0, maximum_); }

 private:
  int maximum_ = 100;
  int value_ = 0;
};

class HeadlessToolbar : public HeadlessControl<Toolbar> {
 public:
  HeadlessToolbar(FocusOwner& owner, const ControlDefinition& definition)
      : HeadlessControl(owner, definition), keys_(*this, definition.buttons) {
    for (const ToolbarButtonDefinition& button : definition.buttons) {
      if (!button.key.empty()) enabled_[std::string(button.key)] = button.enabled;
    }
  }

  [[nodiscard]] bool ButtonEnabled(std::string_view key) const override {
    return enabled_.at(Known(key));
  }
  void SetButtonEnabled(std::string_view key, bool enabled) override {
    enabled_.at(Known(key)) = enabled;
  }

  [[nodiscard]] ToolbarKeys& Keys() { return keys_; }

 private:
  [[nodiscard]] std::string Known(std::string_view key) const {
    std::string text(key);
    if (!enabled_.contains(text)) throw std::logic_error(Name() + " has no button " + text);
    return text;
  }

  std::map<std::string, bool> enabled_;
  ToolbarKeys keys_;
};

class HeadlessMenuItem : public MenuItem {
 public:
  // `parent` is the entry that opens to show this one, nullptr for a top-level entry.
  HeadlessMenuItem(const MenuDefinition& definition, HeadlessMenuItem* parent)
      : MenuItem(definition.name),
        caption_(definition.caption),
        enabled_(definition.enabled),
        shortcut_(definition.shortcut),
        parent_(parent) {}

  [[nodiscard]] std::u16string Caption() const override { return caption_; }
  void SetCaption(std::u16string_view caption) override { caption_ = caption; }
  [[nodiscard]] bool Enabled() const override { return enabled_; }
  void SetEnabled(bool enabled) override { enabled_ = enabled; }

  [[nodiscard]] const Shortcut& ShortcutKey() const { return shortcut_; }
  [[nodiscard]] HeadlessMenuItem* Parent() const { return parent_; }

 private:
  std::u16string caption_;
  bool enabled_;
  Shortcut shortcut_;
  HeadlessMenuItem* parent_;
};

// Its time is the toolkit's: HeadlessToolkit::Advance makes timers due.
class HeadlessTimer : public Timer {
 public:
  // `now` is the toolkit's clock and must outlive the timer.
  HeadlessTimer(const ControlDefinition& definition, const std::uint32_t& now)
      : Timer(definition.name), now_(now), interval_(definition.interval) {
    SetEnabled(definition.enabled);
  }

  [[nodiscard]] bool Enabled() const override { return enabled_; }
  void SetEnabled(bool enabled) override {
    enabled_ = enabled;
    due_ = now_ + static_cast<std::uint32_t>(interval_);
  }
  [[nodiscard]] int Interval() const override { return interval_; }
  void SetInterval(int milliseconds) override {
    interval_ = std::max(milliseconds, 0);
    SetEnabled(enabled_);
  }

  [[nodiscard]] bool Runs() const { return enabled_ && interval_ > 0; }
  // The clock's value at which it fires next, when it Runs().
  [[nodiscard]] std::uint32_t Due() const { return due_; }
  void Fire() {
    due_ = now_ + static_cast<std::uint32_t>(interval_);
    on_timer.Raise();
  }

 private:
  const std::uint32_t& now_;
  bool enabled_ = false;
  int interval_;
  std::uint32_t due_ = 0;
};

}  // namespace declarium::headless
