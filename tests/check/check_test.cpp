#include "check/check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "check/checked.h"
#include "source/item_text.h"

namespace declarium::check {
namespace {

constexpr const char* kByReference = "Declare Sub Sleep Lib \"kernel32\" (n As Long)";

TEST(Check, TellsThePlaceAndTheMendedLine) {
  const auto checked = CheckSource("Option Explicit\r\n  " + std::string(kByReference) + "\r\n");
  ASSERT_EQ(checked.findings.size(), 1u);
  const auto& finding = checked.findings[0];
  EXPECT_EQ(finding.rule, RuleId::kByValMissing);
  EXPECT_EQ(finding.level, Level::kError);
  EXPECT_EQ(finding.name, "Sleep");
  EXPECT_EQ(finding.place.line, 2u);
  EXPECT_EQ(finding.place.column, 37u);
  EXPECT_EQ(MendedLines(checked.texts[0], finding.edits),
            u"  Declare Sub Sleep Lib \"kernel32\" (ByVal n As Long)");
}

TEST(Check, ACommentBehindOrAboveKeepsAFindingQuiet) {
  const std::string line = kByReference;
  EXPECT_TRUE(CheckSource(line + " ' nocheck\r\n").findings.empty());
  EXPECT_TRUE(CheckSource(line + " ' NoCheck D302\r\n").findings.empty());
  EXPECT_TRUE(CheckSource(line + " ' nocheck D101, d302\r\n").findings.empty());
  EXPECT_TRUE(CheckSource("' nocheck D302\r\n" + line).findings.empty());
  EXPECT_TRUE(CheckSource("Rem nocheck\n" + line).findings.empty());
  EXPECT_FALSE(CheckSource(line + " ' nocheck D301\r\n").findings.empty());
  EXPECT_FALSE(CheckSource(line + " ' nochecks\r\n").findings.empty());
  EXPECT_FALSE(CheckSource("Public Const A = 1 ' nocheck\r\n" + line).findings.empty());
  EXPECT_FALSE(CheckSource("' nocheck\r\n\r\n" + line).findings.empty());
  EXPECT_FALSE(CheckSource("Public Const A = \"' nocheck\"\r\n" + line).findings.empty());
}

TEST(Check, ACommentAboveAContinuedStatementIsForAllItsLines) {
  EXPECT_TRUE(CheckSource("' nocheck\nDeclare Sub Sleep _\n Lib \"kernel32\" _\n (n As Long)\n")
                  .findings.empty());
}

TEST(Check, TwiceGivesTheSame) {
  const std::string source =
      std::string(kByReference) + "\nPublic Const A As Long = &HFFFF\nPublic Const A = 2\n";
  const auto first = CheckSource(source);
  const auto second = CheckSource(source);
  ASSERT_EQ(first.findings.size(), second.findings.size());
  EXPECT_EQ(first.findings.size(), 3u);
  for (std::size_t i = 0; i < first.findings.size(); ++i) {
    EXPECT_EQ(first.findings[i].message, second.findings[i].message);
    EXPECT_EQ(first.findings[i].place, second.findings[i].place);
    EXPECT_EQ(first.findings[i].edits, second.findings[i].edits);
  }
}

TEST(Check, FindsNothingInTheBundledLibraries) {
  const auto folder = std::filesystem::path(DECLARIUM_SOURCE_DIR) / "data";
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".api") continue;
    ++count;
    const auto text = ExportText(LoadLibraryFile(entry.path()).value());
    const auto parsed = vb::ReadModule(text);
    Subject subject;
    subject.form = Subject::Form::kLibrary;
    subject.modules.push_back({text, &parsed});
    for (const auto& finding : Check(subject, Bundled::Get().reference, {}))
      ADD_FAILURE() << entry.path() << ": " << RuleOf(finding.rule).number << ' '
                    << finding.message;
  }
  EXPECT_GT(count, 0u);
}

TEST(Check, WithoutALibraryOnlyTheLanguageIsChecked) {
  const std::u16string text =
      u"Declare Sub Sleep Lib \"kernel32\" (n As Long)\nPublic Const A = 1, A = 2\n";
  const auto parsed = vb::ReadModule(text);
  Subject subject;
  subject.modules.push_back({text, &parsed});
  Reference none;
  const auto findings = Check(subject, none, {});
  ASSERT_EQ(findings.size(), 1u);
  EXPECT_EQ(findings[0].rule, RuleId::kDuplicateName);
}

}  // namespace
}  // namespace declarium::check
