#include "toolkit/headless/form.h"

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <utility>

#include "toolkit/headless/list_view.h"
#include "toolkit/headless/picture_box.h"
#include "toolkit/headless/rows.h"
#include "toolkit/headless/text.h"
#include "toolkit/headless/toolkit.h"
#include "toolkit/screen_place.h"

namespace declarium::headless {

HeadlessForm::HeadlessForm(HeadlessToolkit& toolkit, const FormDefinition& definition)
    : Form(definition.name),
      toolkit_(toolkit),
      caption_(definition.caption),
      border_(definition.border),
      minimum_size_(definition.minimum_size),
      help_topic_(definition.help_topic) {
  Build(definition);
  const Size borders = Borders();
  placement_ = {.right = definition.size.width + borders.width,
                .bottom = definition.size.height + borders.height};
  toolkit_.Register(*this);
}

HeadlessForm::~HeadlessForm() {
  Close();
  toolkit_.Unregister(*this);
}

void HeadlessForm::Build(const FormDefinition& definition) {
  for (const ControlDefinition& control : definition.controls) {
    std::unique_ptr<Component> component = Make(control);
    if (auto* made = dynamic_cast<Control*>(component.get())) tabs_.Append(control, *made);
    components_.emplace(control.name, std::move(component));
  }
  std::vector<HeadlessMenuItem*> path;
  for (const MenuDefinition& menu : definition.menus) AddMenu(menu, path);
}

std::unique_ptr<Component> HeadlessForm::Make(const ControlDefinition& definition) {
  switch (definition.kind) {
    case ControlKind::kLabel:
      return std::make_unique<HeadlessLabel>(*this, definition);
    case ControlKind::kFrame:
      return std::make_unique<HeadlessFrame>(*this, definition);
    case ControlKind::kCommandButton:
      return std::make_unique<HeadlessCommandButton>(*this, definition);
    case ControlKind::kCheckBox:
      return std::make_unique<HeadlessCheckBox>(*this, definition);
    case ControlKind::kListBox:
      return std::make_unique<HeadlessListBox>(*this, definition);
    case ControlKind::kComboBox:
      return std::make_unique<HeadlessComboBox>(*this, definition);
    case ControlKind::kTextBox:
    case ControlKind::kMultiLineTextBox:
      return std::make_unique<HeadlessTextBox>(*this, definition);
    case ControlKind::kRichText:
      return std::make_unique<HeadlessRichText>(*this, definition);
    case ControlKind::kListView:
      return std::make_unique<HeadlessListView>(*this, definition);
    case ControlKind::kToolbar: {
      auto toolbar = std::make_unique<HeadlessToolbar>(*this, definition);
      toolbars_.push_back(toolbar.get());
      return toolbar;
    }
    case ControlKind::kProgressBar:
      return std::make_unique<HeadlessProgressBar>(*this, definition);
    case ControlKind::kPictureBox: {
      auto picture = std::make_unique<HeadlessPictureBox>(
          *this, definition,
          [this](std::function<void()> action) { PostWhileOpen(std::move(action)); });
      pictures_.push_back(picture.get());
      return picture;
    }
    case ControlKind::kTimer: {
      auto timer = std::make_unique<HeadlessTimer>(definition, toolkit_.Clock());
      timers_.push_back(timer.get());
      return timer;
    }
  }
  throw std::logic_error("unknown kind of control " + std::string(definition.name));
}

void HeadlessForm::AddMenu(const MenuDefinition& definition, std::vector<HeadlessMenuItem*>& path) {
  path.resize(static_cast<std::size_t>(definition.level));
  HeadlessMenuItem* parent = path.empty() ? nullptr : path.back();
  auto item = std::make_unique<HeadlessMenuItem>(definition, parent);
  path.push_back(item.get());
  menus_.push_back(item.get());
  if (definition.level == 0 && definition.in_menu_bar) has_menu_bar_ = true;
  components_.emplace(definition.name, std::move(item));
}

Component& HeadlessForm::Find(std::string_view name) const {
  const auto found = components_.find(name);
  if (found == components_.end()) {
    throw std::logic_error("form " + Name() + " has no " + std::string(name));
  }
  return *found->second;
}

bool HeadlessForm::Owns(const Component& component) const {
  const auto found = components_.find(component.Name());
  return found != components_.end() && found->second.get() == &component;
}

void HeadlessForm::Load() {
  if (state_ != State::kCreated) return;
  state_ = State::kLoaded;
  on_load.Raise();
}

void HeadlessForm::Show(ShowMode mode, Form* owner) {
  Load();
  if (state_ != State::kLoaded) return;
  owner_ = owner;
  visible_ = true;
  if (placement_.show == ShowCommand::kHide) placement_.show = ShowCommand::kNormal;
  if (!shown_before_) {
    shown_before_ = true;
    on_resize.Raise();
  } else if (placement_.show == ShowCommand::kMinimized) {
    placement_.show = restored_;
  }
  toolkit_.Activate(*this);
  if (mode == ShowMode::kModal && visible_) toolkit_.ShowModally(*this);
}

void HeadlessForm::Hide() {
  if (!visible_) return;
  visible_ = false;
  if (on_hide_) on_hide_();
  toolkit_.Deactivate(*this);
}

void HeadlessForm::Close() {
  if (state_ == State::kUnloaded) return;
  state_ = State::kUnloaded;
  open_.reset();
  Hide();
}

Size HeadlessForm::Borders() const {
  const int menu = has_menu_bar_ ? 20 : 0;
  if (border_ == BorderStyle::kNone) return {0, menu};
  return {16, 8 + 31 + menu};
}

int HeadlessForm::OuterWidth() const {
  return placement_.right - placement_.left;
}
int HeadlessForm::OuterHeight() const {
  return placement_.bottom - placement_.top;
}
int HeadlessForm::ScaleWidth() const {
  return OuterWidth() - Borders().width;
}
int HeadlessForm::ScaleHeight() const {
  return OuterHeight() - Borders().height;
}
void HeadlessForm::SetOuterWidth(int width) {
  SetOuterSize({width, OuterHeight()});
}
void HeadlessForm::SetOuterHeight(int height) {
  SetOuterSize({OuterWidth(), height});
}

void HeadlessForm::SetOuterSize(Size size) {
  Placement placement = placement_;
  placement.right = placement.left + size.width;
  placement.bottom = placement.top + size.height;
  SetPlacement(placement);
}

void HeadlessForm::SetPlacement(const Placement& placement) {
  const Size before{OuterWidth(), OuterHeight()};
  const Size borders = Borders();
  const Rect place = PlaceOnScreen({placement.left, placement.top, placement.right - placement.left,
                                    placement.bottom - placement.top},
                                   toolkit_.Screens());
  ShowAs(placement.show);
  placement_.left = place.left;
  placement_.top = place.top;
  placement_.right = place.left + std::max(place.width, minimum_size_.width + borders.width);
  placement_.bottom = place.top + std::max(place.height, minimum_size_.height + borders.height);
  if (before == Size{OuterWidth(), OuterHeight()}) return;
  if (state_ == State::kLoaded && placement_.show != ShowCommand::kMinimized) on_resize.Raise();
}

void HeadlessForm::SetShowCommand(ShowCommand command) {
  if (state_ == State::kUnloaded) return;
  if (command == ShowCommand::kHide) {
    Hide();
  } else {
    ShowAs(command);
  }
}

void HeadlessForm::ShowAs(ShowCommand command) {
  placement_.show = command;
  if (command != ShowCommand::kMinimized) restored_ = command;
}

void HeadlessForm::ShowPopupMenu(MenuItem& menu) {
  popups_.push_back(menu.Name());
  if (popup_choice_.empty()) return;
  auto& chosen = Get<HeadlessMenuItem>(popup_choice_);
  popup_choice_.clear();
  if (chosen.Parent() != &menu) throw std::logic_error(chosen.Name() + " is not in " + menu.Name());
  if (!chosen.Enabled()) throw std::logic_error(chosen.Name() + " is disabled");
  chosen.on_click.Raise();
}

Point HeadlessForm::CursorPosition() const {
  return toolkit_.CursorPosition();
}

const Control* HeadlessForm::Focused() const {
  return toolkit_.ActiveForm() == this ? focus_ : nullptr;
}

bool HeadlessForm::CanTakeFocus(const Control& control) const {
  return visible_ && enabled_ && control.Visible() && control.Enabled();
}

void HeadlessForm::MoveFocus(Control& control) {
  if (!CanTakeFocus(control)) return;
  focus_ = &control;
  toolkit_.Activate(*this);
  toolkit_.SetFocusedControl(&control);
}

void HeadlessForm::PassFocusFrom(const Control& control) {
  if (focus_ != &control) return;
  focus_ = tabs_.Next(&control);
  if (toolkit_.ActiveForm() == this) toolkit_.SetFocusedControl(focus_);
}

void HeadlessForm::TakeFocus() {
  if (!focus_) focus_ = tabs_.Next(nullptr);
  toolkit_.SetFocusedControl(focus_);
}

CommandButton* HeadlessForm::ButtonWith(ButtonRole role) const {
  return dynamic_cast<CommandButton*>(tabs_.WithRole(role));
}

void HeadlessForm::PaintPictures() {
  if (!visible_ || locks_ > 0) return;
  for (HeadlessPictureBox* picture : pictures_) picture->PaintIfNeeded();
}

void HeadlessForm::PostWhileOpen(std::function<void()> action) {
  toolkit_.Post([open = std::weak_ptr<int>(open_), action = std::move(action)] {
    if (!open.expired()) action();
  });
}

}  // namespace declarium::headless
