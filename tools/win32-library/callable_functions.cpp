#include "callable_functions.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace declarium::win32_library {
namespace {

// The caller clears the stack (icu, wldap32, xolehlp), or the library is for 64-bit Windows only:
// virtual machines, containers, enclaves.
constexpr std::array<std::string_view, 11> kLibraries = {
    "icu",           "wldap32",        "xolehlp",        "vmsavedstatedumpprovider",
    "winhvplatform", "vertdll",        "winhvemulation", "vmdevicehost",
    "computecore",   "computenetwork", "computestorage"};

// Procedures that take any number of arguments, whose caller clears the stack.
constexpr std::array<std::string_view, 21> kVariadic = {"AuthzInitializeObjectAccessAuditEvent",
                                                        "AuthzInitializeObjectAccessAuditEvent2",
                                                        "AuthzReportSecurityEvent",
                                                        "NdrClientCall3",
                                                        "NdrClientCall4",
                                                        "PrintError",
                                                        "PrintMessage",
                                                        "PrintMessageFromModule",
                                                        "PxeTrace",
                                                        "RouterLogEventExA",
                                                        "RouterLogEventExW",
                                                        "SetupWriteTextLog",
                                                        "SetupWriteTextLogError",
                                                        "ShellMessageBoxA",
                                                        "ShellMessageBoxW",
                                                        "TraceMessage",
                                                        "TracePrintfA",
                                                        "TracePrintfExA",
                                                        "TracePrintfExW",
                                                        "TracePrintfW",
                                                        "WdsTransportServerTrace"};

// Scheduling by the program itself, and calls in the 64-bit form, are there on 64-bit Windows only.
bool IsWide(std::string_view name) {
  return name.starts_with("Ndr64") || name.find("Ums") != std::string_view::npos;
}

}  // namespace

bool IsCallable(const MetaFunction& function) {
  return std::ranges::find(kLibraries, function.library) == kLibraries.end() &&
         std::ranges::find(kVariadic, function.name) == kVariadic.end() && !IsWide(function.name);
}

}  // namespace declarium::win32_library
