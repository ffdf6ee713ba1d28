// What the fuzz targets share: their input as text, and a check that stops the fuzzer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "text/code_page.h"

namespace declarium::fuzz {

inline std::string_view Bytes(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Takes the bytes up to the first byte 0xFF, which is left out, from the front of `bytes`.
inline std::string_view TakePart(std::string_view& bytes) {
  const auto end = bytes.find('\xFF');
  const auto part = bytes.substr(0, end);
  bytes = end == bytes.npos ? std::string_view() : bytes.substr(end + 1);
  return part;
}

inline std::u16string TakeText(std::string_view& bytes) {
  return DecodeCodePage(TakePart(bytes));
}

inline void Require(bool holds, const char* claim) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", claim);
  std::abort();
}

}  // namespace declarium::fuzz
