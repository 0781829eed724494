"""What the controls of a window tell screen readers, beside the list of what they should."""

from collections import namedtuple
from pathlib import Path

from .screen import MAIN, plain
from .waiting import expect

# The system's numbers.
ROLES = {20: "group", 30: "link", 33: "list", 38: "page", 40: "graphic", 42: "text field",
         43: "button", 44: "check box", 45: "option", 46: "combo box"}
CHECKED = 0x10

Told = namedtuple("Told", "role name value states")


def _expected():
    """The lines of the list, by page."""
    pages = {}
    for line in (Path(__file__).resolve().parent.parent / "names").read_text("utf-8").splitlines():
        if line and not line.startswith("#"):
            page, *facts = (part.strip() for part in line.split("|"))
            pages.setdefault(page, []).append(Told(*facts, *[""] * (4 - len(facts))))
    return pages


EXPECTED = _expected()


def _in(language, text):
    return text.strip('"') if not text or text.startswith('"') else plain(language[text])


def _wanted(language, *pages):
    return [told._replace(name=_in(language, told.name), value=_in(language, told.value))
            for page in pages for told in EXPECTED[page]]


def _told(window):
    """What can be used or has a name. Text that only stands there is read by its own window."""
    for control in window.controls:
        facts = control.accessible
        role = facts and ROLES.get(facts["role"])
        if role and (facts["name"] or role not in ("group", "graphic")):
            yield Told(role, facts["name"].strip(), facts["value"],
                       "checked" if facts["state"] & CHECKED else "")


def compare(screen, language, *pages, name=MAIN):
    """Expects what the controls of a window tell screen readers, page by page."""
    found, wanted = list(_told(screen.accessible(name))), _wanted(language, *pages)
    for each, told in zip(wanted, found):
        expect(f"{language.name}, {pages[-1]}", told, each)
    expect(f"{language.name}, {pages[-1]}", found[len(wanted):], wanted[len(found):])


def _choose(screen, language):
    screen.press_picture("chameleonButton13")
    screen.click_text(language.name)
    screen.is_mirrored = language.is_mirrored
    screen.see(f"the window speaks {language.name}", lambda window: window.find(
        "Button", plain(language["cmd_report"])) and not window.find("Static", "Deutsch"))
