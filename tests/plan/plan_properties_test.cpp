#include <gtest/gtest.h>

#include "plan/planned.h"

namespace declarium::plan {
namespace {

constexpr std::string_view kChain =
    "Const A = 1\nConst B = A + 1\nDeclare Sub D Lib \"l\" (x As T)\n"
    "Type U\na(B) As Long\nEnd Type\nType T\na As U\nEnd Type\n";

// Lines and blocks that a declaration section may hold.
constexpr std::u16string_view kParts[] = {
    u"",
    u"Option Explicit\n",
    u"' a comment\n",
    u"Private Const A = 1\n",
    u"Const Z = A\n",
    u"Private Type T\n a As U\nEnd Type\n",
    u"Type V\n a(A) As Long\nEnd Type\n",
    u"Declare Sub D Lib \"l\" (x As T)\n",
    u"Declare Sub E Lib \"l\" _\n ()\n",
    u"#If X Then\nConst A = 1\n#End If\n",
    u"#If X Then\nDim v\n#Else\nDim w\n#End If\n",
    u"Dim q, _\n r ' c _\n d\n",
    u"\n",
    u"Public Enum N\n A = 1\nEnd Enum\n",
};

bool HasDouble(std::u16string_view text) {
  for (const auto* const part : {u"Const A = 1\n", u"Type T\n", u"Enum N\n", u"Sub D ", u"Sub E ",
                                 u"Const Z", u"Type V", u"Dim q", u"Dim v"}) {
    const auto first = text.find(part);
    if (first != text.npos && text.find(part, first + 1) != text.npos) return true;
  }
  return text.contains(u"Const A") && text.contains(u"Enum N");
}

std::u16string WithoutLinesOf(const std::u16string& changed, std::u16string_view before) {
  const auto lines = Split(changed, u'\n');
  std::u16string kept;
  std::size_t at = 0;
  for (const auto line : lines) {
    const std::u16string whole = std::u16string(line) + u"\n";
    if (!before.substr(at).starts_with(whole)) continue;
    kept += whole;
    at += whole.size();
  }
  return kept;
}

// What every insertion promises.
void ExpectSound(const std::u16string& before) {
  PlannedProject project(LibraryOf(kChain));
  project.Add(u"M", before);
  const auto& plan = project.Plan({u"D", u"B"});
  for (const auto& entry : plan.Entries()) ASSERT_NE(entry.does, Does::kClash) << ToUtf8(before);
  const auto changed = project.Changed();
  EXPECT_EQ(ToUtf8(WithoutLinesOf(changed, before)), ToUtf8(before)) << ToUtf8(changed);

  const auto module = vb::ReadModule(changed);
  EXPECT_TRUE(module.errors.empty()) << ToUtf8(changed);
  const auto old_module = vb::ReadModule(before);
  std::size_t inserted = 0;
  for (const auto& entry : plan.Entries())
    if (entry.IsInserted() && !entry.found) ++inserted;
  // What other branches have comes once for each way through the others.
  const bool has_branches = before.contains(u"#If X Then\nConst A");
  if (!has_branches) {
    EXPECT_EQ(module.declarations.size(), old_module.declarations.size() + inserted)
        << ToUtf8(changed);
  }

  PlannedProject again(LibraryOf(kChain));
  again.Add(u"M", changed);
  for (const auto& entry : again.Plan({u"D", u"B"}).Entries())
    EXPECT_EQ(entry.does, Does::kPresent) << ToUtf8(entry.name) << "\n" << ToUtf8(changed);

  // What must stand above its users does, unless what was there already stood below them.
  const auto line_of = [&](std::u16string_view name) {
    for (const auto& declaration : module.declarations)
      if (EqualIgnoringCase(declaration.name, name)) return declaration.place.line;
    return 0U;
  };
  for (const auto& [above, below] : {std::pair(u"A", u"B"), {u"B", u"U"}, {u"U", u"T"}})
    EXPECT_TRUE(line_of(above) < line_of(below) || line_of(above) == 0 ||
                before.contains(std::u16string(below)))
        << ToUtf8(changed);
}

TEST(PlanProperties, HoldForAllShortDeclarationSections) {
  for (const auto first : kParts)
    for (const auto second : kParts)
      for (const auto* const procedure : {u"", u"' about S\nSub S()\nEnd Sub\n"}) {
        const auto section = std::u16string(first) + std::u16string(second);
        if (!HasDouble(section)) ExpectSound(section + procedure);
      }
}

TEST(PlanProperties, HoldForSectionsOfAllParts) {
  // Each part once, in turned orders.
  constexpr std::size_t kCount = std::size(kParts);
  for (std::size_t turn = 0; turn < kCount; ++turn)
    for (std::size_t step : {1U, 3U, 5U}) {
      std::u16string section;
      for (std::size_t i = 0; i < kCount; ++i) {
        const auto part = kParts[(turn + i * step) % kCount];
        if (!HasDouble(section + std::u16string(part))) section += part;
      }
      ExpectSound(section + u"Sub S()\nEnd Sub\n");
    }
}

}  // namespace
}  // namespace declarium::plan
