#include "audit/line_edits.h"

#include <algorithm>

#include "text/text.h"

namespace declarium::audit {
namespace {

constexpr std::u16string_view kBlanks = u" \t";

std::u16string_view WithoutIndent(std::u16string_view line) {
  return line.substr(std::min(line.find_first_not_of(kBlanks), line.size()));
}

// What is known of each line of a module; lines count from 1.
class LineMarks {
 public:
  LineMarks(const ModuleLines& lines, const std::vector<RemovedLines>& removed,
            const std::vector<RemovedLines>& declared)
      : lines_(lines), goes_(lines.Count() + 2), is_declared_(lines.Count() + 2) {
    for (const auto& [first, last] : declared) Mark(is_declared_, first, last);
    for (const auto& [first, last] : removed) Mark(goes_, first, last);
    first_declared_ = declared.empty() ? lines.Count() + 1 : declared.front().first;
    for (const auto& [first, last] : removed) MarkComments(first, last);
    MarkEmptyLines();
  }

  [[nodiscard]] std::vector<LineEdit> Edits(std::size_t module) const {
    std::vector<LineEdit> edits;
    for (std::uint32_t line = 1; line <= lines_.Count(); ++line) {
      if (!goes_[line]) continue;
      if (edits.empty() || edits.back().line + edits.back().count != line) {
        edits.push_back({module, line, 1});
      } else {
        ++edits.back().count;
      }
    }
    return edits;
  }

 private:
  static void Mark(std::vector<bool>& marks, std::uint32_t first, std::uint32_t last) {
    for (auto line = first; line <= last && line < marks.size(); ++line) marks[line] = true;
  }

  void MarkComments(std::uint32_t first, std::uint32_t last) {
    auto top = first;
    while (top > 1 && lines_.IsComment(top - 1) && !is_declared_[top - 1]) --top;
    const bool has_one = top < first;
    // The first comment of a module may be about the module.
    if (!has_one || top <= first_declared_) return;
    if (!lines_.IsBlank(top - 1) && !is_declared_[top - 1]) return;
    for (auto line = last + 1; line <= lines_.Count() && is_declared_[line]; ++line)
      if (!goes_[line]) return;
    Mark(goes_, top, first - 1);
  }

  // An empty line above what goes and one below would meet.
  void MarkEmptyLines() {
    for (std::uint32_t line = 2; line < lines_.Count(); ++line) {
      if (!goes_[line] || goes_[line - 1]) continue;
      auto behind = line;
      while (goes_[behind]) ++behind;
      const bool meet =
          lines_.IsBlank(line - 1) && behind <= lines_.Count() && lines_.IsBlank(behind);
      if (meet) goes_[behind] = true;
    }
  }

  const ModuleLines& lines_;
  std::vector<bool> goes_;
  std::vector<bool> is_declared_;
  std::uint32_t first_declared_ = 0;
};

}  // namespace

ModuleLines::ModuleLines(std::u16string_view text) : text_(text) {
  for (std::size_t at = 0; at < text.size();) {
    starts_.push_back(at);
    while (at < text.size() && text[at] != u'\n' && text[at] != u'\r') ++at;
    at += text.substr(at).starts_with(kCrLf) ? 2 : 1;
  }
}

std::size_t ModuleLines::Start(std::uint32_t line) const {
  return line <= starts_.size() ? starts_[line - 1] : text_.size();
}

std::u16string_view ModuleLines::At(std::uint32_t line) const {
  const auto start = Start(line);
  const auto whole = text_.substr(start, Start(line + 1) - start);
  return whole.substr(0, whole.find_first_of(u"\r\n"));
}

std::u16string_view ModuleLines::EndOf(std::uint32_t line) const {
  const auto start = Start(line) + At(line).size();
  return text_.substr(start, Start(line + 1) - start);
}

bool ModuleLines::IsBlank(std::uint32_t line) const {
  return WithoutIndent(At(line)).empty();
}

bool ModuleLines::IsComment(std::uint32_t line) const {
  const auto text = WithoutIndent(At(line));
  if (text.starts_with(u'\'')) return true;
  const bool is_rem = text.size() >= 3 && EqualIgnoringCase(text.substr(0, 3), u"rem");
  return is_rem && (text.size() == 3 || kBlanks.find(text[3]) != kBlanks.npos);
}

std::vector<LineEdit> EditsToRemove(std::size_t module, const ModuleLines& lines,
                                    const std::vector<RemovedLines>& removed,
                                    const std::vector<RemovedLines>& declared) {
  return LineMarks(lines, removed, declared).Edits(module);
}

std::vector<Edit> TextEdits(const ModuleLines& lines, const std::vector<LineEdit>& edits) {
  std::vector<Edit> text_edits;
  for (const auto& edit : edits) {
    const auto begin = lines.Start(edit.line);
    const auto last = edit.line + edit.count - 1;
    const auto end = lines.Start(last + 1);
    auto text = edit.text.value_or(std::u16string());
    if (edit.text) text += lines.EndOf(last);
    text_edits.push_back({begin, end - begin, std::move(text)});
  }
  return text_edits;
}

}  // namespace declarium::audit
