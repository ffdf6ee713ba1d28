"""What the libraries insert compiles: LibreOffice's Basic, in VBA mode, takes every row with what it
needs, in modules of 500 rows, and 2 000 rows of a random choice with what they need, each alone; and
every form of 64 bits that is another than that of 32. The compiler does not know PtrSafe.

usage: basic_compiler_test.py DECLARIUM-CLI LIBRARY...
"""
import json
import random
import re
import subprocess
import sys
import tempfile
from pathlib import Path

try:
    from basic_compiler import BasicCompiler
except ImportError:
    print("needs libreoffice-calc-nogui and python3-uno")
    sys.exit(77)

ROWS_OF_A_MODULE = 500
CLOSURES = 2000
SEED = 20261122
PIECES = 8  # that a refused module is taken apart into

# Names that Visual Basic takes and LibreOffice does not, since they are words of its statements
# (Name, Open ... For Output Access, Option Base, On Local Error) or of its own objects. What it refuses
# must compile when these alone are called otherwise.
WORDS_IT_MINDS = ("Access", "Base", "Local", "Name", "Output", "Parent")


class Library:
    def __init__(self, program, path):
        self.program = program
        self.path = path
        listed = self._output("--json", "list", path)
        self.rows = [f"{row['kind']}:{row['name']}"
                     for row in map(json.loads, listed.splitlines()[1:])]

    def text(self, rows):
        """What is inserted for the rows and all that they need."""
        return self._output("basket", self.path, *rows, "--closure")

    def forms64(self):
        """What stands in the branches for 64 bits of the whole library, without names for lengths."""
        with tempfile.TemporaryDirectory() as folder:
            out = Path(folder) / "all.bas"
            self._output("export", self.path, str(out), "--target", "vba7-only")
            text = out.read_bytes().decode("cp1250").replace("\r\n", "\n")
        text = re.sub(r"String \* [A-Z]\w*", "String * 8", text)
        return [form.replace("Declare PtrSafe ", "Declare ", 1)
                for form in re.findall(r"^#If Win64 Then\n(.*?)\n#Else$", text, re.M | re.S)]

    def _output(self, *arguments):
        return subprocess.run([self.program, *arguments], check=True, stdout=subprocess.PIPE,
                              encoding="utf-8").stdout


def with_other_words(text):
    return re.sub(rf"\b({'|'.join(WORDS_IT_MINDS)})\b", r"\1Z", text, flags=re.I)


class Check:
    def __init__(self, compiler):
        self.compiler = compiler
        self.explained = 0
        self.refused = []

    def look_at_forms(self, library, forms):
        text = "".join(f"Private {form}\n" for form in forms if not form.startswith("'"))
        if self.compiler.accepts(text) or self.compiler.accepts(with_other_words(text)):
            return
        if len(forms) == 1:
            self.refused.append(f"{library.path} {forms[0]}")
            return
        middle = len(forms) // 2
        self.look_at_forms(library, forms[:middle])
        self.look_at_forms(library, forms[middle:])

    def look_at(self, library, rows):
        text = library.text(rows)
        if self.compiler.accepts(text):
            return
        if self.compiler.accepts(with_other_words(text)):
            self.explained += 1
        elif len(rows) == 1:
            self.refused.append(f"{library.path} {rows[0]}")
        else:
            piece = -(-len(rows) // PIECES)
            for first in range(0, len(rows), piece):
                self.look_at(library, rows[first:first + piece])


def main():
    program, *paths = sys.argv[1:]
    libraries = [Library(program, path) for path in paths]
    rows = [(library, row) for library in libraries for row in library.rows]
    with BasicCompiler() as compiler:
        if compiler.accepts("Private Const A As Long = = 1"):
            sys.exit("The compiler takes what is no Basic.")
        check = Check(compiler)
        forms_seen = 0
        for library in libraries:
            for first in range(0, len(library.rows), ROWS_OF_A_MODULE):
                check.look_at(library, library.rows[first:first + ROWS_OF_A_MODULE])
            forms = library.forms64()
            forms_seen += len(forms)
            for first in range(0, len(forms), ROWS_OF_A_MODULE):
                check.look_at_forms(library, forms[first:first + ROWS_OF_A_MODULE])
        for library, row in random.Random(SEED).sample(rows, CLOSURES):
            check.look_at(library, [row])
    for row in check.refused:
        print(f"refused: {row}")
    if forms_seen < 500:
        sys.exit(f"{forms_seen} forms of 64 bits: they were not read.")
    print(f"{len(rows)} rows, {forms_seen} forms of 64 bits and {CLOSURES} closures, {check.explained} modules compiled "
          "with other names only")
    return 1 if check.refused else 0


if __name__ == "__main__":
    sys.exit(main())
