"""Makes images of disks for tests that have them mounted."""

import os
import shutil
import subprocess
import time
from pathlib import Path

# So long that only a driver that hangs needs it.
PATIENCE = 60


def _run(*words, **more):
    subprocess.run([str(word) for word in words], check=True, capture_output=True, text=True, **more)


def make_partitioned(root, volume, mounted, disk, megabytes):
    """A disk with one partition of NTFS that holds what is in `root`; `volume` and `mounted` are names
    that are used for it. Raises OSError or CalledProcessError where that cannot be done."""
    sectors, start = megabytes * 2048, 2048
    mounted.mkdir()
    volume.touch()
    os.truncate(volume, sectors * 512)
    _run("mkntfs", "-F", "-Q", "-q", "-s", 512, "-p", start, "-H", 1, "-S", 1, volume)
    _run("ntfs-3g", volume, mounted)
    try:
        shutil.copytree(root, mounted, dirs_exist_ok=True)
    finally:
        _run("umount", mounted)
    _wait_until_closed(volume)
    disk.touch()
    os.truncate(disk, (start + sectors + 2048) * 512)
    _run("sfdisk", "-q", disk, input=f"start={start}, size={sectors}, type=7\n")
    with open(disk, "r+b") as file:
        file.seek(start * 512)
        file.write(volume.read_bytes())


def convert(disk, form, image):
    _run("qemu-img", "convert", "-f", "raw", "-O", form, disk, image)


def _wait_until_closed(volume):
    """The driver goes on writing in the background until it has let go of the file."""
    end = time.monotonic() + PATIENCE
    while _is_open(volume):
        if time.monotonic() > end:
            raise OSError(f"waited {PATIENCE} s in vain for {volume}")
        time.sleep(0.02)


def _is_open(file):
    for descriptors in Path("/proc").glob("[0-9]*/fd"):
        try:
            if any(os.readlink(one) == str(file) for one in descriptors.iterdir()):
                return True
        except OSError:
            continue  # it has ended
    return False
