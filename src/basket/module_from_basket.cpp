#include "basket/module_from_basket.h"

#include <algorithm>
#include <span>

#include "basket/insertion_order.h"
#include "basket/insertion_text.h"
#include "target/rewrite.h"
#include "text/text.h"

namespace declarium {
namespace {

constexpr std::u16string_view kAttribute = u"Attribute VB_Name = \"";
constexpr std::u16string_view kMadeBy = u"' Made by declarium-cli generate from ";

std::u16string Hexadecimal(std::uint64_t number) {
  std::u16string text;
  for (int shift = 60; shift >= 0; shift -= 4) text += u"0123456789abcdef"[(number >> shift) & 0xF];
  return text;
}

// What a comment can hold: a line end would end it.
std::u16string OneLineOf(std::u16string_view text) {
  std::u16string line(text);
  std::ranges::replace_if(line, [](char16_t unit) { return unit < u' '; }, u' ');
  return line;
}

std::u16string HeaderOf(std::u16string_view name, const ModuleOrigin& origin) {
  std::u16string text(kAttribute);
  text.append(name).append(u"\"\r\n");
  text.append(kMadeBy) += OneLineOf(origin.list);
  text += u". Change the list, not this module.\r\n";
  for (const auto& library : origin.libraries)
    text += u"' Library: " + OneLineOf(library.title) + u" (" + OneLineOf(library.file_name) +
            u"), content " + Hexadecimal(library.hash) + u"\r\n";
  text += u"' Target: " + FromUtf8(vb::AudienceName(origin.target)) + u"\r\n";
  return text + u"Option Explicit\r\n\r\n";
}

bool IsWithinLimits(std::span<const GroupedEntry> entries, std::u16string_view text) {
  const auto declares = std::ranges::count(entries, IconOf(Kind::kDeclare), &GroupedEntry::icon);
  const auto lines = std::ranges::count(text, u'\n');
  return static_cast<std::size_t>(declares) <= kMostDeclares &&
         static_cast<std::size_t>(lines) <= kMostModuleLines;
}

// The entries in this many modules of nearly the same length; none when one is too long.
std::vector<BasketModule> PartedInto(std::size_t count, std::span<const GroupedEntry> entries,
                                     const Basket& basket, std::u16string_view name,
                                     const ModuleOrigin& origin, const KnowledgeOf64& knowledge) {
  std::vector<BasketModule> modules;
  for (std::size_t i = 0; i < count; ++i) {
    const auto begin = entries.size() * i / count;
    const auto part = entries.subspan(begin, entries.size() * (i + 1) / count - begin);
    BasketModule module{std::u16string(name), {}};
    if (i > 0) module.name += CountText(i + 1);
    const auto declarations = CreateSelect(part, basket.Record(), kPublic);
    module.text =
        HeaderOf(module.name, origin) +
        RewriteDeclarations(declarations, vb::ModuleKind::kStandard, origin.target, knowledge).text;
    if (!IsWithinLimits(part, module.text) && part.size() > 1) return {};
    modules.push_back(std::move(module));
  }
  return modules;
}

}  // namespace

std::vector<BasketModule> ModulesFromBasket(const Basket& basket, std::u16string_view name,
                                            const ModuleOrigin& origin,
                                            const KnowledgeOf64& knowledge) {
  const auto entries = InsertionOrder(basket);
  for (std::size_t count = 1;; ++count) {
    auto modules = PartedInto(count, entries, basket, name, origin, knowledge);
    if (!modules.empty()) return modules;
  }
}

bool IsModuleFromBasket(std::u16string_view text, std::u16string_view list) {
  const auto line_end = text.find(u'\n');
  if (!text.starts_with(kAttribute) || line_end == text.npos) return false;
  const auto second = text.substr(line_end + 1);
  return second.starts_with(kMadeBy) &&
         (list.empty() || second.substr(kMadeBy.size()).starts_with(OneLineOf(list) + u". "));
}

}  // namespace declarium
