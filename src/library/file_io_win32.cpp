#include <algorithm>
#include <optional>

#include "library/file_io.h"
#include "library/file_name.h"
#include "library/temporary_file.h"
#include "text/text.h"
#include "win32/system_error.h"
#include "win32/unique_handle.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;

using win32::UniqueFile;

// Whether the system could close the file; a failure is the last error then.
bool Close(UniqueFile& file) {
  return ::CloseHandle(file.Release()) != 0;
}

std::unexpected<Error> Failed(ErrorKind kind, const fs::path& path, DWORD code) {
  return std::unexpected(
      Error{kind, PathText(path), ToUtf8(win32::SystemErrorText(code)), static_cast<int>(code)});
}

std::expected<UniqueFile, Error> OpenForReading(const fs::path& path) {
  UniqueFile file(::CreateFileW(path.c_str(), GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
  if (!file) return Failed(ErrorKind::kCannotRead, path, ::GetLastError());
  return file;
}

// Reads up to `size` bytes; no value on failure.
std::optional<std::size_t> ReadFully(HANDLE file, char* out, std::size_t size) {
  constexpr std::size_t kMost = 1U << 30;
  std::size_t done = 0;
  while (done < size) {
    DWORD count = 0;
    const auto wanted = static_cast<DWORD>(std::min(size - done, kMost));
    if (!::ReadFile(file, out + done, wanted, &count, nullptr)) {
      if (::GetLastError() == ERROR_BROKEN_PIPE) break;
      return std::nullopt;
    }
    if (count == 0) break;
    done += count;
  }
  return done;
}

bool WriteFully(HANDLE file, std::string_view bytes) {
  constexpr std::size_t kMost = 1U << 30;
  while (!bytes.empty()) {
    DWORD count = 0;
    const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kMost));
    if (!::WriteFile(file, bytes.data(), wanted, &count, nullptr)) return false;
    bytes.remove_prefix(count);
  }
  return true;
}

bool Flush(HANDLE file) {
  return ::FlushFileBuffers(file) || ::GetFileType(file) != FILE_TYPE_DISK;
}

std::expected<void, Error> WriteInPlace(const fs::path& path, std::string_view bytes) {
  UniqueFile file(::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                CREATE_ALWAYS, FILE_ATTRIBUTE_ARCHIVE, nullptr));
  if (!file || !WriteFully(file.Get(), bytes) || !Flush(file.Get()) || !Close(file)) {
    return Failed(ErrorKind::kCannotWrite, path, ::GetLastError());
  }
  return {};
}

// Whether somebody has the file open and does not let it be replaced.
bool IsInUse(const fs::path& path) {
  const UniqueFile file(::CreateFileW(path.c_str(), DELETE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, 0, nullptr));
  return !file && ::GetLastError() == ERROR_SHARING_VIOLATION;
}

// Virus scanners and search indexes read a file for a moment, which must not cost the user what is
// being saved. A file in use is not tried: some systems leave a temporary file behind then.
bool ReplaceOnceFree(const fs::path& replaced, const fs::path& temporary) {
  constexpr ULONGLONG kLongestWait = 2000;  // milliseconds
  const ULONGLONG end = ::GetTickCount64() + kLongestWait;
  for (;;) {
    if (!IsInUse(replaced) &&
        ::ReplaceFileW(replaced.c_str(), temporary.c_str(), nullptr,
                       REPLACEFILE_IGNORE_MERGE_ERRORS | REPLACEFILE_IGNORE_ACL_ERRORS, nullptr,
                       nullptr)) {
      return true;
    }
    const DWORD code = ::GetLastError();
    const bool in_use = code == ERROR_SHARING_VIOLATION || code == ERROR_UNABLE_TO_REMOVE_REPLACED;
    if (!in_use || ::GetTickCount64() >= end) return false;
    ::Sleep(10);
  }
}

bool PutInPlace(const fs::path& temporary, const fs::path& path, bool replaces) {
  if (!replaces) {
    return ::MoveFileExW(temporary.c_str(), path.c_str(),
                         MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
  }
  // A name without a folder is not enough for some systems to find the replaced file's folder.
  std::error_code ignored;
  const auto replaced = fs::absolute(path, ignored);
  return ReplaceOnceFree(replaced, temporary);
}

// Replacing a file is several steps for the system, and two replacements that meet can leave a
// temporary file behind; so savers of all processes of the session take turns. One that waits in
// vain for a hanging saver goes on without its turn.
class SavingTurn {
 public:
  SavingTurn() : mutex_(::CreateMutexW(nullptr, FALSE, L"Local\\Declarium.Saving")) {
    constexpr DWORD kLongestWait = 5000;  // milliseconds
    const DWORD outcome = mutex_ ? ::WaitForSingleObject(mutex_.Get(), kLongestWait) : WAIT_FAILED;
    owned_ = outcome == WAIT_OBJECT_0 || outcome == WAIT_ABANDONED;
  }
  SavingTurn(const SavingTurn&) = delete;
  SavingTurn& operator=(const SavingTurn&) = delete;
  ~SavingTurn() {
    if (owned_) ::ReleaseMutex(mutex_.Get());
  }

 private:
  win32::UniqueKernelObject mutex_;
  bool owned_ = false;
};

std::expected<void, Error> Replace(const fs::path& path, std::string_view bytes, bool replaces) {
  const SavingTurn turn;
  RemoveAbandonedFiles(path.parent_path());
  const auto temporary = TemporaryFileIn(path.parent_path(), ::GetCurrentProcessId());
  UniqueFile file(::CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                FILE_ATTRIBUTE_ARCHIVE, nullptr));
  if (!file) {
    const DWORD code = ::GetLastError();
    if (code == ERROR_ACCESS_DENIED || code == ERROR_WRITE_PROTECT) {
      return WriteInPlace(path, bytes);
    }
    return Failed(ErrorKind::kCannotWrite, path, code);
  }
  if (!WriteFully(file.Get(), bytes) || !Flush(file.Get()) || !Close(file) ||
      !PutInPlace(temporary, path, replaces)) {
    const DWORD code = ::GetLastError();
    file.Reset();
    ::DeleteFileW(temporary.c_str());
    return Failed(ErrorKind::kCannotWrite, path, code);
  }
  return {};
}

}  // namespace

// A saver lets nobody else open its file, not even to delete it.
void RemoveUnlessHeld(const fs::path& temporary_file) {
  ::DeleteFileW(temporary_file.c_str());
}

std::string PathText(const fs::path& path) {
  return ToUtf8(NameOfPath(path));
}

std::expected<std::string, Error> ReadWholeFile(const fs::path& path) {
  const auto file = OpenForReading(path);
  if (!file) return std::unexpected(file.error());
  LARGE_INTEGER size = {};
  const bool has_size =
      ::GetFileType(file->Get()) == FILE_TYPE_DISK && ::GetFileSizeEx(file->Get(), &size);

  std::string bytes;
  std::optional<std::size_t> count;
  const auto read_more = [&](std::size_t more) {
    const auto start = bytes.size();
    bytes.resize_and_overwrite(start + more, [&](char* out, std::size_t) {
      count = ReadFully(file->Get(), out + start, more);
      return start + count.value_or(0);
    });
    return bytes.size() - start;
  };
  constexpr std::size_t kPipeBlock = 64 * 1024;
  if (has_size) {
    read_more(static_cast<std::size_t>(size.QuadPart));
  } else {
    while (read_more(kPipeBlock) > 0) {
    }
  }
  if (!count) return Failed(ErrorKind::kCannotRead, path, ::GetLastError());
  return bytes;
}

std::optional<FileView> MapFile(const fs::path&) {
  // A mapped file could not be replaced by others, and this program lets them.
  return std::nullopt;
}

std::optional<FileStatus> StatusOf(const fs::path& path) {
  WIN32_FILE_ATTRIBUTE_DATA data = {};
  if (!::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) ||
      (data.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) != 0) {
    return std::nullopt;
  }
  const auto join = [](DWORD high, DWORD low) { return (std::uint64_t{high} << 32U) | low; };
  return FileStatus{static_cast<std::int64_t>(join(data.ftLastWriteTime.dwHighDateTime,
                                                   data.ftLastWriteTime.dwLowDateTime)),
                    join(data.nFileSizeHigh, data.nFileSizeLow)};
}

std::expected<std::string, Error> ReadFileUntil(const fs::path& path, char end, std::size_t limit) {
  const auto file = OpenForReading(path);
  if (!file) return std::unexpected(file.error());

  constexpr std::size_t kBlock = 32;
  std::string bytes;
  while (bytes.size() < limit) {
    char block[kBlock];
    const auto count = ReadFully(file->Get(), block, std::min(kBlock, limit - bytes.size()));
    if (!count) return Failed(ErrorKind::kCannotRead, path, ::GetLastError());
    if (*count == 0) break;
    const std::string_view read(block, *count);
    bytes += read.substr(0, read.find(end));
    if (read.contains(end)) return bytes;
  }
  return std::string();
}

std::expected<void, Error> WriteWholeFile(const fs::path& path, std::string_view bytes) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return Replace(path, bytes, false);
  // Replacing would get round a write protection that opening the file respects.
  if ((attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) {
    return Failed(ErrorKind::kCannotWrite, path, ERROR_ACCESS_DENIED);
  }
  if ((attributes & FILE_ATTRIBUTE_DEVICE) != 0) return WriteInPlace(path, bytes);
  return Replace(path, bytes, true);
}

}  // namespace declarium
