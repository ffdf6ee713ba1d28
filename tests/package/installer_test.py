"""The installer for one user, in empty profiles under 32-bit Wine."""
import hashlib
import json
import pathlib
import shutil
import tempfile
import unittest
import zipfile

from certificate import Certificate
from products import DIST, VERSION, newer_installer
from wine_session import PROJECT, Profile, Session, windows_path

SETUP = DIST / f"declarium-{VERSION}-win32-setup.exe"
NEWER = "99.0.1"
FOLDER = r"C:\users\root\AppData\Local\Programs\Declarium"
UNINSTALL = r"hkcu\software\microsoft\windows\currentversion\uninstall\declarium"
SETTINGS = r"hkcu\software\brindlework\declarium 3.0"
ADD_IN = r"hkcu\software\microsoft\visual basic\6.0\addins\declarium.connect"
VBA_ADD_IN = r"hkcu\software\microsoft\vba\vbe\6.0\addins\declarium.vba"
CLASS = r"software\classes\clsid\{e935511a-4c2d-4094-9a51-d7cf1373ce55}"
PROG_ID = r"software\classes\declarium.connect"
VBHOST = PROJECT / "build/win32/tests/vbhost/vbhost.exe"

# Windows always has it.
CLASSES = r"hkcu\software\classes"
# What Wine itself writes when a program runs for the first time.
OF_WINE = (r"hkcu\software\wine", r"hkcu\volatile environment", r"hklm\software\wine",
           r"hklm\system", r"hklm\hardware")


def setUpModule():
    global session, empty, installed, first_run
    session = Session()
    empty = Profile(session, "empty")
    installed = Profile(session, "installed", empty)
    first_run = installed.wine(windows_path(SETUP), "/S")
    installed.settle()


def tearDownModule():
    session.close()


def folder_of(profile):
    return profile.user / "AppData/Local/Programs/Declarium"


def shortcuts(profile):
    return {str(path.relative_to(profile.drive)) for path in profile.drive.rglob("Declarium*.lnk")}


def files_below(folder):
    return {path.relative_to(folder).as_posix() for path in folder.rglob("*") if path.is_file()}


def of_declarium(registry):
    """The keys that are the program's or name it."""
    return {key for key, values in registry.items() if not key.startswith(OF_WINE)
            and ("declarium" in key or CLASS in key
                 or any("declarium" in text.lower() for text in values.values()))}


class Installer(unittest.TestCase):
    """Each test has a copy of a profile."""

    def profile(self, template):
        profile = Profile(session, self.id().rpartition(".")[2], template)
        self.addCleanup(shutil.rmtree, profile.prefix, ignore_errors=True)
        self.addCleanup(profile.end)
        return profile

    def run_to_end(self, profile, program, *switches, status=0):
        """What the program prints."""
        done = profile.wine(program, *switches)
        output = done.stdout.decode("utf-8")
        self.assertEqual(done.returncode, status, output + done.stderr.decode(errors="replace"))
        return output

    def uninstall(self, profile, *switches):
        """Runs the uninstaller, which goes on in a copy of itself, and waits for its end."""
        self.run_to_end(profile, FOLDER + r"\Uninstall.exe", "/S", *switches)
        profile.settle()


class SilentInstall(Installer):
    def test_ends_with_status_0_and_says_where_it_is(self):
        self.assertEqual(first_run.returncode, 0)
        self.assertEqual(first_run.stdout.decode("utf-8"),
                         f"registered\r\nDeclarium {VERSION} is installed: {FOLDER}\r\n")

    def test_puts_the_portable_files_into_the_users_programs(self):
        with zipfile.ZipFile(DIST / f"declarium-{VERSION}-win32.zip") as archive:
            for name in archive.namelist():
                inside = folder_of(installed) / name.partition("/")[2]
                self.assertEqual(inside.read_bytes(), archive.read(name), name)

    def test_puts_nothing_else_there(self):
        with zipfile.ZipFile(DIST / f"declarium-{VERSION}-win32.zip") as archive:
            shipped = {name.partition("/")[2] for name in archive.namelist()}
        self.assertEqual(files_below(folder_of(installed)) - shipped,
                         {"Uninstall.exe", "Removal.exe", "installed-files.txt"})

    def test_writes_the_uninstallers_that_the_bill_of_materials_names(self):
        bill = json.loads((DIST / f"declarium-{VERSION}.spdx.json").read_text())
        for name in ("Uninstall.exe", "Removal.exe"):
            stated = next(entry["checksums"] for entry in bill["files"]
                          if entry["fileName"] == f"./uninstallers/{name}")
            data = (folder_of(installed) / name).read_bytes()
            self.assertIn(hashlib.sha256(data).hexdigest(),
                          [sum["checksumValue"] for sum in stated], name)

    def test_writes_an_entry_that_uninstalls(self):
        entry = installed.registry()[UNINSTALL]
        size = sum(path.stat().st_size for path in folder_of(installed).rglob("*") if path.is_file())
        self.assertEqual(entry["DisplayName"], "Declarium")
        self.assertEqual(entry["DisplayVersion"], VERSION)
        self.assertEqual(entry["Publisher"], "Brindlework")
        self.assertEqual(entry["DisplayIcon"], FOLDER + r"\Declarium.exe,0")
        self.assertEqual(entry["UninstallString"], f'"{FOLDER}\\Uninstall.exe"')
        self.assertEqual(entry["QuietUninstallString"], f'"{FOLDER}\\Uninstall.exe" /S')
        self.assertAlmostEqual(int(entry["EstimatedSize"].partition(":")[2], 16), size / 1024,
                               delta=4)

    def test_writes_a_shortcut(self):
        self.assertEqual(len(shortcuts(installed)), 1)

    def test_writes_nothing_for_the_machine(self):
        keys = of_declarium(installed.registry()) - of_declarium(empty.registry())
        self.assertEqual({key for key in keys if not key.startswith("hkcu\\")}, set())

    def test_without_the_ide_registers_nothing(self):
        profile = self.profile(empty)
        self.run_to_end(profile, windows_path(SETUP), "/S", "/NOIDE", "/NOMENU")
        profile.settle()
        registry = profile.registry()
        self.assertIn(UNINSTALL, registry)
        self.assertNotIn(ADD_IN, registry)
        self.assertNotIn("hkcu\\" + CLASS, registry)
        self.assertEqual(shortcuts(profile), set())


class InTheIde(Installer):
    def copy_classes_to_the_machine(self, profile):
        """Wine looks classes up for the machine only; Windows looks at the user's first."""
        registry = profile.registry()
        program = FOLDER + r"\Declarium.exe"
        server = registry[f"hkcu\\{CLASS}\\localserver32"]
        self.assertEqual(server[""], f'"{program}"')
        self.assertEqual(registry[f"hkcu\\{PROG_ID}\\clsid"][""].lower(),
                         CLASS.rpartition("\\")[2])
        for key in (CLASS, PROG_ID):
            exported = profile.prefix / "classes.reg"
            self.run_to_end(profile, "reg", "export", "hkcu\\" + key, windows_path(exported), "/y")
            text = exported.read_text(encoding="utf-16")
            exported.write_text(text.replace("[HKEY_CURRENT_USER", "[HKEY_LOCAL_MACHINE"),
                                encoding="utf-16")
            self.run_to_end(profile, "reg", "import", windows_path(exported))

    def start_ide(self, profile):
        """A function that tells the IDE a line and gives its answer."""
        ide = profile.start(windows_path(VBHOST))
        self.addCleanup(lambda: (ide.stdin.close(), ide.stdout.close(), ide.wait(30)))

        def tell(line):
            ide.stdin.write(line + "\n")
            ide.stdin.flush()
            return ide.stdout.readline().rstrip("\r\n")

        self.assertEqual(tell("interfaces on"), "ok")
        return tell


class Loading(InTheIde):
    def test_the_ide_lists_and_loads_the_add_in(self):
        profile = self.profile(installed)
        self.copy_classes_to_the_machine(profile)
        tell = self.start_ide(profile)
        self.assertEqual(tell("listed"), "ok Declarium.Connect")
        self.assertEqual(tell("connect Declarium.Connect"), "ok")
        self.assertIn("Standard|", tell("controls"))
        self.assertEqual(tell("disconnect Declarium.Connect"), "ok")
        self.assertEqual(tell("controls").strip(), "ok")
        self.assertEqual(tell("quit"), "ok")


class Upgrade(Installer):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.certificate = Certificate(cls.folder)
        cls.setup, cls.new_library = newer_installer(NEWER, cls.certificate.signing)

    def libraries_and_facts(self, profile):
        return {name for name in files_below(folder_of(profile))
                if name.endswith((".api", ".facts"))}

    def upgrade(self, profile):
        return self.run_to_end(profile, windows_path(self.setup), "/S")

    def change_library(self, profile, name="Win32"):
        library = folder_of(profile) / f"{name}.api"
        before = library.read_bytes()
        self.run_to_end(profile, FOLDER + r"\declarium-cli.exe", "rename",
                        f"{FOLDER}\\{name}.api", "Mine")
        self.assertNotEqual(library.read_bytes(), before)
        return library.read_bytes()

    def test_is_signed_with_both_uninstallers(self):
        profile = self.profile(installed)
        self.upgrade(profile)
        folder = folder_of(profile)
        for program in (self.setup, folder / "Uninstall.exe", folder / "Removal.exe"):
            self.assertTrue(self.certificate.signed(program), program)
        self.uninstall(profile)
        self.assertFalse((folder / "Declarium.exe").exists())

    def test_replaces_the_library_that_nobody_changed(self):
        profile = self.profile(installed)
        self.upgrade(profile)
        self.assertEqual((folder_of(profile) / "Win32.api").read_bytes(), self.new_library)
        self.assertEqual(self.libraries_and_facts(profile), self.libraries_and_facts(installed))
        profile.settle()
        self.assertEqual(profile.registry()[UNINSTALL]["DisplayVersion"], NEWER)

    def test_keeps_the_library_that_the_user_changed_and_puts_the_new_one_beside(self):
        profile = self.profile(installed)
        mine = self.change_library(profile)
        own = folder_of(profile) / "own.api"
        own.write_bytes(b"Own\x02")
        said = self.upgrade(profile)
        beside = f"Win32-{NEWER}.api"
        self.assertIn(f"You changed Win32.api: it stays as it is. The new one is beside it: {beside}",
                      said)
        self.assertEqual((folder_of(profile) / "Win32.api").read_bytes(), mine)
        self.assertEqual(own.read_bytes(), b"Own\x02")
        title, _, rest = (folder_of(profile) / beside).read_bytes().partition(b"\x02")
        self.assertEqual(title.decode("cp1250"), f"Win32 API {NEWER}")
        self.assertEqual(rest, self.new_library.partition(b"\x02")[2])
        self.assertEqual(self.libraries_and_facts(profile),
                         self.libraries_and_facts(installed)
                         | {"own.api", beside, f"Win32-{NEWER}.facts"})
        self.assertIn("SWP_NOSIZE", self.run_to_end(profile, FOLDER + r"\declarium-cli.exe", "facts",
                                                    f"{FOLDER}\\{beside}", "SetWindowPos"))

    def test_keeps_each_library_that_the_user_changed_for_itself(self):
        profile = self.profile(installed)
        folder = folder_of(profile)
        mine = self.change_library(profile, "Win32_Network")
        said = self.upgrade(profile)
        self.assertIn("You changed Win32_Network.api: it stays as it is. This version brings no newer "
                      "one.", said)
        self.assertNotIn("You changed Win32.api", said)
        self.assertEqual((folder / "Win32_Network.api").read_bytes(), mine)
        self.assertEqual((folder / "Win32.api").read_bytes(), self.new_library)
        self.assertEqual(self.libraries_and_facts(profile), self.libraries_and_facts(installed))

    def test_takes_the_copy_beside_and_its_facts_away_with_the_next_version(self):
        profile = self.profile(installed)
        mine = self.change_library(profile)
        self.upgrade(profile)
        self.run_to_end(profile, windows_path(SETUP), "/S")
        left = {name for name in self.libraries_and_facts(profile) if NEWER in name}
        self.assertEqual(left, set())
        self.assertEqual((folder_of(profile) / "Win32.api").read_bytes(), mine)

    def test_brings_no_second_library_when_it_has_no_newer_one(self):
        profile = self.profile(installed)
        mine = self.change_library(profile)
        said = self.run_to_end(profile, windows_path(SETUP), "/S")
        self.assertIn("This version brings no newer one.", said)
        self.assertEqual((folder_of(profile) / "Win32.api").read_bytes(), mine)
        self.assertEqual(self.libraries_and_facts(profile), self.libraries_and_facts(installed))

    def test_deletes_the_files_that_the_old_version_alone_has(self):
        profile = self.profile(installed)
        self.upgrade(profile)
        self.assertFalse((folder_of(profile) / "licences/nsis.txt").exists())

    def test_keeps_the_choice_about_the_ide_and_the_menu(self):
        profile = self.profile(empty)
        self.run_to_end(profile, windows_path(SETUP), "/S", "/NOIDE", "/NOMENU")
        self.upgrade(profile)
        profile.settle()
        self.assertNotIn(ADD_IN, profile.registry())
        self.assertEqual(shortcuts(profile), set())

    def test_keeps_the_registration_and_what_the_user_chose_in_the_ide(self):
        for behavior in (0, 1, 3):
            with self.subTest(behavior=behavior):
                profile = self.profile(installed)
                self.run_to_end(profile, "reg", "add", ADD_IN, "/v", "LoadBehavior",
                                "/t", "REG_DWORD", "/d", str(behavior), "/f")
                self.assertNotIn("unregistered", self.upgrade(profile))
                profile.settle()
                registry = profile.registry()
                self.assertEqual(registry[ADD_IN]["LoadBehavior"], f"dword:{behavior:08x}")
                self.assertEqual(registry[f"hkcu\\{CLASS}\\localserver32"]["ServerExecutable"],
                                 FOLDER + r"\Declarium.exe")

    def register_for_vba(self, profile):
        self.run_to_end(profile, FOLDER + r"\Declarium.exe", "/RegServer:vba", "/Quiet")
        profile.settle()
        self.assertIn(VBA_ADD_IN, profile.registry())

    def test_after_vba_editors_alone_registers_nothing_for_the_ide_and_mends_the_editors(self):
        profile = self.profile(empty)
        self.run_to_end(profile, windows_path(SETUP), "/S", "/NOIDE")
        self.register_for_vba(profile)
        self.run_to_end(profile, "reg", "add", VBA_ADD_IN, "/v", "LoadBehavior",
                        "/t", "REG_DWORD", "/d", "0", "/f")
        self.upgrade(profile)
        profile.settle()
        self.assertNotIn(ADD_IN, profile.registry())
        self.assertEqual(profile.registry()[VBA_ADD_IN]["LoadBehavior"], "dword:00000003")

    def test_without_the_ide_keeps_the_registration_for_vba_editors(self):
        profile = self.profile(installed)
        self.register_for_vba(profile)
        self.run_to_end(profile, windows_path(self.setup), "/S", "/NOIDE")
        profile.settle()
        self.assertNotIn(ADD_IN, profile.registry())
        self.assertIn(VBA_ADD_IN, profile.registry())

    def test_without_the_ide_takes_the_registration_back(self):
        profile = self.profile(installed)
        self.assertIn(ADD_IN, profile.registry())
        self.run_to_end(profile, windows_path(self.setup), "/S", "/NOIDE")
        profile.settle()
        self.assertNotIn(ADD_IN, profile.registry())


class WhileAnIdeHasItLoaded(InTheIde):
    def test_nothing_is_changed_or_closed(self):
        profile = self.profile(installed)
        self.copy_classes_to_the_machine(profile)
        tell = self.start_ide(profile)
        self.assertEqual(tell("connect Declarium.Connect"), "ok")
        program = folder_of(profile) / "Declarium.exe"
        before = (program.read_bytes(), files_below(folder_of(profile)))
        for words in ((windows_path(SETUP), "/S"),
                      (FOLDER + r"\Uninstall.exe", "/S"),
                      (FOLDER + r"\Uninstall.exe", "/SETTINGS", "/S"),
                      (FOLDER + r"\Uninstall.exe", "/S", "_?=" + FOLDER),
                      (FOLDER + r"\Removal.exe", "/S", "_?=" + FOLDER)):
            said = self.run_to_end(profile, *words, status=3)
            self.assertIn(FOLDER + r"\Declarium.exe is running or cannot be written.", said)
            self.assertIn("Close Declarium and every IDE", said)
        self.assertEqual((program.read_bytes(), files_below(folder_of(profile))), before)
        self.assertIn("Standard|", tell("controls"))
        self.assertEqual(tell("disconnect Declarium.Connect"), "ok")


class Removal(Installer):
    def keys_left(self, profile):
        return {key for key in set(profile.registry()) - set(empty.registry())
                if key != CLASSES and not key.startswith(OF_WINE)}

    def test_leaves_no_key_and_no_file(self):
        profile = self.profile(installed)
        self.uninstall(profile)
        self.assertEqual(self.keys_left(profile), set())
        self.assertEqual(of_declarium(profile.registry()) - of_declarium(empty.registry()), set())
        left = profile.files() - empty.files()
        self.assertEqual({name for name in left if "declarium" in name.lower()}, set())
        self.assertEqual(left, {"users/root/AppData/Local/Programs"} & left)

    def test_leaves_the_users_own_libraries_and_says_so(self):
        profile = self.profile(installed)
        folder = folder_of(profile)
        (folder / "own.api").write_bytes(b"Own\x02")
        (folder / "Win32.api").write_bytes(b"Mine\x02")
        said = self.run_to_end(profile, FOLDER + r"\Uninstall.exe", "/S", "_?=" + FOLDER)
        for name in ("own.api", "Win32.api"):
            self.assertIn(f"Left, since it is yours: {FOLDER}\\{name}\r\n", said)
        # The uninstaller cannot delete itself when it is told to run where it is.
        self.assertEqual(files_below(folder) - {"Uninstall.exe", "Removal.exe"},
                         {"own.api", "Win32.api"})
        profile.settle()
        self.assertEqual(self.keys_left(profile), set())

    def test_leaves_the_settings_unless_it_is_told_otherwise(self):
        for switches, left in ((["/S"], True), (["/S", "/SETTINGS"], False)):
            with self.subTest(switches=switches):
                profile = self.profile(installed)
                self.run_to_end(profile, "reg", "add",
                                r"HKCU\Software\Brindlework\Declarium 3.0", "/v", "Range",
                                "/t", "REG_DWORD", "/d", "1", "/f")
                said = self.run_to_end(profile, FOLDER + r"\Uninstall.exe", *switches,
                                       "_?=" + FOLDER)
                profile.settle()
                self.assertEqual(SETTINGS in profile.registry(), left)
                self.assertEqual(r"Left, your settings: HKEY_CURRENT_USER\Software\Brindlework"
                                 in said, left)

    def test_takes_the_registration_for_all_users_away(self):
        profile = self.profile(installed)
        self.run_to_end(profile, FOLDER + r"\Declarium.exe", "/RegServer:machine")
        profile.settle()
        self.assertIn("hklm\\" + CLASS, profile.registry())
        self.uninstall(profile)
        self.assertEqual(self.keys_left(profile), set())

    def test_says_how_to_remove_the_registration_for_all_users_when_it_cannot(self):
        profile = self.profile(installed)
        self.run_to_end(profile, FOLDER + r"\Declarium.exe", "/RegServer:machine")
        # A program that fails to unregister, as one without an administrator's rights.
        folder = folder_of(profile)
        shutil.copy(folder / "declarium-cli.exe", folder / "Declarium.exe")
        said = self.run_to_end(profile, FOLDER + r"\Uninstall.exe", "/S", "_?=" + FOLDER)
        self.assertIn("only an administrator can remove it", said)
        self.assertIn(r"reg delete HKLM\Software\Classes\CLSID", said)

    def test_leaves_the_registration_of_another_copy(self):
        profile = self.profile(installed)
        other = profile.drive / "other"
        other.mkdir()
        shutil.copy(folder_of(profile) / "Declarium.exe", other)
        self.run_to_end(profile, r"C:\other\Declarium.exe", "/RegServer")
        said = self.run_to_end(profile, FOLDER + r"\Uninstall.exe", "/S", "_?=" + FOLDER)
        profile.settle()
        self.assertIn(ADD_IN, profile.registry())
        self.assertIn(r"another copy of Declarium, whose registration stays: C:\other", said)


if __name__ == "__main__":
    unittest.main()
