#include "vba/editor.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/com/editor_interface.h"
#include "host/com/vb_code.h"
#include "host/com/vb_members.h"
#include "vba/vba_members.h"

namespace declarium::vba {
namespace {

namespace vb = com::vb;
using com::HostObject;
using com::Then;
using com::Variant;

template <class T>
HostResult<Variant> Answered(const HostResult<T>& result) {
  if (!result) return std::unexpected(result.error());
  return Variant(*result);
}

HostResult<HostObject> ProjectOf(const HostObject& component) {
  return Then(component.Object(vb::kCollection),
              [](const HostObject& all) { return all.Object(vb::kProjectOfComponents); });
}

// Asking a locked project for more than its name makes the editor fail.
HostResult<> RequireUnlocked(const HostObject& project) {
  const auto protection = project.Number(kProtection);
  if (!protection) return std::unexpected(protection.error());
  if (*protection != kNotProtected) return std::unexpected(HostError{declarium::kProjectIsLocked});
  return {};
}

// Changing a module of a program that runs makes the editor ask whether to end the program.
HostResult<> RequireDesignMode(const HostObject& project) {
  const auto mode = project.Number(kMode);
  if (!mode) return std::unexpected(mode.error());
  if (*mode != kDesignMode) return std::unexpected(HostError{declarium::kProgramRuns});
  return {};
}

bool HasTypes(std::span<const Variant> values, std::string_view types) {
  for (std::size_t i = 0; i < types.size(); ++i) {
    if (values[i].Get().vt != (types[i] == 't' ? VT_BSTR : VT_I4)) return false;
  }
  return true;
}

HostError Refusal(HRESULT status) {
  return HostError{static_cast<std::int32_t>(status)};
}

}  // namespace

int Editor::Arguments::Number(std::size_t index) const {
  return values_[index].Get().lVal;
}

const Editor::Member* Editor::FindMember(DISPID id) {
  using namespace com;
  static constexpr std::array<Member, 19> kMembers = {{
      {editor::kWindow.id, "", &Editor::Window},
      {editor::kSelection.id, "", &Editor::Selection},
      {editor::kActiveComponent.id, "", &Editor::ActiveComponent},
      {editor::kActiveProject.id, "", &Editor::ActiveProject},
      {editor::kGiveBack.id, "n", &Editor::GiveBack},
      {editor::kCountOfProjects.id, "", &Editor::CountOfProjects},
      {editor::kProjectName.id, "n", &Editor::ProjectName},
      {editor::kCountOfComponents.id, "n", &Editor::CountOfComponents},
      {editor::kComponentAt.id, "nn", &Editor::ComponentAt},
      {editor::kComponentName.id, "n", &Editor::ComponentName},
      {editor::kComponentType.id, "n", &Editor::ComponentType},
      {editor::kComponentProject.id, "n", &Editor::ComponentProject},
      {editor::kHasCode.id, "n", &Editor::HasCode},
      {editor::kCountOfDeclarationLines.id, "n", &Editor::CountOfDeclarationLines},
      {editor::kCountOfLines.id, "n", &Editor::CountOfLines},
      {editor::kLines.id, "nnn", &Editor::Lines},
      {editor::kInsertLines.id, "nnt", &Editor::InsertLines},
      {editor::kDeleteLines.id, "nnn", &Editor::DeleteLines},
      {editor::kReplaceLine.id, "nnt", &Editor::ReplaceLine},
  }};
  const auto found = std::ranges::find(kMembers, id, &Member::id);
  return found == kMembers.end() ? nullptr : &*found;
}

HostResult<Variant> Editor::Answer(DISPID member, std::span<const Variant> arguments) {
  const auto* const found = FindMember(member);
  if (found == nullptr) return std::unexpected(Refusal(DISP_E_MEMBERNOTFOUND));
  if (arguments.size() != found->arguments.size()) {
    return std::unexpected(Refusal(DISP_E_BADPARAMCOUNT));
  }
  if (!HasTypes(arguments, found->arguments)) {
    return std::unexpected(Refusal(DISP_E_TYPEMISMATCH));
  }
  return (this->*found->answer)(Arguments(arguments));
}

HostResult<Variant> Editor::Window(const Arguments&) {
  return Answered(Then(application_.Object(vb::kMainWindow),
                       [](const HostObject& window) { return window.Number(vb::kHWnd); }));
}

HostObject Editor::SelectedComponent() const {
  if (const auto component = application_.Object(vb::kSelectedVBComponent);
      component && *component) {
    return *component;
  }
  // The editor keeps panes whose module is gone: they fail, and nothing is selected.
  const auto pane = application_.Object(vb::kActiveCodePane);
  if (!pane || !*pane) return {};
  return Then(pane->Object(vb::kPaneCodeModule),
              [](const HostObject& module) { return module.Object(vb::kParent); })
      .value_or(HostObject());
}

HostResult<Variant> Editor::Selection(const Arguments&) {
  auto selected = SelectedComponent();
  if (com::IdentityOf(selected) != com::IdentityOf(selected_)) ++selections_;
  selected_ = std::move(selected);
  return Variant(selections_);
}

HostResult<Variant> Editor::Given(const HostResult<HostObject>& object) {
  if (!object) return std::unexpected(object.error());
  return Variant(shares_.Give(*object));
}

HostResult<Variant> Editor::ActiveComponent(const Arguments&) {
  return Given(SelectedComponent());
}

HostResult<Variant> Editor::ActiveProject(const Arguments&) {
  return Given(application_.Object(vb::kActiveVBProject));
}

HostResult<Variant> Editor::GiveBack(const Arguments& number) {
  shares_.GiveBack(number.Number(0));
  return Variant();
}

HostResult<Variant> Editor::CountOfProjects(const Arguments&) {
  return Answered(Then(application_.Object(vb::kVBProjects),
                       [](const HostObject& all) { return all.Number(vb::kCount); }));
}

HostResult<Variant> Editor::ProjectName(const Arguments& project) {
  return Answered(shares_.Find(project.Number(0)).Text(kProjectName));
}

HostResult<HostObject> Editor::ComponentsOf(const Arguments& project) const {
  const auto object = shares_.Find(project.Number(0));
  if (const auto unlocked = RequireUnlocked(object); !unlocked) {
    return std::unexpected(unlocked.error());
  }
  return object.Object(vb::kVBComponents);
}

HostResult<Variant> Editor::CountOfComponents(const Arguments& project) {
  return Answered(
      Then(ComponentsOf(project), [](const HostObject& all) { return all.Number(vb::kCount); }));
}

HostResult<Variant> Editor::ComponentAt(const Arguments& project_and_position) {
  return Given(Then(ComponentsOf(project_and_position), [&](const HostObject& all) {
    return all.Object(vb::kItem, {project_and_position.Value(1)});
  }));
}

HostResult<Variant> Editor::ComponentName(const Arguments& component) {
  return Answered(shares_.Find(component.Number(0)).Text(vb::kComponentName));
}

HostResult<Variant> Editor::ComponentType(const Arguments& component) {
  return Answered(shares_.Find(component.Number(0)).Number(vb::kComponentType));
}

HostResult<Variant> Editor::ComponentProject(const Arguments& component) {
  return Given(ProjectOf(shares_.Find(component.Number(0))));
}

HostResult<Variant> Editor::HasCode(const Arguments& component) {
  const auto code = shares_.Find(component.Number(0)).Object(vb::kCodeModule);
  // Some documents fail instead of having none.
  return Variant(code && *code ? 1 : 0);
}

HostResult<HostObject> Editor::CodeOf(const Arguments& component, Use use) const {
  const auto object = shares_.Find(component.Number(0));
  const auto project = ProjectOf(object);
  if (!project) return std::unexpected(project.error());
  auto asked = RequireUnlocked(*project);
  if (asked && use == Use::kWrite) asked = RequireDesignMode(*project);
  if (!asked) return std::unexpected(asked.error());
  return object.Object(vb::kCodeModule);
}

HostResult<Variant> Editor::CountOfDeclarationLines(const Arguments& component) {
  return Answered(Then(CodeOf(component, Use::kRead), [](const HostObject& code) {
    return code.Number(vb::kCountOfDeclarationLines);
  }));
}

HostResult<Variant> Editor::CountOfLines(const Arguments& component) {
  return Answered(Then(CodeOf(component, Use::kRead),
                       [](const HostObject& code) { return code.Number(vb::kCountOfLines); }));
}

HostResult<Variant> Editor::Lines(const Arguments& component_first_count) {
  return Answered(Then(CodeOf(component_first_count, Use::kRead), [&](const HostObject& code) {
    return code.Text(vb::kLines, {component_first_count.Value(1), component_first_count.Value(2)});
  }));
}

HostResult<Variant> Editor::Write(com::HostMember member, const Arguments& arguments) {
  return Then(CodeOf(arguments, Use::kWrite), [&](const HostObject& code) {
    return code.Call(member, {arguments.Value(1), arguments.Value(2)});
  });
}

HostResult<Variant> Editor::InsertLines(const Arguments& component_line_text) {
  return Write(vb::kInsertLines, component_line_text);
}

HostResult<Variant> Editor::DeleteLines(const Arguments& component_first_count) {
  return Write(vb::kDeleteLines, component_first_count);
}

HostResult<Variant> Editor::ReplaceLine(const Arguments& component_line_text) {
  return Write(vb::kReplaceLine, component_line_text);
}

}  // namespace declarium::vba
