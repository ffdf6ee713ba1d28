#include "facts/row_facts.h"

#include <algorithm>

namespace declarium {
namespace {

// The fields of a line one after the other; empty ones behind the last.
class Fields {
 public:
  Fields(std::string_view line, char separator) : rest_(line), separator_(separator) {}

  [[nodiscard]] bool HasMore() const { return !is_over_; }

  std::string_view Next() {
    const auto end = rest_.find(separator_);
    const auto field = rest_.substr(0, end);
    is_over_ = end == rest_.npos;
    rest_ = is_over_ ? std::string_view() : rest_.substr(end + 1);
    return field;
  }

 private:
  std::string_view rest_;
  char separator_;
  bool is_over_ = false;
};

std::vector<std::string_view> WordsOf(std::string_view text) {
  std::vector<std::string_view> words;
  for (Fields fields(text, ' '); fields.HasMore();)
    if (const auto word = fields.Next(); !word.empty()) words.push_back(word);
  return words;
}

ValueFacts ReadValue(std::string_view text) {
  Fields fields(text, '|');
  ValueFacts value;
  value.name = fields.Next();
  const auto direction = fields.Next();
  value.is_in = direction.contains('i');
  value.is_out = direction.contains('o');
  value.is_optional = direction.contains('?');
  value.is_reserved = direction.contains('r');
  value.c_type = fields.Next();
  value.set = fields.Next();
  value.type64 = fields.Next();
  return value;
}

void ReadProcedure(Fields& fields, RowFacts& facts) {
  facts.library = fields.Next();
  facts.entry = fields.Next();
  Fields since(fields.Next(), ' ');
  facts.since = since.Next();
  facts.since_source = since.Next();
  facts.sets_last_error = fields.Next().contains('e');
  for (const auto word : WordsOf(fields.Next())) {
    Fields related(word, '=');
    const auto how = related.Next();
    facts.related.push_back({how, related.Next()});
  }
  facts.result = ReadValue(fields.Next());
}

}  // namespace

RowFacts ReadRowFacts(std::string_view line) {
  Fields fields(line, '\t');
  const auto kind = fields.Next();
  fields.Next();  // the name in lower case
  RowFacts facts;
  facts.header = fields.Next();
  if (kind == "d") ReadProcedure(fields, facts);
  while (fields.HasMore()) facts.values.push_back(ReadValue(fields.Next()));
  return facts;
}

Form64 ReadForm64(std::string_view line) {
  Fields fields(line, '\t');
  fields.Next();
  fields.Next();
  const auto text = fields.Next();
  if (text.starts_with('!')) return {.text = {}, .reason = text.substr(1)};
  return {.text = text, .reason = {}};
}

ConstantSetFacts ReadConstantSetFacts(std::string_view line) {
  Fields fields(line, '\t');
  fields.Next();
  fields.Next();
  ConstantSetFacts facts;
  facts.is_flags = fields.Next().contains('f');
  facts.constants = WordsOf(fields.Next());
  facts.by_prefix = WordsOf(fields.Next());
  return facts;
}

}  // namespace declarium
