"""What a run with a fault in it owes."""

import json
import re

from . import given

KILLED = 128 + 9
# Of images: for each a result or a failure.
RESULTS = "results"
_RESULT, _FAILURE = ".json", ".error"
# Files that were to replace others when their writer was stopped. Nobody minds them.
_BESIDE = re.compile(r"(^|/)\.[^/]*\.zelvreg-\w{6}$|\.\d+\.new$")
# Say which files are still to be replaced; the next command ends that.
_NOTES = ("machine/saving.txt", "disk/zelvreg-saving.txt")
# The line of a result that says so.
_SAID = r'"(machine|disk): (an earlier command|a save that) was stopped while it [^"]*"'
_IN_ORDER = re.compile(rf'\[\n *{_SAID}\n *\]|\n *{_SAID},|,\n *{_SAID}')
# Lines that tell of a scan, not of a failure.
_OF_SCAN = re.compile(r"zelvreg: (This is implausible: |\d+ surely dead, |\d+ repaired, |none |nothing )")
# A text for people beside each repair, on which nothing depends.
_COPIES = "/backup/fixreg"
# What is written of a result for people.
_REPORTS = ("report.txt", "page.html")
# A second repair at the same time gives its safety export another name.
_SECOND_EXPORT = re.compile(rb"(\d{8}-\d{6})-\d\b")
# Told of a hive before what follows from it.
_OF_LOGS = ": was not shut down cleanly; its logs cannot be taken over: "
# A failure of one image; another one may fail for the same reason.
_OF_IMAGE = re.compile(r"zelvreg: /store/[^:]*: ")
# What a repair notes for itself.
_OWN_KEY = "\\zelvane\\"


# A disk has no clock that stands still: names have the time of a run.
_TIMES = re.compile(r"\d{8}-\d{6}(-\d)?|\d\d_\d\d_\d{4}_\d\d\.\d\d\.\d\d|"
                    r"\d\d\.\d\d\.\d{4} t [\d.]{8}( [\d:]{8})?")
_TIMES_IN_HIVE = re.compile(_TIMES.pattern.encode())
_WITH_TIMES = re.compile(r"/backup/|\.bak")


def content(folder):
    """All files below a folder by their paths, and the folders, which have no content."""
    found = {}
    for path in folder.rglob("*"):
        name = str(path.relative_to(folder))
        here = path.read_bytes() if path.is_file() else None
        if name.startswith("disk/"):
            is_hive = here is not None and here.startswith(b"regf")
            if is_hive:
                # Two entries of one second have one label.
                lines = _TIMES_IN_HIVE.sub(b"TIME", given.shown(path, here)).split(b"\n")
                here = b"\n".join(sorted({*lines}))
            elif here and _WITH_TIMES.search(name):
                here = b""
            name = _TIMES.sub("TIME", name)
        elif here and _is_of_image(name):
            here = here.replace(bytes(folder), b"")
        found[name] = here
    return found


def _is_of_image(name, ending=""):
    return name.startswith(RESULTS + "/") and name.endswith(ending) and not _BESIDE.search(name)


def _differing(one, other):
    return sorted(name for name in {*one, *other} if one.get(name, "") != other.get(name, ""))


def _difference(wanted, got):
    wanted, got = wanted.splitlines(), got.splitlines()
    missing = [line for line in wanted if line not in got]
    more = [line for line in got if line not in wanted]
    return f": lacks {missing[:2]}, has {more[:2]}"


def _findings(out):
    """By what they are of; none if the output is no result."""
    try:
        rows = json.loads(out)["findings"]
    except (ValueError, KeyError, TypeError):
        return None
    names = ("location", "badValue", "kindCode", "rootName", "subKey")
    return {tuple(row[name] for name in names): row for row in rows}


def _is_told_in_rows(wanted, got):
    """Whether two results differ only by rows that say that they are not sure."""
    wanted, got = _findings(wanted), _findings(got)
    if wanted is None or got is None:
        return False
    known = {name for name, row in wanted.items() if row["confidence"] != "unsure"}
    return known <= got.keys() and all(row == wanted.get(name) or row["confidence"] == "unsure"
                                       for name, row in got.items())


def _is_partial(wanted, got):
    """Whether a result of an image says itself what it does not know."""
    if _is_told_in_rows(wanted, got):
        return True
    warnings = [set(json.loads(result)["warnings"]) for result in (wanted, got)]
    return not warnings[1] <= warnings[0] and _findings(got).keys() <= _findings(wanted).keys()


def _settled(files):
    """What counts when a command was made again after it had failed: not the safety exports that it has
    left, nor the access lists that files get by themselves where a stopped command has made them."""
    settled = {}
    for name, here in files.items():
        if not _BESIDE.search(name) and _COPIES not in name and not _SECOND_EXPORT.search(name.encode()):
            if name.endswith("security.txt"):
                here = [line for line in here.splitlines() if line.startswith(b"HKEY_")]
            settled[name] = _SECOND_EXPORT.sub(rb"\1", here) if name.endswith(".reg") else here
    return settled


def _entries(registry):
    """The lines of a registry, each with its key."""
    key, entries = "", set()
    for line in registry.decode("utf-8").splitlines():
        key = line if line.startswith("[") else key
        entries.add((key, line))
    return {entry for entry in entries if _OWN_KEY not in entry[0].lower()}


def _has_more_than_one(told):
    lines = [line for line in told if _OF_LOGS not in line]
    images = {found and found[0] for found in map(_OF_IMAGE.match, lines)}
    return len(lines) > len(images)


class Judge:
    """Of one command: how the disk was, what an undisturbed run gives, and what the next one does."""

    def __init__(self, start, ended, after, again, after_again, folder):
        self.start, self.ended, self.after = start, _plain(ended, folder), after
        self.again = _plain(again, folder)
        self.has_killed = False
        self.settled, self.settled_again = _settled(after), _settled(after_again)

    def of_disturbed(self, plan, ended, left, folder):
        ended = _plain(ended, folder)
        # A folder is looked at once in each tick of the clock, so that some runs never come to the call.
        if plan.kills and ended.status == KILLED:
            self.has_killed = True
            return self._of_files(plan, left, None)
        told = [line for line in ended.errors if line not in self.ended.errors]
        told = [line for line in told if not _OF_SCAN.match(line)]
        tells_in_rows = _is_told_in_rows(self.ended.out, ended.out)
        found = self._of_files(plan, {name: here for name, here in left.items()
                                      if not tells_in_rows or name not in _REPORTS}, told)
        if ended.status not in (0, 1, 2):
            found.append(f"status {ended.status}, {ended.errors}")
        elif ended.status == 2 and self.ended.status != 2:
            if not told or any(not line.startswith("zelvreg: ") for line in told):
                found.append(f"no clear line: {ended.errors}")
            elif _has_more_than_one(told) and not plan.may_leave:
                found.append(f"more than one line: {told}")
            if plan.is_no_fault:
                found.append(f"fails though nothing is wrong: {told}")
        elif not told:
            found += self._of_silence(ended, left, tells_in_rows)
        return found

    def _of_silence(self, ended, left, tells_in_rows):
        """What says nothing has done all, but for what its rows tell."""
        if ended.out != self.ended.out:
            return [] if tells_in_rows else [
                "says nothing, but its output differs" + _difference(self.ended.out, ended.out)]
        left = {name: self.after[name] if self._is_partial(name, here) else here
                for name, here in left.items() if name not in _NOTES}
        found = [f"says nothing, but {name} is not as it should be"
                 for name in _differing(_settled(left), self.settled)]
        if ended.status != self.ended.status:
            found.append(f"status {ended.status}, without a word")
        return found

    def _of_files(self, plan, left, told):
        """`told` is None after a run that could say nothing."""
        found = [f"gone: {name}" for name in self.start
                 if name in self.after and name not in left and name not in _REPORTS
                 and name.replace(_RESULT, _FAILURE) not in left]
        for name, here in left.items():
            if _is_of_image(name) and here not in (self.start.get(name), self.after.get(name)):
                found += self._of_image(name, here, told)
            elif name not in self.start and name not in self.after:
                is_tidied = plan.kills or plan.may_leave or any(note in left for note in _NOTES)
                if not is_tidied or (name not in _NOTES and not _BESIDE.search(name)):
                    found.append(f"left over: {name}")
            elif here not in (self.start.get(name, here), self.after.get(name, here)):
                if not name.endswith(".reg") or not self._is_between(name, here):
                    found.append(f"neither old nor new: {name}")
        return found

    def _of_image(self, name, here, told):
        """What is neither the old result nor the new one says what is missing, or is a failure that was told."""
        if name.endswith(_RESULT):
            return [] if self._is_partial(name, here) else [f"neither old nor new: {name}"]
        lines = here.decode("utf-8").splitlines()
        is_told = len(lines) == 1 and (told is None or "zelvreg: " + lines[0] in told)
        return [] if is_told else [f"{name} is not what was told: {lines}"]

    def _is_partial(self, name, here):
        return (_is_of_image(name, _RESULT) and here not in (self.start.get(name), self.after[name])
                and _is_partial(self.after[name], here))

    def has_partial_results(self, left):
        return any(self._is_partial(name, here) for name, here in left.items())

    def _is_between(self, name, here):
        """Whether a repair did a part of what it does without a fault, and nothing else."""
        old, new, here = (_entries(text or b"") for text in (self.start.get(name), self.after.get(name), here))
        return old - here <= old - new and here - old <= new - old

    def of_next(self, plan, ended, left, folder):
        """Whether the next run does what a run does on the disk as it was, or as it became."""
        ended = _plain(ended, folder)
        left = _settled({name: here for name, here in left.items()
                         if not plan.may_leave or name in self.after or name not in self.start})
        found = []
        for wanted, after in ((self.ended, self.settled), (self.again, self.settled_again)):
            problems = [f"next run leaves another {name}" for name in _differing(left, after)]
            if ended.status != wanted.status:
                problems.append(f"next run has status {ended.status}, {ended.errors}")
            elif ended.out != wanted.out:
                problems.append("next run has another output" + _difference(wanted.out, ended.out))
            if not problems:
                return []
            found = min(found or problems, problems, key=len)
        return found


def _plain(ended, folder):
    """Without the name of the folder, and what it says of an earlier command."""
    out = _IN_ORDER.sub(lambda found: "[]" if found[0].startswith("[") else "", ended.out.replace(str(folder), ""))
    return ended._replace(out=out, errors=[line.replace(str(folder), "") for line in ended.errors])
