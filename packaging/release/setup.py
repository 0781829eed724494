"""The set-up program, made by NSIS."""

from . import windows
from .product import (EVENT_KEY, EVENT_PROGRAM, EVENT_TYPES, FOLDER_ACCESS, PACKAGING, PASSING,
                      PROGRAM_KEY, facts, run)


def removal(release):
    """The lines that remove each file that the set-up program has put there, deepest first. One that is
    in use, such as the open help, goes when Windows starts the next time."""
    lines = []
    for path in reversed(windows.files(release)):
        name = "$INSTDIR\\" + str(path).replace("/", "\\")
        lines.append(f'{"RMDir" if (release.stage / path).is_dir() else "Delete"} /REBOOTOK "{name}"')
    lines += [f'Delete "$INSTDIR\\{name}"' for name in PASSING]
    return "\ufeff" + "\n".join(lines) + "\n"


def make(release):
    generated = release.work / "setup"
    generated.mkdir()
    (generated / "remove.nsh").write_text(removal(release), "utf-8")
    target = release.product("-setup.exe")
    about = facts()
    settings = {
        "VERSION": release.version, "NUMBERS": release.version + ".0", "STAGE": release.stage,
        "GENERATED": generated, "OUT": target, "SIZE": windows.size_in_kilobytes(release),
        "ICON": release.windows / "pictures" / "zelvreg.ico",
        "PROGRAM_KEY": PROGRAM_KEY, "FOLDER_ACCESS": FOLDER_ACCESS,
        "EVENT_KEY": EVENT_KEY, "EVENT_PROGRAM": EVENT_PROGRAM, "EVENT_TYPES": EVENT_TYPES,
        "PUBLISHER": about["publisher"], "HOMEPAGE": about["homepage"],
    }
    run("makensis", "-V2", "-WX", *(f"-D{name}={value}" for name, value in settings.items()),
        PACKAGING / "windows" / "setup.nsi")
    windows.sign(release, target)
    return target
