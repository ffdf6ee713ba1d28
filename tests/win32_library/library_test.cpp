// Every row of the bundled library against the compiler, the import libraries and the language.
#include <regex>

#include "gmock/gmock.h"
#include "gtest/gtest.h"

#include "agreement.h"
#include "areas.h"
#include "bundled.h"
#include "constant_facts.h"
#include "coverage.h"
#include "facts/facts_file.h"
#include "import/merge.h"
#include "import/parser.h"
#include "import_facts.h"
#include "library/file_format.h"
#include "library/file_io.h"
#include "library/library_file.h"
#include "record_facts.h"
#include "rows64.h"
#include "source/item_text.h"
#include "text/code_page.h"
#include "text/text.h"
#include "text_checks.h"
#include "vb/layout.h"
#include "vb/module.h"
#include "vb/name.h"

namespace declarium::win32_library_test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// What desktop programs use must stay a list that can be looked through.
constexpr std::size_t kMostEverydayConstants = 25'000;

// The first mismatches and their number, so that a broken rule is not thousands of lines.
std::string Shown(const Mismatches& mismatches) {
  std::string text = std::to_string(mismatches.size()) + " mismatches\n";
  for (std::size_t i = 0; i < mismatches.size() && i < 20; ++i) text += mismatches[i] + "\n";
  return text;
}

#define EXPECT_NO_MISMATCH(check)                          \
  do {                                                     \
    const Mismatches found = (check);                      \
    EXPECT_THAT(found, IsEmpty()) << Shown(found).c_str(); \
  } while (false)

// The rows of all libraries.
class Win32Library : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    library_ = AllLibraries();
    rows_ = RowsOf(library_);
  }

  static inline Library library_;
  static inline Rows rows_;
};

// The same with what the compiler says.
class Win32LibraryFacts : public Win32Library {
 protected:
  static void SetUpTestSuite() {
    Win32Library::SetUpTestSuite();
    if (!Toolchain::IsInstalled()) return;
    const Toolchain toolchain;
    const UnitMap units = ReadUnitMap(toolchain);
    const auto provenance = ReadProvenance(units);
    constants_ = CompileConstants(rows_, toolchain, units, provenance);
    records_ = CompileRecords(rows_, toolchain, units, provenance);
    const Toolchain toolchain64(win32_library::Platform::kX64);
    rows64_ = RowsFor64(rows_);
    const UnitMap units64 = ReadUnitMap(toolchain64);
    RenameFor64(rows64_, units64, provenance, toolchain, toolchain64);
    records64_ = CompileRecords(rows64_, toolchain64, units64, provenance);
    counts_ = CountWithTheCompiler(toolchain);
    imports_ = ReadImportLibraries(toolchain, counts_);
  }

  void SetUp() override {
    if (!Toolchain::IsInstalled()) GTEST_SKIP() << "needs the 32-bit mingw-w64 compiler";
  }

  static ConstRow& Constant(Rows& rows, const std::string& lower) {
    return rows.constants.at(rows.constant_positions.at(lower));
  }
  static TypeRow& Record(Rows& rows, const std::string& lower) {
    return rows.types.at(rows.type_positions.at(lower));
  }

  static inline ConstantFacts constants_;
  static inline RecordFacts records_;
  static inline Rows rows64_;  // as the facts say that they are in 64 bits
  static inline RecordFacts records64_;
  static inline ByteCounts counts_;
  static inline ImportFacts imports_;
};

TEST_F(Win32Library, HoldsEnoughOfEveryKind) {
  EXPECT_GE(rows_.declares.size(), 16'000u);
  EXPECT_GE(rows_.constants.size(), 150'000u);
  EXPECT_GE(rows_.types.size(), 6'000u);
}

TEST_F(Win32Library, EveryRowThatWasMadeIsInALibrary) {
  const std::string provenance =
      ReadWholeFile(DECLARIUM_SOURCE_DIR "/data/Win32.provenance.tsv").value();
  const auto lines = std::ranges::count(provenance, '\n');
  EXPECT_EQ(rows_.declares.size() + rows_.constants.size() + rows_.types.size() + 1,
            static_cast<std::size_t>(lines));
}

TEST_F(Win32Library, HoldsNineTenthsOfTheMetadatasConstants) {
  const auto [listed, there] = win32_library::CoverageOfConstants(
      TheMetadata(),
      [](const std::string& name) { return rows_.constant_positions.contains(vb::Lower(name)); });
  EXPECT_GE(there * 10, listed * 9) << there << " of " << listed;
}

// By the documentation of the folder and of the locale.
TEST_F(Win32Library, WritesGuidsInBracesAndEmptyTexts) {
  const auto value = [](const std::string& lower) {
    return rows_.constants.at(rows_.constant_positions.at(lower)).value;
  };
  EXPECT_EQ(value("folderid_desktop"), "\"{B4BFCC3A-DB2C-424C-B029-7FE99A87C641}\"");
  EXPECT_EQ(value("locale_name_invariant"), "\"\"");
}

TEST(Win32Libraries, AreThoseOfTheListWithTheEverydayOneFirst) {
  const auto areas =
      win32_library::ReadAreas(DECLARIUM_SOURCE_DIR "/tools/win32-library/areas.txt").value();
  std::vector<std::string> listed;
  for (const auto& [file, title] : areas.titles) {
    listed.push_back(file);
    EXPECT_EQ(ToUtf8(LoadLibraryFile(LibraryPath(file)).value().Title()), title);
  }
  EXPECT_THAT(LibraryNames(), ::testing::UnorderedElementsAreArray(listed));
  EXPECT_EQ(LibraryNames().front(), "Win32");
  EXPECT_EQ(listed.front(), "Win32");
}

TEST(Win32Libraries, TheEverydayOneHoldsNoMoreConstantsThanItMay) {
  const Library everyday = LoadLibraryFile(LibraryPath("Win32")).value();
  EXPECT_LE(everyday[Kind::kConst].names.size(), kMostEverydayConstants);
}

// Each library by itself.
class OneWin32Library : public ::testing::TestWithParam<std::string> {
 protected:
  const Library library_ = LoadLibraryFile(LibraryPath(GetParam())).value();
};

INSTANTIATE_TEST_SUITE_P(Bundled, OneWin32Library, ::testing::ValuesIn(LibraryNames()),
                         [](const auto& tested) { return tested.param; });

TEST_P(OneWin32Library, HasLegalUniqueNamesAndLinesThatTheLanguageReads) {
  EXPECT_NO_MISMATCH(CheckNamesAndLines(library_, RowsOf(library_)));
}

TEST_P(OneWin32Library, HoldsEverySharedItem) {
  EXPECT_NO_MISMATCH(CheckSharedItems(library_));
}

TEST_P(OneWin32Library, HoldsTheRecordsThatItsFormsIn64BitsNeed) {
  const auto facts = FactsFile::OpenBeside(LibraryPath(GetParam())).value();
  const auto& types = library_[Kind::kType].names;
  std::string text;
  for (const auto& name : types)
    if (const auto form = facts.FindForm64(Kind::kType, name); form && !form->text.empty())
      text += "Type X\n" + std::regex_replace(std::string(form->text), std::regex("[|]"), "\n") +
              "\nEnd Type\n";
  for (const auto& name : library_[Kind::kDeclare].names)
    if (const auto form = facts.FindForm64(Kind::kDeclare, name); form && !form->text.empty())
      text += std::string(form->text) + "\n";
  const auto source = FromUtf8(text);
  const auto module = vb::ReadModule(source);
  EXPECT_THAT(module.errors, IsEmpty());
  const auto expect_known = [&](const auto& values) {
    for (const auto& value : values) {
      const auto& type = value.type;
      const bool is_own = !type.length.empty() || type.name == u"Any" ||
                          vb::BuiltInExtent(type.name, vb::Target::kVba7x64).has_value();
      EXPECT_TRUE(is_own || std::ranges::find(types, type.name) != types.end())
          << ToUtf8(type.name);
    }
  };
  for (const auto& declaration : module.declarations) {
    if (const auto* record = declaration.As<vb::Record>()) expect_known(record->members);
    if (const auto* external = declaration.As<vb::External>()) expect_known(external->parameters);
  }
}

TEST_P(OneWin32Library, HasTheRowsThatOthersHaveAsTheyHaveThem) {
  static const Library all = AllLibraries();
  for (const Kind kind : kKinds) {
    const KindLists& lists = library_[kind];
    for (std::size_t i = 0; i < lists.names.size(); ++i) {
      const auto row = FindItem(all, kind, lists.names[i]);
      ASSERT_TRUE(row) << EncodeCodePage(lists.names[i]);
      EXPECT_EQ(EncodeCodePage(row->name), EncodeCodePage(lists.names[i]));
      EXPECT_EQ(EncodeCodePage(row->item), EncodeCodePage(lists.ItemAt(i)));
    }
  }
}

TEST_P(OneWin32Library, SavesAsItWasLoaded) {
  EXPECT_TRUE(LibraryBytes(library_) == ReadWholeFile(LibraryPath(GetParam())).value());
}

TEST_P(OneWin32Library, ExportsAndImportsByteForByte) {
  const std::u16string exported = ExportText(library_);
  const std::string source = EncodeCodePage(exported);
  const ParsedItems parsed = ParseDeclarations(ReadSource(std::string_view(source)));
  EXPECT_THAT(parsed.skipped, IsEmpty());
  Library again;
  again.SetTitle(library_.Title());
  MergeItems(again, parsed, Existing::kReplace);
  EXPECT_TRUE(LibraryBytes(again) == LibraryBytes(library_));
  EXPECT_TRUE(ExportText(again) == exported);
}

TEST_F(Win32LibraryFacts, ConstantsHaveTheCompilersValues) {
  EXPECT_NO_MISMATCH(CheckConstants(rows_, constants_));
}

TEST_F(Win32LibraryFacts, RecordsLieInMemoryAsTheCompilerLaysThemOut) {
  EXPECT_NO_MISMATCH(CheckRecords(rows_, records_));
}

TEST_F(Win32LibraryFacts, In64BitsRecordsLieInMemoryAsTheCompilerLaysThemOut) {
  EXPECT_GT(rows64_.types.size() + 20, rows_.types.size());
  EXPECT_NO_MISMATCH(CheckRecords(rows64_, records64_, vb::Target::kVba7x64));
}

TEST_F(Win32LibraryFacts, AnAddressOf32BitsIsFoundIn64) {
  auto wrong = rows64_;
  const auto record = std::ranges::find(wrong.types, "MSG", &TypeRow::name);
  ASSERT_NE(record, wrong.types.end());
  record->members.at(0).line = "hwnd As Long";
  EXPECT_THAT(CheckRecords(wrong, records64_, vb::Target::kVba7x64),
              ElementsAre("MSG: has another size"));
}

// The rows without those that the hand-kept list alone speaks of: no import library knows them.
Rows WithoutUnknown(Rows rows, const ImportFacts& facts) {
  for (const auto& kept : TheHandKept()) {
    std::erase_if(rows.declares, [&](const DeclareRow& row) {
      const auto meaning = MeaningOf(row);
      return row.name == kept.name && meaning &&
             !facts.contains(meaning->library + " " + meaning->entry);
    });
  }
  return rows;
}

TEST_F(Win32LibraryFacts, DeclaresTakeTheBytesThatTheImportLibraryTells) {
  EXPECT_NO_MISMATCH(CheckDeclares(WithoutUnknown(rows_, imports_), imports_));
}

TEST_F(Win32Library, HoldsTheHandKeptRowsWhichNoOtherSourceHas) {
  for (const auto& kept : TheHandKept()) {
    const auto item = FindItem(library_, Kind::kDeclare, FromUtf8(kept.name));
    ASSERT_TRUE(item) << kept.name;
    EXPECT_EQ(ToUtf8(ItemText(Kind::kDeclare, item->name, item->item)), kept.line);
    EXPECT_EQ(TheMetadata().FindFunction(kept.name), nullptr) << kept.name;
  }
}

// GDI+ has a PathData, which is another record.
TEST_F(Win32Library, ARecordIsNotTheOneWhoseNameDiffersInCase) {
  const auto item = FindItem(library_, Kind::kDeclare, u"PATHOBJ_bEnum").value();
  EXPECT_THAT(ToUtf8(ItemText(Kind::kDeclare, item.name, item.item)), HasSubstr("ppd As Any"));
}

// The overrides for the headers are the disagreements, no less and no more.
Mismatches CheckDecisions(const std::string& kind, const Disagreements& found) {
  Mismatches mismatches;
  for (const std::string& name : found)
    if (!TheOverrides().contains(name)) mismatches.push_back(name + " is not decided");
  for (const auto& [name, decided] : TheOverrides())
    if (name.starts_with(kind + "\t") && decided.side == win32_library::Side::kHeaders &&
        !found.contains(name))
      mismatches.push_back(name + " is decided without need");
  return mismatches;
}

TEST_F(Win32LibraryFacts, ConstantsAgreeWithTheMetadataOrAreDecided) {
  EXPECT_NO_MISMATCH(CheckDecisions("Const", DifferingConstants(rows_)));
}

TEST_F(Win32LibraryFacts, DeclaresAgreeWithTheMetadataOrAreDecided) {
  EXPECT_NO_MISMATCH(CheckDecisions("Declare", DifferingDeclares(rows_, counts_)));
}

TEST_F(Win32LibraryFacts, RecordsAgreeWithTheMetadataOrAreDecided) {
  EXPECT_NO_MISMATCH(CheckDecisions("Type", DifferingRecords(rows_, records_, Toolchain())));
}

TEST_F(Win32LibraryFacts, AnUndecidedDisagreementOfAnyKindIsFound) {
  Rows wrong = rows_;
  Constant(wrong, "wm_user").value = "1";
  EXPECT_TRUE(DifferingConstants(wrong).contains("Const\tWM_USER"));
  wrong.declares = {{"GetTickCount", true, "\"kernel32\" (ByVal x As Long) As Long"}};
  EXPECT_EQ(DifferingDeclares(wrong, counts_), Disagreements{"Declare\tGetTickCount"});
  RecordFacts facts = records_;
  facts.at("RECT").fields.at("right").offset = 4;
  EXPECT_TRUE(DifferingRecords(rows_, facts, Toolchain()).contains("Type\tRECT"));
}

// The checks would say so if a row were wrong.

TEST_F(Win32LibraryFacts, AWrongValueIsFoundWithAllThatIsMadeOfIt) {
  Rows wrong = rows_;
  Constant(wrong, "lvn_first").value = "-101";
  const Mismatches found = CheckConstants(wrong, constants_);
  EXPECT_THAT(found, ::testing::Contains(HasSubstr("LVN_FIRST = -101")));
  EXPECT_THAT(found, ::testing::Contains(HasSubstr("LVN_ITEMCHANGED = LVN_FIRST - 1")));
}

TEST_F(Win32LibraryFacts, AHexadecimalValueWithoutItsSuffixIsFound) {
  Rows wrong = rows_;
  ConstRow& row = Constant(wrong, "wm_app");
  ASSERT_EQ(row.value, "&H8000&");
  row.value = "&H8000";
  EXPECT_THAT(CheckConstants(wrong, constants_), ::testing::Contains(HasSubstr("WM_APP = &H8000")));
}

TEST_F(Win32LibraryFacts, AWrongTextIsFound) {
  Rows wrong = rows_;
  Constant(wrong, "wc_listviewa").value = "\"SysListView\"";
  EXPECT_THAT(CheckConstants(wrong, constants_), ::testing::Contains(HasSubstr("WC_LISTVIEWA = ")));
}

TEST_F(Win32LibraryFacts, AMemberOfAnotherSizeIsFound) {
  Rows wrong = rows_;
  Record(wrong, "rect").members[3].line = "bottom As Integer";
  EXPECT_THAT(CheckRecords(wrong, records_),
              ::testing::Contains(HasSubstr("RECT: bottom As Integer has another size")));
}

TEST_F(Win32LibraryFacts, AMemberAtAnotherPlaceIsFound) {
  Rows wrong = rows_;
  std::swap(Record(wrong, "rect").members[0], Record(wrong, "rect").members[1]);
  EXPECT_THAT(CheckRecords(wrong, records_),
              ::testing::Contains(HasSubstr("RECT: top As Long stands elsewhere")));
}

TEST_F(Win32LibraryFacts, AMissingMemberIsFound) {
  Rows wrong = rows_;
  Record(wrong, "rect").members.pop_back();
  EXPECT_THAT(CheckRecords(wrong, records_),
              ::testing::Contains(HasSubstr("RECT: has another size")));
}

TEST_F(Win32LibraryFacts, AnArgumentTooMuchIsFound) {
  Rows wrong = rows_;
  wrong.declares = {{"GetTickCount", true, "\"kernel32\" (ByVal x As Long) As Long"}};
  EXPECT_THAT(CheckDeclares(wrong, imports_), ElementsAre("GetTickCount takes 0 bytes, not 4"));
}

TEST_F(Win32LibraryFacts, AnotherLibraryIsFound) {
  Rows wrong = rows_;
  wrong.declares = {{"GetTickCount", true, "\"user32\" () As Long"}};
  EXPECT_THAT(CheckDeclares(wrong, imports_),
              ElementsAre("GetTickCount: user32 has no GetTickCount"));
}

TEST(SharedItemsCheck, FindsANameThatIsNotInTheLibrary) {
  Library library;
  library.SetItems(Kind::kConst, {{u"A"}, {u"Long\u000eB + 1"}});
  EXPECT_THAT(CheckSharedItems(library), ElementsAre("A refers to B"));
}

TEST(NamesCheck, FindsIllegalNamesOfItemsParametersAndMembers) {
  Library library;
  library.SetItems(Kind::kConst, {{u"A", u"a", u"Loop"}, {u"\u000e1", u"\u000e1", u"\u000e1"}});
  library.SetItems(Kind::kDeclare, {{u"F"}, {u"\u000a\"x\" (ByVal n As Long, ByVal N As Long)"}});
  library.SetItems(Kind::kType, {{u"T"}, {u"\u000ca As Long\u000da As Long"}});
  EXPECT_THAT(CheckNamesAndLines(library, RowsOf(library)),
              ElementsAre("a is there twice", "Loop is no name", "F: parameter N", "T: member a"));
}

TEST(LinesCheck, FindsALineThatIsTooLong) {
  Library library;
  library.SetItems(Kind::kConst,
                   {{u"A"}, {u"String\u000e\"" + std::u16string(1000, u'x') + u"\""}});
  EXPECT_THAT(CheckNamesAndLines(library, RowsOf(library)),
              ElementsAre("A has a line that is too long"));
}

}  // namespace
}  // namespace declarium::win32_library_test
