"""The commands that the guide shows do what it shows, and those of README succeed.

usage: guide_commands_test.py PROJECT-FOLDER DECLARIUM-CLI [--update]

Every fenced block "console" of a language's pages is done, page by page in the guide's order, in one
folder that begins with copies of examples/ and of the bundled libraries with their
facts. A line "> COMMAND" is
done, the lines behind it are its output and messages; a line "..." stands for any number of lines.
A block "console fails" may end with an exit status other than 0, and must. --update writes the real
output into the pages, where a command's has no "...".
"""
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

BLOCK = re.compile(r"^```console( fails)?\n(.*?)^```$", re.M | re.S)
PAGES = re.compile(r"^PAGES = \[(.*?)\]", re.M | re.S)


class Folder:
    """Where a reader of one language works."""

    def __init__(self, project, program, path):
        self.program = program
        self.path = path
        self.surroundings = {**os.environ, "DECLARIUM_HISTORY": str(path / ".history")}
        for source in [*(project / "examples").glob("*.bas"), *(project / "examples").glob("*.list"),
                       *(project / "data").glob("Win32*.api"),
                       *(project / "data").glob("Win32*.facts")]:
            shutil.copy(source, path)
        for project_folder in (project / "examples").glob("*/"):
            shutil.copytree(project_folder, path / project_folder.name)

    def do(self, command):
        """The output and the exit status of a command as a reader types it."""
        words = shlex.split(command, comments=True)
        if words[0] == "type":
            text = b"".join((self.path / word).read_bytes() for word in words[1:])
            return text.decode("cp1250").replace("\r\n", "\n"), 0
        if words[0] != "declarium-cli":
            raise ValueError(f"a reader has no program {words[0]}")
        done = subprocess.run([self.program, *words[1:]], cwd=self.path, stdin=subprocess.DEVNULL,
                              env=self.surroundings, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60,
                              check=False)
        return done.stdout.decode("utf-8").replace("\r\n", "\n"), done.returncode


def commands_of(block):
    """Pairs of a command and the output shown."""
    for part in re.split(r"^> ", block, flags=re.M)[1:]:
        command, _, output = part.partition("\n")
        yield command, output


def agrees(shown, real):
    pattern = "".join("(?:.*\n)*" if line == "..." else re.escape(line) + "\n"
                      for line in shown.split("\n")[:-1])
    return re.fullmatch(pattern, real) is not None


def check_block(folder, where, match):
    """The block with its real output, and the faults found."""
    fails, block = match.groups()
    text, faults, statuses = "", [], []
    for command, shown in commands_of(block):
        real, status = folder.do(command)
        real = real if real.endswith("\n") or not real else real + "\n"
        statuses.append(status)
        if not agrees(shown, real):
            faults.append(f"{where}: {command}\nshown:\n{shown}real:\n{real}")
        text += f"> {command}\n" + (shown if "...\n" in shown else real)
    if any(statuses) != bool(fails):
        faults.append(f"{where}: exit statuses {statuses}\n{block}")
    return f"```console{fails or ''}\n{text}```", faults


def check_page(folder, path, update):
    faults = []

    def check(match):
        block, found = check_block(folder, path.relative_to(path.parents[2]), match)
        faults.extend(found)
        return block

    text = path.read_text(encoding="utf-8")
    real = BLOCK.sub(check, text)
    if update and real != text:
        path.write_text(real, encoding="utf-8")
    return faults, len(BLOCK.findall(text))


def check_language(project, program, language, update):
    pages = re.findall(r'"([^"]+)"', PAGES.search((project / "scripts" / "guide").read_text())[1])
    faults, blocks = [], 0
    with tempfile.TemporaryDirectory() as path:
        folder = Folder(project, program, Path(path))
        for page in pages:
            found, count = check_page(folder, project / f"docs/guide/{language}/{page}.md", update)
            faults += found
            blocks += count
    return faults, blocks


def check_readme(project, program):
    """The commands of README succeed, one after the other, on a module Module1.bas."""
    commands = re.findall(r"^    (declarium-cli .*)$", (project / "README.md").read_text(), re.M)
    faults = [] if commands else ["README shows no command"]
    with tempfile.TemporaryDirectory() as path:
        folder = Folder(project, program, Path(path))
        shutil.copy(folder.path / "TrayIcon.bas", folder.path / "Module1.bas")
        for command in commands:
            output, status = folder.do(command)
            if status != 0:
                faults.append(f"README: {command}\n{output}")
    return faults


def main():
    arguments = [word for word in sys.argv[1:] if word != "--update"]
    project, program = (Path(word).resolve() for word in arguments)
    assert not agrees("a\n", "b\n") and agrees("a\n...\n", "a\nb\nc\n"), "the comparison is blind"
    faults = check_readme(project, program)
    for language in ("sk", "en"):
        found, blocks = check_language(project, program, language, "--update" in sys.argv)
        faults += found
        if blocks == 0:
            faults.append(f"docs/guide/{language} shows no command")
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
