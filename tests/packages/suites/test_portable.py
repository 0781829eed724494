"""The portable copy: unpacked, used, and nothing of it anywhere else."""

import unittest
import zipfile

from . import use
from .given import Computer, product, version


class PortableTest(unittest.TestCase):
    def test_keeps_its_settings_beside_itself_and_nothing_in_the_registry(self):
        with Computer("portable") as computer:
            # Of a zelvreg that is installed on the demo machine.
            before = computer.keys("zelvane")
            folder = computer.drive / "Stick"
            with zipfile.ZipFile(product("-portable.zip")) as archive:
                archive.extractall(folder)
            inside = f"zelvreg-{version()}"
            use.check_console(self, computer, f"C:\\Stick\\{inside}")
            use.check_window(computer, f"/zelvreg/prefix/drive_c/Stick/{inside}", "portable")
            settings = (folder / inside / "zelvreg.ini").read_text("utf-8-sig")
            self.assertIn("[categories]\nfont=1\n", settings.replace("\r\n", "\n"))
            program = f"C:\\Stick\\{inside}\\zelvreg-console.exe"
            self.assertEqual(computer.run(program, "undo", "on")[0], 0)
            status, said = computer.run(program, "fix", "--only", "fonts", "--yes", "--json")
            self.assertIn(status, (0, 1), said)
            settings = (folder / inside / "zelvreg.ini").read_text("utf-8-sig")
            self.assertIn("[undo]", settings)
            self.assertEqual(computer.run(program, "undo", "restore", "1")[0], 0)
            self.assertEqual(computer.keys("zelvane"), before)
            self.assertEqual(use.reported_events(self, computer, f"C:\\Stick\\{inside}"), [])

    def test_does_not_restore_where_ordinary_users_can_write(self):
        with Computer("portable-open") as computer:
            folder = computer.drive / "Stick"
            with zipfile.ZipFile(product("-portable.zip")) as archive:
                archive.extractall(folder)
            inside = folder / f"zelvreg-{version()}"
            program = f"C:\\Stick\\{inside.name}\\zelvreg-console.exe"
            computer.run(program, "undo", "on")
            computer.run(program, "fix", "--only", "fonts", "--yes", "--quiet")
            inside.chmod(0o777)
            (inside / "zelvreg.ini").chmod(0o666)
            status, said = computer.box.sh(f"wine '{program}' undo restore 1 2>&1")
            self.assertEqual(status, 2, said)
            self.assertIn("users who are no administrators can write to the folder", said)
