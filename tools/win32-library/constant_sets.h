// The constants that belong together: the values of one parameter or member. They are the
// metadata's enumerations, and what begins as all constants of one do; for a parameter to which the
// metadata gives no enumeration, those that begin with what a list says.
#pragma once

#include <expected>
#include <map>
#include <string>
#include <vector>

#include "metadata.h"
#include "rows.h"

namespace declarium::win32_library {

// The beginnings that a list gives to parameters and members. By "ROW NAME", in the letters of the
// row: procedures without A or W, records by the name in the library.
using Prefixes = std::map<std::string, std::vector<std::string>>;

// Reads lines "ROW NAME PREFIX..." with blanks between; "#" begins a comment. The reason in words
// when a line is not of this form.
[[nodiscard]] std::expected<Prefixes, std::string> ReadPrefixes(const std::string& path);

struct ConstantSet {
  std::string name;                    // "SET_WINDOW_POS_FLAGS"; "WM_*" for a set of the list
  bool is_flags = false;               // combined with Or
  std::vector<std::string> constants;  // of the metadata's enumeration
  std::vector<std::string> by_prefix;  // of no enumeration, but with the same beginning
};

class ConstantSets {
 public:
  // `metadata` must outlive the object.
  ConstantSets(const std::vector<ConstRow>& constants, const Metadata& metadata);

  // The set of the enumeration; nullptr when there is none of this name, or the rows hold none of
  // its constants.
  [[nodiscard]] const ConstantSet* Find(const std::string& enumeration) const;

  // The set of all constants with one of the beginnings; nullptr when there is none.
  [[nodiscard]] const ConstantSet* WithPrefixes(const std::vector<std::string>& prefixes);

 private:
  struct Owner {
    std::string set;
    bool is_alone = true;  // no other set has constants with this beginning
  };

  void AddEnumeration(const MetaEnum& item);
  void ExtendByPrefix();
  [[nodiscard]] ConstantSet* OwnerOf(const std::string& constant,
                                     const std::map<std::string, Owner>& owners);

  std::map<std::string, ConstRow> rows_;  // by lower-cased name
  std::map<std::string, ConstantSet> sets_;
};

}  // namespace declarium::win32_library
