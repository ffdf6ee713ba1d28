// A library as something to check: its rows as source, and the row that a position is in.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "check/subject.h"
#include "library/library.h"

namespace declarium::check {

class LibrarySource {
 public:
  // `library` must outlive the source, unchanged.
  explicit LibrarySource(const Library& library);
  LibrarySource(const LibrarySource&) = delete;
  LibrarySource& operator=(const LibrarySource&) = delete;

  [[nodiscard]] const Subject& AsSubject() const { return subject_; }
  [[nodiscard]] std::u16string_view Text() const { return text_; }

  // The item that holds this offset of the text; the library must have items.
  [[nodiscard]] ItemView ItemAt(std::size_t offset) const;

 private:
  const Library& library_;
  std::vector<std::size_t> starts_;  // of the items in the text, in their order
  std::u16string text_;
  vb::Module parsed_;
  Subject subject_;
};

}  // namespace declarium::check
