"""Each command, with a fault in each kind of call that it makes, and in those of the programs that it starts;
what is killed; full and removed disks."""

import unittest

from . import plans
from .commands import COMMANDS
from .trials import Trials


class _FaultTest(unittest.TestCase):
    trials = None

    def expect_none(self, planned):
        found = self.trials.problems(planned)
        if found:
            self.fail(f"{len(found)} of {len(planned)}:\n" + "\n".join(found[:40]))


def _of_group(group):
    return lambda self: self.expect_none(plans.of_group(self.trials.calls, group))


def _of_all(planned):
    return lambda self: self.expect_none(planned(self.trials.calls))


def _cases(name):
    try:
        trials = Trials(name)
    except unittest.SkipTest as reason:
        return type(name, (_FaultTest,), {"test_all": unittest.skip(str(reason))(lambda self: None)})
    tests = {"test_" + group.replace("-", "_"): _of_group(group) for group in trials.groups()}
    tests |= {"test_" + planned.__name__: _of_all(planned)
              for planned in (plans.kills, plans.ended_processes, plans.full_disks, plans.removed_disks)
              if planned(trials.calls)}
    return type(name, (_FaultTest,), {"trials": trials, **tests})


def load_tests(loader, _tests, _pattern):
    return unittest.TestSuite(loader.loadTestsFromTestCase(_cases(name)) for name in COMMANDS)
