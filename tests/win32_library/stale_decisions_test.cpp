// Which decisions between the sources are needed, on declarations made up for it.
#include "stale_decisions.h"

#include "gmock/gmock.h"
#include "gtest/gtest.h"

namespace declarium::win32_library {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

Constant Enumerator(const std::string& name, long value) {
  Constant constant;
  constant.name = name;
  constant.is_enumerator = true;
  constant.header = "some.h";
  constant.value = Constant::Value::kInteger;
  constant.integer = value;
  constant.size = 4;
  return constant;
}

Field FieldAt(const std::string& name, long byte, int record = -1) {
  Field field;
  field.name = name;
  field.type.kind = record < 0 ? TypeKind::kInteger : TypeKind::kRecord;
  field.type.size = 4;
  field.type.record = record;
  field.offset_bits = byte * 8;
  return field;
}

Record RecordOf(const std::string& name, long size, std::vector<Field> fields) {
  Record record;
  record.typedefs = {name};
  record.size = size;
  record.is_complete = true;
  record.fields = std::move(fields);
  return record;
}

Headers Constants(long value) {
  Headers headers;
  headers.constants = {Enumerator("A", value)};
  return headers;
}

Headers Records(std::vector<Record> records) {
  Headers headers;
  headers.records = std::move(records);
  return headers;
}

std::vector<std::string> Stale(const Headers& headers, const Headers& metadata,
                               const std::string& name, Side side = Side::kMetadata) {
  return StaleDecisions({headers, metadata}, ImportLibraries(), {{name, {side, "because"}}});
}

TEST(StaleDecision, OnAConstantIsOneWhereTheHeadersSayTheSame) {
  const Headers metadata = Constants(1);
  EXPECT_THAT(Stale(Constants(2), metadata, "Const\tA"), IsEmpty());
  EXPECT_THAT(Stale(Constants(1), metadata, "Const\tA"), ElementsAre("Const\tA"));
}

TEST(StaleDecision, IsOneOnWhatASourceDoesNotHave) {
  const Headers known = Constants(1);
  EXPECT_THAT(Stale({}, known, "Const\tA"), ElementsAre("Const\tA"));
  EXPECT_THAT(Stale(known, {}, "Const\tA"), ElementsAre("Const\tA"));
}

TEST(StaleDecision, AgainstBothSourcesIsOneWhenNeitherHasTheName) {
  const Headers known = Constants(1);
  EXPECT_THAT(Stale(known, {}, "Const\tA", Side::kNeither), IsEmpty());
  EXPECT_THAT(Stale({}, known, "Const\tA", Side::kNeither), IsEmpty());
  EXPECT_THAT(Stale({}, {}, "Const\tA", Side::kNeither), ElementsAre("Const\tA"));
}

TEST(StaleDecision, ForTheHeadersIsNotJudged) {
  EXPECT_THAT(Stale({}, {}, "Const\tA", Side::kHeaders), IsEmpty());
}

TEST(StaleDecision, OnARecordGoesBySizeAndPlaces) {
  const Headers metadata = Records({RecordOf("R", 8, {FieldAt("a", 0), FieldAt("b", 4)})});
  const auto stale = [&](const Record& record) {
    return !Stale(Records({record}), metadata, "Type\tR").empty();
  };
  EXPECT_TRUE(stale(RecordOf("R", 8, {FieldAt("a", 0), FieldAt("other", 4)})));
  EXPECT_FALSE(stale(RecordOf("R", 12, {FieldAt("a", 0), FieldAt("b", 4)})));
  EXPECT_FALSE(stale(RecordOf("R", 8, {FieldAt("b", 0), FieldAt("a", 4)})));
}

TEST(StaleDecision, OnARecordGoesByTheRecordsItHoldsToo) {
  const auto holder = [](long place) {
    return Records(
        {RecordOf("INNER", 8, {FieldAt("a", place)}), RecordOf("R", 8, {FieldAt("inner", 0, 0)})});
  };
  EXPECT_THAT(Stale(holder(4), holder(0), "Type\tR"), IsEmpty());
  EXPECT_THAT(Stale(holder(4), holder(4), "Type\tR"), ElementsAre("Type\tR"));
}

TEST(StaleDecision, OnAProcedureNoImportLibraryKnowsIsOne) {
  Function function;
  function.name = "F";
  Headers metadata;
  metadata.functions = {function};
  EXPECT_THAT(Stale({}, metadata, "Declare\tF"), ElementsAre("Declare\tF"));
}

}  // namespace
}  // namespace declarium::win32_library
