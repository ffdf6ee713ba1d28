// What differs from a library becomes the library's form where code stays what it is, and is left
// with the reason everywhere else.
#include "audit/replacing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

#include "audit/audited.h"

namespace declarium::audit {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Library TheLibrary() {
  Library library;
  library.SetItems(Kind::kConst, {{u"BASE", u"LATER", u"MAX_PATH", u"TITLE"},
                                  {u"\x0E"
                                   u"100",
                                   u"\x0E"
                                   u"BASE + 1",
                                   u"\x0E"
                                   u"260",
                                   u"\x0E"
                                   u"\"x\""}});
  library.SetItems(
      Kind::kDeclare,
      {{u"Beep", u"GetTickCount", u"MoveTo", u"SetText", u"Sleep"},
       {u"\v\"kernel32\" (ByVal dwFreq As Long, ByVal dwDuration As Long) As Long",
        u"\v\"kernel32\" () As Long",
        u"\v\"gdi32\" Alias \"MoveToEx\" (ByVal hdc As Long, ByVal x As Long, lpPoint As POINTAPI) "
        u"As Long",
        u"\v\"user32\" Alias \"SetTextA\" (ByVal hwnd As Long, ByVal lpString As String) As Long",
        u"\n\"kernel32\" (ByVal dwMilliseconds As Long)"}});
  library.SetItems(Kind::kType, {{u"BOX", u"POINTAPI"},
                                 {u"\x0Cleft As Long\rtop As Long\rname As String * 260",
                                  u"\x0Cx As Long\ry As Long"}});
  return library;
}

const Library& Known() {
  static const Library library = TheLibrary();
  return library;
}

std::string Code(const std::string& statement) {
  return "Sub Run()\r\n  " + statement + "\r\nEnd Sub\r\n";
}

struct Case {
  const char* what;
  std::string before;
  std::string after;
};

void ExpectReplaced(const Case& example) {
  const Audited project(Files{{"A", example.before}}, true, &Known(), Differing::kIsReplaced);
  EXPECT_EQ(project.Applied()[0].source, example.after) << example.what;
}

// What is said of the only declaration.
std::string ActionOn(const std::string& declaration, const std::string& statement) {
  const Audited project(Files{{"A", declaration + "\r\n" + Code(statement)}}, true, &Known(),
                        Differing::kIsReplaced);
  EXPECT_THAT(project.audit.edits, IsEmpty()) << declaration;
  return project.Actions().empty() ? "" : project.Actions().front();
}

TEST(Replacing, TakesTheLibrarysFormWithTheScopeThatIsThere) {
  const auto use = Code("Sleep 1: Debug.Print MAX_PATH");
  const Case cases[] = {
      {"Private stays", "Private Const MAX_PATH = 255\r\n" + use,
       "Private Const MAX_PATH = 260\r\n" + use},
      {"no word stays none", "Const MAX_PATH = 255\r\n" + use, "Const MAX_PATH = 260\r\n" + use},
      {"Global stays", "Global Const MAX_PATH = 255\r\n" + use,
       "Global Const MAX_PATH = 260\r\n" + use},
      {"indent and comment stay", "  Private Const MAX_PATH = 255  ' old\r\n" + use,
       "  Private Const MAX_PATH = 260  ' old\r\n" + use},
      {"ByVal for ByRef of the same type",
       "Private Declare Sub Sleep Lib \"kernel32\" (dwMilliseconds As Long)\r\n" + use,
       "Private Declare Sub Sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)\r\n" + use},
      {"another whole type, on two lines",
       "Private Declare Sub Sleep Lib \"kernel32\" _\r\n  (ByVal ms As Integer)\r\n" + use,
       "Private Declare Sub Sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)\r\n" + use},
      {"a result",
       "Declare Function GetTickCount Lib \"kernel32\" () As Integer\r\n" +
           Code("Debug.Print GetTickCount"),
       "Declare Function GetTickCount Lib \"kernel32\" () As Long\r\n" +
           Code("Debug.Print GetTickCount")},
      {"a name that the DLL spells otherwise",
       "Declare Function GETTICKCOUNT Lib \"kernel32\" () As Long\r\n" +
           Code("Debug.Print GetTickCount"),
       "Declare Function GetTickCount Lib \"kernel32\" () As Long\r\n" +
           Code("Debug.Print GetTickCount")},
      {"a record",
       "Private Type BOX\r\n  left As Integer\r\n  top As Long\r\n  name As String * 255\r\n"
       "End Type ' end\r\nPrivate b As BOX\r\n",
       "Private Type BOX\r\n\tleft As Long\r\n\ttop As Long\r\n\tname As String * 260\r\nEnd Type"
       " ' end\r\nPrivate b As BOX\r\n"},
  };
  for (const auto& example : cases) ExpectReplaced(example);
}

TEST(Replacing, LeavesWhatCodeWouldNotFitWithTheReason) {
  const struct {
    std::string declaration;
    std::string statement;
    std::string reason;
  } cases[] = {
      {"Declare Sub Sleep Lib \"kernel32\" (ByVal ms As Long, ByVal more As Long)", "Sleep 1, 2",
       "calls do not fit the library's form"},
      {"Declare Function Sleep Lib \"kernel32\" (ms As Long) As Long", "Sleep 1",
       "calls do not fit the library's form"},
      {"Declare Function SetText Lib \"user32\" Alias \"SetTextA\" (ByVal hwnd As Long, ByVal l As "
       "Long) As Long",
       "SetText 1, 2", "calls do not fit the library's form"},
      {"Declare Function SetText Lib \"user32\" Alias \"SetTextA\" (ByVal hwnd As Long, lpString "
       "As "
       "Any) As Long",
       "SetText 1, ByVal \"a\"", "calls do not fit the library's form"},
      {"Declare Sub Sleep Lib \"kernel32\" (ms As Long)", "Sleep ms:=1",
       "code names its parameters, which the library's form names otherwise"},
      {"Private Const TITLE = 5", "Debug.Print TITLE", "the library's value is of another kind"},
      {"Private Const LATER = 5", "Debug.Print LATER",
       "the library's form uses names that this one does not"},
      {"Private Type BOX\r\n  left As Integer\r\n  top As Long\r\nEnd Type", "Dim b As BOX",
       "the library's record has other members"},
      {"Private Type POINTAPI\r\n  x As Integer ' across\r\n  y As Long\r\nEnd Type",
       "Dim p As POINTAPI", "it holds comments"},
      {"Private Type POINTAPI\r\n  x() As Long\r\n  y As Long\r\nEnd Type", "Dim p As POINTAPI",
       "the library's record has other members"},
      {"#If A Then\r\nPrivate Const MAX_PATH = 255\r\n#End If", "Debug.Print MAX_PATH",
       "it stands inside #If"},
      {"Private Type POINTAPI\r\n#If A Then\r\n  x As Integer\r\n#End If\r\n  y As Long\r\nEnd "
       "Type",
       "Dim p As POINTAPI", "it stands inside #If"},
      {"Private Const MAX_PATH = 255: Const OTHER = 1", "Debug.Print MAX_PATH, OTHER",
       "something else stands on its lines"},
  };
  for (const auto& [declaration, statement, reason] : cases) {
    const auto action = ActionOn(declaration, statement);
    EXPECT_TRUE(action.ends_with(": left: " + reason)) << declaration << "\n" << action;
  }
}

TEST(Replacing, IsNotDoneUnlessAskedFor) {
  const Audited project(
      Files{{"A", "Private Const MAX_PATH = 255\r\n" + Code("Debug.Print MAX_PATH")}}, true,
      &Known());
  EXPECT_THAT(project.audit.edits, IsEmpty());
  EXPECT_THAT(project.Actions(), ElementsAre("A.MAX_PATH: choose: the library has another form"));
}

TEST(Replacing, ACommentKeepsTheDeclaration) {
  const Audited project(
      Files{{"A", "Private Const MAX_PATH = 255 ' nocheck\r\n" + Code("Debug.Print MAX_PATH")}},
      true, &Known(), Differing::kIsReplaced);
  EXPECT_THAT(project.audit.edits, IsEmpty());
}

TEST(Replacing, WhatOthersMayUseIsLeft) {
  const Files files{{"A", "Public Const MAX_PATH = 255\r\n" + Code("Debug.Print MAX_PATH")}};
  EXPECT_THAT(Audited(files, false, &Known(), Differing::kIsReplaced).Actions(),
              ElementsAre("A.MAX_PATH: left: not all modules of the project are there"));
}

TEST(Replacing, OneThatBecomesTheOneForAllIsReplacedTheNextTime) {
  const auto use = Code("Debug.Print MAX_PATH");
  const Files files{{"A", "Public Const MAX_PATH = 255\r\n" + use},
                    {"B", "Private Const MAX_PATH = 255\r\n" + use}};
  const Audited project(files, true, &Known(), Differing::kIsReplaced);
  EXPECT_THAT(project.Actions(),
              ElementsAre("A.MAX_PATH: left: it becomes the one for other modules first",
                          "B.MAX_PATH: remove it: A has it for all"));
  const auto once = project.Applied();
  const Audited again(once, true, &Known(), Differing::kIsReplaced);
  EXPECT_EQ(again.Applied()[0].source, "Public Const MAX_PATH = 260\r\n" + use);
}

TEST(ProjectAudit, WhatIsLeftOutStaysAndKeepsWhatItNeeds) {
  const Audited project(Files{{"A",
                               "Private Const SIZE = 8\r\nPrivate Const TWICE = SIZE * 2\r\n"
                               "Private Const OTHER = 1\r\n"},
                              {"B", "Public Const OTHER = 1\r\n" + Code("Debug.Print OTHER")}});
  check::KnownLibraries none;
  ProjectAudit audit(project.subject, none, Differing::kIsTold);
  ASSERT_EQ(audit.Result().edits.size(), 1U);
  audit.LeaveOut({false, true, false, false});
  const auto& rows = audit.Result().rows;
  EXPECT_EQ(rows[0].fate.to_remove, Obstacle::kNeeded);
  EXPECT_EQ(rows[1].fate.to_remove, Obstacle::kLeftOut);
  EXPECT_EQ(rows[2].fate.does, Fate::Does::kGoes);
  ASSERT_EQ(audit.Result().edits.size(), 1U);
  EXPECT_EQ(audit.Result().edits[0], (LineEdit{0, 3, 1, {}}));
  audit.LeaveOut({false, false, false, false});
  EXPECT_EQ(audit.Result().rows[0].fate.does, Fate::Does::kGoes);
  EXPECT_EQ(audit.Result().edits[0], (LineEdit{0, 1, 3, {}}));
}

TEST(ProjectAudit, OneOfSeveralThatIsLeftOutKeepsTheOthers) {
  const Audited project(
      Files{{"A", "Private Const N = 1\r\n" + Code("Debug.Print N")},
            {"B", "Private Const N = 1\r\n" + Code("Debug.Print N")},
            {"C", "Private Const MAX_PATH = 255\r\n" + Code("Debug.Print MAX_PATH")}});
  check::KnownLibraries known;
  known.Add(Known(), std::nullopt);
  ProjectAudit audit(project.subject, known, Differing::kIsReplaced);
  EXPECT_EQ(audit.Result().edits.size(), 3U);
  EXPECT_EQ(audit.Result().rows[0].lines, u"Public Const N = 1");
  EXPECT_EQ(audit.Result().rows[2].lines, u"Private Const MAX_PATH = 260");
  audit.LeaveOut({false, true, true});
  EXPECT_EQ(audit.Result().rows[0].fate.to_merge, Obstacle::kLeftOut);
  EXPECT_EQ(audit.Result().rows[2].fate.to_replace, Obstacle::kLeftOut);
  EXPECT_THAT(audit.Result().edits, IsEmpty());
}

// ---- on random projects ----

class RandomDeclarations {
 public:
  explicit RandomDeclarations(unsigned seed) : random_(seed) {}

  std::string Make() {
    std::string source = "Option Explicit\r\n";
    for (const auto& make : {&RandomDeclarations::Constant, &RandomDeclarations::External,
                             &RandomDeclarations::Record}) {
      const bool is_conditional = Below(8) == 0;
      if (is_conditional) source += "#If D Then\r\n";
      source += OneOf({"", "  ", "\t"}) + OneOf({"", "Private ", "Public "}) + (this->*make)() +
                OneOf({"", " ' tail", " ' nocheck"}) + "\r\n";
      if (is_conditional) source += "#End If\r\n";
      if (Below(3) == 0) source += "\r\n' text\r\n";
    }
    return source + "Sub Run()\r\n  Dim p As POINTAPI\r\n  Debug.Print MAX_PATH\r\n  Sleep " +
           OneOf({"1", "ms:=1", "1, 2"}) + "\r\nEnd Sub\r\n";
  }

 private:
  unsigned Below(unsigned limit) { return random_() % limit; }
  std::string OneOf(std::initializer_list<const char*> texts) {
    return *(texts.begin() + Below(static_cast<unsigned>(texts.size())));
  }
  std::string Constant() {
    return "Const MAX_PATH" + OneOf({"", " As Long"}) + " = " +
           OneOf({"260", "255", "\"x\"", "&HFFFF", "1 _\r\n  + 1"});
  }
  std::string External() {
    return "Declare " + OneOf({"Sub", "Function"}) + " Sleep Lib " +
           OneOf({"\"kernel32\"", "\"kernel32.dll\"", "\"user32\""}) + OneOf({"", " _\r\n  "}) +
           " (" + OneOf({"", "ByVal "}) + OneOf({"ms", "dwMilliseconds"}) + " As " +
           OneOf({"Long", "Integer", "String", "Any"}) + OneOf({"", ", ByVal x As Long"}) + ")";
  }
  std::string Record() {
    return "Type POINTAPI\r\n  x As " + OneOf({"Long", "Integer", "String", "Byte"}) +
           OneOf({"", " ' c"}) + "\r\n" + OneOf({"  y As Long\r\n", "  z As Long\r\n", ""}) +
           "End Type";
  }

  std::mt19937 random_;
};

TEST(Replacing, ChangesNoOtherLineAndLeavesNothingToReplace) {
  std::size_t replaced = 0;
  std::size_t left = 0;
  for (unsigned seed = 0; seed < 1500; ++seed) {
    const auto before = RandomDeclarations(seed).Make();
    const Audited project(Files{{"A", before}}, true, &Known(), Differing::kIsReplaced);
    const auto after = project.Applied()[0].source;
    SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + before + "---- then\n" + after);
    const Audited then(Files{{"A", after}}, true, &Known(), Differing::kIsReplaced);
    ASSERT_THAT(then.subject.modules[0].parsed->errors, IsEmpty());
    ASSERT_EQ(then.audit.rows.size(), project.audit.rows.size());
    // Taking the declarations out of both, what is left is the same.
    auto rest = FromUtf8(before);
    auto rest_then = FromUtf8(after);
    for (auto i = project.audit.rows.size(); i-- > 0;) {
      const auto& row = project.audit.rows[i];
      const auto& old = *row.row.declaration;
      const auto& now = *then.audit.rows[i].row.declaration;
      rest.erase(old.place.offset, old.text.size());
      rest_then.erase(now.place.offset, now.text.size());
      const bool is_replaced = row.fate.does == Fate::Does::kReplaced;
      ASSERT_EQ(is_replaced, old.text != now.text);
      ASSERT_EQ(old.scope, now.scope);
      replaced += is_replaced ? 1 : 0;
      left += row.fate.to_replace != Obstacle::kNone ? 1 : 0;
    }
    ASSERT_EQ(rest, rest_then);
    ASSERT_THAT(then.audit.edits, IsEmpty());
  }
  // The projects are such that there is something to do, and something to leave.
  EXPECT_GT(replaced, 500U);
  EXPECT_GT(left, 500U);
}

}  // namespace
}  // namespace declarium::audit
