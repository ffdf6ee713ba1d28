#include "vb/definitions.h"

#include <gtest/gtest.h>

namespace declarium::vb {
namespace {

class DefinitionsOf {
 public:
  explicit DefinitionsOf(std::u16string_view text, Target target = Target::kVb6)
      : module_(ReadModule(text)), definitions_(target) {
    definitions_.Add(module_);
  }

  Definitions* operator->() { return &definitions_; }
  const Module& module() const { return module_; }

 private:
  Module module_;
  Definitions definitions_;
};

TEST(Definitions, FollowConstantsThroughEachOther) {
  DefinitionsOf all(u"Const A = B + 1\nConst B As Long = &H10\nConst S = \"x\" & \"y\"");
  EXPECT_EQ(all->ValueOf(u"a"), Value::Long(17));
  EXPECT_EQ(all->ValueOf(u"Module1.S"), Value::String(u"xy"));
  EXPECT_FALSE(all->ValueOf(u"C"));
}

TEST(Definitions, OfThemselvesHaveNoValue) {
  DefinitionsOf all(u"Const A = B\nConst B = A\nType T\nx As T\nEnd Type");
  EXPECT_FALSE(all->ValueOf(u"A"));
  EXPECT_FALSE(all->LayoutOf(*all.module().declarations[2].As<Record>()));
}

TEST(Definitions, CountEnumerationsUp) {
  DefinitionsOf all(u"Enum E\nA\nB\nC = A + 10\n[_D]\nEnd Enum\nConst X = E.C");
  EXPECT_EQ(all->ValueOf(u"B"), Value::Long(1));
  EXPECT_EQ(all->ValueOf(u"_D"), Value::Long(11));
  EXPECT_EQ(all->ValueOf(u"X"), Value::Long(10));
}

TEST(Definitions, LayRecordsOutByTheirNames) {
  DefinitionsOf all(
      u"Type T\na(N) As Byte\nb As P\nc As E\nEnd Type\nConst N = 2\n"
      u"Type P\nx As Double\nEnd Type\nEnum E\nM\nEnd Enum");
  const auto layout = all->LayoutOf(*all.module().declarations[0].As<Record>());
  ASSERT_TRUE(layout) << layout.error();
  EXPECT_EQ(layout->places[1].offset, 4);
  EXPECT_EQ(layout->extent.size, 16);
}

TEST(Definitions, LeaveOutWhatTheTargetDoes) {
  const std::u16string_view text =
      u"#Const Own = 1\n#If VBA7 Then\nConst A = 7\n#Else\nConst A = 6\n#End If\n"
      u"#If Own Then\nConst B = 1\n#Else\nConst B = 2\n#End If\n#If Other Then\nConst C = 1\n"
      u"#Else\nConst C = 2\n#End If";
  EXPECT_EQ(DefinitionsOf(text)->ValueOf(u"A"), Value::Integer(6));
  EXPECT_EQ(DefinitionsOf(text, Target::kVba7x64)->ValueOf(u"A"), Value::Integer(7));
  EXPECT_EQ(DefinitionsOf(text)->ValueOf(u"B"), Value::Integer(1));
  EXPECT_EQ(DefinitionsOf(text)->ValueOf(u"C"), Value::Integer(1));
  const auto module = ReadModule(text);
  EXPECT_EQ(BranchesOf(module, Target::kVb6),
            (std::vector{Branch::kCompiled, Branch::kLeftOut, Branch::kCompiled, Branch::kCompiled,
                         Branch::kLeftOut, Branch::kUnknown, Branch::kUnknown}));
}

TEST(Definitions, LookFurtherOut) {
  DefinitionsOf outer(u"Const A = 1\nConst B = 1\nType P\nx As Long\nEnd Type");
  const auto module = ReadModule(u"Const A = 2\nType T\ny As P\nEnd Type");
  Definitions inner(Target::kVb6, outer.operator->());
  inner.Add(module);
  EXPECT_EQ(inner.ValueOf(u"A"), Value::Integer(2));
  EXPECT_EQ(inner.ValueOf(u"B"), Value::Integer(1));
  EXPECT_TRUE(inner.LayoutOf(*module.declarations[1].As<Record>()));
}

}  // namespace
}  // namespace declarium::vb
