"""An i386 root with a display, in which Windows programs run under Wine in profiles of their own.

Everything that a session starts or mounts is gone with it. It needs root rights.
"""
import os
import pathlib
import re
import shutil
import subprocess

PROJECT = pathlib.Path(__file__).resolve().parents[2]
ROOT = pathlib.Path(os.environ.get("DECLARIUM_WIN32_ROOT", PROJECT / "build/win32-root"))
WORK = PROJECT / "build/package-test"
LIMIT = 120  # seconds for one program

MOUNT = """
set -e
root=$1 project=$2 work=$3
mount --rbind /dev "$root/dev"
mount -t proc proc "$root/proc"
mount --bind "$project" "$root$project"
mount --bind "$work/read-only" "$root$work/read-only"
mount -o remount,bind,ro "$root$work/read-only"
echo mounted
exec cat
"""
# The X server tells the number that it picked; Wine's programs want a window manager.
DISPLAY = """
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$1/display" >/dev/null 2>&1 &
until [ -s "$1/display" ]; do sleep 0.05; done
DISPLAY=:$(cat "$1/display") openbox >/dev/null 2>&1 &
"""


class Session:
    """The root, from the making of the object to close(). `read_only` is mounted read-only."""

    def __init__(self):
        self.read_only = WORK / "read-only"
        self.read_only.mkdir(parents=True, exist_ok=True)
        (ROOT / str(PROJECT).lstrip("/")).mkdir(parents=True, exist_ok=True)
        self._process = subprocess.Popen(
            ["unshare", "--mount", "--propagation", "private", "--pid", "--fork", "--kill-child",
             "bash", "-c", MOUNT, "bash", ROOT, PROJECT, WORK],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        if self._process.stdout.readline() != "mounted\n":
            raise RuntimeError("the i386 root cannot be used")
        pid = self._process.pid
        self._inside = pathlib.Path(f"/proc/{pid}/task/{pid}/children").read_text().split()[0]
        (WORK / "display").unlink(missing_ok=True)
        subprocess.run(self._enter({}) + ["bash", "-c", DISPLAY, "bash", str(WORK)], check=True,
                       stdout=subprocess.DEVNULL, timeout=LIMIT)
        self.display = ":" + (WORK / "display").read_text().strip()

    def close(self):
        self._process.stdin.close()
        self._process.stdout.close()
        self._process.wait(LIMIT)

    def _enter(self, environment):
        settings = {"HOME": "/root", "PATH": "/usr/sbin:/usr/bin:/sbin:/bin", **environment}
        return (["nsenter", "--target", self._inside, "--mount", "--pid", "chroot", str(ROOT),
                 "env", "-i"] + [f"{name}={value}" for name, value in settings.items()])

    def command(self, words, prefix):
        return self._enter({
            "DISPLAY": self.display, "WINEPREFIX": str(prefix), "WINEARCH": "win32",
            "WINEDEBUG": "-all", "WINEDLLOVERRIDES": "mscoree,mshtml=", "LANG": "C.UTF-8",
        }) + list(map(str, words))


class Profile:
    """A Wine prefix: what a user has on a machine of his own."""

    def __init__(self, session, name, template=None):
        self.session = session
        self.prefix = WORK / name
        shutil.rmtree(self.prefix, ignore_errors=True)
        if template:
            self._copy(template)
        else:
            self.wine("wineboot", "--init")
            self.settle()

    def _copy(self, template):
        """What Wine brings is linked, since nothing writes into those files; the rest is copied."""
        subprocess.run(["cp", "-al", template.prefix, self.prefix], check=True)
        for name in ("system.reg", "user.reg", "userdef.reg", "drive_c/users"):
            subprocess.run(["rm", "-r", self.prefix / name], check=True)
            subprocess.run(["cp", "-a", template.prefix / name, self.prefix / name], check=True)

    @property
    def drive(self):
        return self.prefix / "drive_c"

    @property
    def user(self):
        return self.drive / "users/root"

    def wine(self, *words):
        """Runs a program to its end; the finished process has returncode, stdout and stderr."""
        return subprocess.run(self.session.command(["wine", *words], self.prefix),
                              capture_output=True, timeout=LIMIT)

    def start(self, *words):
        """Starts a program whose lines are written and read as they come."""
        return subprocess.Popen(self.session.command(["wine", *words], self.prefix), text=True,
                                stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                stderr=subprocess.DEVNULL)

    def settle(self):
        """Waits until nothing runs any more and the registry is written."""
        subprocess.run(self.session.command(["wineserver", "-w"], self.prefix), check=True,
                       timeout=LIMIT)

    def end(self):
        """Ends what still runs in this profile."""
        subprocess.run(self.session.command(["wineserver", "-k", "-w"], self.prefix),
                       timeout=LIMIT)

    def files(self):
        """Every file and folder, relative to the drive, but for the system's temporary ones."""
        return {str(path.relative_to(self.drive)) for path in self.drive.rglob("*")
                if "Temp/" not in str(path)}

    def registry(self):
        """The registry as a mapping: key in lower case to value name to text, after settle()."""
        keys = {}
        for root, name in (("hkcu", "user.reg"), ("hklm", "system.reg")):
            values = {}
            for line in (self.prefix / name).read_text(errors="replace").splitlines():
                if line.startswith("["):
                    key = line[1:line.rindex("]")].replace("\\\\", "\\")
                    values = keys.setdefault(f"{root}\\{key}".lower(), {})
                elif found := re.match(r'(?:"((?:[^"\\]|\\.)*)"|@)=(.*)', line):
                    values[unescaped(found[1] or "")] = unescaped(found[2])
        return keys


def unescaped(text):
    if text.startswith('"'):
        text = text[1:-1]
    return text.replace('\\"', '"').replace("\\\\", "\\")


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")
