#include "source/module_text.h"

#include <algorithm>

#include "text/text.h"

namespace declarium {
namespace {

constexpr std::u16string_view kSourceModules[] = {u"frm", u"ctl", u"dob", u"pag", u"bas", u"cls"};
constexpr std::size_t kEndingLength = 3;

// The position of the first line end that an "attribute" in any case follows; npos for none.
std::size_t FindAttributeLine(std::u16string_view content) {
  constexpr std::u16string_view kSought = u"\r\nattribute";
  const auto found = std::ranges::search(
      content, kSought, [](char16_t unit, char16_t sought) { return LowerCase(unit) == sought; });
  return found.empty() ? content.npos : static_cast<std::size_t>(found.begin() - content.begin());
}

}  // namespace

bool IsSourceModuleName(std::u16string_view file_name) {
  if (file_name.size() < kEndingLength) return false;
  const auto ending = LowerCase(file_name.substr(file_name.size() - kEndingLength));
  return std::ranges::find(kSourceModules, ending) != std::end(kSourceModules);
}

std::u16string InsertIntoModule(std::u16string_view content, std::u16string_view text) {
  const auto attribute = FindAttributeLine(content);
  // Without such a line the search starts at the second character, so it meets the end of the first
  // line.
  const auto line_end = content.find(kCrLf, attribute == content.npos ? 1 : attribute + 2);
  std::u16string result;
  if (line_end == content.npos) return result.append(content).append(kCrLf).append(text);
  return result.append(content.substr(0, line_end + kCrLf.size()))
      .append(text)
      .append(content.substr(line_end));
}

}  // namespace declarium
