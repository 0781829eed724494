"""Findings as sets that can be compared, whichever program printed them and wherever it ran."""

import json
import re
from pathlib import Path

from .box import CHECKOUT

FIELDS = ("location", "badValue", "kindCode", "rootName", "subKey")
USER = re.compile(r"^S-1-5-21(-\d+){4}(?=_Classes|\\|$)")
APP_PATHS = r"SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths"
# In the demo machine's registry, what follows is the name of a class.
USERS_CLASS = re.compile(r"^\[HKEY_CURRENT_USER\\Software\\Classes\\(?:CLSID\\)?([^\\\]]+)",
                         re.MULTILINE)


def plain(finding):
    """A finding without what differs between computers: the SID of the current user, and the view
    in which App Paths was read, since Wine has only one view of it."""
    location, bad, kind, root, key = finding
    key = USER.sub("USER", key)
    if key.lower() == APP_PATHS.replace("SOFTWARE\\", "SOFTWARE\\Wow6432Node\\").lower():
        key = APP_PATHS
    return location, bad, kind, root, key


def _of(finding):
    return plain(tuple(finding[name] for name in FIELDS))


def of_json(text):
    return {_of(each) for each in json.loads(text)["findings"]}


def confidences_of_json(text):
    """{finding: "sure", "likely" or "unsure"}"""
    return {_of(each): each["confidence"] for each in json.loads(text)["findings"]}


def of_list(results):
    """The findings of the window's results list; its columns are their fields."""
    return {plain(tuple(row["cells"])) for row in results.rows}


def ticked_of_list(results):
    """Those of them that are ticked."""
    return {plain(tuple(row["cells"])) for row in results.rows if row["ticked"]}


def seen_in_wine(native):
    """Those of the native program's findings that Wine can have: its HKEY_CLASSES_ROOT shows only
    the computer's classes, so a class that only the user has is not found there."""
    registry = (CHECKOUT / "demo" / "machine" / "registry.reg").read_text("utf-8")
    users = set(USERS_CLASS.findall(registry))

    def is_users(finding):
        location, _, _, root, key = finding
        return root == "HKEY_CLASSES_ROOT" and (location in users or any(
            name in key.split("\\") for name in users))
    return {each for each in native if not is_users(each)}


def expected_of_demo():
    """What the native program finds on the demo machine; another test checks that it does."""
    return of_json(Path(CHECKOUT / "demo" / "scan.json").read_text("utf-8"))
