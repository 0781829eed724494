"""The commands that are tried, each with the computer that it works on and what was done to it before."""

import shutil
import subprocess
import unittest
from typing import NamedTuple

import image_files

from . import given

MACHINE = ("--machine", "machine")
# With a hive whose newest content is in its log.
DISK = ("--offline", "disk")
TIME = ("--now", "2026-01-31T13:45:06Z")
KEY = r"HKEY_LOCAL_MACHINE\SOFTWARE\Northwind Studio"
# Of a finding, so that exclusions count in each scan.
EXCLUDED = ("exclude", "add", r"HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\OldTool")


class Command(NamedTuple):
    words: tuple
    before: tuple = ()  # calls of zelvreg that make the computer what it is
    status_before: int = 1  # their highest
    mounts: str = ""  # where the command mounts something for itself
    sample: int = given.SAMPLE


IMAGES = ("images", "store", "--results", "results", *TIME)


def _on_machine(*calls):
    return [(*MACHINE, *call) for call in calls]


_REPAIRED = _on_machine(("undo", "on"), ("fix", "--yes"))
_UNDO = (*MACHINE, "undo")
_EXCLUDE = (*MACHINE, "exclude")

COMMANDS = {
    "Scan": Command((*MACHINE, "scan", "--json", *TIME), _on_machine(EXCLUDED)),
    "ScanWithReports": Command((*MACHINE, "scan", "--json", *TIME, "--report", "report.txt", "--html", "page.html")),
    "Search": Command((*MACHINE, "search", ":\\", "--json"), _on_machine(EXCLUDED)),
    "Fix": Command((*MACHINE, "fix", "--yes", "--json", *TIME), _on_machine(("undo", "on"), EXCLUDED)),
    "FixFrom": Command((*MACHINE, "fix", "--yes", "--json", *TIME, "--from", "reviewed.json")),
    "UndoList": Command((*_UNDO, "list"), _REPAIRED),
    "UndoRestore": Command((*_UNDO, "restore", "1"), _REPAIRED),
    "UndoRestoreJournal": Command((*_UNDO, "restore", "1", "--journal"), _REPAIRED),
    "UndoRemove": Command((*_UNDO, "remove", "1"), _REPAIRED),
    "ExcludeAdd": Command((*_EXCLUDE, "add", KEY), _on_machine(EXCLUDED)),
    "ExcludeList": Command((*_EXCLUDE, "list"), _on_machine(EXCLUDED)),
    "ExcludeRemove": Command((*_EXCLUDE, "remove", "1", "--yes"), _on_machine(EXCLUDED)),
    "DiskScan": Command((*DISK, "scan", "--json", *TIME)),
    "DiskSearch": Command((*DISK, "search", ":\\", "--json")),
    "DiskFix": Command((*DISK, "fix", "--yes", "--json", *TIME)),
    "DiskFixAgain": Command((*DISK, "fix", "--yes", "--all", "--json", *TIME),
                            ((*DISK, "fix", "--yes", "--only", "dlls"),)),
    "DiskUndo": Command((*DISK, "undo", "restore", "1"), ((*DISK, "undo", "on"), (*DISK, "fix", "--yes"))),
    "Merge": Command(("merge", *TIME, "one.json", "two.json", "--html", "merged.html", "--json", "merged.json",
                      "--csv", "merged.csv")),
    # Of one image there is a failure, of the other one a result that no longer counts.
    "Images": Command(IMAGES, [("images", "store/one.qcow2", "--results", "results", "--timeout", "0.000001"),
                               ("images", "store/two.qcow2", "--results", "results", "--only", "fonts")],
                      status_before=2, mounts="/proc/fs", sample=1),
}


def _add_results(folder):
    """What `--from` and `merge` read."""
    result = given.run(folder, (*MACHINE, "scan", "--json", *TIME)).out
    for name in ("reviewed.json", "one.json", "two.json"):
        (folder / name).write_text(result.replace("ATELIER", "STUDIO") if name == "two.json" else result, "utf-8")


def make_start(name, folder):
    """The folder as the command finds it."""
    folder.mkdir(parents=True)
    words = COMMANDS[name].words
    if DISK[0] in words:
        _make_disk(folder / "disk")
    elif IMAGES[0] in words:
        _make_images(folder)
    else:
        _make_machine(folder)
    for call in COMMANDS[name].before:
        ended = given.run(folder, call)
        if ended.status > COMMANDS[name].status_before:
            raise AssertionError(f"{call}: {ended.errors}")


def _make_disk(folder):
    subprocess.run([given.build / "fault-disk", "make", folder], check=True)


def _make_images(folder):
    making, store = folder / "making", folder / "store"
    making.mkdir()
    store.mkdir()
    _make_disk(making / "root")
    try:
        image_files.make_partitioned(making / "root", making / "volume", making / "mounted", making / "disk",
                                     megabytes=4)
    except (OSError, subprocess.CalledProcessError) as error:
        raise unittest.SkipTest(f"no images can be made and mounted here: {error}") from error
    for name in ("one.qcow2", "two.qcow2"):
        image_files.convert(making / "disk", "qcow2", store / name)
    shutil.rmtree(making)


def _make_machine(folder):
    shutil.copytree(given.CHECKOUT / "demo" / "machine", folder / "machine")
    settings = folder / "machine" / "machine.ini"
    settings.write_text(settings.read_text("ascii") + "now=2026-01-31T13:45:06\n", "ascii")
    _add_results(folder)
