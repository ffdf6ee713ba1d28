// Inserting source text into the host's active code module.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "host/host_object_model.h"

namespace declarium {

enum class Insertion {
  kNoModule,  // there is no active code module
  kDeclined,  // the question was not answered with Yes
  kInserted,
};

// Asks "Vložiť do 'NAME' ?" and on Yes inserts the text after the module's declarations section.
// `module` may be null. `ask` shows a Yes/No question and returns whether the answer was Yes;
// `text` is called only when the text is needed. A failing call ends the insertion with its error.
[[nodiscard]] HostResult<Insertion> InsertIntoActiveModule(
    CodeModule* module, const std::function<bool(std::u16string_view question)>& ask,
    const std::function<std::u16string()>& text);

// Scrolls the active code pane, when it shows `module`, just so far that the line with
// the caret is in view. Failing calls leave the pane as it is.
void KeepCaretInView(HostApplication& application, CodeModule& module);

// The top line of a pane of `visible_lines` lines at `top` that has `caret` in view: `top` itself
// when it already has.
[[nodiscard]] int TopLineForCaret(int top, int visible_lines, int caret) noexcept;

}  // namespace declarium
