#include "plan/insertion_plan.h"

#include <gtest/gtest.h>

#include "plan/planned.h"

namespace declarium::plan {
namespace {

constexpr std::string_view kLibrary =
    "Const A = 1\nConst B = A + 1\nConst MAX_PATH = 260\nConst BIG = &HFFFF&\n"
    "Declare Function GetTickCount Lib \"kernel32\" () As Long\n"
    "Declare Sub Sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)\n"
    "Declare Function FindFirst Lib \"kernel32\" Alias \"FindFirstA\" (lpData As FIND_DATA) As "
    "Long\n"
    "Type FILETIME\nLow As Long\nHigh As Long\nEnd Type\n"
    "Type FIND_DATA\nTime As FILETIME\nName As String * MAX_PATH\nEnd Type\n"
    "Type POINT\nx As Long\ny As Long\nEnd Type\n";

PlannedProject Project(std::u16string_view text, vb::ModuleKind kind = vb::ModuleKind::kStandard) {
  PlannedProject project(LibraryOf(kLibrary));
  project.Add(u"M", std::u16string(text), kind);
  return project;
}

// One name planned for one module: what it does, and the module then.
struct Row {
  std::u16string_view module;
  std::u16string_view name;
  std::string_view told;
};

void ExpectRows(std::span<const Row> rows) {
  for (const auto& [module, name, told] : rows) {
    auto project = Project(module);
    EXPECT_EQ(Told(project.Plan({name})), told) << ToUtf8(module);
    const auto changed = project.Changed();
    auto again = Project(changed);
    auto& plan = again.Plan({name});
    EXPECT_TRUE(plan.IsEmpty()) << ToUtf8(changed);
  }
}

TEST(InsertionPlan, TellsForEachEntryWhatHappens) {
  const Row kRows[] = {
      {u"", u"A", "insert A"},
      {u"Const A = 1\n", u"A", "present A (M:1)"},
      {u"\n\nPublic Const a As Long = &H1& ' one\n", u"A", "present A (M:3)"},
      {u"Const X = 1, A = 1\n", u"A", "present A (M:1)"},
      {u"Const A = 2\n", u"A", "differs A (M:1)"},
      {u"Const A = \"1\"\n", u"A", "differs A (M:1)"},
      {u"Enum E\n A = 1\nEnd Enum\n", u"A", "present A (M:2)"},
      {u"Enum E\n Z\n A\nEnd Enum\n", u"A", "present A (M:3)"},
      {u"Enum E\n A = 2\nEnd Enum\n", u"A", "clash A (M:2)"},
      {u"Dim A As Long\n", u"A", "clash A (M:1)"},
      {u"Event A()\n", u"A", "clash A (M:1)"},
      {u"Sub A()\nEnd Sub\n", u"A", "clash A (M:1)"},
      {u"Declare Sub A Lib \"x\" ()\n", u"A", "clash A (M:1)"},
      {u"Type A\nx As Long\nEnd Type\n", u"A", "insert A"},
      {u"Sub S()\nConst A = 2\nDim A\nEnd Sub\n", u"A", "insert A"},
      {u"' Const A = 1\n", u"A", "insert A"},
      {u"Const BIG = 65535\n", u"BIG", "present BIG (M:1)"},
      {u"Const BIG = &HFFFF\n", u"BIG", "differs BIG (M:1)"},
      {u"Private Declare Sub Sleep _\n Lib \"KERNEL32.DLL\" Alias \"Sleep\" (ByVal ms&)\n",
       u"Sleep", "present Sleep (M:1)"},
      {u"Declare Sub Sleep Lib \"kernel32\" (ms As Long)\n", u"Sleep", "differs Sleep (M:1)"},
      {u"Declare Function Sleep Lib \"kernel32\" (ByVal ms As Long) As Long\n", u"Sleep",
       "differs Sleep (M:1)"},
      {u"Dim Point\nSub POINT()\nEnd Sub\n", u"POINT", "insert POINT"},
      {u"Type POINT\n X As Long ' x\n\n Y As Long\nEnd Type\n", u"POINT", "present POINT (M:1)"},
      {u"Type POINT\ny As Long\nx As Long\nEnd Type\n", u"POINT", "differs POINT (M:1)"},
      {u"Enum POINT\nx\nEnd Enum\n", u"POINT", "clash POINT (M:1)"},
      {u"", u"FindFirst", "insert FindFirst, insert FIND_DATA, insert FILETIME, insert MAX_PATH"},
      {u"Const MAX_PATH = 260\n", u"FIND_DATA",
       "insert FIND_DATA, insert FILETIME, present MAX_PATH (M:1)"},
  };
  ExpectRows(kRows);
}

TEST(InsertionPlan, PutsNothingIntoAModuleWhoseHeaderHasNoEnd) {
  for (const auto* const text :
       {u"VERSION 5.00\nBegin VB.Form M\n",
        u"VERSION 5.00\nBegin VB.Form M\nAttribute VB_Name = \"M\"\nSub S()\nEnd Sub\n"}) {
    auto project = Project(text, vb::ModuleKind::kForm);
    const auto& plan = project.Plan({u"A"});
    EXPECT_TRUE(plan.IsRefused());
    EXPECT_TRUE(plan.IsEmpty());
    EXPECT_TRUE(plan.Insertions().empty());
  }
  auto whole = Project(u"VERSION 5.00\nBegin VB.Form M\nEnd\n", vb::ModuleKind::kForm);
  EXPECT_FALSE(whole.Plan({u"A"}).IsRefused());
}

TEST(InsertionPlan, CountsDeclarationsOfBranchesThatTheTargetCompiles) {
  const Row kRows[] = {
      {u"#If Win16 Then\nConst A = 5\n#End If\n", u"A", "insert A"},
      {u"#If Win32 Then\nConst A = 1\n#End If\n", u"A", "present A (M:2)"},
      {u"#If VBA7 Then\nConst A = 5\n#Else\nConst A = 1\n#End If\n", u"A", "present A (M:4)"},
      {u"#If X Then\nConst A = 1\n#End If\n", u"A", "insert A (M:2)"},
      {u"#If X Then\nConst A = 1\n#Else\nConst A = 1\n#End If\n", u"A", "present A (M:2)"},
      {u"#If X Then\nConst A = 1\n#ElseIf Y Then\nConst A = 1\n#End If\n", u"A", "insert A (M:2)"},
      {u"#If X Then\nConst A = 2\n#End If\n", u"A", "differs A (M:2)"},
      {u"#If X Then\n#If Y Then\nConst A = 1\n#End If\n#End If\n", u"A", "insert A (M:3)"},
      {u"#If Win32 Then\n#If Y Then\nConst A = 1\n#End If\n#End If\n", u"A", "insert A (M:3)"},
  };
  ExpectRows(kRows);
}

TEST(InsertionPlan, PutsIntoTheOtherBranchWhatOneHas) {
  auto project = Project(u"#If X Then\nConst A = 1\n#End If\n");
  project.Plan({u"A"});
  EXPECT_EQ(ToUtf8(project.Changed()),
            "#If X Then\nConst A = 1\n#End If\n\n#If X Then\n#Else\nPrivate Const A = 1\n#End "
            "If\n");
}

TEST(InsertionPlan, TakesPublicDeclarationsOfOtherModulesForThere) {
  struct Case {
    std::u16string_view other;
    vb::ModuleKind kind;
    std::string_view told;
  };
  constexpr auto kStandard = vb::ModuleKind::kStandard;
  constexpr auto kClass = vb::ModuleKind::kClass;
  const Case kCases[] = {
      {u"Public Const A = 1\n", kStandard, "present A (N:1)"},
      {u"Global Const A = 1\n", kStandard, "present A (N:1)"},
      {u"Public Const A = 7\n", kStandard, "differs A (N:1)"},
      {u"Private Const A = 7\n", kStandard, "insert A"},
      {u"Const A = 7\n", kStandard, "insert A"},
      {u"Public A As Long\n", kStandard, "clash A (N:1)"},
      {u"Dim A As Long\n", kStandard, "insert A"},
      {u"Sub A()\nEnd Sub\n", kStandard, "clash A (N:1)"},
      {u"Private Sub A()\nEnd Sub\n", kStandard, "insert A"},
      {u"Public A As Long\nSub A()\nEnd Sub\n", kClass, "insert A"},
      {u"Public Enum E\nA = 1\nEnd Enum\n", kClass, "present A (N:2)"},
      {u"Attribute VB_Name = \"A\"\n", kClass, "clash A (N:1)"},
  };
  for (const auto& [other, kind, told] : kCases) {
    auto project = Project(u"Option Explicit\n");
    project.Add(kind == kClass && other.starts_with(u"Attr") ? u"" : u"N", std::u16string(other),
                kind);
    const auto expected = other.starts_with(u"Attr") ? "clash A (A:1)" : told;
    EXPECT_EQ(Told(project.Plan({u"A"})), expected) << ToUtf8(other);
  }
}

TEST(InsertionPlan, OwnDeclarationsCountBeforePublicOnes) {
  auto project = Project(u"Const A = 1\n");
  project.Add(u"N", u"Public Const A = 9\n");
  EXPECT_EQ(Told(project.Plan({u"A"})), "present A (M:1)");
}

TEST(InsertionPlan, ControlsOfAFormTakeNames) {
  auto project = Project(u"VERSION 5.00\nBegin VB.Form F\n Begin VB.Timer A\n End\nEnd\n",
                         vb::ModuleKind::kForm);
  EXPECT_EQ(Told(project.Plan({u"A"})), "clash A (M:3)");
  EXPECT_EQ(HolderText(project.Plan({u"A"}).Entries()[0].found->holder), "control");
}

TEST(InsertionPlan, GivesTheScopeThatTheModulesKindAllows) {
  using enum vb::ModuleKind;
  for (const auto kind : {kClass, kForm, kControl, kDocument, kPropertyPage}) {
    auto project = Project(u"", kind);
    auto& plan = project.Plan({u"A"}, {.scope = vb::Scope::kPublic});
    EXPECT_EQ(plan.Scope(), vb::Scope::kPrivate);
    EXPECT_EQ(ToUtf8(project.Changed()), "Private Const A = 1\n");
  }
  auto project = Project(u"");
  EXPECT_EQ(project.Plan({u"A"}, {.scope = vb::Scope::kPublic}).Scope(), vb::Scope::kPublic);
  EXPECT_EQ(ToUtf8(project.Changed()), "Public Const A = 1\n");
}

struct Placed {
  std::u16string_view before;
  std::initializer_list<std::u16string_view> names;
  std::u16string_view after;
};

void ExpectPlaced(std::span<const Placed> cases) {
  for (const auto& [before, names, after] : cases) {
    auto project = Project(before);
    project.Plan(names);
    EXPECT_EQ(ToUtf8(project.Changed()), ToUtf8(after)) << ToUtf8(before);
  }
}

constexpr std::u16string_view kSub = u"Sub S()\nEnd Sub\n";
#define SUB u"Sub S()\nEnd Sub\n"
#define A_LINE u"Private Const A = 1\n"
#define SLEEP_LINE u"Private Declare Sub Sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)\n"
#define POINT_LINES u"Private Type POINT\n\tx As Long\n\ty As Long\nEnd Type\n"

TEST(InsertionPlan, FindsThePlaceOfDeclarations) {
  const Placed kCases[] = {
      {u"", {u"A"}, A_LINE},
      {SUB, {u"A"}, A_LINE u"\n" SUB},
      {u"Option Explicit\n" SUB, {u"A"}, u"Option Explicit\n\n" A_LINE u"\n" SUB},
      {u"Option Explicit\n\n" SUB, {u"A"}, u"Option Explicit\n\n" A_LINE u"\n" SUB},
      {u"Option Explicit\n\n' about S\n' more\n" SUB,
       {u"A"},
       u"Option Explicit\n\n" A_LINE u"\n' about S\n' more\n" SUB},
      {u"' about S\n" SUB, {u"A"}, A_LINE u"\n' about S\n" SUB},
      {u"' the module\n\n' about S\n" SUB, {u"A"}, u"' the module\n\n" A_LINE u"\n' about S\n" SUB},
      {u"Const Z = 1\nDim x\n" SUB, {u"A"}, u"Const Z = 1\n" A_LINE u"Dim x\n" SUB},
      {u"Const Z = 1\n\nDeclare Sub D Lib \"l\" ()\n\nDim x\n",
       {u"A", u"Sleep"},
       u"Const Z = 1\n" A_LINE u"\nDeclare Sub D Lib \"l\" ()\n" SLEEP_LINE u"\nDim x\n"},
      {u"Option Explicit\nDim x\n",
       {u"A", u"Sleep", u"POINT"},
       u"Option Explicit\nDim x\n\n" A_LINE u"\n" POINT_LINES u"\n" SLEEP_LINE},
      {u"Type T\n a As Long\nEnd Type\nDim x\n",
       {u"POINT"},
       u"Type T\n a As Long\nEnd Type\n\n" POINT_LINES u"\nDim x\n"},
      {u"#If X Then\nConst Z = 1\n#End If\n" SUB,
       {u"A"},
       u"#If X Then\nConst Z = 1\n#End If\n\n" A_LINE u"\n" SUB},
      {u"#If X Then\n" SUB u"#End If\n", {u"A"}, A_LINE u"\n#If X Then\n" SUB u"#End If\n"},
      {u"Const Z = 1 + _\n 2\nDim x\n", {u"A"}, u"Const Z = 1 + _\n 2\n" A_LINE u"Dim x\n"},
      {u"Const Z = 1 ' c _\n more\nDim x\n", {u"A"}, u"Const Z = 1 ' c _\n more\nDim x\n\n" A_LINE},
      {u"DefLng A-Z\nOption Base 1\n", {u"A"}, u"DefLng A-Z\nOption Base 1\n\n" A_LINE},
      {u"Const Z = 1\nOption Explicit\n", {u"A"}, u"Const Z = 1\nOption Explicit\n\n" A_LINE},
      {u"Attribute VB_Name = \"M\"\n" SUB,
       {u"A"},
       u"Attribute VB_Name = \"M\"\n\n" A_LINE u"\n" SUB},
      {u"Attribute VB_Name = \"M\"\nConst Z = 1\nPublic x\nAttribute x.VB_VarHelpID = -1\n",
       {u"POINT"},
       u"Attribute VB_Name = \"M\"\nConst Z = 1\nPublic x\nAttribute x.VB_VarHelpID = "
       u"-1\n\n" POINT_LINES},
      {u"Const Z = 1: Dim x\n" SUB, {u"A"}, u"Const Z = 1: Dim x\n" A_LINE SUB},
      {u"VERSION 5.00\nBegin VB.Form F\n Caption = \"x\"\nEnd\nAttribute VB_Name = \"F\"\n" SUB,
       {u"A"},
       u"VERSION 5.00\nBegin VB.Form F\n Caption = \"x\"\nEnd\nAttribute VB_Name = "
       u"\"F\"\n\n" A_LINE u"\n" SUB},
  };
  ExpectPlaced(kCases);
}

TEST(InsertionPlan, KeepsWhatOthersNeedAboveThem) {
  const Placed kCases[] = {
      // A constant in front of the record that needs it, though the constants stand behind.
      {u"Type T\n a(A) As Long\nEnd Type\nConst Z = 1\n",
       {u"A"},
       A_LINE u"\nType T\n a(A) As Long\nEnd Type\nConst Z = 1\n"},
      {u"Const Z = B\n", {u"B"}, A_LINE u"Private Const B = A + 1\nConst Z = B\n"},
      // A record behind the constant in its bounds, though records stand in front.
      {u"Type T\n a As Long\nEnd Type\nConst MAX_PATH = 260\n",
       {u"FIND_DATA"},
       u"Type T\n a As Long\nEnd Type\n\nPrivate Type FILETIME\n\tLow As Long\n\tHigh As Long\n"
       u"End Type\n\nConst MAX_PATH = 260\n\nPrivate Type FIND_DATA\n\tTime As FILETIME\n\tName "
       u"As String * MAX_PATH\nEnd Type\n"},
      {u"Dim x, _\n y(A) As POINT\n",
       {u"A", u"POINT"},
       A_LINE u"\nDim x, _\n y(A) As POINT\n\n" POINT_LINES},
      // In front of the branch that needs it.
      {u"Dim x\n#If X Then\nConst Z = A\n#End If\n",
       {u"A"},
       u"Dim x\n\n" A_LINE u"\n#If X Then\nConst Z = A\n#End If\n"},
  };
  ExpectPlaced(kCases);
}

TEST(InsertionPlan, LeavesOutWhatIsUnticked) {
  auto project = Project(kSub);
  auto& plan = project.Plan({u"A", u"Sleep"});
  plan.LeaveOut(0, true);
  EXPECT_EQ(ToUtf8(project.Changed()), ToUtf8(SLEEP_LINE u"\n" SUB));
  plan.LeaveOut(1, true);
  EXPECT_TRUE(plan.IsEmpty());
  EXPECT_TRUE(plan.Insertions().empty());
  plan.LeaveOut(0, false);
  EXPECT_FALSE(plan.IsEmpty());
}

TEST(InsertionPlan, InsertsUnderAnotherName) {
  auto project =
      Project(u"Sub Sleep()\nEnd Sub\nType FILETIME\n x As Long\nEnd Type\nConst MAX_PATH = 3\n");
  auto& plan = project.Plan({u"Sleep", u"FindFirst"});
  EXPECT_EQ(Told(plan),
            "clash Sleep (M:1), insert FindFirst, insert FIND_DATA, differs FILETIME (M:3), "
            "differs MAX_PATH (M:6)");
  EXPECT_EQ(plan.FreeName(0), u"Sleep2");
  ASSERT_TRUE(plan.InsertAs(0, u"Sleep2"));
  ASSERT_TRUE(plan.InsertAs(3, u"FileTimeOfWindows"));
  ASSERT_TRUE(plan.InsertAs(4, plan.FreeName(4)));
  EXPECT_EQ(ToUtf8(plan.Entries()[0].text),
            "Private Declare Sub Sleep2 Lib \"kernel32\" Alias \"Sleep\" (ByVal dwMilliseconds As "
            "Long)");
  EXPECT_EQ(ToUtf8(plan.Entries()[2].text),
            "Private Type FIND_DATA\r\n\tTime As FileTimeOfWindows\r\n\tName As String * "
            "MAX_PATH2\r\nEnd Type");
  auto again = Project(project.Changed());
  EXPECT_EQ(Told(again.Plan({u"FindFirst"})).find("insert"), std::string::npos);
  plan.Keep(3);
  EXPECT_EQ(ToUtf8(plan.Entries()[2].text),
            "Private Type FIND_DATA\r\n\tTime As FILETIME\r\n\tName As String * MAX_PATH2\r\n"
            "End Type");
}

TEST(InsertionPlan, WhatOnlyAKeptDeclarationNeedsStaysOut) {
  auto project = Project(u"Type FIND_DATA\nx As Long\nEnd Type\n");
  auto& plan = project.Plan({u"FIND_DATA", u"A"});
  EXPECT_FALSE(plan.Entries()[2].is_needed);
  EXPECT_EQ(ToUtf8(project.Changed()), ToUtf8(u"Type FIND_DATA\nx As Long\nEnd Type\n\n" A_LINE));
  ASSERT_TRUE(plan.InsertAs(0, u"FIND_DATA_A"));
  EXPECT_TRUE(plan.Entries()[2].IsInserted());
  plan.LeaveOut(0, true);
  EXPECT_FALSE(plan.Entries()[2].IsInserted());
}

TEST(InsertionPlan, ADeclareWithAnAliasKeepsItUnderAnotherName) {
  auto project = Project(u"Dim FindFirst\n");
  auto& plan = project.Plan({u"FindFirst"});
  ASSERT_TRUE(plan.InsertAs(0, u"FindIt"));
  EXPECT_TRUE(plan.Entries()[0].text.contains(u"FindIt Lib \"kernel32\" Alias \"FindFirstA\" ("));
}

TEST(InsertionPlan, RefusesOtherNamesThatDoNotDo) {
  auto project = Project(u"Const A = 2\nDim taken\n");
  auto& plan = project.Plan({u"A", u"Sleep"});
  for (const auto name : {u"taken", u"A", u"sleep", u"M"})
    EXPECT_EQ(plan.InsertAs(0, name).error(), NameRefusal::kTaken) << ToUtf8(name);
  for (const auto name : {u"", u"1a", u"a b", u"Dim"})
    EXPECT_EQ(plan.InsertAs(0, name).error(), NameRefusal::kNotLegal) << ToUtf8(name);
  EXPECT_FALSE(plan.Entries()[0].IsInserted());
}

TEST(InsertionPlan, WritesForTheTargetAndNeighborsShareTheirBranch) {
  const KnowledgeOf64 knowledge({});
  const PlanOptions options{.target = vb::Audience::kVba7, .knowledge = &knowledge};
  auto project = Project(u"Option Explicit\n");
  project.Plan({u"Sleep", u"GetTickCount"}, options);
  const auto changed = project.Changed();
  EXPECT_EQ(ToUtf8(changed),
            "Option Explicit\n\n#If VBA7 Then\n"
            "Private Declare PtrSafe Sub Sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)\n"
            "Private Declare PtrSafe Function GetTickCount Lib \"kernel32\" () As Long\n#Else\n"
            "Private Declare Sub Sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)\n"
            "Private Declare Function GetTickCount Lib \"kernel32\" () As Long\n#End If\n");
  auto again = Project(changed);
  EXPECT_EQ(Told(again.Plan({u"Sleep", u"GetTickCount"}, options)),
            "present Sleep (M:7), present GetTickCount (M:8)");
  auto old = Project(u"Declare Sub Sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)\n");
  EXPECT_EQ(Told(old.Plan({u"Sleep"}, options)), "differs Sleep (M:1)");
}

TEST(InsertionPlan, TellsNeedsThatNoLibraryHas) {
  PlannedProject project(
      LibraryOf("Declare Sub D Lib \"l\" (x As Lost, y As Long, z As Object, p As IUnknown)\n"));
  project.Add(u"M", u"");
  project.Plan({u"D"});
  ASSERT_EQ(project.Wanted().unknown.size(), 1u);
  EXPECT_EQ(project.Wanted().unknown[0].name, u"Lost");
  EXPECT_EQ(project.Wanted().unknown[0].via, u"D");
}

}  // namespace
}  // namespace declarium::plan
