#include "vbhost/object_model.h"

#include <algorithm>
#include <utility>

#include "text/text.h"
#include "vbhost/vba_face.h"
#include "win32/clipboard.h"

namespace declarium::vbhost {
namespace {

using Access = ModelObject::Access;

constexpr IID kClickEvents = {0x0002E198, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr IID kProjectEvents = {0x0002E190, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr IID kComponentEvents = {0x0002E193, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

constexpr HRESULT kGone = CO_E_OBJNOTCONNECTED;
constexpr HRESULT kOutOfRange = DISP_E_BADINDEX;

HRESULT Answer(Call& call, int number) {
  call.result = Variant(number);
  return S_OK;
}

HRESULT Answer(Call& call, std::u16string_view text) {
  call.result = Variant(text);
  return S_OK;
}

HRESULT Answer(Call& call, const ComPtr<IDispatch>& object) {
  call.result = Variant(object.Get());
  return S_OK;
}

HRESULT TakeText(const Call& call, std::u16string& text) {
  return call.arguments.back().ToText(text);
}

int NumberAt(const Call& call, std::size_t index) {
  std::int32_t number = 0;
  if (index < call.arguments.size()) static_cast<void>(call.arguments[index].ToNumber(number));
  return number;
}

bool TruthAt(const Call& call, std::size_t index) {
  if (index >= call.arguments.size()) return false;
  const auto& value = call.arguments[index].Get();
  return value.vt == VT_BOOL && value.boolVal != VARIANT_FALSE;
}

// The element of a collection that an Item argument names by position or by name.
template <class T>
std::shared_ptr<T> ItemOf(const std::vector<std::shared_ptr<T>>& all, const Variant& index) {
  if (index.Get().vt == VT_BSTR) {
    const auto name = com::TextOf(index.Get().bstrVal);
    const auto found = std::ranges::find_if(
        all, [&](const auto& one) { return EqualIgnoringCase(one->name, name); });
    return found == all.end() ? nullptr : *found;
  }
  std::int32_t number = 0;
  if (FAILED(index.ToNumber(number)) || number < 1 || number > static_cast<int>(all.size())) {
    return nullptr;
  }
  return all[static_cast<std::size_t>(number - 1)];
}

std::vector<std::uint8_t> ClipboardBytes(UINT format) {
  return win32::BytesIn(GetClipboardData(format)).value_or(std::vector<std::uint8_t>());
}

}  // namespace

ComPtr<IDispatch> ObjectModel::Make(const char* name,
                                    const std::function<void(ModelObject&)>& fill) {
  auto object = ComPtr<ModelObject>::Attach(new ModelObject(name, ide_.policy));
  fill(*object);
  return ComPtr<IDispatch>::Attach(object.Detach());
}

ComPtr<IDispatch> ObjectModel::Find(const void* entity, Role role, const char* name,
                                    const std::function<void(ModelObject&)>& fill) {
  const Key key{entity, role};
  if (const auto found = existing_.find(key); found != existing_.end()) {
    return ComPtr<IDispatch>(found->second);
  }
  return Make(name, [&](ModelObject& object) {
    existing_[key] = &object;
    object.SetGone([this, key] { existing_.erase(key); });
    fill(object);
  });
}

ComPtr<IDispatch> ObjectModel::Source(const char* name, const IID& events,
                                      std::shared_ptr<SinkList> sinks) {
  return Make(name, [&](ModelObject& object) { object.SetEvents(events, std::move(sinks)); });
}

ComPtr<IDispatch> ObjectModel::Vbe() {
  return Find(&ide_, Role::kSelf, "VBE", [this](ModelObject& vbe) {
    vbe.Add(0, L"Name", Access::kGet, 0, 0, [](Call& c) { return Answer(c, u"Visual Basic"); });
    vbe.Add(100, L"Version", Access::kGet, 0, 0, [](Call& c) { return Answer(c, u"6.00"); });
    vbe.Add(107, L"VBProjects", Access::kGet, 0, 0,
            [this](Call& c) { return Answer(c, Projects()); });
    vbe.Add(108, L"CommandBars", Access::kGet, 0, 0,
            [this](Call& c) { return Answer(c, CommandBars()); });
    vbe.Add(111, L"Events", Access::kGet, 0, 0, [this](Call& c) { return Answer(c, Events()); });
    vbe.Add(201, L"ActiveVBProject", Access::kGet, 0, 0, [this](Call& c) {
      return Answer(c, ide_.active_project ? Of(ide_.active_project) : nullptr);
    });
    vbe.Add(202, L"SelectedVBComponent", Access::kGet, 0, 0,
            [this](Call& c) { return Answer(c, ide_.selected ? Of(ide_.selected) : nullptr); });
    vbe.Add(204, L"MainWindow", Access::kGet, 0, 0,
            [this](Call& c) { return Answer(c, MainWindow()); });
    vbe.Add(206, L"ActiveCodePane", Access::kGet, 0, 0, [this](Call& c) {
      return Answer(c, ide_.active_pane ? PaneOf(ide_.active_pane) : nullptr);
    });
  });
}

ComPtr<IDispatch> ObjectModel::MainWindow() {
  return Make("Window", [this](ModelObject& window) {
    window.Add(120, L"HWnd", Access::kGet, 0, 0, [this](Call& c) {
      return Answer(c, static_cast<int>(reinterpret_cast<INT_PTR>(ide_.window)));
    });
  });
}

ComPtr<IDispatch> ObjectModel::CommandBars() {
  return Make("CommandBars", [this](ModelObject& bars) {
    bars.Add(0, L"Item", Access::kGet, 1, 1, [this](Call& c) {
      const auto bar = ItemOf(ide_.bars, c.arguments[0]);
      return bar && bar->found_by_name ? Answer(c, Of(bar)) : E_INVALIDARG;
    });
    // Type, Id, Tag, Visible: only by the tag
    bars.Add(0x60030008, L"FindControl", Access::kMethod, 3, 4, [this](Call& c) {
      std::u16string tag;
      if (FAILED(c.arguments[2].ToText(tag))) return E_INVALIDARG;
      for (const auto& bar : ide_.bars) {
        for (const auto& control : bar->controls) {
          if (control->tag == tag) return Answer(c, Of(control));
        }
      }
      return Answer(c, ComPtr<IDispatch>());
    });
    bars.Add(0x60030003, L"Count", Access::kGet, 0, 0,
             [this](Call& c) { return Answer(c, static_cast<int>(ide_.bars.size())); });
  });
}

ComPtr<IDispatch> ObjectModel::Of(const std::shared_ptr<Bar>& bar) {
  return Find(bar.get(), Role::kSelf, "CommandBar", [this, bar](ModelObject& object) {
    object.Add(0x60040003, L"Controls", Access::kGet, 0, 0,
               [this, bar](Call& c) { return Answer(c, ControlsOf(bar)); });
    object.Add(0x6004000E, L"Name", Access::kGet, 0, 0,
               [bar](Call& c) { return Answer(c, bar->name); });
  });
}

ComPtr<IDispatch> ObjectModel::ControlsOf(const std::shared_ptr<Bar>& bar) {
  return Find(bar.get(), Role::kControls, "CommandBarControls", [this, bar](ModelObject& object) {
    object.Add(0x60030000, L"Add", Access::kMethod, 0, 5, [this, bar](Call& c) {
      // Only buttons; a type that is left out means one.
      if (!c.arguments.empty() && c.arguments[0].Get().vt != VT_ERROR && NumberAt(c, 0) != 1) {
        return E_INVALIDARG;
      }
      auto control = std::make_shared<Control>();
      control->temporary = TruthAt(c, 4);
      bar->controls.push_back(control);
      ide_.changed();
      return Answer(c, Of(control));
    });
    object.Add(0x60030001, L"Count", Access::kGet, 0, 0,
               [bar](Call& c) { return Answer(c, static_cast<int>(bar->controls.size())); });
    object.Add(0, L"Item", Access::kGet, 1, 1, [this, bar](Call& c) {
      const int index = NumberAt(c, 0);
      if (index < 1 || index > static_cast<int>(bar->controls.size())) return kOutOfRange;
      return Answer(c, Of(bar->controls[static_cast<std::size_t>(index - 1)]));
    });
  });
}

HRESULT ObjectModel::PasteFace(Control& control) {
  const win32::OpenedClipboard clipboard(ide_.window);
  if (!clipboard) return E_FAIL;
  auto face = ClipboardBytes(RegisterClipboardFormatW(L"Toolbar Button Face"));
  auto mask = ClipboardBytes(RegisterClipboardFormatW(L"Toolbar Button Mask"));
  const bool has_bitmap = IsClipboardFormatAvailable(CF_DIB) != FALSE;
  if (!has_bitmap || face.empty() || mask.empty()) return E_FAIL;
  control.face = std::move(face);
  control.mask = std::move(mask);
  return S_OK;
}

ComPtr<IDispatch> ObjectModel::Of(const std::shared_ptr<Control>& control) {
  return Find(control.get(), Role::kSelf, "CommandBarControl", [&](ModelObject& object) {
    // Every member of a control that was deleted fails.
    const auto add = [&](DISPID id, const wchar_t* name, Access access, int most,
                         ModelObject::Handler handler) {
      object.Add(id, name, access, 0, most, [this, control, handler](Call& c) {
        if (control->deleted) return kGone;
        const HRESULT status = handler(c);
        ide_.changed();
        return status;
      });
    };
    const auto text = [&](DISPID id, const wchar_t* name, std::u16string Control::* member) {
      add(id, name, Access::kGetPut, 0, [control, member](Call& c) {
        return c.put ? TakeText(c, (*control).*member) : Answer(c, (*control).*member);
      });
    };
    text(0x60040003, L"Caption", &Control::caption);
    text(0x60040025, L"TooltipText", &Control::tooltip);
    text(0x60040023, L"Tag", &Control::tag);
    add(0x60040007, L"Delete", Access::kMethod, 1, [this, control](Call&) {
      control->deleted = true;
      for (const auto& bar : ide_.bars) std::erase(bar->controls, control);
      return S_OK;
    });
    add(0x60050005, L"PasteFace", Access::kMethod, 0,
        [this, control](Call&) { return PasteFace(*control); });
    add(0x60040028, L"Type", Access::kGet, 0,
        [control](Call& c) { return Answer(c, control->menu ? 10 : 1); });
    if (control->menu) {
      add(0x60050000, L"CommandBar", Access::kGet, 0,
          [this, control](Call& c) { return Answer(c, Of(control->menu)); });
    } else if (ide_.face == Face::kVbaEditor) {
      AddVbaButtonMembers(object, control);
    }
  });
}

ComPtr<IDispatch> ObjectModel::Events() {
  return Make("Events", [this](ModelObject& object) {
    if (ide_.face == Face::kVbaEditor) return;
    object.Add(200, L"VBProjectsEvents", Access::kGet, 0, 0, [this](Call& c) {
      return Answer(c, Source("VBProjectsEvents", kProjectEvents, ide_.project_events));
    });
    object.Add(201, L"VBComponentsEvents", Access::kGet, 1, 1, [this](Call& c) {
      const auto asked = c.arguments[0].ToObject();
      for (const auto& project : ide_.projects) {
        if (Of(project).Get() != asked.Get()) continue;
        return Answer(c, Source("VBComponentsEvents", kComponentEvents, project->component_events));
      }
      return E_INVALIDARG;
    });
    object.Add(205, L"CommandBarEvents", Access::kGet, 1, 1, [this](Call& c) {
      const auto asked = c.arguments[0].ToObject();
      for (const auto& bar : ide_.bars) {
        for (const auto& control : bar->controls) {
          if (Of(control).Get() != asked.Get()) continue;
          return Answer(c, Source("CommandBarEvents", kClickEvents, control->clicks));
        }
      }
      return E_INVALIDARG;
    });
  });
}

ComPtr<IDispatch> ObjectModel::Projects() {
  return Make("VBProjects", [this](ModelObject& object) {
    object.SetEvents(kProjectEvents, ide_.project_events);
    object.Add(0, L"Item", Access::kGet, 1, 1, [this](Call& c) {
      const auto project = ItemOf(ide_.projects, c.arguments[0]);
      return project ? Answer(c, Of(project)) : kOutOfRange;
    });
    object.Add(10, L"Count", Access::kGet, 0, 0,
               [this](Call& c) { return Answer(c, static_cast<int>(ide_.projects.size())); });
  });
}

ComPtr<IDispatch> ObjectModel::Of(const std::shared_ptr<Project>& project) {
  return Find(project.get(), Role::kSelf, "VBProject", [&](ModelObject& object) {
    if (ide_.face == Face::kVbaEditor) {
      AddVbaProjectMembers(object, project);
    } else {
      object.Add(0, L"Name", Access::kGet, 0, 0,
                 [project](Call& c) { return Answer(c, project->name); });
    }
    object.Add(135, L"VBComponents", Access::kGet, 0, 0, [this, project](Call& c) {
      const HRESULT unlocked = CheckVbaUnlocked(*project);
      return unlocked == S_OK ? Answer(c, ComponentsOf(project)) : unlocked;
    });
  });
}

ComPtr<IDispatch> ObjectModel::ComponentsOf(const std::shared_ptr<Project>& project) {
  return Find(project.get(), Role::kComponents, "VBComponents", [&](ModelObject& object) {
    object.SetEvents(kComponentEvents, project->component_events);
    object.Add(0, L"Item", Access::kGet, 1, 1, [this, project](Call& c) {
      const auto component = ItemOf(project->components, c.arguments[0]);
      return component ? Answer(c, Of(component)) : kOutOfRange;
    });
    object.Add(2, L"Parent", Access::kGet, 0, 0,
               [this, project](Call& c) { return Answer(c, Of(project)); });
    object.Add(10, L"Count", Access::kGet, 0, 0, [project](Call& c) {
      return Answer(c, static_cast<int>(project->components.size()));
    });
  });
}

ComPtr<IDispatch> ObjectModel::Of(const std::shared_ptr<Component>& component) {
  return Find(component.get(), Role::kSelf, "VBComponent", [&](ModelObject& object) {
    object.Add(48, L"Name", Access::kGet, 0, 0,
               [component](Call& c) { return Answer(c, component->name); });
    object.Add(50, L"CodeModule", Access::kGet, 0, 0, [this, component](Call& c) {
      if (component->removed) return kGone;
      return Answer(c, component->has_code ? ModuleOf(component) : nullptr);
    });
    object.Add(51, L"Type", Access::kGet, 0, 0,
               [component](Call& c) { return Answer(c, component->type); });
    object.Add(54, L"Collection", Access::kGet, 0, 0, [this, component](Call& c) {
      const auto project = component->project.lock();
      return project && !component->removed ? Answer(c, ComponentsOf(project)) : kGone;
    });
  });
}

ComPtr<IDispatch> ObjectModel::ModuleOf(const std::shared_ptr<Component>& component) {
  return Find(component.get(), Role::kCodeModule, "CodeModule", [&](ModelObject& object) {
    // Every member of a module whose component was removed fails.
    const auto add = [&](DISPID id, const wchar_t* name, Access access, int least, int most,
                         ModelObject::Handler handler) {
      object.Add(id, name, access, least, most,
                 [component, handler](Call& c) { return component->removed ? kGone : handler(c); });
    };
    const auto add_change = [&](DISPID id, const wchar_t* name, int least,
                                ModelObject::Handler handler) {
      add(id, name, Access::kMethod, least, 2, [this, component, handler](Call& c) {
        const HRESULT may_change = CheckVbaChange(ide_, *component);
        return may_change == S_OK ? handler(c) : may_change;
      });
    };
    const auto as_kept = [this](const std::u16string& text) {
      return ide_.face == Face::kVbaEditor ? CutAsVba(text) : text;
    };
    add(0x60020000, L"Parent", Access::kGet, 0, 0,
        [this, component](Call& c) { return Answer(c, Of(component)); });
    add(0, L"Name", Access::kGet, 0, 0,
        [component](Call& c) { return Answer(c, component->name); });
    add(0x60020006, L"Lines", Access::kGet, 2, 2, [component](Call& c) {
      std::u16string text;
      if (!component->code.Lines(NumberAt(c, 0), NumberAt(c, 1), text)) return E_INVALIDARG;
      return Answer(c, text);
    });
    add(0x60020007, L"CountOfLines", Access::kGet, 0, 0,
        [component](Call& c) { return Answer(c, component->code.CountOfLines()); });
    add_change(0x60020008, L"InsertLines", 2, [this, component, as_kept](Call& c) {
      const int line = NumberAt(c, 0);
      const int before = component->code.CountOfLines();
      std::u16string text;
      if (FAILED(TakeText(c, text)) || !component->code.InsertLines(line, as_kept(text))) {
        return E_INVALIDARG;
      }
      // The caret moves down with its line.
      if (component->pane.caret >= line) {
        component->pane.caret += component->code.CountOfLines() - before;
      }
      ide_.changed();
      return S_OK;
    });
    add_change(0x60020009, L"DeleteLines", 1, [this, component](Call& c) {
      const int count = c.arguments.size() > 1 ? NumberAt(c, 1) : 1;
      if (!component->code.DeleteLines(NumberAt(c, 0), count)) return E_INVALIDARG;
      ide_.changed();
      return S_OK;
    });
    add_change(0x6002000A, L"ReplaceLine", 2, [this, component, as_kept](Call& c) {
      const int line = NumberAt(c, 0);
      std::u16string text;
      if (FAILED(TakeText(c, text)) || !component->code.DeleteLines(line, 1) ||
          !component->code.InsertLines(line, as_kept(text))) {
        return E_INVALIDARG;
      }
      ide_.changed();
      return S_OK;
    });
    add(0x6002000F, L"CountOfDeclarationLines", Access::kGet, 0, 0,
        [component](Call& c) { return Answer(c, component->code.CountOfDeclarationLines()); });
    add(0x60020012, L"CodePane", Access::kGet, 0, 0, [this, component](Call& c) {
      component->pane.open = true;
      return Answer(c, PaneOf(component));
    });
  });
}

ComPtr<IDispatch> ObjectModel::PaneOf(const std::shared_ptr<Component>& component) {
  return Find(component.get(), Role::kCodePane, "CodePane", [&](ModelObject& object) {
    object.Add(0x60020003, L"GetSelection", Access::kMethod, 4, 4, [component](Call& c) {
      // Start line, start column, end line, end column; the raw arguments are last first.
      const int numbers[] = {component->pane.caret, 1, component->pane.caret, 1};
      for (int i = 0; i < 4; ++i) {
        const auto& argument = c.raw->rgvarg[3 - i];
        if (argument.vt != (VT_BYREF | VT_I4)) return DISP_E_TYPEMISMATCH;
        *argument.plVal = numbers[i];
      }
      return S_OK;
    });
    object.Add(0x60020004, L"SetSelection", Access::kMethod, 4, 4, [component](Call& c) {
      component->pane.caret = NumberAt(c, 2);
      return S_OK;
    });
    object.Add(0x60020005, L"TopLine", Access::kGetPut, 0, 0, [this, component](Call& c) {
      if (!c.put) return Answer(c, component->pane.top);
      component->pane.top = NumberAt(c, 0);
      ide_.changed();
      return S_OK;
    });
    object.Add(0x60020007, L"CountOfVisibleLines", Access::kGet, 0, 0,
               [component](Call& c) { return Answer(c, component->pane.visible_lines); });
    object.Add(0x60020008, L"CodeModule", Access::kGet, 0, 0, [this, component](Call& c) {
      return component->removed ? kGone : Answer(c, ModuleOf(component));
    });
  });
}

ComPtr<IDispatch> ObjectModel::AddIn(std::u16string prog_id) {
  return Make("AddIn", [&](ModelObject& object) {
    object.Add(3, L"ProgId", Access::kGet, 0, 0, [prog_id](Call& c) { return Answer(c, prog_id); });
    object.Add(6, L"Connect", Access::kGet, 0, 0, [](Call& c) { return Answer(c, -1); });
  });
}

HRESULT ObjectModel::FireClick(const std::shared_ptr<Control>& control) {
  const auto object = Of(control);
  if (ide_.face == Face::kVbaEditor) return FireVbaClick(control, object);
  VARIANT_BOOL handled = VARIANT_FALSE;
  VARIANT_BOOL cancel_default = VARIANT_FALSE;
  std::vector<VARIANT> arguments(3);
  arguments[0].vt = VT_DISPATCH;
  arguments[0].pdispVal = object.Get();
  arguments[1].vt = VT_BYREF | VT_BOOL;
  arguments[1].pboolVal = &handled;
  arguments[2].vt = VT_BYREF | VT_BOOL;
  arguments[2].pboolVal = &cancel_default;
  return control->clicks->Fire(1, arguments);
}

HRESULT ObjectModel::FireProject(DISPID event, const std::shared_ptr<Project>& project) {
  const auto object = Of(project);
  std::vector<VARIANT> arguments(1);
  arguments[0].vt = VT_DISPATCH;
  arguments[0].pdispVal = object.Get();
  return ide_.project_events->Fire(event, arguments);
}

HRESULT ObjectModel::FireComponent(DISPID event, const std::shared_ptr<Component>& component) {
  const auto project = component->project.lock();
  if (!project) return S_OK;
  const auto object = Of(component);
  std::vector<VARIANT> arguments(1);
  arguments[0].vt = VT_DISPATCH;
  arguments[0].pdispVal = object.Get();
  return project->component_events->Fire(event, arguments);
}

}  // namespace declarium::vbhost
