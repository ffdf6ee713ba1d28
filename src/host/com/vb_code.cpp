#include "host/com/vb_code.h"

#include <utility>

#include "host/com/vb_members.h"

namespace declarium::com {
namespace {

class VbComponent final : public HostComponent {
 public:
  explicit VbComponent(HostObject component) : component_(std::move(component)) {}
  HostResult<std::u16string> Name() override { return component_.Text(vb::kComponentName); }
  HostResult<std::optional<declarium::vb::ModuleKind>> Kind() override;
  HostResult<std::unique_ptr<CodeModule>> Module() override {
    auto module = component_.Object(vb::kCodeModule);
    if (!module) return std::unexpected(module.error());
    return MakeCodeModule(*std::move(module));
  }
  HostResult<std::unique_ptr<HostProject>> Project() override {
    auto project = Then(component_.Object(vb::kCollection), [](const HostObject& components) {
      return components.Object(vb::kProjectOfComponents);
    });
    if (!project) return std::unexpected(project.error());
    return MakeProject(*std::move(project));
  }
  bool IsSameAs(const HostComponent& other) const override {
    return IdentityOf(component_) == IdentityOf(static_cast<const VbComponent&>(other).component_);
  }

 private:
  HostObject component_;
};

HostResult<std::optional<declarium::vb::ModuleKind>> VbComponent::Kind() {
  const auto type = component_.Number(vb::kComponentType);
  if (!type) return std::unexpected(type.error());
  return KindOfComponent(*type);
}

class VbCodeModule final : public CodeModule {
 public:
  explicit VbCodeModule(HostObject module) : module_(std::move(module)) {}
  HostResult<std::u16string> ComponentName() override {
    return Then(module_.Object(vb::kParent),
                [](const HostObject& component) { return component.Text(vb::kComponentName); });
  }
  HostResult<bool> IsSameAs(CodeModule& other) override {
    const auto component = module_.Object(vb::kParent);
    if (!component) return std::unexpected(component.error());
    const auto others = static_cast<VbCodeModule&>(other).module_.Object(vb::kParent);
    return others && IdentityOf(*component) == IdentityOf(*others);
  }
  HostResult<int> CountOfDeclarationLines() override {
    return module_.Number(vb::kCountOfDeclarationLines);
  }
  HostResult<int> CountOfLines(BusyHost busy) override {
    return module_.Number(vb::kCountOfLines, busy);
  }
  HostResult<std::u16string> Lines(int first, int count) override {
    return module_.Text(vb::kLines, {Variant(first), Variant(count)});
  }
  HostResult<> InsertLines(int line, std::u16string_view text) override {
    return module_.Do(vb::kInsertLines, {Variant(line), Variant(text)});
  }
  HostResult<> DeleteLines(int first, int count) override {
    return module_.Do(vb::kDeleteLines, {Variant(first), Variant(count)});
  }
  HostResult<> ReplaceLine(int line, std::u16string_view text) override {
    return module_.Do(vb::kReplaceLine, {Variant(line), Variant(text)});
  }
  HostResult<std::unique_ptr<HostComponent>> Owner() override {
    auto component = module_.Object(vb::kParent);
    if (!component) return std::unexpected(component.error());
    return std::make_unique<VbComponent>(*std::move(component));
  }

 private:
  HostObject module_;
};

class VbProject final : public HostProject {
 public:
  explicit VbProject(HostObject project) : project_(std::move(project)) {}
  HostResult<std::u16string> Name() override { return project_.Text(vb::kProjectName); }
  HostResult<int> CountOfComponents() override {
    return Then(Components(), [](const HostObject& all) { return all.Number(vb::kCount); });
  }
  HostResult<std::unique_ptr<HostComponent>> Component(int position) override {
    auto component = Then(Components(), [&](const HostObject& all) {
      return all.Object(vb::kItem, {Variant(position)});
    });
    if (!component) return std::unexpected(component.error());
    return std::make_unique<VbComponent>(*std::move(component));
  }

 private:
  [[nodiscard]] HostResult<HostObject> Components() {
    if (components_) return components_;
    auto components = project_.Object(vb::kVBComponents);
    if (components) components_ = *components;
    return components;
  }

  HostObject project_;
  HostObject components_;  // the collection, which is asked for once
};

class VbCodePane final : public CodePane {
 public:
  explicit VbCodePane(HostObject pane) : pane_(std::move(pane)) {}
  HostResult<bool> Shows(CodeModule& module) override {
    const auto shown = pane_.Object(vb::kPaneCodeModule);
    if (!shown) return std::unexpected(shown.error());
    return VbCodeModule(*shown).IsSameAs(module);
  }
  HostResult<int> CaretLine() override;
  HostResult<int> TopLine() override { return pane_.Number(vb::kTopLine); }
  HostResult<int> CountOfVisibleLines() override { return pane_.Number(vb::kCountOfVisibleLines); }
  HostResult<> SetTopLine(int line) override { return pane_.Put(vb::kTopLine, Variant(line)); }

 private:
  HostObject pane_;
};

HostResult<int> VbCodePane::CaretLine() {
  // Start line, start column, end line, end column, given last first; the caret is at the end.
  long numbers[4] = {};
  VARIANT arguments[4];
  for (int i = 0; i < 4; ++i) {
    VariantInit(&arguments[i]);
    arguments[i].vt = VT_BYREF | VT_I4;
    arguments[i].plVal = &numbers[3 - i];
  }
  DISPPARAMS parameters{arguments, nullptr, 4, 0};
  const auto done = pane_.CallWith(vb::kGetSelection, parameters);
  if (!done) return std::unexpected(done.error());
  return static_cast<int>(numbers[2]);
}

}  // namespace

std::optional<declarium::vb::ModuleKind> KindOfComponent(int type) noexcept {
  using declarium::vb::ModuleKind;
  switch (type) {
    case vb::kStandardModule:
      return ModuleKind::kStandard;
    case vb::kMSForm:
    case vb::kVBForm:
    case vb::kVBMDIForm:
      return ModuleKind::kForm;
    case vb::kPropertyPage:
      return ModuleKind::kPropertyPage;
    case vb::kUserControl:
      return ModuleKind::kControl;
    case vb::kDocObject:
      return ModuleKind::kDocument;
    case vb::kResourceFile:
    case vb::kRelatedDocument:
      return std::nullopt;
    default:  // what is not known, and an Office document, may declare only what a class may
      return ModuleKind::kClass;
  }
}

IUnknown* IdentityOf(const HostObject& object) {
  return ComPtr<IDispatch>(object.Get()).Query<IUnknown>(IID_IUnknown).Get();
}

std::unique_ptr<CodeModule> MakeCodeModule(HostObject module) {
  if (!module) return nullptr;
  return std::make_unique<VbCodeModule>(std::move(module));
}

std::unique_ptr<CodePane> MakeCodePane(HostObject pane) {
  if (!pane) return nullptr;
  return std::make_unique<VbCodePane>(std::move(pane));
}

std::unique_ptr<HostProject> MakeProject(HostObject project) {
  if (!project) return nullptr;
  return std::make_unique<VbProject>(std::move(project));
}

std::unique_ptr<CodeModule> ModuleOf(const HostObject& component) {
  if (!component) return nullptr;
  auto module = component.Object(vb::kCodeModule);
  return module ? MakeCodeModule(*std::move(module)) : nullptr;
}

}  // namespace declarium::com
