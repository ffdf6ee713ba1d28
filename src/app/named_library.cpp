#include "app/named_library.h"

#include "library/file_name.h"

namespace declarium {

std::filesystem::path FindNamedLibrary(std::span<const std::u16string> words,
                                       const std::filesystem::path& caller_folder,
                                       const std::filesystem::path& program_folder) {
  std::u16string text;
  for (const auto& word : words) text.append(text.empty() ? u"" : u" ").append(word);
  if (text.empty()) return {};
  const auto name = PathOfName(text);
  auto as_called = caller_folder / name;
  std::error_code ignored;
  if (std::filesystem::is_regular_file(as_called, ignored)) return as_called;
  return program_folder / name;
}

}  // namespace declarium
