#include <algorithm>
#include <vector>

#include "library/file_error_win32.h"
#include "library/file_system.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;
using win32::Failed;
using win32::UniqueFile;

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

// Who may do what with the new file is what held for the old one. A volume without such rights, and
// a user who may not read them, leave the folder's own, as for any new file.
void TakePermissions(const fs::path& path, const fs::path& model) {
  DWORD size = 0;
  ::GetFileSecurityW(model.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<std::byte> rights(size);
  if (rights.empty() ||
      !::GetFileSecurityW(model.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size)) {
    return;
  }
  ::SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, rights.data());
}

constexpr DWORD kCarriedAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                     FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_ENCRYPTED;

// The attributes that a file takes from its model, and those of a new file.
DWORD AttributesLike(const fs::path& model) {
  const DWORD old = model.empty() ? INVALID_FILE_ATTRIBUTES : ::GetFileAttributesW(model.c_str());
  if (old == INVALID_FILE_ATTRIBUTES) return FILE_ATTRIBUTE_ARCHIVE;
  return FILE_ATTRIBUTE_ARCHIVE | (old & kCarriedAttributes);
}

// A volume that keeps no creation time loses none.
void TakeCreationTime(HANDLE file, const fs::path& model) {
  WIN32_FILE_ATTRIBUTE_DATA data = {};
  if (!model.empty() && ::GetFileAttributesExW(model.c_str(), GetFileExInfoStandard, &data)) {
    ::SetFileTime(file, &data.ftCreationTime, nullptr, nullptr);
  }
}

// Whether somebody has the file open and does not let it be replaced.
bool IsInUse(const fs::path& path) {
  const UniqueFile file(::CreateFileW(path.c_str(), DELETE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, 0, nullptr));
  return !file && ::GetLastError() == ERROR_SHARING_VIOLATION;
}

// Virus scanners and search indexes read a file for a moment, which must not cost the user what is
// being saved. Windows says "access denied" of an open file that may be read but not replaced.
bool ReplaceOnceFree(const fs::path& from, const fs::path& to) {
  constexpr ULONGLONG kLongestWait = 2000;  // milliseconds
  const ULONGLONG end = ::GetTickCount64() + kLongestWait;
  for (;;) {
    if (IsInUse(to)) {
      ::SetLastError(ERROR_SHARING_VIOLATION);
    } else if (::MoveFileExW(from.c_str(), to.c_str(),
                             MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
      return true;
    }
    const DWORD code = ::GetLastError();
    const bool in_use = code == ERROR_SHARING_VIOLATION || code == ERROR_ACCESS_DENIED;
    if (!in_use || ::GetTickCount64() >= end) return false;
    ::Sleep(10);
  }
}

// Two replacements of one file can meet and one of them then fails, so savers of all processes of
// the session take turns. One that waits in vain for a hanging saver goes on without its turn.
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
    const DWORD code = ::GetLastError();
    if (owned_) ::ReleaseMutex(mutex_.Get());
    ::SetLastError(code);
  }

 private:
  win32::UniqueKernelObject mutex_;
  bool owned_ = false;
};

bool IsSymbolicLink(const fs::path& path) {
  WIN32_FIND_DATAW data = {};
  if (!win32::UniqueListing(::FindFirstFileW(path.c_str(), &data))) return false;
  // Files of a cloud folder are reparse points too, and must not be looked through.
  return (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
         data.dwReserved0 == IO_REPARSE_TAG_SYMLINK;
}

fs::path FinalPath(const fs::path& path) {
  const UniqueFile file(::CreateFileW(path.c_str(), 0,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_ALWAYS, 0, nullptr));
  if (!file) return path;
  std::wstring text(::GetFinalPathNameByHandleW(file.Get(), nullptr, 0, 0), L'\0');
  const auto length =
      ::GetFinalPathNameByHandleW(file.Get(), text.data(), static_cast<DWORD>(text.size()), 0);
  if (length == 0 || length >= text.size()) return path;
  text.resize(length);
  return text;
}

class Win32Files : public FileSystem {
 public:
  std::expected<std::string, Error> Read(const fs::path& path) override {
    return ReadWholeFile(path);
  }

  std::optional<FileStatus> Status(const fs::path& path) override { return StatusOf(path); }

  bool HaveSameContent(const fs::path& first, const fs::path& second) override {
    return declarium::HaveSameContent(first, second);
  }

  fs::path Target(const fs::path& path) override {
    return IsSymbolicLink(path) ? FinalPath(path) : path;
  }

  std::expected<WriteTarget, Error> CheckTarget(const fs::path& path) override {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return WriteTarget::kNew;
    if ((attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) {
      return Failed(ErrorKind::kCannotWrite, path, ERROR_ACCESS_DENIED);
    }
    return (attributes & FILE_ATTRIBUTE_DEVICE) != 0 ? WriteTarget::kInPlace : WriteTarget::kFile;
  }

  std::vector<fs::path> List(const fs::path& folder) override { return ListFolder(folder); }

  // A saver lets nobody else open its file while it writes.
  bool IsHeld(const fs::path& temporary) override {
    const UniqueFile file(::CreateFileW(temporary.c_str(), GENERIC_READ,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                        nullptr, OPEN_EXISTING, 0, nullptr));
    return !file && ::GetLastError() == ERROR_SHARING_VIOLATION;
  }

  FileHold Lock(const fs::path& path) override {
    constexpr ULONGLONG kLongestWait = 5000;  // milliseconds
    const ULONGLONG end = ::GetTickCount64() + kLongestWait;
    for (;;) {
      auto file = std::make_shared<UniqueFile>(
          ::CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                        FILE_ATTRIBUTE_NORMAL, nullptr));
      if (*file) return file;
      if (::GetLastError() != ERROR_SHARING_VIOLATION || ::GetTickCount64() >= end) return nullptr;
      ::Sleep(2);
    }
  }

  std::expected<FileHold, Error> Create(const fs::path& path, std::string_view bytes,
                                        const fs::path& model) override {
    UniqueFile file(::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                  AttributesLike(model), nullptr));
    if (!file) return Failed(ErrorKind::kCannotWrite, path, ::GetLastError());
    if (!WriteFully(file.Get(), bytes) || !Flush(file.Get())) {
      const DWORD code = ::GetLastError();
      file.Reset();
      ::DeleteFileW(path.c_str());
      return Failed(ErrorKind::kCannotWrite, path, code);
    }
    TakeCreationTime(file.Get(), model);
    file.Reset();
    if (!model.empty()) TakePermissions(path, model);
    return nullptr;
  }

  std::expected<void, Error> Overwrite(const fs::path& path, std::string_view bytes) override {
    // Truncated when it is open: creating over a hidden file is refused.
    UniqueFile file(::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                  OPEN_ALWAYS, FILE_ATTRIBUTE_ARCHIVE, nullptr));
    const bool is_file = file && ::GetFileType(file.Get()) == FILE_TYPE_DISK;
    return Result(file && (!is_file || ::SetEndOfFile(file.Get())) &&
                      WriteFully(file.Get(), bytes) && Flush(file.Get()) &&
                      ::CloseHandle(file.Release()),
                  path);
  }

  // Not ReplaceFileW, which is several steps: ended between them, or failing with
  // ERROR_UNABLE_TO_MOVE_REPLACEMENT, it leaves the file without its name.
  std::expected<void, Error> Replace(const fs::path& from, const fs::path& to) override {
    const SavingTurn turn;
    return Result(ReplaceOnceFree(from, to), to);
  }

  std::expected<void, Error> Move(const fs::path& from, const fs::path& to) override {
    return Result(::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) != 0, to);
  }

  std::expected<void, Error> Link(const fs::path& from, const fs::path& to) override {
    return Result(::CreateHardLinkW(to.c_str(), from.c_str(), nullptr) != 0, to);
  }

  std::expected<void, Error> Remove(const fs::path& path) override {
    return Result(::DeleteFileW(path.c_str()) != 0, path);
  }

  std::expected<void, Error> MakeFolder(const fs::path& folder) override {
    std::error_code failed;
    if (fs::is_directory(folder, failed)) return {};
    if (folder.has_parent_path() && folder.parent_path() != folder) {
      if (auto above = MakeFolder(folder.parent_path()); !above) return above;
    }
    return Result(
        ::CreateDirectoryW(folder.c_str(), nullptr) || ::GetLastError() == ERROR_ALREADY_EXISTS,
        folder);
  }

 private:
  static std::expected<void, Error> Result(bool done, const fs::path& path) {
    if (!done) return Failed(ErrorKind::kCannotWrite, path, ::GetLastError());
    return {};
  }
};

}  // namespace

FileSystem& SystemFiles() {
  static Win32Files files;
  return files;
}

bool RefusesNewFiles(const Error& error) {
  return error.system_code == ERROR_ACCESS_DENIED || error.system_code == ERROR_WRITE_PROTECT;
}

}  // namespace declarium
