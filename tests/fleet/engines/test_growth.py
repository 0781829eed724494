"""The model of a cluster, where its answer is known."""

import sys
import unittest

from . import given

sys.path.insert(0, str(given.CHECKOUT / "bench/fleet"))

import cluster  # noqa: E402

NO_LIMIT = float("inf")


def simulate(**given_values):
    usual = {"images": 2000, "tasks": 500, "cores": 8, "bandwidth": NO_LIMIT, "seconds": 1.0, "size": 0.0,
             "dispatch": 0.0}
    return cluster.simulate(**(usual | given_values))


class GrowthTest(unittest.TestCase):
    def test_one_core_takes_the_sum_of_all(self):
        self.assertAlmostEqual(simulate(cores=1).seconds, 2000, delta=40)
        self.assertAlmostEqual(simulate(cores=1).cores_busy, 1)

    def test_cores_share_the_work(self):
        self.assertAlmostEqual(simulate(cores=10).seconds, simulate(cores=1).seconds / 10, delta=6)

    def test_more_cores_than_tasks_change_nothing(self):
        self.assertEqual(simulate(cores=500).seconds, simulate(cores=5000).seconds)

    def test_a_slow_store_is_the_limit(self):
        run = simulate(cores=100, seconds=0.001, size=1e6, bandwidth=1e7)
        self.assertAlmostEqual(run.seconds, 200, delta=4)
        self.assertGreater(run.store_busy, 0.99)

    def test_a_store_that_is_never_shared_adds_its_time(self):
        run = simulate(cores=1, seconds=1, size=1e7, bandwidth=1e7)
        self.assertAlmostEqual(run.seconds, 4000, delta=80)
        self.assertAlmostEqual(run.store_busy, 0.5, delta=0.02)

    def test_tasks_that_start_slowly_are_the_limit(self):
        self.assertAlmostEqual(simulate(cores=500, seconds=0.001, dispatch=1).seconds, 500, delta=1)

    def test_it_is_the_same_each_time(self):
        self.assertEqual(simulate(size=1e6, bandwidth=1e8), simulate(size=1e6, bandwidth=1e8))
