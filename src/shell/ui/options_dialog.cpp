#include "shell/ui/options_dialog.h"

#include <array>
#include <iterator>

#include "shell/settings.h"
#include "shell/ui/focus_mark.h"
#include "text/user_texts.h"
#include "toolkit/captioned.h"
#include "toolkit/picture_box.h"
#include "toolkit/row_list.h"

namespace declarium {

namespace {

constexpr int kSwatches = 3;

constexpr ControlDefinition LabelFor(int row, std::string_view name, std::u16string_view caption) {
  return {.kind = ControlKind::kLabel,
          .name = name,
          .caption = caption,
          .bounds = {12, 16 + row * 30, 152, 17}};
}

constexpr ControlDefinition SwatchFor(int row, std::string_view name, std::u16string_view what) {
  return {.kind = ControlKind::kPictureBox,
          .name = name,
          .bounds = {172, 12 + row * 30, 72, 24},
          .accessible_name = what,
          .tab_stop = TabStop::kYes};
}

// By the number of the target.
constexpr std::u16string_view kTargetRows[] = {texts::kTargetVb6, texts::kTargetVba7,
                                               texts::kTargetVba7Only, texts::kTargetTwinBasic};
static_assert(std::size(kTargetRows) == std::size(vb::kAudiences));

// The target stands beside the colors and comes last, so that those keep their places and keys.
constexpr ControlDefinition kOptionsControls[] = {LabelFor(0, "Label1", texts::kOptionsKeyword),
                                                  SwatchFor(0, "picColor0", texts::kOptionsKeyword),
                                                  LabelFor(1, "Label2", texts::kOptionsComment),
                                                  SwatchFor(1, "picColor1", texts::kOptionsComment),
                                                  LabelFor(2, "Label3", texts::kOptionsNormal),
                                                  SwatchFor(2, "picColor2", texts::kOptionsNormal),
                                                  {.kind = ControlKind::kCommandButton,
                                                   .name = "Command2",
                                                   .caption = texts::kOptionsOk,
                                                   .bounds = {84, 112, 76, 25},
                                                   .role = ButtonRole::kDefault},
                                                  {.kind = ControlKind::kCommandButton,
                                                   .name = "Command1",
                                                   .caption = texts::kCancel,
                                                   .bounds = {168, 112, 76, 25},
                                                   .role = ButtonRole::kCancel},
                                                  {.kind = ControlKind::kFrame,
                                                   .name = "Frame1",
                                                   .caption = texts::kOptionsTarget,
                                                   .bounds = {260, 8, 224, 129}},
                                                  {.kind = ControlKind::kComboBox,
                                                   .name = "cmbTarget",
                                                   .bounds = {272, 30, 200, 23},
                                                   .accessible_name = texts::kOptionsTarget,
                                                   .rows = kTargetRows},
                                                  {.kind = ControlKind::kLabel,
                                                   .name = "Label4",
                                                   .caption = texts::kTargetUse1,
                                                   .bounds = {272, 62, 204, 17}},
                                                  {.kind = ControlKind::kLabel,
                                                   .name = "Label5",
                                                   .caption = texts::kTargetUse2,
                                                   .bounds = {272, 80, 204, 17}}};

constexpr FormDefinition kOptionsForm = {.name = "frmOptions",
                                         .caption = texts::kOptionsCaption,
                                         .size = {496, 149},
                                         .help_topic = "options",
                                         .controls = kOptionsControls};

class OptionsDialog {
 public:
  OptionsDialog(Toolkit& toolkit, SettingsStore& store, DisplayColors& colors, vb::Audience& target)
      : toolkit_(toolkit),
        store_(store),
        colors_(colors),
        target_(target),
        form_(toolkit.CreateForm(kOptionsForm)),
        swatches_{&form_->Get<PictureBox>("picColor0"), &form_->Get<PictureBox>("picColor1"),
                  &form_->Get<PictureBox>("picColor2")},
        cmbTarget_(form_->Get<ComboBox>("cmbTarget")) {
    form_->on_load = [this] { Form_Load(); };
    for (int index = 0; index < kSwatches; ++index) Connect(index);
    form_->Get<CommandButton>("Command2").on_click = [this] { Command2_Click(); };
    form_->Get<CommandButton>("Command1").on_click = [this] { Command1_Click(); };
  }

  void Show(Form* owner) { form_->Show(ShowMode::kModal, owner); }

 private:
  [[nodiscard]] PictureBox& Swatch(int index) const {
    return *swatches_[static_cast<std::size_t>(index)];
  }

  void Connect(int index) {
    PictureBox& swatch = Swatch(index);
    swatch.on_double_click = [this, index] { picColor_DblClick(index); };
    swatch.on_key_down = [this, index](KeyDown& event) { picColor_KeyDown(index, event); };
    swatch.on_got_focus = [this, index] { picColor_GotFocus(index); };
    swatch.on_lost_focus = [this, index] { picColor_LostFocus(index); };
    swatch.on_paint = [this, index](Canvas& canvas) { picColor_Paint(index, canvas); };
  }

  void Form_Load() {
    Swatch(0).SetBackColor(colors_.keyword);
    Swatch(1).SetBackColor(colors_.comment);
    Swatch(2).SetBackColor(colors_.normal);
    cmbTarget_.SetListIndex(static_cast<int>(target_));
  }

  void picColor_DblClick(int index) {
    const Color preset = Swatch(index).BackColor();
    Swatch(index).SetBackColor(toolkit_.AskColor(preset).value_or(preset));
  }

  void picColor_KeyDown(int index, const KeyDown& event) {
    if (event.code == key::kSpace) picColor_DblClick(index);
  }

  void picColor_GotFocus(int index) {
    focused_ = index;
    Swatch(index).Invalidate();
  }

  void picColor_LostFocus(int index) {
    focused_ = -1;
    Swatch(index).Invalidate();
  }

  void picColor_Paint(int index, Canvas& canvas) const {
    if (focused_ == index) DrawFocusMark(canvas);
  }

  void Command1_Click() { form_->Unload(); }

  void Command2_Click() {
    colors_ = {.keyword = Swatch(0).BackColor(),
               .comment = Swatch(1).BackColor(),
               .normal = Swatch(2).BackColor()};
    WriteColors(store_, colors_);
    TakeTarget(vb::kAudiences[static_cast<std::size_t>(cmbTarget_.ListIndex())]);
    form_->Unload();
  }

  void TakeTarget(vb::Audience chosen) {
    if (chosen == target_) return;
    target_ = chosen;
    WriteAudience(store_, target_);
  }

  Toolkit& toolkit_;
  SettingsStore& store_;
  DisplayColors& colors_;
  vb::Audience& target_;
  std::unique_ptr<Form> form_;
  std::array<PictureBox*, kSwatches> swatches_;
  ComboBox& cmbTarget_;
  int focused_ = -1;
};

}  // namespace

const FormDefinition& OptionsFormDefinition() {
  return kOptionsForm;
}

void ShowOptionsDialog(Toolkit& toolkit, Form* owner, SettingsStore& store, DisplayColors& colors,
                       vb::Audience& target) {
  OptionsDialog(toolkit, store, colors, target).Show(owner);
}

std::u16string_view TargetText(vb::Audience target) {
  return kTargetRows[static_cast<std::size_t>(target)];
}

}  // namespace declarium
