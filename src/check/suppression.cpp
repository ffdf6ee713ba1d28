#include "check/suppression.h"

#include <algorithm>
#include <optional>

#include "text/scan.h"
#include "text/text.h"
#include "vb/token.h"

namespace declarium::check {
namespace {

constexpr std::u16string_view kWord = u"nocheck";

// The text behind the mark of a comment that is one; nothing else.
std::optional<std::u16string_view> BehindMark(std::u16string_view comment) {
  if (comment.starts_with(u'\'')) {
    comment.remove_prefix(1);
  } else {
    comment.remove_prefix(std::min<std::size_t>(3, comment.size()));  // Rem
  }
  comment = Trim(comment);
  if (!EqualIgnoringCase(comment.substr(0, kWord.size()), kWord)) return std::nullopt;
  comment.remove_prefix(kWord.size());
  const bool ends = comment.empty() || comment.front() == u' ' || comment.front() == u':';
  return ends ? std::optional(comment) : std::nullopt;
}

// The rules named; words that are no rule are the reason.
std::vector<RuleId> RulesIn(std::u16string_view text) {
  std::vector<RuleId> rules;
  const auto words = Replace(text, u",", u" ");
  for (const auto word : Split(words, u' ')) {
    if (const auto* const rule = FindRule(word)) rules.push_back(rule->id);
  }
  return rules;
}

}  // namespace

Suppressions::Suppressions(std::u16string_view text) {
  // Most modules have none, and then nothing is cut into tokens.
  if (FindIgnoringCase(text, kWord) == text.npos) return;
  vb::Tokenizer tokens(text);
  std::uint32_t code_line = 0;
  for (auto token = tokens.NextSignificant(); token.kind != vb::TokenKind::kEnd;
       token = tokens.NextSignificant()) {
    if (token.kind != vb::TokenKind::kComment) {
      if (token.kind != vb::TokenKind::kLineEnd) code_line = token.place.line;
      continue;
    }
    if (const auto rest = BehindMark(token.text))
      marks_[token.place.line] = {RulesIn(*rest), code_line != token.place.line};
  }
}

bool Suppressions::Cover(const Finding& finding) const {
  if (marks_.empty()) return false;
  return Covers(finding.place.line, finding.rule) || Covers(finding.statement_line, finding.rule) ||
         Covers(finding.statement_end, finding.rule) ||
         CoversFromAbove(finding.place.line, finding.rule) ||
         CoversFromAbove(finding.statement_line, finding.rule);
}

bool Suppressions::Covers(std::uint32_t line, RuleId rule) const {
  const auto found = marks_.find(line);
  if (found == marks_.end()) return false;
  const auto& rules = found->second.rules;
  return rules.empty() || std::ranges::find(rules, rule) != rules.end();
}

bool Suppressions::CoversFromAbove(std::uint32_t line, RuleId rule) const {
  const auto found = marks_.find(line - 1);
  return found != marks_.end() && found->second.is_alone && Covers(line - 1, rule);
}

}  // namespace declarium::check
