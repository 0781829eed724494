"""The command alone: stopped at any moment, and with one image that is broken."""

import json
import os
import signal
import subprocess
import time

from . import given


class CommandTest(given.FleetTest):
    def test_one_call_gives_each_image_a_result_or_a_reason(self):
        for image in given.images():
            ending = ".error" if image.name == given.BROKEN else ".json"
            self.assertTrue((given.work / "once" / (image.name + ending)).exists(), image.name)
        self.assertEqual(len([*(given.work / "once").iterdir()]), len(given.images()))
        line = (given.work / "once" / (given.BROKEN + ".error")).read_text("utf-8")
        self.assertTrue(line.startswith(f"{given.work}/store/{given.BROKEN}: "), line)

    def test_the_format_makes_no_difference(self):
        found = [json.loads((given.work / "once" / f"pc1.{form}.json").read_text("utf-8"))["findings"]
                 for form in given.FORMATS]
        self.assertGreater(len(found[0]), 10)
        for other in found[1:]:
            self.assertEqual(other, found[0])

    def test_killed_at_any_moment_it_leaves_only_what_is_whole(self):
        words = ["zelvreg", "images", given.work / "store", "--results", self.results, "--quiet"]
        mounts = open("/proc/mounts", encoding="utf-8").read()
        for moment in range(12):
            call = subprocess.Popen(words, env=given.environment(), stderr=subprocess.DEVNULL)
            time.sleep(0.015 * moment)
            call.send_signal(signal.SIGKILL)
            call.wait()
            # What it had started ends by itself.
            given.wait_until("all processes end", lambda: not given.marked())
            if self.results.exists():
                self.assert_whole()
        self.assertEqual(open("/proc/mounts", encoding="utf-8").read(), mounts)
        self.assertEqual(given.zelvreg(*words[1:]).returncode, 2)
        self.assert_same_as_once()

    def test_an_image_whose_process_is_killed_does_not_end_the_run(self):
        call = subprocess.Popen(["zelvreg", "images", given.work / "store", "--results", self.results],
                                env=given.environment(), stderr=subprocess.PIPE, text=True)
        killed = None
        end = time.monotonic() + given.PATIENCE
        while killed is None and time.monotonic() < end and call.poll() is None:
            for child in _children(call.pid):
                # It has mounts of its own by now, so it is at work on an image.
                if self.results.exists() and _has_own_mounts(child):
                    os.kill(child, signal.SIGKILL)
                    killed = child
                    break
        self.assertIsNotNone(killed)
        said = call.communicate()[1]
        self.assertEqual(call.returncode, 2)
        self.assertEqual(said.count("ended by signal 9"), 1, said)
        self.assertEqual(self.count(), len(given.images()))
        again = ("images", given.work / "store", "--results", self.results)
        self.assertEqual(given.zelvreg(*again).returncode, 2)
        self.assertEqual(given.zelvreg(*again, "--exit-zero").returncode, 0)
        self.assert_same_as_once()


def _children(process):
    try:
        with open(f"/proc/{process}/task/{process}/children", encoding="ascii") as file:
            return [int(child) for child in file.read().split()]
    except OSError:
        return []


def _has_own_mounts(process):
    try:
        return os.readlink(f"/proc/{process}/ns/mnt") != os.readlink("/proc/self/ns/mnt")
    except OSError:
        return False
