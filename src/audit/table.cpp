#include "audit/table.h"

#include <algorithm>

namespace declarium::audit {
namespace {

Sort SortOf(const vb::Declaration& declaration) {
  if (declaration.As<vb::External>() != nullptr) return Sort::kDeclare;
  if (declaration.As<vb::Record>() != nullptr) return Sort::kType;
  if (declaration.As<vb::Enumeration>() != nullptr) return Sort::kEnum;
  return Sort::kConst;
}

}  // namespace

std::string_view SortText(Sort sort) {
  constexpr std::string_view kTexts[] = {"const", "declare", "type", "enum"};
  return kTexts[static_cast<std::size_t>(sort)];
}

std::vector<Row> TableOf(const Subject& subject) {
  std::vector<Row> rows;
  for (std::size_t i = 0; i < subject.modules.size(); ++i) {
    const auto& module = *subject.modules[i].parsed;
    const bool is_standard = module.kind == vb::ModuleKind::kStandard;
    for (const auto& declaration : module.declarations) {
      if (declaration.scope == vb::Scope::kLocal) continue;
      const bool is_public = declaration.scope == vb::Scope::kPublic;
      rows.push_back({i, &declaration, SortOf(declaration), is_public,
                      is_public && (!is_standard || !subject.is_whole)});
    }
  }
  return rows;
}

RowFinder::RowFinder(const Subject& subject, std::span<const Row> rows)
    : ranges_(subject.modules.size()), shares_(rows.size()) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const auto text = rows[i].declaration->text;
    const auto begin =
        static_cast<std::size_t>(text.data() - subject.modules[rows[i].module].text.data());
    auto& ranges = ranges_[rows[i].module];
    if (!ranges.empty() && begin < ranges.back().end) {
      shares_[i] = shares_[i - 1] = true;
      ranges.back().end = std::max(ranges.back().end, begin + text.size());
      ranges.back().row = kNoRow;
    } else {
      ranges.push_back({begin, begin + text.size(), i});
    }
  }
}

std::size_t RowFinder::Find(std::size_t module, std::size_t offset) const {
  const auto& ranges = ranges_[module];
  const auto behind = std::ranges::upper_bound(ranges, offset, {}, &Range::begin);
  if (behind == ranges.begin()) return kNoRow;
  const auto& range = *std::prev(behind);
  return offset < range.end ? range.row : kNoRow;
}

}  // namespace declarium::audit
