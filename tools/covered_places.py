"""Which lines and branches of the sources ran, from what llvm-cov exports."""

import re
import subprocess
from dataclasses import dataclass, field
from pathlib import PurePosixPath


@dataclass(frozen=True)
class Place:
    """A line, or one of the two ways that a condition can go."""
    line: int
    column: int = 0
    way: str = ""

    def __str__(self):
        return f"{self.line}:{self.column} never {self.way}" if self.way else f"{self.line}"


@dataclass
class Source:
    """A source of a room: its path in the checkout, and for each place how often it ran."""
    path: str
    lines: dict = field(default_factory=dict)
    branches: dict = field(default_factory=dict)
    # The first and the last line of each function, with its linker's name.
    functions: list = field(default_factory=list)

    @property
    def room(self):
        return str(PurePosixPath(self.path).relative_to("src").parent)

    def missing(self):
        """The lines and branches that never ran; of a line that did not, not its branches."""
        lines = [line for line, count in self.lines.items() if not count]
        return [Place(line) for line in lines] + \
            [place for place, count in self.branches.items() if not count and place.line not in lines]

    def functions_at(self, line):
        """The linker's names of the innermost function at a line; of a template, all that it became."""
        around = [(last - first, name) for first, last, name in self.functions if first <= line <= last]
        return [name for size, name in around if size == min(around)[0]]


def lines_of(segments):
    """How often each line ran, by the rules of llvm-cov: its most frequent region, or the one that goes
    on from the lines before."""
    starts = {}
    for segment in segments:
        starts.setdefault(segment[0], []).append(segment)
    counts, before = {}, None
    last = max(starts, default=0)
    for line in range(min(starts, default=1), last + 1):
        here = starts.get(line, [])
        regions = [count for _, _, count, counted, entry, gap in here if entry and counted and not gap]
        skipped = here and not here[0][3] and here[0][4]
        if not skipped and (regions or (before and before[3])):
            counts[line] = max(regions + ([before[2]] if before and before[3] else []))
        if here:
            before = here[-1]
    return counts


def branches_of(branches):
    """How often each condition was true and false; all that a template became count together."""
    counts = {}
    for line, column, _, _, true, false, *_ in branches:
        for way, count in (("true", true), ("false", false)):
            place = Place(line, column, way)
            counts[place] = counts.get(place, 0) + count
    return counts


def in_checkout(name):
    """The path of a source that is reached through the link beside the build; None elsewhere."""
    found = re.search(r"/source/(src/.*)$", name)
    return found and found.group(1)


def sources_of(exported):
    """The sources by their path, from what was exported."""
    sources = {}
    for file in exported["files"]:
        path = in_checkout(file["filename"])
        if path:
            sources[path] = Source(path, lines_of(file["segments"]), branches_of(file["branches"]))
    for function in exported["functions"]:
        path = in_checkout(function["filenames"][0])
        if path in sources:
            first, last = function["regions"][0][0], function["regions"][0][2]
            sources[path].functions.append((first, last, function["name"]))
    return sources


def plain_name(demangled):
    """The name of a function without its parameters, or of the one that a lambda is in."""
    name = demangled.replace("(anonymous namespace)::", "").replace("zelvreg::", "")
    name = re.split(r"::(?:\$_|\{lambda)", name)[0]
    name = re.sub(r"\[abi:\w+\]", "", name)
    while "<" in name.replace("operator<", ""):
        shorter = re.sub(r"(?<!operator)<[^<>]*>", "", name)
        if shorter == name:
            break
        name = shorter
    return name.split("(")[0].split(" ")[-1] if "operator" not in name else name.split("(")[0]


def plain_names(names):
    """For each of the linker's names that of the function as its source has it."""
    names = sorted(set(names))
    # That of a function of one source alone begins with the source's name.
    shown = subprocess.run(["c++filt"], input="\n".join(name.split(":")[-1] for name in names), check=True, text=True,
                           stdout=subprocess.PIPE).stdout.splitlines()
    return {name: plain_name(text) for name, text in zip(names, shown)}
