"""The package for Debian, in a Debian with nothing else in it."""

import subprocess
import unittest

from driver.box import CHECKOUT
from driver.findings import expected_of_demo, of_json

from .given import Given, product, version

# Runs inside, as root of that Debian, with the package in /tmp.
SCRIPT = r"""
set -eu
find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /tmp \) -prune -o -print | sort >/tmp/before
apt-get install -y --no-install-recommends /tmp/zelvreg.deb >/tmp/install.log 2>&1
zelvreg --version >/tmp/version
zelvreg --machine /usr/share/doc/zelvreg/examples/demo-machine scan --json >/tmp/scan.json || echo $? >/tmp/status
test -s /usr/share/man/man1/zelvreg.1.gz
test -s /usr/share/doc/zelvreg/html/index.html
bash -c '. /usr/share/bash-completion/completions/zelvreg; complete -p zelvreg' >/tmp/completion
zelvreg --machine /usr/share/doc/zelvreg/examples/demo-machine languages >/tmp/languages
apt-get purge -y zelvreg >/tmp/purge.log 2>&1
apt-get autoremove --purge -y >>/tmp/purge.log 2>&1
find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /tmp \) -prune -o -print | sort >/tmp/after
"""
# The package manager's own notes are not the package's.
NOTES = ("/var/lib/dpkg", "/var/lib/apt", "/var/cache", "/var/log", "/etc/ld.so.cache")


class DebianTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.root = Given.work / "bare-debian"
        mirror = subprocess.run(["bash", "-c", '. "$1/tools/common.sh"; debian_mirror', "-", CHECKOUT],
                                text=True, stdout=subprocess.PIPE, check=True).stdout.strip()
        (Given.work / "inside").write_text(SCRIPT, "ascii")
        done = subprocess.run(
            ["mmdebstrap", "--variant=apt", f"--customize-hook=copy-in {Given.work}/inside /tmp",
             f"--customize-hook=cp '{product('.deb')}' \"$1/tmp/zelvreg.deb\"",
             # Where the documents of packages are left out, ours are looked at all the same.
             "--customize-hook=rm -f \"$1\"/etc/dpkg/dpkg.cfg.d/docker*",
             "--customize-hook=chroot \"$1\" sh /tmp/inside",
             f"--customize-hook=copy-out /tmp/before /tmp/after /tmp/version /tmp/scan.json /tmp/status"
             f" /tmp/completion /tmp/languages {Given.work}",
             "bookworm", "/dev/null", f"deb {mirror} bookworm main"],
            text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        cls.said = "\n".join(done.stdout.splitlines()[-30:])
        cls.status = done.returncode

    def seen(self, name):
        self.assertEqual(self.status, 0, self.said)
        return (Given.work / name).read_text("utf-8")

    def test_its_console_scans_the_demo_machine(self):
        self.assertEqual(self.seen("version").strip(), f"zelvreg {version()}")
        self.assertEqual(of_json(self.seen("scan.json")), expected_of_demo())
        self.assertEqual(self.seen("status").strip(), "1")

    def test_it_has_its_languages_and_completions(self):
        self.assertIn("german", self.seen("languages"))
        self.assertIn("zelvreg", self.seen("completion"))

    def test_nothing_is_left_when_it_is_removed(self):
        before, after = (set(self.seen(name).splitlines()) for name in ("before", "after"))
        self.assertEqual({path for path in after - before if not path.startswith(NOTES)}, set())

    def test_lintian_misses_only_the_number_of_an_announcement(self):
        done = subprocess.run(["lintian", "--allow-root", "--fail-on", "error,warning", "--tag-display-limit", "0",
                               "--suppress-tags", "initial-upload-closes-no-bugs", product(".deb")],
                              text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        self.assertEqual((done.returncode, done.stdout.strip()), (0, ""))
