#include "check/row_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "text/text.h"

namespace declarium::check {
namespace {

using testing::ElementsAre;

class Rows {
 public:
  void Add(std::u16string name) {
    table_.Add(name, static_cast<std::uint32_t>(names_.size()));
    names_.push_back(std::move(name));
  }

  // All rows of the name in any case, in the order in which they are found.
  [[nodiscard]] std::vector<std::uint32_t> Of(std::u16string_view name) const {
    std::vector<std::uint32_t> rows;
    static_cast<void>(table_.Find(name, [&](std::uint32_t row) {
      if (EqualIgnoringCase(names_[row], name)) rows.push_back(row);
      return false;
    }));
    return rows;
  }

 private:
  RowTable table_;
  std::vector<std::u16string> names_;
};

TEST(RowTable, FindsNoneInAnEmptyTable) {
  EXPECT_THAT(Rows().Of(u"A"), ElementsAre());
}

TEST(RowTable, FindsNamesInAnyCase) {
  Rows rows;
  rows.Add(u"GetDC");
  rows.Add(u"Žltý");
  EXPECT_THAT(rows.Of(u"getdc"), ElementsAre(0));
  EXPECT_THAT(rows.Of(u"GETDC"), ElementsAre(0));
  EXPECT_THAT(rows.Of(u"žLTÝ"), ElementsAre(1));
  EXPECT_THAT(rows.Of(u"GetD"), ElementsAre());
}

TEST(RowTable, RowsOfOneNameKeepTheirOrderWhileItGrows) {
  Rows rows;
  constexpr std::uint32_t kCount = 20000;
  for (std::uint32_t i = 0; i < kCount; ++i)
    rows.Add(i % 5000 == 0 ? u"Same" : u"Name" + FromUtf8(std::to_string(i)));
  EXPECT_THAT(rows.Of(u"same"), ElementsAre(0, 5000, 10000, 15000));
  for (std::uint32_t i = 1; i < kCount; i += 5000)
    EXPECT_THAT(rows.Of(u"Name" + FromUtf8(std::to_string(i))), ElementsAre(i));
}

}  // namespace
}  // namespace declarium::check
