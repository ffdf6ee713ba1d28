// What a module declares: Const, Declare, Type and Enum as data. All views refer into the source
// text, or to texts of the program where the source says a type by a character or not at all.
#pragma once

#include <cstdint>
#include <string_view>
#include <variant>
#include <vector>

#include "vb/token.h"

namespace declarium::vb {

enum class Scope : unsigned char {
  kPublic,
  kPrivate,
  kLocal,  // a constant inside a procedure
};

enum class Passing : unsigned char { kByValue, kByReference };

struct TypeReference {
  std::u16string_view name;    // "Long", "Library.Record"; what a type character or Def line says
  std::u16string_view length;  // the expression behind "String *", empty for any other type
  char16_t character = 0;      // the type character, 0 when there is none
  bool is_written = false;     // with "As"
  bool is_array = false;       // "As Byte()", a result

  // As it is written behind "As".
  [[nodiscard]] std::u16string_view Text() const {
    if (length.empty()) return name;
    return {name.data(), static_cast<std::size_t>(length.data() + length.size() - name.data())};
  }
};

struct Constant {
  TypeReference type;         // without a name when only the value gives it
  std::u16string_view value;  // the expression
};

struct Parameter {
  std::u16string_view name;
  Place place;
  TypeReference type;
  std::u16string_view default_value;  // the expression, empty when there is none
  Passing passing = Passing::kByReference;
  bool is_passing_written = false;
  bool is_optional = false;
  bool is_param_array = false;
  bool is_array = false;  // name()
};

// A Declare.
struct External {
  std::u16string_view library;  // without its quotes
  std::u16string_view alias;    // "#123" for an ordinal, empty when there is none
  TypeReference result;         // of a Function
  std::vector<Parameter> parameters;
  char16_t name_character = 0;  // the type character behind the name, 0 when there is none
  bool is_function = false;
  bool is_ptr_safe = false;
  bool is_wide = false;  // DeclareWide, texts as UTF-16

  // The procedure's name in the library.
  [[nodiscard]] std::u16string_view EntryOr(std::u16string_view name) const {
    return alias.empty() ? name : alias;
  }
};

// One dimension of an array. A lower bound that is not written is that of Option Base, empty for 0.
struct Bounds {
  std::u16string_view lower;
  std::u16string_view upper;
  bool is_lower_written = false;
};

struct Member {
  std::u16string_view name;
  Place place;
  TypeReference type;
  std::vector<Bounds> dimensions;
  bool is_array = false;  // without dimensions a dynamic one
  std::uint32_t condition = 0;
};

struct Comment {
  std::u16string_view text;  // with its "'" or Rem
  Place place;
};

struct Record {
  std::vector<Member> members;
  std::vector<Comment> comments;  // on lines of their own and behind members
};

struct EnumMember {
  std::u16string_view name;
  Place place;
  std::u16string_view value;  // the expression, empty for one more than the member before
  std::uint32_t condition = 0;
};

struct Enumeration {
  std::vector<EnumMember> members;
};

struct Declaration {
  std::u16string_view name;  // without a type character
  std::u16string_view text;  // the whole statement, or all lines of a block, without a last comment
  Place place;               // where the statement begins
  Place name_place;
  Scope scope = Scope::kPublic;
  bool is_global = false;       // by the word Global
  std::uint32_t condition = 0;  // of Module::conditions
  std::uint32_t end_line = 1;   // the last line of the text
  std::variant<Constant, External, Record, Enumeration> what;

  template <class Kind>
  [[nodiscard]] const Kind* As() const {
    return std::get_if<Kind>(&what);
  }
};

// What the language would refuse.
struct SyntaxError {
  Place place;
  std::string_view expected;
  std::u16string_view found;  // empty at the end of the statement
  Place statement = {};       // where the statement begins
};

}  // namespace declarium::vb
