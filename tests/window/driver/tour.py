"""A walk through all pages and dialogs of the window."""

from .screen import BOX, SMALL
from .waiting import wait_until


def tour(screen, texts):
    """Goes through all pages, with pictures."""
    screen.see("the window speaks the language",
               lambda window: window.find("Button", texts["cmd_start"]))
    screen.picture("options")
    screen.press(texts["chameleonButton7"])
    screen.see("the exclusions", lambda window: window.find("Button", texts["chameleonButton5"]))
    screen.press(texts["chameleonButton5"])
    screen.see("the dialog of an exclusion", name=SMALL)
    screen.picture("exclusion")
    screen.display.keys("Escape")
    wait_until("the dialog is closed", lambda: not screen.window(SMALL))
    screen.picture("exclusions")
    screen.press(texts["chameleonButton1"])
    screen.see("the undo options", lambda window: window.find("Button", texts["chameleonButton2"]))
    screen.picture("undo-options")
    screen.press(texts["cmd_start"])
    bad = texts["View2.ColumnHeaders.Item(2)"]
    screen.see("the results", lambda window: window.list(bad) and window.says(texts["Label10"]) and
               window.find("Button", texts["cmd_start"]).enabled, seconds=60)
    screen.click_row(bad, "OldTool")
    screen.picture("results")
    screen.press(texts["cmd_fix"])
    screen.see("the question", name=BOX)
    screen.picture("question")
    screen.display.keys("Escape")
    wait_until("the question is closed", lambda: not screen.window(BOX))
    screen.click_row(bad, "OldTool", button=3)
    screen.picture("menu")
    screen.display.keys("Escape")
    screen.press_picture("chameleonButton18")
    screen.see("the About dialog", name=SMALL)
    screen.picture("about")
    screen.display.keys("Escape")
    wait_until("the About dialog is closed", lambda: not screen.window(SMALL))
    screen.press_picture("chameleonButton13")
    screen.see("the picker", lambda window: window.find("Static", "Deutsch"))
    screen.picture("picker")
