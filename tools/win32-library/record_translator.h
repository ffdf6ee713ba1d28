// Turns records of the headers into records of the library that lie in memory as the compiler lays
// them out.
#pragma once

#include <expected>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "header_model.h"
#include "record_members.h"
#include "rows.h"
#include "vb/layout.h"

namespace declarium::win32_library {

// The value of a constant that the library holds under exactly this name.
using ConstantLookup = std::function<std::optional<long>(const std::string& name)>;

class RecordTranslator {
 public:
  // All arguments must outlive the object.
  RecordTranslator(const Headers& headers, ConstantLookup constants,
                   Platform platform = Platform::kX86);

  // The row of a record, or the reason why it has none.
  [[nodiscard]] const std::expected<TypeRow, std::string>& Translate(int index);

  // The same record once more for each named record among the alternatives of its unions: with that
  // one in place of the largest. Only of records that a procedure takes by address, that have a
  // row, and that the language has no type for.
  [[nodiscard]] std::vector<TypeRow> FormsOf(int index);

  // Takes a record out: another of its name is in the library already.
  void LeaveOut(int index, const std::string& reason);

  // The name under which a field or parameter may refer to the record; empty when it has no row.
  [[nodiscard]] std::string NameOf(int index);

 private:
  struct Form;  // one way to write a piece
  struct Draft;

  [[nodiscard]] std::expected<TypeRow, std::string> Make(int index);
  [[nodiscard]] bool WriteAll(int index, const std::vector<Piece>& pieces, TypeRow& row);
  [[nodiscard]] bool Close(int index, std::size_t begin, Draft& draft);
  static void Remark(const Piece& piece, const std::string& name, const Form& form, TypeRow& row);
  [[nodiscard]] Form FittingForm(int index, const Piece& piece);
  [[nodiscard]] Form NaturalForm(int index, const Piece& piece);
  [[nodiscard]] Form FormOf(int index, const HeaderType& type, const Piece& piece);
  [[nodiscard]] Form ArrayForm(const Piece& piece, const HeaderType& type);

  const Headers& headers_;
  ConstantLookup constants_;
  vb::Extent address_;  // of an address, which is also the largest alignment
  const char* address_type_;
  std::set<int> text_records_;
  std::set<int> taken_;  // by address, by a procedure
  std::vector<std::optional<std::expected<TypeRow, std::string>>> rows_;
  std::vector<vb::Extent> extents_;
  std::set<int> in_progress_;
};

}  // namespace declarium::win32_library
