#include "host/insertion.h"

#include <algorithm>

#include "host/failure_text.h"
#include "text/text.h"
#include "text/user_texts.h"

namespace declarium {
namespace {

bool IsCountOfLines(int count) {
  return count >= 0 && count <= kMostModuleLines;
}

bool IsLine(int line) {
  return line >= 1 && line <= kMostModuleLines;
}

std::u16string_view WhatFailed(InsertionStep step) {
  switch (step) {
    case InsertionStep::kName:
      return texts::kNoModuleName;
    case InsertionStep::kDeclarations:
      return texts::kNoDeclarationLines;
    case InsertionStep::kText:
      break;
  }
  return texts::kTextRefused;
}

// The count of lines that the host gave, when it can be one.
HostResult<int> CountOfDeclarationLines(CodeModule& module) {
  auto lines = module.CountOfDeclarationLines();
  if (lines && !IsCountOfLines(*lines)) return std::unexpected(HostError{kWrongAnswer});
  return lines;
}

HostResult<std::u16string> NameOf(CodeModule& module, ModuleNaming naming) {
  auto name = module.ComponentName();
  if (!name || naming == ModuleNaming::kComponent) return name;
  const auto component = module.Owner();
  if (!component) return name;
  const auto project = (*component)->Project();
  if (!project || !*project) return name;
  auto qualified = (*project)->Name();
  if (!qualified || qualified->empty()) return name;
  return qualified->append(u".").append(*name);
}

}  // namespace

std::expected<Insertion, InsertionFailure> InsertIntoActiveModule(
    const std::function<std::shared_ptr<CodeModule>()>& module, ModuleNaming naming,
    const std::function<bool(std::u16string_view question)>& ask,
    const std::function<std::u16string()>& text) {
  auto active = module();
  if (!active) return Insertion::kNoModule;
  const auto name = NameOf(*active, naming);
  if (!name) return std::unexpected(InsertionFailure{InsertionStep::kName, u"", name.error()});
  // The host that disconnects during the question wants its module back at once.
  active.reset();
  std::u16string question(texts::kAskInsertBefore);
  question.append(*name).append(texts::kAskInsertBehind);
  if (!ask(question)) return Insertion::kDeclined;
  active = module();
  if (!active) return Insertion::kDeclined;
  const auto lines = CountOfDeclarationLines(*active);
  if (!lines) {
    return std::unexpected(InsertionFailure{InsertionStep::kDeclarations, *name, lines.error()});
  }
  const auto inserted = active->InsertLines(*lines + 1, text());
  if (!inserted) {
    return std::unexpected(InsertionFailure{InsertionStep::kText, *name, inserted.error()});
  }
  return Insertion::kInserted;
}

std::u16string InsertionFailureText(const InsertionFailure& failure) {
  std::u16string text(texts::kNotInserted);
  if (!failure.module.empty()) {
    text.append(texts::kNotInsertedInto).append(failure.module).append(u"'");
  }
  text.append(u".").append(kCrLf).append(WhatFailed(failure.step)).append(u" ");
  text.append(ReasonText(failure.error)).append(kCrLf).append(kCrLf);
  return text.append(texts::kBasketStays);
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
  if (!IsLine(*caret) || !IsLine(*top) || !IsCountOfLines(*visible_lines)) return;
  const int wanted = TopLineForCaret(*top, *visible_lines, *caret);
  if (wanted == *top) return;
  [[maybe_unused]] const auto scrolled = (*pane)->SetTopLine(wanted);
}

}  // namespace declarium
