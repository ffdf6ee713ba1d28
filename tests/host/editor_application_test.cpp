#include "host/com/editor_application.h"

#include <gtest/gtest.h>
#include <vector>

#include "host/com/com_object.h"
#include "host/com/editor_interface.h"

namespace declarium::com {
namespace {

// The add-in in an editor with one component, number 7, that writes down what it is called with.
class FakeEditor final : public DispatchObject<IDispatch> {
 public:
  std::vector<std::u16string> written;
  int shares = 0;
  int selection = 1;

  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) noexcept override {
    return DISP_E_UNKNOWNNAME;
  }
  STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO*, UINT*) noexcept override {
    Variant answer(0);
    if (member == editor::kActiveComponent.id) answer = Variant(++shares > 0 ? 7 : 0);
    if (member == editor::kHasCode.id) answer = Variant(1);
    if (member == editor::kSelection.id) answer = Variant(selection);
    if (member == editor::kWindow.id) answer = Variant(-2);
    if (member == editor::kGiveBack.id) --shares;
    // Arguments come last first.
    if (member == editor::kInsertLines.id || member == editor::kReplaceLine.id) {
      written.push_back(TextOf(parameters->rgvarg[0].bstrVal));
    }
    return VariantCopy(result, answer.Borrow());
  }

 private:
  [[nodiscard]] void* Find(REFIID iid) noexcept override {
    const bool has = iid == IID_IUnknown || iid == IID_IDispatch;
    return has ? static_cast<IDispatch*>(this) : nullptr;
  }
};

class EditorApplicationTest : public testing::Test {
 protected:
  EditorApplicationTest()
      : editor_(ComPtr<FakeEditor>::Attach(new FakeEditor)),
        application_(MakeEditorApplication(ComPtr<IDispatch>(editor_.Get()), boundary_)) {}

  Boundary boundary_;
  ComPtr<FakeEditor> editor_;
  std::unique_ptr<HostApplication> application_;
};

TEST_F(EditorApplicationTest, TheLastLineIsWrittenWithoutItsEnd) {
  const auto module = application_->ActiveModule().value();
  ASSERT_TRUE(module->InsertLines(1, u"Const A = 1\r\nConst B = 2\r\n"));
  ASSERT_TRUE(module->InsertLines(1, u"Const A = 1"));
  ASSERT_TRUE(module->InsertLines(1, u""));
  ASSERT_TRUE(module->ReplaceLine(1, u"Const C = 3\r\n"));
  EXPECT_EQ(editor_->written, (std::vector<std::u16string>{u"Const A = 1\r\nConst B = 2",
                                                           u"Const A = 1", u"", u"Const C = 3"}));
}

TEST_F(EditorApplicationTest, ALineThatTheEditorWouldCutIsRefusedBeforeAnythingIsWritten) {
  const auto module = application_->ActiveModule().value();
  const std::u16string longest(1022, u'x');
  ASSERT_TRUE(module->InsertLines(1, u"Const A = 1\r\n" + longest + u"\r\n"));
  editor_->written.clear();
  const auto refused = module->InsertLines(1, u"Const A = 1\r\n" + longest + u"x\r\n");
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.error().code, kLineTooLong);
  EXPECT_TRUE(editor_->written.empty());
}

TEST_F(EditorApplicationTest, EveryShareIsGivenBack) {
  {
    const auto module = application_->ActiveModule().value();
    const auto owner = module->Owner().value();
    const auto again = application_->ActiveModule().value();
    EXPECT_TRUE(module->IsSameAs(*again).value());
    EXPECT_EQ(editor_->shares, 2);
  }
  EXPECT_EQ(editor_->shares, 0);
}

TEST_F(EditorApplicationTest, SelectionMovesOnceForEachNumber) {
  EXPECT_TRUE(application_->HasMovedSelection());
  EXPECT_FALSE(application_->HasMovedSelection());
  editor_->selection = 5;
  EXPECT_TRUE(application_->HasMovedSelection());
  EXPECT_FALSE(application_->HasMovedSelection());
}

TEST_F(EditorApplicationTest, WindowHandlesKeepTheirSign) {
  EXPECT_EQ(application_->MainWindow().value(), static_cast<std::uintptr_t>(-2));
  EXPECT_EQ(application_->Target(), declarium::vb::Audience::kVba7);
}

}  // namespace
}  // namespace declarium::com
