// Whole outputs compared with committed files. A mismatch writes the new output beside the golden
// file, as NAME.new; scripts/promote-golden puts it in its place.
#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <string_view>

namespace declarium {

inline std::string ReadGolden(const std::filesystem::path& golden) {
  std::ifstream file(golden, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void ExpectGoldenFile(const std::filesystem::path& golden, std::string_view output) {
  const auto expected = ReadGolden(golden);
  EXPECT_EQ(output, expected);
  if (output == expected) return;
  auto changed = golden;
  changed += ".new";
  std::ofstream(changed, std::ios::binary) << output;
}

}  // namespace declarium
