#include "shell/ui/guide.h"

#include <string>

#include "library/file_name.h"
#include "text/user_texts.h"

namespace declarium {
namespace {

constexpr std::string_view kFirstPage = "index";
constexpr std::u16string_view kLineEnd = u"\r\n";

}  // namespace

Guide::Guide(Toolkit& toolkit, const std::filesystem::path& program_folder)
    : toolkit_(toolkit), folder_(program_folder / "guide" / "sk") {
  // A window may live on while the next one has taken its place, so nothing is unsubscribed.
  toolkit_.on_help = [weak = std::weak_ptr<Guide*>(self_)](std::string_view topic) {
    if (const auto self = weak.lock()) (*self)->Open(topic);
  };
}

std::filesystem::path Guide::PageOf(std::string_view topic) const {
  auto page = folder_ / (topic.empty() ? kFirstPage : topic);
  return page.concat(".html").make_preferred();
}

void Guide::Open(std::string_view topic) {
  const auto page = PageOf(topic);
  const auto path = NameOfPath(page);
  if (toolkit_.OpenDocument(path)) return;
  std::error_code ignored;
  std::u16string text(std::filesystem::exists(page, ignored) ? texts::kGuideNotShown
                                                             : texts::kGuideMissing);
  toolkit_.ShowMessage(
      {text.append(kLineEnd).append(path), MessageButtons::kOk, MessageIcon::kExclamation});
}

void ShowAbout(Toolkit& toolkit) {
  std::u16string text(texts::kProgram);
  text.append(kLineEnd).append(texts::kSplashLine).append(kLineEnd).append(texts::kSplashVersion);
  toolkit.ShowMessage({text, MessageButtons::kOk, MessageIcon::kInformation});
}

}  // namespace declarium
