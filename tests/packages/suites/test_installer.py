"""The package of the Windows Installer."""

import unittest

from driver.box import FOLDER
from release import installer

from . import use
from .given import PROGRAM, Computer, made, product, version

UNINSTALL = r"Microsoft\Windows\CurrentVersion\Uninstall"


def msiexec(computer, verb, package):
    """The exit status."""
    return computer.run("msiexec", verb, package, "/qn", "/l*v", r"C:\msi.log")[0]


def versions(computer):
    """The versions that the list of installed programs names."""
    return [values["DisplayVersion"].strip('"') for values in computer.keys(UNINSTALL).values()
            if values.get("DisplayName") == '"zelvreg"']


class InstallerTest(unittest.TestCase):
    def test_installs_silently_runs_and_leaves_nothing(self):
        with Computer("msi") as computer:
            package = computer.bring(product(".msi"))
            self.assertEqual(msiexec(computer, "/i", package), 0)
            self.assertEqual(versions(computer), [version()])
            # Wine has the menu of this user where Windows has that of all.
            self.assertTrue(any(name.endswith("zelvreg/Fix Registry Problems.lnk")
                                for name in computer.files(computer.drive)))
            use.check_console(self, computer, PROGRAM)
            use.check_events(self, computer, PROGRAM)
            use.check_window(computer, FOLDER, "msi")
            self.assertEqual(msiexec(computer, "/x", package), 0)
            self.assertFalse(computer.program.exists())
            self.assertEqual((versions(computer), computer.keys(r"zelvane\zelvreg")), ([], {}))
            self.assertEqual(computer.event_source(), {})

    def test_upgrades_and_keeps_what_belongs_to_the_user(self):
        with Computer("msi-upgrade") as computer:
            self.assertEqual(msiexec(computer, "/i", computer.bring(made(installer.make, "msi-older", "0.0.9"))), 0)
            self.assertEqual(versions(computer), ["0.0.9"])
            use.leave_traces(computer)
            package = computer.bring(product(".msi"))
            self.assertEqual(msiexec(computer, "/i", package), 0)
            self.assertEqual(versions(computer), [version()])
            use.check_traces(self, computer)
            use.check_console(self, computer, PROGRAM)
            self.assertEqual(msiexec(computer, "/x", package), 0)
            use.check_traces(self, computer)
            self.assertEqual(set(computer.files()), set(use.KEPT))

    def test_set_up_and_package_keep_out_of_each_others_way(self):
        with Computer("both") as computer:
            setup = computer.bring(product("-setup.exe"))
            package = computer.bring(product(".msi"))
            self.assertEqual(computer.run(setup, "/S")[0], 0)
            self.assertNotEqual(msiexec(computer, "/i", package), 0)
            self.assertEqual(versions(computer), [])
            computer.command(rf'"{PROGRAM}\uninstall.exe" /S _?={PROGRAM}')
            self.assertEqual(msiexec(computer, "/i", package), 0)
            self.assertEqual(computer.run(setup, "/S")[0], 2)
            self.assertEqual(versions(computer), [version()])

    def test_a_missing_package_is_told_as_the_windows_installer_does(self):
        with Computer("msi-missing") as computer:
            self.assertNotEqual(msiexec(computer, "/i", r"C:\none.msi"), 0)
