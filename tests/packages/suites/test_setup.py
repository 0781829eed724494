"""The set-up program: silent, over an older version, and away again."""

import subprocess
import unittest

from driver.box import FOLDER
from driver.waiting import wait_until
from release import setup, windows

from . import use
from .given import PROGRAM, Computer, another_release, made, product, version

UNINSTALL = r"Microsoft\Windows\CurrentVersion\Uninstall\zelvreg"
MENU = "ProgramData/Microsoft/Windows/Start Menu/Programs/zelvreg"
REFUSED = 2


def uninstall(computer, *options, folder=PROGRAM):
    """Removes it as the list of installed programs does, and waits: it goes on in a copy of itself."""
    computer.run(folder + r"\uninstall.exe", "/S", *options)
    inside = computer.drive / folder.removeprefix("C:\\").replace("\\", "/")
    wait_until("the uninstaller has removed itself", lambda: not (inside / "uninstall.exe").exists(), 60)
    wait_until("its copy has ended", lambda: not computer.is_running("Un.exe"), 60)
    return inside


def entry(computer):
    return next(iter(computer.keys(UNINSTALL).values()), {})


class SetupTest(unittest.TestCase):
    def test_installs_silently_runs_and_leaves_nothing(self):
        with Computer("setup") as computer:
            program = computer.bring(product("-setup.exe"))
            before = set(computer.files(computer.drive))
            self.assertEqual(computer.run(program, "/S")[0], 0)
            self.assertEqual(set(computer.files()), {str(path) for path in self._files()} | {"uninstall.exe"})
            self.assertTrue((computer.drive / MENU / "Fix Registry Problems.lnk").exists())
            about = entry(computer)
            self.assertEqual(about["DisplayVersion"], f'"{version()}"')
            self.assertIn("/S", about["QuietUninstallString"])
            use.check_console(self, computer, PROGRAM)
            use.check_events(self, computer, PROGRAM)
            use.check_window(computer, FOLDER, "setup")
            uninstall(computer)
            left = set(computer.files(computer.drive)) - before
            self.assertEqual({path for path in left if "zelvreg" in path.lower()}, set())
            self.assertFalse(computer.program.exists())
            self.assertFalse((computer.drive / MENU).exists())
            self.assertEqual((computer.keys(UNINSTALL), computer.keys(r"zelvane\zelvreg")), ({}, {}))
            self.assertEqual(computer.event_source(), {})

    @staticmethod
    def _files():
        release = another_release("stage", version())
        windows.stage(release)
        return {path for path in windows.files(release) if (release.stage / path).is_file()}

    def test_upgrades_and_keeps_what_belongs_to_the_user(self):
        with Computer("upgrade") as computer:
            self.assertEqual(computer.run(computer.bring(made(setup.make, "older", "0.0.9")), "/S")[0], 0)
            self.assertEqual(entry(computer)["DisplayVersion"], '"0.0.9"')
            # A file that the newer version no longer has, and one of the user's own.
            use.leave_traces(computer)
            own = computer.program / "lang" / "zelvreg-klingon.lang"
            own.write_bytes(b"[Form42]\r\n")
            self.assertEqual(computer.run(computer.bring(product("-setup.exe")), "/S")[0], 0)
            self.assertEqual(entry(computer)["DisplayVersion"], f'"{version()}"')
            use.check_traces(self, computer)
            self.assertTrue(own.exists())
            use.check_console(self, computer, PROGRAM)
            uninstall(computer)
            use.check_traces(self, computer)
            self.assertEqual(set(computer.files()), {*use.KEPT, "lang/zelvreg-klingon.lang"})

    def test_removes_everything_when_it_is_told_to(self):
        with Computer("removedata") as computer:
            computer.run(computer.bring(product("-setup.exe")), "/S")
            use.leave_traces(computer)
            # On a busy computer the last of its processes ends after the one that is waited for.
            folder = uninstall(computer, "/REMOVEDATA")
            wait_until("its folder is gone", lambda: not folder.exists(), 60)
            self.assertEqual(computer.keys("zelvane"), {})

    def test_takes_another_folder_and_closes_it_to_others(self):
        with Computer("folder") as computer:
            computer.command(computer.bring(product("-setup.exe")) + r" /S /D=C:\Tools\Registry help")
            folder = computer.drive / "Tools" / "Registry help"
            self.assertTrue((folder / "zelvreg.exe").exists())
            self.assertFalse(computer.program.exists())
            use.check_console(self, computer, r"C:\Tools\Registry help")
            use.leave_traces(computer, folder)
            self.assertEqual(set(computer.files(uninstall(computer, folder=r"C:\Tools\Registry help"))),
                             set(use.KEPT))
            # What was kept there is taken up again.
            self.assertEqual(computer.command(
                computer.bring(product("-setup.exe")) + r" /S /D=C:\Tools\Registry help"), 0)
            use.check_traces(self, computer, folder)

    def test_refuses_a_folder_of_others(self):
        with Computer("foreign") as computer:
            (computer.drive / "Data").mkdir()
            (computer.drive / "Data" / "letter.txt").write_bytes(b"mine")
            # Anybody can make it look as if zelvreg had been there.
            (computer.drive / "Data" / "uninstall.exe").write_bytes(b"mine")
            program = computer.bring(product("-setup.exe"))
            self.assertEqual(computer.command(program + r" /S /D=C:\Data"), REFUSED)
            self.assertEqual(computer.files(computer.drive / "Data"), ["letter.txt", "uninstall.exe"])
            self.assertEqual(computer.keys(UNINSTALL), {})

    def test_refuses_to_replace_a_newer_version(self):
        with Computer("newer") as computer:
            computer.run(computer.bring(made(setup.make, "newer", "99.0.0")), "/S")
            self.assertEqual(computer.run(computer.bring(product("-setup.exe")), "/S")[0], REFUSED)
            self.assertEqual(entry(computer)["DisplayVersion"], '"99.0.0"')

    def test_waits_for_no_running_program_but_refuses(self):
        with Computer("running") as computer:
            program = computer.bring(product("-setup.exe"))
            computer.run(program, "/S")
            with use.window(computer, FOLDER, "running"):
                self.assertEqual(computer.run(program, "/S")[0], REFUSED)
                # Told where it is, it does not go on in a copy, whose status nobody sees.
                self.assertEqual(computer.command(rf'"{PROGRAM}\uninstall.exe" /S _?={PROGRAM}'), REFUSED)
                self.assertTrue((computer.program / "zelvreg.exe").exists())

    def test_says_what_it_is(self):
        said = subprocess.run(["strings", "-el", product("-setup.exe")], text=True, stdout=subprocess.PIPE,
                              check=True).stdout
        self.assertIn(version(), said.split())
