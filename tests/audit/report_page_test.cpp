#include "audit/report_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "audit/audited.h"
#include "audit/use_picture.h"

namespace declarium::audit {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string PageOf(const Audited& project) {
  ReportedProject reported{"Project <1>.vbp", &project.subject, &project.audit, {}};
  for (const auto& module : project.subject.modules)
    reported.sources.push_back(ToUtf8(module.name) + ".bas");
  return ReportPage({{reported}});
}

TEST(ReportPage, HasNoScriptAndNothingFromElsewhere) {
  const Audited project(
      Files{{"A", "Public Const ONE = 1\r\n"}, {"B", "Private m(ONE) As Long\r\n"}});
  const auto page = PageOf(project);
  EXPECT_TRUE(page.starts_with("<!DOCTYPE html>"));
  for (const auto* const other : {"<script", "http", "src=", "url(", "@import"})
    EXPECT_THAT(page, Not(HasSubstr(other)));
  EXPECT_THAT(page, HasSubstr("prefers-color-scheme: dark"));
}

TEST(ReportPage, EveryNameIsEscaped) {
  const Audited project(Files{{"<b>&\"'", "Public Const ONE = 1\r\n"},
                              {"</svg>", "Private m(ONE) As Long\r\nPrivate Const [<i>] = 1\r\n"}});
  const auto page = PageOf(project);
  for (const auto* const raw : {"<b>", "<i>", "</svg> ", "<1>"})
    EXPECT_THAT(page, Not(HasSubstr(raw)));
  EXPECT_THAT(page, HasSubstr("&lt;b&gt;&amp;&quot;&#39;"));
  EXPECT_THAT(page, HasSubstr("Project &lt;1&gt;.vbp"));
}

TEST(ReportPage, TellsFindingsAndWhatIsToBeDone) {
  const auto page = PageOf(Audited(Files{{"A", "Private Const ONE = 1\r\n"}}));
  EXPECT_THAT(page, HasSubstr("note D601: ONE is not used"));
  EXPECT_THAT(page, HasSubstr("<td>remove it</td>"));
  EXPECT_THAT(page, HasSubstr("1 declaration in 1 module, 1 finding."));
}

TEST(ReportPage, ADeclarationHasOneRowWithAllThatWasFound) {
  const auto page = PageOf(
      Audited(Files{{"A", "Private Const ONE = 1\r\n"}, {"B", "Private Const ONE = 1\r\n"}}));
  EXPECT_THAT(page, HasSubstr("<td>B:1</td>"));
  EXPECT_THAT(page, HasSubstr("note D601: ONE is not used</div><div class=\"note\">note D602"));
  EXPECT_THAT(page, HasSubstr("<tr><td>2</td><td>D601</td><td>Declared and not used</td></tr>"));
  EXPECT_THAT(page, HasSubstr("<tr><td>1</td><td>D602</td>"));
}

TEST(ReportPage, ItsTitleNamesTheOnlyProject) {
  const Audited project(Files{{"A", ""}});
  EXPECT_THAT(PageOf(project), HasSubstr("<title>Declarations: Project &lt;1&gt;.vbp</title>"));
  const ReportedProject reported{"P.vbp", &project.subject, &project.audit, {"A.bas"}};
  const ReportedProject both[] = {reported, reported};
  EXPECT_THAT(ReportPage(both), HasSubstr("<title>Declarations</title>"));
}

TEST(UsePicture, ALineForEachPairOfModules) {
  const Audited project(Files{{"A", "Public Const ONE = 1\r\nPublic Const TWO = 2\r\n"},
                              {"B", "Private m(ONE) As Long\r\nPrivate n(TWO) As Long\r\n"},
                              {"C", "Private m(ONE) As Long\r\n"}});
  const auto picture = UsePicture(project.subject, project.audit);
  EXPECT_THAT(picture, HasSubstr("<title>B uses A: 2</title>"));
  EXPECT_THAT(picture, HasSubstr("<title>C uses A: 1</title>"));
}

TEST(UsePicture, WithoutUsesBetweenModulesThereIsNone) {
  const Audited project(Files{{"A", "Private Const ONE = 1\r\nPrivate m(ONE) As Long\r\n"}});
  EXPECT_EQ(UsePicture(project.subject, project.audit), "");
}

TEST(UsePicture, OfManyModulesTheRestSharesAPlace) {
  std::vector<SourceFile> files = {{"A", "Public Const ONE = 1\r\n"}};
  for (int i = 0; i < 100; ++i)
    files.push_back({"B" + std::to_string(i), "Private m(ONE) As Long\r\n"});
  const Audited project(files);
  EXPECT_THAT(UsePicture(project.subject, project.audit), HasSubstr("76 other modules"));
}

TEST(HtmlText, ControlCharactersBecomeReplacementCharacters) {
  EXPECT_EQ(HtmlText(std::string("a\x01") + "b\r\n"),
            "a\xEF\xBF\xBD"
            "b\n");
}

}  // namespace
}  // namespace declarium::audit
