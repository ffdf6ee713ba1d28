// What the code of procedures does with addresses, handles and the sizes of records: the places
// where it puts them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "vb/module.h"
#include "vb/surroundings.h"
#include "vb/token.h"

namespace declarium::vb {

// A Long that gets an address, which in 64 bits does not fit.
struct AddressInLong {
  enum class How : unsigned char {
    kAssigned,     // what a procedure returns, or a LongPtr
    kByReference,  // the procedure writes it to the Long, and beyond
  };
  How how = How::kAssigned;
  Place place;                   // of the variable
  std::u16string_view variable;  // "h", "info.hProcess", "handles(i)"
  std::u16string_view source;    // the procedure, or the LongPtr
  std::u16string_view statement;
};

// "x.cbSize = Len(x)", "x.cbSize = 44", and Len or LenB of a record anywhere else.
struct RecordSize {
  Place place;                 // of the value
  std::u16string_view record;  // the type of what is measured
  std::u16string_view member;  // that gets the size; empty where no member gets it alone
  std::u16string_view value;   // Len, LenB, or the number
  std::u16string_view statement;
  std::uint32_t condition = 0;  // of the module: the branch that the statement stands in

  [[nodiscard]] bool IsNumber() const { return !StartsName(value.front()); }
};

struct Code {
  std::vector<AddressInLong> addresses;
  std::vector<RecordSize> sizes;
};

// A module with what of it is read.
struct CodeSource {
  std::u16string_view text;
  const Module& parsed;
  const std::vector<bool>& is_read;  // for each condition of the module: whether its branch is
};

// Reads the procedures in which one of `places` stands, offsets in the text in ascending order, in
// the order of the source. `module` is the module's number in the surroundings.
[[nodiscard]] Code ReadCode(const CodeSource& source, const Surroundings& surroundings,
                            std::size_t module, std::span<const std::size_t> places);

// Adds the variables that a standard module makes public.
void AddPublicVariables(const CodeSource& source, Variables& variables);

// The language's own words that give an address: VarPtr and its like.
[[nodiscard]] std::span<const std::u16string_view> AddressFunctions();

}  // namespace declarium::vb
