// Turns functions of the headers into Declare lines.
#pragma once

#include <expected>
#include <optional>
#include <set>
#include <string>

#include "header_model.h"
#include "import_library.h"
#include "knowledge.h"
#include "parameter_rules.h"
#include "record_translator.h"
#include "rows.h"

namespace declarium::win32_library {

class DeclareTranslator {
 public:
  // All arguments must outlive the object.
  DeclareTranslator(const Headers& headers, const Knowledge& knowledge, RecordTranslator& records);

  // The row of a function, or the reason why it has none. In 64 bits it is written for VBA:
  // addresses are LongPtr, whole numbers of 8 bytes LongLong.
  [[nodiscard]] std::expected<DeclareRow, std::string> Translate(const Function& function);

 private:
  struct Argument {
    std::string declaration;
    long bytes = 4;  // in 32 bits
    RowValue value = {};
  };
  using Arguments = std::expected<std::vector<Argument>, std::string>;

  [[nodiscard]] bool IsX86() const { return knowledge_.platform == Platform::kX86; }
  [[nodiscard]] std::string NameFor(const Function& function) const;
  [[nodiscard]] std::optional<ImportEntry> EntryOf(const Function& function) const;
  [[nodiscard]] Arguments ArgumentsOf(const Function& function);
  [[nodiscard]] Arguments ArgumentOf(const Function& function, std::size_t index);
  [[nodiscard]] Arguments ArgumentOf(const HeaderType& type, const std::string& name);
  [[nodiscard]] Arguments RecordByValue(const HeaderType& type, const std::string& name);
  [[nodiscard]] std::expected<std::string, std::string> ResultType(const HeaderType& type) const;
  [[nodiscard]] std::string ScalarType(const HeaderType& type) const;
  [[nodiscard]] std::string AddressType() const;
  [[nodiscard]] Argument PointerOf(const HeaderType& type, const std::string& name);
  [[nodiscard]] Argument ReferenceTo(const HeaderType& target, const std::string& name);
  [[nodiscard]] Argument ReferenceToRecord(const HeaderType& target, const std::string& name);

  const Headers& headers_;
  const Knowledge& knowledge_;
  ParameterRules rules_;
  RecordTranslator& records_;
  std::set<std::string> function_names_;
};

// The longest line that VB reads, less the longest scope word that may come before a declaration.
inline constexpr std::size_t kLongestLine = 1023 - 8;

// The rows of the procedures that the headers know as macros only.
[[nodiscard]] std::vector<DeclareRow> FamiliarRows(const ImportLibraries& libraries,
                                                   Platform platform);

}  // namespace declarium::win32_library
