"""The tests with counters in the program: built, run, and what they ran.

All of that lies in the build folder of the preset `coverage`.
"""

import contextlib
import hashlib
import json
import os
import queue
import re
import shutil
import subprocess
import tempfile
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

TOOLS = Path(__file__).resolve().parent
CHECKOUT = TOOLS.parent
PROGRAM = "zelvreg-tests"
# Seconds for one process.
LIMIT = 3000
# Where the files of tests do not wait for a disk.
MEMORY = "/dev/shm" if os.path.isdir("/dev/shm") else None


class Failure(Exception):
    """One line that says why there is no result."""


def built(packages="coverage_packages"):
    """Builds the tests with counters, with the packages of one of the lists in common.sh; their folder."""
    steps = f'install_packages "${{{packages}[@]}}" && build coverage zelvreg-tests language-files && ' \
            'printf %s "$builds/coverage"'
    run = subprocess.run(["bash", "-c", f'. "{TOOLS}/common.sh" && {steps}'], text=True,
                         stdout=subprocess.PIPE, check=False)
    if run.returncode:
        raise Failure("the tests with counters could not be built")
    return Path(run.stdout)


def suites_of(program):
    """The names of all suites, each with the source that its tests are in."""
    with tempfile.TemporaryDirectory() as folder:
        listed = Path(folder) / "tests.json"
        subprocess.run([program, "--gtest_list_tests", f"--gtest_output=json:{listed}"], check=True,
                       stdout=subprocess.DEVNULL, env=environment(os.devnull))
        suites = json.loads(listed.read_text())["testsuites"]
    return {suite["name"]: suite["testsuite"][0].get("file", "") for suite in suites}


def environment(counters):
    return {**os.environ, "LLVM_PROFILE_FILE": str(counters)}


class CountedTests:
    """The tests of one build: what all of them ran, and which suite reaches which function.

    Both take long, and are kept in the build folder until the program changes.
    """

    def __init__(self, build):
        self.build, self.program = build, build / PROGRAM
        self.folder = build / "counters"
        self.folder.mkdir(parents=True, exist_ok=True)

    def stamp(self):
        return hashlib.sha256(self.program.read_bytes()).hexdigest()

    def kept(self, name):
        """What was kept for the program as it is; None if there is nothing."""
        try:
            results = json.loads((self.folder / name).read_text())
            return results if results["program"] == self.stamp() else None
        except (OSError, ValueError, KeyError):
            return None

    def keep(self, name, results):
        (self.folder / name).write_text(json.dumps({"program": self.stamp(), **results}))

    @contextlib.contextmanager
    def places(self):
        """A folder for each process, since tests write into the program's folder."""
        with tempfile.TemporaryDirectory(dir=self.folder) as top:
            places = []
            for number in range(os.cpu_count()):
                place = Path(top) / str(number)
                place.mkdir()
                os.link(self.program, place / PROGRAM)
                shutil.copytree(self.build / "lang", place / "lang")
                places.append(place)
            yield places

    def run(self):
        """Runs all tests, one part of them in each process; the names of those that fail."""
        with self.places() as places, ThreadPoolExecutor(len(places)) as pool:
            parts = [{"GTEST_TOTAL_SHARDS": str(len(places)), "GTEST_SHARD_INDEX": str(part)}
                     for part in range(len(places))]
            runs = list(pool.map(lambda place, part: start(place, [], part), places, parts))
            merge(self.total(), [raw for place in places for raw in place.glob("*.profraw")])
        failed = sorted({name for _, names in runs for name in names})
        if not failed and any(status for status, _ in runs):
            failed = ["a process ended before its last test"]
        self.keep("all.json", {"failed": failed})

    def failed(self):
        """The names of the tests that failed; runs all tests if that was not done yet."""
        if self.kept("all.json") is None:
            self.run()
        return self.kept("all.json")["failed"]

    def total(self):
        return self.folder / "all.profdata"

    def suites(self, functions):
        """For each suite its file and its seconds, those that fail, and for each of these functions the
        suites that reach it."""
        results = self.kept("suites.json")
        if results is None:
            self.run_suites(set(functions))
            results = self.kept("suites.json")
        return results

    def run_suites(self, functions):
        """Runs each suite in a process of its own."""
        files = suites_of(self.program)
        seconds, failed, reaching = {}, [], {}
        with self.places() as places, ThreadPoolExecutor(len(places)) as pool:
            free = queue.SimpleQueue()
            for place in places:
                free.put(place)

            def run_one(suite):
                place = free.get()
                began = time.monotonic()
                status, _ = start(place, [f"--gtest_filter={suite}.*"], {})
                took = time.monotonic() - began
                reached = functions_in(place)
                free.put(place)
                return suite, took, status, functions & reached

            for suite, took, status, reached in pool.map(run_one, files):
                seconds[suite] = took
                failed += [suite] if status else []
                for function in reached:
                    reaching.setdefault(function, []).append(suite)
        self.keep("suites.json", {"files": files, "seconds": seconds, "failed": failed,
                                  "reaching": reaching})

    def export(self):
        """What llvm-cov says of all sources of the rooms."""
        text = subprocess.run(
            ["llvm-cov", "export", "-skip-expansions", f"-instr-profile={self.total()}",
             "-ignore-filename-regex=/source/(tests|bench)/", self.program],
            check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
        return json.loads(text)["data"][0]


def start(place, arguments, variables):
    """Runs tests in a folder of their own: the status, and the names of the tests that failed."""
    # Processes that a test starts add to the same file, and all of them as they run (%c).
    counters = environment(place / "%c%2m.profraw")
    with tempfile.TemporaryDirectory(dir=MEMORY) as temporary:
        # Some tests look at it as an ordinary user.
        os.chmod(temporary, 0o755)
        try:
            run = subprocess.run([place / PROGRAM, "--gtest_brief=1", *arguments], cwd=place, timeout=LIMIT,
                                 check=False, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                 stderr=subprocess.DEVNULL,
                                 env={**counters, **variables, "TMPDIR": temporary})
        except subprocess.TimeoutExpired as late:
            return 1, [f"took longer than {LIMIT} s: {late.cmd[-1]}"]
    output = run.stdout.decode(errors="replace")
    return run.returncode, re.findall(r"^\[  FAILED  \] (\S+?),? .*\(\d+ ms\)$", output, re.MULTILINE)


def merge(result, counters):
    subprocess.run(["llvm-profdata", "merge", "-sparse", "-failure-mode=all", "-o", result, *counters],
                   check=True, stderr=subprocess.DEVNULL)


def functions_in(place):
    """The linker's names of the functions that ran in a folder, those of libraries among them; the counters
    are gone afterwards."""
    raw = list(place.glob("*.profraw"))
    text = subprocess.run(
        ["llvm-profdata", "merge", "-text", "-sparse", "-failure-mode=all", "-o", "-", *raw],
        check=False, text=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
    for file in raw:
        file.unlink()
    reached = set()
    for block in text.split("\n\n"):
        lines = [line for line in block.split("\n") if line and line[0] not in "#:"]
        # Name, hash, how many counters, the counters.
        if len(lines) > 3 and any(count != "0" for count in lines[3:]):
            reached.add(lines[0])
    return reached
