"""Light and dark, as Windows says or as the user chooses."""

from driver.screen import BOX, SMALL, middle
from driver.waiting import expect, wait_until

CHOICE = (r"HKEY_LOCAL_MACHINE\Software\Wow6432Node\zelvane\Zelvane Tuner Deluxe\regscan", "theme")
MIDDLE = 128


def _brightness(screen):
    """Of the list's ground, far from any text."""
    left, top, width, height = screen.window().place
    return screen.display.brightness(left + width - 40, top + height - 60, 1, 1)[0]


def _pages(screen):
    """Goes through all pages, with pictures."""
    screen.picture("options")
    screen.press("Exclude from search")
    screen.see("the exclusions", lambda window: window.find("Button", "Add Keys"))
    screen.press("Add Keys")
    screen.see("the dialog of an exclusion", name=SMALL)
    screen.picture("exclusion")
    screen.display.keys("Escape")
    wait_until("the dialog is closed", lambda: not screen.window(SMALL))
    screen.picture("exclusions")
    screen.press("Manage undo options")
    screen.see("the undo options", lambda window: window.find("Button", "Undo Selected Changes"))
    screen.picture("undo-options")
    screen.press("Start")
    screen.see_results()
    screen.click_row("Bad Reference Value", "OldTool")
    screen.picture("results")
    screen.press("Fix Selected")
    screen.see("the question", name=BOX)
    screen.picture("question")
    screen.display.keys("Escape")
    wait_until("the question is closed", lambda: not screen.window(BOX))
    screen.press_picture("chameleonButton13")
    screen.see("the picker", lambda window: window.find("Static", "Deutsch"))
    screen.picture("picker")
    screen.display.keys("Escape")
    screen.press_picture("chameleonButton18")
    screen.see("the About dialog", name=SMALL)
    screen.picture("about")
    screen.display.keys("Escape")
    wait_until("the About dialog is closed", lambda: not screen.window(SMALL))


def all_pages_are_light(scene):
    screen = scene.screen
    screen.start()
    _pages(screen)
    expect("it is light", _brightness(screen) > MIDDLE, True)


def all_pages_are_dark_where_windows_is(scene):
    scene.make_dark()
    screen = scene.screen
    screen.start()
    _pages(screen)
    expect("it is dark", _brightness(screen) < MIDDLE, True)


def all_pages_are_in_high_contrast(scene):
    screen = scene.screen
    scene.start_in_high_contrast()
    _pages(screen)
    expect("it is black", _brightness(screen), 0)


def it_is_dark_at_once_where_its_user_says_so(scene):
    screen = scene.screen
    screen.start()
    screen.press("Manage undo options")
    box = screen.find("the colors", lambda window: next(
        (each for each in window.controls if each.text == "Colors: same as Windows"), None))
    expect("it is light at first", _brightness(screen) > MIDDLE, True)
    screen.display.click(*middle(box.place))
    screen.display.keys("Down", "Down")
    expect("nothing is chosen yet", _brightness(screen) > MIDDLE, True)
    screen.display.keys("Return")
    wait_until("it is dark", lambda: _brightness(screen) < MIDDLE)
    screen.picture("dark")
    expect("it is kept", scene.box.value(*CHOICE), "dark")
    screen.press_picture("chameleonButton4")
    wait_until("the window is closed", lambda: not screen.window())
    screen.start()
    expect("the next start is dark", _brightness(screen) < MIDDLE, True)
