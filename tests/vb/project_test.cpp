#include "vb/project.h"

#include <gtest/gtest.h>
#include <string>

#include "text/text.h"
#include "vb/definitions.h"

namespace declarium::vb {
namespace {

std::string Modules(const Project& project) {
  std::string modules;
  for (const auto& module : project.modules) {
    modules += ModuleKindText(module.kind);
    modules += " " + ToUtf8(module.name) + "|" + ToUtf8(module.path) + "\n";
  }
  return modules;
}

TEST(Projects, ListModulesOfEveryKindInTheOrderOfTheFile) {
  const auto project = ReadProject(
      u"Type=Exe\r\nForm=B_Form.frm\r\nModule=CModule; ..\\Common\\C_Module.bas\r\n"
      u"class=DClass;D_Class.cls\r\nUserControl=U.ctl\r\nUserDocument=D.dob\r\n"
      u"PropertyPage=P.pag\r\nDesigner=Env.Dsr\r\nModule=Odd; Odd.txt\r\nRelatedDoc=Read me.txt\r\n"
      u"Startup=\"Sub Main\"\r\nName=\"Project1\"\r\n");
  EXPECT_EQ(
      Modules(project),
      "form |B_Form.frm\nstandard CModule|..\\Common\\C_Module.bas\nclass DClass|D_Class.cls\n"
      "control |U.ctl\ndocument |D.dob\nproperty page |P.pag\nclass |Env.Dsr\n"
      "standard Odd|Odd.txt\n");
  EXPECT_EQ(project.name, u"Project1");
  EXPECT_TRUE(project.errors.empty());
}

TEST(Projects, TellWhereAModulesPathStands) {
  const std::u16string_view text = u"Type=Exe\nModule=M; M.bas\r\n\rClass=C; C.cls";
  const auto project = ReadProject(text);
  ASSERT_EQ(project.modules.size(), 2u);
  EXPECT_EQ(project.modules[0].place, (Place{19, 2, 11}));
  EXPECT_EQ(project.modules[1].place.line, 4u);
  for (const auto& module : project.modules)
    EXPECT_EQ(text.substr(module.place.offset, module.path.size()), module.path);
}

TEST(Projects, OfOldVersionsNameTheirFilesWithoutAKey) {
  const auto project = ReadProject(
      u"FORM1.FRM\r\nC:\\WINDOWS\\SYSTEM\\CMDIALOG.VBX\r\nGLOBAL.BAS\r\n"
      u"ProjWinSize=152,402,248,215\r\nProjWinShow=2\r\n");
  EXPECT_EQ(Modules(project), "form |FORM1.FRM\nstandard |GLOBAL.BAS\n");
  ASSERT_EQ(project.references.size(), 1u);
  EXPECT_EQ(project.references[0].path, u"C:\\WINDOWS\\SYSTEM\\CMDIALOG.VBX");
}

TEST(Projects, TellTheirReferences) {
  const auto project = ReadProject(
      u"Reference=*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#..\\STDOLE2.TLB#OLE Automation\n"
      u"Reference=*\\A..\\Other\\Other.vbp\n"
      u"Object={F9043C88-F6F2-101A-A3C9-08002B2F49FB}#1.2#0; COMDLG32.OCX\n"
      u"Reference=*\\G{0}#1.0\n");
  ASSERT_EQ(project.references.size(), 4u);
  EXPECT_EQ(project.references[0].id, u"{00020430-0000-0000-C000-000000000046}#2.0#0");
  EXPECT_EQ(project.references[0].path, u"..\\STDOLE2.TLB");
  EXPECT_EQ(project.references[0].description, u"OLE Automation");
  EXPECT_EQ(project.references[0].place.line, 1u);
  EXPECT_EQ(project.references[1].path, u"..\\Other\\Other.vbp");
  EXPECT_EQ(project.references[2].id, u"{F9043C88-F6F2-101A-A3C9-08002B2F49FB}#1.2#0");
  EXPECT_EQ(project.references[2].path, u"COMDLG32.OCX");
  EXPECT_EQ(project.references[3].id, u"{0}#1.0");
  EXPECT_EQ(project.references[3].path, u"");
}

TEST(Projects, DefineConstantsForTheirModules) {
  const auto project = ReadProject(u"Type=Exe\r\nCondComp=\"Debugging = -1 : Limit=&H10:\"\r\n");
  EXPECT_TRUE(project.errors.empty());
  ASSERT_EQ(project.constants.size(), 2u);
  EXPECT_EQ(project.constants[0].name, u"Debugging");
  EXPECT_EQ(project.constants[0].value, u"-1");
  EXPECT_EQ(project.constants[1].name, u"Limit");
  EXPECT_EQ(project.constants[1].value, u"&H10");
  EXPECT_EQ(project.constants[1].place, (Place{37, 2, 28}));
  EXPECT_TRUE(ReadProject(u"CondComp=\"\"").constants.empty());
}

TEST(Projects, SayWhatTheyCannotRead) {
  const auto project = ReadProject(
      u"Module=M;\nForm=\nCondComp=\"A = 1 : B 2 : C = 3, D = 4 : E = 5\"\nModule=N; N.bas\n");
  ASSERT_EQ(project.errors.size(), 4u);
  EXPECT_EQ(project.errors[0].expected, "a file");
  EXPECT_EQ(project.errors[0].place.line, 1u);
  EXPECT_EQ(project.errors[1].place, (Place{15, 2, 6}));
  EXPECT_EQ(project.errors[2].expected, "\"=\"");
  EXPECT_EQ(project.errors[2].found, u"2");
  EXPECT_EQ(project.errors[3].found, u",");
  EXPECT_EQ(project.constants.size(), 2u);
  EXPECT_EQ(Modules(project), "standard N|N.bas\n");
}

TEST(Projects, EndWhereTheSectionsOfAddInsBegin) {
  const auto project = ReadProject(
      u"Module=M; M.bas\r\n\r\n[MS Transaction Server]\r\nAutoRefresh=1\r\nModule=X; X.bas\r\n");
  EXPECT_EQ(Modules(project), "standard M|M.bas\n");
}

TEST(ProjectGroups, ListEachProjectOnce) {
  const auto group = ReadProjectGroup(
      u"VBGROUP 5.0\r\nStartupProject=Server\\Server.vbp\r\nProject=Client\\Client.vbp\r\n"
      u"Project=server\\server.vbp\r\n");
  ASSERT_EQ(group.projects.size(), 2u);
  EXPECT_EQ(group.projects[0].path, u"Server\\Server.vbp");
  EXPECT_EQ(group.projects[1].path, u"Client\\Client.vbp");
  EXPECT_EQ(group.projects[1].place, (Place{55, 3, 9}));
  EXPECT_TRUE(ReadProjectGroup(u"VBGROUP 5.0\nStartupProject=(None)\n").projects.empty());
  EXPECT_EQ(ReadProjectGroup(u"Project=\n").errors.size(), 1u);
}

TEST(ProjectFiles, AreKnownByTheirExtension) {
  EXPECT_EQ(ProjectFileKindOf(u"C:\\a.b\\App.VBP"), ProjectFileKind::kProject);
  EXPECT_EQ(ProjectFileKindOf(u"old.mak"), ProjectFileKind::kProject);
  EXPECT_EQ(ProjectFileKindOf(u"all.vbg"), ProjectFileKind::kGroup);
  EXPECT_FALSE(ProjectFileKindOf(u"vbp"));
  EXPECT_FALSE(ProjectFileKindOf(u"module.bas"));
}

TEST(ProjectConstants, DecideBranchesBehindTheModulesOwn) {
  const auto module = ReadModule(
      u"#Const Mine = 0\n#If Mine Then\nConst A = 1\n#End If\n#If Theirs Then\nConst B = 1\n"
      u"#Else\nConst B = 2\n#End If\n#If VBA6 Then\nConst C = 1\n#End If");
  const auto project = ReadProject(u"CondComp=\"Mine = 1 : theirs = 0 : VBA6 = 0\"");
  const auto branches = BranchesOf(module, Target::kVb6, project.constants);
  ASSERT_EQ(branches.size(), 5u);
  EXPECT_EQ(branches[1], Branch::kLeftOut);   // the module's own 0
  EXPECT_EQ(branches[2], Branch::kLeftOut);   // the project's 0
  EXPECT_EQ(branches[3], Branch::kCompiled);  // its Else
  EXPECT_EQ(branches[4], Branch::kLeftOut);   // the project hides the system's
  Definitions definitions(Target::kVb6);
  definitions.Add(module, project.constants);
  EXPECT_EQ(definitions.ValueOf(u"B"), Value::Integer(2));
}

}  // namespace
}  // namespace declarium::vb
