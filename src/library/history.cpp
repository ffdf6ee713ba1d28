#include "library/history.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <utility>

#include "library/file_stamp.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kUntold = "untold";
constexpr std::string_view kUntoldMark = "-untold";
constexpr std::size_t kTimeLength = std::string_view("20261122T031500Z").size();
// A number's digits, with zeros in front so that names sort like numbers.
constexpr std::size_t kDigits = 6;
// Of a file's name in its folder's name, in units of the system's own encoding.
constexpr std::size_t kLongestName = 60;

constexpr std::array kReasons = {
    std::pair{VersionReason::kReplaced, std::string_view("replaced")},
    std::pair{VersionReason::kUnwritten, std::string_view("unwritten")},
    std::pair{VersionReason::kUnfinished, std::string_view("unfinished")},
};

std::string TimeText(std::chrono::system_clock::time_point time) {
  using namespace std::chrono;
  const auto day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss clock(floor<seconds>(time - day));
  char text[40];
  std::snprintf(text, sizeof text, "%04d%02u%02uT%02d%02d%02dZ", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  return text;
}

std::string Now() {
  return TimeText(std::chrono::system_clock::now());
}

std::string TimeOf(const FileStatus& status) {
  using std::chrono::system_clock;
  const std::chrono::nanoseconds written(status.written);
  return TimeText(
      system_clock::time_point(std::chrono::duration_cast<system_clock::duration>(written)));
}

// ASCII in the system's own encoding.
fs::path InNative(std::string_view ascii) {
  return fs::path::string_type(ascii.begin(), ascii.end());
}

// The name up to its first point as ASCII, which is what a version's name is there.
std::string AsciiStem(const fs::path& path) {
  std::string stem;
  const auto name = path.filename();
  for (const auto unit : name.native()) {
    if (unit == '.') break;
    stem += unit > 0 && unit < 0x7F ? static_cast<char>(unit) : '?';
  }
  return stem;
}

// Cuts `rest` at its first hyphen.
std::string_view TakeWord(std::string_view& rest) {
  const auto end = std::min(rest.find('-'), rest.size());
  const auto word = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return word;
}

std::optional<Version> ParseVersionName(const fs::path& file) {
  const auto stem = AsciiStem(file);
  std::string_view rest = stem;
  Version version;
  version.file = file;
  version.told = !rest.ends_with(kUntoldMark);
  if (!version.told) rest.remove_suffix(kUntoldMark.size());
  const auto digits = TakeWord(rest);
  const auto* const end = digits.data() + digits.size();
  if (std::from_chars(digits.data(), end, version.number).ptr != end || version.number < 1) {
    return std::nullopt;
  }
  version.kept = TakeWord(rest);
  version.written = TakeWord(rest);
  if (version.kept.size() != kTimeLength || version.written.size() != kTimeLength) {
    return std::nullopt;
  }
  const auto* const reason =
      std::ranges::find(kReasons, rest, [](auto& pair) { return pair.second; });
  if (reason == kReasons.end()) return std::nullopt;
  version.reason = reason->first;
  return version;
}

std::string VersionStem(const Version& version) {
  auto number = std::to_string(version.number);
  number.insert(0, kDigits - std::min(kDigits, number.size()), '0');
  return number + "-" + version.kept + "-" + version.written + "-" +
         std::string(ReasonWord(version.reason)) + std::string(version.told ? "" : kUntoldMark);
}

std::string HexText(std::uint64_t number) {
  char text[17];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(number));
  return text;
}

}  // namespace

std::string_view ReasonWord(VersionReason reason) {
  return std::ranges::find(kReasons, reason, [](auto& pair) { return pair.first; })->second;
}

std::string LongTime(std::string_view time) {
  std::string text(time);
  if (text.size() != kTimeLength) return text;
  for (const std::size_t at : {4U, 7U}) text.insert(at, 1, '-');
  for (const std::size_t at : {13U, 16U}) text.insert(at, 1, ':');
  return text;
}

// What a version that is about to be added is.
struct History::Fresh {
  VersionReason reason;
  std::string written;
};

History::History(FileSystem& files, fs::path folder, HistoryLimits limits)
    : files_(files), folder_(std::move(folder)), limits_(limits) {}

fs::path History::FolderOf(const fs::path& path) const {
  const auto identity = IdentityOf(path);
  return folder_ / (path.filename().native().substr(0, kLongestName) +
                    InNative("-" + HexText(HashOf(PathText(identity)))).native());
}

std::vector<Version> History::VersionsIn(const fs::path& folder) const {
  std::vector<Version> versions;
  for (const auto& file : files_.List(folder)) {
    auto version = ParseVersionName(file);
    const auto status = version ? files_.Status(file) : std::nullopt;
    if (!status) continue;
    version->bytes = status->size;
    versions.push_back(*std::move(version));
  }
  std::ranges::sort(versions, std::ranges::greater(),
                    [](const Version& version) { return std::pair(version.number, version.kept); });
  return versions;
}

std::vector<Version> History::Versions(const fs::path& path) const {
  return IsOn() ? VersionsIn(FolderOf(path)) : std::vector<Version>();
}

std::expected<std::string, Error> History::Read(const Version& version) const {
  return files_.Read(version.file);
}

// Only versions of the same size are read.
const Version* History::FindEqual(const std::vector<Version>& versions, const fs::path& path,
                                  std::uint64_t size) const {
  for (const auto& version : versions) {
    if (version.bytes != size || version.reason != VersionReason::kReplaced) continue;
    if (files_.HaveSameContent(path, version.file)) return &version;
  }
  return nullptr;
}

// The file's folder in the history, made where it is missing, and the turn to change it.
std::expected<FileHold, Error> History::Enter(const fs::path& path) {
  const auto folder = FolderOf(path);
  const auto made = files_.MakeFolder(folder);
  auto turn = files_.Lock(folder_ / "lock");
  const auto note = folder / "path";
  if (made && !files_.Status(note)) {
    (void)files_.Create(note, PathText(IdentityOf(path)), {});
  }
  if (!made) return std::unexpected(made.error());
  return turn;
}

fs::path History::NameFor(const fs::path& path, const Fresh& fresh) const {
  const auto folder = FolderOf(path);
  const auto versions = VersionsIn(folder);
  Version version;
  version.number = versions.empty() ? 1 : versions.front().number + 1;
  version.kept = Now();
  version.written = fresh.written;
  version.reason = fresh.reason;
  version.told = fresh.reason == VersionReason::kReplaced;
  auto name = folder / InNative(VersionStem(version));
  name += path.extension();
  return name;
}

// Under another name until it is whole.
std::expected<void, Error> History::AddCopy(const fs::path& path, const Fresh& fresh,
                                            std::string_view bytes) {
  const auto name = NameFor(path, fresh);
  const auto begun = folder_ / "begun";
  (void)files_.Remove(begun);
  if (const auto created = files_.Create(begun, bytes, {}); !created) {
    return std::unexpected(created.error());
  }
  return files_.Move(begun, name);
}

std::expected<void, Error> History::KeepFile(const fs::path& path, KeepBy by) {
  const auto status = IsOn() ? files_.Status(path) : std::nullopt;
  if (!status) return {};
  const auto turn = Enter(path);
  const Fresh fresh{VersionReason::kReplaced, TimeOf(*status)};
  const auto versions = VersionsIn(FolderOf(path));
  if (by == KeepBy::kLink) {
    if (const auto* equal = FindEqual(versions, path, status->size)) {
      // When it cannot become the newest it is kept all the same.
      if (equal != &versions.front()) (void)files_.Move(equal->file, NameFor(path, fresh));
      return {};
    }
  }
  if (total_) *total_ += status->size;
  if (by == KeepBy::kLink && files_.Link(path, NameFor(path, fresh))) return {};
  const auto bytes = files_.Read(path);
  if (!bytes) return std::unexpected(bytes.error());
  return AddCopy(path, fresh, *bytes);
}

std::expected<void, Error> History::KeepBytes(const fs::path& path, std::string_view bytes) {
  if (!IsOn()) return {};
  const auto turn = Enter(path);
  if (total_) *total_ += bytes.size();
  auto added = AddCopy(path, {VersionReason::kUnwritten, Now()}, bytes);
  if (added) NoteUntold();
  return added;
}

std::expected<void, Error> History::TakeIn(const fs::path& file, const fs::path& path,
                                           VersionReason reason) {
  const auto status = IsOn() ? files_.Status(file) : std::nullopt;
  if (!status) return {};
  const auto turn = Enter(path);
  const Fresh fresh{reason, TimeOf(*status)};
  if (total_) *total_ += status->size;
  if (!files_.Move(file, NameFor(path, fresh))) {
    const auto bytes = files_.Read(file);
    if (!bytes) return std::unexpected(bytes.error());
    if (auto added = AddCopy(path, fresh, *bytes); !added) return added;
    (void)files_.Remove(file);
  }
  NoteUntold();
  return {};
}

void History::NoteUntold() {
  const auto note = folder_ / kUntold;
  if (!files_.Status(note)) (void)files_.Create(note, {}, {});
}

std::vector<fs::path> History::Untold() const {
  std::vector<fs::path> paths;
  if (!IsOn() || !files_.Status(folder_ / kUntold)) return paths;
  for (const auto& folder : files_.List(folder_)) {
    if (!std::ranges::any_of(VersionsIn(folder), [](auto& version) { return !version.told; })) {
      continue;
    }
    if (const auto path = files_.Read(folder / "path")) {
      paths.emplace_back(std::u8string(path->begin(), path->end()));
    }
  }
  return paths;
}

void History::MarkTold(const fs::path& path) {
  if (!IsOn() || !files_.Status(folder_ / kUntold)) return;
  const auto turn = Enter(path);
  for (auto version : VersionsIn(FolderOf(path))) {
    if (std::exchange(version.told, true)) continue;
    auto name = version.file.parent_path() / InNative(VersionStem(version));
    name += version.file.extension();
    (void)files_.Move(version.file, name);
  }
  if (Untold().empty()) (void)files_.Remove(folder_ / kUntold);
}

void History::Prune(const fs::path& path) {
  if (!IsOn()) return;
  const auto turn = Enter(path);
  PruneFile(path);
  PruneAll();
}

void History::Drop(const Version& version) {
  if (files_.Remove(version.file) && total_) *total_ -= std::min(*total_, version.bytes);
}

void History::PruneFile(const fs::path& path) {
  const auto versions = VersionsIn(FolderOf(path));
  for (std::size_t i = std::max<std::size_t>(limits_.versions, 1); i < versions.size(); ++i) {
    if (versions[i].told) Drop(versions[i]);
  }
}

// Counted once, and again only when what was added since may be too much.
void History::PruneAll() {
  if (total_ && *total_ <= limits_.bytes) return;
  std::vector<Version> removable;
  std::uint64_t total = 0;
  for (const auto& folder : files_.List(folder_)) {
    const auto versions = VersionsIn(folder);
    for (const auto& version : versions) {
      total += version.bytes;
      if (version.told && version.number != versions.front().number) removable.push_back(version);
    }
  }
  total_ = total;
  std::ranges::sort(removable, {}, &Version::kept);
  for (const auto& version : removable) {
    if (*total_ <= limits_.bytes) return;
    Drop(version);
  }
}

}  // namespace declarium
