#include "plan/missing_branches.h"

#include <algorithm>

#include "text/text.h"

namespace declarium::plan {
namespace {

constexpr std::size_t kMostExpressions = 8;

}  // namespace

MissingBranches::MissingBranches(std::span<const vb::Condition* const> declared) {
  for (const auto* const condition : declared) {
    auto& parts = declared_.emplace_back();
    for (const auto& part : condition->parts) {
      const auto found =
          std::ranges::find_if(expressions_, [&part](const std::u16string& expression) {
            return EqualIgnoringCase(expression, part.expression);
          });
      const auto position = static_cast<std::size_t>(found - expressions_.begin());
      if (found == expressions_.end()) expressions_.emplace_back(part.expression);
      parts.push_back({position, part.is_true});
    }
  }
  if (expressions_.size() > kMostExpressions) declared_.assign(1, {});
}

bool MissingBranches::IsDeclared(std::size_t known, unsigned values) const {
  return std::ranges::any_of(declared_, [&](const auto& parts) {
    return std::ranges::all_of(parts, [&](const Part& part) {
      return part.expression < known &&
             ((values >> part.expression) & 1U) == (part.is_true ? 1 : 0);
    });
  });
}

bool MissingBranches::IsMissing(std::size_t known, unsigned values) const {
  if (IsDeclared(known, values)) return false;
  if (known >= expressions_.size()) return true;
  return IsMissing(known + 1, values) || IsMissing(known + 1, values | (1U << known));
}

std::u16string MissingBranches::Around(std::u16string_view text) const {
  std::u16string out;
  Write(0, 0, text, out);
  return out;
}

void MissingBranches::Write(std::size_t known, unsigned values, std::u16string_view text,
                            std::u16string& out) const {
  if (!IsMissing(known, values)) return;
  const auto end_line = [&out] {
    if (!out.empty()) out += kCrLf;
  };
  // Nothing that is still to be decided declares it.
  const bool is_decided = std::ranges::none_of(declared_, [&](const auto& parts) {
    return std::ranges::all_of(parts, [&](const Part& part) {
      return part.expression >= known ||
             ((values >> part.expression) & 1U) == (part.is_true ? 1 : 0);
    });
  });
  if (is_decided) {
    end_line();
    out += text;
    return;
  }
  end_line();
  out.append(u"#If ").append(expressions_[known]).append(u" Then");
  Write(known + 1, values | (1U << known), text, out);
  if (IsMissing(known + 1, values)) {
    end_line();
    out += u"#Else";
    Write(known + 1, values, text, out);
  }
  end_line();
  out += u"#End If";
}

}  // namespace declarium::plan
