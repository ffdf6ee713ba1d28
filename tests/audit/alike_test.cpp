#include "audit/alike.h"

#include <gtest/gtest.h>

#include "audit/audited.h"

namespace declarium::audit {
namespace {

// The rows as one letter each, equal letters for equal numbers.
std::string Letters(const std::vector<std::size_t>& numbers) {
  std::map<std::size_t, char> letters;
  std::string text;
  for (const auto number : numbers)
    text += letters.try_emplace(number, static_cast<char>('a' + letters.size())).first->second;
  return text;
}

struct Likenesses {
  std::string meaning;
  std::string exchange;
};

Likenesses Of(const std::vector<std::string>& sources) {
  std::vector<SourceFile> files;
  for (const auto& source : sources) files.push_back({"M" + std::to_string(files.size()), source});
  const Audited project(files);
  plan::ProjectModules modules(project.subject.modules);
  const auto rows = TableOf(project.subject);
  const RowFinder finder(project.subject, rows);
  const Uses uses(project.subject, modules, rows, finder);
  Rest rest{std::vector<bool>(rows.size(), true), std::vector<bool>(rows.size())};
  const auto likeness = LikenessOf(modules, rows, uses, rest);
  return {Letters(likeness.meaning), Letters(likeness.exchange)};
}

TEST(Likeness, ConstantsAreComparedByValueAndExchangedByType) {
  const auto [meaning, exchange] =
      Of({"Const N = 16", "Const N = &H10", "Const N = 16&", "Const N = 17"});
  EXPECT_EQ(meaning, "aaab");
  EXPECT_EQ(exchange, "aabc");
}

TEST(Likeness, OtherNamesAndKindsAreNeverAlike) {
  EXPECT_EQ(Of({"Const A = 1", "Const B = 1", "Enum A\nx\nEnd Enum"}).meaning, "abc");
}

TEST(Likeness, DeclaresAreExchangedWhenTheirParametersHaveTheSameNames) {
  const auto [meaning, exchange] =
      Of({"Declare Sub S Lib \"k\" (ByVal a As Long)", "Declare Sub S Lib \"K.DLL\" (ByVal A&)",
          "Declare Sub S Lib \"k\" (ByVal b As Long)", "Declare Sub S Lib \"k\" (a As Long)"});
  EXPECT_EQ(meaning, "aaab");
  EXPECT_EQ(exchange, "aabc");
}

TEST(Likeness, RecordsAreExchangedWhenWhatTheyHoldIs) {
  const std::string in = "Type I\nx As Long\nEnd Type\n";
  const std::string other = "Type I\nx As Byte\nEnd Type\n";
  const std::string out = "Type O\ni As I\nEnd Type\n";
  const auto [meaning, exchange] = Of({in + out, in + out, other + out});
  EXPECT_EQ(meaning, "ababcb");
  EXPECT_EQ(exchange, "ababcd");
}

TEST(Likeness, EnumerationsAreAlikeByTheirMembersAndValues) {
  EXPECT_EQ(
      Of({"Enum E\na\nb\nEnd Enum", "Enum E\nA = 0\nB = 1\nEnd Enum", "Enum E\nb\na\nEnd Enum"})
          .meaning,
      "aab");
}

}  // namespace
}  // namespace declarium::audit
