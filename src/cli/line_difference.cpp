#include "cli/line_difference.h"

#include <algorithm>
#include <vector>

#include "cli/output.h"

namespace declarium::cli {
namespace {

constexpr std::size_t kContext = 3;

using LineViews = std::vector<std::u16string_view>;

// Lines of the text, 0-based, that others take the place of.
struct Change {
  std::size_t begin;
  std::size_t end;
  LineViews lines;
};

std::vector<Change> ChangesOf(const LineViews& lines, std::u16string_view text,
                              std::span<const Replacement> replacements) {
  std::vector<Change> changes;
  std::size_t line = 0;
  std::size_t offset = 0;
  const auto line_at = [&](std::size_t wanted) {
    while (line < lines.size() && offset < wanted) offset += lines[line++].size();
    return line;
  };
  for (const auto& [begin, end, now] : replacements) {
    const auto first = line_at(std::min(begin, text.size()));
    changes.push_back({first, line_at(end), LinesWithEnds(now)});
  }
  return changes;
}

class Writer {
 public:
  explicit Writer(const LineViews& lines) : lines_(lines) {}

  // Changes that are near each other share a hunk.
  std::string Write(std::span<const Change> changes) {
    for (std::size_t i = 0; i < changes.size();) {
      std::size_t count = 1;
      while (i + count < changes.size() &&
             changes[i + count].begin - changes[i + count - 1].end <= 2 * kContext)
        ++count;
      AddHunk(changes.subspan(i, count));
      i += count;
    }
    return std::move(text_);
  }

 private:
  void AddHunk(std::span<const Change> changes) {
    const auto begin = changes.front().begin - std::min(changes.front().begin, kContext);
    const auto end = std::min(changes.back().end + kContext, lines_.size());
    std::string body;
    std::size_t now = 0;
    std::size_t done = begin;
    const auto keep = [&](std::size_t until) {
      for (; done < until; ++done, ++now) Add(body, ' ', lines_[done]);
    };
    for (const auto& change : changes) {
      keep(change.begin);
      for (; done < change.end; ++done) Add(body, '-', lines_[done]);
      for (const auto line : change.lines) Add(body, '+', line);
      now += change.lines.size();
    }
    keep(end);
    text_ +=
        "@@ -" + Range(begin, end - begin) + " +" + Range(begin + moved_, now) + " @@\n" + body;
    moved_ += now - (end - begin);
  }

  // Lines are counted from 1; an empty range stands behind the line that it names.
  static std::string Range(std::size_t begin, std::size_t count) {
    return std::to_string(count == 0 ? begin : begin + 1) + "," + std::to_string(count);
  }

  static void Add(std::string& body, char sign, std::u16string_view line) {
    const bool has_end = line.find_first_of(u"\r\n") != line.npos;
    const auto text = line.substr(0, line.find_first_of(u"\r\n"));
    body += sign + Lines(text) + "\n";
    if (!has_end) body += "\\ No newline at end of file\n";
  }

  const LineViews& lines_;
  std::string text_;
  std::size_t moved_ = 0;  // how many lines further the text behind stands now, modulo 2^64
};

}  // namespace

LineViews LinesWithEnds(std::u16string_view text) {
  LineViews lines;
  while (!text.empty()) {
    auto end = text.find_first_of(u"\r\n");
    end = end == text.npos ? text.size() : end + (text.substr(end).starts_with(u"\r\n") ? 2 : 1);
    lines.push_back(text.substr(0, end));
    text.remove_prefix(end);
  }
  return lines;
}

std::string UnifiedDifference(std::string_view name, std::u16string_view text,
                              std::span<const Replacement> replacements) {
  if (replacements.empty()) return {};
  const auto lines = LinesWithEnds(text);
  const auto head = "--- " + std::string(name) + "\n+++ " + std::string(name) + "\n";
  return head + Writer(lines).Write(ChangesOf(lines, text, replacements));
}

}  // namespace declarium::cli
