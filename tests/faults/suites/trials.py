"""Runs of one command, each with one fault, and what is demanded of each."""

import os
import shutil
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from queue import SimpleQueue

from . import given, plans
from .commands import COMMANDS, make_start
from .judging import RESULTS, Judge, content

# What the program gives its files while it writes them.
_BESIDE = ".zelvreg-"


def _put(start, folder):
    shutil.rmtree(folder, ignore_errors=True)
    shutil.copytree(start, folder, symlinks=True)
    # They name the whole path of what they are of.
    for result in (folder / RESULTS).glob("*"):
        result.write_bytes(result.read_bytes().replace(bytes(start), bytes(folder)))


class Trials:
    """Of one command. Its undisturbed run is made at once."""

    def __init__(self, name):
        self.name = name
        self.command = COMMANDS[name]
        self.words = self.command.words
        # Each of these has a path of the same length, which makes the calls of all alike.
        self.folders = SimpleQueue()
        above = given.work / name
        make_start(name, above / "start")
        folder = above / "t0"
        _put(above / "start", folder)
        log = above / "log"
        start = content(folder)
        undisturbed = given.run(folder, self.words, ("--log", log), self.command.mounts)
        self.calls = [plans.Call.read(line, folder) for line in log.read_text("utf-8").splitlines()]
        after = content(folder)
        again = given.run(folder, self.words)
        self.judge = Judge(start, undisturbed, after, again, content(folder), folder)
        self.start = above / "start"
        for number in range(os.cpu_count() or 1):
            self.folders.put(above / f"t{number}")

    def groups(self):
        return sorted({call.group for call in self.calls})

    def problems(self, planned):
        """A line for each thing that is not as it must be."""
        wanted = planned if given.takes_all else plans.sample(planned, self.command.sample)
        given.tried[self.name] = given.tried.get(self.name, 0) + len(wanted)
        with ThreadPoolExecutor(os.cpu_count()) as pool:
            found = [line for lines in pool.map(self._try, wanted) for line in lines]
        if any(plan.kills for plan in wanted) and not self.judge.has_killed:
            found.append("nothing was killed")
        return found

    def _try(self, plan):
        folder = self.folders.get()
        try:
            _put(self.start, folder)
            ended = given.run(folder, self.words, plan.options, self.command.mounts)
            left = content(folder)
            found = self.judge.of_disturbed(plan, ended, left, folder)
            # A result that says what it lacks is kept until another is asked for.
            again = ("--again",) if self.judge.has_partial_results(left) else ()
            following = given.run(folder, (*self.words, *again))
            found += self.judge.of_next(plan, following, content(folder), folder)
            return [f"{plan.meaning}: {line}" for line in found]
        finally:
            self.folders.put(folder)
