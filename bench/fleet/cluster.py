"""A cluster as a model: cores that scan, and a store that all of them read from."""

import heapq
import math
import random
from dataclasses import dataclass

# How unlike each other images are: the deviation of the logarithm of their size and of their time.
SPREAD = 0.4
SEED = 20


@dataclass
class Run:
    seconds: float
    cores_busy: float
    store_busy: float


def _factors(random_numbers, count):
    """Numbers around 1, whose mean is 1."""
    return [math.exp(random_numbers.gauss(-SPREAD * SPREAD / 2, SPREAD)) for _ in range(count)]


def simulate(images, tasks, cores, bandwidth, seconds, size, dispatch):
    """`images` are shared out to `tasks`, which start one after the other, `dispatch` seconds apart,
    whenever a core is free. An image takes `seconds` of a processor and `size` bytes of the store;
    whoever reads at a time shares its `bandwidth`. A core waits while it reads."""
    random_numbers = random.Random(SEED)
    work = [seconds * factor for factor in _factors(random_numbers, images)]
    bytes_read = [size * factor for factor in _factors(random_numbers, images)]
    waiting = [list(range(task, images, tasks)) for task in range(min(tasks, images))][::-1]
    free, running = cores, []
    events = []  # (time, what, task): a task starts, or has computed
    readers = []  # (progress of the store at which it has read all, task)
    now = progress = store_time = core_time = 0.0
    next_start = 0.0

    def start_tasks():
        nonlocal free, next_start
        while free and waiting:
            free -= 1
            next_start = max(now, next_start) + dispatch
            heapq.heappush(events, (next_start, "start", len(running)))
            running.append(waiting.pop())

    def compute(task):
        nonlocal core_time
        image = running[task][0]
        core_time += work[image]
        heapq.heappush(events, (now + work[image], "read", task))

    def finish(task):
        nonlocal free
        running[task].pop(0)
        if running[task]:
            compute(task)
        else:
            free += 1
            start_tasks()

    start_tasks()
    while events or readers:
        # When the next reader is done, if nobody else comes.
        done = now + (readers[0][0] - progress) * len(readers) / bandwidth if readers else math.inf
        time = min(done, events[0][0]) if events else done
        if readers:
            progress += (time - now) * bandwidth / len(readers) if time < done else readers[0][0] - progress
            store_time += time - now
        now = time
        if time == done:
            finish(heapq.heappop(readers)[1])
            continue
        _, what, task = heapq.heappop(events)
        if what == "start":
            compute(task)
        elif bytes_read[running[task][0]] > 0 and bandwidth < math.inf:
            heapq.heappush(readers, (progress + bytes_read[running[task][0]], task))
        else:
            finish(task)
    return Run(now, core_time / (now * cores), store_time / now)
