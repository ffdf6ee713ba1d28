#include "host/line_edits.h"

#include <optional>
#include <span>
#include <utility>

#include "host/code_reading.h"
#include "text/text.h"

namespace declarium {
namespace {

using Lines = std::vector<std::u16string_view>;
using Outcome = EditReport::Outcome;

int CountOfLines(std::u16string_view text) {
  return static_cast<int>(Split(text, kCrLf).size());
}

// The state of one edit in the module: how many of the old lines are gone and how many of the new
// ones stand in their place.
struct Place {
  int line;
  int removed;
  int inserted;
};

bool Equal(const Lines& a, std::size_t from_a, const Lines& b, std::size_t from_b,
           std::size_t count) {
  if (from_a + count > a.size() || from_b + count > b.size()) return false;
  for (std::size_t i = 0; i < count; ++i) {
    // The host writes a name everywhere as it was written last.
    if (!EqualIgnoringCase(a[from_a + i], b[from_b + i])) return false;
  }
  return true;
}

// Whether `now` is `before` with these places edited, whatever the host made of the lines there.
bool IsEditedAt(const Lines& now, const Lines& before, std::span<const Place> places) {
  std::size_t at = 0;
  std::size_t at_before = 0;
  for (const auto& place : places) {
    const auto kept = static_cast<std::size_t>(place.line - 1) - at_before;
    if (!Equal(now, at, before, at_before, kept)) return false;
    at += kept + static_cast<std::size_t>(place.inserted);
    at_before += kept + static_cast<std::size_t>(place.removed);
  }
  const auto rest = before.size() - std::min(at_before, before.size());
  return at + rest == now.size() && Equal(now, at, before, at_before, rest);
}

class ModuleEdit {
 public:
  ModuleEdit(CodeModule& module, std::u16string_view read, const std::vector<LineEdit>& edits)
      : module_(module), before_(Split(read, kCrLf)), edits_(edits) {
    for (const auto& edit : edits) places_.push_back({edit.line, 0, 0});
  }

  // From the last edit to the first; the error of the call that failed.
  [[nodiscard]] HostResult<> Run() {
    for (failing_ = edits_.size(); failing_ > 0; --failing_) {
      const auto& edit = edits_[failing_ - 1];
      if (const auto done = Do(edit); !done) return done;
      places_[failing_ - 1] = Whole(edit);
    }
    return {};
  }

  [[nodiscard]] EditReport Undo(const HostError& error) {
    EditReport report{.outcome = Outcome::kUnknown, .standing = {}, .error = error};
    if (!FindPlaces()) return report;
    for (std::size_t i = failing_ - 1; i < edits_.size(); ++i) {
      if (!TakeBack(i)) break;
    }
    if (!Holds(places_)) return report;
    report.outcome = Outcome::kRefused;
    for (const auto& place : places_) {
      const bool stands = place.inserted > 0 || place.removed > 0;
      if (stands) report.outcome = Outcome::kPartly;
      report.standing.push_back(stands);
    }
    return report;
  }

 private:
  [[nodiscard]] static Place Whole(const LineEdit& edit) {
    return {edit.line, edit.removed, CountOfLines(edit.text)};
  }

  [[nodiscard]] HostResult<> Do(const LineEdit& edit) const {
    const int inserted = CountOfLines(edit.text);
    // Bookmarks and breakpoints stay on a line that is replaced.
    if (edit.removed == 1 && inserted == 1) return module_.ReplaceLine(edit.line, edit.text);
    // First the new lines: a failure in between loses nothing.
    if (inserted > 0) {
      if (const auto done = module_.InsertLines(edit.line, edit.text); !done) return done;
    }
    return edit.removed > 0 ? module_.DeleteLines(edit.line + inserted, edit.removed)
                            : HostResult<>();
  }

  // Whether the module holds what these places say.
  [[nodiscard]] bool Holds(std::span<const Place> places) const {
    const auto now = ReadText(module_);
    return now && IsEditedAt(Split(*now, kCrLf), before_, places);
  }

  // Finds out how much of the failing edit was done.
  [[nodiscard]] bool FindPlaces() {
    const auto now = ReadText(module_);
    if (!now) return false;
    const Lines lines = Split(*now, kCrLf);
    const auto& edit = edits_[failing_ - 1];
    const auto whole = Whole(edit);
    for (int inserted = 0; inserted <= whole.inserted; ++inserted) {
      for (const int removed : {0, edit.removed}) {
        places_[failing_ - 1] = {edit.line, removed, inserted};
        if (IsEditedAt(lines, before_, places_)) return true;
      }
    }
    return false;
  }

  // The edits in front of this one are not there any more, so its lines have their first numbers.
  [[nodiscard]] bool TakeBack(std::size_t index) {
    auto& place = places_[index];
    if (place.removed > 0) {
      if (!module_.InsertLines(place.line + place.inserted, OldText(place))) return false;
      place.removed = 0;
    }
    if (place.inserted > 0) {
      if (!module_.DeleteLines(place.line, place.inserted)) return false;
      place.inserted = 0;
    }
    return true;
  }

  [[nodiscard]] std::u16string OldText(const Place& place) const {
    std::u16string text;
    const auto first = static_cast<std::size_t>(place.line - 1);
    for (std::size_t i = 0; i < static_cast<std::size_t>(place.removed); ++i) {
      if (i > 0) text += kCrLf;
      text += before_[first + i];
    }
    return text;
  }

  CodeModule& module_;
  Lines before_;
  const std::vector<LineEdit>& edits_;
  std::vector<Place> places_;  // what stands in the module, for each edit
  std::size_t failing_ = 0;    // its number from 1
};

}  // namespace

EditReport ApplyEdits(CodeModule& module, std::u16string_view read,
                      const std::vector<LineEdit>& edits) {
  const auto now = ReadText(module);
  if (!now) return {.outcome = Outcome::kRefused, .standing = {}, .error = now.error()};
  if (*now != read) return {.outcome = Outcome::kChanged};
  ModuleEdit edit(module, read, edits);
  const auto done = edit.Run();
  return done ? EditReport() : edit.Undo(done.error());
}

}  // namespace declarium
