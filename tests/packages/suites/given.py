"""What all tests of the packages share: the release, a Windows to install it on, a display."""

import os
import shutil
import subprocess
from pathlib import Path

from driver.box import CHECKOUT, Box, copy_prefix
from driver.display import Displays
from release import windows
from release.product import EVENT_KEY, Release, version_of_checkout


# Where it is installed unless something else is wanted.
PROGRAM = r"C:\Program Files (x86)\zelvreg"


class Given:
    """Filled by settle(), before any test runs."""
    build = release = work = displays = windows = None
    takes_long = False


def settle(build, release, work, takes_long):
    Given.build, Given.release, Given.work, Given.takes_long = build, release, work, takes_long
    Given.displays = Displays(work)
    Given.windows = work / "windows-as-new"
    subprocess.run([CHECKOUT / "tools" / "demo-prefix", "--bare", build, Given.windows], check=True)


def close():
    Given.displays.close()


def product(kind):
    """A file of the release by its end, such as "-setup.exe"."""
    return next(path for path in Given.release.iterdir() if path.name.endswith(kind))


def another_release(name, version):
    """The same sources under another version, in a folder of their own."""
    folder = Given.work / name
    for part in ("out", "work"):
        (folder / part).mkdir(parents=True)
    epoch = subprocess.run(["git", "-C", CHECKOUT, "log", "-1", "--format=%ct"], text=True,
                           stdout=subprocess.PIPE, check=True).stdout
    return Release(version, int(epoch), Given.build, folder / "work", folder / "out")


def made(maker, name, number):
    """The set-up program or the package of another version, of the same files."""
    release = another_release(name, number)
    windows.stage(release)
    return maker(release)


def version():
    return version_of_checkout()


class Computer:
    """A Windows with the demo machine around it and without zelvreg; to be used in a with statement."""

    def __init__(self, name):
        self.prefix = Given.work / name

    def __enter__(self):
        copy_prefix(Given.windows, self.prefix)
        self.box = Box(Given.build, self.prefix, Given.displays[None].name,
                       self.prefix / "demo.reg", 300)
        # What makes menus of the host out of shortcuts keeps their targets open for a while.
        self.box.sh("export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d'")
        self.drive = self.prefix / "drive_c"
        self.program = self.box.folder
        # The demo machine has the exclusions of a zelvreg that was used on it.
        shutil.rmtree(self.program)
        return self

    def __exit__(self, *_):
        self.box.close()
        subprocess.run(["rm", "-rf", self.prefix], check=True)

    def bring(self, path):
        """Puts a file into the root of drive C; gives its path there."""
        subprocess.run(["cp", "-r", path, self.drive / Path(path).name], check=True)
        return "C:\\" + Path(path).name

    def run(self, program, *arguments):
        """Exit status and output of a program."""
        words = " ".join(f"'{each}'" for each in (program, *arguments))
        return self.box.sh(f"wine {words}")

    def command(self, line):
        """Runs a line of a batch file: some programs want a path without quotation marks. Exit status."""
        (self.drive / "run.bat").write_text(f'@start /wait "" {line}\r\n@exit %errorlevel%\r\n', "ascii")
        return self.box.sh("wine cmd /c 'C:\\run.bat'")[0]

    def files(self, folder=None):
        """All files below a folder, the program's if none is given, as paths in it."""
        folder = folder or self.program
        return sorted(os.path.relpath(os.path.join(root, name), folder)
                      for root, _, names in os.walk(folder) for name in names)

    def is_running(self, name):
        lines = r"cat /proc/[0-9]*/cmdline 2>/dev/null | tr '\0' '\n'"
        return self.box.sh(f"{lines} | grep -qF '\\{name}'")[0] == 0

    def keys(self, path):
        return self.box.registry("HKEY_LOCAL_MACHINE\\Software\\Wow6432Node\\" + path)

    def event_source(self):
        """The values of its source of events; empty without one."""
        return next(iter(self.box.registry("HKEY_LOCAL_MACHINE\\" + EVENT_KEY).values()), {})
