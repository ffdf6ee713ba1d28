"""Whether Windows 7 can start a program: it must import no function that came later.

usage: check_imports.py OBJDUMP COMPILER PROGRAM...

What came later is what the compiler's headers declare for Windows 10 but not for Windows 7, and the
few functions below that they declare for both. A later function that is in neither is not
recognized. Of the DLLs themselves, only those of every Windows 7 may be imported.
"""
import re
import subprocess
import sys

HEADERS = ("windows.h", "commctrl.h", "commdlg.h", "ole2.h", "oleauto.h", "oleacc.h", "richedit.h",
           "shellapi.h", "shlobj.h", "shlwapi.h", "uxtheme.h", "processthreadsapi.h", "synchapi.h",
           "sysinfoapi.h", "fileapi.h", "shellscalingapi.h")
DLLS = {"advapi32", "comctl32", "comdlg32", "gdi32", "kernel32", "msvcrt", "ole32", "oleacc",
        "oleaut32", "shell32", "shlwapi", "user32", "uxtheme", "version", "ws2_32"}
DECLARED_TOO_EARLY = {"GetCurrentThreadStackLimits", "GetOverlappedResultEx",
                      "GetSystemTimePreciseAsFileTime", "PrefetchVirtualMemory",
                      "SetThreadDescription", "WaitOnAddress", "WakeByAddressAll",
                      "WakeByAddressSingle"}
WINDOWS_7, WINDOWS_10 = "0x0601", "0x0A00"


def declared(compiler, version):
    """The names that the headers declare as functions for that Windows."""
    source = "".join(f"#include <{header}>\n" for header in HEADERS)
    text = subprocess.run(
        [compiler, "-E", "-P", "-x", "c++", f"-D_WIN32_WINNT={version}", "-"],
        input=source, capture_output=True, text=True, check=True).stdout
    return set(re.findall(r"\b([A-Za-z_]\w*)\s*\(", text))


def imports(objdump, program):
    """(DLL without its ending, function) of the program's import table."""
    listing = subprocess.run([objdump, "-p", program], capture_output=True, text=True,
                             check=True).stdout
    found, dll = set(), None
    for line in listing.splitlines():
        if match := re.match(r"\s*DLL Name: (\S+)", line):
            dll = match.group(1).lower().removesuffix(".dll")
        elif not line.strip():
            dll = None
        elif dll and (match := re.match(r"\s+[0-9a-f]+\s+\d+\s+(\w+)", line)):
            found.add((dll, match.group(1)))
    return found


def main():
    objdump, compiler, *programs = sys.argv[1:]
    later = declared(compiler, WINDOWS_10) - declared(compiler, WINDOWS_7)
    # Of Windows 10 and of Windows 8: without them the headers tell no versions.
    assert {"GetDpiForSystem", "CreateFile2"} <= later, "the headers tell no versions"
    later |= DECLARED_TOO_EARLY
    faults = 0
    for program in programs:
        found = imports(objdump, program)
        assert ("kernel32", "CloseHandle") in found, f"the import table of {program} was not read"
        for dll, name in sorted(found):
            if name in later or dll not in DLLS:
                print(f"{program}: {name} of {dll}.dll is not in every Windows 7")
                faults += 1
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
