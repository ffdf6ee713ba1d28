#include "coff_object.h"

#include <charconv>
#include <cstdint>

namespace declarium::win32_library {
namespace {

constexpr std::size_t kObjectHeader = 20;
constexpr std::size_t kSectionHeader = 40;
constexpr std::size_t kSymbolEntry = 18;
constexpr std::uint32_t kMachineI386 = 0x14C;
constexpr std::uint32_t kMachineAmd64 = 0x8664;

std::uint32_t Number(std::string_view bytes, std::size_t offset, std::size_t size) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < size && offset + i < bytes.size(); ++i)
    value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[offset + i])) << (8 * i);
  return value;
}

std::string_view UpToNul(std::string_view text) {
  return text.substr(0, text.find('\0'));
}

std::string_view BytesAt(std::string_view bytes, std::size_t offset, std::size_t size) {
  return offset <= bytes.size() ? bytes.substr(offset, size) : std::string_view();
}

std::string SymbolName(std::string_view bytes, std::size_t entry, std::size_t strings) {
  if (Number(bytes, entry, 4) != 0) return std::string(UpToNul(BytesAt(bytes, entry, 8)));
  const std::size_t offset = strings + Number(bytes, entry + 4, 4);
  return std::string(UpToNul(BytesAt(bytes, offset, std::string_view::npos)));
}

}  // namespace

std::string_view CoffObject::Content(std::string_view section) const {
  for (const CoffSection& candidate : sections)
    if (candidate.name == section && !candidate.content.empty()) return candidate.content;
  return {};
}

std::optional<CoffObject> ReadObject(std::string_view bytes) {
  if (bytes.size() < kObjectHeader) return std::nullopt;
  const std::uint32_t machine = Number(bytes, 0, 2);
  if (machine != kMachineI386 && machine != kMachineAmd64) return std::nullopt;
  CoffObject object;
  const std::size_t section_count = Number(bytes, 2, 2);
  const std::size_t symbols = Number(bytes, 8, 4);
  const std::size_t symbol_count = Number(bytes, 12, 4);
  const std::size_t sections = kObjectHeader + Number(bytes, 16, 2);
  for (std::size_t i = 0; i < section_count; ++i) {
    const std::size_t header = sections + i * kSectionHeader;
    object.sections.push_back(
        {std::string(UpToNul(BytesAt(bytes, header, 8))),
         BytesAt(bytes, Number(bytes, header + 20, 4), Number(bytes, header + 16, 4))});
  }
  const std::size_t strings = symbols + symbol_count * kSymbolEntry;
  for (std::size_t i = 0; i < symbol_count; ++i) {
    const std::size_t entry = symbols + i * kSymbolEntry;
    object.symbols.push_back({SymbolName(bytes, entry, strings),
                              static_cast<std::int16_t>(Number(bytes, entry + 12, 2))});
    i += Number(bytes, entry + 17, 1);
  }
  return object;
}

bool ForEachMember(std::string_view bytes, const std::function<void(std::string_view)>& visit) {
  constexpr std::string_view kSignature = "!<arch>\n";
  constexpr std::size_t kMemberHeader = 60;
  if (!bytes.starts_with(kSignature)) return false;
  std::size_t position = kSignature.size();
  while (position + kMemberHeader <= bytes.size()) {
    const std::string_view digits = bytes.substr(position + 48, 10);
    std::size_t size = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), size);
    visit(BytesAt(bytes, position + kMemberHeader, size));
    position += kMemberHeader + size + size % 2;
  }
  return true;
}

}  // namespace declarium::win32_library
