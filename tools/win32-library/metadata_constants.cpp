#include "metadata_constants.h"

#include <array>
#include <charconv>
#include <limits>
#include <map>

#include "metadata_source.h"

namespace declarium::win32_library {
namespace {

// As a literal of C. What no literal of VB holds is escaped by its number.
std::string CLiteral(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (code < 0x20 || code > 0x7E) {
      quoted += '\\';
      for (const int shift : {6, 3, 0}) quoted += static_cast<char>('0' + (code >> shift) % 8);
      continue;
    }
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + "\"";
}

std::string RealText(double value) {
  std::array<char, 40> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                 std::chars_format::scientific, 16);
  return {text.data(), end.ptr};
}

// A number of 8 bytes fits when a Long is the same number, another one when a Long has its bits.
bool FitsLong(std::int64_t value, bool is_wide) {
  return value >= std::numeric_limits<std::int32_t>::min() &&
         value <= (is_wide ? std::numeric_limits<std::int32_t>::max()
                           : std::int64_t{std::numeric_limits<std::uint32_t>::max()});
}

// Flags and large numbers are read in hexadecimal.
std::string WholeText(std::int64_t value, bool is_flags) {
  const auto low = static_cast<std::uint32_t>(value);
  if (low == 0x80000000U) return "(-0x7FFFFFFF - 1)";
  const auto number = static_cast<std::int32_t>(low);
  const std::int64_t size = number < 0 ? -static_cast<std::int64_t>(number) : number;
  if (!is_flags) return std::to_string(number);
  std::array<char, 16> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), size, 16);
  return std::string(number < 0 ? "-0x" : "0x") + std::string(digits.data(), end.ptr);
}

bool Has64Bits(const std::string& type) {
  return type == "Int64" || type == "UInt64";
}

// The names to which enumerations give different values.
std::set<std::string> AmbiguousNames(const Metadata& metadata) {
  std::map<std::string, std::int64_t> values;
  std::set<std::string> ambiguous;
  for (const MetaEnum& item : metadata.enums)
    for (const auto& [name, value] : item.values)
      if (values.emplace(name, value).first->second != value) ambiguous.insert(name);
  return ambiguous;
}

class Constants {
 public:
  explicit Constants(std::set<std::string> taken) : taken_(std::move(taken)) {}

  void Add(const MetaEnum& item) {
    for (const auto& [name, value] : item.values)
      if (BeginLine(name, item.area)) AddWhole(name, value, Has64Bits(item.base), item.is_flags);
  }

  void Add(const MetaConstant& constant) {
    if (!BeginLine(constant.name, constant.area)) return;
    if (const auto* whole = std::get_if<std::int64_t>(&constant.value))
      AddWhole(constant.name, *whole, constant.is_wide, *whole > 0xFFFF);
    else if (const auto* text = std::get_if<std::string>(&constant.value))
      AddMacro(constant.name, CLiteral(*text));
    else
      AddMacro(constant.name, RealText(std::get<double>(constant.value)));
  }

  [[nodiscard]] std::string Take() { return std::move(text_); }

 private:
  // Whether the name is free.
  bool BeginLine(const std::string& name, const std::string& area) {
    if (!taken_.insert(name).second) return false;
    if (area != area_) text_ += "\n#line 1 \"" + std::string(kMetadataFolder) + area + "\"\n";
    area_ = area;
    return true;
  }

  void AddWhole(const std::string& name, std::int64_t value, bool is_wide, bool is_flags) {
    if (FitsLong(value, is_wide))
      text_ += "enum { " + name + " = " + WholeText(value, is_flags) + " };\n";
    else
      AddMacro(name, std::to_string(static_cast<std::uint64_t>(value)) + "ULL");
  }

  void AddMacro(const std::string& name, const std::string& value) {
    text_ += "#define " + name + " " + value + "\n";
  }

  std::set<std::string> taken_;
  std::string area_;  // that the lines are of
  std::string text_;
};

}  // namespace

std::string ConstantsSource(const Metadata& metadata, std::set<std::string> taken) {
  taken.merge(AmbiguousNames(metadata));
  Constants source(std::move(taken));
  for (const MetaEnum& item : metadata.enums) source.Add(item);
  for (const MetaConstant& constant : metadata.constants) source.Add(constant);
  return source.Take();
}

}  // namespace declarium::win32_library
