#include "library/file_saver.h"

#include <chrono>
#include <exception>
#include <utility>

#include "library/temporary_file.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;

// A saver at work has written to its file a moment ago, and waits at most two seconds for its turn.
constexpr auto kYoungest = std::chrono::seconds(10);

bool IsYoung(const FileStatus& status) {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::nanoseconds(status.written) > now - kYoungest;
}

}  // namespace

FileSaver::FileSaver(FileSystem& files, History history)
    : files_(files), history_(std::move(history)) {}

std::expected<Saved, NotSaved> FileSaver::Save(const fs::path& path, std::string_view bytes) {
  const auto target = files_.Target(path);
  const auto kind = files_.CheckTarget(target);
  if (!kind) return Fail(kind.error(), path, bytes);
  if (*kind == WriteTarget::kInPlace) return WriteInPlace(path, bytes);
  LookAfter(target.parent_path());
  return Replace(target, bytes, *kind);
}

std::expected<Saved, NotSaved> FileSaver::Replace(const fs::path& target, std::string_view bytes,
                                                  WriteTarget kind) {
  const auto hash = HashOf(bytes);
  const auto temporary = TemporaryFileFor(target, ProcessNumber(), hash);
  const auto model = kind == WriteTarget::kFile ? target : fs::path();
  const auto hold = files_.Create(temporary, bytes, model);
  if (!hold) {
    if (RefusesNewFiles(hold.error())) return WriteInPlace(target, bytes);
    return Fail(hold.error(), target, bytes);
  }
  const auto kept = history_.KeepFile(target, KeepBy::kLink);
  if (const auto replaced = files_.Replace(temporary, target); !replaced) {
    // The content is in a file already. Without a history it stays there, as what a killed saver
    // leaves does.
    const bool moved = history_.IsOn() &&
                       history_.TakeIn(temporary, target, VersionReason::kUnwritten).has_value();
    if (!history_.IsOn()) (void)files_.Remove(temporary);
    return std::unexpected(NotSaved{replaced.error(), moved});
  }
  Prune(target);
  Saved saved{StampOf(target, bytes.size(), hash), std::nullopt};
  if (!kept) saved.not_kept = kept.error();
  return saved;
}

std::expected<Saved, NotSaved> FileSaver::WriteInPlace(const fs::path& path,
                                                       std::string_view bytes) {
  // Ended half-way, this leaves a part of the new content: without the old one in the history it is
  // not begun.
  if (const auto kept = history_.KeepFile(path, KeepBy::kCopy); !kept) {
    return Fail(kept.error(), path, bytes);
  }
  if (const auto written = files_.Overwrite(path, bytes); !written) {
    return Fail(written.error(), path, bytes);
  }
  Prune(path);
  return Saved{StampOf(path, bytes.size(), HashOf(bytes)), std::nullopt};
}

void FileSaver::Prune(const fs::path& path) noexcept {
  try {
    history_.Prune(path);
  } catch (...) {
    // The next save prunes what is left now.
  }
}

std::unexpected<NotSaved> FileSaver::Fail(const Error& error, const fs::path& path,
                                          std::string_view bytes) {
  const bool kept = history_.IsOn() && history_.KeepBytes(path, bytes).has_value();
  // The user knows nothing of a temporary file.
  return std::unexpected(
      NotSaved{{error.kind, PathText(path), error.detail, error.system_code}, kept});
}

std::vector<Recovered> FileSaver::LookInto(const fs::path& folder) {
  LookAfter(folder);
  return TakeRecovered();
}

std::vector<Recovered> FileSaver::TakeRecovered() {
  return std::exchange(recovered_, {});
}

void FileSaver::LookAfter(const fs::path& folder) {
  for (const auto& path : files_.List(folder)) {
    if (ParseTemporaryFileName(path)) LookAfterFile(path);
  }
}

void FileSaver::LookAfterFile(const fs::path& temporary) {
  const auto status = files_.Status(temporary);
  std::error_code failed;
  if (!status || IsYoung(*status) || fs::is_symlink(fs::symlink_status(temporary, failed)) ||
      files_.IsHeld(temporary)) {
    return;
  }
  const auto bytes = files_.Read(temporary);
  if (!bytes) return;
  const auto name = *ParseTemporaryFileName(temporary);
  // Version 3.0.0 did not say what the file was to become.
  if (!name.hash) return ToHistory(temporary, temporary, VersionReason::kUnfinished);
  const auto target = temporary.parent_path() / name.target;
  const bool whole = HashOf(*bytes) == *name.hash;
  if (!fs::exists(fs::symlink_status(target, failed))) {
    if (!whole) return ToHistory(temporary, target, VersionReason::kUnfinished);
    if (files_.Move(temporary, target)) recovered_.push_back({target, true});
  } else if (!whole || !history_.IsOn() || files_.Read(target) == *bytes) {
    (void)files_.Remove(temporary);
  } else {
    ToHistory(temporary, target, VersionReason::kUnfinished);
  }
}

void FileSaver::ToHistory(const fs::path& temporary, const fs::path& path, VersionReason reason) {
  if (history_.IsOn() && history_.TakeIn(temporary, path, reason)) {
    recovered_.push_back({path, false});
  }
}

std::expected<void, Error> WriteWholeFile(const fs::path& path, std::string_view bytes) {
  FileSaver saver(SystemFiles(), History(SystemFiles(), {}));
  if (const auto saved = saver.Save(path, bytes); !saved) {
    return std::unexpected(saved.error().error);
  }
  return {};
}

}  // namespace declarium
