// Inserting source text into the host's active code module.
#pragma once

#include <expected>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "host/host_object_model.h"

namespace declarium {

enum class Insertion {
  kNoModule,  // there is no active code module
  kDeclined,  // the question was not answered with Yes
  kInserted,
};

// The call that failed.
enum class InsertionStep { kName, kDeclarations, kText };

struct InsertionFailure {
  InsertionStep step;
  std::u16string module;  // its name as it was asked with, "" when that is what failed
  HostError error;
};

// No module of the host has more lines.
inline constexpr int kMostModuleLines = 65534;

// Whether a question names the project too: "Project1.Module1".
enum class ModuleNaming { kComponent, kProjectAndComponent };

// Asks "Vložiť do 'NAME' ?" and on Yes inserts the text after the module's declarations section. A
// project whose name the host does not say is left out of NAME.
// `module` gives the module, null when there is none; it is asked again after the question, during
// which the host may take its module back: that ends the insertion as No does. `ask` shows a Yes/No
// question and returns whether the answer was Yes; `text` is called only when the text is needed. A
// failing call ends the insertion, and so does a count of lines that cannot be.
[[nodiscard]] std::expected<Insertion, InsertionFailure> InsertIntoActiveModule(
    const std::function<std::shared_ptr<CodeModule>()>& module, ModuleNaming naming,
    const std::function<bool(std::u16string_view question)>& ask,
    const std::function<std::u16string()>& text);

// What was not inserted and why, for the user.
[[nodiscard]] std::u16string InsertionFailureText(const InsertionFailure& failure);

// Scrolls the active code pane, when it shows `module`, just so far that the line with
// the caret is in view. Failing calls, and lines that cannot be, leave the pane as it is.
void KeepCaretInView(HostApplication& application, CodeModule& module);

// The top line of a pane of `visible_lines` lines at `top` that has `caret` in view: `top` itself
// when it already has.
[[nodiscard]] int TopLineForCaret(int top, int visible_lines, int caret) noexcept;

}  // namespace declarium
