"""The recipe for GNU parallel as it stands in the page: in one go, and stopped half-way."""

import os
import shutil
import signal
import subprocess

from . import given

HEADING = "Images with GNU parallel"


class ParallelTest(given.FleetTest):
    def setUp(self):
        if not shutil.which("parallel"):
            self.skipTest("GNU parallel is not here")
        super().setUp()
        self.commands = self.recipe(HEADING)

    def start(self, environment):
        return subprocess.Popen(["bash", "-c", self.commands], env=environment, start_new_session=True,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def test_the_recipe_gives_what_one_call_gives(self):
        self.start(given.environment()).wait()
        self.assert_same_as_once()
        self.assert_report()

    def test_stopped_half_way_it_is_gone_on_with(self):
        run = self.start(self.gated("$2 == *pc2.raw"))
        others = len(given.images()) - 1
        given.wait_until("all but one are done", lambda: self.count() >= 3)
        os.killpg(run.pid, signal.SIGKILL)
        run.wait()
        self.assert_whole()
        self.assertLessEqual(self.count(), others)
        self.assertFalse((self.results / "pc2.raw.json").exists())
        made = {file.name: file.stat().st_mtime_ns for file in self.results.glob("*.json")}
        self.gate.touch()
        again = subprocess.run(["bash", "-c", self.commands], capture_output=True, text=True,
                               env=given.environment(self.folder / "programs"))
        self.assert_same_as_once()
        # Only what was not done, or had failed, was done now.
        for name, time in made.items():
            self.assertEqual((self.results / name).stat().st_mtime_ns, time, again.stderr)
