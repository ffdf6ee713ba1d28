#include "host/ui/reading_window.h"

#include <memory>
#include <optional>

#include "library/ui/file_messages.h"
#include "text/user_texts.h"
#include "toolkit/captioned.h"
#include "toolkit/held_flag.h"
#include "toolkit/progress_bar.h"
#include "toolkit/timer.h"

namespace declarium {
namespace {

constexpr ControlDefinition kReadingControls[] = {
    {.kind = ControlKind::kLabel,
     .name = "Label1",
     .caption = texts::kReadingModules,
     .bounds = {12, 12, 316, 17}},
    {.kind = ControlKind::kProgressBar,
     .name = "PB",
     .bounds = {12, 36, 316, 16},
     .accessible_name = texts::kReadingModules},
    {.kind = ControlKind::kCommandButton,
     .name = "Command1",
     .caption = texts::kCancel,
     .bounds = {252, 64, 76, 26},
     .role = ButtonRole::kCancel},
    {.kind = ControlKind::kTimer, .name = "Timer1", .enabled = false, .interval = 15},
};

constexpr FormDefinition kReadingForm = {.name = "frmReading",
                                         .caption = texts::kReadingCaption,
                                         .size = {340, 100},
                                         .help_topic = "insert-missing",
                                         .controls = kReadingControls};

// One turn between two looks at the events.
constexpr std::uint32_t kTurnTime = 100;  // milliseconds
constexpr int kTurnModules = 200;

class Reader {
 public:
  Reader(Toolkit& toolkit, ProjectReading& reading, const std::function<bool()>& goes_on)
      : toolkit_(toolkit), reading_(reading), goes_on_(goes_on) {}

  // Reads for one turn; the end, once it is reached.
  [[nodiscard]] std::optional<ReadingEnd> Turn() {
    const auto start = toolkit_.TickCount();
    for (int i = 0; i < kTurnModules && toolkit_.TickCount() - start < kTurnTime; ++i) {
      if (reading_.IsAtEnd()) return ReadingEnd::kWhole;
      // Each call may have let the host in, which may have disconnected.
      if (!goes_on_() || !reading_.ReadNext()) return ReadingEnd::kFailed;
    }
    return reading_.IsAtEnd() ? std::optional(ReadingEnd::kWhole) : std::nullopt;
  }

 private:
  Toolkit& toolkit_;
  ProjectReading& reading_;
  const std::function<bool()>& goes_on_;
};

class ReadingWindow {
 public:
  ReadingWindow(Toolkit& toolkit, Reader& reader, const ProjectReading& reading)
      : form_(toolkit.CreateForm(kReadingForm)),
        reader_(reader),
        reading_(reading),
        bar_(form_->Get<ProgressBar>("PB")),
        timer_(form_->Get<Timer>("Timer1")) {
    bar_.SetMaximum(reading.Count());
    ShowProgress();
    form_->Get<CommandButton>("Command1").on_click = [this] { form_->Unload(); };
    timer_.on_timer = [this] { Timer1_Timer(); };
    timer_.SetEnabled(true);
  }

  [[nodiscard]] ReadingEnd Run(Form& owner) {
    form_->Show(ShowMode::kModal, &owner);
    return end_;
  }

 private:
  void Timer1_Timer() {
    // A call of the turn before may be waiting for its answer.
    if (in_turn_) return;
    const HeldFlag in_turn(in_turn_);
    const auto end = reader_.Turn();
    if (!form_->IsLoaded()) return;
    ShowProgress();
    if (!end) return;
    end_ = *end;
    form_->Unload();
  }

  void ShowProgress() { bar_.SetValue(reading_.Position()); }

  std::unique_ptr<Form> form_;
  Reader& reader_;
  const ProjectReading& reading_;
  ProgressBar& bar_;
  Timer& timer_;
  bool in_turn_ = false;
  ReadingEnd end_ = ReadingEnd::kCancelled;
};

}  // namespace

const FormDefinition& ReadingFormDefinition() {
  return kReadingForm;
}

ReadingEnd ReadWithWindow(Toolkit& toolkit, Form& owner, ProjectReading& reading,
                          const std::function<bool()>& goes_on) {
  if (!reading.Begin()) return ReadingEnd::kFailed;
  Reader reader(toolkit, reading, goes_on);
  {
    const HourglassPointer hourglass(toolkit);
    if (const auto end = reader.Turn()) return *end;
  }
  return ReadingWindow(toolkit, reader, reading).Run(owner);
}

}  // namespace declarium
