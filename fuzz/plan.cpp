// Any module takes what it lacks: the insertions are in order and inside the module, and where the
// module was right it stays so, loses nothing, and lacks nothing afterwards.
#include "fuzz/input.h"
#include "plan/insertion_plan.h"
#include "text/text.h"

using namespace declarium;
using fuzz::Require;

namespace {

plan::WantedItem Item(Kind kind, std::u16string_view name, std::u16string_view item) {
  return {kind, std::u16string(name), std::u16string(item), 0, {}};
}

// The text with the lines of the insertions, CR LF behind each.
std::u16string Inserted(std::u16string_view text, std::span<const plan::LineInsertion> insertions) {
  std::u16string now;
  std::uint32_t line = 1;
  std::size_t at = 0;
  for (const auto& insertion : insertions) {
    while (line < insertion.line && at < text.size()) {
      auto end = text.find_first_of(u"\r\n", at);
      end = end == text.npos ? text.size() : end + (text.substr(end).starts_with(kCrLf) ? 2 : 1);
      now += text.substr(at, end - at);
      at = end;
      ++line;
    }
    if (!now.empty() && !now.ends_with(u'\r') && !now.ends_with(u'\n')) now += kCrLf;
    now += insertion.text;
    now += kCrLf;
  }
  return now += text.substr(at);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const plan::WantedItem wanted[] = {Item(Kind::kConst, u"A",
                                          u"\x0E"
                                          u"1"),
                                     Item(Kind::kConst, u"B",
                                          u"\x0E"
                                          u"A + 1"),
                                     Item(Kind::kDeclare, u"D", u"\n\"l\" (x As T)"),
                                     Item(Kind::kType, u"T",
                                          u"\x0C"
                                          u"a(B) As Long")};
  const auto text = DecodeCodePage(fuzz::Bytes(data, size));
  const auto module = vb::ReadModule(text);
  const plan::ModuleText modules[] = {{u"M", text, &module}};
  plan::ProjectModules project(modules);
  const plan::InsertionPlan plan(project, 0, wanted, {});
  const auto insertions = plan.Insertions();
  std::uint32_t line = 0;
  for (const auto& insertion : insertions) {
    Require(insertion.line > line && insertion.line <= module.lines + 1, "places are in order");
    line = insertion.line;
  }
  const auto changed = Inserted(text, insertions);
  if (!module.errors.empty()) return 0;
  const auto now = vb::ReadModule(changed);
  Require(now.errors.empty(), "what was right stays right");
  Require(now.procedures.size() == module.procedures.size(), "no procedure is lost");
  Require(now.declarations.size() >= module.declarations.size(), "no declaration is lost");
  const plan::ModuleText again_modules[] = {{u"M", changed, &now}};
  plan::ProjectModules again_project(again_modules);
  const plan::InsertionPlan again(again_project, 0, wanted, {});
  Require(again.IsEmpty(), "the second time nothing is missing");
  return 0;
}
