// What the headers declare, as plain data: the translators work on this and never see the compiler.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace declarium::win32_library {

// The two forms of Windows that rows are made for.
enum class Platform { kX86, kX64 };

enum class TypeKind { kVoid, kInteger, kReal, kPointer, kRecord, kArray, kFunction, kOther };

struct HeaderType {
  TypeKind kind = TypeKind::kOther;
  long size = 0;           // bytes; 0 where a type has none
  bool is_signed = false;  // kInteger
  bool is_const = false;
  std::string text;  // as the source spells it, "const RECT *"
  // The typedef names passed on the way to the type itself, outermost first: LPCSTR, then none.
  std::vector<std::string> names;
  std::shared_ptr<const HeaderType> target;  // kPointer, kArray
  long count = 0;                            // kArray
  int record = -1;                           // kRecord: index into Headers::records

  // Whether one of the typedef names passed is `name`.
  [[nodiscard]] bool IsNamed(const std::string& name) const {
    for (const std::string& passed : names)
      if (passed == name) return true;
    return false;
  }

  // Characters of 8 and of 16 bits.
  [[nodiscard]] bool IsText() const { return kind == TypeKind::kInteger && size == 1 && is_signed; }
  [[nodiscard]] bool IsWideText() const {
    return IsNamed("WCHAR") || IsNamed("wchar_t") || IsNamed("OLECHAR");
  }
};

struct Field {
  std::string name;  // empty for an unnamed record or union
  HeaderType type;
  long offset_bits = 0;
  bool is_bit_field = false;
  long width_bits = 0;         // of a bit field
  std::string count_constant;  // the macro that gives an array its length, empty when none does
};

struct Record {
  std::string tag;                    // empty when the record has no tag
  std::vector<std::string> typedefs;  // the typedef names that mean the record itself, in order
  std::string plain_name;             // its name in the library, where that is none of the above
  std::vector<std::string> aliases;   // further names that it has in the library
  bool is_union = false;
  bool is_complete = false;
  // A tagged record is declared in it, or in one of its members, without a member of that type: to
  // some compilers a member without a name, to others none.
  bool is_ambiguous = false;
  long size = 0;
  long alignment = 0;
  std::vector<Field> fields;
  std::string header;  // below the include folder
};

struct Parameter {
  std::string name;  // may be empty
  HeaderType type;
};

struct Function {
  std::string name;
  HeaderType result;
  std::vector<Parameter> parameters;
  bool is_stdcall = false;
  bool is_variadic = false;
  std::string header;
};

enum class TokenKind { kIdentifier, kLiteral, kPunctuation };

struct Token {
  TokenKind kind;
  std::string text;
};

// A macro without parameters, or an enumerator.
struct Constant {
  std::string name;
  std::vector<Token> tokens;  // what stands behind the name, or behind the enumerator's "="
  bool is_enumerator = false;
  std::string header;

  enum class Value { kNone, kInteger, kReal };
  Value value = Value::kNone;
  std::int64_t integer = 0;  // the value in 64 bits, or the bits where it is unsigned
  long size = 0;             // bytes of the value's type
  double real = 0;
};

// One unit of headers that can be compiled together.
struct Headers {
  std::vector<Function> functions;
  std::vector<Record> records;
  std::vector<Constant> constants;
};

}  // namespace declarium::win32_library
