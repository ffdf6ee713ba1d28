#include "import/ui/add_dialog.h"

#include <utility>

#include "import/parser.h"
#include "import/ui/import_command.h"
#include "import/ui/reading_question.h"
#include "library/ui/file_messages.h"
#include "text/user_texts.h"
#include "toolkit/captioned.h"
#include "toolkit/text_box.h"

namespace declarium {
namespace {

constexpr ControlDefinition kControls[] = {
    {.kind = ControlKind::kLabel,
     .name = "Label1",
     .caption = texts::kAddLabel,
     .bounds = {10, 8, 540, 18}},
    {.kind = ControlKind::kMultiLineTextBox,
     .name = "Text1",
     .bounds = {10, 28, 540, 260},
     .font = FontRole::kCode},
    {.kind = ControlKind::kCommandButton,
     .name = "Command1",
     .caption = texts::kOk,
     .bounds = {366, 298, 88, 26},
     .role = ButtonRole::kDefault},
    {.kind = ControlKind::kCommandButton,
     .name = "Command2",
     .caption = texts::kCancel,
     .bounds = {462, 298, 88, 26},
     .role = ButtonRole::kCancel},
};

constexpr FormDefinition kDefinition = {.name = "frmAdd",
                                        .caption = texts::kAddCaption,
                                        .size = {560, 334},
                                        .help_topic = "add-and-import",
                                        .controls = kControls};

}  // namespace

const FormDefinition& AddDialogDefinition() {
  return kDefinition;
}

AddDialog::AddDialog(Toolkit& toolkit, Library& library, KindSelector& selector)
    : toolkit_(toolkit), library_(library), selector_(selector) {}

// Adding handles pending events, which may open this dialog once more: each has its own form.
void AddDialog::Show(Form& owner) {
  const auto form = toolkit_.CreateForm(kDefinition);
  form->Get<CommandButton>("Command1").on_click = [this, &form] { Command1_Click(*form); };
  form->Get<CommandButton>("Command2").on_click = [&form] { form->Unload(); };
  form->Show(ShowMode::kModal, &owner);
}

void AddDialog::Command1_Click(Form& form) {
  auto text = form.Get<TextBox>("Text1").Text();
  if (!text.empty()) {
    auto source = ReadSource(text);
    JoinContinuedLines(source);
    const auto chosen = [&] {
      const HourglassPointer hourglass(toolkit_);
      return ChooseReading(toolkit_, text, ParseDeclarations(std::move(source)));
    }();
    if (!chosen) return;
    ImportItems(toolkit_, library_, selector_, *chosen, Existing::kKeep);
  } else {
    toolkit_.SetPointer(MousePointer::kDefault);
  }
  form.Unload();
}

}  // namespace declarium
