// The rules of translation, on declarations made up for them.
#include <filesystem>
#include <fstream>
#include <random>

#include "gmock/gmock.h"
#include "gtest/gtest.h"

#include "c_expression.h"
#include "callable_functions.h"
#include "declare_translator.h"
#include "documented_library.h"
#include "familiar_names.h"
#include "hand_kept.h"
#include "metadata_source.h"
#include "overrides.h"
#include "parameter_names.h"
#include "parameter_rules.h"
#include "record_aliases.h"
#include "record_certainty.h"
#include "record_names.h"
#include "record_translator.h"
#include "string_macro.h"
#include "support/temporary_folder.h"

namespace declarium::win32_library {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

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
  EXPECT_THAT(Members(RecordOf("R", 10,
                               {FieldAt("a", Whole(4), 0), FieldAt("b", Whole(2), 4),
                                FieldAt("c", Whole(4), 6)})),
              ElementsAre("'size: 10 bytes", "a As Long", "b As Integer", "'header: c, holds Long",
                          "c(1) As Integer"));
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

TEST(RecordTranslation, SaysItsSizeWhereTheLanguageRoundsItUp) {
  EXPECT_THAT(Members(RecordOf("R", 6, {FieldAt("a", Whole(4), 0), FieldAt("b", Whole(2), 4)})),
              ElementsAre("'size: 6 bytes", "a As Long", "b As Integer"));
}

HeaderType RecordType(int index, long size) {
  HeaderType type;
  type.kind = TypeKind::kRecord;
  type.size = size;
  type.record = index;
  return type;
}

Record Nameless(Record record) {
  record.typedefs.clear();
  return record;
}

Record UnionOf(long size, std::vector<Field> fields) {
  Record record = Nameless(RecordOf("", size, std::move(fields)));
  record.is_union = true;
  return record;
}

std::vector<std::string> MembersOfFirst(const std::vector<Record>& records) {
  Headers headers;
  headers.records = records;
  RecordTranslator translator(headers, [](const std::string&) { return std::nullopt; });
  return translator.Translate(0).value().members;
}

TEST(RecordTranslation, GivesAUnionTheFormOfItsLargestAlternative) {
  EXPECT_THAT(MembersOfFirst({RecordOf("R", 4, {FieldAt("", RecordType(1, 4), 0)}),
                              UnionOf(4, {FieldAt("s", Whole(2), 0), FieldAt("l", Whole(4), 0),
                                          FieldAt("m", Whole(4), 0)})}),
              ElementsAre("'header: union of s, l, m", "l As Long"));
}

TEST(RecordTranslation, OpensARecordWithoutANameThatIsTheLargestAlternative) {
  EXPECT_THAT(
      MembersOfFirst(
          {RecordOf("R", 4, {FieldAt("", RecordType(1, 4), 0)}),
           UnionOf(4, {FieldAt("", RecordType(2, 4), 0), FieldAt("l", Whole(4), 0)}),
           Nameless(RecordOf("", 4, {FieldAt("a", Whole(2), 0), FieldAt("b", Whole(2), 2)}))}),
      ElementsAre("'also here: l.", "a As Integer", "b As Integer"));
}

TEST(RecordTranslation, ReadsBytesThatAreCountedAsCharactersAsText) {
  HeaderType element = Whole(1);
  element.names = {"BYTE"};
  HeaderType array;
  array.kind = TypeKind::kArray;
  array.size = 32;
  array.count = 32;
  array.target = std::make_shared<HeaderType>(element);
  Field field = FieldAt("dmDeviceName", array, 0);
  EXPECT_THAT(Members(RecordOf("R", 32, {field})), ElementsAre("dmDeviceName(31) As Byte"));
  field.count_constant = "CCHDEVICENAME";
  EXPECT_THAT(Members(RecordOf("R", 32, {field})), ElementsAre("dmDeviceName As String * 32"));
}

TEST(RecordTranslation, KeepsTheUnderscoreThatWouldContinueALineFromItsEnd) {
  EXPECT_THAT(Members(RecordOf("R", 2, {FieldAt("_GAP_", Whole(2), 0)})),
              ElementsAre("'header: _GAP_, holds Integer", "GAP_ As Integer"));
}

// The names of the records in the library, aliases behind them.
std::vector<std::string> NamesOf(Headers headers) {
  NameRecords(headers);
  std::vector<std::string> names;
  for (const Record& record : headers.records) {
    names.push_back(RecordName(record));
    names.insert(names.end(), record.aliases.begin(), record.aliases.end());
  }
  return names;
}

Headers WithRecords(const std::vector<std::string>& names) {
  Headers headers;
  for (const std::string& name : names)
    headers.records.push_back(RecordOf(name, 4, {FieldAt("a", Whole(4), 0)}));
  return headers;
}

TEST(RecordNames, AreThePlainOnesForTheAnsiRecordBesideAWideOne) {
  EXPECT_THAT(NamesOf(WithRecords({"TVITEMA", "TVITEMW"})), ElementsAre("TVITEM", "TVITEMW"));
  EXPECT_THAT(NamesOf(WithRecords({"INFO_A", "INFO_W"})), ElementsAre("INFO", "INFO_W"));
  EXPECT_THAT(NamesOf(WithRecords({"WSADATA"})), ElementsAre("WSADATA"));
  EXPECT_THAT(NamesOf(WithRecords({"ITEMA", "ITEMW", "ITEM"})),
              ElementsAre("ITEMA", "ITEMW", "ITEM"));
}

TEST(RecordNames, AreWithoutTheTagsPrefix) {
  Headers headers = WithRecords({"R"});
  headers.records[0].typedefs.clear();
  headers.records[0].tag = "tagRASENTRY";
  EXPECT_THAT(NamesOf(headers), ElementsAre("RASENTRY"));
}

TEST(RecordNames, HaveFurtherTypedefsAndMacrosBesideThem) {
  Headers headers = WithRecords({"TTTOOLINFOA", "TTTOOLINFOW"});
  headers.records[0].typedefs.emplace_back("tagTOOL");
  headers.records[1].typedefs.emplace_back("TIPW");
  headers.constants = {{.name = "TOOLINFO", .tokens = {Name("TTTOOLINFO")}, .header = "some.h"},
                       {.name = "TOOLINFOA", .tokens = {Name("TTTOOLINFOA")}, .header = "some.h"}};
  EXPECT_THAT(NamesOf(headers), ElementsAre("TTTOOLINFO", "TOOLINFO", "TTTOOLINFOW", "TIPW"));
}

HeaderType AddressOf(const HeaderType& target) {
  HeaderType type;
  type.kind = TypeKind::kPointer;
  type.size = 4;
  type.target = std::make_shared<HeaderType>(target);
  return type;
}

Function FunctionOf(const std::string& name, const HeaderType& parameter) {
  Function function;
  function.name = name;
  function.parameters = {{"", parameter}};
  return function;
}

MetaFunction FactsOf(const std::string& name, const std::string& library) {
  MetaFunction facts;
  facts.name = name;
  facts.library = library;
  return facts;
}

Metadata MetadataOf(const std::string& name, const std::vector<std::string>& attributes) {
  Metadata metadata;
  metadata.functions = {FactsOf(name, "x")};
  metadata.functions[0].parameters = {{"hwnd", "HWND", attributes}};
  metadata.function_positions = {{name, 0}};
  return metadata;
}

Passed PassedTo(const std::string& procedure, const HeaderType& type,
                const std::vector<std::string>& attributes) {
  const Headers headers = WithRecords({"R"});
  const Metadata metadata = MetadataOf(procedure, attributes);
  return ParameterRules(headers, metadata).Of(FunctionOf(procedure, type), 0);
}

// A record with a union of a number and two records, which a procedure takes.
Headers WithForms() {
  Headers headers;
  headers.records = {
      RecordOf("R", 12, {FieldAt("kind", Whole(4), 0), FieldAt("", RecordType(1, 8), 4)}),
      UnionOf(8, {FieldAt("large", RecordType(2, 8), 0), FieldAt("small", RecordType(3, 4), 0),
                  FieldAt("number", Whole(4), 0)}),
      RecordOf("LARGE", 8, {FieldAt("a", Whole(4), 0), FieldAt("b", Whole(4), 4)}),
      RecordOf("SMALL", 4, {FieldAt("c", Whole(4), 0)})};
  headers.functions = {FunctionOf("Take", AddressOf(RecordType(0, 12)))};
  return headers;
}

std::vector<TypeRow> FormsOfFirst(const Headers& headers) {
  RecordTranslator translator(headers, [](const std::string&) { return std::nullopt; });
  return translator.FormsOf(0);
}

TEST(RecordForms, AreOneForEachOtherNamedRecordOfAUnion) {
  const auto forms = FormsOfFirst(WithForms());
  ASSERT_EQ(forms.size(), 1);
  EXPECT_EQ(forms[0].name, "R_SMALL");
  EXPECT_THAT(forms[0].members, ElementsAre("'record: R", "'instead of: R", "kind As Long",
                                            "'also here: large, number.", "small As SMALL",
                                            "'header: nothing, filler", "filler(3) As Byte"));
}

TEST(RecordForms, AreOfRecordsThatAProcedureTakes) {
  Headers headers = WithForms();
  headers.functions.clear();
  EXPECT_THAT(FormsOfFirst(headers), IsEmpty());
}

TEST(RecordForms, AreNamedWithoutTheTagsPrefix) {
  Headers headers = WithForms();
  headers.records[0].typedefs = {"INPUT"};
  headers.records[0].tag = "tagINPUT";
  const auto forms = FormsOfFirst(headers);
  ASSERT_EQ(forms.size(), 1);
  EXPECT_EQ(forms[0].name, "INPUT_SMALL");
}

TEST(RecordForms, LeaveTheRecordItselfAsItIs) {
  const Headers headers = WithForms();
  RecordTranslator translator(headers, [](const std::string&) { return std::nullopt; });
  const auto before = translator.Translate(0).value().members;
  static_cast<void>(translator.FormsOf(0));
  EXPECT_EQ(translator.Translate(0).value().members, before);
  EXPECT_THAT(before, ElementsAre("kind As Long", "'header: union of large, small, number",
                                  "large As LARGE"));
}

TEST(ParameterRules, AReservedAddressIsANumber) {
  EXPECT_EQ(PassedTo("F", AddressOf(Whole(4)), {"in", "reserved"}), Passed::kAsAddress);
  EXPECT_EQ(PassedTo("F", Whole(4), {"in", "reserved"}), Passed::kAsDeclared);
}

TEST(ParameterRules, AnOptionalRecordOrNumberIsAnything) {
  EXPECT_EQ(PassedTo("F", AddressOf(RecordType(0, 4)), {"in", "optional"}), Passed::kAsAnything);
  EXPECT_EQ(PassedTo("F", AddressOf(Whole(4)), {"out", "optional"}), Passed::kAsAnything);
  EXPECT_EQ(PassedTo("F", AddressOf(RecordType(0, 4)), {"in"}), Passed::kAsDeclared);
}

TEST(ParameterRules, WhatIsFreedIsAnAddress) {
  HeaderType nothing;
  nothing.kind = TypeKind::kVoid;
  EXPECT_EQ(PassedTo("TaskMemFree", AddressOf(nothing), {"in"}), Passed::kAsAddress);
  EXPECT_EQ(PassedTo("UnmapViewOfFile", AddressOf(nothing), {"in"}), Passed::kAsAddress);
  EXPECT_EQ(PassedTo("F", AddressOf(nothing), {"in"}), Passed::kAsDeclared);
}

TEST(ParameterRules, ARecordThatAProcedureReturnsIsHandedOn) {
  Headers headers = WithRecords({"R"});
  Function open = FunctionOf("Open", Whole(4));
  open.result = AddressOf(RecordType(0, 4));
  headers.functions = {open};
  const Metadata metadata;
  EXPECT_EQ(ParameterRules(headers, metadata).Of(FunctionOf("Use", AddressOf(RecordType(0, 4))), 0),
            Passed::kAsAddress);
}

TEST(ParameterRules, AParameterWithoutANameHasTheMetadatasInFamiliarLetters) {
  const Headers headers;
  const Metadata metadata = MetadataOf("F", {});
  EXPECT_EQ(ParameterRules(headers, metadata).NameOf(FunctionOf("F", Whole(4)), 0), "hWnd");
  EXPECT_EQ(FamiliarCase("left"), "Left");
  EXPECT_EQ(FamiliarCase("lpRect"), "lpRect");
}

TEST(HandKept, AreDeclaresAloneAndAFaultIsToldWithItsLine) {
  const TemporaryFolder folder;
  const auto read = [&folder](const std::string& text) {
    return ReadHandKept(folder.Put("list.bas", text).string());
  };
  const auto rows = read("' source\nDeclare Sub S Lib \"l\" (ByVal x As Long)\n");
  ASSERT_TRUE(rows);
  ASSERT_EQ(rows->size(), 1u);
  EXPECT_EQ(rows->front().name, "S");
  EXPECT_EQ(rows->front().line, "Declare Sub S Lib \"l\" (ByVal x As Long)");
  EXPECT_EQ(rows->front().header, kHandKept);
  EXPECT_THAT(read("'\nDeclare Sub S (x)\n").error(), HasSubstr("list.bas:2: expected Lib"));
  EXPECT_THAT(read("Const A = 1\n").error(), HasSubstr("list.bas:1: expected a Declare"));
  EXPECT_THAT(ReadHandKept("no such file").error(), HasSubstr("cannot be read"));
}

TEST(ParameterNames, SayTheTypeWhereNothingElseNamesTheParameter) {
  Headers headers;
  Record log_font;
  log_font.typedefs = {"LOGFONTA"};
  Record graphics;
  graphics.tag = "GpGraphics";
  headers.records = {log_font, graphics};
  const auto named = [](HeaderType type, const char* name) {
    type.names = {name};
    return type;
  };
  const struct {
    HeaderType type;
    const char* name;
  } cases[] = {{named(Whole(4), "HWND"), "hWnd"},
               {named(Whole(4), "HIMC"), "hImc"},
               {named(Whole(4), "HRESULT"), "hresult"},
               {AddressOf(RecordType(0, 60)), "lpLogfont"},
               {AddressOf(RecordType(1, 4)), "lpGraphics"},
               {AddressOf(AddressOf(RecordType(1, 4))), "lpGraphics"},
               {AddressOf(named(Whole(2), "WCHAR")), "lpsz"},
               {AddressOf(named(Whole(4), "HDC")), "lpHDc"},
               {AddressOf(named(Whole(4), "DWORD")), ""},
               {named(Whole(4), "GpFillMode"), "fillMode"},
               {named(Whole(4), "COLORREF"), "colorref"},
               {named(Whole(4), "DWORD"), ""},
               {Whole(4), ""}};
  for (const auto& [type, name] : cases) EXPECT_EQ(NameByType(type, headers), name) << name;
  EXPECT_TRUE(IsPlaceholder("param12"));
  EXPECT_FALSE(IsPlaceholder("params"));
  EXPECT_FALSE(IsPlaceholder("param"));
}

TEST(CallableFunctions, AreThoseThatClearTheStackIn32BitWindows) {
  EXPECT_TRUE(IsCallable(FactsOf("CreateFileA", "kernel32")));
  EXPECT_FALSE(IsCallable(FactsOf("u_charType", "icu")));
  EXPECT_FALSE(IsCallable(FactsOf("TraceMessage", "advapi32")));
  EXPECT_FALSE(IsCallable(FactsOf("CreateUmsCompletionList", "kernel32")));
}

MetaRecord MetaRecordOf(const std::string& name, const std::string& member_type) {
  MetaRecord record;
  record.name = name;
  record.area = "Area";
  record.members = {{"a", member_type, {}}};
  return record;
}

// F takes the address of Outer, which holds Inner.
Metadata MetadataOfRecords(const std::string& type_in_inner) {
  Metadata metadata = MetadataOf("F", {});
  metadata.functions[0].result = "Int32";
  metadata.functions[0].area = "Area";
  metadata.functions[0].parameters[0].type = "*Outer";
  metadata.records = {MetaRecordOf("Outer", "Inner"), MetaRecordOf("Inner", type_in_inner),
                      MetaRecordOf("Idle", "Int32")};
  metadata.enums = {{"FLAGS", "Area", "UInt32", true, {{"FLAG_A", 1}}}};
  return metadata;
}

TEST(MetadataSource, HoldsWhatFunctionsNeedEachRecordBehindItsMembers) {
  const std::string source = MetadataSource(MetadataOfRecords("FLAGS"), {});
  EXPECT_THAT(source, HasSubstr("Int32  __attribute__((stdcall)) F(Outer *hwnd)"));
  EXPECT_LT(source.find("struct Inner {"), source.find("struct Outer {"));
  EXPECT_THAT(source, HasSubstr("enum { FLAG_A = 0x1 };"));
  EXPECT_THAT(source, Not(HasSubstr("Idle")));
}

TEST(MetadataSource, HoldsWhatIsDecidedForTheMetadata) {
  const Overrides overrides = {{"Type\tIdle", {Side::kMetadata, "because"}}};
  EXPECT_THAT(MetadataSource(MetadataOfRecords("Int32"), overrides), HasSubstr("struct Idle {"));
}

TEST(MetadataSource, TellsPointersArraysAndFunctionsApart) {
  EXPECT_THAT(MetadataSource(MetadataOfRecords("[4]*Void"), {}), HasSubstr("void *a[4];"));
  EXPECT_THAT(MetadataSource(MetadataOfRecords("*[4]Int32"), {}), HasSubstr("Int32 (*a)[4];"));
}

TEST(UncertainRecords, HoldAnEnumerationThatMayBeOfAnySize) {
  EXPECT_THAT(UncertainRecords(MetadataOfRecords("FLAGS")), ElementsAre("Inner", "Outer"));
  EXPECT_THAT(UncertainRecords(MetadataOfRecords("*FLAGS")), IsEmpty());
  EXPECT_THAT(UncertainRecords(MetadataOfRecords("Int32")), IsEmpty());
}

class OverridesFile : public ::testing::Test {
 protected:
  std::expected<Overrides, std::string> Read(const std::string& text) const {
    std::ofstream(path_) << text;
    return ReadOverrides(path_.string());
  }
  void TearDown() override { std::filesystem::remove(path_); }

  const std::filesystem::path path_ =
      std::filesystem::temp_directory_path() /
      ("overrides-" + std::to_string(std::random_device()()) + ".txt");
};

TEST_F(OverridesFile, DecidesByKindAndName) {
  const auto overrides = Read("# why\n\nConst\tA\tmetadata\tit is so\nType\tB\tneither\tno\n");
  ASSERT_TRUE(overrides) << overrides.error();
  EXPECT_EQ(FindOverride(*overrides, "Const", "A")->side, Side::kMetadata);
  EXPECT_EQ(FindOverride(*overrides, "Type", "B")->side, Side::kNeither);
  EXPECT_EQ(FindOverride(*overrides, "Type", "A"), nullptr);
}

TEST_F(OverridesFile, WantsASideAReasonAndOneLineForAName) {
  EXPECT_FALSE(Read("Const\tA\tmetadata\t\n"));
  EXPECT_FALSE(Read("Const\tA\tmetadata\n"));
  EXPECT_FALSE(Read("Const\tA\tboth\tit is so\n"));
  EXPECT_FALSE(Read("Const\tA\tmetadata\tx\nConst\tA\theaders\ty\n"));
}

TEST(DocumentedLibrary, IsAFileThatIsThereOnEveryWindows) {
  EXPECT_EQ(DocumentedLibrary(FactsOf("F", "user32")), "user32");
  EXPECT_EQ(DocumentedLibrary(FactsOf("F", "api-ms-win-shcore-scaling-l1-1-1")), "shcore");
  EXPECT_EQ(DocumentedLibrary(FactsOf("F", "bluetoothapis")), "bthprops.cpl");
}

TEST(RecordTranslation, NamesWhatTheLanguageCannotName) {
  EXPECT_THAT(
      Members(RecordOf("POINT", 8, {FieldAt("_type", Whole(4), 0), FieldAt("TYPE", Whole(4), 4)})),
      ElementsAre("'record: POINT", "'header: _type", "type_ As Long", "'header: TYPE",
                  "TYPE_2 As Long"));
}

}  // namespace
}  // namespace declarium::win32_library
