#include "basket/recorded_items.h"

#include <gtest/gtest.h>
#include <vector>

#include "basket/basket.h"

namespace declarium {
namespace {

TEST(ItemKey, IsKindDigitCharacterZeroAndName) {
  EXPECT_EQ(ItemKey(0, u"A"), std::u16string_view(u"0\0A", 3));
  EXPECT_EQ(ItemKey(2, u""), std::u16string_view(u"2\0", 2));
}

// A record of Declares with these names, each with its name as the item string.
std::vector<std::u16string> RecordOf(std::initializer_list<std::u16string_view> names) {
  std::vector<std::u16string> record;
  for (const auto name : names) {
    record.push_back((ItemKey(1, name) + u'\0').append(name));
  }
  return record;
}

std::u16string Found(const std::vector<std::u16string>& record, std::u16string_view name) {
  const auto item = RecordedItems(record).Find({std::u16string(name), IconOf(Kind::kDeclare)});
  return item ? std::u16string(item->item) : u"none";
}

TEST(RecordedItems, TheWholeKeyAnswersBeforeALongerOneThatCameEarlier) {
  const auto record = RecordOf({u"GetWindowRect", u"GetWindow"});
  EXPECT_EQ(Found(record, u"GetWindow"), u"GetWindow");
  EXPECT_EQ(Found(record, u"GetWindowRect"), u"GetWindowRect");
}

TEST(RecordedItems, ALongerKeyAnswersOnlyWhenTheWholeKeyIsMissing) {
  const auto record = RecordOf({u"Beep", u"GetWindowText", u"GetWindowRect"});
  EXPECT_EQ(Found(record, u"GetWindow"), u"GetWindowText");
  EXPECT_EQ(Found(record, u"getwindow"), u"none") << "keys are compared exactly";
}

TEST(RecordedItems, TheEarlierOfTwoElementsOfOneKeyAnswers) {
  auto record = RecordOf({u"A", u"A"});
  record[1] += u" again";
  EXPECT_EQ(Found(record, u"A"), u"A");
}

TEST(RecordedItems, EveryKeyFindsItsOwnElementWhateverTheOrder) {
  for (const auto& record : {RecordOf({u"A", u"AB", u"ABC"}), RecordOf({u"ABC", u"AB", u"A"}),
                             RecordOf({u"AB", u"ABC", u"A"})}) {
    for (const std::u16string_view name : {u"A", u"AB", u"ABC"})
      EXPECT_EQ(Found(record, name), name);
  }
}

TEST(RecordedItems, AnElementWithoutAnItemStringIsNone) {
  const std::vector<std::u16string> record = {ItemKey(1, u"A")};
  EXPECT_EQ(Found(record, u"A"), u"none");
  EXPECT_EQ(Found({}, u"A"), u"none");
}

}  // namespace
}  // namespace declarium
