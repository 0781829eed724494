"""What all trials share: the programs, and where they work."""

import os
import subprocess
from pathlib import Path
from typing import NamedTuple

CHECKOUT = Path(__file__).resolve().parents[3]
# So long that only a program that hangs needs it.
PATIENCE = 60
# Of each test, without --all.
SAMPLE = 4

build = work = None
takes_all = False
tried = {}


def settle(native_build, folder, all_of_them):
    global build, work, takes_all
    build, work, takes_all = native_build, folder, all_of_them


_shown = {}


def shown(hive, content):
    """What a hive with this content holds; the content itself where it is none."""
    if content not in _shown:
        asked = subprocess.run([build / "fault-disk", "show", hive], capture_output=True)
        _shown[content] = content if asked.returncode else asked.stdout.replace(b"\0", b"")
    return _shown[content]


class Ended(NamedTuple):
    status: int
    out: str
    errors: list


def environment(folder):
    """Nothing of the person who runs it, so that the calls are everywhere the same."""
    return {"PATH": os.defpath, "HOME": str(folder), "LC_ALL": "C.UTF-8"}


def run(folder, words, options=(), mounts=""):
    """zelvreg in a folder, its output in the file `out` there, with what the injector is to do."""
    own = ("--mounts", mounts) if mounts else ()
    injector = [build / "fault-injector", "--below", folder, *own, *options] if options else []
    output = folder / "out"
    with open(output, "wb") as out:
        ended = subprocess.run([*injector, build / "zelvreg", *words], cwd=folder, env=environment(folder),
                               stdin=subprocess.DEVNULL, stdout=out, stderr=subprocess.PIPE, timeout=PATIENCE)
    text = output.read_bytes().decode("utf-8", "replace")
    output.unlink()
    return Ended(ended.returncode, text, ended.stderr.decode("utf-8", "replace").splitlines())
