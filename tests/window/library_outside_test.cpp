// What the menu does with libraries and their items, up to the bytes on the disk.
#include <string>

#include "window/outside_fixture.h"

namespace declarium {
namespace {

using namespace std::string_literals;
using namespace window_driver;

constexpr std::u16string_view kAskDeleteB =
    u"Naozaj chcete natrvalo odtrániť položku 'B' z databázy?";
constexpr std::u16string_view kChangesKept =
    u"Čo sa nedalo zapísať, je uložené v histórii. Otvoríte to cez Databáza, Obnoviť staršiu "
    u"verziu.";
constexpr std::u16string_view kAskKeep = u"Ponechať pôvodné položky?";

// The library with one constant less.
std::string WithoutB() {
  auto bytes = WinLibrary();
  bytes.erase(bytes.find("B\0"s), 2);
  bytes.erase(bytes.find("Long\x0e"
                         "A + 1"),
              11);
  return bytes;
}

class LibraryOutside : public OutsideTest {
 protected:
  LibraryOutside() {
    Put("win.api", WinLibrary());
    StartAndShow(L"win.api");
    ChooseKind(0);
    ClickItem("lstConst", 1, u"Const B");
  }
  void DeleteB() const {
    ChooseMenu("mnuDeleteDbItem");
    AnswerMessage(kAskDeleteB, IDYES);
    ASSERT_TRUE(ListBecomes("lstConst", {u"A", u"MAX_PATH"}));
  }
  void AnswerFailedSave() const {
    AnswerMessage(u"Chyba pri zápise do súboru.", IDOK);
    AnswerMessage(kChangesKept, IDOK);
  }
};

TEST_F(LibraryOutside, TheLibraryOfTheseTestsLosesOneItem) {
  EXPECT_EQ(WithoutB().size(), WinLibrary().size() - 13);
}

TEST_F(LibraryOutside, NoKeepsTheItem) {
  ChooseMenu("mnuDeleteDbItem");
  AnswerMessage(kAskDeleteB, IDNO);
  EXPECT_EQ(ListRows(Control("lstConst")), (Rows{u"A", u"B", u"MAX_PATH"}));
  Close();
  EXPECT_EQ(Program().WaitForEnd(), 0) << "nothing to ask about";
}

TEST_F(LibraryOutside, YesDeletesTheItemAndSavingWritesExactlyTheOthers) {
  DeleteB();
  EXPECT_EQ(BytesOf("win.api"), WinLibrary()) << "not saved yet";
  ChooseMenu("mnuSave");
  EXPECT_TRUE(ComesToHold("win.api", WithoutB()));
  Close();
  EXPECT_EQ(Program().WaitForEnd(), 0) << "saved, so nothing to ask about";
}

TEST_F(LibraryOutside, RenamingChangesTheCaptionAndSavingTheTitle) {
  ChooseMenu("mnuRename");
  AnswerText(u"Okná");
  EXPECT_TRUE(CaptionBecomes(u"Okná - Declarium 3.0"));
  ChooseMenu("mnuSave");
  EXPECT_TRUE(ComesToHold("win.api", WinLibrary("Okn\xe1")));
  EXPECT_TRUE(Eventually([this] { return ComboRows(Control("cmbDatabase")) == Rows{u"Okná"}; }));
}

TEST_F(LibraryOutside, SaveAsWritesAnotherFileAndGoesOnWithIt) {
  ChooseMenu("mnuSaveAs");
  AnswerFile("copy.api");
  ASSERT_TRUE(ComesToHold("copy.api", WinLibrary()));
  // The catalogue is reread, and with it the library.
  ASSERT_TRUE(Eventually([this] { return SelectedRow(Control("lstConst")) == -1; }));
  ClickItem("lstConst", 1, u"Const B");
  DeleteB();
  ChooseMenu("mnuSave");
  EXPECT_TRUE(ComesToHold("copy.api", WithoutB()));
  EXPECT_EQ(BytesOf("win.api"), WinLibrary());
}

TEST_F(LibraryOutside, ImportWithYesKeepsTheItemsThatWereThere) {
  Put("m.bas", "Public Const C = 3\r\nPublic Const A = 7\r\n");
  ChooseMenu("mnuImport");
  AnswerFile("m.bas");
  AnswerMessage(kAskKeep, IDYES);
  EXPECT_TRUE(ListBecomes("lstConst", {u"A", u"B", u"C", u"MAX_PATH"}));
}

TEST_F(LibraryOutside, ImportWithNoReplacesEverything) {
  Put("m.bas", "Public Const C = 3\r\n");
  ChooseMenu("mnuImport");
  AnswerFile("m.bas");
  AnswerMessage(kAskKeep, IDNO);
  ASSERT_TRUE(ListBecomes("lstConst", {u"C"}));
  ChooseMenu("mnuSave");
  EXPECT_TRUE(ComesToHold("win.api",
                          "Win\x02"
                          "C\x01\x01\x02\x0e"
                          "3\x01\x01"));
}

TEST_F(LibraryOutside, ImportRecognizesUtf8AndTellsWhatTheLibraryCannotKeep) {
  Put("m.bas", "Const C = \"\xC4\x8D\" '\xE2\x86\x92\r\nConst D = \"\x01\"\r\n");
  ChooseMenu("mnuImport");
  AnswerFile("m.bas");
  AnswerMessage(kAskKeep, IDNO);
  AnswerMessage(
      u"Databáza nedokáže uchovať všetko, čo ste jej pridali.\r\n"
      u"Vynechané deklarácie: 1\r\nZnaky v komentároch nahradené otáznikom: 1\r\n\r\n"
      u"riadok 2, stĺpec 12: znak s kódom 1\r\nriadok 1, stĺpec 16: znak \u2192 (U+2192)",
      IDOK);
  ASSERT_TRUE(ListBecomes("lstConst", {u"C"}));
  ChooseMenu("mnuSave");
  EXPECT_TRUE(ComesToHold("win.api",
                          "Win\x02"
                          "C\x01\x01\x02\x0e"
                          "\"\xE8\" '?\x01\x01"));
}

TEST_F(LibraryOutside, ExportWritesEveryItemAsSource) {
  ChooseMenu("mnuExport");
  AnswerFile("out.bas");
  EXPECT_TRUE(ComesToHold("out.bas",
                          "Const A = 1\r\nConst B As Long = A + 1\r\nConst MAX_PATH = 260\r\n"
                          "Declare Sub Beep Lib \"kernel32\" (ByVal f As Long)\r\n"
                          "Declare Function GetTickCount Lib \"kernel32\" () As Long\r\n"
                          "Declare Function GetWindow Lib \"user32\" (r As RECT, p As POINTAPI) As "
                          "Long\r\n"
                          "Type POINTAPI\r\n\tx As Long\r\n\ty As Long\r\nEnd Type\r\n"
                          "Type RECT\r\n\ta As POINTAPI\r\n\ts As String * MAX_PATH\r\nEnd Type"));
}

TEST_F(LibraryOutside, TypedDeclarationsAreAdded) {
  ChooseMenu("mnuAdd");
  const HWND dialog = Program().Form("frmAdd");
  SetText(FindControl(dialog, "Text1"), u"Const D = 4\r\nConst E = 5");
  PressButton(FindControl(dialog, "Command1"));
  EXPECT_TRUE(ListBecomes("lstConst", {u"A", u"B", u"D", u"E", u"MAX_PATH"}));
  EXPECT_TRUE(Eventually([this] { return !Program().FindForm("frmAdd"); }));
}

TEST_F(LibraryOutside, ANewLibraryIsWrittenListedAndOpened) {
  ChooseMenu("mnuNew");
  AnswerText(u"Nová");
  AnswerFile("new.api");
  EXPECT_TRUE(CaptionBecomes(u"Nová - Declarium 3.0"));
  EXPECT_EQ(BytesOf("new.api"), "Nov\xe1\x02\x02");
  EXPECT_EQ(ComboRows(Control("cmbDatabase")), (Rows{u"Nová", u"Win"}));
}

TEST_F(LibraryOutside, AWriteProtectedFileIsReportedAndKept) {
  DeleteB();
  std::filesystem::permissions(FileAt("win.api"), std::filesystem::perms::owner_read);
  ASSERT_NE(GetFileAttributesW(FileAt("win.api").c_str()) & FILE_ATTRIBUTE_READONLY, 0u);
  ChooseMenu("mnuSave");
  AnswerFailedSave();
  EXPECT_EQ(BytesOf("win.api"), WinLibrary());
  SetFileAttributesW(FileAt("win.api").c_str(), FILE_ATTRIBUTE_NORMAL);
  Close();
  EXPECT_EQ(Program().WaitForEnd(), 0) << "the changes count as saved";
}

TEST_F(LibraryOutside, AFileThatAnotherProgramKeepsIsReportedAndKept) {
  DeleteB();
  win32::UniqueFile kept(CreateFileW(FileAt("win.api").c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                                     nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(kept);
  ChooseMenu("mnuSave");
  AnswerFailedSave();
  kept.Reset();
  EXPECT_EQ(BytesOf("win.api"), WinLibrary());
}

// A folder of a file system that takes no change from anybody, for as long as it lives: permissions
// do not bind every user. Under Wine alone, and for a user who may mount.
class ReadOnlyView {
 public:
  ReadOnlyView(const std::filesystem::path& folder, const std::filesystem::path& view)
      : folder_(view), view_(UnixPath(view)) {
    const std::string of = UnixPath(folder);
    if (of.empty()) return;
    Run("mount --bind " + of + " " + view_ + " && mount -o remount,ro,bind " + view_);
    is_mounted_ = Eventually([this] { return IsReadOnly(); });
  }
  ReadOnlyView(const ReadOnlyView&) = delete;
  ReadOnlyView& operator=(const ReadOnlyView&) = delete;
  ~ReadOnlyView() {
    if (view_.empty()) return;
    Run("umount -l " + view_);
    EXPECT_TRUE(Eventually([this] { return !IsReadOnly(); }));
  }

  [[nodiscard]] bool IsMounted() const { return is_mounted_; }

 private:
  // Empty where the system knows no such path.
  static std::string UnixPath(const std::filesystem::path& path) {
    using Convert = char*(CDECL*)(const wchar_t*);
    const auto function = GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name");
    if (!function) return {};
    const auto convert = reinterpret_cast<Convert>(reinterpret_cast<void (*)()>(function));
    char* const converted = convert(path.c_str());
    if (!converted) return {};
    std::string text = converted;
    HeapFree(GetProcessHeap(), 0, converted);
    return text;
  }
  // Without waiting for the end, of which there is no notification.
  static void Run(const std::string& command) {
    std::string line = "\\\\?\\unix\\bin\\sh -c \"" + command + "\"";
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                   &process);
  }

  [[nodiscard]] bool IsReadOnly() const {
    const auto probe = folder_ / "probe";
    const win32::UniqueFile file(CreateFileW(probe.c_str(), GENERIC_WRITE, 0, nullptr,
                                             CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    return !file;
  }

  std::filesystem::path folder_;
  std::string view_;  // the same for the system below
  bool is_mounted_ = false;
};

TEST_F(LibraryOutside, AReadOnlyFolderIsReportedAndItsLibraryKept) {
  std::filesystem::create_directory(FileAt("source"));
  std::filesystem::create_directory(FileAt("view"));
  Put("source/win.api", WinLibrary());
  const ReadOnlyView view(FileAt("source"), FileAt("view"));
  if (!view.IsMounted()) GTEST_SKIP() << "needs Wine and the right to mount";
  StartAndShow(L"view\\win.api");
  ChooseKind(0);
  ClickItem("lstConst", 1, u"Const B");
  DeleteB();
  ChooseMenu("mnuSave");
  AnswerFailedSave();
  EXPECT_EQ(BytesOf("source/win.api"), WinLibrary());
  Close();
  EXPECT_EQ(Program().WaitForEnd(), 0) << "the changes count as saved";
}

}  // namespace
}  // namespace declarium
