#include "check/export_names.h"

#include <algorithm>
#include <array>
#include <utility>

namespace declarium::check {
namespace {

using DllAndName = std::pair<std::u16string_view, std::u16string_view>;

// DLLs that have many of their entries with and without the letter.
constexpr std::u16string_view kPlainDlls[] = {u"avifil32", u"esent", u"odbc32", u"tapi32",
                                              u"wininet"};
constexpr DllAndName kPlainEntries[] = {{u"advapi32", u"NotifyServiceStatusChange"},
                                        {u"comctl32", u"CreatePropertySheetPage"},
                                        {u"comctl32", u"CreateStatusWindow"},
                                        {u"comctl32", u"DrawStatusText"},
                                        {u"comctl32", u"ImageList_LoadImage"},
                                        {u"comctl32", u"PropertySheet"},
                                        {u"dbghelp", u"SymAddSourceStream"},
                                        {u"dbghelp", u"SymMatchString"},
                                        {u"gdi32", u"GetGlyphOutline"},
                                        {u"gdi32", u"GetKerningPairs"},
                                        {u"imm32", u"ImmDisableIme"},  // in both spellings
                                        {u"kernel32", u"GetBinaryType"},
                                        {u"kernel32", u"ReplaceFile"},
                                        {u"kernel32", u"lstrcat"},
                                        {u"kernel32", u"lstrcmp"},
                                        {u"kernel32", u"lstrcmpi"},
                                        {u"kernel32", u"lstrcpy"},
                                        {u"kernel32", u"lstrcpyn"},
                                        {u"kernel32", u"lstrlen"},
                                        {u"msvfw32", u"GetOpenFileNamePreview"},
                                        {u"oleaut32", u"LHashValOfNameSys"},
                                        {u"pdh", u"PdhOpenQuery"},
                                        {u"rpcrt4", u"I_RpcBindingInqDynamicEndpoint"},
                                        {u"rpcrt4", u"I_RpcNsBindingSetEntryName"},
                                        {u"setupapi", u"InstallHinfSection"},
                                        {u"setupapi", u"SetupCommitFileQueue"},
                                        {u"setupapi", u"SetupDefaultQueueCallback"},
                                        {u"setupapi", u"SetupScanFileQueue"},
                                        {u"shell32", u"DragQueryFile"},
                                        {u"shell32", u"ExtractIconEx"},
                                        {u"shell32", u"ILCreateFromPath"},
                                        {u"shell32", u"IsLFNDrive"},
                                        {u"shell32", u"SHBrowseForFolder"},
                                        {u"shell32", u"SHFileOperation"},
                                        {u"shell32", u"SHGetFileInfo"},
                                        {u"shell32", u"SHGetNewLinkInfo"},
                                        {u"shell32", u"SHGetPathFromIDList"},
                                        {u"shell32", u"ShellExecuteEx"},
                                        {u"shell32", u"Shell_GetCachedImageIndex"},
                                        {u"shell32", u"Shell_NotifyIcon"},
                                        {u"user32", u"BroadcastSystemMessage"},
                                        {u"user32", u"CallMsgFilter"},
                                        {u"user32", u"GetAltTabInfo"},
                                        {u"user32", u"GetWindowModuleFileName"},
                                        {u"user32", u"IsDialogMessage"},
                                        {u"user32", u"RealGetWindowClass"},
                                        {u"user32", u"TranslateAccelerator"},
                                        {u"winmm", u"PlaySound"}};

// DLLs that programs know each other's entries by; any of a row may share entries. What Windows has
// moved between these over the years still answers in the old place.
constexpr std::array<std::u16string_view, 9> kFamilies[] = {
    {u"kernel32", u"kernelbase", u"ntdll", u"advapi32", u"normaliz", u"version", u"psapi",
     u"sechost", u"secur32"},
    {u"shell32", u"shlwapi", u"shcore", u"shdocvw", u"shfolder", u"propsys", u"userenv",
     u"comctl32", u"ieframe"},
    {u"ole32", u"oleaut32", u"combase", u"olepro32", u"urlmon", u"propsys", u"oledlg", u"coml2",
     u"rpcrt4"},
    {u"setupapi", u"cfgmgr32", u"newdev", u"devobj"},
    {u"secur32", u"sspicli", u"schannel", u"advapi32", u"security"},
    {u"winspool.drv", u"spoolss", u"winspool", u"localspl"},
    {u"dbghelp", u"imagehlp", u"dbgcore"},
    {u"bcrypt", u"ncrypt", u"bcryptprimitives"},
    {u"user32", u"gdi32", u"usp10", u"win32u", u"gdi32full"},
    {u"mf", u"mfcore", u"mfplat", u"evr", u"mfreadwrite"},
    {u"crypt32", u"wintrust", u"cryptui", u"softpub", u"cryptnet", u"mssign32"},
    {u"ws2_32", u"wsock32", u"mswsock"},
    {u"netapi32", u"samcli", u"srvcli", u"netutils", u"wkscli", u"logoncli", u"dsrole", u"browcli"},
    {u"iphlpapi", u"dhcpcsvc", u"dhcpsapi", u"icmp", u"dhcpcsvc6"},
    {u"xinput1_4", u"xinput1_3", u"xinput9_1_0"},
    {u"dwmapi", u"dcomp"},
    {u"msvbvm60", u"msvbvm50", u"vba6", u"vb40032"},
    {u"rtm", u"mapi32"},
    {u"rpcns4", u"rpcrt4"},
    {u"ntdll", u"ntdllk"},
    {u"dsound", u"tbs"},  // each has its own GetDeviceID
    {u"winmm", u"winmmbase", u"mmsystem"},
    {u"wininet", u"urlmon", u"iertutil", u"winhttp", u"inetcpl"}};

}  // namespace

bool HasPlainEntry(std::u16string_view dll, std::u16string_view name) {
  return std::ranges::find(kPlainDlls, dll) != std::end(kPlainDlls) ||
         std::ranges::find(kPlainEntries, DllAndName(dll, name)) != std::end(kPlainEntries);
}

bool MayShareEntries(std::u16string_view first, std::u16string_view second) {
  return std::ranges::any_of(kFamilies, [&](const auto& family) {
    return std::ranges::find(family, first) != family.end() &&
           std::ranges::find(family, second) != family.end();
  });
}

}  // namespace declarium::check
