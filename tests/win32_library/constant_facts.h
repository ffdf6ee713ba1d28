// What the compiler says about the constants of the headers.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "rows.h"
#include "toolchain.h"

namespace declarium::win32_library_test {

struct ConstantFact {
  enum class Kind { kWhole, kReal, kText };
  Kind kind = Kind::kWhole;
  std::uint32_t low = 0;  // the value in 32 bits
  long size = 0;          // bytes of its type
  std::int64_t wide = 0;  // of an 8-byte type, the whole value
  double real = 0;
  std::string text;
};

using ConstantFacts = std::map<std::string, ConstantFact>;  // by name

// The fact of each constant; of the kind that the row's type asks for.
[[nodiscard]] ConstantFacts CompileConstants(const Rows& rows, const Toolchain& toolchain,
                                             const UnitMap& units,
                                             const std::map<std::string, std::size_t>& provenance);

// The rows whose text, evaluated with the language's rules, is not the fact.
[[nodiscard]] Mismatches CheckConstants(const Rows& rows, const ConstantFacts& facts);

// The names of the rows that have a fact and do not agree with it.
[[nodiscard]] std::vector<std::string> DifferingConstants(const Rows& rows,
                                                          const ConstantFacts& facts);

}  // namespace declarium::win32_library_test
