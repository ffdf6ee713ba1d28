#include "host/com/vb_host_application.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "host/com/event_sink.h"
#include "host/com/vb_code.h"
#include "host/com/vb_members.h"

namespace declarium::com {
namespace {

// A group of more is nobody's; a host that counts more is wrong about it.
constexpr int kMostProjects = 1000;

HostResult<HWND> MainWindowOf(const HostObject& application) {
  const auto handle = Then(application.Object(vb::kMainWindow),
                           [](const HostObject& window) { return window.Number(vb::kHWnd); });
  // Window handles have 32 significant bits, whatever the size of the process.
  if (!handle) return std::unexpected(handle.error());
  return reinterpret_cast<HWND>(static_cast<INT_PTR>(*handle));
}

class VbControl final : public CommandBarControl {
 public:
  explicit VbControl(HostObject control) : control_(std::move(control)) {}
  HostResult<> PasteFace() override { return control_.Do(vb::kPasteFace); }
  HostResult<> SetCaption(std::u16string_view caption) override {
    return control_.Put(vb::kCaption, Variant(caption));
  }
  HostResult<> SetTooltipText(std::u16string_view text) override {
    return control_.Put(vb::kTooltipText, Variant(text));
  }
  HostResult<> Delete() override { return control_.Do(vb::kDelete); }
  [[nodiscard]] const HostObject& object() const { return control_; }

 private:
  HostObject control_;
};

// Follows the projects, and in each project the components. Shared, because the host may end the
// subscription from within a call that handles an event.
class ComponentFollower : public std::enable_shared_from_this<ComponentFollower> {
 public:
  ComponentFollower(HostObject event_sources, Boundary& boundary,
                    std::weak_ptr<ComponentEvents> events)
      : event_sources_(std::move(event_sources)), boundary_(boundary), events_(std::move(events)) {}

  [[nodiscard]] HostResult<> Begin(const HostObject& application) {
    const auto source = event_sources_.Object(vb::kVBProjectsEvents);
    if (!source) return std::unexpected(source.error());
    auto advised =
        Advise(*source, vb::kProjectsEventSet, boundary_,
               [weak = weak_from_this()](DISPID event, std::span<const VARIANT> arguments) {
                 if (const auto self = weak.lock()) self->ProjectEvent(event, arguments);
               });
    if (!advised) return std::unexpected(advised.error());
    projects_ = std::move(*advised);
    FollowOpenProjects(application);
    return {};
  }

  // Ending a subscription calls the host, which may send events meanwhile: no member is in use
  // then.
  void End() {
    projects_.reset();
    const auto ended = std::exchange(components_, {});
  }

 private:
  // A project that cannot be followed is left out: the active module is then found when the main
  // window is shown.
  void FollowOpenProjects(const HostObject& application) {
    const auto projects = application.Object(vb::kVBProjects);
    if (!projects) return;
    const int count = projects->Number(vb::kCount).value_or(0);
    for (int i = 1; i <= std::min(count, kMostProjects); ++i) {
      const auto project = projects->Object(vb::kItem, {Variant(i)});
      // What was counted is not there, or the host answers no more.
      if (!project || !*project) return;
      const auto followed = Follow(*project);
      if (!followed && (IsHostGone(followed.error()) || IsBusy(followed.error()))) return;
    }
  }

  HostResult<> Follow(const HostObject& project) {
    if (!project) return {};
    const auto source = event_sources_.Object(vb::kVBComponentsEvents, {Variant(project.Get())});
    if (!source) return std::unexpected(source.error());
    auto advised =
        Advise(*source, vb::kComponentsEventSet, boundary_,
               [weak = weak_from_this()](DISPID event, std::span<const VARIANT> arguments) {
                 if (const auto self = weak.lock()) self->ComponentEvent(event, arguments);
               });
    if (!advised) return std::unexpected(advised.error());
    // The following may have ended meanwhile.
    if (!projects_) return {};
    const auto earlier =
        std::exchange(components_[IdentityOf(project)], {project, std::move(*advised)});
    return {};
  }

  // The object an event is about is its first argument.
  static HostObject SubjectOf(std::span<const VARIANT> arguments) {
    if (arguments.empty()) return {};
    return HostObject(Variant::Dereferenced(arguments.back()).ToObject());
  }

  void ProjectEvent(DISPID event, std::span<const VARIANT> arguments) {
    const auto project = SubjectOf(arguments);
    if (event == vb::kProjectAdded) [[maybe_unused]]
      const auto followed = Follow(project);
    if (event == vb::kProjectRemoved) {
      const auto ended = components_.extract(IdentityOf(project));
    }
    const auto events = events_.lock();
    if (events && (event == vb::kProjectAdded || event == vb::kProjectRemoved ||
                   event == vb::kProjectActivated)) {
      events->SelectionMayHaveChanged();
    }
  }

  void ComponentEvent(DISPID event, std::span<const VARIANT> arguments) {
    const auto events = events_.lock();
    if (!events) return;
    const auto component = SubjectOf(arguments);
    switch (event) {
      case vb::kComponentSelected:
      case vb::kComponentActivated:
        events->ComponentSelected(ModuleOf(component));
        break;
      case vb::kComponentRemoved:
        if (const auto module = ModuleOf(component)) {
          events->ComponentRemoved(*module);
        } else {
          events->SelectionMayHaveChanged();
        }
        break;
      case vb::kComponentReloaded:
        events->SelectionMayHaveChanged();
        break;
      default:
        break;
    }
  }

  struct FollowedProject {
    HostObject project;  // keeps the identity that is the key
    std::unique_ptr<Subscription> subscription;
  };

  HostObject event_sources_;
  Boundary& boundary_;
  std::weak_ptr<ComponentEvents> events_;
  std::unique_ptr<Subscription> projects_;
  std::map<IUnknown*, FollowedProject> components_;
};

class ComponentSubscription final : public Subscription {
 public:
  explicit ComponentSubscription(std::shared_ptr<ComponentFollower> follower)
      : follower_(std::move(follower)) {}
  ComponentSubscription(const ComponentSubscription&) = delete;
  ComponentSubscription& operator=(const ComponentSubscription&) = delete;
  ~ComponentSubscription() override { follower_->End(); }

 private:
  std::shared_ptr<ComponentFollower> follower_;
};

class VbApplication final : public HostApplication {
 public:
  VbApplication(ComPtr<IDispatch> application, Boundary& boundary)
      : application_(std::move(application)), boundary_(boundary) {}

  HostResult<std::unique_ptr<CommandBarControl>> AddControl(std::u16string_view bar) override {
    const auto controls =
        Then(Then(application_.Object(vb::kCommandBars),
                  [&](const HostObject& bars) { return bars.Object(vb::kItem, {Variant(bar)}); }),
             [](const HostObject& found) { return found.Object(vb::kControls); });
    auto control = Then(controls, [](const HostObject& all) {
      // Temporary: the host stores its bars, and a control that stood there when the add-in or the
      // host was killed would come back with nobody behind it.
      return all.CallObject(vb::kAdd,
                            {Variant(vb::kControlButton), Variant::Missing(), Variant::Missing(),
                             Variant::Missing(), Variant::Boolean(true)});
    });
    if (!control) return std::unexpected(control.error());
    return std::make_unique<VbControl>(std::move(*control));
  }

  HostResult<std::unique_ptr<Subscription>> SubscribeClick(CommandBarControl& control,
                                                           std::function<void()> clicked) override {
    const auto& object = static_cast<VbControl&>(control).object();
    const auto source = Then(application_.Object(vb::kEvents), [&](const HostObject& events) {
      return events.Object(vb::kCommandBarEvents, {Variant(object.Get())});
    });
    if (!source) return std::unexpected(source.error());
    return Advise(*source, vb::kCommandBarClicks, boundary_,
                  [clicked = std::move(clicked)](DISPID event, std::span<const VARIANT>) {
                    if (event == vb::kClick) clicked();
                  });
  }

  HostResult<std::unique_ptr<Subscription>> SubscribeComponents(
      std::weak_ptr<ComponentEvents> events) override {
    auto sources = application_.Object(vb::kEvents);
    if (!sources) return std::unexpected(sources.error());
    const auto follower =
        std::make_shared<ComponentFollower>(std::move(*sources), boundary_, std::move(events));
    auto subscription = std::make_unique<ComponentSubscription>(follower);
    if (const auto begun = follower->Begin(application_); !begun) {
      return std::unexpected(begun.error());
    }
    return subscription;
  }

  HostResult<std::unique_ptr<CodeModule>> ActiveModule() override {
    if (const auto component = application_.Object(vb::kSelectedVBComponent);
        component && *component) {
      return ModuleOf(*component);
    }
    const auto pane = application_.Object(vb::kActiveCodePane);
    if (!pane) return std::unexpected(pane.error());
    if (!*pane) return nullptr;
    const auto module = pane->Object(vb::kPaneCodeModule);
    if (!module) return std::unexpected(module.error());
    return MakeCodeModule(*module);
  }

  bool HasMovedSelection() override { return false; }

  declarium::vb::Audience Target() const noexcept override { return declarium::vb::Audience::kVb6; }

  HostResult<std::unique_ptr<HostProject>> ActiveProject() override {
    auto project = application_.Object(vb::kActiveVBProject);
    if (!project) return std::unexpected(project.error());
    return MakeProject(*std::move(project));
  }

  HostResult<int> CountOfProjects() override {
    return Then(application_.Object(vb::kVBProjects),
                [](const HostObject& projects) { return projects.Number(vb::kCount); });
  }

  HostResult<std::uintptr_t> MainWindow() override {
    const auto window = MainWindowOf(application_);
    if (!window) return std::unexpected(window.error());
    return reinterpret_cast<std::uintptr_t>(*window);
  }

  HostResult<std::unique_ptr<CodePane>> ActivePane() override {
    auto pane = application_.Object(vb::kActiveCodePane);
    if (!pane) return std::unexpected(pane.error());
    return MakeCodePane(*std::move(pane));
  }

 private:
  HostObject application_;
  Boundary& boundary_;
};

}  // namespace

std::unique_ptr<HostApplication> MakeHostApplication(ComPtr<IDispatch> application,
                                                     Boundary& boundary) {
  return std::make_unique<VbApplication>(std::move(application), boundary);
}

HostResult<HWND> HostMainWindow(const ComPtr<IDispatch>& application) {
  return MainWindowOf(HostObject(application));
}

}  // namespace declarium::com
