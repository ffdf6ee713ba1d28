"""The portable folder in a place where nothing can be written, under 32-bit Wine."""
import shutil
import unittest

from products import unpack
from wine_session import PROJECT, WORK, Profile, Session, windows_path

SAVE_JOB = PROJECT / "build/win32/tests/package/save_job.exe"


def setUpModule():
    global session, profile, folder, copy
    shutil.rmtree(WORK / "read-only", ignore_errors=True)
    folder = unpack(WORK / "read-only")
    copy = unpack(WORK / "writable")
    session = Session()
    profile = Profile(session, "portable")


def tearDownModule():
    profile.end()
    session.close()


class ReadOnlyFolder(unittest.TestCase):
    def cli(self, *words):
        return profile.wine(windows_path(folder / "declarium-cli.exe"), *words)

    def test_the_command_line_reads_the_library(self):
        done = self.cli("find", windows_path(folder / "Win32.api"), "GetWindowRect", "--kind",
                        "declare")
        self.assertEqual((done.returncode, done.stdout), (0, b"declare:GetWindowRect\n"))

    def test_the_command_line_reads_the_facts_beside_the_library(self):
        done = self.cli("facts", windows_path(folder / "Win32.api"), "SetWindowPos")
        self.assertEqual(done.returncode, 0)
        self.assertIn(b"SWP_NOSIZE", done.stdout)

    def test_each_library_has_its_facts_beside_it(self):
        libraries = {path.stem for path in folder.glob("*.api")}
        self.assertEqual(libraries, {path.stem for path in (PROJECT / "data").glob("*.api")})
        self.assertEqual(libraries, {path.stem for path in folder.glob("*.facts")})

    def test_the_command_line_says_that_it_cannot_write(self):
        library = folder / "Win32.api"
        before = library.read_bytes()
        done = self.cli("rename", windows_path(library), "Other")
        self.assertEqual(done.returncode, 3)
        self.assertRegex(done.stderr.decode("utf-8"), r"Win32\.api: Access denied\b")
        self.assertEqual(library.read_bytes(), before)

    def test_the_window_says_that_it_cannot_write(self):
        library = folder / "Win32.api"
        before = library.read_bytes()
        done = profile.wine(windows_path(SAVE_JOB), windows_path(folder / "Declarium.exe"), "Other")
        self.assertEqual(done.returncode, 0, done.stderr)
        lines = done.stdout.decode("utf-8").splitlines()
        self.assertEqual(lines[0], "Chyba pri zápise do súboru.")
        self.assertRegex(lines[1], "^Čo sa nedalo zapísať, je uložené v histórii")
        self.assertEqual(library.read_bytes(), before)
        self.assertEqual([path.name for path in folder.glob("*.tmp")], [])


class WritableFolder(unittest.TestCase):
    def test_the_window_saves(self):
        done = profile.wine(windows_path(SAVE_JOB), windows_path(copy / "Declarium.exe"), "Other")
        self.assertEqual((done.returncode, done.stdout), (0, b"saved\r\n"), done.stderr)
        self.assertTrue((copy / "Win32.api").read_bytes().startswith(b"Other\x02"))


if __name__ == "__main__":
    unittest.main()
