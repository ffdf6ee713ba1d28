#include "source/module_text.h"

#include <algorithm>
#include <optional>

#include "text/code_page.h"
#include "text/text.h"

namespace declarium {
namespace {

constexpr std::u16string_view kSourceModules[] = {u"frm", u"ctl", u"dob", u"pag", u"bas", u"cls"};
constexpr std::size_t kEndingLength = 3;

struct LineEndForms {
  std::string_view name;
  std::u16string_view text;
};

constexpr LineEndForms kLineEnds[] = {{"crlf", u"\r\n"}, {"lf", u"\n"}, {"cr", u"\r"}};

const LineEndForms& FormsOf(LineEnd line_end) {
  return kLineEnds[static_cast<std::size_t>(line_end)];
}

bool StartsWithIgnoringCase(std::u16string_view text, std::u16string_view lowered) {
  return EqualIgnoringCase(text.substr(0, lowered.size()), lowered);
}

// Goes through the lines of a content; CR LF, LF and CR all end one.
class Lines {
 public:
  explicit Lines(std::u16string_view content) : content_(content) {}

  // False behind the last line.
  bool Next() {
    if (next_ == content_.npos) return false;
    const auto start = next_;
    const auto end = std::min(content_.find_first_of(u"\r\n", start), content_.size());
    text_ = content_.substr(start, end - start);
    line_end_ = LineEndAt(end);
    next_ = line_end_ ? end + FormsOf(*line_end_).text.size() : content_.npos;
    return true;
  }

  [[nodiscard]] std::u16string_view Text() const { return text_; }
  // Where the next line starts; npos for none.
  [[nodiscard]] std::size_t next() const { return next_; }
  // None for a line that ends the content.
  [[nodiscard]] std::optional<LineEnd> End() const { return line_end_; }

 private:
  [[nodiscard]] std::optional<LineEnd> LineEndAt(std::size_t position) const {
    const auto rest = content_.substr(position);
    if (rest.empty()) return std::nullopt;
    if (rest.starts_with(kCrLf)) return LineEnd::kCrAndLf;
    return rest.front() == u'\n' ? LineEnd::kLf : LineEnd::kCr;
  }

  std::u16string_view content_;
  std::u16string_view text_;
  std::size_t next_ = 0;
  std::optional<LineEnd> line_end_;
};

bool IsModuleAttribute(std::u16string_view line) {
  constexpr std::u16string_view kWord = u"attribute";
  if (!StartsWithIgnoringCase(line, kWord)) return false;
  const auto name = line.substr(0, line.find(u'='));
  return name.find(u'.') == name.npos;
}

// The lines up to the last of the first run of attributes; nothing without one.
std::optional<Lines> BehindAttributes(std::u16string_view content) {
  std::optional<Lines> last;
  for (Lines lines(content); lines.Next();) {
    if (IsModuleAttribute(lines.Text())) {
      last = lines;
    } else if (last) {
      break;
    }
  }
  return last;
}

// The lines up to the end of the block that the designer of a form or a class wrote; nothing
// without one.
std::optional<Lines> BehindDesignerBlock(std::u16string_view content) {
  int depth = 0;
  for (Lines lines(content); lines.Next();) {
    const auto line = LowerCase(Trim(RemoveUnits(lines.Text(), u"\t")));
    if (line == u"begin" || line.starts_with(u"begin ")) {
      ++depth;
    } else if (depth > 0 && line == u"end") {
      if (--depth == 0) return lines;
    } else if (depth == 0 && !line.empty() && !line.starts_with(u"version") &&
               !line.starts_with(u"object")) {
      break;
    }
  }
  return std::nullopt;
}

Lines BehindFirstLine(std::u16string_view content) {
  Lines lines(content);
  lines.Next();
  // An empty line at the very start is not taken for the first one.
  if (lines.Text().empty()) lines.Next();
  return lines;
}

Lines BehindHeader(std::u16string_view content) {
  if (const auto lines = BehindAttributes(content)) return *lines;
  if (const auto lines = BehindDesignerBlock(content)) return *lines;
  return BehindFirstLine(content);
}

bool IsUtf16(const Encoding& encoding) {
  return encoding.form == Encoding::Form::kUtf16LittleEndian ||
         encoding.form == Encoding::Form::kUtf16BigEndian;
}

// A unit for each byte, or for each two bytes of UTF-16: the header and line ends are ASCII, and
// positions can be told in bytes again.
std::u16string ForPositions(std::string_view bytes, const Encoding& encoding) {
  if (IsUtf16(encoding)) return DecodeText(bytes, encoding);
  return DecodeCodePage(bytes.substr(MarkLength(encoding)));
}

}  // namespace

bool IsSourceModuleName(std::u16string_view file_name) {
  if (file_name.size() < kEndingLength) return false;
  const auto ending = LowerCase(file_name.substr(file_name.size() - kEndingLength));
  return std::ranges::find(kSourceModules, ending) != std::end(kSourceModules);
}

std::string_view LineEndName(LineEnd line_end) {
  return FormsOf(line_end).name;
}

std::expected<ChangedModule, char16_t> InsertIntoModule(std::string_view bytes,
                                                        std::u16string_view text,
                                                        const Encoding& otherwise) {
  const auto encoding = RecognizeEncoding(bytes, otherwise);
  const auto content = ForPositions(bytes, encoding);
  const auto place = BehindHeader(content);
  const auto line_end = place.End().value_or(LineEnd::kCrAndLf);
  const std::u16string line_end_text(FormsOf(line_end).text);

  ChangedModule module{{}, Replace(text, kCrLf, line_end_text), encoding, line_end};
  const bool is_behind_a_line = place.next() != content.npos;
  const auto added =
      is_behind_a_line ? module.inserted + line_end_text : line_end_text + module.inserted;
  const auto added_bytes = EncodeText(added, encoding);
  if (!added_bytes) return std::unexpected(added[added_bytes.error()]);
  const auto unit_size = IsUtf16(encoding) ? std::size_t{2} : std::size_t{1};
  // Half a character at the end of UTF-16 stays at the end: behind it nothing could be read.
  const auto units = (bytes.size() - MarkLength(encoding)) / unit_size;
  const auto position =
      MarkLength(encoding) + unit_size * (is_behind_a_line ? place.next() : units);
  module.bytes = std::string(bytes.substr(0, position)) + *added_bytes;
  module.bytes += bytes.substr(position);
  return module;
}

}  // namespace declarium
