// The search dialog beside a main window, over a small library of every kind.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "library/item.h"
#include "library/library.h"
#include "search/ui/search_dialog.h"
#include "source/item_text.h"
#include "toolkit/captioned.h"
#include "toolkit/headless/form.h"
#include "toolkit/headless/list_view.h"
#include "toolkit/headless/picture_box.h"
#include "toolkit/headless/toolkit.h"
#include "toolkit/headless/user.h"
#include "toolkit/progress_bar.h"
#include "toolkit/text_box.h"

namespace declarium {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

inline constexpr ControlDefinition kMainControls[] = {
    {.kind = ControlKind::kTextBox, .name = "txtInput", .bounds = {8, 8, 100, 21}}};
inline constexpr FormDefinition kMainForm = {
    .name = "frmMain", .size = {300, 200}, .controls = kMainControls};

inline void AddItem(Library& library, Kind kind, std::u16string_view name,
                    std::u16string_view item) {
  auto lists = library[kind];
  lists.names.Add(name);
  lists.items.Add(item);
  library.SetItems(kind, std::move(lists));
}

inline std::u16string ConstItem(std::u16string_view type, std::u16string_view value) {
  return std::u16string(type) + kValueSeparator + std::u16string(value);
}
inline std::u16string FunctionItem(std::u16string_view tail) {
  return kFunctionMarker + std::u16string(tail);
}
inline std::u16string TypeItem(std::vector<std::u16string> members) {
  std::u16string item(1, kMembersSeparator);
  for (std::size_t i = 0; i < members.size(); ++i) {
    if (i > 0) item += kMemberSeparator;
    item += members[i];
  }
  return item;
}

// Names in ascending order, as a library keeps them.
inline Library SampleLibrary() {
  Library library;
  AddItem(library, Kind::kConst, u"LB_MAX", ConstItem(u"Long", u"MAX_PATH + 1"));
  AddItem(library, Kind::kConst, u"MAX_PATH", ConstItem(u"", u"260"));
  AddItem(library, Kind::kConst, u"SW_BASE", ConstItem(u"Long", u"&H10 ' window base"));
  AddItem(library, Kind::kDeclare, u"GetWindow",
          FunctionItem(u"\"user32\" (ByVal hwnd As Long, ByVal wCmd As Long) As Long"));
  AddItem(library, Kind::kDeclare, u"GetWindowRect",
          FunctionItem(u"\"user32\" (ByVal hwnd As Long, lpRect As RECT) As Long"));
  AddItem(library, Kind::kDeclare, u"GetWindowText",
          FunctionItem(u"\"user32\" (ByVal hwnd As Long, ByVal lpString As String) As LongPtr"));
  AddItem(library, Kind::kType, u"FIND", TypeItem({u"cFile As String * MAX_PATH", u"n As Byte"}));
  AddItem(library, Kind::kType, u"MSG", TypeItem({u"hwnd As Long", u"pt As POINTAPI"}));
  AddItem(library, Kind::kType, u"RECT", TypeItem({u"Left As Long", u"Top As Long"}));
  return library;
}

// A toolkit on which a search can take its time.
class TimedToolkit : public headless::HeadlessToolkit {
 public:
  // From now on the clock goes on by this whenever it is read.
  void PassTimeAtEachLook(std::uint32_t milliseconds) { at_each_look_ = milliseconds; }
  [[nodiscard]] std::uint32_t TickCount() const override {
    return HeadlessToolkit::TickCount() + (passed_ += at_each_look_);
  }

 private:
  std::uint32_t at_each_look_ = 0;
  mutable std::uint32_t passed_ = 0;
};

class SearchDialogTest : public ::testing::Test {
 protected:
  SearchDialogTest() : main_(toolkit_.CreateForm(kMainForm)) { main_->Show(); }

  SearchLinks Links() {
    return {.library = [this]() -> const Library& {
              ++searches_and_lookups_;
              return library_;
            },
            .show_item =
                [this](const ItemView& item) {
                  shown_.push_back(ItemText(item.kind, item.name, item.item));
                },
            .add_to_basket =
                [this](Kind kind, std::u16string_view name) {
                  added_.push_back({kind, std::u16string(name)});
                },
            .load_check_boxes = [this] { return stored_; },
            .save_check_boxes = [this](std::u16string_view text) { stored_ = text; }};
  }

  void Open() { dialog_.Show(main_.get()); }

  // The loaded form of that name that was made last; nullptr when there is none.
  headless::HeadlessForm* FindForm(std::string_view name) {
    headless::HeadlessForm* found = nullptr;
    for (auto* form : toolkit_.Forms()) {
      if (form->Name() == name && form->IsLoaded()) found = form;
    }
    return found;
  }
  headless::HeadlessForm& Find() {
    auto* form = FindForm("frmFind");
    if (form == nullptr) throw std::logic_error("the search dialog is not open");
    return *form;
  }

  template <class T>
  T& Get(std::string_view name) {
    return Find().Get<T>(name);
  }
  headless::HeadlessListView& LV1() { return Get<headless::HeadlessListView>("LV1"); }
  void SetChecks(std::u16string_view digits) {
    for (std::size_t i = 0; i < digits.size(); ++i) {
      Get<CheckBox>("Check" + std::to_string(i + 1)).SetValue(digits[i] - u'0');
    }
  }
  std::u16string Checks() {
    std::u16string digits;
    for (int i = 1; i <= 10; ++i) {
      digits += static_cast<char16_t>(u'0' + Get<CheckBox>("Check" + std::to_string(i)).Value());
    }
    return digits;
  }
  void Write(std::string_view box, std::u16string_view text) { Get<TextBox>(box).SetText(text); }
  void PressSearch() { user_.Click(Get<CommandButton>("Command2")); }
  void Search(std::string_view box, std::u16string_view text) {
    Write(box, text);
    PressSearch();
  }
  std::vector<std::u16string> Rows() {
    std::vector<std::u16string> rows;
    for (int i = 1; i <= LV1().Count(); ++i) rows.emplace_back(LV1().Entry(i).text);
    return rows;
  }
  std::u16string CountLabel() { return Get<Label>("labCount").Caption(); }

  TimedToolkit toolkit_;
  headless::HeadlessUser user_{toolkit_};
  std::unique_ptr<Form> main_;
  Library library_ = SampleLibrary();
  std::vector<std::u16string> shown_;
  std::vector<std::pair<Kind, std::u16string>> added_;
  std::u16string stored_;
  int searches_and_lookups_ = 0;
  SearchDialog dialog_{toolkit_, Links()};
};

// Constants V0, V1 ... in the order of their names.
inline Library LargeLibrary(int count) {
  KindLists constants;
  for (int i = 0; i < count; ++i) {
    std::u16string name = u"V0000000";
    for (int rest = i, digit = 7; rest > 0; rest /= 10, --digit) {
      name[static_cast<std::size_t>(digit)] = static_cast<char16_t>(u'0' + rest % 10);
    }
    constants.names.Add(name);
    constants.items.Add(ConstItem(u"Long", u"1"));
  }
  Library library;
  library.SetItems(Kind::kConst, std::move(constants));
  return library;
}

}  // namespace declarium
