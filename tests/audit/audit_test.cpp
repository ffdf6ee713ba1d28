#include "audit/audit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "audit/audited.h"

namespace declarium::audit {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
constexpr auto kClass = vb::ModuleKind::kClass;
constexpr auto kForm = vb::ModuleKind::kForm;

// The source of the only module after the edits.
std::string AfterOne(const std::string& source) {
  return Audited(Files{{"A", source}}).Applied().front().source;
}

std::string Use(const std::string& names) {
  return "Sub Run()\r\n  Debug.Print " + names + "\r\nEnd Sub\r\n";
}

// ---- who uses what ----

TEST(Audit, AUseInAnotherModuleCounts) {
  const Audited project(Files{{"A", "Public Const MAX = 5\r\n"}, {"B", Use("MAX")}});
  ASSERT_EQ(project.audit.rows.size(), 1U);
  ASSERT_EQ(project.audit.rows[0].uses.size(), 1U);
  EXPECT_EQ(project.audit.rows[0].uses[0].module, 1U);
  EXPECT_EQ(project.audit.rows[0].uses[0].line, 2U);
  EXPECT_THAT(project.Findings(), IsEmpty());
}

TEST(Audit, AModulesOwnDeclarationComesBeforeThePublicOne) {
  const Audited project(
      Files{{"A", "Public Const MAX = 5\r\n"}, {"B", "Private Const MAX = 6\r\n" + Use("MAX")}});
  EXPECT_THAT(project.audit.rows[0].uses, IsEmpty());
  EXPECT_EQ(project.audit.rows[1].uses.size(), 1U);
}

TEST(Audit, AQualifierSaysWhichModuleIsMeant) {
  const Audited project(
      Files{{"A", "Public Const MAX = 5\r\n"}, {"B", "Private Const MAX = 6\r\n" + Use("A.MAX")}});
  EXPECT_EQ(project.audit.rows[0].uses.size(), 1U);
  EXPECT_THAT(project.audit.rows[1].uses, IsEmpty());
}

TEST(Audit, AnEnumerationIsUsedByItsMembers) {
  EXPECT_THAT(
      Audited(Files{{"A", "Public Enum Colors\r\n  Red\r\nEnd Enum\r\n" + Use("Red")}}).Findings(),
      IsEmpty());
}

TEST(Audit, ATypeIsUsedByTheVariablesOfItsName) {
  EXPECT_THAT(
      Audited(Files{{"A", "Private Type P\r\n  x As Long\r\nEnd Type\r\nPrivate mP As P\r\n"}})
          .Findings(),
      IsEmpty());
}

TEST(Audit, LocalConstantsAreNotInTheTable) {
  EXPECT_THAT(Audited(Files{{"A", "Sub Run()\r\n  Const N = 1\r\nEnd Sub\r\n"}}).audit.rows,
              IsEmpty());
}

// ---- unused ----

TEST(Audit, WhatIsNotUsedGoesWithWhatOnlyItUses) {
  const Audited project(Files{{"A",
                               "Private Const SIZE = 8\r\n"
                               "Private Type BOX\r\n  b(SIZE) As Byte\r\nEnd Type\r\n"
                               "Private Declare Sub Take Lib \"k\" (b As BOX)\r\n"
                               "Private Const USED = 1\r\n" +
                                   Use("USED")}});
  EXPECT_THAT(project.Findings(), ElementsAre("A.SIZE D601 only what is not used uses SIZE",
                                              "A.BOX D601 only what is not used uses BOX",
                                              "A.Take D601 Take is not used"));
  EXPECT_EQ(project.Applied()[0].source, "Private Const USED = 1\r\n" + Use("USED"));
}

TEST(Audit, RecordsThatOnlyHoldEachOtherGo) {
  EXPECT_EQ(AfterOne("Private Type A1\r\n  b As B1\r\nEnd Type\r\n"
                     "Private Type B1\r\n  a() As A1\r\nEnd Type\r\n"),
            "");
}

TEST(Audit, APublicDeclarationOfAClassMayBeUsedByOtherPrograms) {
  const Audited project(Files{{"A", "Public Enum Kinds\r\n  kOne\r\nEnd Enum\r\n", kClass}});
  EXPECT_THAT(project.Findings(), IsEmpty());
}

TEST(Audit, WithoutTheWholeProjectPublicOnesMayBeUsedElsewhere) {
  const Audited project(Files{{"A", "Public Const ONE = 1\r\nPrivate Const TWO = 2\r\n"}}, false);
  EXPECT_THAT(project.Actions(), ElementsAre("A.TWO: remove it"));
}

TEST(Audit, WhatStandsInsideIfIsLeftAndKeepsWhatItNeeds) {
  const Audited project(Files{{"A",
                               "Private Const SIZE = 8\r\n"
                               "#If VBA7 Then\r\n"
                               "Private Const TWICE = SIZE * 2\r\n"
                               "#End If\r\n"}});
  EXPECT_THAT(project.Actions(), ElementsAre("A.SIZE: left: something that stays needs it",
                                             "A.TWICE: left: it stands inside #If"));
  EXPECT_THAT(project.audit.edits, IsEmpty());
}

TEST(Audit, WhatSharesItsLineIsLeft) {
  const Audited project(Files{{"A",
                               "Private Const ONE = 1, TWO = 2\r\n"
                               "Private Const THREE = 3: Private Const FOUR = 4\r\n"
                               "Private Const FIVE = 5 ' a comment _\r\n"
                               "that goes on\r\n" +
                                   Use("TWO, FOUR")}});
  EXPECT_THAT(project.Actions(), ElementsAre("A.ONE: left: something else stands on its lines",
                                             "A.THREE: left: something else stands on its lines",
                                             "A.FIVE: left: something else stands on its lines"));
}

TEST(Audit, AModuleThatCannotBeReadIsLeft) {
  const Audited project(Files{{"A", "Private Const ONE = 1\r\nPrivate Type\r\n"}});
  EXPECT_THAT(project.Actions(),
              ElementsAre("A.ONE: left: its module has lines that cannot be read"));
}

TEST(Audit, AModuleOfTwoProjectsIsLeft) {
  Audited project(Files{{"A", "Private Const ONE = 1\r\n"}});
  project.subject.is_shared = {true};
  project.Again();
  EXPECT_THAT(project.Actions(), ElementsAre("A.ONE: left: another project has the module, too"));
}

TEST(Audit, ACommentKeepsADeclarationQuietAndThere) {
  const Audited project(
      Files{{"A", "Private Const ONE = 1 ' nocheck\r\nPrivate Const TWO = 2\r\n"}});
  EXPECT_THAT(project.Findings(), ElementsAre("A.TWO D601 TWO is not used"));
  EXPECT_EQ(project.Applied()[0].source, "Private Const ONE = 1 ' nocheck\r\n");
}

// ---- alike ----

TEST(Audit, OfPrivateOnesThatAreAlikeOneBecomesPublic) {
  const Audited project(Files{{"F", "Private Const MAX = 5\r\n" + Use("MAX"), kForm},
                              {"A", "Private Const MAX = 5 ' most\r\n" + Use("MAX")},
                              {"B", "Const MAX = &H5\r\n" + Use("MAX")}});
  EXPECT_THAT(project.Findings(),
              ElementsAre("F.MAX D602 MAX is declared alike in A:1; it could be Public once",
                          "B.MAX D602 MAX is declared alike in A:1; it could be Public once"));
  EXPECT_THAT(project.Actions(),
              ElementsAre("F.MAX: remove it: A has it for all", "A.MAX: make it Public for all",
                          "B.MAX: remove it: A has it for all"));
  const auto after = project.Applied();
  EXPECT_EQ(after[0].source, Use("MAX"));
  EXPECT_EQ(after[1].source, "Public Const MAX = 5 ' most\r\n" + Use("MAX"));
  EXPECT_EQ(after[2].source, Use("MAX"));
}

TEST(Audit, AConstantWithoutAScopeWordGetsOne) {
  const Audited project(
      Files{{"A", "  Const MAX = 5\n" + Use("MAX")}, {"B", "Const MAX = 5\n" + Use("MAX")}});
  EXPECT_EQ(project.Applied()[0].source, "  Public Const MAX = 5\n" + Use("MAX"));
}

TEST(Audit, APublicOneStaysForThePrivateOnes) {
  const Audited project(
      Files{{"A", "Private Declare Sub Beep Lib \"kernel32\" ()\r\n" + Use("Beep")},
            {"B", "Public Declare Sub Beep Lib \"kernel32.dll\" ()\r\n" + Use("Beep")}});
  EXPECT_EQ(project.Applied()[0].source, Use("Beep"));
  EXPECT_EQ(project.audit.edits.size(), 1U);
}

TEST(Audit, WhatOnlyTheRemovedOneUsedGoesToo) {
  const std::string box =
      "Private Type BOX\r\n  b(SIZE) As Byte\r\nEnd Type\r\nPrivate m As BOX\r\n";
  const Audited project(
      Files{{"A", "Private Const SIZE = 8\r\n" + box}, {"B", "Private Const SIZE = 8\r\n" + box}});
  EXPECT_EQ(project.Applied()[1].source, "Private m As BOX\r\n");
}

TEST(Audit, TheSameNameWithAnotherMeaningIsToldAndLeft) {
  const Audited project(Files{{"A", "Public Const MAX = 5\r\n" + Use("MAX")},
                              {"B", "Private Const MAX = 6\r\n" + Use("MAX")}});
  EXPECT_THAT(project.Findings(), ElementsAre("B.MAX D604 MAX is declared differently in A:1"));
  EXPECT_EQ(project.audit.rows[1].findings[0].finding.level, check::Level::kWarning);
  EXPECT_THAT(project.Actions(), ElementsAre("B.MAX: left: the others of the name differ"));
}

TEST(Audit, TheExamplesOfTheRuleShowIt) {
  const auto findings_on = [](std::string_view example) {
    const auto second = example.find("' Module2");
    return Audited(Files{{"Module1", std::string(example.substr(0, second))},
                         {"Module2", std::string(example.substr(second))}})
        .Findings();
  };
  const auto& rule = check::RuleOf(check::RuleId::kDeclaredDifferently);
  EXPECT_THAT(findings_on(rule.wrong), ElementsAre(testing::HasSubstr(" D604 ")));
  EXPECT_THAT(findings_on(rule.right), IsEmpty());
}

TEST(Audit, PrivateOnesThatDifferAreANote) {
  const Audited project(Files{{"A", "Private Const NAME1 = \"A\"\r\n" + Use("NAME1")},
                              {"B", "Private Const NAME1 = \"B\"\r\n" + Use("NAME1")}});
  EXPECT_EQ(project.audit.rows[1].findings[0].finding.level, check::Level::kNote);
}

// The same words mean another record.
TEST(Audit, RecordsThatHoldDifferentRecordsAreNotMerged) {
  const std::string outer =
      "Private Type OUTER\r\n  i As INNER\r\nEnd Type\r\nPrivate m As OUTER\r\n";
  const Audited project(
      Files{{"A", "Private Type INNER\r\n  x As Long\r\nEnd Type\r\n" + outer},
            {"B", "Private Type INNER\r\n  x As Integer\r\nEnd Type\r\n" + outer}});
  EXPECT_THAT(project.audit.edits, IsEmpty());
}

TEST(Audit, APublicRecordNeedsPublicRecordsInside) {
  const std::string outer =
      "Private Type OUTER\r\n  i As INNER\r\nEnd Type\r\nPrivate m As OUTER\r\n";
  const std::string inner = "Private Type INNER\r\n  x As Long\r\nEnd Type\r\n";
  const Audited both(Files{{"A", inner + outer}, {"B", inner + outer}});
  EXPECT_EQ(both.Applied()[1].source, "Private m As OUTER\r\n");
  EXPECT_THAT(both.Applied()[0].source, testing::HasSubstr("Public Type INNER"));
  // A third one of that name keeps the inner ones where they are.
  const Audited three(
      Files{{"A", inner + outer},
            {"B", inner + outer},
            {"C", "Private Type INNER\r\n  y As Byte\r\nEnd Type\r\nPrivate m As INNER\r\n"}});
  EXPECT_THAT(three.audit.edits, IsEmpty());
}

TEST(Audit, OtherTypesOfConstantsOrNamesOfParametersAreLeft) {
  EXPECT_THAT(
      Audited(Files{{"A", "Const N = 5\r\n" + Use("N")}, {"B", "Const N = 5&\r\n" + Use("N")}})
          .Actions(),
      ElementsAre("B.N: left: types or names of parameters differ"));
  EXPECT_THAT(
      Audited(Files{{"A", "Private Declare Sub S Lib \"k\" (ByVal a As Long)\r\n" + Use("S")},
                    {"B", "Private Declare Sub S Lib \"k\" (ByVal b As Long)\r\n" + Use("S")}})
          .audit.edits,
      IsEmpty());
}

struct LeftCase {
  const char* why;
  Files files;
};

// Two alike that cannot be one, so that what code means stays.
TEST(Audit, WhatWouldChangeTheMeaningOfCodeIsLeft) {
  const std::string one = "Private Const ONE = 1\r\n" + Use("ONE");
  const LeftCase cases[] = {
      {"no standard module declares it", {{"A", one, kClass}, {"B", one, kForm}}},
      {"something else has the name, too",
       {{"A", one}, {"B", one}, {"C", "Public Sub ONE()\r\nEnd Sub\r\n"}}},
      {"something else has the name, too",
       {{"A", one}, {"B", one}, {"C", "Public ONE As Long\r\n"}}},
      {"something else has the name, too", {{"A", one}, {"B", one}, {"ONE", "\r\n"}}},
      {"something else has the name, too",
       {{"A", one}, {"B", one}, {"C", "Public Enum E\r\n  ONE\r\nEnd Enum\r\nPublic m As E\r\n"}}},
      {"another module has the name from elsewhere", {{"A", one}, {"B", one}, {"C", Use("ONE")}}},
      {"code names a module in front of it",
       {{"A", "Public Const ONE = 1\r\n" + Use("ONE")},
        {"B", "Public Const ONE = 1\r\n" + Use("ONE")},
        {"C", Use("B.ONE")}}},
      {"something else has the name, too",
       {{"A", "Private Const Caption = 1\r\n" + Use("Caption")},
        {"B", "Private Const Caption = 1\r\n" + Use("Caption"), kForm}}},
      {"something else stands on its lines",
       {{"A", one}, {"B", "Private Const ONE = 1, TWO = 2\r\n" + Use("ONE, TWO")}}},
      {"code may name it in front of its members",
       {{"A", "Private Enum E\r\n  kA\r\nEnd Enum\r\nPrivate m As E\r\n"},
        {"B", "Private Enum E\r\n  kA\r\nEnd Enum\r\nPrivate m As E\r\n"}}},
  };
  for (const auto& [why, files] : cases) {
    SCOPED_TRACE(why);
    const Audited project(files);
    EXPECT_THAT(project.audit.edits, IsEmpty());
    EXPECT_THAT(project.Actions(),
                testing::Contains(testing::EndsWith(": left: " + std::string(why))));
  }
}

// ---- comments and empty lines ----

TEST(Audit, ACommentAboveGoesWithWhatItIsAbout) {
  EXPECT_EQ(AfterOne("Private Const USED = 1\r\n\r\n' about it\r\n' and more\r\nPrivate Const ONE "
                     "= 1 ' it\r\n\r\n" +
                     Use("USED")),
            "Private Const USED = 1\r\n\r\n" + Use("USED"));
}

TEST(Audit, TheCommentOfAModuleAndOfAGroupStay) {
  EXPECT_EQ(
      AfterOne("' The module.\r\nPrivate Const ONE = 1\r\nPrivate Const USED = 1\r\n\r\n"
               "' A group.\r\nPrivate Const TWO = 1\r\nPrivate Const THREE = 3\r\n" +
               Use("USED, THREE")),
      "' The module.\r\nPrivate Const USED = 1\r\n\r\n' A group.\r\nPrivate Const THREE = 3\r\n" +
          Use("USED, THREE"));
}

TEST(Audit, TheCommentOfAGroupGoesWithTheWholeGroup) {
  EXPECT_EQ(AfterOne("Private Const USED = 1\r\n\r\n' A group.\r\nPrivate Const TWO = 1\r\n"
                     "Private Const THREE = 3\r\n\r\n" +
                     Use("USED")),
            "Private Const USED = 1\r\n\r\n" + Use("USED"));
}

// ---- a library ----

TEST(Audit, WhatDiffersFromTheLibraryIsToldWithTheLibrarysForm) {
  Library library;
  library.SetItems(Kind::kConst, {{u"MAX_PATH"},
                                  {u"\x0E"
                                   u"260"}});
  library.SetItems(Kind::kDeclare,
                   {{u"Sleep"}, {u"\n\"kernel32\" (ByVal dwMilliseconds As Long)"}});
  const Audited project(
      Files{
          {"A",
           "Private Const MAX_PATH = 255\r\n"
           "Private Declare Sub Sleep Lib \"kernel32\" (ByVal ms As Long, ByVal more As Long)\r\n" +
               Use("MAX_PATH, Sleep")}},
      true, &library);
  ASSERT_EQ(project.audit.rows[0].findings.size(), 1U);
  EXPECT_EQ(project.audit.rows[0].findings[0].finding.rule, check::RuleId::kConstantDiffers);
  EXPECT_EQ(project.audit.rows[0].findings[0].library_form, u"Private Const MAX_PATH = 260");
  ASSERT_FALSE(project.audit.rows[1].findings.empty());
  EXPECT_EQ(project.audit.rows[1].findings[0].library_form,
            u"Private Declare Sub Sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)");
  EXPECT_THAT(project.audit.edits, IsEmpty());
  EXPECT_THAT(project.Actions(),
              testing::Contains("A.MAX_PATH: choose: the library has another form"));
}

}  // namespace
}  // namespace declarium::audit
