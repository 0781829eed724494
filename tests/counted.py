"""Runs a folder of tests and says how many passed, for the programs beside that do so."""

import sys
import unittest


def tests_in(folder, top, names):
    """The tests in a folder below `top` with one of the names in theirs; all without names."""
    for suite in unittest.defaultTestLoader.discover(str(folder), top_level_dir=str(top)):
        for case in suite:
            for test in case:
                if not names or any(name in test.id() for name in names):
                    yield test


def run(tests):
    return unittest.TextTestRunner(stream=sys.stdout, verbosity=2).run(unittest.TestSuite(tests))


def status(result, counts):
    """The exit status; how many passed, failed and were left out goes to the file, if there is one."""
    bad, left = len(result.failures) + len(result.errors), len(result.skipped)
    if counts:
        counts.write_text(f"{result.testsRun - bad - left} {bad} {left}\n", "ascii")
    return 1 if bad or not result.testsRun else 0
