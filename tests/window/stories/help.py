"""The help: which page F1 opens where, the book, and the pictures that the manual shows."""

import shutil

from driver.languages import language
from driver.scene import told_always
from driver.screen import BOX, RESULTS_LIST, ROWS_LIST, SMALL
from driver.tour import tour
from driver.waiting import expect, wait_until

BOOKS = ("zelvhelp.chm", "zelvhelp-de.chm")
# Stands in for the browser: notes which page it was to open.
BROWSER = ('[HKEY_LOCAL_MACHINE\\Software\\Classes\\.html]\n@="notedpage"\n\n'
           '[HKEY_LOCAL_MACHINE\\Software\\Classes\\notedpage\\shell\\open\\command]\n'
           '@="cmd.exe /c echo %1>>C:\\\\opened.txt"\n')


def _without_books(scene):
    """Pages open in the stand-in for a browser; returns a function that presses F1 and expects one.
    The stand-in may take the keyboard for a moment, so what is open then is closed by the mouse."""
    for book in BOOKS:
        (scene.box.folder / book).unlink()
    scene.box.add_to_registry(BROWSER)
    notes = scene.prefix / "drive_c" / "opened.txt"
    opened = []

    def read():
        if not notes.exists():
            return []
        return [line.strip().strip('"') for line in notes.read_text("cp1252").splitlines()]

    def press(page, name=None):
        if name:
            scene.screen.see("the window", name=name)
        scene.screen.display.keys("F1")
        wait_until(f"F1 opens {page}", lambda: len(read()) > len(opened), 20)
        opened[:] = read()
        expect("the page", opened[-1].rpartition("\\manual\\")[2], page.replace("/", "\\") + ".html")
    return press


def f1_opens_the_page_that_fits(scene):
    press = _without_books(scene)
    screen = scene.screen
    screen.start()
    press("en/options")
    screen.click_row(ROWS_LIST, "Firewall rules")
    press("en/firewall")
    screen.press("Exclude from search")
    screen.see("the exclusions", lambda window: window.find("Button", "Add Keys"))
    press("en/exclusions")
    screen.press("Add Keys")
    press("en/exclusion", SMALL)
    screen.press("Cancel", SMALL)
    wait_until("the dialog is closed", lambda: not screen.window(SMALL))
    screen.press("Manage undo options")
    screen.see("the undo options", lambda window: window.find("Button", "Undo Selected Changes"))
    press("en/undo")
    screen.press("Start")
    screen.see_results()
    screen.click_row(RESULTS_LIST, "Quill Script (TrueType)")
    press("en/results")
    screen.click_row(RESULTS_LIST, "Quill Script (TrueType)", button=3)
    press("en/results")
    screen.click_row(RESULTS_LIST, "Small Fonts")
    screen.click_row(RESULTS_LIST, "Quill Script (TrueType)")
    screen.press("Fix Selected")
    press("en/messages", BOX)
    screen.press("No", BOX)
    wait_until("the question is closed", lambda: not screen.window(BOX))
    screen.press_picture("chameleonButton18")
    press("en/about", SMALL)
    left, top, width, _ = screen.window(SMALL).place
    screen.display.click(left + width - 26, top + 22)
    wait_until("the About dialog is closed", lambda: not screen.window(SMALL))
    screen.press_picture("chameleonButton13")
    screen.see("the picker", lambda window: window.find("Static", "Deutsch"))
    press("en/language")
    screen.click_text("Deutsch")
    screen.see("the window speaks German", lambda window: window.find("Button", "Auswahl reparieren"))
    press("de/results")


def without_any_help_one_line_says_so(scene):
    for book in BOOKS:
        (scene.box.folder / book).unlink()
    shutil.rmtree(scene.box.folder / "manual")
    screen = scene.screen
    screen.start()
    screen.display.keys("F1")
    screen.see("a message", lambda window: window.says("The help cannot be shown"), name=BOX)
    screen.picture("missing")
    screen.display.keys("Escape")
    wait_until("the message is closed", lambda: not screen.window(BOX))


@told_always
def the_book_opens_with_its_contents(scene):
    screen = scene.screen
    screen.start()
    screen.display.keys("F1")
    screen.see("the book", name="zelvreg Help", seconds=30)
    screen.picture("contents")


def the_german_book_opens_in_german(scene):
    scene.speak(language("german"))
    screen = scene.screen
    screen.start()
    screen.press_picture("Image44")
    screen.see("the book", name="Hilfe zu zelvreg", seconds=30)
    screen.picture("contents")


def pictures_for_the_manual_in_english(scene):
    scene.screen.start()
    tour(scene.screen, language("english"))


def pictures_for_the_manual_in_german(scene):
    scene.speak(language("german"))
    scene.screen.start()
    tour(scene.screen, language("german"))
