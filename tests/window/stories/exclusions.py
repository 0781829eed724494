"""Exclude a finding, scan again, remove the exclusion."""

from driver.scene import told_always
from driver.screen import BOX, RESULTS_LIST, SMALL
from driver.waiting import expect, wait_until

FONT = "Quill Script (TrueType)"
FONTS = r"HKEY_LOCAL_MACHINE\Software\Microsoft\windows\currentversion\fonts"
KEYS = "Registration Key"


def _has(window, name):
    return name in window.list(RESULTS_LIST).column("Invalid Data Location")


@told_always
def what_is_excluded_is_not_found_again(scene):
    screen = scene.screen
    # The demo machine has exclusions of its own.
    before = scene.box.file("exregscan.txt")
    screen.start()
    screen.press("Start")
    expect("the font is found", _has(screen.see_results(), FONT), True)
    screen.click_row(RESULTS_LIST, FONT)
    screen.press_exclude()
    screen.see("the row has gone", lambda window: not _has(window, FONT))
    screen.picture("excluded")
    expect("the file of exclusions", scene.box.file("exregscan.txt"),
           before + FONTS.encode() + b"\r\n")
    screen.press("refresh")
    screen.see_results()
    screen.see("no font is found", lambda window: not _has(window, "Unnamed Face (TrueType)"))
    screen.picture("scanned-again")

    screen.press("Exclusions")
    screen.click_row(KEYS, FONTS)
    screen.picture("exclusions")
    screen.press("Remove")
    screen.picture("question")
    screen.press("Yes", BOX)
    screen.see("the key has gone", lambda window: FONTS not in window.list(KEYS).column(KEYS))
    screen.press("Start")
    expect("the font is found again", _has(screen.see_results(), FONT), True)


def a_key_is_typed_and_edited(scene):
    screen = scene.screen
    screen.start()
    screen.press("Exclusions")
    screen.press("Add Keys")
    screen.see("the dialog", name=SMALL)
    screen.display.type("HKEY_CURRENT_USER")
    screen.see("the key is typed", lambda dialog: dialog.find("Edit", "HKEY_CURRENT_USER"), SMALL)
    screen.picture("dialog")
    screen.press("Add Key", SMALL)
    screen.click_row(KEYS, "HKEY_CURRENT_USER")
    screen.press("Edit Key")
    screen.see("the key to edit", lambda dialog: dialog.find("Edit", "HKEY_CURRENT_USER"), SMALL)
    screen.display.keys("End")
    screen.display.type("\\Software")
    screen.see("the rest is typed", lambda dialog: dialog.find("Edit", "HKEY_CURRENT_USER\\Software"), SMALL)
    screen.press("Add Key", SMALL)
    screen.row(KEYS, "HKEY_CURRENT_USER\\Software")
    screen.picture("edited")
    wait_until("the file holds it", lambda: b"HKEY_CURRENT_USER\\Software\r\n" in
               scene.box.file("exregscan.txt"))
