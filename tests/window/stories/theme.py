"""Light and dark, as Windows says or as the user chooses."""

from driver.languages import language
from driver.scene import SETTINGS, told_always
from driver.screen import middle
from driver.tour import tour
from driver.waiting import expect, wait_until

CHOICE = (SETTINGS, "theme")
MIDDLE = 128


def _brightness(screen):
    """Of the list's ground, far from any text."""
    left, top, width, height = screen.window().place
    return screen.display.brightness(left + width - 40, top + height - 60, 1, 1)[0]


def all_pages_are_light(scene):
    screen = scene.screen
    screen.start()
    tour(screen, language("english"))
    expect("it is light", _brightness(screen) > MIDDLE, True)


def all_pages_are_dark_where_windows_is(scene):
    scene.make_dark()
    screen = scene.screen
    screen.start()
    tour(screen, language("english"))
    expect("it is dark", _brightness(screen) < MIDDLE, True)


def all_pages_are_in_high_contrast(scene):
    screen = scene.screen
    scene.start_in_high_contrast()
    tour(screen, language("english"))
    expect("it is black", _brightness(screen), 0)


@told_always
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
