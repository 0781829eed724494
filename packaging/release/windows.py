"""What all packages for Windows hold, in one folder; and their signatures."""

import os
from pathlib import Path

from . import licences
from .product import CHECKOUT, ReleaseError, copy, need, run, settle

PROGRAMS = ("zelvreg.exe", "zelvreg-console.exe", "zelvtrans.exe")
BESIDE_THEM = ("search.gif", "lang", "zelvhelp.chm", "zelvhelp-de.chm", "manual")
STRIP = "i686-w64-mingw32-strip"
# Where a time stamp comes from, so that a signature outlives its certificate.
CERTIFICATE, PASSWORD, TIME_SERVER = ("ZELVREG_SIGN_CERTIFICATE", "ZELVREG_SIGN_PASSWORD_FILE",
                                      "ZELVREG_SIGN_TIME_SERVER")


def is_signed():
    return bool(os.environ.get(CERTIFICATE))


def sign(release, path):
    """Signs a file in place when a certificate is given; else does nothing."""
    if not is_signed():
        return
    certificate = need(Path(os.environ[CERTIFICATE]), f"{CERTIFICATE} names a PKCS #12 file")
    password = os.environ.get(PASSWORD)
    server = os.environ.get(TIME_SERVER)
    signed = release.work / ("signed-" + path.name)
    signed.unlink(missing_ok=True)
    run("osslsigncode", "sign", "-pkcs12", certificate,
        *(["-readpass", password] if password else []), "-h", "sha256", "-n", "Fix Registry Problems",
        *(["-ts", server] if server else ["-time", str(release.epoch)]), "-in", path, "-out", signed)
    signed.replace(path)


def stage(release):
    """Fills release.stage."""
    folder = release.stage
    folder.mkdir(parents=True)
    for name in PROGRAMS:
        source = need(release.windows / name, "build it first")
        run(STRIP, "--strip-all", "-o", folder / name, source)
        sign(release, folder / name)
    for name in BESIDE_THEM:
        copy(need(release.windows / name, "build it first"), folder / name)
    copy(CHECKOUT / "docs" / "schema", folder / "schema")
    (folder / "LICENSE.txt").write_bytes(with_dos_lines(CHECKOUT / "LICENSE"))
    (folder / "NOTICES.txt").write_bytes(licences.notices().replace("\n", "\r\n").encode("utf-8"))
    settle(folder, release.epoch)


def with_dos_lines(path):
    return path.read_bytes().replace(b"\n", b"\r\n")


def files(release):
    """What is in the stage, as paths in it, folders before what is in them."""
    return [path.relative_to(release.stage) for path in sorted(release.stage.rglob("*"))]


def size_in_kilobytes(release):
    total = sum(path.stat().st_size for path in release.stage.rglob("*") if path.is_file())
    if not total:
        raise ReleaseError("there is nothing to pack")
    return total // 1024
