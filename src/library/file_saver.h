// The one way in which the programs replace files. It never loses one:
//
// 1. The new content is written to a temporary file beside the old one (library/temporary_file.h)
//    and flushed to the disk.
// 2. The old content is kept in the history (library/history.h).
// 3. The temporary file takes the old one's place in one step, with the permissions, attributes and
//    creation time of the old one.
//
// So at every moment the file is the old or the new one, whole, at its own name. What cannot be
// written goes to the history instead. What a killed saver left is looked after before the next
// save into that folder: it gets the name that it was made for when no file has that, and goes to
// the history otherwise.
#pragma once

#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "library/file_stamp.h"
#include "library/file_system.h"
#include "library/history.h"
#include "text/error.h"

namespace declarium {

struct Saved {
  FileStamp stamp;
  std::optional<Error> not_kept;  // why the old content is not in the history
};

struct NotSaved {
  Error error;        // the old file is unchanged, unless it had to be written in place
  bool kept = false;  // whether the content is in the history now
};

// A file that a killed saver left, and what became of it.
struct Recovered {
  std::filesystem::path path;  // the file that it was to become, or its own when it did not say
  bool in_place = false;       // it has that name now; otherwise it is a version in the history
};

class FileSaver {
 public:
  // `files` must outlive the saver.
  FileSaver(FileSystem& files, History history);

  // Makes `bytes` the content of the file, creating it or replacing what it held. A symbolic link
  // stays, its target is replaced. Where the folder takes no new file, the file is written in place
  // once the old content is kept.
  [[nodiscard]] std::expected<Saved, NotSaved> Save(const std::filesystem::path& path,
                                                    std::string_view bytes);

  // Looks after what killed savers left in a folder (empty: the current one), and tells what it
  // found since the last call, also while saving. A file of the last ten seconds may belong to a
  // saver at work and is left alone. Nothing is removed but the beginning of a file whose old
  // content is there, and a whole file when there is no history and the old content is there.
  [[nodiscard]] std::vector<Recovered> LookInto(const std::filesystem::path& folder);
  [[nodiscard]] std::vector<Recovered> TakeRecovered();

  [[nodiscard]] FileSystem& Files() noexcept { return files_; }
  [[nodiscard]] History& Kept() noexcept { return history_; }

 private:
  void LookAfter(const std::filesystem::path& folder);
  void LookAfterFile(const std::filesystem::path& temporary);
  void ToHistory(const std::filesystem::path& temporary, const std::filesystem::path& path,
                 VersionReason reason);
  [[nodiscard]] std::expected<Saved, NotSaved> Replace(const std::filesystem::path& target,
                                                       std::string_view bytes, WriteTarget kind);
  [[nodiscard]] std::expected<Saved, NotSaved> WriteInPlace(const std::filesystem::path& path,
                                                            std::string_view bytes);
  // Behind a save that has taken place, which nothing can make fail any more.
  void Prune(const std::filesystem::path& path) noexcept;
  [[nodiscard]] std::unexpected<NotSaved> Fail(const Error& error,
                                               const std::filesystem::path& path,
                                               std::string_view bytes);

  FileSystem& files_;
  History history_;
  std::vector<Recovered> recovered_;
};

// Saves without a history, for files that hold nothing of the user's: settings.
[[nodiscard]] std::expected<void, Error> WriteWholeFile(const std::filesystem::path& path,
                                                        std::string_view bytes);

}  // namespace declarium
