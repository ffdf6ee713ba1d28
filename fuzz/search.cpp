// Criteria and a library made from source: the search against an own reading of its full-text and
// name tests, and what a search always promises.
#include <algorithm>
#include <vector>

#include "fuzz/input.h"
#include "import/merge.h"
#include "library/item.h"
#include "search/quick_find.h"
#include "search/search_engine.h"
#include "tests/support/full_text.h"
#include "text/text.h"
#include "vb/like.h"

using namespace declarium;
using fuzz::Require;

namespace {

class Receiver final : public SearchReceiver {
 public:
  void Begin(std::int32_t maximum) override { maximum_ = maximum; }
  void Hit(const SearchHit& hit) override { hits.push_back(hit); }
  void Position(std::int32_t position) override {
    Require(position >= 0 && position <= maximum_, "a position lies between 0 and the maximum");
  }
  void Count(std::int32_t count) override { shown = count; }
  void End() override {}
  std::uint32_t TickCount() override { return ticks_ += 7; }

  std::vector<SearchHit> hits;
  std::int32_t shown = -1;

 private:
  std::int32_t maximum_ = 0;
  std::uint32_t ticks_ = 0;
};

std::u16string FullText(Kind kind, std::u16string_view item) {
  switch (kind) {
    case Kind::kConst:
      return NormalizeFullText(SplitConst(item).value);
    case Kind::kDeclare:
      return NormalizeFullText(SplitDeclare(item).tail);
    case Kind::kType:
      return NormalizeFullText(SplitType(item).members);
  }
  return {};
}

std::vector<SearchHit> Run(const SearchCriteria& criteria, const Library& library) {
  Receiver receiver;
  const auto outcome = Search(criteria, library, receiver);
  Require(outcome == SearchOutcome::kDone || receiver.hits.empty(), "no hits without a search");
  if (outcome == SearchOutcome::kDone) {
    Require(receiver.shown == std::ssize(receiver.hits), "the last count is the number of hits");
  }
  return std::move(receiver.hits);
}

template <typename Test>
void RequireHits(const SearchCriteria& criteria, const Library& library, Test test) {
  std::size_t enough = 0;
  for (const auto& lists : library.Lists()) enough += lists.names.size() > 1 ? 1 : 0;
  if (enough == 0) return;
  const auto hits = Run(criteria, library);
  auto hit = hits.begin();
  for (const auto kind : kKinds) {
    const auto& lists = library[kind];
    for (std::size_t i = 0; i < lists.names.size(); ++i) {
      if (!test(kind, lists.names[i], lists.ItemAt(i))) continue;
      Require(hit != hits.end() && hit->kind == kind && hit->name == lists.names[i],
              "the hits of a plain reading, in order");
      ++hit;
    }
  }
  Require(hit == hits.end(), "no hit beyond those of a plain reading");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  auto bytes = fuzz::Bytes(data, size);
  const auto text = fuzz::TakeText(bytes);
  const auto flags = static_cast<unsigned char>(bytes.empty() ? 0 : bytes.front());
  Library library;
  MergeItems(library, ParseSourceFile(bytes), Existing::kReplace);
  if (text.empty()) return 0;

  const auto anywhere = u"*" + LowerCase(text) + u"*";
  SearchCriteria full;
  full.fullText = text;
  RequireHits(full, library, [&](Kind kind, auto, std::u16string_view item) {
    return Matches(FullText(kind, item), anywhere);
  });
  full.fullWholeWords = true;
  const auto words = u"*[!a-z!0-9]" + LowerCase(text) + u"[!a-z!0-9]*";
  RequireHits(full, library, [&](Kind kind, auto, std::u16string_view item) {
    return Matches(FullText(kind, item), words);
  });
  SearchCriteria named;
  named.nameText = text;
  RequireHits(named, library, [&](Kind, std::u16string_view name, auto) {
    return Matches(LowerCase(name), anywhere);
  });

  SearchCriteria all = full;
  all.typeText = all.constText = all.valueText = all.argText = text;
  all.typeWhole = (flags & 1) != 0;
  all.constWhole = (flags & 2) != 0;
  all.valueWhole = (flags & 4) != 0;
  all.valueAsNumber = (flags & 8) != 0;
  all.argWhole = (flags & 16) != 0;
  Require(Run(all, library).size() >= Run(full, library).size(), "more alternatives find no less");

  const auto& names = library[Kind::kConst].names;
  const auto row = TypeAheadRow(RowsOf(names), text);
  Require(!row || LowerCase(names[*row]).starts_with(LowerCase(text)), "the row begins as typed");
  for (const auto i : FindNames(names, text)) {
    Require(Matches(LowerCase(names[i]), anywhere), "what is found matches");
  }
  return 0;
}
