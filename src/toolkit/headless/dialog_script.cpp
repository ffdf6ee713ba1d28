#include "toolkit/headless/dialog_script.h"

#include <stdexcept>
#include <utility>

#include "text/text.h"

namespace declarium::headless {

void DialogScript::AnswerMessage(Answer answer, Action during) {
  answers_.push_back({answer, std::move(during)});
}

void DialogScript::AnswerText(std::u16string_view text, Action during) {
  answers_.push_back({std::u16string(text), std::move(during)});
}

void DialogScript::AnswerFile(std::optional<std::u16string> path, Action during) {
  answers_.push_back({FileAnswer{std::move(path)}, std::move(during)});
}

void DialogScript::AnswerColor(std::optional<Color> color, Action during) {
  answers_.push_back({ColorAnswer{color}, std::move(during)});
}

void DialogScript::InForm(std::string_view name, std::function<void(Form&)> action) {
  answers_.push_back({FormAnswer{std::string(name), std::move(action)}, nullptr});
}

std::vector<std::u16string> DialogScript::MessageTexts() const {
  std::vector<std::u16string> texts;
  for (const Asked& asked : asked_) {
    if (const Message* message = std::get_if<Message>(&asked)) texts.push_back(message->text);
  }
  return texts;
}

const Message& DialogScript::LastMessage() const {
  for (auto asked = asked_.rbegin(); asked != asked_.rend(); ++asked) {
    if (const Message* message = std::get_if<Message>(&*asked)) return *message;
  }
  throw std::logic_error("no message box was shown");
}

template <class T>
T DialogScript::Take(Asked question, std::string_view what) {
  asked_.push_back(std::move(question));
  if (answers_.empty()) throw std::logic_error("no answer for " + std::string(what));
  Step step = std::move(answers_.front());
  answers_.pop_front();
  T* reply = std::get_if<T>(&step.reply);
  if (!reply) throw std::logic_error("the next answer is not for " + std::string(what));
  if (step.during) step.during();
  return std::move(*reply);
}

Answer DialogScript::Ask(const Message& message) {
  return Take<Answer>(message, "the message \"" + ToUtf8(message.text) + "\"");
}

std::u16string DialogScript::Ask(const TextQuestion& question) {
  return Take<std::u16string>(question, "the input box \"" + ToUtf8(question.prompt) + "\"");
}

std::optional<std::u16string> DialogScript::Ask(const OpenQuestion& question) {
  return Take<FileAnswer>(question, "the open dialog").path;
}

std::optional<std::u16string> DialogScript::Ask(const SaveQuestion& question) {
  return Take<FileAnswer>(question, "the save dialog").path;
}

std::optional<Color> DialogScript::Ask(const ColorQuestion& question) {
  return Take<ColorAnswer>(question, "the color dialog").color;
}

void DialogScript::Ask(const ModalForm& question, Form& form) {
  const FormAnswer answer = Take<FormAnswer>(question, "the modal form " + question.name);
  if (answer.name != question.name) {
    throw std::logic_error("the next answer is for the form " + answer.name + ", not for " +
                           question.name);
  }
  answer.action(form);
}

}  // namespace declarium::headless
