// What a test answers to the dialogs and modal forms that a program opens, and what was asked.
//
// Answers are taken in the order in which they were given. A dialog without an answer, or whose
// answer is for another kind of dialog, throws std::logic_error, so that a test cannot miss it. An
// action given with an answer runs while that dialog is open, before it is answered.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "toolkit/color.h"
#include "toolkit/dialogs.h"

namespace declarium {

class Form;

namespace headless {

struct TextQuestion {
  std::u16string prompt;
  std::u16string initial_text;
  bool operator==(const TextQuestion&) const = default;
};

struct OpenQuestion {
  FileDialog dialog;
  bool operator==(const OpenQuestion&) const = default;
};

struct SaveQuestion {
  FileDialog dialog;
  bool operator==(const SaveQuestion&) const = default;
};

struct ColorQuestion {
  Color initial = 0;
  bool operator==(const ColorQuestion&) const = default;
};

struct ModalForm {
  std::string name;
  bool operator==(const ModalForm&) const = default;
};

using Asked =
    std::variant<Message, TextQuestion, OpenQuestion, SaveQuestion, ColorQuestion, ModalForm>;

class DialogScript {
 public:
  using Action = std::function<void()>;

  void AnswerMessage(Answer answer, Action during = nullptr);
  void AnswerText(std::u16string_view text, Action during = nullptr);  // empty: cancelled
  // For the open and for the save dialog; nullopt: cancelled.
  void AnswerFile(std::optional<std::u16string> path, Action during = nullptr);
  void AnswerColor(std::optional<Color> color, Action during = nullptr);
  // What the user does in the modal form of this name. It must leave the form hidden or unloaded.
  void InForm(std::string_view name, std::function<void(Form&)> action);

  // Everything asked so far, in order.
  [[nodiscard]] const std::vector<Asked>& AskedSoFar() const { return asked_; }
  // The texts of the message boxes shown so far, in order.
  [[nodiscard]] std::vector<std::u16string> MessageTexts() const;
  // The last message box shown. Throws std::logic_error when there was none.
  [[nodiscard]] const Message& LastMessage() const;
  void ForgetAsked() { asked_.clear(); }
  // Answers that no dialog has taken yet.
  [[nodiscard]] std::size_t Remaining() const { return answers_.size(); }

  // The backend's side: records the question, runs the action, gives the answer.
  Answer Ask(const Message& message);
  std::u16string Ask(const TextQuestion& question);
  std::optional<std::u16string> Ask(const OpenQuestion& question);
  std::optional<std::u16string> Ask(const SaveQuestion& question);
  std::optional<Color> Ask(const ColorQuestion& question);
  void Ask(const ModalForm& question, Form& form);

 private:
  struct FileAnswer {
    std::optional<std::u16string> path;
  };
  struct ColorAnswer {
    std::optional<Color> color;
  };
  struct FormAnswer {
    std::string name;
    std::function<void(Form&)> action;
  };
  using Reply = std::variant<Answer, std::u16string, FileAnswer, ColorAnswer, FormAnswer>;
  struct Step {
    Reply reply;
    Action during;
  };

  template <class T>
  T Take(Asked question, std::string_view what);

  std::deque<Step> answers_;
  std::vector<Asked> asked_;
};

}  // namespace headless
}  // namespace declarium
