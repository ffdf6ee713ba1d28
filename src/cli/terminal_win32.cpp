#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <iostream>
#include <optional>
#include <ostream>
#include <streambuf>
#include <string>
#include <windows.h>

#include "cli/terminal.h"

#include "text/text.h"

namespace declarium::cli {
namespace {

bool AsksForNoColor() {
  const wchar_t* const value = ::_wgetenv(L"NO_COLOR");
  return value != nullptr && *value != L'\0';
}

struct Console {
  HANDLE handle;
  bool takes_escape_codes;  // not before Windows 10
};

// The console behind a standard handle, none when it is a file or a pipe.
std::optional<Console> ConsoleOf(DWORD standard_handle) {
  const HANDLE handle = ::GetStdHandle(standard_handle);
  DWORD mode = 0;
  if (!::GetConsoleMode(handle, &mode)) return std::nullopt;
  const DWORD wanted = mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING;
  return Console{handle, ::SetConsoleMode(handle, wanted) != FALSE};
}

// Collects UTF-8 and writes it to a console as UTF-16, whole lines at a time.
class ConsoleBuffer : public std::streambuf {
 public:
  explicit ConsoleBuffer(HANDLE console) : console_(console) {}

 protected:
  int_type overflow(int_type unit) override {
    if (traits_type::eq_int_type(unit, traits_type::eof())) return 0;
    bytes_ += traits_type::to_char_type(unit);
    if (unit == '\n' && sync() != 0) return traits_type::eof();
    return unit;
  }

  int sync() override {
    const auto text = FromUtf8(bytes_);
    bytes_.clear();
    // Older consoles refuse more than 64 KB in one call.
    constexpr std::size_t kMost = 8192;
    for (std::size_t start = 0; start < text.size(); start += kMost) {
      const auto block = std::u16string_view(text).substr(start, kMost);
      DWORD written = 0;
      if (!::WriteConsoleW(console_, block.data(), static_cast<DWORD>(block.size()), &written,
                           nullptr)) {
        return -1;
      }
    }
    return 0;
  }

 private:
  HANDLE console_;
  std::string bytes_;
};

// Gives a stream a console buffer as long as this lives, when the stream is a console.
class ConsoleOutput {
 public:
  ConsoleOutput(std::ostream& stream, DWORD standard_handle) : stream_(stream) {
    if (const auto console = ConsoleOf(standard_handle)) {
      buffer_.emplace(console->handle);
      takes_escape_codes_ = console->takes_escape_codes;
      before_ = stream_.rdbuf(&*buffer_);
    }
  }
  ~ConsoleOutput() {
    if (!buffer_) return;
    stream_.flush();
    stream_.rdbuf(before_);
  }
  ConsoleOutput(const ConsoleOutput&) = delete;
  ConsoleOutput& operator=(const ConsoleOutput&) = delete;

  // A console that would show the codes of colors and of the status line gets neither.
  [[nodiscard]] bool TakesEscapeCodes() const noexcept { return takes_escape_codes_; }

 private:
  std::ostream& stream_;
  std::optional<ConsoleBuffer> buffer_;
  std::streambuf* before_ = nullptr;
  bool takes_escape_codes_ = false;
};

}  // namespace

struct StandardStreams::Parts {
  ConsoleOutput out{std::cout, STD_OUTPUT_HANDLE};
  ConsoleOutput err{std::cerr, STD_ERROR_HANDLE};
  Streams streams{
      std::cin,        std::cout, std::cerr, out.TakesEscapeCodes(), err.TakesEscapeCodes(),
      AsksForNoColor()};
};

StandardStreams::StandardStreams() {
  for (const int file : {0, 1, 2}) ::_setmode(file, _O_BINARY);
  std::ios::sync_with_stdio(false);
  parts_ = std::make_unique<Parts>();
}

StandardStreams::~StandardStreams() = default;

Streams& StandardStreams::Get() noexcept {
  return parts_->streams;
}

}  // namespace declarium::cli
