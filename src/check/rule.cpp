#include "check/rule.h"

#include <algorithm>

#include "text/text.h"

namespace declarium::check {
namespace {

constexpr auto kError = Level::kError;
constexpr auto kWarning = Level::kWarning;
constexpr auto kNote = Level::kNote;

constexpr Group kGroups[] = {{1, "Does not compile"}, {2, "Wrong entry"}, {3, "Wrong frame"},
                             {4, "Wrong value"},      {5, "64 bits"},     {6, "Clean-up"}};

constexpr Rule kRules[] = {
    {RuleId::kSyntax, "D101", texts::kD101, kError, "No statement of the language",
     "Visual Basic refuses the line when the module is compiled.", "Private Const LIMIT As Long",
     "Private Const LIMIT As Long = 5"},
    {RuleId::kDuplicateName, "D102", texts::kD102, kError, "A name twice in one scope",
     "The module does not compile: Visual Basic finds the name ambiguous.",
     "Private Const LIMIT = 1\nPrivate Const Limit = 2",
     "Private Const LIMIT = 1\nPrivate Const OTHER = 2"},
    {RuleId::kUnknownType, "D103", texts::kD103, kError, "A type that nothing declares",
     "The project does not compile: Visual Basic knows no such type. A note where the type may be "
     "declared elsewhere.",
     "Declare Sub Fill Lib \"mine\" (r As CELLS)",
     "Type CELLS\n  Count As Long\nEnd Type\nDeclare Sub Fill Lib \"mine\" (r As CELLS)"},
    {RuleId::kPublicInObjectModule, "D104", texts::kD104, kError,
     "A public declaration in a class or a form",
     "The module does not compile: what an object module declares is Private.",
     "Public Declare Sub Sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)",
     "Private Declare Sub Sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)"},
    {RuleId::kForwardRecord, "D105", texts::kD105, kError, "A record inside a record above it",
     "The module does not compile: a record must stand above those that hold it.",
     "Type OUTER\n  Part As INNER\nEnd Type\nType INNER\n  Size As Long\nEnd Type",
     "Type INNER\n  Size As Long\nEnd Type\nType OUTER\n  Part As INNER\nEnd Type"},
    {RuleId::kTooLong, "D106", texts::kD106, kError, "Longer than the language takes",
     "Visual Basic cuts or refuses lines of more than 1023 characters, statements of more than 25 "
     "lines, and more than 60 parameters.",
     "Declare Sub Fill Lib \"mine\" _\n(ByVal A1 As Long, _\nByVal A2 As Long, _\nByVal A3 As "
     "Long, "
     "_\nByVal A4 As Long, _\nByVal A5 As Long, _\nByVal A6 As Long, _\nByVal A7 As Long, _\nByVal "
     "A8 "
     "As Long, _\nByVal A9 As Long, _\nByVal B1 As Long, _\nByVal B2 As Long, _\nByVal B3 As Long, "
     "_\nByVal B4 As Long, _\nByVal B5 As Long, _\nByVal B6 As Long, _\nByVal B7 As Long, _\nByVal "
     "B8 "
     "As Long, _\nByVal B9 As Long, _\nByVal C1 As Long, _\nByVal C2 As Long, _\nByVal C3 As Long, "
     "_\nByVal C4 As Long, _\nByVal C5 As Long, _\nByVal C6 As Long, _\nByVal C7 As Long)",
     "Declare Sub Fill Lib \"mine\" (ByVal A1 As Long, ByVal A2 As Long, ByVal A3 As Long, _\n  "
     "ByVal A4 As Long, ByVal A5 As Long, ByVal A6 As Long, ByVal A7 As Long, ByVal A8 As Long, "
     "_\n  "
     "ByVal A9 As Long, ByVal B1 As Long, ByVal B2 As Long, ByVal B3 As Long, ByVal B4 As Long, "
     "_\n  "
     "ByVal B5 As Long, ByVal B6 As Long, ByVal B7 As Long, ByVal B8 As Long, ByVal B9 As Long, "
     "_\n  "
     "ByVal C1 As Long, ByVal C2 As Long, ByVal C3 As Long, ByVal C4 As Long, ByVal C5 As Long, "
     "_\n  "
     "ByVal C6 As Long, ByVal C7 As Long)"},
    {RuleId::kParameterNamedLikeProcedure, "D107", texts::kD107, kError,
     "A parameter named like its procedure",
     "The module does not compile: the name is declared twice in the procedure.",
     "Declare Sub Fill Lib \"mine\" (ByVal Fill As Long)",
     "Declare Sub Fill Lib \"mine\" (ByVal Value As Long)"},
    {RuleId::kRecordByValue, "D108", texts::kD108, kError, "A record by value",
     "The module does not compile: a record is passed by reference, or as its members.",
     "Type CELLS\n  Count As Long\nEnd Type\nDeclare Sub Fill Lib \"mine\" (ByVal r As CELLS)",
     "Type CELLS\n  Count As Long\nEnd Type\nDeclare Sub Fill Lib \"mine\" (r As CELLS)"},
    {RuleId::kValueDoesNotFit, "D109", texts::kD109, kError,
     "A value that the constant cannot have",
     "The module does not compile: the value overflows its type, or needs itself.",
     "Const LIMIT As Integer = 40000", "Const LIMIT As Long = 40000"},
    {RuleId::kNotInVisualBasic6, "D110", texts::kD110, kError,
     "A word that Visual Basic 6.0 does not have",
     "Visual Basic 6.0 reads the line and refuses PtrSafe, LongPtr and LongLong; #If VBA7 keeps "
     "it away.",
     "Declare PtrSafe Sub Sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)",
     "Declare Sub Sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)"},
    {RuleId::kHiddenTypeInPublic, "D111", texts::kD111, kError,
     "A type in public that others cannot see",
     "The module does not compile: public procedures and records take no private types, and those "
     "of classes and forms no records of standard modules.",
     "Private Type CELLS\n  Count As Long\nEnd Type\nPublic Sub Fill(r As CELLS)\nEnd Sub",
     "Public Type CELLS\n  Count As Long\nEnd Type\nPublic Sub Fill(r As CELLS)\nEnd Sub"},
    {RuleId::kAmbiguousName, "D112", texts::kD112, kError, "A name that two modules make public",
     "The project does not compile where a third module uses the name: Visual Basic finds it "
     "ambiguous.",
     "' Module1\nPublic Const LIMIT = 1\n' Module2\nPublic Const LIMIT = 2\n' Module3\nSub "
     "Fill()\n  Debug.Print LIMIT\nEnd Sub",
     "' Module1\nPublic Const LIMIT = 1\n' Module2\nPublic Const LIMIT = 2\n' Module3\nSub "
     "Fill()\n  Debug.Print Module1.LIMIT\nEnd Sub"},

    {RuleId::kSuffixMissing, "D201", texts::kD201, kError,
     "The A or W at the end of the entry is missing",
     "The call fails with error 453: the DLL has no such entry.",
     "Declare Function FindWindow Lib \"user32\" (ByVal lpClassName As String, ByVal lpWindowName "
     "As String) As Long",
     "Declare Function FindWindow Lib \"user32\" Alias \"FindWindowA\" (ByVal lpClassName As "
     "String, ByVal lpWindowName As String) As Long"},
    {RuleId::kLettersDiffer, "D202", texts::kD202, kError,
     "Upper and lower case of the entry differ",
     "The call fails with error 453: a DLL tells upper from lower case.",
     "Declare Sub sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)",
     "Declare Sub sleep Lib \"kernel32\" Alias \"Sleep\" (ByVal dwMilliseconds As Long)"},
    {RuleId::kWrongLibrary, "D203", texts::kD203, kError, "Another DLL has the entry",
     "The call fails with error 453: this DLL has no such entry.",
     "Declare Function GetActiveWindow Lib \"kernel32\" () As Long",
     "Declare Function GetActiveWindow Lib \"user32\" () As Long"},
    {RuleId::kWideEntryWithString, "D204", texts::kD204, kWarning,
     "As String for an entry of wide text",
     "Visual Basic hands ANSI text to a procedure that reads UTF-16: it sees other characters.",
     "Declare Function SetWindowTextW Lib \"user32\" (ByVal hWnd As Long, ByVal lpString As "
     "String) As Long",
     "Declare Function SetWindowTextW Lib \"user32\" (ByVal hWnd As Long, ByVal lpString As Long) "
     "As Long"},
    {RuleId::kNearEntry, "D205", texts::kD205, kNote, "An entry that the library does not know",
     "If the DLL has no such entry, the call fails with error 453. One of nearly the same name is "
     "known.",
     "Declare Function GetActiveWindw Lib \"user32\" () As Long",
     "Declare Function GetActiveWindow Lib \"user32\" () As Long"},
    {RuleId::kNotInThisWindows, "D206", texts::kD206, kNote,
     "Not in the oldest Windows that must do",
     "There the call fails with error 453, or the DLL is missing (error 53).",
     "Declare Function GetTickCount64 Lib \"kernel32\" () As Currency",
     "Declare Function GetTickCount Lib \"kernel32\" () As Long"},

    {RuleId::kArgumentBytes, "D301", texts::kD301, kError,
     "The arguments are not as long as the procedure's",
     "The stack is off after the call: error 49 in the IDE, a crash or lost variables in the "
     "program.",
     "Declare Sub Sleep Lib \"kernel32\" ()",
     "Declare Sub Sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)"},
    {RuleId::kByValMissing, "D302", texts::kD302, kError, "ByVal is missing",
     "The procedure gets the address of the variable in place of its value.",
     "Declare Sub Sleep Lib \"kernel32\" (dwMilliseconds As Long)",
     "Declare Sub Sleep Lib \"kernel32\" (ByVal dwMilliseconds As Long)"},
    {RuleId::kByValForResult, "D303", texts::kD303, kNote,
     "ByVal for a number that the procedure writes",
     "The procedure takes the value for an address and writes there, unless it is VarPtr of a "
     "variable.",
     "Declare Function GetExitCodeThread Lib \"kernel32\" (ByVal hThread As Long, ByVal lpExitCode "
     "As Long) As Long",
     "Declare Function GetExitCodeThread Lib \"kernel32\" (ByVal hThread As Long, lpExitCode As "
     "Long) As Long"},
    {RuleId::kTextByReference, "D304", texts::kD304, kError, "Text by reference",
     "The procedure gets the address of an address, and writes over it.",
     "Declare Function SetWindowText Lib \"user32\" Alias \"SetWindowTextA\" (ByVal hWnd As Long, "
     "lpString As String) As Long",
     "Declare Function SetWindowText Lib \"user32\" Alias \"SetWindowTextA\" (ByVal hWnd As Long, "
     "ByVal lpString As String) As Long"},
    {RuleId::kResultKind, "D305", texts::kD305, kError, "A result of another kind",
     "Visual Basic takes the result from a place where the procedure does not put it, or frees "
     "memory that is not its own.",
     "Declare Function GetCommandLine Lib \"kernel32\" Alias \"GetCommandLineA\" () As String",
     "Declare Function GetCommandLine Lib \"kernel32\" Alias \"GetCommandLineA\" () As Long"},
    {RuleId::kShortBoolean, "D306", texts::kD306, kWarning,
     "Boolean or Integer where 32 bits are passed",
     "Half of the value is lost, and Not of the true that comes back (1) is true too.",
     "Declare Function IsWindow Lib \"user32\" (ByVal hWnd As Long) As Boolean",
     "Declare Function IsWindow Lib \"user32\" (ByVal hWnd As Long) As Long"},
    {RuleId::kNarrowVariable, "D307", texts::kD307, kError,
     "A variable shorter than what is written to it",
     "The procedure writes beyond the variable, over its neighbors.",
     "Declare Function GetExitCodeThread Lib \"kernel32\" (ByVal hThread As Long, lpExitCode As "
     "Integer) As Long",
     "Declare Function GetExitCodeThread Lib \"kernel32\" (ByVal hThread As Long, lpExitCode As "
     "Long) As Long"},
    {RuleId::kAnyByValue, "D308", texts::kD308, kWarning, "As Any by value",
     "Every call decides by its own argument how many bytes are passed: a Double crashes, an "
     "Integer is half a value.",
     "Declare Sub Fill Lib \"mine\" (ByVal Data As Any)",
     "Declare Sub Fill Lib \"mine\" (Data As "
     "Any)"},
    {RuleId::kShortHandle, "D309", texts::kD309, kWarning, "16 bits for a handle or an address",
     "Handles and addresses do not fit into 16 bits: error 6 (overflow) when one is passed.",
     "Declare Function IsWindow Lib \"user32\" (ByVal hWnd As Integer) As Long",
     "Declare Function IsWindow Lib \"user32\" (ByVal hWnd As Long) As Long"},

    {RuleId::kConstantDiffers, "D401", texts::kD401, kNote,
     "A constant with another value than the library's",
     "If the name means the same, the call gets another request than it should.",
     "Const WM_CLOSE As Long = &H11", "Const WM_CLOSE As Long = &H10"},
    {RuleId::kNegativeHexadecimal, "D402", texts::kD402, kWarning,
     "A hexadecimal number that is negative",
     "&H8000 to &HFFFF without & behind are 16-bit numbers: &HFFFF is -1, not 65535.",
     "Const MASK As Long = &HFFFF", "Const MASK As Long = &HFFFF&"},
    {RuleId::kRecordDiffers, "D403", texts::kD403, kNote,
     "A record with other places than the library's",
     "If the name means the same, procedures read and write its members at the wrong places.",
     "Type FILETIME\n  dwHighDateTime As Long\n  dwLowDateTime As Long\nEnd Type",
     "Type FILETIME\n  dwLowDateTime As Long\n  dwHighDateTime As Long\nEnd Type"},
    {RuleId::kRecordTooSmall, "D404", texts::kD404, kError,
     "A record shorter than what is written to it",
     "The procedure writes beyond the record, over its neighbors.",
     "Type PT\n  x As Integer\n  y As Integer\nEnd Type\nDeclare Function GetCursorPos Lib "
     "\"user32\" (p As PT) As Long",
     "Type PT\n  x As Long\n  y As Long\nEnd Type\nDeclare Function GetCursorPos Lib \"user32\" (p "
     "As PT) As Long"},
    {RuleId::kLenOfPaddedRecord, "D405", texts::kD405, kWarning, "Len where LenB is meant",
     "Len leaves out the bytes between members: the procedure refuses a record of that size.",
     "Type CELLS\n  cbSize As Long\n  Kind As Byte\n  Count As Long\nEnd Type\nSub Fill()\n  Dim c "
     "As CELLS\n  c.cbSize = Len(c)\nEnd Sub",
     "Type CELLS\n  cbSize As Long\n  Kind As Byte\n  Count As Long\nEnd Type\nSub Fill()\n  Dim c "
     "As CELLS\n  c.cbSize = LenB(c)\nEnd Sub"},

    {RuleId::kPtrSafeMissing, "D501", texts::kD501, kError, "PtrSafe is missing",
     "64-bit Office does not compile the module.",
     "Declare Function GetTickCount Lib \"kernel32\" () As Long",
     "Declare PtrSafe Function GetTickCount Lib \"kernel32\" () As Long"},
    {RuleId::kLongForAddress, "D502", texts::kD502, kWarning, "Long for a handle or an address",
     "In 64 bits the upper half is lost: the procedure gets another address or handle.",
     "Declare PtrSafe Function IsWindow Lib \"user32\" (ByVal hWnd As Long) As Long",
     "Declare PtrSafe Function IsWindow Lib \"user32\" (ByVal hWnd As LongPtr) As Long"},
    {RuleId::kLongPtrForNumber, "D503", texts::kD503, kWarning, "LongPtr for a number of 32 bits",
     "In 64 bits the procedure reads or writes half of the variable; the other half stays as it "
     "was.",
     "Declare PtrSafe Function GetExitCodeThread Lib \"kernel32\" (ByVal hThread As LongPtr, "
     "lpExitCode As LongPtr) As Long",
     "Declare PtrSafe Function GetExitCodeThread Lib \"kernel32\" (ByVal hThread As LongPtr, "
     "lpExitCode As Long) As Long"},
    {RuleId::kAddressIntoLong, "D504", texts::kD504, kWarning, "An address in a Long",
     "In 64 bits an address does not fit: error 6 (overflow), or error 13 when it is compiled.",
     "Sub Look(Text As String)\n  Dim p As Long\n  p = StrPtr(Text)\nEnd Sub",
     "Sub Look(Text As String)\n  Dim p As LongPtr\n  p = StrPtr(Text)\nEnd Sub"},
    {RuleId::kSizeAsNumber, "D505", texts::kD505, kWarning, "The size of a record as a number",
     "The record has another size in 64 bits, and the procedure refuses it.",
     "Type CELLS\n  cbSize As Long\n  Owner As LongPtr\nEnd Type\nSub Fill()\n  Dim c As CELLS\n  "
     "c.cbSize = 8\nEnd Sub",
     "Type CELLS\n  cbSize As Long\n  Owner As LongPtr\nEnd Type\nSub Fill()\n  Dim c As CELLS\n  "
     "c.cbSize = LenB(c)\nEnd Sub"},
    {RuleId::kLongMemberForAddress, "D506", texts::kD506, kNote,
     "A Long member for a handle or an address",
     "If the name means the same, the members behind it stand at the wrong places in 64 bits.",
     "Type PROCESS_INFORMATION\n  hProcess As Long\n  hThread As Long\n  dwProcessId As Long\n  "
     "dwThreadId As Long\nEnd Type",
     "Type PROCESS_INFORMATION\n  hProcess As LongPtr\n  hThread As LongPtr\n  dwProcessId As "
     "Long\n  dwThreadId As Long\nEnd Type"},

    {RuleId::kUnused, "D601", texts::kD601, kNote, "Declared and not used",
     "Nothing happens; the declaration can go.", "Private Const LIMIT = 5",
     "Private Const LIMIT = 5\nSub Fill()\n  Debug.Print LIMIT\nEnd Sub"},
    {RuleId::kDeclaredTwice, "D602", texts::kD602, kNote, "Declared in several modules",
     "Nothing happens; the declaration could be made Public once.",
     "' Module1\nPrivate Const LIMIT = 5\nSub Fill()\n  Debug.Print LIMIT\nEnd Sub\n' "
     "Module2\nPrivate "
     "Const LIMIT = 5\nSub Look()\n  Debug.Print LIMIT\nEnd Sub",
     "' Module1\nPublic Const LIMIT = 5\nSub Fill()\n  Debug.Print LIMIT\nEnd Sub\n' Module2\nSub "
     "Look()\n  Debug.Print LIMIT\nEnd Sub"},
    {RuleId::kOtherName, "D603", texts::kD603, kNote,
     "Declared as in the library under another name",
     "Nothing happens; one procedure has two names.",
     "Declare Function TicksNow Lib \"kernel32\" Alias \"GetTickCount\" () As Long",
     "Declare Function GetTickCount Lib \"kernel32\" () As Long"},
    {RuleId::kDeclaredDifferently, "D604", texts::kD604, kWarning,
     "Declared differently in several modules",
     "The same name means one thing here and another there. declarium-cli audit finds it.",
     "' Module1\nPublic Const LIMIT = 5\nSub Fill()\n  Debug.Print LIMIT\nEnd Sub\n' "
     "Module2\nPrivate "
     "Const LIMIT = 6\nSub Look()\n  Debug.Print LIMIT\nEnd Sub",
     "' Module1\nPublic Const LIMIT = 5\nSub Fill()\n  Debug.Print LIMIT\nEnd Sub\n' "
     "Module2\nPrivate "
     "Const OWN_LIMIT = 6\nSub Look()\n  Debug.Print OWN_LIMIT\nEnd Sub"},
};

}  // namespace

std::string_view LevelText(Level level) {
  switch (level) {
    case Level::kNote:
      return "note";
    case Level::kWarning:
      return "warning";
    case Level::kError:
      return "error";
  }
  return {};
}

std::span<const Rule> Rules() {
  return kRules;
}

const Rule& RuleOf(RuleId id) {
  return *std::ranges::lower_bound(kRules, id, {}, &Rule::id);
}

const Rule* FindRule(std::u16string_view number) {
  const auto* const found = std::ranges::find_if(kRules, [number](const Rule& rule) {
    return EqualIgnoringCase(FromUtf8(rule.number), number);
  });
  return found == std::end(kRules) ? nullptr : found;
}

std::span<const Group> Groups() {
  return kGroups;
}

}  // namespace declarium::check
