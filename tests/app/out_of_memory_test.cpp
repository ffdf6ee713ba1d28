// Memory that runs out at any moment: every allocation of a scenario fails in turn. The failure is
// stopped where a window procedure would stop it, the program goes on, the file is whole, and
// unsaved work is put aside.
#include <algorithm>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "app/main_window.h"
#include "app/window_fixture.h"
#include "library/file_format.h"
#include "library/file_name.h"
#include "library/file_system.h"
#include "library/history.h"
#include "shell/file_store.h"
#include "shell/ui/failure_report.h"
#include "support/temporary_folder.h"
#include "support/whole_library.h"
#include "toolkit/headless/toolkit.h"
#include "toolkit/headless/user.h"

namespace {

// How many allocations are still granted; -1: all.
long granted = -1;

void* Allocate(std::size_t size) {
  if (granted == 0) {
    granted = -1;  // a program that gives memory back has some again
    throw std::bad_alloc();
  }
  if (granted > 0) --granted;
  if (void* memory = std::malloc(std::max<std::size_t>(size, 1))) return memory;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) {
  return Allocate(size);
}
void* operator new[](std::size_t size) {
  return Allocate(size);
}
// std::stable_sort takes its buffer so; a sanitizer's own form would not fit the deletes below.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return Allocate(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace declarium {
namespace {

bool IsWholeFile(const std::filesystem::path& path) {
  return IsWholeContent(ContentOf(path));
}

// The program with a library open, in a folder of its own.
class Session {
 public:
  Session() : store_(folder_ / "settings") {
    folder_.Put("win.api", LibraryContent(u"Win", {{u"A", u"/1"}, {u"MAX_PATH", u"/260"}},
                                          {{u"GetWindow", u"+\"user32\" (r As RECT) As Long"}},
                                          {{u"RECT", u"!s As String * MAX_PATH"}}));
    folder_.Put("source.bas", "Const NEW_ONE = 1\r\nType SIZE\r\n  cx As Long\r\nEnd Type\r\n");
    window_.emplace(toolkit_, store_,
                    MainWindowOptions{.folder = folder_.path(),
                                      .command_line = File("win.api"),
                                      .host = {},
                                      .history = folder_ / "history"});
  }

  [[nodiscard]] std::filesystem::path File(const char* name) const { return folder_ / name; }
  [[nodiscard]] MainForm& Form() { return window_->Controls(); }
  [[nodiscard]] const Library& Open() const { return MainWindowProbe::LibraryOf(*window_); }
  [[nodiscard]] headless::HeadlessUser& User() { return user_; }

  // A library that was not opened with the window is opened by its menu.
  void ShowWithLibrary() {
    window_->ShowMainWindow();
    if (Form().mnuSave.Enabled()) return;
    Prepare("win.api");
    Choose("mnuOpen");
  }
  void Choose(const char* menu) { user_.ChooseMenu(*Form().frmMain, menu); }
  // What the file dialogs of the next command are given, and that all messages are answered so.
  void Prepare(const char* file, Answer answer = Answer::kNo) {
    toolkit_.Script() = {};
    if (file) toolkit_.Script().AnswerFile(NameOfPath(File(file)));
    toolkit_.Script().AnswerMessage(answer);
  }
  void InAddDialog(std::u16string text) {
    toolkit_.Script() = {};
    toolkit_.Script().InForm("frmAdd", [this, text = std::move(text)](declarium::Form& form) {
      form.Get<TextBox>("Text1").SetText(text);
      user_.Click(form.Get<CommandButton>("Command1"));
    });
  }

  // As the system calls the program. False when something failed.
  bool Enter(const std::function<void()>& action) { return toolkit_.boundary.Run(action); }

  // What was put aside after failures.
  [[nodiscard]] std::vector<std::string> Kept() const {
    History history(SystemFiles(), folder_ / "history");
    std::vector<std::string> kept;
    for (const auto& version : history.Versions(File("win.api"))) {
      if (version.reason == VersionReason::kUnwritten) kept.push_back(*history.Read(version));
    }
    return kept;
  }

 private:
  TemporaryFolder folder_;
  FileStore store_;
  headless::HeadlessToolkit toolkit_;
  headless::HeadlessUser user_{toolkit_};
  std::optional<MainWindow> window_;
  FailureReport report_{toolkit_, [this] { return window_ && window_->KeepUnsaved(); }};
};

struct Step {
  const char* name;
  void (*prepare)(Session&);
  void (*act)(Session&);
};

void Nothing(Session&) {}

constexpr Step kSteps[] = {
    {"open", Nothing, [](Session& s) { s.ShowWithLibrary(); }},
    {"import", [](Session& s) { s.Prepare("source.bas", Answer::kYes); },
     [](Session& s) { s.Choose("mnuImport"); }},
    {"add", [](Session& s) { s.InAddDialog(u"Const ADDED = 2"); },
     [](Session& s) { s.Choose("mnuAdd"); }},
    {"search", Nothing,
     [](Session& s) {
       s.Form().txtFind.SetText(u"e");
       s.User().PressKey(s.Form().txtFind, key::kEnter);
     }},
    {"basket", Nothing,
     [](Session& s) {
       s.User().ChooseRow(s.Form().cmbSelector, 1);
       s.User().ChooseRow(s.Form().lstDeclare, 0);
       s.User().ClickToolbar(s.Form().Toolbar1, "add");
     }},
    {"save", Nothing, [](Session& s) { s.Choose("mnuSave"); }},
    {"save as", [](Session& s) { s.Prepare("copy.api"); },
     [](Session& s) { s.Choose("mnuSaveAs"); }},
    {"export", [](Session& s) { s.Prepare("out.bas"); }, [](Session& s) { s.Choose("mnuExport"); }},
};

void Do(Session& session, const Step& step) {
  step.prepare(session);
  ASSERT_TRUE(session.Enter([&] { step.act(session); })) << step.name;
}

// Lets the allocation behind `allocations` others fail in the step; false when it had no so many.
bool FailIn(Session& session, const Step& step, long allocations) {
  step.prepare(session);
  const bool dirty = session.Open().dirty;
  granted = allocations;
  const bool passed = session.Enter([&] { step.act(session); });
  const bool failed = granted == -1;
  granted = -1;
  if (!failed) return false;
  // A library that could not be loaded to its end cannot be saved either.
  EXPECT_TRUE(IsWhole(session.Open()) || !session.Form().mnuSave.Enabled());
  const auto kept = session.Kept();
  EXPECT_TRUE(std::ranges::all_of(kept, [](const auto& bytes) { return IsWholeContent(bytes); }));
  const bool saved = ContentOf(session.File("win.api")) == LibraryBytes(session.Open());
  EXPECT_TRUE(!kept.empty() || !dirty || passed || saved);
  EXPECT_TRUE(IsWholeFile(session.File("win.api")));
  return true;
}

void ExpectTheWork(Session& session) {
  for (const char* file : {"win.api", "copy.api"}) {
    EXPECT_TRUE(IsWholeFile(session.File(file)));
    const auto bytes = ContentOf(session.File(file));
    for (const char* name : {"NEW_ONE", "SIZE", "ADDED", "MAX_PATH"}) {
      EXPECT_NE(bytes.find(name), bytes.npos) << file << " without " << name;
    }
  }
  EXPECT_NE(ContentOf(session.File("out.bas")).find("ADDED"), std::string::npos);
  EXPECT_EQ(session.Form().lstAdd.Count(), 1);
}

class OutOfMemory : public testing::TestWithParam<std::size_t> {};

TEST_P(OutOfMemory, AtAnyMomentOfAStepLosesNothingAndTheProgramGoesOn) {
  const Step& failing = kSteps[GetParam()];
  bool failed = true;
  for (long allocations = 0; failed && !HasFailure(); ++allocations) {
    SCOPED_TRACE(std::string(failing.name) + ", after " + std::to_string(allocations));
    Session session;
    for (std::size_t i = 0; i < GetParam(); ++i) Do(session, kSteps[i]);
    failed = FailIn(session, failing, allocations);
    // The user tries again.
    for (std::size_t i = GetParam(); i < std::size(kSteps); ++i) Do(session, kSteps[i]);
    ExpectTheWork(session);
  }
}

INSTANTIATE_TEST_SUITE_P(Steps, OutOfMemory, testing::Range<std::size_t>(0, std::size(kSteps)));

}  // namespace
}  // namespace declarium
