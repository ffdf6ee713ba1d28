// A host, its clipboard and the main window as plain objects that record what is asked of them and
// fail on demand.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/face_clipboard.h"
#include "host/host_object_model.h"
#include "host/main_window_link.h"
#include "text/text.h"
#include "vbhost/module_text.h"

namespace declarium {

// What happened, in order, and which entries fail.
struct Record {
  std::vector<std::string> entries;
  std::string failing;  // the entry that fails, "" for none
  std::function<void(const std::string& entry)> on_enter = nullptr;  // what the host does meanwhile
  // Entries from now on that still succeed; then one fails, or all when the host dies.
  std::optional<int> until_failure = std::nullopt;
  bool dies = false;
  HostError failure{-1};

  HostResult<> Enter(const std::string& entry) {
    entries.push_back(entry);
    if (const auto act = on_enter) act(entry);
    if (entry == failing) return std::unexpected(failure);
    if (until_failure && (*until_failure)-- <= 0) {
      if (!dies) until_failure = std::nullopt;
      return std::unexpected(failure);
    }
    return {};
  }
  [[nodiscard]] int Count(const std::string& entry) const {
    return static_cast<int>(std::ranges::count(entries, entry));
  }
};

struct FakeProjectState;

struct FakeModule {
  std::u16string name{};
  int declaration_lines = 0;
  std::optional<int> lines{};  // what is said instead of the number of lines
  std::vector<std::pair<int, std::u16string>> insertions{};
  std::optional<vb::ModuleKind> kind = vb::ModuleKind::kStandard;
  bool has_code = true;
  vbhost::ModuleText code{};
  std::weak_ptr<FakeProjectState> project{};
  int half_inserted = 0;  // lines that a failing InsertLines inserts all the same
  bool gone = false;
  std::function<void()> on_asked = nullptr;  // what the host does while it says which one it is
};

// A text as one module.
inline std::shared_ptr<FakeModule> ModuleOf(std::u16string name, std::u16string_view text) {
  auto module = std::make_shared<FakeModule>();
  module->name = std::move(name);
  module->code.Set(text);
  return module;
}

struct FakeProjectState {
  std::u16string name = u"Project1";
  std::vector<std::shared_ptr<FakeModule>> modules{};
  std::optional<int> count{};  // what is said instead of the number of components
};

class FakeCodeModule final : public CodeModule {
 public:
  FakeCodeModule(std::shared_ptr<FakeModule> state, Record& record)
      : state_(std::move(state)), record_(record) {}
  HostResult<std::u16string> ComponentName() override {
    if (state_->gone) return std::unexpected(HostError{-1});
    return state_->name;
  }
  HostResult<bool> IsSameAs(CodeModule& other) override {
    if (const auto act = std::exchange(state_->on_asked, nullptr)) act();
    if (state_->gone) return std::unexpected(HostError{-1});
    return state_ == static_cast<FakeCodeModule&>(other).state_;
  }
  [[nodiscard]] bool IsOf(const std::shared_ptr<FakeModule>& state) const {
    return state_ == state;
  }
  HostResult<int> CountOfDeclarationLines() override {
    if (auto entered = record_.Enter("CountOfDeclarationLines"); !entered) {
      return std::unexpected(entered.error());
    }
    return state_->declaration_lines;
  }
  HostResult<int> CountOfLines(BusyHost) override {
    if (auto entered = record_.Enter("CountOfLines"); !entered) {
      return std::unexpected(entered.error());
    }
    return state_->lines.value_or(state_->code.CountOfLines());
  }
  HostResult<std::u16string> Lines(int first, int count) override {
    if (auto entered = record_.Enter("Lines"); !entered) return std::unexpected(entered.error());
    std::u16string text;
    if (!state_->code.Lines(first, count, text)) return std::unexpected(HostError{-2});
    return text;
  }
  HostResult<> InsertLines(int line, std::u16string_view text) override {
    if (auto entered = record_.Enter("InsertLines"); !entered) {
      for (int i = 0; i < state_->half_inserted; ++i) (void)state_->code.InsertLines(line, u"half");
      return entered;
    }
    state_->insertions.emplace_back(line, text);
    return Outcome(state_->code.InsertLines(line, text));
  }
  HostResult<> DeleteLines(int first, int count) override {
    if (auto entered = record_.Enter("DeleteLines"); !entered) return entered;
    return Outcome(state_->code.DeleteLines(first, count));
  }
  HostResult<> ReplaceLine(int line, std::u16string_view text) override {
    if (auto entered = record_.Enter("ReplaceLine"); !entered) return entered;
    return Outcome(state_->code.DeleteLines(line, 1) && state_->code.InsertLines(line, text));
  }
  HostResult<std::unique_ptr<HostComponent>> Owner() override;

 private:
  static HostResult<> Outcome(bool done) {
    if (done) return {};
    return std::unexpected(HostError{-2});
  }

  std::shared_ptr<FakeModule> state_;
  Record& record_;
};

class FakeComponent final : public HostComponent {
 public:
  FakeComponent(std::shared_ptr<FakeModule> state, Record& record)
      : state_(std::move(state)), record_(record) {}
  HostResult<std::u16string> Name() override {
    if (auto entered = record_.Enter("Name"); !entered) return std::unexpected(entered.error());
    return state_->name;
  }
  HostResult<std::optional<vb::ModuleKind>> Kind() override {
    if (auto entered = record_.Enter("Type"); !entered) return std::unexpected(entered.error());
    return state_->kind;
  }
  HostResult<std::unique_ptr<CodeModule>> Module() override {
    if (auto entered = record_.Enter("CodeModule"); !entered) {
      return std::unexpected(entered.error());
    }
    if (!state_->has_code) return nullptr;
    return std::make_unique<FakeCodeModule>(state_, record_);
  }
  HostResult<std::unique_ptr<HostProject>> Project() override;
  bool IsSameAs(const HostComponent& other) const override {
    return state_ == static_cast<const FakeComponent&>(other).state_;
  }

 private:
  std::shared_ptr<FakeModule> state_;
  Record& record_;
};

inline HostResult<std::unique_ptr<HostComponent>> FakeCodeModule::Owner() {
  if (auto entered = record_.Enter("Parent"); !entered) return std::unexpected(entered.error());
  return std::make_unique<FakeComponent>(state_, record_);
}

class FakeProject final : public HostProject {
 public:
  FakeProject(std::shared_ptr<FakeProjectState> state, Record& record)
      : state_(std::move(state)), record_(record) {}
  HostResult<std::u16string> Name() override {
    if (auto entered = record_.Enter("Project.Name"); !entered) {
      return std::unexpected(entered.error());
    }
    return state_->name;
  }
  HostResult<int> CountOfComponents() override {
    if (auto entered = record_.Enter("Count"); !entered) return std::unexpected(entered.error());
    return state_->count.value_or(static_cast<int>(state_->modules.size()));
  }
  HostResult<std::unique_ptr<HostComponent>> Component(int position) override {
    if (auto entered = record_.Enter("Item"); !entered) return std::unexpected(entered.error());
    const auto index = static_cast<std::size_t>(position - 1);
    if (index >= state_->modules.size()) return std::unexpected(HostError{-2});
    return std::make_unique<FakeComponent>(state_->modules[index], record_);
  }

 private:
  std::shared_ptr<FakeProjectState> state_;
  Record& record_;
};

inline HostResult<std::unique_ptr<HostProject>> FakeComponent::Project() {
  if (auto entered = record_.Enter("Collection"); !entered) {
    return std::unexpected(entered.error());
  }
  const auto project = state_->project.lock();
  if (!project) return nullptr;
  return std::make_unique<FakeProject>(project, record_);
}

struct FakePaneState {
  std::shared_ptr<FakeModule> module;
  int top = 1;
  int visible_lines = 10;
  int caret = 1;
};

class FakeCodePane final : public CodePane {
 public:
  explicit FakeCodePane(std::shared_ptr<FakePaneState> state) : state_(std::move(state)) {}
  HostResult<bool> Shows(CodeModule& module) override {
    return static_cast<FakeCodeModule&>(module).IsOf(state_->module);
  }
  HostResult<int> CaretLine() override { return state_->caret; }
  HostResult<int> TopLine() override { return state_->top; }
  HostResult<int> CountOfVisibleLines() override { return state_->visible_lines; }
  HostResult<> SetTopLine(int line) override {
    state_->top = line;
    return {};
  }

 private:
  std::shared_ptr<FakePaneState> state_;
};

class FakeControl final : public CommandBarControl {
 public:
  FakeControl(std::string bar, Record& record) : bar_(std::move(bar)), record_(record) {}
  HostResult<> PasteFace() override { return record_.Enter(bar_ + ".PasteFace"); }
  HostResult<> SetCaption(std::u16string_view caption) override {
    return record_.Enter(bar_ + ".Caption " + ToUtf8(caption));
  }
  HostResult<> SetTooltipText(std::u16string_view text) override {
    return record_.Enter(bar_ + ".TooltipText " + ToUtf8(text));
  }
  HostResult<> Delete() override { return record_.Enter(bar_ + ".Delete"); }
  [[nodiscard]] const std::string& bar() const { return bar_; }

 private:
  std::string bar_;
  Record& record_;
};

class RecordedSubscription final : public Subscription {
 public:
  RecordedSubscription(std::string name, Record& record)
      : name_(std::move(name)), record_(record) {}
  RecordedSubscription(const RecordedSubscription&) = delete;
  RecordedSubscription& operator=(const RecordedSubscription&) = delete;
  ~RecordedSubscription() override { record_.entries.push_back("end of " + name_); }

 private:
  std::string name_;
  Record& record_;
};

// What tests set up and look at while a FakeApplication is owned by a connection.
struct FakeHostState {
  Record record;
  std::map<std::string, std::function<void()>> clicks;  // by bar
  std::weak_ptr<ComponentEvents> events;
  std::shared_ptr<FakeModule> selected;
  std::shared_ptr<FakePaneState> pane;
  std::shared_ptr<FakeProjectState> project;
  int projects = 1;

  // Opens a project of these modules and selects the first.
  void OpenProject(std::vector<std::shared_ptr<FakeModule>> modules) {
    project = std::make_shared<FakeProjectState>();
    for (const auto& module : modules) module->project = project;
    if (!modules.empty()) selected = modules.front();
    project->modules = std::move(modules);
  }
  std::uintptr_t main_window = 4711;
  bool selection_moved = false;  // once, without an event
  vb::Audience target = vb::Audience::kVb6;

  std::unique_ptr<CodeModule> Module(const std::shared_ptr<FakeModule>& module) {
    if (!module) return nullptr;
    return std::make_unique<FakeCodeModule>(module, record);
  }
};

class FakeApplication final : public HostApplication {
 public:
  explicit FakeApplication(FakeHostState& state) : state_(state) {}
  HostResult<std::unique_ptr<CommandBarControl>> AddControl(std::u16string_view bar) override {
    if (auto entered = state_.record.Enter(ToUtf8(bar) + ".Add"); !entered) {
      return std::unexpected(entered.error());
    }
    return std::make_unique<FakeControl>(ToUtf8(bar), state_.record);
  }
  HostResult<std::unique_ptr<Subscription>> SubscribeClick(CommandBarControl& control,
                                                           std::function<void()> clicked) override {
    const std::string& bar = static_cast<FakeControl&>(control).bar();
    if (auto entered = state_.record.Enter(bar + ".SubscribeClick"); !entered) {
      return std::unexpected(entered.error());
    }
    state_.clicks[bar] = std::move(clicked);
    return std::make_unique<RecordedSubscription>(bar + " clicks", state_.record);
  }
  HostResult<std::unique_ptr<Subscription>> SubscribeComponents(
      std::weak_ptr<ComponentEvents> events) override {
    if (auto entered = state_.record.Enter("SubscribeComponents"); !entered) {
      return std::unexpected(entered.error());
    }
    state_.events = std::move(events);
    return std::make_unique<RecordedSubscription>("component events", state_.record);
  }
  HostResult<std::unique_ptr<CodeModule>> ActiveModule() override {
    if (auto entered = state_.record.Enter("ActiveModule"); !entered) {
      return std::unexpected(entered.error());
    }
    return state_.Module(state_.selected);
  }
  bool HasMovedSelection() override { return std::exchange(state_.selection_moved, false); }
  vb::Audience Target() const noexcept override { return state_.target; }
  HostResult<std::unique_ptr<HostProject>> ActiveProject() override {
    if (auto entered = state_.record.Enter("ActiveProject"); !entered) {
      return std::unexpected(entered.error());
    }
    if (!state_.project) return nullptr;
    return std::make_unique<FakeProject>(state_.project, state_.record);
  }
  HostResult<int> CountOfProjects() override {
    if (auto entered = state_.record.Enter("CountOfProjects"); !entered) {
      return std::unexpected(entered.error());
    }
    return state_.projects;
  }
  HostResult<std::uintptr_t> MainWindow() override { return state_.main_window; }
  HostResult<std::unique_ptr<CodePane>> ActivePane() override {
    if (!state_.pane) return nullptr;
    return std::make_unique<FakeCodePane>(state_.pane);
  }

 private:
  FakeHostState& state_;
};

class FakeClipboard final : public FaceClipboard {
 public:
  explicit FakeClipboard(Record& record) : record_(record) {}
  HostResult<std::unique_ptr<KeptClipboard>> Save() override {
    if (auto entered = record_.Enter("Save"); !entered) return std::unexpected(entered.error());
    return std::make_unique<Kept>(*this);
  }
  HostResult<> PutPicture() override {
    contents = "the picture";
    return record_.Enter("PutPicture");
  }

  std::string contents = "the user's";

 private:
  class Kept final : public KeptClipboard {
   public:
    explicit Kept(FakeClipboard& clipboard)
        : clipboard_(clipboard), contents_(clipboard.contents) {}
    HostResult<> Restore() override {
      clipboard_.contents = contents_;
      return clipboard_.record_.Enter("Restore");
    }

   private:
    FakeClipboard& clipboard_;
    std::string contents_;
  };

  Record& record_;
};

class FakeWindows final : public MainWindowLink {
 public:
  explicit FakeWindows(Record& record) : record_(record) {}
  bool LoadMainWindow(HostConnection&) override { return record_.Enter("load").has_value(); }
  void ShowMainWindow(HostConnection&) override { Note("show"); }
  void ForgetConnection(HostConnection&, HostConnection* successor) override {
    Note(successor ? "handover" : "forget");
  }
  bool MayStay() override {
    Note("may stay");
    return may_stay;
  }
  void UnloadAll() override { Note("unload"); }
  void ActiveCodeModuleChanged(HostConnection&) override { Note("module changed"); }
  void ShowFailure(HostConnection&, std::u16string_view text) override {
    Note("box " + ToUtf8(text));
  }
  void CloseBoxes(HostConnection&) override { Note("boxes close"); }

  bool may_stay = false;

 private:
  void Note(const std::string& entry) { record_.entries.push_back(entry); }
  Record& record_;
};

}  // namespace declarium
