"""What a user does with an installed program, whichever package it came from."""

import contextlib
import json
import subprocess

from driver import findings
from driver.screen import Screen
from release.product import EVENT_PROGRAM

from .given import Given, version

# What the program itself leaves in its folder, and what must survive an upgrade and a removal.
KEPT = {
    "exregscan.txt": b"HKEY_LOCAL_MACHINE\\SOFTWARE\\Kept by the user\r\n",
    "31.12.2025 t 23.59.58.txt": b"a journal",
    "backup/registry/2025-12-31-235958.reg": b"a safety export",
    "backup/fixreg/31_12_2025_23.59.58.txt": b"a copy of the list",
}
# A setting that an earlier version has stored, below the 32-bit view.
SETTINGS = r"zelvane\Zelvane Tuner Deluxe\regscan"


def leave_traces(computer, folder=None):
    folder = folder or computer.program
    for name, content in KEPT.items():
        path = folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
    computer.box.add_to_registry(
        f"[HKEY_LOCAL_MACHINE\\Software\\Wow6432Node\\{SETTINGS}]\n\"saveundo\"=\"1\"\n")


def check_traces(test, computer, folder=None):
    folder = folder or computer.program
    for name, content in KEPT.items():
        test.assertEqual((folder / name).read_bytes(), content, name)
    test.assertIn(SETTINGS.rsplit("\\", maxsplit=1)[-1],
                  " ".join(computer.keys(SETTINGS)), "the settings are gone")


def check_console(test, computer, folder):
    """The console of a folder of Windows tells its version and finds the dead entries of the demo
    machine."""
    program = folder + "\\zelvreg-console.exe"
    status, said = computer.run(program, "--version")
    test.assertEqual((status, said.strip()), (0, f"zelvreg {version()}"))
    status, said = computer.run(program, "scan", "--json")
    test.assertEqual(status, 1)
    found = findings.of_json(said)
    expected = findings.seen_in_wine(findings.expected_of_demo())
    test.assertFalse(expected - found, "findings that are missing")
    # What the package itself has registered is alive.
    test.assertFalse([each for each in json.loads(said)["findings"]
                      if "zelvreg" in each["badValue"].lower()])


def check_events(test, computer, folder):
    """The event log finds the messages in the console, which reports to it what has failed."""
    test.assertEqual(computer.event_source()["TypesSupported"], "dword:00000007")
    program = computer.box.folder / EVENT_PROGRAM
    resources = subprocess.run(["i686-w64-mingw32-windres", program], check=True,
                               stdout=subprocess.PIPE).stdout
    test.assertIn(b"MESSAGETABLE", resources)
    test.assertEqual(reported_events(test, computer, folder),
                     ['"there is no row 99; the list of journals has 0"'])


def reported_events(test, computer, folder):
    """What the console reports of a command that fails: Wine prints errors that it is told."""
    status, said = computer.box.sh(
        f"WINEDEBUG=err+eventlog wine '{folder}\\{EVENT_PROGRAM}' undo restore 99 2>&1")
    test.assertEqual(status, 2, said)
    return [line.partition("ReportEventW L")[2] for line in said.splitlines()
            if "err:eventlog" in line]


@contextlib.contextmanager
def window(computer, folder, step):
    """The window of a folder of the box, open as long as the with statement runs; closed at its end."""
    screen = Screen(computer.box, Given.displays[None], Given.work, step)
    try:
        started = screen.opened(computer.box.start("zelvreg.exe", folder=folder))
        yield screen
        screen.press_picture("chameleonButton4")
        started.wait()
    finally:
        screen.close()


def check_window(computer, folder, step):
    """The window opens, scans at a press of Start and lists what it finds."""
    with window(computer, folder, step) as screen:
        screen.press("Start")
        screen.see_results()
