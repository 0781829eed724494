"""What all tests of many images share: the program, a store of images, one run over all of them, the
recipes of the page that tells of them."""

import json
import os
import re
import shutil
import signal
import subprocess
import time
import unittest
from pathlib import Path

import image_files

CHECKOUT = Path(__file__).resolve().parents[3]
# What the page calls these.
STORE_ON_PAGE, WORK_ON_PAGE = "/srv/store", "/srv/fleet"
SCRIPTS_ON_PAGE = "/usr/share/doc/zelvreg/examples/fleet"
PATIENCE = 60
# A process that a test has started, and whatever that has started, is told by this variable.
MARK = "ZELVREG_FLEET_TEST"

FORMATS = ("raw", "qcow2", "vhdx", "vmdk")
MACHINES = 3
BROKEN = "pc0.vhdx"

build = work = None
_refusal = None


def settle(native_build, folder):
    global build, work
    build, work = native_build, folder


def run(*words, **more):
    return subprocess.run([str(word) for word in words], check=True, capture_output=True, text=True,
                          **more)


def wait_until(what, condition):
    end = time.monotonic() + PATIENCE
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f"waited {PATIENCE} s in vain: {what}")
        time.sleep(0.02)


def _make_store(store):
    making = work / "making"
    making.mkdir()
    store.mkdir()
    for number in range(1, MACHINES + 1):
        root, volume, mounted, disk = (making / f"{name}{number}" for name in ("root", "volume", "mounted", "disk"))
        run(build / "zelvreg-make-machine", root, "--disk", "--keys", 10000, "--seed", number)
        image_files.make_partitioned(root, volume, mounted, disk, megabytes=10)
        for form in FORMATS:
            image_files.convert(disk, form, store / f"pc{number}.{form}")
    (store / BROKEN).write_bytes(b"\0" * 4096)
    shutil.rmtree(making)


def images():
    return sorted(path for path in (work / "store").iterdir())


def environment(folder=None):
    """In which the program is found, behind the programs in `folder`."""
    path = [str(folder)] if folder else []
    return os.environ | {"PATH": ":".join([*path, str(build), os.environ["PATH"]]), MARK: str(work)}


def zelvreg(*words):
    """Of one call, not checked."""
    return subprocess.run(["zelvreg", *map(str, words)], env=environment(), capture_output=True, text=True)


class FleetTest(unittest.TestCase):
    maxDiff = 2000

    @classmethod
    def setUpClass(cls):
        global _refusal
        if not (work / "once").exists() and _refusal is None:
            try:
                _make_store(work / "store")
            except (OSError, subprocess.CalledProcessError) as error:
                _refusal = f"no images can be made and mounted here: {error}"
            else:
                zelvreg("images", work / "store", "--results", work / "once", "--quiet")
        if _refusal:
            raise unittest.SkipTest(_refusal)

    def setUp(self):
        self.folder = work / self.id().rsplit(".", 1)[1]
        self.folder.mkdir()
        self.results = self.folder / "results"
        self.gate = self.folder / "open"
        self.addCleanup(end_marked)

    def recipe(self, heading):
        """The commands below this heading of the page, for the store and the folder of this test."""
        page = (CHECKOUT / "docs/fleet.md").read_text("utf-8")
        section = re.split(r"^## ", page, flags=re.M)
        text = next(part for part in section if part.startswith(heading + "\n"))
        commands = "\n".join(re.findall(r"^```sh\n(.*?)^```", text, flags=re.M | re.S))
        for shown, here in ((STORE_ON_PAGE, work / "store"), (WORK_ON_PAGE, self.folder),
                            (SCRIPTS_ON_PAGE, CHECKOUT / "fleet")):
            self.assertIn(shown, commands + SCRIPTS_ON_PAGE)
            commands = commands.replace(shown, str(here))
        return commands

    def gated(self, condition):
        """An environment in which the program does not begin to scan where this is true for bash, until
        the gate is open, so that it is certain where a run is when it is stopped."""
        programs = self.folder / "programs"
        programs.mkdir()
        script = programs / "zelvreg"
        script.write_text(f"""#!/bin/bash
if [[ $1 == images && {condition} ]]; then
  while [[ ! -e {self.gate} ]]; do sleep 0.05; done
fi
exec {build}/zelvreg "$@"
""", "utf-8")
        script.chmod(0o755)
        return environment(programs)

    def count(self):
        """How many images have a result or a failure by now."""
        return len([*self.results.glob("*.json"), *self.results.glob("*.error")])

    def assert_same_as_once(self):
        self.assertEqual(content(self.results), content(work / "once"))

    def assert_report(self):
        if " merge " not in zelvreg("--help").stdout:
            self.skipTest("this program makes no report of many results")
        self.assertIn(BROKEN, (self.folder / "fleet.json").read_text("utf-8"))
        for ending in ("html", "csv"):
            self.assertTrue((self.folder / f"fleet.{ending}").exists(), ending)

    def assert_whole(self):
        """What is there is whole, and nothing else is but what the next run removes."""
        for file in self.results.iterdir():
            if file.suffix == ".json":
                json.loads(file.read_text("utf-8"))
            elif file.suffix == ".error":
                self.assertRegex(file.read_text("utf-8"), r"\A[^\n]+\n\Z")
            else:
                self.assertRegex(file.name, r"^\..*\.zelvreg-|\.log$")


def content(results):
    """Of each file by its name, without what differs from one run to the next."""
    found = {}
    for file in sorted(results.iterdir()):
        text = file.read_text("utf-8")
        if file.suffix == ".json":
            result = json.loads(text)
            for member in ("started", "seconds"):
                result.pop(member, None)
            found[file.name] = result
        elif file.suffix != ".log":
            found[file.name] = text
    return found


def marked(value=None):
    """The processes that a test has started, with this value of the mark, and that are still there."""
    mark = f"{MARK}={value or work}\0".encode()
    found = []
    for process in Path("/proc").glob("[0-9]*"):
        try:
            is_marked = mark in (process / "environ").read_bytes() + b"\0"
        except OSError:
            continue  # it has ended, or is somebody else's
        if is_marked and int(process.name) != os.getpid():
            found.append(int(process.name))
    return found


def end_marked(value=None):
    for process in marked(value):
        try:
            os.kill(process, signal.SIGKILL)
        except ProcessLookupError:
            continue  # it has ended by itself
