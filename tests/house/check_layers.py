#!/usr/bin/env python3
"""Checks that every include below src/ points down the layer list, and that Windows headers are
included only where windows and COM are the subject.

Usage: check_layers.py SRC_FOLDER    prints each offence as file:line and exits with 1 if any.
"""
import pathlib
import re
import sys

# Top to bottom. Folders of one row do not include each other.
ROWS = [
    ["app", "cli", "vba"],
    ["host", "shell"],
    ["audit"],
    ["plan"],
    ["search", "basket"],
    ["target"],
    ["check"],
    ["needs", "facts"],
    ["source", "import"],
    ["library"],
    ["toolkit"],
    ["vb"],
    ["text", "win32"],
]
ROW_OF = {folder: row for row, folders in enumerate(ROWS) for folder in folders}

WINDOWS_HEADERS = re.compile(
    r"^(windows|windowsx|win[a-z]+|commctrl|commdlg|ole2|olectl|oleauto|objbase|ocidl|shellapi|"
    r"shlobj|shlwapi|richedit|unknwn|tlhelp32|uxtheme|dwmapi|tchar|process)\.h$", re.I)
# What rules on every system may know of win32/.
FOR_EVERY_SYSTEM = ("win32/registry.h", "win32/registry_value.h")
INCLUDE = re.compile(r'^\s*#\s*include\s+(?:"([^"]+)"|<([^>]+)>)')


def may_include_windows(path):
    return (path.parts[:2] == ("toolkit", "win32") or path.parts[0] in ("win32", "host", "app", "vba")
            or path.stem.endswith("_win32"))


def offences(src):
    for file in sorted(src.rglob("*")):
        if file.suffix not in (".h", ".cpp", ".inc"):
            continue
        path = file.relative_to(src)
        folder = path.parts[0]
        if folder not in ROW_OF:
            yield f"{path}: folder {folder} is no layer"
            continue
        is_form = "ui" in path.parts
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            if re.match(r"^\s*#\s*if.*_WIN32", line) and not may_include_windows(path):
                yield f"{path}:{number}: platforms differ by source file, not by #if"
            match = INCLUDE.match(line)
            if not match:
                continue
            quoted, system = match.groups()
            if system and WINDOWS_HEADERS.match(system) and not may_include_windows(path):
                yield f"{path}:{number}: Windows header {system}"
            if not quoted:
                continue
            parts = pathlib.PurePosixPath(quoted).parts
            target = parts[0]
            if target == "win32" and not may_include_windows(path) and (
                    quoted not in FOR_EVERY_SYSTEM):
                yield f"{path}:{number}: {quoted} is for Windows alone"
            if target not in ROW_OF:
                if target not in ("CLI", "nlohmann"):
                    yield f"{path}:{number}: {quoted} is not relative to src/"
                continue
            if target != folder and ROW_OF[target] <= ROW_OF[folder]:
                yield f"{path}:{number}: {folder} may not include {quoted}"
            if target == "toolkit" and not is_form and folder in (
                    "library", "import", "source", "needs", "check", "basket", "search", "plan", "cli"):
                yield f"{path}:{number}: rules may not see the toolkit ({quoted})"
            if "ui" in parts and not is_form and folder not in ("app", "host", "shell"):
                yield f"{path}:{number}: rules may not see forms ({quoted})"


def main():
    found = list(offences(pathlib.Path(sys.argv[1])))
    print("\n".join(found) or "every include points down")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
