"""The portable zip: unpack it, start it, and take it along."""

import zipfile

from . import windows
from .product import CHECKOUT

SETTINGS = """\ufeff; This file makes zelvreg portable: it keeps its settings and its list of repairs here, and
; nothing in the registry. Keep the folder where only administrators can write: else zelvreg refuses to
; restore from it.
"""


def entry(release, name):
    info = zipfile.ZipInfo(f"zelvreg-{release.version}/{name}", release.time.timetuple()[:6])
    info.compress_type = zipfile.ZIP_DEFLATED
    info.create_system = 0  # as made on Windows
    return info


def make(release):
    target = release.product("-portable.zip")
    with zipfile.ZipFile(target, "w", compresslevel=9) as archive:
        for path in windows.files(release):
            if (release.stage / path).is_file():
                archive.writestr(entry(release, path.as_posix()), (release.stage / path).read_bytes())
        archive.writestr(entry(release, "zelvreg.ini"),
                         SETTINGS.replace("\n", "\r\n").encode("utf-8"))
        archive.writestr(entry(release, "CHANGES.txt"),
                         windows.with_dos_lines(CHECKOUT / "CHANGELOG.md"))
    return target
