#include "basket/closure.h"

#include <gtest/gtest.h>

namespace declarium {
namespace {

Library SomeLibrary() {
  Library library;
  library.SetItems(Kind::kConst, {{u"A", u"B", u"LOOP", u"MAX"},
                                  {u"\x0E"
                                   u"b + missing",
                                   u"\x0E"
                                   u"1",
                                   u"\x0ELOOP + 1",
                                   u"\x0E"
                                   u"A"}});
  library.SetItems(Kind::kDeclare, {{u"GetRect"}, {u"\n\"l\" (r As INNER, s As outer)"}});
  library.SetItems(Kind::kType, {{u"Inner", u"Outer"},
                                 {u"\x0Cs As String * MAX", u"\x0Ci As Inner\ro As Outer"}});
  return library;
}

std::u16string Described(const std::vector<Reference>& references) {
  std::u16string text;
  for (const auto& r : references) {
    text += KindName(r.kind);
    text += u" " + r.name + u" " + static_cast<char16_t>(u'0' + r.level) + u" " + r.via;
    text += r.found ? u"\n" : u" missing\n";
  }
  return text;
}

std::u16string Followed(const Library& library, Kind kind, std::u16string_view name) {
  return Described(FollowSharedItems(library, *FindItem(library, kind, name)));
}

TEST(FollowSharedItems, GoesLevelByLevelThroughTheLibrary) {
  EXPECT_EQ(Followed(SomeLibrary(), Kind::kDeclare, u"GetRect"),
            u"Type Inner 1 GetRect\n"
            u"Type Outer 1 GetRect\n"
            u"Const MAX 2 Inner\n"
            u"Const A 3 MAX\n"
            u"Const B 4 A\n"
            u"Const missing 4 A missing\n");
}

TEST(FollowSharedItems, AnItemThatRefersToItselfIsNotListed) {
  EXPECT_EQ(Followed(SomeLibrary(), Kind::kConst, u"loop"), u"");
  EXPECT_TRUE(Followed(SomeLibrary(), Kind::kType, u"Outer").starts_with(u"Type Inner 1 Outer\n"));
}

TEST(FollowSharedItems, AnItemWithoutReferencesHasNone) {
  EXPECT_EQ(Followed(SomeLibrary(), Kind::kConst, u"B"), u"");
}

TEST(FollowSharedItems, GivesTheLibrarysItem) {
  const auto library = SomeLibrary();
  const auto references = FollowSharedItems(library, *FindItem(library, Kind::kType, u"Inner"));
  ASSERT_FALSE(references.empty());
  ASSERT_TRUE(references[0].found);
  EXPECT_EQ(references[0].found->item,
            u"\x0E"
            u"A");
}

}  // namespace
}  // namespace declarium
