// What the ready-made dialogs are asked with and answer. The numbers of messages are the host
// language's.
#pragma once

#include <string>

namespace declarium {

enum class MessageButtons {
  kOk = 0,
  kOkCancel = 1,
  kAbortRetryIgnore = 2,
  kYesNoCancel = 3,
  kYesNo = 4,
  kRetryCancel = 5,
};

enum class MessageIcon {
  kNone = 0,
  kCritical = 16,
  kQuestion = 32,
  kExclamation = 48,
  kInformation = 64
};

enum class DefaultButton { kFirst = 0, kSecond = 256, kThird = 512 };

struct Message {
  std::u16string text = {};
  MessageButtons buttons = MessageButtons::kOk;
  MessageIcon icon = MessageIcon::kNone;
  DefaultButton default_button = DefaultButton::kFirst;
  bool operator==(const Message&) const = default;

  // The three choices as one number.
  [[nodiscard]] int Style() const {
    return static_cast<int>(buttons) + static_cast<int>(icon) + static_cast<int>(default_button);
  }
};

enum class Answer {
  kOk = 1,
  kCancel = 2,
  kAbort = 3,
  kRetry = 4,
  kIgnore = 5,
  kYes = 6,
  kNo = 7,
};

struct FileDialog {
  std::u16string filter = {};             // "Text files|*.txt|Modules|*.bas;*.cls"
  std::u16string initial_folder = {};     // empty: the system's choice
  std::u16string file_name = {};          // what the name field holds at first, may be a full path
  std::u16string default_extension = {};  // added by the save dialog to a name without one, no dot
  bool operator==(const FileDialog&) const = default;
};

}  // namespace declarium
