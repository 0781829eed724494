"""Which calls of a run are to fail, and how."""

from errno import (EACCES, EAGAIN, EDQUOT, EINTR, EIO, EMFILE, EMLINK, ENODEV, ENOENT, ENOLCK, ENOMEM, ENOSPC,
                   ENOTSUP, EPERM, EROFS, errorcode)
from typing import NamedTuple

# Of each kind of call: what a system answers that has a failing disk, a full one, one that is for reading
# only, no rights, too many open files; "short" does half of it, "end" reads nothing more.
DEEDS = {
    "access": (EIO, EACCES),
    "chdir": (EIO, EACCES),
    "clone": (ENOTSUP, EIO),
    "close": (EIO, EINTR),
    "create": (ENOSPC, EACCES, EROFS, EDQUOT, EMFILE, EIO),
    "exec": (ENOMEM, EACCES),
    "getxattr": (EIO, ENOTSUP, EACCES),
    "link": (EPERM, EIO, EMLINK, ENOSPC),
    # Not ENOENT: for the library that is the end of a folder that was removed.
    "list": (EIO, EACCES),
    "lock": (ENOLCK, EAGAIN),
    "map": (ENOMEM, ENODEV),
    "mkdir": (ENOSPC, EACCES, EROFS, EIO),
    "mode": (EPERM, EIO),
    "mount": (EPERM, EIO),
    "open": (EIO, EACCES, EMFILE, ENOENT),
    "owner": (EPERM, EIO),
    "read": (EIO, EINTR, "short", "end"),
    "readlink": (EIO, EACCES),
    "rename": (EIO, EACCES, ENOSPC, EROFS),
    "setxattr": (ENOTSUP, ENOSPC, EPERM),
    "start": (EAGAIN, ENOMEM),
    "stat": (EIO, EACCES),
    "statfs": (EIO,),
    "sync": (EIO, ENOSPC),
    "times": (EPERM, EIO),
    "truncate": (ENOSPC, EIO),
    "unlink": (EIO, EACCES, EROFS),
    "write": (ENOSPC, EIO, EDQUOT, EINTR, "short"),
}
# After which a disk is no longer what it was.
CHANGING = ("create", "link", "mkdir", "mode", "owner", "rename", "setxattr", "times", "truncate", "unlink", "write")


class Call(NamedTuple):
    kind: str  # with the name of the program in front if that is another one
    number: int  # among those of its kind, from 1
    bytes: int
    path: str
    is_on_disk: bool

    @staticmethod
    def read(line, disk):
        kind, number, size, path = line.split(" ", 3)
        return Call(kind, int(number), int(size), path, path.startswith(str(disk)))

    @property
    def group(self):
        """What is tried together: a kind of the program's own calls, or another program's calls."""
        return self.kind.split("/")[0]

    @property
    def changes(self):
        return self._bare in CHANGING

    @property
    def deeds(self):
        # Behind the end of an image there are zeros for those programs, which nobody can notice.
        return tuple(deed for deed in DEEDS[self._bare] if deed != "end" or self._bare == self.kind)

    @property
    def _bare(self):
        return self.kind.split("/")[-1]


class Plan(NamedTuple):
    """One run: options of the injector, and what they mean."""
    options: tuple
    meaning: str
    kills: bool = False
    may_leave: bool = False  # what it was to remove, since it cannot
    is_no_fault: bool = False  # a call may do less than it was asked for


def name_of(deed):
    return errorcode.get(deed, deed)


def of_group(calls, group):
    return [Plan(("--at", f"{call.kind}:{call.number}:{deed}"),
                 f"{call.kind} {call.number} {name_of(deed)}: {call.path}",
                 is_no_fault=deed == "short", may_leave=call.kind == "unlink")
            for call in calls if call.group == group for deed in call.deeds]


def kills(calls):
    """Killed before any call, and after those that change the disk: after any other is before the next."""
    return [_killed(call, when) for call in calls
            for when in ("before", "after") if when == "before" or call.changes]


def ended_processes(calls):
    """One of several processes is killed, and the others are not."""
    has_several = any(call.kind == "start" for call in calls)
    return [_killed(call, "alone") for call in calls if has_several]


def _killed(call, when):
    return Plan(("--at", f"{call.kind}:{call.number}:{when}"),
                f"killed {when} {call.kind} {call.number}: {call.path}", kills=True)


def full_disks(calls):
    """A disk that is full at each size at which something else happens: at the begin of each write, one
    byte later, in its middle, and one byte before its end."""
    sizes, total = set(), 0
    for call in calls:
        if call.kind == "write" and call.is_on_disk:
            sizes |= {total, total + 1, total + call.bytes // 2, total + call.bytes - 1}
            total += call.bytes
    return [Plan(("--room", str(size)), f"disk full after {size} of {total} bytes") for size in sorted(sizes)]


def removed_disks(calls):
    # Not ENOENT: a folder on which a disk was mounted is another disk, without its files.
    return [Plan(("--gone", f"{number}:{error}"), f"disk removed ({errorcode[error]}) before call {number}: "
                 f"{call.kind} {call.path}", may_leave=True)
            for number, call in enumerate((call for call in calls if call.is_on_disk), 1)
            for error in (EIO, ENODEV)]


def sample(plans, most):
    """So many of them, evenly, always the same."""
    if len(plans) <= most:
        return plans
    return [plans[place * len(plans) // most] for place in range(most)]
