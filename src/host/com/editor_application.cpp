#include "host/com/editor_application.h"

#include <algorithm>
#include <utility>

#include "host/com/editor_interface.h"
#include "host/com/vb_code.h"
#include "text/text.h"

namespace declarium::com {
namespace {

// The editor takes longer lines, but cuts them.
constexpr std::size_t kLongestLine = 1022;

HostResult<int> NumberIn(const HostResult<Variant>& answer) {
  if (!answer) return std::unexpected(answer.error());
  std::int32_t number = 0;
  if (FAILED(answer->ToNumber(number))) return std::unexpected(HostError{kWrongAnswer});
  return number;
}

// A share of a project or component of the editor.
class Share {
 public:
  Share(HostObject editor, int number) : editor_(std::move(editor)), number_(number) {}
  Share(const Share&) = delete;
  Share& operator=(const Share&) = delete;
  // An editor that is busy keeps it until the end of the connection.
  ~Share() {
    [[maybe_unused]] const auto given =
        editor_.Get(editor::kGiveBack, {Variant(number_)}, BusyHost::kGiveUp);
  }

  [[nodiscard]] const HostObject& Editor() const noexcept { return editor_; }
  [[nodiscard]] int Number() const noexcept { return number_; }

  [[nodiscard]] HostResult<int> Ask(HostMember member, BusyHost busy = BusyHost::kWaitFor) const {
    return NumberIn(editor_.Get(member, {Variant(number_)}, busy));
  }
  [[nodiscard]] HostResult<std::u16string> Text(HostMember member) const {
    return editor_.Text(member, {Variant(number_)});
  }

 private:
  HostObject editor_;
  int number_;
};

using SharePtr = std::shared_ptr<const Share>;

// The share that a call gave; null for none.
HostResult<SharePtr> ShareIn(const HostObject& editor, const HostResult<Variant>& answer) {
  const auto number = NumberIn(answer);
  if (!number) return std::unexpected(number.error());
  if (*number == 0) return nullptr;
  return std::make_shared<const Share>(editor, *number);
}

// Without the line end behind the last line, which the editor would show as one more line.
HostResult<std::u16string_view> Writable(std::u16string_view text) {
  const auto lines = Split(text, kCrLf);
  const bool fits = std::ranges::all_of(
      lines, [](std::u16string_view line) { return line.size() <= kLongestLine; });
  if (!fits) return std::unexpected(HostError{kLineTooLong});
  if (text.ends_with(kCrLf)) text.remove_suffix(kCrLf.size());
  return text;
}

class EditorModule final : public CodeModule {
 public:
  explicit EditorModule(SharePtr component) : component_(std::move(component)) {}
  HostResult<std::u16string> ComponentName() override {
    return component_->Text(editor::kComponentName);
  }
  HostResult<bool> IsSameAs(CodeModule& other) override {
    return component_->Number() == static_cast<EditorModule&>(other).component_->Number();
  }
  HostResult<int> CountOfDeclarationLines() override {
    return component_->Ask(editor::kCountOfDeclarationLines);
  }
  HostResult<int> CountOfLines(BusyHost busy) override {
    return component_->Ask(editor::kCountOfLines, busy);
  }
  HostResult<std::u16string> Lines(int first, int count) override {
    return component_->Editor().Text(
        editor::kLines, {Variant(component_->Number()), Variant(first), Variant(count)});
  }
  HostResult<> InsertLines(int line, std::u16string_view text) override {
    return Write(editor::kInsertLines, line, text);
  }
  HostResult<> DeleteLines(int first, int count) override {
    return component_->Editor().Do(editor::kDeleteLines,
                                   {Variant(component_->Number()), Variant(first), Variant(count)});
  }
  HostResult<> ReplaceLine(int line, std::u16string_view text) override {
    return Write(editor::kReplaceLine, line, text);
  }
  HostResult<std::unique_ptr<HostComponent>> Owner() override;

 private:
  HostResult<> Write(HostMember member, int line, std::u16string_view text) {
    const auto writable = Writable(text);
    if (!writable) return std::unexpected(writable.error());
    return component_->Editor().Do(
        member, {Variant(component_->Number()), Variant(line), Variant(*writable)});
  }

  SharePtr component_;
};

class EditorComponent final : public HostComponent {
 public:
  explicit EditorComponent(SharePtr component) : component_(std::move(component)) {}
  HostResult<std::u16string> Name() override { return component_->Text(editor::kComponentName); }
  HostResult<std::optional<declarium::vb::ModuleKind>> Kind() override {
    const auto type = component_->Ask(editor::kComponentType);
    if (!type) return std::unexpected(type.error());
    return KindOfComponent(*type);
  }
  HostResult<std::unique_ptr<CodeModule>> Module() override {
    const auto has_code = component_->Ask(editor::kHasCode);
    if (!has_code) return std::unexpected(has_code.error());
    if (*has_code == 0) return nullptr;
    return std::make_unique<EditorModule>(component_);
  }
  HostResult<std::unique_ptr<HostProject>> Project() override;
  bool IsSameAs(const HostComponent& other) const override {
    return component_->Number() == static_cast<const EditorComponent&>(other).component_->Number();
  }

 private:
  SharePtr component_;
};

HostResult<std::unique_ptr<HostComponent>> EditorModule::Owner() {
  return std::make_unique<EditorComponent>(component_);
}

class EditorProject final : public HostProject {
 public:
  explicit EditorProject(SharePtr project) : project_(std::move(project)) {}
  HostResult<std::u16string> Name() override { return project_->Text(editor::kProjectName); }
  HostResult<int> CountOfComponents() override { return project_->Ask(editor::kCountOfComponents); }
  HostResult<std::unique_ptr<HostComponent>> Component(int position) override {
    const auto& object = project_->Editor();
    const auto component = ShareIn(
        object, object.Get(editor::kComponentAt, {Variant(project_->Number()), Variant(position)}));
    if (!component) return std::unexpected(component.error());
    if (!*component) return std::unexpected(HostError{kWrongAnswer});
    return std::make_unique<EditorComponent>(*component);
  }

 private:
  SharePtr project_;
};

HostResult<std::unique_ptr<HostProject>> ProjectIn(const HostResult<SharePtr>& share) {
  if (!share) return std::unexpected(share.error());
  if (!*share) return nullptr;
  return std::make_unique<EditorProject>(*share);
}

HostResult<std::unique_ptr<HostProject>> EditorComponent::Project() {
  const auto& object = component_->Editor();
  return ProjectIn(
      ShareIn(object, object.Get(editor::kComponentProject, {Variant(component_->Number())})));
}

class NoSubscription final : public Subscription {};

HostError Refused() {
  return HostError{static_cast<std::int32_t>(E_NOTIMPL)};
}

class EditorApplication final : public HostApplication {
 public:
  explicit EditorApplication(ComPtr<IDispatch> editor) : editor_(std::move(editor)) {}

  HostResult<std::unique_ptr<CommandBarControl>> AddControl(std::u16string_view) override {
    return std::unexpected(Refused());
  }
  HostResult<std::unique_ptr<Subscription>> SubscribeClick(CommandBarControl&,
                                                           std::function<void()>) override {
    return std::unexpected(Refused());
  }
  // Editors say nothing reliable of the selection.
  HostResult<std::unique_ptr<Subscription>> SubscribeComponents(
      std::weak_ptr<ComponentEvents>) override {
    return std::make_unique<NoSubscription>();
  }

  HostResult<std::unique_ptr<CodeModule>> ActiveModule() override {
    const auto component = ShareIn(editor_, editor_.Get(editor::kActiveComponent));
    if (!component) return std::unexpected(component.error());
    if (!*component) return nullptr;
    return EditorComponent(*component).Module();
  }

  bool HasMovedSelection() override {
    const auto selection = editor_.Number(editor::kSelection, BusyHost::kGiveUp);
    return selection && std::exchange(selection_, *selection) != *selection;
  }

  declarium::vb::Audience Target() const noexcept override {
    return declarium::vb::Audience::kVba7;
  }

  HostResult<int> CountOfProjects() override { return editor_.Number(editor::kCountOfProjects); }

  HostResult<std::unique_ptr<HostProject>> ActiveProject() override {
    return ProjectIn(ShareIn(editor_, editor_.Get(editor::kActiveProject)));
  }

  HostResult<std::uintptr_t> MainWindow() override {
    const auto window = editor_.Number(editor::kWindow);
    if (!window) return std::unexpected(window.error());
    // Window handles have 32 significant bits, whatever the size of the process.
    return static_cast<std::uintptr_t>(static_cast<std::intptr_t>(*window));
  }

  // The caret is left where it is.
  HostResult<std::unique_ptr<CodePane>> ActivePane() override { return nullptr; }

 private:
  HostObject editor_;
  int selection_ = 0;
};

}  // namespace

std::unique_ptr<HostApplication> MakeEditorApplication(ComPtr<IDispatch> editor, Boundary&) {
  return std::make_unique<EditorApplication>(std::move(editor));
}

HostResult<HWND> EditorMainWindow(const ComPtr<IDispatch>& editor) {
  const auto window = EditorApplication(editor).MainWindow();
  if (!window) return std::unexpected(window.error());
  return reinterpret_cast<HWND>(*window);
}

}  // namespace declarium::com
