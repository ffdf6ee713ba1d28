"""LibreOffice's Basic compiler, in VBA mode.

    with BasicCompiler() as compiler:
        compiler.accepts("Private Const A As Long = 1")

Needs libreoffice-calc-nogui and python3-uno, and the Python that Debian installs.
"""
import os
import shutil
import subprocess
import tempfile
import time

import uno
from com.sun.star.beans import PropertyValue
from com.sun.star.connection import NoConnectException

SECONDS_TO_START = 120
PROOF = 4711  # what a module that was compiled answers


class BasicCompiler:
    def __enter__(self):
        self.profile = tempfile.mkdtemp()
        pipe = f"declarium-{os.getpid()}"
        self.office = subprocess.Popen(
            ["soffice", "--headless", "--norestore", "--nologo", "--nodefault",
             f"-env:UserInstallation=file://{self.profile}", f"--accept=pipe,name={pipe};urp;"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            self.desktop = self._connect(pipe)
            hidden = PropertyValue()
            hidden.Name, hidden.Value = "Hidden", True
            execute = PropertyValue()
            execute.Name, execute.Value = "MacroExecutionMode", 4  # always, without asking
            self.document = self.desktop.loadComponentFromURL("private:factory/scalc", "_blank", 0,
                                                              (hidden, execute))
            self.document.BasicLibraries.VBACompatibilityMode = True
            self.modules = self.document.BasicLibraries.getByName("Standard")
        except BaseException:
            self._end()
            raise
        return self

    def __exit__(self, *_):
        try:
            self.document.close(True)
            self.desktop.terminate()
        finally:
            self._end()

    def _connect(self, pipe):
        local = uno.getComponentContext()
        resolver = local.ServiceManager.createInstanceWithContext(
            "com.sun.star.bridge.UnoUrlResolver", local)
        give_up = time.monotonic() + SECONDS_TO_START
        while True:
            try:
                context = resolver.resolve(f"uno:pipe,name={pipe};urp;StarOffice.ComponentContext")
                return context.ServiceManager.createInstanceWithContext(
                    "com.sun.star.frame.Desktop", context)
            except NoConnectException:
                if self.office.poll() not in (None, 0) or time.monotonic() > give_up:
                    raise
                time.sleep(0.1)

    def _end(self):
        try:
            self.office.wait(20)
        except subprocess.TimeoutExpired:
            self.office.kill()
            self.office.wait()
        shutil.rmtree(self.profile, ignore_errors=True)

    def accepts(self, declarations):
        """Whether a module of these declarations compiles. The compiler does not say what it minds:
        without a window it only leaves the module's procedures undone."""
        source = (f"Option VBASupport 1\n{declarations}\nFunction Probe() As Long\n"
                  f"Probe = {PROOF}\nEnd Function\n")
        if self.modules.hasByName("Module1"):
            self.modules.replaceByName("Module1", source)
        else:
            self.modules.insertByName("Module1", source)
        script = self.document.getScriptProvider().getScript(
            "vnd.sun.star.script:Standard.Module1.Probe?language=Basic&location=document")
        return script.invoke((), (), ())[0] == PROOF
