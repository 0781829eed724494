"""What one image, one task and one result take on this computer."""

import os
import resource
import statistics
import subprocess
import sys
import time
from pathlib import Path

TESTS = Path(__file__).resolve().parents[2] / "tests/fleet"
ROUNDS = 5

MEANINGS = {
    "image_size": "bytes of the image, qcow2: a Windows with a hive of 64 MB",
    "image_processor": "seconds of a processor that its scan takes",
    "image_overhead": "seconds of them that are not spent in the scan of the same disk, mounted",
    "image_clock": "seconds by the clock that its scan takes, all of it in memory",
    "image_read": "bytes of the image that its scan reads",
    "parallel_job": "seconds between two starts of GNU parallel",
    "slurm_task": "seconds between the starts of two tasks of Slurm, on one node that has room for all",
    "merge_start": "seconds that a report of no results takes",
    "merge_result": "seconds that each result adds to it",
    "merge_memory": "bytes of memory at most, for a report of 2,000 results",
    "check_images": "images that GNU parallel has scanned here",
    "check_cores": "on so many cores",
    "check_seconds": "in so many seconds by the clock",
}


def read(file):
    lines = (line.split("\t") for line in file.read_text("ascii").splitlines())
    return {name: float(value) for name, value, _ in lines}


def write(file, measured):
    file.write_text("".join(f"{name}\t{measured[name]:.6g}\t{meaning}\n" for name, meaning in MEANINGS.items()),
                    "ascii")


def timed(*words):
    """Seconds by the clock and of processors, of the quickest of some runs."""
    best = None
    for _ in range(ROUNDS):
        before, start = resource.getrusage(resource.RUSAGE_CHILDREN), time.perf_counter()
        subprocess.run([str(word) for word in words], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        clock = time.perf_counter() - start
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        used = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
        best = min(best or (clock, used), (clock, used), key=lambda one: one[1])
    return best


def _read_by(image, words):
    """Bytes of a file that come into memory."""
    with open(image, "rb") as file:
        os.fsync(file.fileno())
        os.posix_fadvise(file.fileno(), 0, 0, os.POSIX_FADV_DONTNEED)
    subprocess.run([str(word) for word in words], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    told = subprocess.run(["fincore", "--bytes", "--noheadings", "--output", "RES", image],
                          check=True, capture_output=True, text=True)
    return int(told.stdout)


def _large_image(given):
    """An image and the folder from which its disk was made."""
    root, volume, mounted, disk, image = (given.work / name for name in
                                          ("root", "volume", "mounted", "disk", "large.qcow2"))
    given.run(given.build / "zelvreg-make-machine", root, "--disk")
    given.make_partitioned(root, volume, mounted, disk, megabytes=200)
    given.run("qemu-img", "convert", "-f", "raw", "-O", "qcow2", disk, image)
    for file in (volume, disk):
        file.unlink()
    return image, root


def _measure_image(given):
    image, root = _large_image(given)
    program = given.build / "zelvreg"
    scan = (program, "images", image, "--results", given.work / "results", "--again", "--quiet")
    plain = (program, "--offline", root, "scan", "--json")
    clock, used = timed(*scan)
    return image, {"image_size": image.stat().st_size, "image_clock": clock, "image_processor": used,
                   "image_overhead": used - timed(*plain)[1], "image_read": _read_by(image, scan)}


def _measure_parallel(given, image):
    """By jobs that do nothing; and images that are copies of one."""
    jobs, cores, count = 200, len(os.sched_getaffinity(0)), 40
    store = given.work / "copies"
    store.mkdir()
    for number in range(count):
        os.link(image, store / f"{number}.qcow2")
    numbers = [str(number) for number in range(jobs)]
    each = timed("parallel", "true", ":::", *numbers)[0] / jobs
    clock = timed("parallel", given.build / "zelvreg", "images", "{}", "--results", given.work / "results",
                  "--again", "--quiet", ":::", *sorted(store.iterdir()))[0]
    return {"parallel_job": each, "check_images": count, "check_cores": cores, "check_seconds": clock}


def _measure_slurm(given):
    from engines.test_slurm import Cluster
    tasks = 64
    nodes = Cluster(given.work / "cluster", cores=tasks, memory=1024 * tasks)
    try:
        script = given.work / "wait.sh"
        marks = given.work / "marks"
        marks.mkdir()
        script.write_text(f"#!/bin/bash\ntouch {marks}/$SLURM_ARRAY_TASK_ID\nsleep 20\n", "ascii")
        nodes.run("sbatch", f"--array=0-{tasks - 1}", "--output=/dev/null", str(script))
        given.wait_until("all tasks run", lambda: len(list(marks.iterdir())) == tasks)
        nodes.run("scancel", "--user", str(os.geteuid()))
        starts = sorted(mark.stat().st_mtime for mark in marks.iterdir())
        return {"slurm_task": (starts[-1] - starts[0]) / (tasks - 1)}
    finally:
        nodes.close()


def _measure_merge(given):
    """The report of results that are made up: computers with some dozens of findings."""
    counts, seconds = [250, 500, 1000, 2000], []
    for count in counts:
        results = given.work / f"made-{count}"
        given.run(TESTS / "make-results", count, results)
        seconds.append(timed(given.build / "zelvreg", "merge", results, "--html", given.work / "fleet.html",
                             "--csv", given.work / "fleet.csv", "--json", given.work / "fleet.json")[1])
    told = subprocess.run(["/usr/bin/time", "-f", "%M", given.build / "zelvreg", "merge", results, "--json",
                           given.work / "fleet.json"], capture_output=True, text=True)
    line = statistics.linear_regression(counts, seconds)
    return {"merge_start": max(0.0, line.intercept), "merge_result": line.slope,
            "merge_memory": int(told.stderr.split()[-1]) * 1024}


def measure(build, work):
    sys.path.insert(0, str(TESTS))
    from engines import given
    given.settle(build, work)
    image, measured = _measure_image(given)
    return (measured | _measure_parallel(given, image) | _measure_slurm(given) | _measure_merge(given))
