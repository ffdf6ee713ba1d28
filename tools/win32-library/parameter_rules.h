// How a parameter is passed where its C type alone does not say what a program can hand over.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "header_model.h"
#include "metadata.h"

namespace declarium::win32_library {

enum class Passed {
  kAsDeclared,  // as its C type says
  kAsAddress,   // ByVal ... As Long: an address that is only handed on, or must be 0
  kAsAnything,  // As Any: a record, a number, a text or, with ByVal 0&, nothing
  kAsText,      // ByVal ... As String
};

class ParameterRules {
 public:
  // Both arguments must outlive the object.
  ParameterRules(const Headers& headers, const Metadata& metadata);

  // In this order:
  //   what a message carries, a name that may be a number          anything
  //   a cursor or icon of the system, the text that has a length   an address
  //   reserved by the metadata                                     an address
  //   text of the remote procedure calls                           text
  //   untyped or text, to a procedure that frees or unmaps         an address
  //   a record that some procedure returns as an address (to one
  //   that frees: or gives back as one)                            an address
  //   a record or number that the metadata calls optional          anything
  [[nodiscard]] Passed Of(const Function& function, std::size_t index) const;

  // The header's name, the metadata's where the header has none, or what the type says where
  // neither has; in the letters that VB's own objects have: the language gives all equal names of a
  // project the same letters. May be empty.
  [[nodiscard]] std::string NameOf(const Function& function, std::size_t index) const;

 private:
  [[nodiscard]] const MetaValue* FactsOf(const Function& function, std::size_t index) const;
  [[nodiscard]] bool IsHandedOn(const HeaderType& target, bool freeing) const;

  [[nodiscard]] bool IsRecordOrNumber(const HeaderType& target) const;

  const Headers& headers_;
  const Metadata& metadata_;
  std::set<int> returned_;    // records whose address is a result
  std::set<int> given_back_;  // records whose address a procedure puts somewhere
};

// The name in the letters of VB's objects: hwnd is hWnd, left is Left.
[[nodiscard]] std::string FamiliarCase(const std::string& name);

}  // namespace declarium::win32_library
