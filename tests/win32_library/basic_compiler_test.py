"""What the libraries insert compiles: LibreOffice's Basic, in VBA mode, takes every row with what it
needs, in modules of 500 rows, and 2 000 rows of a random choice with what they need, each alone.

usage: basic_compiler_test.py DECLARIUM-CLI LIBRARY...
"""
import json
import random
import re
import subprocess
import sys

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
# (Name, Open ... For Output Access, Option Base) or of its own objects. What it refuses must compile when
# these alone are called otherwise.
WORDS_IT_MINDS = ("Access", "Base", "Name", "Output", "Parent")


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
        for library in libraries:
            for first in range(0, len(library.rows), ROWS_OF_A_MODULE):
                check.look_at(library, library.rows[first:first + ROWS_OF_A_MODULE])
        for library, row in random.Random(SEED).sample(rows, CLOSURES):
            check.look_at(library, [row])
    for row in check.refused:
        print(f"refused: {row}")
    print(f"{len(rows)} rows and {CLOSURES} closures, {check.explained} modules compiled "
          "with other names only")
    return 1 if check.refused else 0


if __name__ == "__main__":
    sys.exit(main())
