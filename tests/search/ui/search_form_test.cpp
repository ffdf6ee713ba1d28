#include "search/ui/search_form.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

namespace declarium {
namespace {

using Places = std::map<std::string_view, Rect>;

// Every control at the form's inner size.
Places PlacesAt(Size inner) {
  Places places;
  for (const auto& control : SearchFormDefinition().controls) {
    places[control.name] = control.bounds;
  }
  for (const auto& [name, bounds] : SearchFormLayout(inner)) places[name] = bounds;
  return places;
}

bool IsFrame(std::string_view name) {
  return name.starts_with("Frame");
}

bool Overlap(const Rect& a, const Rect& b) {
  return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height &&
         b.top < a.top + a.height;
}

void ExpectApartAndInside(Size inner) {
  const auto places = PlacesAt(inner);
  for (const auto& [name, bounds] : places) {
    EXPECT_GE(bounds.left, 0) << name;
    EXPECT_GE(bounds.top, 0) << name;
    EXPECT_LE(bounds.left + bounds.width, inner.width) << name;
    EXPECT_LE(bounds.top + bounds.height, inner.height) << name;
    EXPECT_GT(bounds.height, 0) << name;
    for (const auto& [other, other_bounds] : places) {
      if (name == other || IsFrame(name) || IsFrame(other)) continue;
      EXPECT_FALSE(Overlap(bounds, other_bounds)) << name << " and " << other;
    }
  }
}

TEST(SearchForm, TheTableIsFaultless) {
  EXPECT_TRUE(FindDefinitionFaults(SearchFormDefinition()).empty());
}

TEST(SearchForm, ControlsStandApartInsideTheFormAtAnySize) {
  const auto& form = SearchFormDefinition();
  ExpectApartAndInside(form.size);
  ExpectApartAndInside(form.minimum_size);
  ExpectApartAndInside({1600, 1000});
  ExpectApartAndInside({form.minimum_size.width, 1000});
}

TEST(SearchForm, AtItsOwnSizeEveryControlStandsWhereTheTableSays) {
  for (const auto& control : SearchFormDefinition().controls) {
    EXPECT_EQ(PlacesAt(SearchFormDefinition().size).at(control.name), control.bounds)
        << control.name;
  }
}

TEST(SearchForm, AddedHeightGoesToTheResultsAlone) {
  const auto size = SearchFormDefinition().size;
  const auto before = PlacesAt(size);
  for (const auto& [name, bounds] : PlacesAt({size.width, size.height + 200})) {
    auto expected = before.at(name);
    if (name == "LV1") expected.height += 200;
    EXPECT_EQ(bounds, expected) << name;
  }
}

TEST(SearchForm, AddedWidthGoesToTextsAndResults) {
  const auto size = SearchFormDefinition().size;
  const auto before = PlacesAt(size);
  const auto after = PlacesAt({size.width + 100, size.height});
  for (const auto* name : {"LV1", "Text1", "Text6", "Frame1", "Frame2", "PB"}) {
    EXPECT_EQ(after.at(name).width, before.at(name).width + 100) << name;
  }
  for (const auto* name : {"Check4", "Check9", "Check10", "labCount"}) {
    EXPECT_EQ(after.at(name).left, before.at(name).left + 100) << name;
  }
  for (const auto* name : {"Check1", "Check3", "Label1", "Command1", "Command2"}) {
    EXPECT_EQ(after.at(name), before.at(name)) << name;
  }
}

TEST(SearchForm, BelowTheSmallestSizeNothingShrinksFurther) {
  const auto smallest = PlacesAt(SearchFormDefinition().minimum_size);
  for (const auto& [name, bounds] : PlacesAt({10, 10})) {
    EXPECT_EQ(bounds, smallest.at(name)) << name;
  }
}

TEST(SearchForm, TheTabOrderIsTopToBottomThenLeftToRight) {
  const ControlDefinition* previous = nullptr;
  for (const auto& control : SearchFormDefinition().controls) {
    if (!IsTabStop(control)) continue;
    if (previous != nullptr) {
      const auto& a = previous->bounds;
      const auto& b = control.bounds;
      const bool same_row = b.top < a.top + a.height;
      EXPECT_TRUE(same_row ? a.left < b.left : a.top < b.top) << control.name;
    }
    previous = &control;
  }
  ASSERT_NE(previous, nullptr);
  EXPECT_EQ(previous->name, "LV1");
}

TEST(SearchForm, EveryTextBoxIsNamedByTheLabelBeforeIt) {
  const auto controls = SearchFormDefinition().controls;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    if (controls[i].kind != ControlKind::kTextBox) continue;
    ASSERT_GT(i, 0U);
    EXPECT_EQ(controls[i - 1].kind, ControlKind::kLabel) << controls[i].name;
    EXPECT_EQ(controls[i - 1].name.back(), controls[i].name.back());
  }
}

TEST(SearchForm, CaptionsAreThese) {
  const std::map<std::string_view, std::u16string_view> expected = {
      {"Frame1", u"Vyhľadávať v kategóriách"},
      {"Check1", u"Constants"},
      {"Check2", u"Declares"},
      {"Check3", u"Types"},
      {"Frame2", u"Kritériá"},
      {"Label1", u"Hľadaný názov"},
      {"Check4", u"Iba celé názvy"},
      {"Label2", u"Hľadaný typ"},
      {"Check5", u"Iba celé názvy"},
      {"Label3", u"Hľadaná konštanta"},
      {"Check6", u"Iba celé názvy"},
      {"Label4", u"Hľadaná hodnota"},
      {"Check7", u"Iba celé hodnoty"},
      {"Check9", u"Hľadať ako číslo"},
      {"Label6", u"Hľadaný argument"},
      {"Check10", u"Iba celé názvy"},
      {"Label5", u"Fulltextové vyhľadávanie"},
      {"Check8", u"Iba celé slová"},
      {"Command2", u"&Hľadať"},
      {"Command1", u"&Zrušiť"},
  };
  EXPECT_EQ(SearchFormDefinition().caption, u"Rozšírené vyhľadávanie");
  std::size_t found = 0;
  for (const auto& control : SearchFormDefinition().controls) {
    const auto caption = expected.find(control.name);
    if (caption == expected.end()) continue;
    ++found;
    EXPECT_EQ(control.caption, caption->second) << control.name;
    EXPECT_EQ(control.tooltip, control.name == "Check9" ? u"Budú prehľadávané všetky sústavy" : u"")
        << control.name;
  }
  EXPECT_EQ(found, expected.size());
}

}  // namespace
}  // namespace declarium
