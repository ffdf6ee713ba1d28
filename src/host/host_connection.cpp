#include "host/host_connection.h"

#include <array>
#include <exception>
#include <utility>

#include "text/user_texts.h"
#include "vb/number.h"

namespace declarium {
namespace {

// The host's command bars: its standard toolbar and its Add-Ins menu.
constexpr std::u16string_view kStandardBar = u"Standard";
constexpr std::u16string_view kAddInsBar = u"Add-Ins";

std::u16string FailureText(std::u16string_view beginning, int step) {
  std::u16string text(beginning);
  return text.append(NumberText(step)).append(texts::kHostErrorBehind);
}

// E_FAIL, for failures that are not the host's.
constexpr HostError kOwnFailure{static_cast<std::int32_t>(0x80004005)};

// A step that throws is a step that failed.
bool Succeeds(const std::function<HostResult<>()>& step) {
  try {
    return step().has_value();
  } catch (const std::exception&) {
    return false;
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
  if (const int step = RunConnectionSteps()) {
    windows_.ShowFailure(FailureText(texts::kConnectionErrorBefore, step));
    return;
  }
  active_->Follow();
}

int HostConnection::RunConnectionSteps() {
  std::unique_ptr<KeptClipboard> kept;
  const std::array<std::function<HostResult<>()>, 7> steps = {
      [this]() -> HostResult<> {
        if (windows_.LoadMainWindow(*this)) return {};
        return std::unexpected(kOwnFailure);
      },
      [this, &kept]() -> HostResult<> {
        auto saved = clipboard_.Save();
        if (!saved) return std::unexpected(saved.error());
        kept = std::move(*saved);
        return {};
      },
      [this] { return clipboard_.PutPicture(); },
      [this] { return AddButton(); },
      [this] { return AddMenuEntry(); },
      [this] { return BindClicks(); },
      [&kept] { return kept->Restore(); },
  };
  for (std::size_t i = 0; i < steps.size(); ++i) {
    if (!Succeeds(steps[i])) return static_cast<int>(i) + 1;
  }
  return 0;
}

HostResult<> HostConnection::AddButton() {
  auto control = application_->AddControl(kStandardBar);
  if (!control) return std::unexpected(control.error());
  button_control_ = std::move(*control);
  // Hosts refuse faces at random; a button with its caption works as well.
  [[maybe_unused]] const auto pasted = button_control_->PasteFace();
  if (auto done = button_control_->SetCaption(texts::kHostButton); !done) return done;
  return button_control_->SetTooltipText(texts::kHostButton);
}

HostResult<> HostConnection::AddMenuEntry() {
  auto control = application_->AddControl(kAddInsBar);
  if (!control) return std::unexpected(control.error());
  menu_control_ = std::move(*control);
  [[maybe_unused]] const auto pasted = menu_control_->PasteFace();
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

void HostConnection::ButtonClicked() {
  // The host waits until the handler returns, so the window is shown afterwards.
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
    if (control && !control->Delete()) removed = false;
  }
  Abandon();
  if (!removed) windows_.ShowFailure(FailureText(texts::kDisconnectionErrorBefore, 1));
  return removed;
}

void HostConnection::Abandon() {
  menu_handler_.reset();
  button_handler_.reset();
  menu_control_.reset();
  button_control_.reset();
  active_->Stop();
  application_.reset();
}

HostResult<Insertion> HostConnection::Insert(
    const std::function<bool(std::u16string_view question)>& ask,
    const std::function<std::u16string()>& text) {
  // The question lets the host in, which may make another module the active one or disconnect.
  const auto module = active_->Module();
  const auto application = application_;
  auto outcome = InsertIntoActiveModule(module.get(), ask, text);
  if (outcome && *outcome == Insertion::kInserted) KeepCaretInView(*application, *module);
  return outcome;
}

}  // namespace declarium
