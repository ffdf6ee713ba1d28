#include "cli/search_command.h"

#include <array>
#include <nlohmann/json.hpp>

#include "cli/library_files.h"
#include "cli/names.h"
#include "cli/output.h"

#include "search/search_engine.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

// The six criteria in the order of their options.
enum Criterion { kName, kType, kConst, kValue, kArg, kText, kCriterionCount };

struct CriterionOption {
  const char* option;
  const char* whole_option;
  const char* description;
};

constexpr std::array<CriterionOption, kCriterionCount> kCriterionOptions = {{
    {"--name", "--name-whole", "Name of the item"},
    {"--type", "--type-whole", "A type that a Declare or Type uses"},
    {"--const", "--const-whole", "A constant that a Const or Type uses"},
    {"--value", "--value-whole", "A value in a Const or Type"},
    {"--arg", "--arg-whole", "A parameter or member"},
    {"--text", "--text-whole", "Text anywhere behind the name"},
}};

struct SearchOptions {
  std::string file;
  std::string kinds = "const,declare,type";
  std::array<std::string, kCriterionCount> texts;
  std::array<bool, kCriterionCount> whole{};
  bool value_as_number = false;
};

void TakeKinds(const std::string& kinds, SearchCriteria& criteria) {
  criteria.searchConsts = criteria.searchDeclares = criteria.searchTypes = false;
  const auto text = FromUtf8(kinds);
  for (const auto word : Split(text, u',')) {
    const auto kind = KindOfWord(word);
    if (!kind) {
      throw CommandFailed(ExitStatus::kWrongUse,
                          "--kinds: " + OneLine(word) + " is none of const, declare and type");
    }
    switch (*kind) {
      case Kind::kConst:
        criteria.searchConsts = true;
        break;
      case Kind::kDeclare:
        criteria.searchDeclares = true;
        break;
      case Kind::kType:
        criteria.searchTypes = true;
        break;
    }
  }
}

SearchCriteria CriteriaOf(const SearchOptions& options) {
  const auto text = [&](Criterion criterion) { return FromUtf8(options.texts[criterion]); };
  SearchCriteria criteria{.nameText = text(kName),
                          .nameWhole = options.whole[kName],
                          .typeText = text(kType),
                          .typeWhole = options.whole[kType],
                          .constText = text(kConst),
                          .constWhole = options.whole[kConst],
                          .valueText = text(kValue),
                          .valueWhole = options.whole[kValue],
                          .valueAsNumber = options.value_as_number,
                          .argText = text(kArg),
                          .argWhole = options.whole[kArg],
                          .fullText = text(kText),
                          .fullWholeWords = options.whole[kText]};
  TakeKinds(options.kinds, criteria);
  return criteria;
}

// Collects the hits: the outcome, which is printed first, is known at the end.
class HitList : public SearchReceiver {
 public:
  void Begin(std::int32_t) override {}
  void Hit(const SearchHit& hit) override { hits_.push_back(hit); }
  void Position(std::int32_t) override {}
  void Count(std::int32_t) override {}
  void End() override {}
  [[nodiscard]] std::uint32_t TickCount() override { return 0; }

  [[nodiscard]] const std::vector<SearchHit>& Hits() const noexcept { return hits_; }

 private:
  std::vector<SearchHit> hits_;
};

struct OutcomeText {
  const char* word;
  const char* message;  // null when there is nothing to say
  ExitStatus status;
};

OutcomeText TextOf(SearchOutcome outcome) {
  switch (outcome) {
    case SearchOutcome::kNoCriteria:
      return {"no_criteria", "search: no criteria were given", ExitStatus::kWrongUse};
    case SearchOutcome::kNotEnough:
      return {"not_enough", "search: a kind to search must hold at least two items",
              ExitStatus::kNothingFound};
    case SearchOutcome::kDone:
      break;
  }
  return {"done", nullptr, ExitStatus::kDone};
}

ExitStatus RunSearch(const SearchOptions& options, const Session& session) {
  const auto criteria = CriteriaOf(options);
  const auto library = LoadLibrary(options.file);
  HitList list;
  const auto outcome = TextOf(Search(criteria, library, list));
  if (session.IsJson()) {
    auto header = JsonHeader("search");
    header["outcome"] = outcome.word;
    PrintJson(session, header);
  }
  for (const auto& hit : list.Hits()) PrintItem(session, hit.kind, hit.name);
  if (outcome.message != nullptr) session.Say(outcome.message);
  if (outcome.status != ExitStatus::kDone) return outcome.status;
  return list.Hits().empty() ? ExitStatus::kNothingFound : ExitStatus::kDone;
}

}  // namespace

void AddSearchCommand(const CommandSet& set) {
  AddCommand<SearchOptions>(
      set,
      {"search", "Search items by what they are made of",
       "declarium-cli search Win32.api --kinds type --type LOGFONT --type-whole",
       "Without a name, an item that meets one of the criteria is found; with a name it must have\n"
       "the name too. Texts match anywhere unless the whole is asked for, their case does not "
       "matter\n"
       "and ? * # and [lists] are wildcards.\n\n"},
      [](CLI::App& command, SearchOptions& options) {
        DefineFile(command, options.file);
        command
            .add_option("--kinds", options.kinds,
                        "Kinds to search, parted by commas; all when left out")
            ->type_name("KINDS");
        for (std::size_t i = 0; i < kCriterionCount; ++i) {
          const auto& option = kCriterionOptions[i];
          command.add_option(option.option, options.texts[i], option.description);
          command.add_flag(option.whole_option, options.whole[i],
                           i == kText ? "The text as whole words" : "Only the whole of it");
        }
        command.add_flag("--value-number", options.value_as_number,
                         "Compare the value's number in decimal, so that 16 finds &H10");
      },
      RunSearch);
}

}  // namespace declarium::cli
