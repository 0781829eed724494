"""Makes all packages of a release; tools/release builds what is in them."""

import argparse
import os
import shutil
import sys
import tempfile
from pathlib import Path

from . import debian, installer, licences, portable, setup, windows, winget
from .product import Release, ReleaseError, news, sha256, version_of_checkout

# What each product is for, in the order in which they are made.
MAKERS = (
    (setup.make, "set-up program for Windows"),
    (installer.make, "package for the Windows Installer"),
    (portable.make, "portable copy for Windows"),
    (debian.make, "console program for Debian"),
)


def checksums(release, products):
    target = release.out / "SHA256SUMS"
    target.write_text("".join(f"{sha256(path)}  {path.name}\n"
                              for path in sorted(products)), "utf-8")
    return target


def make(release):
    """The products, each with what it is for."""
    news(release.version)
    windows.stage(release)
    made = [(maker(release), what) for maker, what in MAKERS]
    products = [path for path, _ in made]
    made.append((licences.make(release, products), "what is inside, and its licences"))
    made.append((checksums(release, [path for path, _ in made]), "checksums of these files"))
    made.append((winget.make(release), "manifests for winget"))
    return made


def tell(release, out, made):
    state = "signed" if windows.is_signed() else (
        f"NOT SIGNED: {windows.CERTIFICATE} names no certificate for the files for Windows")
    print(f"zelvreg {release.version}, {state}")
    for path, what in made:
        size = f"{path.stat().st_size // 1024:6} KB" if path.is_file() else " " * 9
        print(f"{size}  {path.name:34} {what}")
    print(f"all of it is in {out}")


def main():
    parser = argparse.ArgumentParser(prog="tools/release", description=__doc__)
    for name in ("windows", "out"):
        parser.add_argument(f"--{name}", type=Path, required=True)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="zelvreg-release.") as work:
        # Beside its place, so that a release is there as a whole or not at all.
        out = options.out.parent / (options.out.name + ".making")
        shutil.rmtree(out, ignore_errors=True)
        out.mkdir(parents=True)
        release = Release(version_of_checkout(), int(os.environ["SOURCE_DATE_EPOCH"]),
                          options.windows, Path(work), out)
        try:
            made = make(release)
        except ReleaseError as error:
            shutil.rmtree(out)
            print(f"release: {error}", file=sys.stderr)
            return 2
        out.rename(options.out)
        tell(release, options.out, [(options.out / path.name, what) for path, what in made])
    return 0


if __name__ == "__main__":
    sys.exit(main())
