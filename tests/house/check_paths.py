#!/usr/bin/env python3
"""Checks that the files and folders that the developers' documents name exist.

A name in code marks counts when it begins with a folder of the project, relative to the project or
to src/; `build/`, which no checkout has, does not.

Usage: check_paths.py PROJECT_FOLDER    prints each offence as file:line and exits with 1 if any.
"""
import pathlib
import re
import sys

DOCUMENTS = ["CONTRIBUTING.md", "README.md", "docs/architecture.md", "docs/performance.md",
             "docs/release.md", "docs/automation.md", "docs/file-format.md", "docs/win32-library.md"]
PATH = re.compile(r"^[A-Za-z0-9_.-]+(/[A-Za-z0-9_.-]+)+/?$")
LINK = re.compile(r"\]\(([^)#]+)")


def named_paths(line, folders):
    for code in re.findall(r"`([^`]+)`", line):
        for word in code.split():
            if PATH.match(word) and word.split("/")[0] in folders:
                yield word


def offences(project):
    tops = {entry.name for entry in project.iterdir() if entry.is_dir()} - {"build", "dist"}
    folders = tops | {entry.name for entry in (project / "src").iterdir() if entry.is_dir()}
    for document in DOCUMENTS:
        file = project / document
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            for path in named_paths(line, folders):
                if not ((project / path).exists() or (project / "src" / path).exists()):
                    yield f"{document}:{number}: no {path}"
            for target in LINK.findall(line):
                if "://" not in target and not (file.parent / target).exists():
                    yield f"{document}:{number}: no {target}"


def main():
    found = list(offences(pathlib.Path(sys.argv[1])))
    print("\n".join(found) or "every path that the documents name exists")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
