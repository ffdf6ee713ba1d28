"""What ./package put into dist/, and a newer version made from it."""
import os
import pathlib
import shutil
import subprocess
import zipfile

from wine_session import PROJECT, WORK

DIST = PROJECT / "dist"


def product():
    """The names and texts that every package says, as the build wrote them."""
    lines = (PROJECT / "build/package-win32/product").read_text(encoding="utf-8").splitlines()
    return {name: value.strip('"') for name, _, value in (line.partition("=") for line in lines)}


VERSION = product()["version"]
ZIP = DIST / f"declarium-{VERSION}-win32.zip"


def unpack(folder):
    """The portable folder, below `folder`."""
    with zipfile.ZipFile(ZIP) as archive:
        archive.extractall(folder)
    return folder / f"declarium-{VERSION}-win32"


def newer_installer(version, signing=None):
    """An installer that says it is `version`, with another library and one file less; and that
    library's bytes. `signing` is what packaging/windows/sign takes from the environment."""
    folder = WORK / "newer"
    shutil.rmtree(folder, ignore_errors=True)
    content = unpack(folder)
    library = content / "Win32.api"
    cli = PROJECT / "build/package-linux/src/cli/declarium-cli"
    subprocess.run([cli, "delete", library, "const:MAX_PATH"], check=True, capture_output=True)
    (content / "licences/nsis.txt").unlink()
    setup = WORK / f"declarium-{version}-setup.exe"
    subprocess.run([PROJECT / "packaging/windows/installer", content, setup, WORK / "uninstallers"],
                   check=True, stdout=subprocess.DEVNULL, env={
                       **os.environ, **product(), **(signing or {}), "version": version,
                       "SOURCE_DATE_EPOCH": "0"})
    return setup, library.read_bytes()
