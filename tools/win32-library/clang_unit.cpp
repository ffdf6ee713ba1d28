#include "clang_unit.h"

#include <array>

#include "header_reader.h"
#include "metadata_source.h"

namespace declarium::win32_library {
namespace {

constexpr const char* kSourceName = "headers.c";
constexpr std::string_view kIncludeFolder = "/usr/i686-w64-mingw32/include/";

TokenKind KindOf(CXTokenKind kind) {
  if (kind == CXToken_Literal) return TokenKind::kLiteral;
  if (kind == CXToken_Identifier || kind == CXToken_Keyword) return TokenKind::kIdentifier;
  return TokenKind::kPunctuation;
}

}  // namespace

std::string TakeText(CXString text) {
  const char* characters = clang_getCString(text);
  std::string result = characters != nullptr ? characters : "";
  clang_disposeString(text);
  return result;
}

ClangUnit::ClangUnit(const std::string& source, MacroRecord macros, Platform platform)
    : index_(clang_createIndex(0, 0)) {
  // The headers of both platforms are the same files.
  const std::array arguments = {platform == Platform::kX86 ? "--target=i686-w64-windows-gnu"
                                                           : "--target=x86_64-w64-windows-gnu",
                                "-std=gnu17",
                                "-w",
                                "-ferror-limit=0",
                                "-resource-dir",
                                WIN32_LIBRARY_CLANG_RESOURCES,
                                "-isystem",
                                "/usr/i686-w64-mingw32/include"};
  CXUnsavedFile file{kSourceName, source.data(), source.size()};
  const unsigned options = macros == MacroRecord::kKept
                               ? CXTranslationUnit_DetailedPreprocessingRecord
                               : CXTranslationUnit_None;
  unit_.reset(clang_parseTranslationUnit(index_.get(), kSourceName, arguments.data(),
                                         static_cast<int>(arguments.size()), &file, 1, options));
}

std::vector<std::string> ClangUnit::Errors() const {
  if (unit_ == nullptr) return {"the compiler did not start"};
  std::vector<std::string> errors;
  const unsigned count = clang_getNumDiagnostics(unit_.get());
  for (unsigned i = 0; i < count && errors.size() < 10; ++i) {
    CXDiagnostic diagnostic = clang_getDiagnostic(unit_.get(), i);
    if (clang_getDiagnosticSeverity(diagnostic) >= CXDiagnostic_Error)
      errors.push_back(
          TakeText(clang_formatDiagnostic(diagnostic, clang_defaultDiagnosticDisplayOptions())));
    clang_disposeDiagnostic(diagnostic);
  }
  return errors;
}

void ClangUnit::ForEachTopLevel(const std::function<void(CXCursor)>& visit) const {
  if (unit_ != nullptr) ForEachChild(clang_getTranslationUnitCursor(unit_.get()), visit);
}

std::vector<Token> ClangUnit::Tokens(CXCursor cursor) const {
  CXToken* tokens = nullptr;
  unsigned count = 0;
  clang_tokenize(unit_.get(), clang_getCursorExtent(cursor), &tokens, &count);
  std::vector<Token> result;
  for (unsigned i = 0; i < count; ++i) {
    if (clang_getTokenKind(tokens[i]) == CXToken_Comment) continue;
    result.push_back({KindOf(clang_getTokenKind(tokens[i])),
                      TakeText(clang_getTokenSpelling(unit_.get(), tokens[i]))});
  }
  clang_disposeTokens(unit_.get(), tokens, count);
  return result;
}

void ForEachChild(CXCursor parent, const std::function<void(CXCursor)>& visit) {
  clang_visitChildren(
      parent,
      [](CXCursor child, CXCursor, CXClientData data) {
        (*static_cast<const std::function<void(CXCursor)>*>(data))(child);
        return CXChildVisit_Continue;
      },
      const_cast<std::function<void(CXCursor)>*>(&visit));
}

std::string HeaderOf(CXCursor cursor) {
  CXFile file = nullptr;
  clang_getExpansionLocation(clang_getCursorLocation(cursor), &file, nullptr, nullptr, nullptr);
  if (file == nullptr) return "";
  const std::string path = TakeText(clang_getFileName(file));
  if (path.starts_with(kIncludeFolder)) return path.substr(kIncludeFolder.size());
  // "#line" tells where the declarations of the other sources stand.
  CXString name{};
  clang_getPresumedLocation(clang_getCursorLocation(cursor), &name, nullptr, nullptr);
  const std::string presumed = TakeText(name);
  return presumed.starts_with(kMetadataFolder) || presumed == kAdditions ? presumed : "";
}

}  // namespace declarium::win32_library
