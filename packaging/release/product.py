"""What a release is about: facts, version, time, and the folders that it is made from."""

import hashlib
import os
import re
import shutil
import subprocess
from dataclasses import dataclass
from datetime import datetime, timezone
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parent.parent.parent
PACKAGING = CHECKOUT / "packaging"


# Where set-up program and Windows Installer package tell each other of themselves.
PROGRAM_KEY = r"Software\zelvane\zelvreg"
# The source of its events in the event log of Windows, and the program that has their messages. It
# reports errors, warnings and information (1 + 2 + 4).
EVENT_KEY = r"SYSTEM\CurrentControlSet\Services\EventLog\Application\zelvreg"
EVENT_PROGRAM = "zelvreg-console.exe"
EVENT_TYPES = 7
# The program's folder: full control for SYSTEM and Administrators, reading for Users, wherever it is.
FOLDER_ACCESS = "D:PAI(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200a9;;;BU)"
# Files that the program makes there and nobody misses.
PASSING = ("regst.txt", "regtmp.txt")


class ReleaseError(Exception):
    """One line that says what is wrong and what to do."""


def facts():
    lines = (PACKAGING / "product").read_text("utf-8").splitlines()
    return dict(line.split("=", 1) for line in lines if line and not line.startswith("#"))


def version_of_checkout():
    match = re.search(r"^project\(zelvreg VERSION (\d+\.\d+\.\d+)",
                      (CHECKOUT / "CMakeLists.txt").read_text("utf-8"), re.MULTILINE)
    if not match:
        raise ReleaseError("CMakeLists.txt names no version; it needs project(zelvreg VERSION …)")
    return match.group(1)


def news(version):
    """(date, lines) of a version in CHANGELOG.md."""
    text = (CHECKOUT / "CHANGELOG.md").read_text("utf-8")
    match = re.search(rf"^## {re.escape(version)} \((\d{{4}}-\d\d-\d\d)\)\n(.*?)(?=^## |\Z)", text,
                      re.MULTILINE | re.DOTALL)
    if not match:
        raise ReleaseError(f"CHANGELOG.md has no \"## {version} (YYYY-MM-DD)\"; "
                           "write what is new there")
    entries = re.findall(r"^- (.*(?:\n  .*)*)", match.group(2), re.MULTILINE)
    return match.group(1), [" ".join(entry.split()) for entry in entries]


@dataclass(frozen=True)
class Release:
    """Where things are. `windows` is a Windows build, which has the manual, too; `work` can be
    written to and thrown away; the packages go to `out`."""
    version: str
    epoch: int  # seconds since 1970: the time of the newest commit, and of every file inside
    windows: Path
    work: Path
    out: Path

    @property
    def stage(self):
        return self.work / "windows"

    @property
    def time(self):
        return datetime.fromtimestamp(self.epoch, timezone.utc)

    def product(self, kind):
        return self.out / f"zelvreg-{self.version}{kind}"


def run(*command, **more):
    """Runs a tool quietly; its own words are part of the error when it fails."""
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          text=True, errors="replace", stdin=subprocess.DEVNULL, check=False, **more)
    if done.returncode != 0:
        tail = "\n".join(done.stdout.splitlines()[-30:])
        raise ReleaseError(f"{Path(str(command[0])).name} failed with {done.returncode}:\n{tail}")
    return done.stdout


def need(path, why):
    if not path.exists():
        raise ReleaseError(f"{path.name} is missing in {path.parent}; {why}")
    return path


def sha256(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def settle(folder, epoch):
    """Gives all that is below a folder one time and plain rights, so that archives of it are equal."""
    for path in sorted(folder.rglob("*")):
        path.chmod(0o755 if path.is_dir() or os.access(path, os.X_OK) else 0o644)
        os.utime(path, (epoch, epoch))
    os.utime(folder, (epoch, epoch))


def copy(source, target):
    if source.is_dir():
        shutil.copytree(source, target)
    else:
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(source, target)
