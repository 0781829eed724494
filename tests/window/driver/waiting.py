"""Waiting for what can be seen, never for a time."""

import time


class Unmet(Exception):
    """What was expected and did not come about."""


def wait_until(expected, look, seconds=20):
    """Looks again and again until `look` gives something true, which is returned."""
    deadline = time.monotonic() + seconds
    while True:
        found = look()
        if found:
            return found
        if time.monotonic() > deadline:
            raise Unmet(f"expected within {seconds} s: {expected}")
        time.sleep(0.05)


def expect(expected, found, wanted):
    """That `found` is what was `wanted`; of sets only the differences are told."""
    if found == wanted:
        return
    if isinstance(found, (set, frozenset)):
        lines = [f"  missing: {each}" for each in sorted(wanted - found)]
        lines += [f"  more:    {each}" for each in sorted(found - wanted)]
        raise Unmet("\n".join([f"expected: {expected}", *lines]))
    raise Unmet(f"expected: {expected}\n  wanted: {wanted!r}\n  found:  {found!r}")
