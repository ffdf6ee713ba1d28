#include "header_reader.h"

#include <algorithm>
#include <array>
#include <map>

#include "clang_unit.h"
#include "constant_probe.h"

namespace declarium::win32_library {
namespace {

// The C run-time library's headers: not Windows' own declarations.
bool IsRunTimeHeader(const std::string& header) {
  static constexpr std::array<std::string_view, 36> kNames = {
      "assert.h",  "conio.h",   "ctype.h",  "direct.h", "dirent.h",   "errno.h",
      "excpt.h",   "fcntl.h",   "float.h",  "intrin.h", "inttypes.h", "io.h",
      "limits.h",  "locale.h",  "malloc.h", "math.h",   "mbstring.h", "memory.h",
      "process.h", "pthread.h", "search.h", "setjmp.h", "share.h",    "signal.h",
      "stdarg.h",  "stddef.h",  "stdint.h", "stdio.h",  "stdlib.h",   "string.h",
      "strings.h", "tchar.h",   "time.h",   "vadefs.h", "wchar.h",    "wctype.h"};
  if (header == "_timeval.h") return false;  // a record of the sockets library
  return header.empty() || header.starts_with('_') || header.starts_with("crt") ||
         header.starts_with("corecrt") || header.starts_with("sec_api/") ||
         header.starts_with("sys/") || header.starts_with("psdk_inc/intrin") ||
         header.starts_with("pthread") || std::ranges::find(kNames, header) != kNames.end();
}

// Adds to the typedef names passed and strips sugar, until the type itself is reached.
CXType StripSugar(CXType type, HeaderType& result) {
  for (;;) {
    result.is_const |= clang_isConstQualifiedType(type) != 0;
    if (type.kind == CXType_Typedef) {
      result.names.push_back(TakeText(clang_getTypedefName(type)));
      type = clang_getTypedefDeclUnderlyingType(clang_getTypeDeclaration(type));
    } else if (type.kind == CXType_Elaborated) {
      type = clang_Type_getNamedType(type);
    } else if (type.kind == CXType_Attributed) {
      type = clang_Type_getModifiedType(type);
    } else if (type.kind == CXType_Unexposed) {
      CXType canonical = clang_getCanonicalType(type);
      if (canonical.kind == CXType_Unexposed) return type;
      type = canonical;
    } else {
      return type;
    }
  }
}

// The type as C writes it. A record without a name is only its kind: libclang adds its place. The
// headers have a name of their own for BOOL, which Objective-C has too.
std::string SpellingOf(CXType type) {
  constexpr std::string_view kOwnBool = "WINBOOL";
  std::string text = TakeText(clang_getTypeSpelling(type));
  if (const std::size_t own = text.find(kOwnBool); own != std::string::npos)
    text.replace(own, kOwnBool.size(), "BOOL");
  const std::size_t place = text.find(" at /");
  if (place == std::string::npos) return text;
  return text.find("union") < place ? "union" : "struct";
}

// What tells one record from all others. The nameless records of one record share their symbol's
// name, so their place in the file belongs to it.
std::string RecordKey(CXCursor declaration) {
  std::string key = TakeText(clang_getCursorUSR(declaration));
  if (clang_Cursor_isAnonymous(declaration) == 0) return key;
  unsigned offset = 0;
  clang_getFileLocation(clang_getCursorLocation(declaration), nullptr, nullptr, nullptr, &offset);
  return key + "@" + std::to_string(offset);
}

bool IsSignedKind(CXTypeKind kind) {
  return kind == CXType_Char_S || kind == CXType_SChar || kind == CXType_Short ||
         kind == CXType_Int || kind == CXType_Long || kind == CXType_LongLong ||
         kind == CXType_Enum;
}

class Reader {
 public:
  Reader(const ClangUnit& unit, Headers& headers) : unit_(unit), headers_(headers) {}

  void Read(CXCursor cursor) {
    switch (clang_getCursorKind(cursor)) {
      case CXCursor_FunctionDecl:
        return ReadFunction(cursor);
      case CXCursor_StructDecl:
      case CXCursor_UnionDecl:
        static_cast<void>(RecordIndex(clang_getCursorType(cursor)));
        return;
      case CXCursor_EnumDecl:
        return ReadEnumerators(cursor);
      case CXCursor_TypedefDecl:
        return ReadTypedef(cursor);
      case CXCursor_MacroDefinition:
        return ReadMacro(cursor);
      default:
        return;
    }
  }

 private:
  HeaderType ReadType(CXType type) {
    HeaderType result;
    result.text = SpellingOf(type);
    type = StripSugar(type, result);
    const long long size = clang_Type_getSizeOf(type);
    result.size = size > 0 ? static_cast<long>(size) : 0;
    switch (type.kind) {
      case CXType_Void:
        result.kind = TypeKind::kVoid;
        break;
      case CXType_Float:
      case CXType_Double:
        result.kind = TypeKind::kReal;
        break;
      case CXType_Pointer:
        ReadPointer(clang_getPointeeType(type), result);
        break;
      case CXType_ConstantArray:
      case CXType_IncompleteArray:
        result.kind = TypeKind::kArray;
        result.count = std::max(0L, static_cast<long>(clang_getArraySize(type)));
        result.target = std::make_shared<HeaderType>(ReadType(clang_getArrayElementType(type)));
        break;
      case CXType_Record:
        result.kind = TypeKind::kRecord;
        result.record = RecordIndex(type);
        break;
      case CXType_FunctionProto:
      case CXType_FunctionNoProto:
        result.kind = TypeKind::kFunction;
        break;
      case CXType_LongDouble:
        break;
      default:
        if (type.kind == CXType_Enum || (type.kind >= CXType_Bool && type.kind <= CXType_LongLong))
          result.kind = TypeKind::kInteger;
        result.is_signed = IsSignedKind(type.kind);
    }
    return result;
  }

  void ReadPointer(CXType pointee, HeaderType& result) {
    result.kind = TypeKind::kPointer;
    result.target = std::make_shared<HeaderType>(ReadType(pointee));
  }

  int RecordIndex(CXType type) {
    const std::string key = RecordKey(clang_getCanonicalCursor(clang_getTypeDeclaration(type)));
    if (const auto known = indexes_.find(key); known != indexes_.end()) return known->second;
    const int index = static_cast<int>(headers_.records.size());
    indexes_.emplace(key, index);
    headers_.records.emplace_back();
    Record record = ReadRecord(type, clang_getTypeDeclaration(type));
    record.typedefs = std::move(headers_.records[index].typedefs);
    headers_.records[index] = std::move(record);
    return index;
  }

  Record ReadRecord(CXType type, CXCursor declaration) {
    Record record;
    if (clang_Cursor_isAnonymous(declaration) == 0)
      record.tag = TakeText(clang_getCursorSpelling(declaration));
    if (record.tag.find(' ') != std::string::npos) record.tag.clear();
    record.is_union = clang_getCursorKind(declaration) == CXCursor_UnionDecl;
    const CXCursor definition = clang_getCursorDefinition(declaration);
    record.header = HeaderOf(clang_Cursor_isNull(definition) != 0 ? declaration : definition);
    if (IsRunTimeHeader(record.header)) record.header.clear();
    const long long size = clang_Type_getSizeOf(type);
    record.is_complete = size >= 0 && clang_Cursor_isNull(definition) == 0;
    if (!record.is_complete) return record;
    record.size = static_cast<long>(size);
    record.alignment = static_cast<long>(clang_Type_getAlignOf(type));
    ForEachChild(definition, [&](CXCursor child) { ReadField(child, type, record); });
    ForEachChild(definition, [&](CXCursor child) {
      record.is_ambiguous = record.is_ambiguous || IsUnusedTaggedRecord(child, record);
    });
    for (const Field& field : record.fields)
      if (field.type.kind == TypeKind::kRecord && headers_.records[field.type.record].is_ambiguous)
        record.is_ambiguous = true;
    return record;
  }

  bool IsUnusedTaggedRecord(CXCursor cursor, const Record& record) {
    const CXCursorKind kind = clang_getCursorKind(cursor);
    if (kind != CXCursor_StructDecl && kind != CXCursor_UnionDecl) return false;
    if (clang_Cursor_isAnonymous(cursor) != 0) return false;
    const int index = RecordIndex(clang_getCursorType(cursor));
    return std::ranges::none_of(record.fields, [&](const Field& field) {
      const HeaderType* type = &field.type;
      while (type->target != nullptr) type = type->target.get();
      return type->record == index;
    });
  }

  void ReadField(CXCursor cursor, CXType parent, Record& record) {
    if (clang_getCursorKind(cursor) != CXCursor_FieldDecl) {
      ReadUnnamedMember(cursor, parent, record);
      return;
    }
    Field field;
    field.name = TakeText(clang_getCursorSpelling(cursor));
    if (field.name.find(' ') != std::string::npos) field.name.clear();
    field.type = ReadType(clang_getCursorType(cursor));
    field.offset_bits = static_cast<long>(clang_Cursor_getOffsetOfField(cursor));
    field.is_bit_field = clang_Cursor_isBitField(cursor) != 0;
    if (field.is_bit_field) field.width_bits = clang_getFieldDeclBitWidth(cursor);
    if (field.type.kind == TypeKind::kArray) field.count_constant = CountConstant(cursor);
    record.fields.push_back(std::move(field));
  }

  // An unnamed record or union inside a record has no field of its own in the tree; its first named
  // member says where it stands.
  void ReadUnnamedMember(CXCursor cursor, CXType parent, Record& record) {
    if (clang_Cursor_isAnonymousRecordDecl(cursor) == 0) return;
    Field field;
    field.type = ReadType(clang_getCursorType(cursor));
    field.offset_bits = UnnamedOffset(parent, field.type.record);
    record.fields.push_back(std::move(field));
  }

  long UnnamedOffset(CXType parent, int index) {
    for (const Field& inner : headers_.records[index].fields) {
      if (inner.name.empty()) return UnnamedOffset(parent, inner.type.record) - inner.offset_bits;
      const long long offset = clang_Type_getOffsetOf(parent, inner.name.c_str());
      if (offset >= 0) return static_cast<long>(offset) - inner.offset_bits;
    }
    return -1;
  }

  std::string CountConstant(CXCursor field) {
    const std::vector<Token> tokens = unit_.Tokens(field);
    std::string found;
    for (std::size_t i = 0; i + 2 < tokens.size(); ++i) {
      if (tokens[i].text != "[") continue;
      if (!found.empty() || tokens[i + 1].kind != TokenKind::kIdentifier ||
          tokens[i + 2].text != "]")
        return "";
      found = tokens[i + 1].text;
    }
    return found;
  }

  void ReadFunction(CXCursor cursor) {
    Function function;
    function.name = TakeText(clang_getCursorSpelling(cursor));
    function.header = HeaderOf(cursor);
    if (IsRunTimeHeader(function.header)) return;
    const CXType type = clang_getCanonicalType(clang_getCursorType(cursor));
    function.is_stdcall = clang_getFunctionTypeCallingConv(type) == CXCallingConv_X86StdCall;
    // "()" declares no parameters; to the compiler it is a function of any.
    function.is_variadic =
        type.kind != CXType_FunctionNoProto && clang_isFunctionTypeVariadic(type) != 0;
    function.result = ReadType(clang_getCursorResultType(cursor));
    const int count = clang_Cursor_getNumArguments(cursor);
    for (int i = 0; i < count; ++i) {
      const CXCursor argument = clang_Cursor_getArgument(cursor, static_cast<unsigned>(i));
      function.parameters.push_back(
          {TakeText(clang_getCursorSpelling(argument)), ReadType(clang_getCursorType(argument))});
    }
    headers_.functions.push_back(std::move(function));
  }

  void ReadEnumerators(CXCursor cursor) {
    const std::string header = HeaderOf(cursor);
    if (IsRunTimeHeader(header)) return;
    ForEachChild(cursor, [&](CXCursor child) {
      if (clang_getCursorKind(child) != CXCursor_EnumConstantDecl) return;
      Constant constant{.name = TakeText(clang_getCursorSpelling(child)),
                        .tokens = unit_.Tokens(child),
                        .is_enumerator = true,
                        .header = header};
      const auto begin = constant.tokens.begin();
      constant.tokens.erase(begin, begin + std::min<std::ptrdiff_t>(2, constant.tokens.size()));
      constant.value = Constant::Value::kInteger;
      constant.integer = clang_getEnumConstantDeclValue(child);
      constant.size = 4;
      headers_.constants.push_back(std::move(constant));
    });
  }

  void ReadTypedef(CXCursor cursor) {
    HeaderType passed;
    const CXType type = StripSugar(clang_getTypedefDeclUnderlyingType(cursor), passed);
    if (type.kind != CXType_Record) return;
    const int index = RecordIndex(type);
    headers_.records[index].typedefs.push_back(TakeText(clang_getCursorSpelling(cursor)));
  }

  void ReadMacro(CXCursor cursor) {
    if (clang_Cursor_isMacroFunctionLike(cursor) != 0 || clang_Cursor_isMacroBuiltin(cursor) != 0)
      return;
    Constant constant{.name = TakeText(clang_getCursorSpelling(cursor)),
                      .tokens = unit_.Tokens(cursor),
                      .header = HeaderOf(cursor)};
    if (IsRunTimeHeader(constant.header) || constant.tokens.size() < 2) return;
    constant.tokens.erase(constant.tokens.begin());
    headers_.constants.push_back(std::move(constant));
  }

  const ClangUnit& unit_;
  Headers& headers_;
  std::map<std::string, int> indexes_;
};

// A macro defined again replaces its first definition, as it does for the compiler.
void KeepLastDefinitions(std::vector<Constant>& constants) {
  std::map<std::string, std::size_t> last;
  for (std::size_t i = 0; i < constants.size(); ++i) last[constants[i].name] = i;
  std::vector<Constant> kept;
  for (std::size_t i = 0; i < constants.size(); ++i)
    if (last[constants[i].name] == i) kept.push_back(std::move(constants[i]));
  constants = std::move(kept);
}

}  // namespace

std::expected<Headers, std::string> ReadHeaders(const HeaderUnit& source, Platform platform) {
  const ClangUnit unit(source.source, MacroRecord::kKept, platform);
  if (const auto errors = unit.Errors(); !errors.empty())
    return std::unexpected(source.name + ": " + errors.front());
  Headers headers;
  Reader reader(unit, headers);
  unit.ForEachTopLevel([&](CXCursor cursor) { reader.Read(cursor); });
  KeepLastDefinitions(headers.constants);
  if (platform == Platform::kX86) EvaluateConstants(source.source, headers.constants);
  return headers;
}

}  // namespace declarium::win32_library
