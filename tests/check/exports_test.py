"""No entry that a DLL exports is called missing, by the import libraries of mingw-w64.

usage: exports_test.py PROJECT-FOLDER DECLARIUM-CLI
"""
import json
import re
import subprocess
import sys
import tempfile
from pathlib import Path

LIBRARIES = Path("/usr/i686-w64-mingw32/lib")
NM = "i686-w64-mingw32-nm"
MISSING = {"D201", "D202", "D203"}


def exports(library):
    """The names in an import library, without underscore and argument bytes."""
    listing = subprocess.run([NM, library], capture_output=True, text=True, check=False).stdout
    return sorted({match[1] for match in re.finditer(r" T _([A-Za-z]\w*)(?:@\d+)?$", listing, re.M)})


def known_dlls(project):
    dlls = set()
    for path in (project / "data").glob("*.api"):
        text = path.read_bytes().decode("cp1250", "replace")
        dlls |= {dll.lower() for dll in re.findall(r'[\x0a\x0b]"([^"]*)"', text)}
    return dlls


def declarations(project):
    number = 0
    for dll in sorted(known_dlls(project)):
        library = LIBRARIES / f"lib{dll}.a"
        if not library.exists():
            continue
        for entry in exports(library):
            yield f'Public Declare Sub Entry{number} Lib "{dll}" Alias "{entry}" ()'
            number += 1


def main():
    if not LIBRARIES.exists():
        print("needs the 32-bit mingw-w64 libraries")
        return 77
    project, program = Path(sys.argv[1]), sys.argv[2]
    lines = list(declarations(project))
    if len(lines) < 10000:
        sys.exit(f"only {len(lines)} exported names were found in {LIBRARIES}")
    against = []
    for path in sorted((project / "data").glob("*.api")):
        against += ["--against", path]
    with tempfile.TemporaryDirectory() as folder:
        module = Path(folder) / "exports.bas"
        module.write_bytes("\r\n".join(lines).encode() + b"\r\n")
        done = subprocess.run([program, "check", module, "--format", "json", *against],
                              capture_output=True, text=True, check=False)
    findings = [json.loads(line) for line in done.stdout.splitlines()[1:]]
    wrong = [finding["message"] for finding in findings if finding["rule"] in MISSING]
    print("\n".join(wrong))
    print(f"{len(lines)} exported names, {len(wrong)} called missing")
    return 1 if wrong or not findings else 0


if __name__ == "__main__":
    sys.exit(main())
