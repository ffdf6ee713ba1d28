#include "familiar_names.h"

#include <array>
#include <set>

#include "vb/name.h"

namespace declarium::win32_library {
namespace {

constexpr std::array<FamiliarDeclare, 4> kFamiliar = {{
    {"CopyMemory", "RtlMoveMemory", "(Destination As Any, Source As Any, ByVal Length As Long)",
     "(Destination As Any, Source As Any, ByVal Length As LongPtr)", "winbase.h", false},
    {"MoveMemory", "RtlMoveMemory", "(Destination As Any, Source As Any, ByVal Length As Long)",
     "(Destination As Any, Source As Any, ByVal Length As LongPtr)", "winbase.h", false},
    {"FillMemory", "RtlFillMemory",
     "(Destination As Any, ByVal Length As Long, ByVal Fill As Byte)",
     "(Destination As Any, ByVal Length As LongPtr, ByVal Fill As Byte)", "winbase.h", false},
    {"ZeroMemory", "RtlZeroMemory", "(Destination As Any, ByVal Length As Long)",
     "(Destination As Any, ByVal Length As LongPtr)", "winbase.h", false},
}};

// The procedures, statements and methods that every VB module can call by these names.
bool BelongsToTheLanguage(std::string_view name) {
  static const std::set<std::string, std::less<>> names = {
      "appactivate", "asc",           "atn",          "beep",        "callbyname",  "chdir",
      "chdrive",     "choose",        "chr",          "command",     "cos",         "createobject",
      "curdir",      "dateadd",       "datediff",     "datepart",    "dateserial",  "datevalue",
      "day",         "deletesetting", "dir",          "environ",     "eof",         "exp",
      "fileattr",    "filecopy",      "filedatetime", "filelen",     "filter",      "format",
      "freefile",    "getattr",       "getobject",    "getsetting",  "hex",         "hour",
      "iif",         "inputbox",      "instr",        "instrrev",    "isarray",     "isdate",
      "isempty",     "isnull",        "isnumeric",    "join",        "kill",        "lcase",
      "left",        "load",          "loadpicture",  "loc",         "lof",         "log",
      "ltrim",       "minute",        "mkdir",        "month",       "move",        "msgbox",
      "name",        "now",           "oct",          "point",       "qbcolor",     "randomize",
      "refresh",     "replace",       "reset",        "rgb",         "right",       "rmdir",
      "rnd",         "round",         "rtrim",        "savepicture", "savesetting", "second",
      "sendkeys",    "setattr",       "setfocus",     "shell",       "sin",         "space",
      "split",       "sqr",           "str",          "strcomp",     "strconv",     "strreverse",
      "switch",      "tan",           "time",         "timer",       "trim",        "typename",
      "ucase",       "unload",        "val",          "vartype",     "weekday",     "width",
      "year"};
  return names.contains(vb::Lower(name));
}

}  // namespace

std::span<const FamiliarDeclare> FamiliarDeclares() {
  return kFamiliar;
}

std::string ProcedureName(std::string_view name) {
  if (vb::IsReservedWord(name) || BelongsToTheLanguage(name)) return std::string(name) + "API";
  return vb::LegalName(name);
}

}  // namespace declarium::win32_library
