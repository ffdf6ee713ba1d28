#include "host/host_connection.h"

#include <array>
#include <exception>
#include <utility>

#include "host/failure_text.h"
#include "text/text.h"
#include "text/user_texts.h"
#include "vb/number.h"

namespace declarium {
namespace {

// The host's command bars: its standard toolbar and its Add-Ins menu.
constexpr std::u16string_view kStandardBar = u"Standard";
constexpr std::u16string_view kAddInsBar = u"Add-Ins";

// The index of the step that adds the second of the two controls.
constexpr std::size_t kLastControlStep = 4;

std::u16string FailureText(std::u16string_view beginning, int step) {
  std::u16string text(beginning);
  return text.append(NumberText(step)).append(texts::kHostErrorBehind);
}

// E_FAIL, for failures that are not the host's.
HostError OwnFailure() {
  return {static_cast<std::int32_t>(0x80004005)};
}

// A step that throws is a step that failed.
HostResult<> Do(const std::function<HostResult<>()>& step) {
  try {
    return step();
  } catch (const std::exception&) {
    return std::unexpected(OwnFailure());
  }
}

}  // namespace

HostConnection::HostConnection(std::unique_ptr<HostApplication> application,
                               FaceClipboard& clipboard, MainWindowLink& windows, Post post)
    : application_(std::move(application)),
      clipboard_(clipboard),
      windows_(windows),
      post_(std::move(post)),
      active_(std::make_shared<ActiveCodeModule>(
          application_, [this] { windows_.ActiveCodeModuleChanged(*this); })) {}

HostConnection::~HostConnection() {
  active_->Stop();
}

void HostConnection::Connect() {
  const auto done = RunConnectionSteps();
  if (done) return active_->Follow();
  const auto& [step, error] = done.error();
  // Nobody is left to read it, and its box would stand in the way of other hosts.
  if (IsHostGone(error)) return;
  std::u16string text = FailureText(texts::kConnectionErrorBefore, step);
  text.append(kCrLf).append(kCrLf);
  text.append(texts::kConnectionSteps[static_cast<std::size_t>(step) - 1]).append(u" ");
  text.append(ReasonText(error));
  FindMainWindow();
  windows_.ShowFailure(*this, text);
}

bool HostConnection::ConnectWithoutControls() {
  if (!windows_.LoadMainWindow(*this)) return false;
  active_->Follow();
  return true;
}

void HostConnection::FindMainWindow() {
  main_window_ = application_->MainWindow().value_or(0);
}

std::expected<void, HostConnection::StepFailure> HostConnection::RunConnectionSteps() {
  const std::array<std::function<HostResult<>()>, texts::kConnectionSteps.size()> steps = {
      [this]() -> HostResult<> {
        if (windows_.LoadMainWindow(*this)) return {};
        return std::unexpected(OwnFailure());
      },
      [this]() -> HostResult<> {
        if (auto saved = clipboard_.Save()) kept_ = std::move(*saved);
        return {};
      },
      [this] { return PutPicture(); },
      [this] { return AddButton(); },
      [this] { return AddMenuEntry(); },
      [this] { return BindClicks(); },
      [this] { return RestoreClipboard(); },
  };
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const auto done = Do(steps[i]);
    if (done) continue;
    GiveClipboardUp(i > kLastControlStep || IsHostGone(done.error()));
    return std::unexpected(StepFailure{static_cast<int>(i) + 1, done.error()});
  }
  return {};
}

HostResult<> HostConnection::PutPicture() {
  if (!kept_ || clipboard_.PutPicture()) return {};
  return RestoreClipboard();
}

void HostConnection::GiveClipboardUp(bool restore) {
  const auto kept = std::move(kept_);
  if (kept && restore) [[maybe_unused]]
    const auto restored = Do([&] { return kept->Restore(); });
}

HostResult<> HostConnection::RestoreClipboard() {
  const auto kept = std::move(kept_);
  return kept ? kept->Restore() : HostResult<>();
}

HostResult<> HostConnection::AddButton() {
  auto control = application_->AddControl(kStandardBar);
  if (!control) return std::unexpected(control.error());
  button_control_ = std::move(*control);
  // Hosts refuse faces at random; a button with its caption works as well.
  if (kept_) [[maybe_unused]]
    const auto pasted = button_control_->PasteFace();
  if (auto done = button_control_->SetCaption(texts::kHostButton); !done) return done;
  return button_control_->SetTooltipText(texts::kHostButton);
}

HostResult<> HostConnection::AddMenuEntry() {
  auto control = application_->AddControl(kAddInsBar);
  if (!control) return std::unexpected(control.error());
  menu_control_ = std::move(*control);
  if (kept_) [[maybe_unused]]
    const auto pasted = menu_control_->PasteFace();
  return menu_control_->SetCaption(texts::kHostMenuEntry);
}

HostResult<> HostConnection::BindClicks() {
  auto button = application_->SubscribeClick(*button_control_, [this] { ButtonClicked(); });
  if (!button) return std::unexpected(button.error());
  button_handler_ = std::move(*button);
  auto menu = application_->SubscribeClick(*menu_control_, [this] { MenuClicked(); });
  if (!menu) return std::unexpected(menu.error());
  menu_handler_ = std::move(*menu);
  return {};
}

void HostConnection::ShowMainWindowLater() {
  post_([weak = weak_from_this()] {
    if (const auto self = weak.lock()) self->ShowMainWindow();
  });
}

void HostConnection::ShowMainWindow() {
  active_->Refresh();
  if (application_) windows_.ShowMainWindow(*this);
}

bool HostConnection::Disconnect() {
  // One control that cannot be removed must not keep the other in the host's bars. The host may
  // die meanwhile, which abandons the connection.
  bool removed = true;
  for (const auto& control :
       {std::exchange(menu_control_, {}), std::exchange(button_control_, {})}) {
    if (!control) continue;
    const auto deleted = control->Delete();
    // What the host had is gone with it.
    if (!deleted && !IsHostGone(deleted.error())) removed = false;
  }
  if (!removed && application_) FindMainWindow();
  Abandon();
  if (!removed) windows_.ShowFailure(*this, FailureText(texts::kDisconnectionErrorBefore, 1));
  return removed;
}

void HostConnection::Abandon() {
  menu_handler_.reset();
  button_handler_.reset();
  menu_control_.reset();
  button_control_.reset();
  inserted_into_.reset();
  active_->Stop();
  application_.reset();
}

ModuleNaming HostConnection::Naming() const {
  // The host may disconnect the add-in from within the call.
  const auto application = application_;
  const bool several =
      other_hosts_ || (application && application->CountOfProjects().value_or(1) > 1);
  return several ? ModuleNaming::kProjectAndComponent : ModuleNaming::kComponent;
}

std::expected<Insertion, InsertionFailure> HostConnection::Insert(
    const std::function<bool(std::u16string_view question)>& ask,
    const std::function<std::u16string()>& text) {
  // The question lets the host in, which may make another module the active one or disconnect. The
  // member is the only reference, so that disconnecting takes it back.
  inserted_into_ = active_->Module();
  if (!inserted_into_) return Insertion::kNoModule;
  auto outcome = InsertIntoActiveModule([this] { return inserted_into_; }, Naming(), ask, text);
  const auto module = std::exchange(inserted_into_, nullptr);
  const auto application = application_;
  if (outcome && *outcome == Insertion::kInserted && module && application) {
    KeepCaretInView(*application, *module);
  }
  return outcome;
}

}  // namespace declarium
