"""The rooms of src/ as src/CMakeLists.txt declares them: room(NAME USES LOWER...)."""

import re
from pathlib import Path

SOURCES = Path(__file__).resolve().parent.parent / "src"
ROOM = re.compile(r"^ *room\(([\w/-]+)(?: USES ([^)]*))?\)", re.MULTILINE)
# The rooms that decide what is dead and what is deleted, and those that read what others wrote.
DECIDING = ("registry", "scan", "scanners", "repair", "undo", "exclusions", "search", "text", "evidence",
            "machine/hive", "machine/replay")


def declarations():
    """Each room and what it may use, in order; twice for one that each system declares for itself."""
    for name, uses in ROOM.findall((SOURCES / "CMakeLists.txt").read_text()):
        yield name, uses.split()


def reach():
    """For each room, itself and all rooms below it, whose headers it may include."""
    below = {}
    # A room is declared after those that it builds on. One that is declared for each system has
    # what either allows.
    for name, uses in declarations():
        lower = [below[room] for room in uses if room in below]
        below[name] = below.get(name, {name}).union(*lower)
    return below
