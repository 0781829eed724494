"""Waits for what can be seen, never for a fixed time."""

import time


class Unmet(Exception):
    """Something that was expected did not happen."""


def wait_until(expected, look, seconds=20):
    """Calls `look` until it returns something true, which is returned."""
    deadline = time.monotonic() + seconds
    while True:
        found = look()
        if found:
            return found
        if time.monotonic() > deadline:
            raise Unmet(f"expected within {seconds} s: {expected}")
        time.sleep(0.05)


def expect(expected, found, wanted):
    """Checks that `found` is what was `wanted`; for sets it reports only the differences."""
    if found == wanted:
        return
    if isinstance(found, (set, frozenset)):
        lines = [f"  missing: {each}" for each in sorted(wanted - found)]
        lines += [f"  more:    {each}" for each in sorted(found - wanted)]
        raise Unmet("\n".join([f"expected: {expected}", *lines]))
    raise Unmet(f"expected: {expected}\n  wanted: {wanted!r}\n  found:  {found!r}")
