// The history: a folder of the user that keeps what saving replaces, and what could not be written.
//
//   <history>/Win32.api-0f1e2d3c4b5a6978/        a folder for each file, named with the file's name
//                                                and the hash of its whole path
//     path                                       the file's whole path, UTF-8
//     000012-20261122T031500Z-20261121T180000Z-replaced.api
//                                                a version: its number, when it was kept, when its
//                                                content was written, why it was kept, and the
//                                                file's own extension
//   <history>/lock                             held by the process that changes the history
//   <history>/begun                            a version that is not whole yet
//   <history>/untold                           there may be versions to tell the user about
//
// Versions are numbered from 1, and no number is used again. The reason is "replaced", "unwritten"
// or "unfinished"; "-untold" behind it says that the user has not been told. A process that is
// ended at any moment leaves whole versions: each gets its name when it is whole.
#pragma once

#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "library/file_system.h"
#include "text/error.h"

namespace declarium {

enum class VersionReason {
  kReplaced,    // a save put another content in its place
  kUnwritten,   // it could not be written
  kUnfinished,  // its saver was ended before the file was in place
};

// "replaced", "unwritten" or "unfinished".
[[nodiscard]] std::string_view ReasonWord(VersionReason reason);

struct Version {
  int number = 0;
  std::string kept;     // when it was kept, as in 20261122T031500Z
  std::string written;  // when its content was written, likewise
  VersionReason reason = VersionReason::kReplaced;
  bool told = true;  // or does not need to be
  std::uint64_t bytes = 0;
  std::filesystem::path file;
};

// "2026-11-22T03:15:00Z" of "20261122T031500Z".
[[nodiscard]] std::string LongTime(std::string_view time);

struct HistoryLimits {
  std::size_t versions = 30;                        // of each file
  std::uint64_t bytes = std::uint64_t{500} << 20U;  // of all versions together
};

// How KeepFile takes a file in.
enum class KeepBy {
  kLink,  // by a second name for it where the volume allows, which costs nothing
  kCopy,  // the file itself is going to be written into
};

class History {
 public:
  // `files` must outlive the history. An empty folder: there is no history, nothing is kept, and
  // nothing fails.
  History(FileSystem& files, std::filesystem::path folder, HistoryLimits limits = {});

  [[nodiscard]] bool IsOn() const noexcept { return !folder_.empty(); }
  void TurnOff() { folder_.clear(); }

  // Keeps the file's content, which a save is about to replace. A content that is kept already
  // becomes the newest version, under a new number. A missing file is no error.
  [[nodiscard]] std::expected<void, Error> KeepFile(const std::filesystem::path& path, KeepBy by);
  // Keeps what could not be written to `path`, to be told to the user.
  [[nodiscard]] std::expected<void, Error> KeepBytes(const std::filesystem::path& path,
                                                     std::string_view bytes);
  // Moves a file in, as a version of `path`, to be told to the user.
  [[nodiscard]] std::expected<void, Error> TakeIn(const std::filesystem::path& file,
                                                  const std::filesystem::path& path,
                                                  VersionReason reason);
  // Removes the oldest versions that are beyond the limits; never one that the user has not been
  // told about, nor a file's newest.
  void Prune(const std::filesystem::path& path);

  // The versions of a file, the newest first.
  [[nodiscard]] std::vector<Version> Versions(const std::filesystem::path& path) const;
  [[nodiscard]] std::expected<std::string, Error> Read(const Version& version) const;

  // The files of which there are versions that the user has not been told about.
  [[nodiscard]] std::vector<std::filesystem::path> Untold() const;
  void MarkTold(const std::filesystem::path& path);

 private:
  struct Fresh;

  [[nodiscard]] std::filesystem::path FolderOf(const std::filesystem::path& path) const;
  [[nodiscard]] std::vector<Version> VersionsIn(const std::filesystem::path& folder) const;
  [[nodiscard]] const Version* FindEqual(const std::vector<Version>& versions,
                                         const std::filesystem::path& path,
                                         std::uint64_t size) const;
  [[nodiscard]] std::expected<FileHold, Error> Enter(const std::filesystem::path& path);
  [[nodiscard]] std::filesystem::path NameFor(const std::filesystem::path& path,
                                              const Fresh& fresh) const;
  [[nodiscard]] std::expected<void, Error> AddCopy(const std::filesystem::path& path,
                                                   const Fresh& fresh, std::string_view bytes);
  void NoteUntold();
  void Drop(const Version& version);
  void PruneFile(const std::filesystem::path& path);
  void PruneAll();

  FileSystem& files_;
  std::filesystem::path folder_;
  HistoryLimits limits_;
  std::optional<std::uint64_t> total_;  // bytes of all versions; counted when first needed
};

}  // namespace declarium
