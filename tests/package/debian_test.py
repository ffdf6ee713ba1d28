"""The Debian package in a bare root. Needs root rights."""
import gzip
import os
import pathlib
import shutil
import subprocess
import unittest

from products import DIST, VERSION
from wine_session import PROJECT

ROOT = pathlib.Path(os.environ.get("DECLARIUM_DEBIAN_ROOT", PROJECT / "build/debian-root"))
ARCHITECTURE = subprocess.run(["dpkg", "--print-architecture"], check=True, capture_output=True,
                              text=True).stdout.strip()
PACKAGE = DIST / f"declarium-cli_{VERSION}_{ARCHITECTURE}.deb"
JOB = ROOT / "root/declarium-job"


def inside(*words, folder="/root"):
    """Runs a program in the root, with the root's own environment."""
    return subprocess.run(
        ["unshare", "--mount", "--propagation", "private", "--pid", "--fork", "sh", "-c",
         'mount -t proc proc "$0/proc" && exec chroot "$0" "$@"', ROOT, "env", "-i", "-C", folder, "HOME=/root", "LANG=C.UTF-8",
         "PATH=/usr/sbin:/usr/bin:/sbin:/bin", *words], capture_output=True, text=True, timeout=120)


def files_of(root):
    return {str(path.relative_to(root)) for path in root.joinpath("usr").rglob("*")}


def setUpModule():
    global before, installation
    inside("dpkg", "--purge", "declarium-cli")  # of a run that was interrupted
    before = files_of(ROOT)
    shutil.copy(PACKAGE, ROOT / "root/declarium-cli.deb")
    installation = inside("dpkg", "--install", "/root/declarium-cli.deb")


def tearDownModule():
    (ROOT / "root/declarium-cli.deb").unlink()
    shutil.rmtree(JOB, ignore_errors=True)
    inside("dpkg", "--purge", "declarium-cli")


class Installed(unittest.TestCase):
    def run_tool(self, *words, status=0):
        done = inside("declarium-cli", *words, folder="/root/declarium-job")
        self.assertEqual(done.returncode, status, done.stderr)
        return done.stdout

    def setUp(self):
        JOB.mkdir(exist_ok=True)

    def test_needs_nothing_else(self):
        self.assertEqual(installation.returncode, 0, installation.stderr)
        self.assertEqual(inside("dpkg", "--audit").stdout, "")

    def test_says_its_version(self):
        self.assertEqual(self.run_tool("--version"), f"declarium-cli {VERSION}\n")

    def test_does_the_main_job(self):
        shutil.copy(PROJECT / "examples/WinShell.bas", JOB)
        shutil.copy(PROJECT / "examples/TrayIcon.bas", JOB)
        self.run_tool("import", "Shell.api", "WinShell.bas", "--create", "Shell")
        self.assertIn("GetWindowPlacement", self.run_tool("find", "Shell.api", "get*place*",
                                                          "--kind", "declare"))
        self.run_tool("insert", "Shell.api", "TrayIcon.bas", "GetWindowPlacement", "--closure")
        self.assertIn("Type WINDOWPLACEMENT", (JOB / "TrayIcon.bas").read_text("cp1250"))

    def test_brings_the_library_of_windows_declarations(self):
        library = "/usr/share/declarium-cli/Win32.api"
        self.assertIn("Declare Function GetWindowRect",
                      self.run_tool("show", library, "GetWindowRect"))

    def test_brings_the_libraries_by_area_with_their_facts(self):
        shipped = {path.name for path in (ROOT / "usr/share/declarium-cli").iterdir()}
        kept = {path.name for path in (PROJECT / "data").iterdir()
                if path.suffix in (".api", ".facts")}
        self.assertIn("Win32_Network.api", kept)
        self.assertEqual(shipped, kept)

    def test_brings_the_modules_that_the_guide_works_with(self):
        examples = ROOT / "usr/share/doc/declarium-cli/examples"
        for path in (PROJECT / "examples").rglob("*.*"):
            shipped = examples / path.relative_to(PROJECT / "examples")
            self.assertEqual(shipped.read_bytes(), path.read_bytes())

    def test_brings_what_is_known_of_the_declarations(self):
        library = "/usr/share/declarium-cli/Win32.api"
        self.assertIn("SWP_NOSIZE", self.run_tool("facts", library, "SetWindowPos"))

    def test_has_a_manual_page_with_every_command(self):
        page = gzip.decompress(
            (ROOT / "usr/share/man/man1/declarium-cli.1.gz").read_bytes()).decode()
        rows = self.run_tool("--help").partition("Commands:\n")[2].partition("\n\n")[0]
        commands = [row.split()[0] for row in rows.splitlines()]
        self.assertGreater(len(commands), 10)
        self.assertEqual([name for name in commands if f"\n.SS {name} " not in page], [])
        self.assertIn("\n.SH EXIT STATUS\n", page)
        self.assertNotIn("Usage:", page)

    def test_completes_commands_in_bash(self):
        done = inside("bash", "-c", """
            . /usr/share/bash-completion/completions/declarium-cli
            COMP_WORDS=(declarium-cli da) COMP_CWORD=1
            _declarium_cli
            echo "${COMPREPLY[@]}" """)
        self.assertEqual(done.stdout, "databases\n", done.stderr)

    def test_tells_its_copyright_and_its_changes(self):
        documents = ROOT / "usr/share/doc/declarium-cli"
        self.assertIn("License: Expat", (documents / "copyright").read_text())
        changes = gzip.decompress((documents / "changelog.gz").read_bytes()).decode()
        self.assertTrue(changes.startswith(f"declarium-cli ({VERSION}) "), changes[:80])


class Checked(unittest.TestCase):
    def test_lintian_finds_no_error_and_warns_of_nothing(self):
        done = subprocess.run(["lintian", "--allow-root", "--fail-on", "error,warning", PACKAGE],
                              capture_output=True, text=True)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)


class Removed(unittest.TestCase):
    def test_leaves_no_file(self):
        self.assertNotEqual(files_of(ROOT), before)
        self.assertEqual(inside("dpkg", "--purge", "declarium-cli").returncode, 0)
        self.assertEqual(files_of(ROOT) ^ before, set())


if __name__ == "__main__":
    unittest.main()
