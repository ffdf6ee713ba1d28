// Turns macros and enumerators into Const rows.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "header_model.h"
#include "rows.h"
#include "vb/expression.h"

namespace declarium::win32_library {

class ConstantTranslator {
 public:
  // Takes the constants of one unit of headers as candidates. Of several constants whose names are
  // equal but for case the first is the one. What the headers have, but not as a value that VB can
  // write, the metadata may have.
  void Add(const std::vector<Constant>& constants);

  // Takes candidates out whose names other kinds of items have.
  void LeaveOut(const std::string& lower_name, const std::string& reason);

  // Whether a constant of the name is in the library, by lower-cased name.
  [[nodiscard]] bool Has(const std::string& lower_name) const;

  // The value of a whole-number constant of the library, by its exact name.
  [[nodiscard]] std::optional<long> ValueOf(const std::string& name) const;

  // The rows, in order of their lower-cased names, and how many were left out why.
  [[nodiscard]] std::vector<ConstRow> Rows(LeftOut& left_out) const;

 private:
  struct Candidate {
    Constant constant;
    vb::Value value;
  };

  void AddOne(const Constant& constant);
  [[nodiscard]] std::string TextFor(const Candidate& candidate) const;
  [[nodiscard]] vb::Evaluated LookUp(std::string_view name) const;

  std::map<std::string, Candidate> candidates_;  // by lower-cased name
  std::map<std::string, std::vector<Token>> macros_;
  std::map<std::string, std::string> left_out_;  // the reason, by exact name
};

}  // namespace declarium::win32_library
