"""The Debian package of the console program."""

import os
import shutil
import subprocess
from email.utils import format_datetime

from .product import CHECKOUT, PACKAGING, copy, facts, news, run, settle


def changelog(release):
    about = facts()
    _, entries = news(release.version)
    lines = "\n".join(f"  * {entry}" for entry in wrapped(entries))
    return (f"zelvreg ({release.version}) unstable; urgency=medium\n\n{lines}\n\n"
            f" -- {about['publisher']} <{about['mail']}>  {format_datetime(release.time)}\n")


def wrapped(entries, width=74):
    """Each entry as lines of at most `width`; the later ones stand below the first word."""
    for entry in entries:
        lines = [""]
        for word in entry.split():
            if lines[-1] and len(lines[-1]) + 1 + len(word) > width:
                lines.append("")
            lines[-1] += (" " if lines[-1] else "") + word
        yield "\n    ".join(lines)


def filled(text):
    """The facts in the places that name them."""
    about = facts()
    for name in ("publisher", "mail", "homepage"):
        text = text.replace(f"@{name.upper()}@", about[name])
    terms = (CHECKOUT / "LICENSE").read_text("utf-8").split("\n\n", 2)[2]
    licence = "\n".join(f" {line}" if line else " ." for line in terms.rstrip().splitlines())
    return text.replace("@LICENCE@", licence)


def source(release):
    """The sources as they are checked in, with the folder `debian` where Debian looks for it."""
    folder = release.work / "source"
    folder.mkdir()
    names = subprocess.run(["git", "-C", CHECKOUT, "ls-files", "-z"], stdout=subprocess.PIPE,
                           check=True).stdout.split(b"\0")
    for name in map(os.fsdecode, filter(None, names)):
        if (CHECKOUT / name).is_file():
            target = folder / name
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(CHECKOUT / name, target)
    shutil.copytree(PACKAGING / "debian", folder / "debian", dirs_exist_ok=True)
    for name in ("control", "copyright"):
        path = folder / "debian" / name
        path.write_text(filled(path.read_text("utf-8")), "utf-8")
    (folder / "debian" / "changelog").write_text(changelog(release), "utf-8")
    copy(release.windows / "manual", folder / "debian" / "manual" / "manual")
    copy(release.windows / "zelvreg.1", folder / "debian" / "manual" / "zelvreg.1")
    settle(folder, release.epoch)
    return folder


def make(release):
    folder = source(release)
    # The compiler cache knows files by their paths below a folder, in which sources and objects lie
    # as they do in every other build.
    run("dpkg-buildpackage", "--build=binary", "--no-sign", "--no-pre-clean", cwd=folder, env={
        **os.environ, "SOURCE_DATE_EPOCH": str(release.epoch), "CCACHE_BASEDIR": str(release.work),
        "DEB_BUILD_OPTIONS": "noautodbgsym", "folder": "../native"})
    made = next(release.work.glob("zelvreg_*.deb"))
    target = release.out / made.name
    shutil.move(made, target)
    return target
