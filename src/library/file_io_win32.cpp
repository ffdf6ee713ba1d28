#include <algorithm>
#include <optional>

#include "library/file_error_win32.h"
#include "library/file_io.h"
#include "library/file_name.h"
#include "text/text.h"
#include "win32/system_error.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;
using win32::Failed;
using win32::UniqueFile;

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

}  // namespace

std::unexpected<Error> win32::Failed(ErrorKind kind, const fs::path& path, DWORD code) {
  return std::unexpected(
      Error{kind, PathText(path), ToUtf8(win32::SystemErrorText(code)), static_cast<int>(code)});
}

unsigned long ProcessNumber() {
  return ::GetCurrentProcessId();
}

std::string PathText(const fs::path& path) {
  return ToUtf8(NameOfPath(path));
}

// std::filesystem ends the process when memory runs out while it lists.
std::vector<fs::path> ListFolder(const fs::path& folder) {
  std::vector<fs::path> paths;
  WIN32_FIND_DATAW entry;
  const win32::UniqueListing listing(::FindFirstFileW((folder / L"*").c_str(), &entry));
  for (bool found = static_cast<bool>(listing); found;
       found = ::FindNextFileW(listing.Get(), &entry) != 0) {
    const std::wstring_view name = entry.cFileName;
    if (name != L"." && name != L"..") paths.push_back(folder / name);
  }
  return paths;
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
  // Windows counts steps of 100 nanoseconds since 1601.
  constexpr std::int64_t kStartOf1970 = 116'444'736'000'000'000;
  const auto written = static_cast<std::int64_t>(
      join(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime));
  return FileStatus{(written - kStartOf1970) * 100, join(data.nFileSizeHigh, data.nFileSizeLow)};
}

fs::path IdentityOf(const fs::path& path) {
  std::wstring whole(::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  const auto length =
      ::GetFullPathNameW(path.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr);
  if (length == 0 || length >= whole.size()) return path;
  whole.resize(length);
  ::CharLowerBuffW(whole.data(), length);
  return whole;
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

}  // namespace declarium
