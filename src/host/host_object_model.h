// What the add-in uses of the host's extensibility object model, as narrow interfaces. The COM
// adapters in com/ implement them over the real objects; tests implement them with fakes. All calls
// are made on the thread that received the host's objects.
#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "host/busy_host.h"
#include "vb/audience.h"
#include "vb/module.h"

namespace declarium {

// A failed call to the host.
struct HostError {
  std::int32_t code;                // the status it returned, an HRESULT
  std::u16string description = {};  // the host's own words, empty when it said none
};

// RPC_E_CALL_REJECTED or RPC_E_SERVERCALL_RETRYLATER: the host takes no calls now.
[[nodiscard]] bool IsBusy(const HostError& error) noexcept;

// Whether the failure says that the host's process is no longer there to answer.
[[nodiscard]] bool IsHostGone(const HostError& error) noexcept;

// What the add-in in a VBA editor refuses, before the editor is asked.
inline constexpr auto kProjectIsLocked = static_cast<std::int32_t>(0x80040201);
inline constexpr auto kProgramRuns = static_cast<std::int32_t>(0x80040202);
// A line that the editor would cut.
inline constexpr auto kLineTooLong = static_cast<std::int32_t>(0x80040203);

// DISP_E_TYPEMISMATCH: the host answered with something else than was asked for.
inline constexpr std::int32_t kWrongAnswer = static_cast<std::int32_t>(0x80020005);

template <class T = void>
using HostResult = std::expected<T, HostError>;

// A button on one of the host's toolbars or an entry of one of its menus. Destroying the object
// forgets the control without removing it from the bar.
class CommandBarControl {
 public:
  virtual ~CommandBarControl() = default;
  // Takes the picture on the clipboard as the control's face.
  [[nodiscard]] virtual HostResult<> PasteFace() = 0;
  [[nodiscard]] virtual HostResult<> SetCaption(std::u16string_view caption) = 0;
  [[nodiscard]] virtual HostResult<> SetTooltipText(std::u16string_view text) = 0;
  // Removes the control from its bar.
  [[nodiscard]] virtual HostResult<> Delete() = 0;
};

// A running registration for events of the host; destroying it ends the events.
class Subscription {
 public:
  virtual ~Subscription() = default;
};

class HostComponent;

// The code of one component. Line numbers are 1-based. A module whose component was closed or
// removed answers every call with an error.
class CodeModule {
 public:
  virtual ~CodeModule() = default;
  // The name of the component that owns the module.
  [[nodiscard]] virtual HostResult<std::u16string> ComponentName() = 0;
  // Whether both are the code of one component, which its name does not say: each project may have
  // one of that name. A module that answers is not the same as one that does not. `other` must
  // come from the same application.
  [[nodiscard]] virtual HostResult<bool> IsSameAs(CodeModule& other) = 0;
  [[nodiscard]] virtual HostResult<int> CountOfDeclarationLines() = 0;
  [[nodiscard]] virtual HostResult<int> CountOfLines(BusyHost busy) = 0;
  // `count` lines from `first` on, joined by CR LF. Fails when they do not all exist.
  [[nodiscard]] virtual HostResult<std::u16string> Lines(int first, int count) = 0;
  // Inserts `text`, which may hold several lines, before `line`.
  [[nodiscard]] virtual HostResult<> InsertLines(int line, std::u16string_view text) = 0;
  [[nodiscard]] virtual HostResult<> DeleteLines(int first, int count) = 0;
  // `text` is one line.
  [[nodiscard]] virtual HostResult<> ReplaceLine(int line, std::u16string_view text) = 0;
  [[nodiscard]] virtual HostResult<std::unique_ptr<HostComponent>> Owner() = 0;
};

class HostProject;

// A module, form, class and so on of a project.
class HostComponent {
 public:
  virtual ~HostComponent() = default;
  [[nodiscard]] virtual HostResult<std::u16string> Name() = 0;
  // None for what holds no code, as a resource file.
  [[nodiscard]] virtual HostResult<std::optional<vb::ModuleKind>> Kind() = 0;
  // Null when it has no code.
  [[nodiscard]] virtual HostResult<std::unique_ptr<CodeModule>> Module() = 0;
  [[nodiscard]] virtual HostResult<std::unique_ptr<HostProject>> Project() = 0;
  // `other` must come from the same application. The host is not asked.
  [[nodiscard]] virtual bool IsSameAs(const HostComponent& other) const = 0;
};

class HostProject {
 public:
  virtual ~HostProject() = default;
  [[nodiscard]] virtual HostResult<std::u16string> Name() = 0;
  [[nodiscard]] virtual HostResult<int> CountOfComponents() = 0;
  // `position` counts from 1.
  [[nodiscard]] virtual HostResult<std::unique_ptr<HostComponent>> Component(int position) = 0;
};

// A window of the host that shows a code module.
class CodePane {
 public:
  virtual ~CodePane() = default;
  // `module` must come from the same application.
  [[nodiscard]] virtual HostResult<bool> Shows(CodeModule& module) = 0;
  [[nodiscard]] virtual HostResult<int> CaretLine() = 0;
  [[nodiscard]] virtual HostResult<int> TopLine() = 0;
  [[nodiscard]] virtual HostResult<int> CountOfVisibleLines() = 0;
  [[nodiscard]] virtual HostResult<> SetTopLine(int line) = 0;
};

// What happened to the host's components, as far as the active code module depends on it.
class ComponentEvents {
 public:
  virtual ~ComponentEvents() = default;
  // A component was selected or activated; `module` is null when it has no code.
  virtual void ComponentSelected(std::unique_ptr<CodeModule> module) = 0;
  // A component with this code left its project.
  virtual void ComponentRemoved(CodeModule& removed) = 0;
  // Something else happened that may have moved the selection: the host is to be asked.
  virtual void SelectionMayHaveChanged() = 0;
};

// The host's application object.
class HostApplication {
 public:
  virtual ~HostApplication() = default;

  // Adds a button at the end of the command bar `bar`. An editor refuses: its own add-in has the
  // controls there.
  [[nodiscard]] virtual HostResult<std::unique_ptr<CommandBarControl>> AddControl(
      std::u16string_view bar) = 0;

  // Calls `clicked` for each click on `control`, which must come from this application.
  [[nodiscard]] virtual HostResult<std::unique_ptr<Subscription>> SubscribeClick(
      CommandBarControl& control, std::function<void()> clicked) = 0;

  // Reports to `events` for as long as they exist, and takes a share while an event is handled.
  // Projects opened later are followed too.
  [[nodiscard]] virtual HostResult<std::unique_ptr<Subscription>> SubscribeComponents(
      std::weak_ptr<ComponentEvents> events) = 0;

  // The module of the selected component, or of the active code pane when no component is selected;
  // null when there is neither.
  [[nodiscard]] virtual HostResult<std::unique_ptr<CodeModule>> ActiveModule() = 0;

  // For a host that does not say when another component is selected, on each turn of a timer:
  // whether it is to be asked again. The others are not called.
  [[nodiscard]] virtual bool HasMovedSelection() = 0;

  // Whose declarations it takes, unless the user chose others.
  [[nodiscard]] virtual vb::Audience Target() const noexcept = 0;

  // Null when no project is open.
  [[nodiscard]] virtual HostResult<std::unique_ptr<HostProject>> ActiveProject() = 0;

  // The projects that are open.
  [[nodiscard]] virtual HostResult<int> CountOfProjects() = 0;

  // The handle of the host's main window.
  [[nodiscard]] virtual HostResult<std::uintptr_t> MainWindow() = 0;

  // Null when the host has no active code pane.
  [[nodiscard]] virtual HostResult<std::unique_ptr<CodePane>> ActivePane() = 0;
};

}  // namespace declarium
