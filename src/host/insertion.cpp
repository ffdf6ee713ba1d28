#include "host/insertion.h"

#include <algorithm>

#include "text/user_texts.h"

namespace declarium {

HostResult<Insertion> InsertIntoActiveModule(
    CodeModule* module, const std::function<bool(std::u16string_view question)>& ask,
    const std::function<std::u16string()>& text) {
  if (!module) return Insertion::kNoModule;
  const auto name = module->ComponentName();
  if (!name) return std::unexpected(name.error());
  std::u16string question(texts::kAskInsertBefore);
  question.append(*name).append(texts::kAskInsertBehind);
  if (!ask(question)) return Insertion::kDeclined;
  const auto declaration_lines = module->CountOfDeclarationLines();
  if (!declaration_lines) return std::unexpected(declaration_lines.error());
  const auto inserted = module->InsertLines(*declaration_lines + 1, text());
  if (!inserted) return std::unexpected(inserted.error());
  return Insertion::kInserted;
}

int TopLineForCaret(int top, int visible_lines, int caret) noexcept {
  const int page = std::max(visible_lines, 1);
  if (caret < top) return std::max(caret, 1);
  if (caret >= top + page) return caret - page + 1;
  return top;
}

void KeepCaretInView(HostApplication& application, CodeModule& module) {
  const auto pane = application.ActivePane();
  if (!pane || !*pane) return;
  if (!(*pane)->Shows(module).value_or(false)) return;
  const auto caret = (*pane)->CaretLine();
  const auto top = (*pane)->TopLine();
  const auto visible_lines = (*pane)->CountOfVisibleLines();
  if (!caret || !top || !visible_lines) return;
  const int wanted = TopLineForCaret(*top, *visible_lines, *caret);
  if (wanted == *top) return;
  [[maybe_unused]] const auto scrolled = (*pane)->SetTopLine(wanted);
}

}  // namespace declarium
