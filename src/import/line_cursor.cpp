#include "import/line_cursor.h"

#include <algorithm>

#include "text/character.h"
#include "text/text.h"

namespace declarium {

bool TextCursor::Next() {
  const std::u16string_view text = source_.text;
  if (next_ == text.npos) return false;
  ++lines_;
  start_ = next_;
  const auto end = FindLineEnd(text, start_);
  line_ = text.substr(start_, end - start_);
  next_ = end == text.npos ? end : end + kCrLf.size();
  return true;
}

std::size_t TextCursor::FileColumnOf(std::size_t position) const {
  auto piece = start_;
  const auto joins = source_.JoinsUpTo(start_ + position);
  if (joins > 0) piece = std::max(piece, source_.joins[joins - 1]);
  const std::u16string_view text = source_.text;
  return CountCharacters(text.substr(piece, start_ + position - piece)) + 1;
}

// Finds the end of the line of the file that starts at `from`, and where the next one starts.
std::size_t FileCursor::ReadPiece(std::size_t from) {
  ++lines_;
  const auto end = FindLineEnd(bytes_, from);
  next_ = end == bytes_.npos ? end : end + kCrLf.size();
  return std::min(end, bytes_.size());
}

bool FileCursor::Next() {
  if (next_ == bytes_.npos) return false;
  start_ = next_;
  continuations_.clear();
  auto piece = start_;
  auto end = ReadPiece(piece);
  beginning_ = bytes_.substr(start_, end - start_);
  while (end > piece && bytes_[end - 1] == '_' && next_ != bytes_.npos) {
    const auto before = end - 1;
    if (before == piece || bytes_[before - 1] == '_' || bytes_[before - 1] == '\r') {
      is_uncertain_ = true;
    }
    continuations_.push_back(before);
    piece = next_;
    end = ReadPiece(piece);
  }
  return true;
}

std::string_view FileCursor::Line() {
  if (continuations_.empty()) return beginning_;
  joined_.clear();
  auto piece = start_;
  for (const auto continuation : continuations_) {
    joined_ += bytes_.substr(piece, continuation - piece);
    piece = continuation + 1 + kCrLf.size();
  }
  const auto end = next_ == bytes_.npos ? bytes_.size() : next_ - kCrLf.size();
  joined_ += bytes_.substr(piece, end - piece);
  return joined_;
}

}  // namespace declarium
