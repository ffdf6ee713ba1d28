#include "library/ui/history_dialog.h"

#include <array>
#include <charconv>
#include <chrono>
#include <ctime>
#include <memory>
#include <vector>

#include "library/file_format.h"
#include "library/library_difference.h"
#include "library/ui/file_messages.h"
#include "text/text.h"
#include "text/user_texts.h"
#include "toolkit/captioned.h"
#include "toolkit/row_list.h"

namespace declarium {
namespace {

constexpr ControlDefinition kControls[] = {
    {.kind = ControlKind::kLabel,
     .name = "Label1",
     .caption = texts::kHistoryLabel,
     .bounds = {8, 8, 484, 17}},
    {.kind = ControlKind::kListBox, .name = "lstVersions", .bounds = {8, 28, 484, 220}},
    {.kind = ControlKind::kCommandButton,
     .name = "Command1",
     .caption = texts::kHistoryOpen,
     .bounds = {332, 256, 76, 26},
     .role = ButtonRole::kDefault},
    {.kind = ControlKind::kCommandButton,
     .name = "Command2",
     .caption = texts::kCancel,
     .bounds = {416, 256, 76, 26},
     .role = ButtonRole::kCancel},
};

constexpr FormDefinition kDefinition = {.name = "frmHistory",
                                        .caption = texts::kHistoryCaption,
                                        .size = {500, 290},
                                        .help_topic = "files",
                                        .controls = kControls};

// The user's own time of "20261122T031500Z".
std::u16string TimeText(const std::string& written) {
  const auto number = [&](std::size_t at, std::size_t size) {
    int value = 0;
    std::from_chars(written.data() + at, written.data() + at + size, value);
    return value;
  };
  using namespace std::chrono;
  const sys_days day(year(number(0, 4)) / number(4, 2) / number(6, 2));
  const auto time = day + hours(number(9, 2)) + minutes(number(11, 2)) + seconds(number(13, 2));
  const std::time_t moment = system_clock::to_time_t(time);
  std::array<char, 40> text{};
  std::strftime(text.data(), text.size(), "%d.%m.%Y %H:%M:%S", std::localtime(&moment));
  return FromUtf8(text.data());
}

std::u16string_view ReasonText(VersionReason reason) {
  switch (reason) {
    case VersionReason::kUnwritten:
      return texts::kHistoryUnwritten;
    case VersionReason::kUnfinished:
      return texts::kHistoryUnfinished;
    case VersionReason::kReplaced:
      break;
  }
  return texts::kHistoryReplaced;
}

std::u16string DifferenceText(const Library& library, std::string_view bytes) {
  const auto version = ParseLibrary(bytes, library.path);
  if (!version) return std::u16string(texts::kHistoryNoLibrary);
  const auto difference = DifferenceBetween(library, *version);
  if (difference == LibraryDifference{}) return std::u16string(texts::kHistoryEqual);
  return std::u16string(texts::kHistoryAdded) + CountText(difference.added) +
         std::u16string(texts::kHistoryRemoved) + CountText(difference.removed) +
         std::u16string(texts::kHistoryChanged) + CountText(difference.changed);
}

std::u16string RowText(const Version& version, std::string_view bytes, const Library& library) {
  return TimeText(version.written) + u"   " + CountText(version.bytes) +
         std::u16string(texts::kHistoryBytes) + u"   " +
         std::u16string(ReasonText(version.reason)) + u"   " + DifferenceText(library, bytes);
}

class HistoryDialog {
 public:
  HistoryDialog(Toolkit& toolkit, const History& history, const Library& library)
      : form_(toolkit.CreateForm(kDefinition)), list_(form_->Get<ListBox>("lstVersions")) {
    const HourglassPointer hourglass(toolkit);
    for (const auto& version : history.Versions(library.path)) {
      auto bytes = history.Read(version);
      if (!bytes) continue;
      list_.AddRow(RowText(version, *bytes, library));
      versions_.push_back(version);
    }
    if (!versions_.empty()) list_.SetListIndex(0);
    list_.on_double_click = [this] { Command1_Click(); };
    form_->Get<CommandButton>("Command1").on_click = [this] { Command1_Click(); };
    form_->Get<CommandButton>("Command2").on_click = [this] { form_->Unload(); };
  }

  [[nodiscard]] bool IsEmpty() const { return versions_.empty(); }

  // The version chosen.
  [[nodiscard]] std::optional<Version> Show(Form& owner) {
    form_->Show(ShowMode::kModal, &owner);
    return chosen_;
  }

 private:
  void Command1_Click() {
    const auto row = list_.ListIndex();
    if (row < 0) return;
    chosen_ = versions_[static_cast<std::size_t>(row)];
    form_->Unload();
  }

  std::unique_ptr<Form> form_;
  ListBox& list_;
  std::vector<Version> versions_;
  std::optional<Version> chosen_;
};

}  // namespace

const FormDefinition& HistoryFormDefinition() {
  return kDefinition;
}

std::optional<std::string> AskForVersion(Toolkit& toolkit, Form& owner, const History& history,
                                         const Library& library) {
  HistoryDialog dialog(toolkit, history, library);
  if (dialog.IsEmpty()) {
    toolkit.ShowMessage(
        {std::u16string(texts::kHistoryNone), MessageButtons::kOk, MessageIcon::kInformation});
    return std::nullopt;
  }
  const auto version = dialog.Show(owner);
  if (!version) return std::nullopt;
  auto bytes = history.Read(*version);
  if (!bytes) {
    toolkit.ShowMessage(
        {std::u16string(texts::kReadError), MessageButtons::kOk, MessageIcon::kCritical});
    return std::nullopt;
  }
  return *std::move(bytes);
}

}  // namespace declarium
