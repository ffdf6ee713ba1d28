#include "bench/generated_library.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "import/merge.h"
#include "import/parser.h"
#include "source/item_text.h"
#include "text/code_page.h"
#include "text/text.h"

namespace declarium::bench {
namespace {

constexpr std::u16string_view kWords[] = {
    u"Window",  u"Device",   u"Context", u"Registry", u"Process",   u"Thread",  u"File",
    u"Memory",  u"Font",     u"Brush",   u"Region",   u"Bitmap",    u"Cursor",  u"Menu",
    u"Dialog",  u"Message",  u"Hook",    u"Timer",    u"Clipboard", u"Printer", u"Service",
    u"Event",   u"Security", u"Token",   u"Locale",   u"String",    u"Module",  u"Resource",
    u"Icon",    u"Scroll",   u"Caret",   u"Desktop",  u"Station",   u"Palette", u"Metafile",
    u"Section", u"Mapping",  u"Pipe",    u"Console",  u"Volume",    u"Handle",  u"Object",
    u"Class",   u"Style",    u"Parent",  u"Child",    u"Rect",      u"Point",
};
constexpr std::u16string_view kVerbs[] = {u"Get",  u"Set",    u"Create", u"Delete", u"Find",
                                          u"Open", u"Close",  u"Enum",   u"Query",  u"Is",
                                          u"Load", u"Update", u"Copy",   u"Draw",   u"Lock"};
constexpr std::u16string_view kPrefixes[] = {u"WM",  u"WS",  u"ERROR", u"GW",    u"SW",
                                             u"KEY", u"REG", u"FILE",  u"PAGE",  u"HWND",
                                             u"DT",  u"LB",  u"SPI",   u"EVENT", u"LOCALE"};
constexpr std::u16string_view kLibraries[] = {u"user32",       u"kernel32",    u"gdi32",
                                              u"advapi32.dll", u"shell32.dll", u"comdlg32.dll"};
constexpr std::u16string_view kTypes[] = {u"Long", u"Integer", u"String", u"Byte", u"Any", u"RECT"};

// A small generator of well-mixed numbers, the same on every machine.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : state_(seed) {}

  std::size_t Below(std::size_t limit) {
    state_ += 0x9E3779B97F4A7C15;
    auto mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
    return static_cast<std::size_t>((mixed ^ (mixed >> 31)) % limit);
  }
  template <std::size_t size>
  std::u16string_view OneOf(const std::u16string_view (&texts)[size]) {
    return texts[Below(size)];
  }

 private:
  std::uint64_t state_;
};

std::u16string Number(std::size_t value) {
  const auto digits = std::to_string(value);
  return {digits.begin(), digits.end()};
}

std::u16string Hexadecimal(std::size_t value) {
  std::u16string digits;
  do {
    digits.insert(digits.begin(), u"0123456789ABCDEF"[value % 16]);
    value /= 16;
  } while (value > 0);
  return digits;
}

std::u16string UpperCase(std::u16string_view ascii) {
  std::u16string upper(ascii);
  for (auto& unit : upper) unit = unit >= u'a' && unit <= u'z' ? unit - 32 : unit;
  return upper;
}

// Writes source text line by line.
class Writer {
 public:
  explicit Writer(std::uint64_t seed) : dice_(seed) {}

  // The declaration of item `number`, whose name holds the number and so is its own.
  void Declaration(std::size_t number) {
    const auto kind = dice_.Below(10);
    if (kind < 6) return Constant(number);
    if (kind < 9) return Procedure(number);
    Record(number);
  }

  void Comment() {
    Line(u"' ", dice_.OneOf(kVerbs), u"s the ", dice_.OneOf(kWords), u" of the ",
         dice_.OneOf(kWords), u" given");
  }

  // A procedure with its body; nothing in it is imported.
  void Body(std::size_t number) {
    Line(u"Public Sub ", dice_.OneOf(kVerbs), dice_.OneOf(kWords), Number(number),
         u"(ByVal Index As Long)");
    Line(u"    Dim lngResult As Long, strText As String");
    for (auto rest = dice_.Below(12); rest > 0; --rest) {
      const auto word = dice_.OneOf(kWords);
      Line(u"    If ", word, u"Count(Index) > ", Number(dice_.Below(500)), u" Then lngResult = ",
           dice_.OneOf(kVerbs), word, u"(Index, \"", dice_.OneOf(kWords), u"\")");
    }
    Line(u"End Sub");
    Line();
  }

  void Enumeration(std::size_t number) {
    Line(u"Public Enum ", dice_.OneOf(kWords), u"Kind", Number(number));
    for (auto rest = 2 + dice_.Below(4); rest > 0; --rest) {
      Line(u"    ", dice_.OneOf(kWords), u"Of", dice_.OneOf(kWords), u" = ", Number(rest));
    }
    Line(u"End Enum");
  }

  // Declarations of the library's rows, private as programs have them.
  void RowsOf(const Library& library) {
    for (const auto kind : {Kind::kConst, Kind::kDeclare, Kind::kType}) {
      const auto& lists = library[kind];
      for (auto rest = kind == Kind::kType ? 2U : 9U; rest > 0; --rest) {
        const auto row = dice_.Below(lists.names.size());
        const auto text = ItemText(kind, lists.names[row], lists.ItemAt(row));
        text_ += u"Private ";
        text_ += text;
        if (!text_.ends_with(u'\n')) text_ += kCrLf;
        lines_ += static_cast<std::size_t>(std::ranges::count(text, u'\n')) + 1;
      }
    }
  }

  [[nodiscard]] std::size_t lines() const { return lines_; }
  [[nodiscard]] Dice& dice() { return dice_; }
  [[nodiscard]] std::u16string TakeText() { return std::move(text_); }

 private:
  template <typename... Pieces>
  void Line(const Pieces&... pieces) {
    (text_.append(pieces), ...);
    text_ += kCrLf;
    ++lines_;
  }

  void Constant(std::size_t number) {
    auto name = std::u16string(dice_.OneOf(kPrefixes)).append(u"_");
    name += UpperCase(dice_.OneOf(kWords)) + u"_" + UpperCase(dice_.OneOf(kWords));
    name += Number(number);
    switch (dice_.Below(4)) {
      case 0:
        return Line(u"Public Const ", name, u" As Long = &H", Hexadecimal(dice_.Below(1 << 30)));
      case 1:
        return Line(u"Public Const ", name, u" = ", Number(dice_.Below(5000)));
      case 2:
        return Line(u"Const ", name, u" = (", dice_.OneOf(kPrefixes), u"_BASE + ",
                    Number(dice_.Below(900)), u")    ' ", dice_.OneOf(kWords), u" messages");
      default:
        return Line(u"Private Const ", name, u" As String = \"", dice_.OneOf(kWords), u" ",
                    dice_.OneOf(kWords), u"\"");
    }
  }

  void Procedure(std::size_t number) {
    auto name = std::u16string(dice_.OneOf(kVerbs)).append(dice_.OneOf(kWords));
    name += dice_.OneOf(kWords);
    name += Number(number);
    const bool is_function = dice_.Below(5) > 0;
    const auto head = std::u16string(u"Public Declare ") + (is_function ? u"Function " : u"Sub ") +
                      name + u" Lib \"" + std::u16string(dice_.OneOf(kLibraries)) + u"\" Alias \"" +
                      name + u"A\" ";
    auto parameters = u"(ByVal h" + std::u16string(dice_.OneOf(kWords)) + u" As Long";
    for (auto rest = dice_.Below(5); rest > 0; --rest) {
      parameters.append(u", ").append(rest % 2 == 0 ? u"ByVal lp" : u"n");
      parameters.append(dice_.OneOf(kWords)).append(u" As ").append(dice_.OneOf(kTypes));
    }
    parameters += is_function ? u") As Long" : u")";
    if (dice_.Below(4) > 0) return Line(head, parameters);
    Line(head, u"_");
    Line(u"    ", parameters);
  }

  void Record(std::size_t number) {
    Line(u"Public Type ", UpperCase(dice_.OneOf(kWords)), UpperCase(dice_.OneOf(kWords)),
         Number(number));
    for (auto rest = 2 + dice_.Below(8); rest > 0; --rest) {
      const auto word = dice_.OneOf(kWords);
      switch (dice_.Below(5)) {
        case 0:
          Line(u"    sz", word, u" As String * MAX_PATH");
          break;
        case 1:
          Line(u"    ab", word, u"(0 To ", Number(dice_.Below(64)), u") As Byte");
          break;
        default:
          Line(u"    n", word, u" As ", dice_.OneOf(kTypes));
      }
    }
    Line(u"End Type");
  }

  Dice dice_;
  std::u16string text_;
  std::size_t lines_ = 0;
};

}  // namespace

std::u16string GenerateDeclarations(std::size_t items) {
  Writer writer(items);
  for (std::size_t number = 0; number < items; ++number) {
    if (writer.dice().Below(20) == 0) writer.Comment();
    writer.Declaration(number);
  }
  return writer.TakeText();
}

std::string GenerateModule(std::size_t lines) {
  Writer writer(lines);
  for (std::size_t number = 0; writer.lines() < lines; ++number) {
    writer.Declaration(number);
    if (number % 3 == 0) writer.Body(number);
    if (number % 4 == 0) writer.Comment();
    if (number % 16 == 0) writer.Enumeration(number);
  }
  return EncodeCodePage(writer.TakeText());
}

std::string GenerateProgramModule(const Library& library, std::size_t number, std::size_t lines) {
  constexpr std::size_t kOwn = 10;
  Writer writer(number);
  writer.RowsOf(library);
  for (std::size_t i = 0; i < kOwn; ++i) writer.Declaration(number * kOwn + i);
  for (std::size_t i = 0; writer.lines() < lines; ++i) {
    writer.Comment();
    writer.Body(number * lines + i);
  }
  return EncodeCodePage(writer.TakeText());
}

Library GenerateLibrary(std::size_t items) {
  Library library;
  library.SetTitle(u"Generated library");
  const auto parsed = ParseDeclarations(ReadSource(GenerateDeclarations(items)));
  MergeItems(library, parsed, Existing::kReplace);
  return library;
}

}  // namespace declarium::bench
