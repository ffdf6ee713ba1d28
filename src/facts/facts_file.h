// The facts file of a library: Win32.facts beside Win32.api. It is text in order of its lines, so a
// row is found by halving and nothing else is read. The file may be anybody's: what it says of a
// row is for the row as it was when the file was written.
#pragma once

#include <expected>
#include <filesystem>
#include <optional>
#include <string_view>

#include "facts/row_facts.h"
#include "library/file_io.h"
#include "library/kind.h"
#include "text/error.h"

namespace declarium {

class FactsFile {
 public:
  // The facts beside the library. Fails when there is no such file, when it cannot be read, and
  // when its first line is not that of a facts file. For a process that ends soon, see ViewFile.
  [[nodiscard]] static std::expected<FactsFile, Error> OpenBeside(
      const std::filesystem::path& library);
  [[nodiscard]] static std::expected<FactsFile, Error> Of(FileView file,
                                                          const std::filesystem::path& path);

  // The facts of a row, by its name without regard to case. The views live as long as the file.
  [[nodiscard]] std::optional<RowFacts> Find(Kind kind, std::u16string_view name) const;

  // What a Declare or Type is in 64 bits; nothing where only the types of its facts differ.
  [[nodiscard]] std::optional<Form64> FindForm64(Kind kind, std::u16string_view name) const;

  // The set of constants of this name; an empty one when there is none.
  [[nodiscard]] ConstantSetFacts FindSet(std::string_view name) const;

 private:
  // The line that begins with the two fields, without its end; empty when there is none.
  [[nodiscard]] std::string_view LineOf(std::string_view letter, std::string_view name) const;

  FileView file_;
  std::string_view lines_;  // behind the first, in the file
};

// "Win32.facts" for "Win32.api".
[[nodiscard]] std::filesystem::path FactsPathOf(std::filesystem::path library);

}  // namespace declarium
