"""What ./package put into dist/: checksums, bill of materials, versions."""
import hashlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest
import zipfile

from certificate import Certificate
from products import DIST, VERSION, ZIP, product
from wine_session import PROJECT

EXAMPLES = PROJECT / "examples"
LICENCES = {"Declarium", "CLI11", "nlohmann-json", "gcc-runtime", "mingw-w64",
            "win32-metadata", "nsis", "README"}


def sha256(data):
    return hashlib.sha256(data).hexdigest()


class Checksums(unittest.TestCase):
    def test_are_those_of_every_other_file(self):
        lines = (DIST / "SHA256SUMS").read_text().splitlines()
        stated = {name: digest for digest, name in (line.split("  ") for line in lines)}
        there = {path.name: sha256(path.read_bytes()) for path in DIST.iterdir()
                 if path.name != "SHA256SUMS"}
        self.assertEqual(stated, there)
        self.assertEqual(len(there), 4)


class BillOfMaterials(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.bill = json.loads((DIST / f"declarium-{VERSION}.spdx.json").read_text())
        cls.stated = {entry["fileName"].removeprefix("./"): entry["checksums"]
                      for entry in cls.bill["files"]}

    def digest(self, name):
        return next(sum["checksumValue"] for sum in self.stated[name]
                    if sum["algorithm"] == "SHA256")

    def test_has_the_files_of_the_zip(self):
        with zipfile.ZipFile(ZIP) as archive:
            content = {"win32/" + name.partition("/")[2]: sha256(archive.read(name))
                       for name in archive.namelist()}
        self.assertEqual({name: self.digest(name) for name in self.stated
                          if name.startswith("win32/")}, content)

    def test_has_the_files_of_the_debian_package(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run(["dpkg-deb", "-x", next(DIST.glob("*.deb")), folder], check=True)
            for name in (name for name in self.stated if name.startswith("debian/")):
                with open(folder + name.removeprefix("debian"), "rb") as file:
                    self.assertEqual(self.digest(name), sha256(file.read()), name)
            count = subprocess.run(["find", folder, "-type", "f"], check=True,
                                   capture_output=True).stdout.count(b"\n")
        self.assertEqual(count, sum(name.startswith("debian/") for name in self.stated))

    def test_has_every_published_file_and_what_the_installer_adds(self):
        published = {path.name for path in DIST.iterdir()
                     if path.suffix in (".zip", ".exe", ".deb")}
        self.assertEqual({name for name in self.stated if "/" not in name}, published)
        for name in published:
            self.assertEqual(self.digest(name), sha256((DIST / name).read_bytes()), name)
        self.assertEqual({name for name in self.stated if name.startswith("uninstallers/")},
                         {"uninstallers/Uninstall.exe", "uninstallers/Removal.exe"})

    def test_names_the_installed_version_of_every_material(self):
        for package in self.bill["packages"]:
            if package["supplier"] != "Organization: Debian":
                continue
            shown = subprocess.run(["dpkg-query", "-W", "-f=${Version}\n", package["name"]],
                                   check=True, capture_output=True, text=True).stdout
            self.assertEqual(package["versionInfo"], shown.splitlines()[0], package["name"])

    def test_names_the_version_of_the_metadata_that_the_project_keeps(self):
        note = (PROJECT / "tools/win32-library/metadata/README.md").read_text(encoding="utf-8")
        versions = [package["versionInfo"] for package in self.bill["packages"]
                    if package["name"] == "win32metadata"]
        self.assertEqual(len(versions), 1)
        self.assertIn(f"(version {versions[0]} of", note)

    def test_has_every_element_that_a_relationship_names_and_relates_every_element(self):
        elements = {"SPDXRef-DOCUMENT"} | {
            entry["SPDXID"] for kind in ("packages", "files") for entry in self.bill[kind]}
        named = {relation[end] for relation in self.bill["relationships"]
                 for end in ("spdxElementId", "relatedSpdxElement")}
        self.assertEqual(named, elements)

    def test_has_the_fields_that_spdx_2_3_requires(self):
        self.assertEqual(self.bill["spdxVersion"], "SPDX-2.3")
        self.assertEqual(self.bill["dataLicense"], "CC0-1.0")
        self.assertRegex(self.bill["creationInfo"]["created"], r"^\d{4}-\d\d-\d\dT[\d:]{8}Z$")
        for entry in self.bill["packages"] + self.bill["files"]:
            self.assertRegex(entry["SPDXID"], r"^SPDXRef-[A-Za-z0-9.-]+$")
        for entry in self.bill["files"]:
            self.assertIn("SHA1", [sum["algorithm"] for sum in entry["checksums"]])
        for entry in self.bill["packages"]:
            self.assertTrue({"name", "downloadLocation"} <= entry.keys())


class Signing(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.certificate = Certificate(cls.folder)

    def program(self):
        with zipfile.ZipFile(ZIP) as archive:
            program = self.folder / f"{self.id()}.exe"
            program.write_bytes(archive.read(next(
                name for name in archive.namelist() if name.endswith("/declarium-cli.exe"))))
        return program

    def sign(self, program, **environment):
        return subprocess.run([PROJECT / "packaging/windows/sign", program], text=True,
                              capture_output=True, env={
                                  **os.environ, "SOURCE_DATE_EPOCH": "1600000000", **environment})

    def test_leaves_a_program_alone_without_a_certificate(self):
        program = self.program()
        before = program.read_bytes()
        self.assertEqual(self.sign(program).returncode, 0)
        self.assertEqual(program.read_bytes(), before)
        self.assertFalse(self.certificate.signed(program))

    def test_signs_with_the_same_bytes_each_time(self):
        first, second = self.program(), self.folder / "second.exe"
        shutil.copy(first, second)
        for program in (first, second):
            done = self.sign(program, **self.certificate.signing)
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertTrue(self.certificate.signed(program))
        self.assertEqual(first.read_bytes(), second.read_bytes())

    def test_that_fails_is_told_and_leaves_the_program(self):
        program = self.program()
        before = program.read_bytes()
        wrong = self.folder / "wrong"
        wrong.write_text("wrong")
        done = self.sign(program, **self.certificate.signing
                         | {"DECLARIUM_CERTIFICATE_PASSWORD": str(wrong)})
        self.assertEqual(done.returncode, 1)
        self.assertIn(f"{program} was not signed: ", done.stderr)
        self.assertEqual(program.read_bytes(), before)
        self.assertEqual(list(self.folder.glob("*.signed")), [])

    def test_that_was_changed_is_seen(self):
        program = self.program()
        self.sign(program, **self.certificate.signing)
        data = bytearray(program.read_bytes())
        data[len(data) // 2] ^= 1
        program.write_bytes(data)
        self.assertFalse(self.certificate.signed(program))


class ProductInformation(unittest.TestCase):
    def test_is_that_of_the_build_in_every_windows_program(self):
        with zipfile.ZipFile(ZIP) as archive:
            programs = {name: archive.read(name) for name in archive.namelist()
                        if name.endswith((".exe", ".dll"))}
        setup = DIST / f"declarium-{VERSION}-win32-setup.exe"
        programs[setup.name] = setup.read_bytes()
        self.assertEqual(len(programs), 5)
        texts = {"FileVersion": VERSION, "ProductVersion": VERSION, "ProductName": "Declarium",
                 "CompanyName": product()["publisher"], "LegalCopyright": product()["copyright"]}
        for name, data in programs.items():
            for key, value in texts.items():
                self.assertEqual(version_text(data, key), value, f"{key} of {name}")

    def test_is_that_of_the_projects_build_description(self):
        text = (PROJECT / "CMakeLists.txt").read_text()
        self.assertEqual(re.search(r"project\(Declarium VERSION ([\d.]+)", text)[1], VERSION)

    def test_has_an_entry_in_the_changelog(self):
        self.assertIn(f"\n## [{VERSION}] - ", (PROJECT / "CHANGELOG.md").read_text())


class PortableFolder(unittest.TestCase):
    def test_has_the_licences_of_everything_in_it(self):
        with zipfile.ZipFile(ZIP) as archive:
            licences = {name.rpartition("/")[2].removesuffix(".txt"): archive.read(name)
                        for name in archive.namelist() if "/licences/" in name}
        self.assertEqual(licences.keys(), LICENCES)
        self.assertIn(b"GCC RUNTIME LIBRARY EXCEPTION", licences["gcc-runtime"])
        self.assertIn(b"ZPL", licences["mingw-w64"])
        for name in LICENCES - {"README"}:
            self.assertIn(f"{name}.txt".encode(), licences["README"])

    def test_has_the_modules_that_the_guide_works_with(self):
        with zipfile.ZipFile(ZIP) as archive:
            shipped = {name.partition("/examples/")[2]: archive.read(name)
                       for name in archive.namelist() if "/examples/" in name}
        self.assertEqual(shipped, {path.relative_to(EXAMPLES).as_posix(): path.read_bytes()
                                   for path in EXAMPLES.rglob("*") if path.is_file()})

    def test_has_programs_that_name_no_folder_of_the_build(self):
        with zipfile.ZipFile(ZIP) as archive:
            for name in archive.namelist():
                if name.endswith((".exe", ".dll")):
                    self.assertNotIn(str(PROJECT).encode(), archive.read(name), name)


def version_text(data, key):
    """The text of that name in a file's version resource."""
    found = re.search((key + "\0").encode("utf-16-le") + rb"(?:\0\0)*((?:[^\0].|.[^\0])+?)\0\0",
                      data, re.S)
    return found[1].decode("utf-16-le") if found else None


if __name__ == "__main__":
    unittest.main()
