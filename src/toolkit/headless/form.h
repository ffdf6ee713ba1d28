// A form without a window. Its border is 8 pixels wide on each side, the title 31 and the menu bar
// 20 pixels high.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/form.h"
#include "toolkit/form_definition.h"
#include "toolkit/headless/control.h"
#include "toolkit/headless/simple_controls.h"
#include "toolkit/tab_order.h"

namespace declarium::headless {

class HeadlessPictureBox;
class HeadlessToolkit;

class HeadlessForm : public Form, public FocusOwner {
 public:
  HeadlessForm(HeadlessToolkit& toolkit, const FormDefinition& definition);
  ~HeadlessForm() override;

  void Load() override;
  [[nodiscard]] bool IsLoaded() const override { return state_ == State::kLoaded; }
  void Show(ShowMode mode = ShowMode::kModeless, Form* owner = nullptr) override;
  void Hide() override;
  [[nodiscard]] bool Visible() const override { return visible_; }

  [[nodiscard]] std::u16string Caption() const override { return caption_; }
  void SetCaption(std::u16string_view caption) override { caption_ = caption; }
  [[nodiscard]] bool Enabled() const override { return enabled_; }
  void SetEnabled(bool enabled) override { enabled_ = enabled; }

  [[nodiscard]] int ScaleWidth() const override;
  [[nodiscard]] int ScaleHeight() const override;
  [[nodiscard]] int OuterWidth() const override;
  [[nodiscard]] int OuterHeight() const override;
  void SetOuterWidth(int width) override;
  void SetOuterHeight(int height) override;

  [[nodiscard]] Placement GetPlacement() const override { return placement_; }
  void SetPlacement(const Placement& placement) override;
  void SetShowCommand(ShowCommand command) override;
  void SetTopmost() override { topmost_ = true; }
  void BringToTop() override { ++times_brought_to_top_; }
  void LockUpdate() override { ++locks_; }
  void UnlockUpdate() override { --locks_; }
  void ShowPopupMenu(MenuItem& menu) override;
  [[nodiscard]] Point CursorPosition() const override;

  // For tests.
  [[nodiscard]] bool IsTopmost() const { return topmost_; }
  [[nodiscard]] int TimesBroughtToTop() const { return times_brought_to_top_; }
  [[nodiscard]] bool IsUpdateLocked() const { return locks_ > 0; }
  [[nodiscard]] bool IsUnloaded() const { return state_ == State::kUnloaded; }
  [[nodiscard]] Form* Owner() const { return owner_; }
  // The popup menus opened so far, in order.
  [[nodiscard]] const std::vector<std::string>& PopupMenusShown() const { return popups_; }
  // The entry that the user chooses in the next popup menu; without one the menu is closed unused.
  void ChooseInNextPopup(std::string_view name) { popup_choice_ = name; }

  // The backend's side.
  [[nodiscard]] const Control* Focused() const override;
  void MoveFocus(Control& control) override;
  void PassFocusFrom(const Control& control) override;
  [[nodiscard]] Control* KeptFocus() const { return focus_; }
  [[nodiscard]] const TabOrder& Tabs() const { return tabs_; }
  [[nodiscard]] CommandButton* ButtonWith(ButtonRole role) const;
  [[nodiscard]] const std::vector<HeadlessMenuItem*>& Menus() const { return menus_; }
  [[nodiscard]] const std::vector<HeadlessToolbar*>& Toolbars() const { return toolbars_; }
  [[nodiscard]] const std::vector<HeadlessTimer*>& Timers() const { return timers_; }
  [[nodiscard]] std::string_view HelpTopic() const { return help_topic_; }
  [[nodiscard]] bool CanTakeInput() const { return visible_ && enabled_ && blocked_ == 0; }
  [[nodiscard]] bool Owns(const Component& component) const;
  // A modal form or dialog is open above this form.
  void Block() { ++blocked_; }
  void Unblock() { --blocked_; }
  // For the time that the form is shown as a dialog.
  void SetOnHide(std::function<void()> action) { on_hide_ = std::move(action); }
  void PaintPictures();
  // Gives the focus to the control that had it last, or to the first tab stop.
  void TakeFocus();

 private:
  enum class State { kCreated, kLoaded, kUnloaded };

  [[nodiscard]] Component& Find(std::string_view name) const override;
  void Close() override;

  void Build(const FormDefinition& definition);
  [[nodiscard]] std::unique_ptr<Component> Make(const ControlDefinition& definition);
  void AddMenu(const MenuDefinition& definition, std::vector<HeadlessMenuItem*>& path);
  void SetOuterSize(Size size);
  void ShowAs(ShowCommand command);
  [[nodiscard]] Size Borders() const;
  void PostWhileOpen(std::function<void()> action);
  [[nodiscard]] bool CanTakeFocus(const Control& control) const;

  HeadlessToolkit& toolkit_;
  std::u16string caption_;
  BorderStyle border_;
  Size minimum_size_;
  std::string_view help_topic_;
  bool has_menu_bar_ = false;
  std::map<std::string, std::unique_ptr<Component>, std::less<>> components_;
  TabOrder tabs_;
  std::vector<HeadlessPictureBox*> pictures_;
  std::vector<HeadlessMenuItem*> menus_;
  std::vector<HeadlessToolbar*> toolbars_;
  std::vector<HeadlessTimer*> timers_;
  std::shared_ptr<int> open_ = std::make_shared<int>();  // gone when the windows are
  State state_ = State::kCreated;
  bool visible_ = false;
  bool shown_before_ = false;
  bool enabled_ = true;
  bool topmost_ = false;
  int times_brought_to_top_ = 0;
  int locks_ = 0;
  int blocked_ = 0;
  std::function<void()> on_hide_;
  Placement placement_;
  ShowCommand restored_ = ShowCommand::kNormal;  // what a minimized form was and becomes again
  Form* owner_ = nullptr;
  Control* focus_ = nullptr;
  std::string popup_choice_;
  std::vector<std::string> popups_;
};

}  // namespace declarium::headless
