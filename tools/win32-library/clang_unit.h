// One source text parsed by libclang for Windows, and the small conversions that every user
// of it needs.
#pragma once

#include <clang-c/Index.h>
#include <expected>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "header_model.h"

namespace declarium::win32_library {

// The text of a libclang string, which is released.
[[nodiscard]] std::string TakeText(CXString text);

// The kind of declarations that a parse keeps.
enum class MacroRecord { kDropped, kKept };

class ClangUnit {
 public:
  // Parses `source`. The index and the tree live as long as the object.
  ClangUnit(const std::string& source, MacroRecord macros, Platform platform = Platform::kX86);

  // The messages of errors, at most ten; empty when there was none.
  [[nodiscard]] std::vector<std::string> Errors() const;

  // Calls `visit` for every declaration and macro of the file level.
  void ForEachTopLevel(const std::function<void(CXCursor)>& visit) const;

  // The tokens of the source range that the cursor covers.
  [[nodiscard]] std::vector<Token> Tokens(CXCursor cursor) const;

 private:
  struct IndexDeleter {
    void operator()(void* index) const { clang_disposeIndex(index); }
  };
  struct UnitDeleter {
    void operator()(CXTranslationUnit unit) const { clang_disposeTranslationUnit(unit); }
  };
  std::unique_ptr<void, IndexDeleter> index_;
  std::unique_ptr<CXTranslationUnitImpl, UnitDeleter> unit_;
};

// Calls `visit` for every direct child.
void ForEachChild(CXCursor parent, const std::function<void(CXCursor)>& visit);

// The header that the cursor stands in, relative to the include folder, the metadata's area or the
// additions; empty when it is none of these.
[[nodiscard]] std::string HeaderOf(CXCursor cursor);

}  // namespace declarium::win32_library
