"""Whether a picture still looks as it did: a coarse copy of each is kept, so that small differences
of fonts do not count and a change of the window does."""

import base64
import re
import subprocess
import zlib

from .box import CHECKOUT
from .display import TRAY_HEIGHT

KEPT = CHECKOUT / "tests" / "window" / "likeness.txt"
# The whole screen above the notification area, in so many cells, each as bright as its mean.
WIDTH, HEIGHT = 64, 44
NUMBERED = re.compile(r"(.+?)-\d+-")
# How bright, in steps of so much of 255; a cell has changed by two steps, and a picture when so many
# cells have.
STEP, CHANGED = 8, 5


def coarse(picture):
    cells = subprocess.run(
        ["convert", picture, "-gravity", "south", "-chop", f"0x{TRAY_HEIGHT}", "-colorspace", "Gray",
         "-resize", f"{WIDTH}x{HEIGHT}!", "-depth", "8", "gray:-"],
        check=True, stdout=subprocess.PIPE).stdout
    return bytes(cell // STEP for cell in cells)


def differing(one, other):
    """How many cells differ."""
    return sum(abs(left - right) > 1 for left, right in zip(one, other, strict=True))


def _story_of(name):
    """Before the number and the step, which may have dashes in it."""
    return NUMBERED.match(name).group(1)


def kept():
    """{name of a picture: its coarse copy}"""
    if not KEPT.exists():
        return {}
    lines = (line.split() for line in KEPT.read_text("ascii").splitlines())
    return {name: zlib.decompress(base64.b64decode(copy)) for name, copy in lines}


def keep(stories):
    """Keeps the copies of all pictures of these stories, {story: {name: copy}}, instead of those that
    were kept."""
    copies = {name: copy for name, copy in kept().items() if _story_of(name) not in stories}
    for of_story in stories.values():
        copies |= of_story
    lines = (f"{name} {base64.b64encode(zlib.compress(copy, 9)).decode('ascii')}\n"
             for name, copy in sorted(copies.items()))
    KEPT.write_text("".join(lines), "ascii")


def changes(copies, story, taken):
    """A line for each picture of a story that does not look as it did, or has come or gone. What was
    taken and has no copy did not stand still."""
    known = {name: copy for name, copy in kept().items() if _story_of(name) == story}
    lines = [f"the picture {name} is gone" for name in sorted(known.keys() - taken)]
    for name, copy in sorted(copies.items()):
        if name not in known:
            lines.append(f"the picture {name} is new")
        elif (count := differing(copy, known[name])) >= CHANGED:
            lines.append(f"the picture {name} looks different in {count} of {WIDTH * HEIGHT} places")
    return lines
