#include "check/library_source.h"

#include <algorithm>

#include "source/item_text.h"

namespace declarium::check {

LibrarySource::LibrarySource(const Library& library)
    : library_(library),
      text_(ExportText(library, [this](std::size_t start) { starts_.push_back(start); })),
      parsed_(vb::ReadModule(text_)) {
  subject_.form = Subject::Form::kLibrary;
  subject_.modules.push_back({text_, &parsed_});
}

ItemView LibrarySource::ItemAt(std::size_t offset) const {
  const auto behind = std::ranges::upper_bound(starts_, offset);
  auto position = static_cast<std::size_t>(behind - starts_.begin()) - 1;
  auto kind = kKinds[0];
  for (const auto any : kKinds) {
    kind = any;
    if (position < library_[kind].names.size()) break;
    position -= library_[kind].names.size();
  }
  const auto& lists = library_[kind];
  return {kind, lists.names[position], lists.ItemAt(position)};
}

}  // namespace declarium::check
