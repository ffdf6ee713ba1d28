// The object model that add-ins see: one object per bar, control, project, component and so on,
// with the members and ids of the IDE's type library.
#pragma once

#include <map>
#include <memory>

#include "vbhost/ide.h"

namespace declarium::vbhost {

class ObjectModel {
 public:
  explicit ObjectModel(Ide& ide) : ide_(ide) {}
  ObjectModel(const ObjectModel&) = delete;
  ObjectModel& operator=(const ObjectModel&) = delete;

  // The application object. Asking twice for an object that is still referred to gives the same
  // one.
  [[nodiscard]] ComPtr<IDispatch> Vbe();
  [[nodiscard]] ComPtr<IDispatch> Of(const std::shared_ptr<Control>& control);
  [[nodiscard]] ComPtr<IDispatch> Of(const std::shared_ptr<Project>& project);
  [[nodiscard]] ComPtr<IDispatch> Of(const std::shared_ptr<Component>& component);
  [[nodiscard]] Face face() const noexcept { return ide_.face; }
  // The object that stands for an add-in.
  [[nodiscard]] ComPtr<IDispatch> AddIn(std::u16string prog_id);

  // Events, as the IDE fires them.
  HRESULT FireClick(const std::shared_ptr<Control>& control);
  HRESULT FireProject(DISPID event, const std::shared_ptr<Project>& project);
  HRESULT FireComponent(DISPID event, const std::shared_ptr<Component>& component);

 private:
  enum class Role { kSelf, kControls, kComponents, kCodeModule, kCodePane };
  using Key = std::pair<const void*, Role>;

  // The existing object for `key`, or a new one that `fill` gives its members.
  ComPtr<IDispatch> Find(const void* entity, Role role, const char* name,
                         const std::function<void(ModelObject&)>& fill);
  ComPtr<IDispatch> Make(const char* name, const std::function<void(ModelObject&)>& fill);
  ComPtr<IDispatch> Source(const char* name, const IID& events, std::shared_ptr<SinkList> sinks);

  ComPtr<IDispatch> CommandBars();
  ComPtr<IDispatch> Of(const std::shared_ptr<Bar>& bar);
  ComPtr<IDispatch> ControlsOf(const std::shared_ptr<Bar>& bar);
  ComPtr<IDispatch> Events();
  ComPtr<IDispatch> Projects();
  ComPtr<IDispatch> ComponentsOf(const std::shared_ptr<Project>& project);
  ComPtr<IDispatch> ModuleOf(const std::shared_ptr<Component>& component);
  ComPtr<IDispatch> PaneOf(const std::shared_ptr<Component>& component);
  ComPtr<IDispatch> MainWindow();
  HRESULT PasteFace(Control& control);

  Ide& ide_;
  std::map<Key, ModelObject*> existing_;
};

}  // namespace declarium::vbhost
