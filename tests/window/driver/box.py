"""A throw-away Wine prefix with zelvreg in it, and the programs that run there."""

import shutil
import subprocess
from pathlib import Path

from .waiting import Unmet, wait_until

CHECKOUT = Path(__file__).resolve().parents[3]
BOX = CHECKOUT / "tools" / "box"
FOLDER = "/zelvreg/prefix/drive_c/Program Files (x86)/zelvreg"
BUILD = "/zelvreg/build"
DONE = "-- done: "
# The output of the programs is kept here, inside the prefix.
NOTES = "notes"


def copy_prefix(source, target):
    """Windows itself is shared, because no program changes it."""
    def share(name):
        subprocess.run(["cp", "-al", source / name, target / name], check=True)

    target.mkdir()
    (target / "drive_c").mkdir()
    for each in source.iterdir():
        if each.is_dir() and not each.is_symlink() and each.name != "drive_c":
            shutil.copytree(each, target / each.name, symlinks=True)
        elif each.is_file():
            shutil.copy2(each, target / each.name)
    for each in (source / "drive_c").iterdir():
        if each.name == "windows":
            share(Path("drive_c") / each.name)
        else:
            shutil.copytree(each, target / "drive_c" / each.name, symlinks=True)


class Started:
    """A program that was started and not waited for."""

    def __init__(self, notes):
        self.notes = notes

    def status(self):
        """Its exit status, or None as long as it runs."""
        try:
            return int((self.notes / "status").read_text())
        except (FileNotFoundError, ValueError):
            return None

    def has_ended(self):
        return self.status() is not None

    def wait(self, seconds=20):
        wait_until("the program ends", self.has_ended, seconds)
        return self.status()


class Box:
    def __init__(self, build, prefix, display, registry=None, limit=120, locale=None):
        self.prefix = prefix
        self.notes = prefix / NOTES
        self.notes.mkdir()
        self.count = 0
        self.folder = prefix / FOLDER.removeprefix("/zelvreg/prefix/")
        command = [BOX, "shell", "--build", build, "--prefix", prefix, "--display", display,
                   "--limit", str(limit)]
        if registry:
            command += ["--registry", registry]
        if locale:
            command += ["--locale", locale]
        with open(self.notes / "box.log", "w", encoding="utf-8") as log:
            self.shell = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                          stderr=log, text=True, encoding="utf-8",
                                          errors="replace")
        self.sh(f"cd '{FOLDER}'")

    def close(self):
        self.shell.stdin.close()
        try:
            self.shell.wait(5)
        except subprocess.TimeoutExpired:
            # Its programs end with it.
            self.shell.terminate()
            self.shell.wait()
        self.shell.stdout.close()

    def sh(self, command):
        """Runs a command of the shell to its end; gives its status and what it printed."""
        try:
            self.shell.stdin.write(f"{command} </dev/null\necho '{DONE}'$?\n")
            self.shell.stdin.flush()
        except BrokenPipeError:
            raise self.ended(command) from None
        printed = []
        for line in self.shell.stdout:
            if line.startswith(DONE):
                return int(line.removeprefix(DONE)), "".join(printed)
            printed.append(line)
        raise self.ended(command)

    def ended(self, command):
        """The exception for a box that has ended, with its last lines of output."""
        said = (self.notes / "box.log").read_text("utf-8", "replace").splitlines()[-10:]
        return Unmet("\n".join([f"the box ended with status {self.shell.wait()} before this did:"
                                f" {command}", *said]))

    def start(self, program, *arguments, folder=FOLDER):
        self.count += 1
        notes = self.notes / str(self.count)
        notes.mkdir()
        inside = f"/zelvreg/prefix/{NOTES}/{self.count}"
        words = " ".join(f"'{each}'" for each in (f"{folder}/{program}", *arguments))
        self.sh(f"{{ wine {words} >{inside}/output 2>&1; echo $? >{inside}/status; }} &")
        return Started(notes)

    def file(self, name):
        """The bytes of a file in the program's folder, or None."""
        try:
            return (self.folder / name).read_bytes()
        except FileNotFoundError:
            return None

    def add_to_registry(self, text):
        """An export of the registry, without its first line."""
        path = self.prefix / "more.reg"
        path.write_bytes(f"Windows Registry Editor Version 5.00\n\n{text}".encode("utf-16"))
        self.sh("/usr/lib/wine/wine64 regedit /S 'Z:\\zelvreg\\prefix\\more.reg'")

    def registry(self, key):
        """{key: {value name: text as exported}} of a key in its 64-bit view and all below it."""
        path = self.prefix / "export.reg"
        path.unlink(missing_ok=True)
        self.sh(f"/usr/lib/wine/wine64 regedit /E 'Z:\\zelvreg\\prefix\\export.reg' '{key}'")
        if not path.exists():
            return {}
        keys, current = {}, None
        for line in path.read_text("utf-16").replace("\\\n", "").splitlines():
            if line.startswith("["):
                current = keys.setdefault(line[1:-1], {})
            elif "=" in line and current is not None:
                name, _, value = line.partition("=") if line.startswith("@") else \
                    line.partition('"=')
                current[name.removeprefix('"').replace("\\\\", "\\")] = value
        return keys

    def value(self, key, name):
        """One value's text, without its quotation marks, or None."""
        found = next(iter(self.registry(key).values()), {}).get(name)
        return found if found is None else found.strip('"').replace("\\\\", "\\")
