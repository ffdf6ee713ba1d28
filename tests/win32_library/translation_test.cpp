// The rules of translation, on declarations made up for them.
#include "gmock/gmock.h"
#include "gtest/gtest.h"

#include "c_expression.h"
#include "familiar_names.h"
#include "record_translator.h"
#include "string_macro.h"

namespace declarium::win32_library {
namespace {

using ::testing::ElementsAre;

Token Name(const std::string& text) {
  return {TokenKind::kIdentifier, text};
}
Token Literal(const std::string& text) {
  return {TokenKind::kLiteral, text};
}
Token Sign(const std::string& text) {
  return {TokenKind::kPunctuation, text};
}

std::string Rewritten(const std::vector<Token>& tokens) {
  return RewriteExpression(tokens, [](const std::string& name) { return name[0] == 'W'; })
      .value_or("none");
}

TEST(ConstantExpression, KeepsOtherConstantsInTheOperatorsOfTheLanguage) {
  EXPECT_EQ(Rewritten({Sign("("), Name("WM"), Sign("+"), Literal("1"), Sign(")")}), "WM + 1");
  EXPECT_EQ(Rewritten({Name("WA"), Sign("|"), Name("WB"), Sign("|"), Literal("0x8000L")}),
            "WA Or WB Or &H8000&");
  EXPECT_EQ(Rewritten({Name("WA"), Sign("&"), Sign("~"), Name("WB")}), "WA And Not WB");
  EXPECT_EQ(Rewritten({Name("WA"), Sign("|"), Literal("1"), Sign("<<"), Literal("3")}), "WA Or 8");
  EXPECT_EQ(Rewritten({Sign("("), Name("DWORD"), Sign(")"), Name("WA")}), "WA");
}

TEST(ConstantExpression, IsAPlainNumberWhereNamesWouldMislead) {
  EXPECT_EQ(Rewritten({Literal("1"), Sign("+"), Literal("1")}), "none");
  EXPECT_EQ(Rewritten({Name("WA"), Sign("*"), Literal("2")}), "none");
  EXPECT_EQ(Rewritten({Sign("-"), Name("WA")}), "none");
  EXPECT_EQ(Rewritten({Name("OTHER"), Sign("+"), Literal("1")}), "none");
}

TEST(NumberLiteral, IsReadAsItsOwnValue) {
  EXPECT_EQ(NumberLiteral(0x7FFF, Notation::kHexadecimal), "&H7FFF");
  EXPECT_EQ(NumberLiteral(0x8000, Notation::kHexadecimal), "&H8000&");
  EXPECT_EQ(NumberLiteral(0x10000, Notation::kHexadecimal), "&H10000");
  EXPECT_EQ(NumberLiteral(-1, Notation::kHexadecimal), "&HFFFFFFFF");
  EXPECT_EQ(NumberLiteral(-1, Notation::kDecimal), "-1");
  EXPECT_EQ(NumberLiteral(INT32_MIN, Notation::kDecimal), "&H80000000");
}

TEST(StringMacro, IsFollowedThroughOtherMacros) {
  const std::vector<Token> ansi = {Literal("\"a\\\\b\""), Literal("L\"c\"")};
  const MacroLookup macros = [&](const std::string& name) {
    return name == "TITLEA" ? &ansi : nullptr;
  };
  EXPECT_EQ(StringOf(ansi, macros), "a\\bc");
  EXPECT_EQ(StringOf({Name("__MINGW_NAME_AW"), Sign("("), Name("TITLE"), Sign(")")}, macros),
            "a\\bc");
  EXPECT_EQ(StringOf({Literal("\"line\\n\"")}, macros), std::nullopt);
  EXPECT_EQ(StringOf({Name("OTHER")}, macros), std::nullopt);
}

TEST(ProcedureName, StepsAsideForTheLanguagesOwn) {
  EXPECT_EQ(ProcedureName("GetObject"), "GetObjectAPI");
  EXPECT_EQ(ProcedureName("Beep"), "BeepAPI");
  EXPECT_EQ(ProcedureName("select"), "selectAPI");
  EXPECT_EQ(ProcedureName("_lopen"), "lopen");
  EXPECT_EQ(ProcedureName("SendMessage"), "SendMessage");
}

HeaderType Whole(long size) {
  HeaderType type;
  type.kind = TypeKind::kInteger;
  type.size = size;
  return type;
}

Field FieldAt(const std::string& name, HeaderType type, long byte) {
  Field field;
  field.name = name;
  field.type = std::move(type);
  field.offset_bits = byte * 8;
  return field;
}

Record RecordOf(const std::string& name, long size, std::vector<Field> fields) {
  Record record;
  record.typedefs = {name};
  record.is_complete = true;
  record.size = size;
  record.alignment = 4;
  record.fields = std::move(fields);
  record.header = "some.h";
  return record;
}

std::vector<std::string> Members(const Record& record) {
  Headers headers;
  headers.records = {record};
  RecordTranslator translator(headers, [](const std::string&) { return std::nullopt; });
  return translator.Translate(0).value().members;
}

TEST(RecordTranslation, WritesAWideIntegerAtAMultipleOfEightWithFiller) {
  EXPECT_THAT(
      Members(RecordOf("R", 16, {FieldAt("a", Whole(4), 0), FieldAt("b", Whole(8), 8)})),
      ElementsAre("a As Long", "'header: nothing, filler", "filler(3) As Byte", "b As Currency"));
}

TEST(RecordTranslation, FillsTheEndOfARecordThatTheCompilerRoundsUpFurther) {
  EXPECT_THAT(
      Members(RecordOf("R", 16, {FieldAt("b", Whole(8), 0), FieldAt("a", Whole(4), 8)})),
      ElementsAre("b As Currency", "a As Long", "'header: nothing, filler", "filler(3) As Byte"));
}

TEST(RecordTranslation, WritesAPackedMemberInSmallerPieces) {
  EXPECT_THAT(Members(RecordOf("R", 6, {FieldAt("a", Whole(2), 0), FieldAt("b", Whole(4), 2)})),
              ElementsAre("a As Integer", "'header: b, holds Long", "b(1) As Integer"));
  EXPECT_THAT(Members(RecordOf("R", 5, {FieldAt("a", Whole(1), 0), FieldAt("b", Whole(4), 1)})),
              ElementsAre("a As Byte", "'header: b, holds Long", "b(3) As Byte"));
}

TEST(RecordTranslation, GathersBitFieldsInTheirStorage) {
  Field low = FieldAt("low", Whole(4), 0);
  low.is_bit_field = true;
  low.width_bits = 4;
  Field high = low;
  high.name = "high";
  high.offset_bits = 4;
  EXPECT_THAT(Members(RecordOf("R", 4, {low, high})),
              ElementsAre("'header: bits low, high", "fBitFields As Long"));
}

TEST(RecordTranslation, NamesWhatTheLanguageCannotName) {
  EXPECT_THAT(
      Members(RecordOf("POINT", 8, {FieldAt("_type", Whole(4), 0), FieldAt("TYPE", Whole(4), 4)})),
      ElementsAre("'record: POINT", "'header: _type", "type_ As Long", "'header: TYPE",
                  "TYPE_2 As Long"));
}

}  // namespace
}  // namespace declarium::win32_library
