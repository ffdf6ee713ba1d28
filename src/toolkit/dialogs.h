// What the ready-made dialogs are asked with and answer. The numbers of messages are the host
// language's.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

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

// What a message box stands in front of.
enum class MessagePlace {
  kActiveForm,    // and no form takes input while it is open
  kOtherProgram,  // a window of another program, or everything; the forms go on working
};

// A message box, for who places it or may have to end it before the user answers.
class OpenMessage {
 public:
  OpenMessage() = default;
  // In front of `window` of another program, which takes no input meanwhile; 0: of everything.
  explicit OpenMessage(std::uintptr_t window)
      : place_(MessagePlace::kOtherProgram), window_(window) {}
  OpenMessage(const OpenMessage&) = delete;
  OpenMessage& operator=(const OpenMessage&) = delete;

  // Answers in the user's place: the box leaves the screen at once, and ShowMessage returns the
  // answer when the events that are being handled meanwhile are over. Nothing when it is not open.
  void End(Answer answer) {
    if (end_) end_(answer);
  }

  [[nodiscard]] MessagePlace Place() const noexcept { return place_; }
  [[nodiscard]] std::uintptr_t Window() const noexcept { return window_; }

  // The backend's side: while the box is on the screen, and what ends it.
  class Shown {
   public:
    Shown(OpenMessage& box, std::function<void(Answer)> end) : box_(box) {
      box_.end_ = std::move(end);
    }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;
    ~Shown() { box_.end_ = nullptr; }

   private:
    OpenMessage& box_;
  };

 private:
  MessagePlace place_ = MessagePlace::kActiveForm;
  std::uintptr_t window_ = 0;
  std::function<void(Answer)> end_;
};

struct FileDialog {
  std::u16string filter = {};             // "Text files|*.txt|Modules|*.bas;*.cls"
  std::u16string initial_folder = {};     // empty: the system's choice
  std::u16string file_name = {};          // what the name field holds at first, may be a full path
  std::u16string default_extension = {};  // added by the save dialog to a name without one, no dot
  bool operator==(const FileDialog&) const = default;
};

}  // namespace declarium
