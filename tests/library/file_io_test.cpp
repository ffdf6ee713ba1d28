#include "library/file_io.h"

#include <gtest/gtest.h>
#include <thread>

#include "library/file_format.h"
#include "library/file_saver.h"
#include "library/library_file.h"
#include "support/temporary_folder.h"

namespace declarium {
namespace {

std::string AllBytes() {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
  return bytes;
}

TEST(ReadWholeFile, GivesEveryByte) {
  const TemporaryFolder folder;
  EXPECT_EQ(ReadWholeFile(folder.Put("all", AllBytes())), AllBytes());
  EXPECT_EQ(ReadWholeFile(folder.Put("empty", "")), "");
  const std::string large(1 << 20, '\r');
  EXPECT_EQ(ReadWholeFile(folder.Put("large", large)), large);
}

TEST(ViewFile, GivesWhatReadWholeFileGives) {
  const TemporaryFolder folder;
  for (const auto& content : {AllBytes(), std::string(), std::string(1 << 20, '\r')}) {
    EXPECT_EQ(ViewFile(folder.Put("file", content)).value().bytes, content);
  }
  EXPECT_EQ(ViewFile(folder / "missing").error().Message(),
            ReadWholeFile(folder / "missing").error().Message());
  EXPECT_EQ(ViewFile(folder.path()).error().Message(),
            ReadWholeFile(folder.path()).error().Message());
}

TEST(ViewFile, KeepsItsContentWhenTheFileIsReplaced) {
  const TemporaryFolder folder;
  const auto path = folder.Put("file", "content");
  const auto view = ViewFile(path).value();
  ASSERT_TRUE(WriteWholeFile(path, "another content"));
  EXPECT_EQ(view.bytes, "content");
}

TEST(ReadWholeFile, AMissingFileIsAnErrorThatNamesIt) {
  const TemporaryFolder folder;
  const auto read = ReadWholeFile(folder / "missing.api");
  ASSERT_FALSE(read);
  EXPECT_EQ(read.error().kind, ErrorKind::kCannotRead);
  EXPECT_NE(read.error().system_code, 0);
  EXPECT_EQ(read.error().context, PathText(folder / "missing.api"));
  EXPECT_TRUE(read.error().Message().contains("missing.api: ")) << read.error().Message();
}

TEST(ReadWholeFile, AFolderIsAnError) {
  const TemporaryFolder folder;
  const auto read = ReadWholeFile(folder.path());
  ASSERT_FALSE(read);
  EXPECT_EQ(read.error().kind, ErrorKind::kCannotRead);
  EXPECT_FALSE(ReadFileUntil(folder.path(), '\2', 100));
}

TEST(HaveSameContent, ComparesEveryByteAndTheLength) {
  const TemporaryFolder folder;
  for (const std::size_t length : {0, 1, 65'535, 65'536, 65'537, 200'000}) {
    const std::string bytes(length, 'x');
    const auto path = folder.Put("a", bytes);
    EXPECT_TRUE(HaveSameContent(path, folder.Put("b", bytes))) << length;
    EXPECT_FALSE(HaveSameContent(path, folder.Put("longer", bytes + "x"))) << length;
    EXPECT_FALSE(HaveSameContent(folder / "longer", path)) << length;
    if (length == 0) continue;
    for (const std::size_t at : {std::size_t{0}, length / 2, length - 1}) {
      std::string other = bytes;
      other[at] = 'y';
      EXPECT_FALSE(HaveSameContent(path, folder.Put("c", other))) << length << " at " << at;
    }
  }
}

TEST(HaveSameContent, IsFalseForWhatCannotBeRead) {
  const TemporaryFolder folder;
  EXPECT_FALSE(HaveSameContent(folder / "missing", folder / "missing"));
  EXPECT_FALSE(HaveSameContent(folder.path(), folder.path()));
}

TEST(ReadFileUntil, StopsAtTheFirstEndByte) {
  const TemporaryFolder folder;
  EXPECT_EQ(ReadFileUntil(folder.Put("a", "title\2rest\2"), '\2', 1000), "title");
  EXPECT_EQ(ReadFileUntil(folder.Put("b", "\2"), '\2', 1000), "");
}

TEST(ReadFileUntil, TheEndByteMayStandAnywhereUpToTheLimit) {
  const TemporaryFolder folder;
  for (const std::size_t length : {31, 32, 33, 63, 64, 65, 1000}) {
    const std::string before(length, 'x');
    const auto path = folder.Put("title", before + "\2" + std::string(100, 'y'));
    EXPECT_EQ(ReadFileUntil(path, '\2', length + 1).value(), before) << length;
    EXPECT_EQ(ReadFileUntil(path, '\2', length).value(), "") << length << ", beyond the limit";
  }
}

TEST(ReadFileUntil, AFileWithoutTheEndByteGivesNothing) {
  const TemporaryFolder folder;
  EXPECT_EQ(ReadFileUntil(folder.Put("a", "text"), '\2', 1000), "");
  EXPECT_EQ(ReadFileUntil(folder.Put("b", ""), '\2', 1000), "");
  EXPECT_FALSE(ReadFileUntil(folder / "missing", '\2', 1000));
}

TEST(ReadLibraryTitle, IsWhatStandsBeforeTheFirstByteTwo) {
  const TemporaryFolder folder;
  EXPECT_EQ(ReadLibraryTitle(folder.Put("a", "N\xE1zov\2rest")), u"Názov");
  EXPECT_EQ(ReadLibraryTitle(folder.Put("b", std::string("a\0b\1c\2", 6))),
            std::u16string_view(u"a\0b\1c", 5));
}

TEST(ReadLibraryTitle, IsEmptyWithoutByteTwoOrWithoutAFile) {
  const TemporaryFolder folder;
  EXPECT_EQ(ReadLibraryTitle(folder.Put("a", "no separator")), u"");
  EXPECT_EQ(ReadLibraryTitle(folder / "missing"), u"");
  EXPECT_EQ(ReadLibraryTitle(folder.path()), u"");
}

TEST(ReadLibraryTitle, LooksAtNoMoreThan64KB) {
  const TemporaryFolder folder;
  constexpr std::size_t kLimit = 64 * 1024;
  const std::string title(kLimit - 1, 'x');
  EXPECT_EQ(ReadLibraryTitle(folder.Put("a", title + "\2")).size(), kLimit - 1);
  EXPECT_EQ(ReadLibraryTitle(folder.Put("b", title + "x\2")), u"");
}

TEST(WriteWholeFile, CreatesTheFileAndLeavesNothingBesideIt) {
  const TemporaryFolder folder;
  ASSERT_TRUE(WriteWholeFile(folder / "new.api", AllBytes()));
  EXPECT_EQ(ContentOf(folder / "new.api"), AllBytes());
  EXPECT_EQ(folder.CountFiles(), 1U);
}

TEST(WriteWholeFile, ReplacesALongerContentWhole) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", std::string(10'000, 'x'));
  ASSERT_TRUE(WriteWholeFile(path, "short"));
  EXPECT_EQ(ContentOf(path), "short");
  ASSERT_TRUE(WriteWholeFile(path, ""));
  EXPECT_EQ(ContentOf(path), "");
  EXPECT_EQ(folder.CountFiles(), 1U);
}

TEST(WriteWholeFile, AFileInTheCurrentFolderNeedsNoFolderName) {
  const TemporaryFolder folder;
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  const auto created = WriteWholeFile("x.api", "new");
  const auto replaced = WriteWholeFile("x.api", "newer");
  std::filesystem::current_path(before);
  EXPECT_TRUE(created.has_value());
  EXPECT_TRUE(replaced.has_value()) << replaced.error().Message();
  EXPECT_EQ(ContentOf(folder / "x.api"), "newer");
}

TEST(WriteWholeFile, TakesAFileNameAsLongAsTheSystemDoes) {
  const TemporaryFolder folder;
  const auto path = folder / (std::string(240, 'n') + ".api");
  ASSERT_TRUE(WriteWholeFile(path, "text"));
  EXPECT_EQ(ContentOf(path), "text");
}

TEST(WriteWholeFile, AFolderIsAnErrorAndStays) {
  const TemporaryFolder folder;
  const auto written = WriteWholeFile(folder.path(), "text");
  ASSERT_FALSE(written);
  EXPECT_EQ(written.error().kind, ErrorKind::kCannotWrite);
  EXPECT_TRUE(std::filesystem::is_directory(folder.path()));
}

TEST(WriteWholeFile, AMissingFolderIsAnErrorThatNamesTheFile) {
  const TemporaryFolder folder;
  const auto written = WriteWholeFile(folder / "no" / "a.api", "text");
  ASSERT_FALSE(written);
  EXPECT_EQ(written.error().kind, ErrorKind::kCannotWrite);
  EXPECT_TRUE(written.error().Message().contains("a.api: ")) << written.error().Message();
}

TEST(WriteWholeFile, SeveralAtOnceLeaveOneOfTheContentsWhole) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "old");
  const std::string contents[] = {std::string(300'000, 'a'), std::string(200'000, 'b')};
  std::vector<std::thread> writers;
  for (const auto& content : contents) {
    writers.emplace_back([&path, &content] {
      for (int i = 0; i < 10; ++i) {
        // On Windows a replacement can meet the other one and fail; the file is whole all the same.
        [[maybe_unused]] const auto written = WriteWholeFile(path, content);
      }
    });
  }
  for (auto& writer : writers) writer.join();
  const auto left = ContentOf(path);
  EXPECT_TRUE(left == contents[0] || left == contents[1]) << left.size();
  EXPECT_EQ(folder.CountFiles(), 1U);
}

TEST(LibraryFile, SavesAndLoadsTheSameLibrary) {
  const TemporaryFolder folder;
  Library library;
  library.SetTitle(u"Názov");
  library.SetItems(Kind::kDeclare, {{u"Beep"}, {u"\n\"kernel32\" ()"}});
  const auto path = folder / "a.api";
  FileSaver saver(SystemFiles(), History(SystemFiles(), {}));
  const auto saved = SaveLibraryFile(saver, library, path);
  ASSERT_TRUE(saved);
  EXPECT_TRUE(library.path.empty()) << "saving does not change the library";

  const auto loaded = LoadLibraryFile(path);
  ASSERT_TRUE(loaded);
  EXPECT_EQ(loaded->Title(), library.Title());
  EXPECT_EQ(loaded->path, path);
  EXPECT_EQ(LibraryBytes(*loaded), ContentOf(path));
  EXPECT_EQ(loaded->stamp, saved->stamp);
}

TEST(LibraryFile, ALibraryThatIsNotWholeIsNotSaved) {
  const TemporaryFolder folder;
  Library library;
  library.TakeNames({});
  FileSaver saver(SystemFiles(), History(SystemFiles(), folder / "history"));
  const auto saved = SaveLibraryFile(saver, library, folder / "a.api");
  ASSERT_FALSE(saved);
  EXPECT_FALSE(saved.error().kept);
  EXPECT_EQ(folder.CountFiles(), 0U);
}

TEST(LibraryFile, WhatWouldNotLoadAgainIsRefusedAndNamed) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "old");
  FileSaver saver(SystemFiles(), History(SystemFiles(), {}));
  const auto refused = [&](const Library& library) {
    const auto saved = SaveLibraryFile(saver, library, path);
    EXPECT_EQ(ContentOf(path), "old");
    return saved || saved.error().error.kind != ErrorKind::kCannotKeep
               ? "saved"
               : saved.error().error.context;
  };
  Library library;
  library.SetItems(Kind::kConst, {{u"A", u"B"},
                                  {u"\x0E"
                                   u"1",
                                   std::u16string(u"\x0E"
                                                  u"2\0",
                                                  3)}});
  EXPECT_EQ(refused(library), "Const B");
  library.SetItems(Kind::kConst, {{u"A", u"B"},
                                  {u"\x0E\x01",
                                   u"\x0E"
                                   u"2"}});
  EXPECT_EQ(refused(library), "Const A");
  library.SetItems(Kind::kConst, {{u"A", u"B"},
                                  {u"\x0E"
                                   u"1",
                                   u"\x0E\u4E2D"}});
  EXPECT_EQ(refused(library), "Const B");
  library.SetItems(Kind::kConst, {});
  library.SetItems(Kind::kType, {{u""}, {}});
  EXPECT_EQ(refused(library), "Type ");
  library.SetItems(Kind::kType, {});
  library.SetTitle(u"a\x02");
  EXPECT_EQ(refused(library), "a\x02");
}

TEST(LibraryFile, TellsAFileItCannotReadFromOneThatIsNoLibrary) {
  const TemporaryFolder folder;
  EXPECT_EQ(LoadLibraryFile(folder / "missing").error().kind, ErrorKind::kCannotRead);
  EXPECT_EQ(LoadLibraryFile(folder.Put("empty", "")).error().kind, ErrorKind::kInvalidFormat);
}

}  // namespace
}  // namespace declarium
