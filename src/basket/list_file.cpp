#include "basket/list_file.h"

#include <algorithm>
#include <array>

#include "text/encoding.h"
#include "text/text.h"
#include "vb/like.h"

namespace declarium {
namespace {

constexpr std::u16string_view kBlanks = u" \t";
constexpr std::u16string_view kWildcards = u"*?#[";

std::u16string_view WithoutBlanks(std::u16string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Paths hold quotes, too.
std::u16string_view WithoutCommentBehindBlank(std::u16string_view line) {
  for (std::size_t i = 1; i < line.size(); ++i)
    if (line[i] == u'\'' && kBlanks.contains(line[i - 1])) return line.substr(0, i);
  return line;
}

// A quote inside [ ] is a character of the list.
std::u16string_view WithoutComment(std::u16string_view line) {
  bool is_in_list = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == u'\'' && !is_in_list) return line.substr(0, i);
    is_in_list = is_in_list ? line[i] != u']' : line[i] == u'[';
  }
  // An unclosed list is no reason to take a comment for a name.
  return is_in_list ? line.substr(0, line.find(u'\'')) : line;
}

bool IsNumberSignComment(std::u16string_view line) {
  return line.starts_with(u'#') &&
         (line.size() == 1 || line[1] == u'#' || kBlanks.find(line[1]) != kBlanks.npos);
}

class ListReader {
 public:
  std::expected<ListFile, std::vector<ListFault>> Read(std::u16string_view text) {
    while (!text.empty()) {
      const auto end = std::min(text.find_first_of(u"\r\n"), text.size());
      ++line_;
      ReadLine(WithoutBlanks(text.substr(0, end)));
      text.remove_prefix(end);
      if (!text.empty()) text.remove_prefix(text.starts_with(kCrLf) ? 2 : 1);
    }
    if (!faults_.empty()) return std::unexpected(std::move(faults_));
    return std::move(list_);
  }

 private:
  void ReadLine(std::u16string_view line) {
    if (line.empty() || IsNumberSignComment(line)) return;
    if (line.starts_with(u'#'))
      return ReadDirective(WithoutBlanks(WithoutCommentBehindBlank(line)));
    const auto said = WithoutBlanks(WithoutComment(line));
    if (!said.empty()) ReadName(said);
  }

  void Fault(ListFaultKind kind, std::u16string_view word) {
    faults_.push_back({line_, kind, std::u16string(word)});
  }

  void ReadDirective(std::u16string_view said) {
    const auto end = std::min(said.find_first_of(kBlanks), said.size());
    const auto word = said.substr(0, end);
    const auto value = WithoutBlanks(said.substr(end));
    const bool is_known = std::ranges::any_of(
        std::array<std::u16string_view, 3>{u"#library", u"#target", u"#module"},
        [&](std::u16string_view known) { return EqualIgnoringCase(known, word); });
    if (!is_known) return Fault(ListFaultKind::kUnknownDirective, word);
    if (value.empty()) return Fault(ListFaultKind::kValueMissing, word);
    if (EqualIgnoringCase(word, u"#library")) {
      list_.libraries.emplace_back(value);
    } else if (EqualIgnoringCase(word, u"#target")) {
      ReadTarget(word, value);
    } else if (list_.module.empty()) {
      list_.module = value;
    } else {
      Fault(ListFaultKind::kSaidTwice, word);
    }
  }

  void ReadTarget(std::u16string_view word, std::u16string_view value) {
    if (list_.target) return Fault(ListFaultKind::kSaidTwice, word);
    list_.target = vb::FindAudience(value);
    if (!list_.target) Fault(ListFaultKind::kUnknownTarget, value);
  }

  void ReadName(std::u16string_view said) {
    ListLine line;
    line.line = line_;
    line.takes_away = said.starts_with(u'-');
    line.word = WithoutBlanks(line.takes_away ? said.substr(1) : said);
    line.sought = ReadSoughtName(line.word);
    line.sought.name = WithoutBlanks(line.sought.name);
    line.is_pattern = line.sought.name.find_first_of(kWildcards) != std::u16string::npos;
    if (line.sought.name.empty()) return Fault(ListFaultKind::kValueMissing, said);
    if (line.is_pattern && LikePattern(LowerCase(line.sought.name)).IsMalformed())
      return Fault(ListFaultKind::kBrokenPattern, said);
    list_.lines.push_back(std::move(line));
  }

  ListFile list_;
  std::vector<ListFault> faults_;
  std::uint32_t line_ = 0;
};

// The name as a line has it behind the kind.
std::u16string Escaped(std::u16string_view name) {
  std::u16string text;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const bool is_at_end = i == 0 || i + 1 == name.size();
    const bool is_blank = kBlanks.find(name[i]) != kBlanks.npos;
    if (name[i] == u'\r' || name[i] == u'\n') {
      text += u'?';  // no line can hold it
    } else if (kWildcards.find(name[i]) != kWildcards.npos || name[i] == u'\'' ||
               (is_blank && is_at_end)) {
      text += {u'[', name[i], u']'};
    } else {
      text += name[i];
    }
  }
  return text;
}

}  // namespace

std::expected<ListFile, std::vector<ListFault>> ReadListFile(std::u16string_view text) {
  return ListReader().Read(text);
}

std::u16string ListText(std::span<const std::u16string> libraries, vb::Audience target,
                        const GroupedList& entries) {
  std::u16string text;
  for (const auto& library : libraries) text.append(u"#library ").append(library).append(kCrLf);
  if (target != vb::Audience::kVb6)
    text.append(u"#target ").append(FromUtf8(vb::AudienceName(target))).append(kCrLf);
  for (const auto& [name, icon] : entries) {
    text += LowerCase(KindName(*KindOfIcon(icon))) + u":" + Escaped(name);
    text += kCrLf;
  }
  return text;
}

std::string ListBytes(std::u16string_view text) {
  const auto bytes = EncodeText(text, kLibraryEncoding);
  if (bytes && DecodeText(*bytes, RecognizeEncoding(*bytes, kLibraryEncoding)) == text)
    return *bytes;
  return "\xEF\xBB\xBF" + ToUtf8(text);
}

}  // namespace declarium
