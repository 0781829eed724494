"""The window without a mouse: where the Tab key leads, what can be seen of it, and every dialog."""

from driver.languages import language
from driver.scene import told_always
from driver.screen import BOX, MAIN, RESULTS_LIST, SMALL, plain
from driver.waiting import Unmet, expect, wait_until

# Of the window, in pixels.
TITLE_HEIGHT, COMMANDS_END, SIDE_BAR_WIDTH = 60, 112, 196
# How far the middles of controls in one line may differ.
TOLERANCE = 10


def _focused(window):
    """The control with the focus; for the field of a combo box that box."""
    found = next((each for each in window.controls if each.focused), None)
    if found and found.kind == "Edit":
        boxes = [each for each in window.controls if each.kind == "ComboBox" and
                 _contains(each.place, found.place)]
        return boxes[0] if boxes else found
    return found


def _contains(outer, inner):
    return outer[0] <= inner[0] and outer[1] <= inner[1] and \
        inner[0] + inner[2] <= outer[0] + outer[2] and inner[1] + inner[3] <= outer[1] + outer[3]


class _View:
    """How bright each pixel of a window is."""

    def __init__(self, screen, place):
        self.left, self.top, self.width, _ = place
        self.pixels = screen.display.brightness(*place)

    def part(self, place):
        left, top, width, height = place
        starts = ((row - self.top) * self.width + left - self.left
                  for row in range(top, top + height))
        return [self.pixels[start:start + width] for start in starts]


def _tab(screen, name, before, view):
    """Presses the Tab key; returns the control that has the focus then, which must be seen, and
    the window as it looks then."""
    screen.display.keys("Tab")
    window = screen.see("the focus goes on", lambda window: _focused(window) and
                        _focused(window).place != before, name)
    stop = _focused(window)

    def seen():
        now = _View(screen, window.place)
        return now if now.part(stop.place) != view.part(stop.place) else None
    return stop, wait_until(f"the focus is seen at “{stop.text}” ({stop.kind})", seen, 5)


def _walk(screen, name=MAIN):
    """All stops of the Tab key, from the one that has the focus now."""
    screen.display.point(2, 2)
    window = screen.see("the focus", _focused, name)
    stops, view = [_focused(window)], _View(screen, window.place)
    while True:
        stop, view = _tab(screen, name, stops[-1].place, view)
        if stop.place == stops[0].place:
            return stops
        stops.append(stop)
        expect("the Tab key comes back", len(stops) < 80, True)


def _area(window, place):
    left, top = place[0] - window.place[0], place[1] - window.place[1]
    if top < TITLE_HEIGHT:
        return 0
    return 1 if top < COMMANDS_END else 2 if left < SIDE_BAR_WIDTH else 3


def _position(window, stop, is_mirrored):
    """The area, and the place as it would be in a window that is laid out from the left."""
    left, top, width, height = stop.place
    if is_mirrored:
        left = 2 * window.place[0] + window.place[2] - left - width
    return _area(window, (left, top, width, height)), top + height // 2, left


def _follows(one, other):
    """Whether one reads the other position later."""
    area, middle, left = one
    next_area, next_middle, next_left = other
    if next_area != area:
        return next_area > area
    if abs(next_middle - middle) < TOLERANCE:
        return next_left > left
    return next_middle > middle


def _walk_and_read(screen, name=MAIN):
    """Walks, and returns what the stops are called. The walk is a circle, in which one stop, the
    first of the window, is reached from behind."""
    stops = _walk(screen, name)
    window = screen.window(name)
    places = [_position(window, stop, screen.is_mirrored) for stop in stops]
    backwards = [f"“{stop.text}” ({stop.kind})" for one, other, stop in zip(
        places, places[1:] + places[:1], stops[1:] + stops[:1]) if not _follows(one, other)]
    expect(f"only one of these is the first: {backwards}", len(backwards), 1)
    return [plain(stop.text) for stop in stops]


def the_tab_key_goes_through_the_options_as_one_reads(scene):
    screen = scene.screen
    screen.start()
    stops = _walk_and_read(screen)
    for text in ("About", "Exit", "Start", "Find", "Match Case", "Select None"):
        expect(f"it comes to {text}", text in stops, True)


def the_tab_key_goes_through_the_exclusions_as_one_reads(scene):
    screen = scene.screen
    screen.start()
    screen.press("Exclude from search")
    screen.see("the exclusions", lambda window: window.find("Button", "Add Keys"))
    expect("it comes to the dialog's button", "Add Keys" in _walk_and_read(screen), True)


def the_tab_key_goes_through_the_undo_options_as_one_reads(scene):
    screen = scene.screen
    screen.start()
    screen.press("Manage undo options")
    screen.see("the undo options", lambda window: window.find("Button", "Undo Selected Changes"))
    expect("it comes to the last button", "Remove Selected Item" in _walk_and_read(screen), True)


def the_tab_key_goes_through_the_results_as_one_reads(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    screen.see_results()
    stops = _walk_and_read(screen)
    for text in ("Remove selected problems", "Remove selected item", "MUI cache: 2"):
        expect(f"it comes to {text}", text in stops, True)


def the_tab_key_goes_from_right_to_left_in_arabic(scene):
    arabic = language("arabic")
    scene.speak(arabic)
    screen = scene.screen
    screen.is_mirrored = True
    screen.start()
    expect("it comes to a command", arabic["cmd_start"] in _walk_and_read(screen), True)


def _press_key(screen, caption, name=MAIN):
    """Presses a button by the letter of its caption."""
    button = screen.find(f"a button “{caption}” with a letter", lambda window: next(
        (each for each in window.controls if each.enabled and each.kind == "Button" and
         "&" in each.text and plain(each.text) == caption), None), name)
    screen.display.keys(f"alt+{button.text[button.text.index('&') + 1].lower()}")


def _go_to(screen, text):
    """Presses the Tab key until a control has the focus."""
    for _ in range(80):
        if plain(_focused(screen.see("the focus", _focused)).text) == text:
            return
        screen.display.keys("Tab")
    raise Unmet(f"the Tab key leads to {text}")


@told_always
def dialogs_and_menus_need_no_mouse(scene):
    screen = scene.screen
    keys = screen.display.keys
    screen.start()
    _press_key(screen, "Exclude from search")
    _press_key(screen, "Add Keys")
    screen.see("the dialog of an exclusion", name=SMALL)
    screen.display.type("HKEY_CURRENT_USER\\Software\\Quill")
    screen.see("what is typed", lambda dialog: dialog.find("Edit", "HKEY_CURRENT_USER\\Software\\Quill"), SMALL)
    expect("the order of its controls", _walk_and_read(screen, SMALL),
           ["HKEY_CURRENT_USER\\Software\\Quill", "Add Key", "Cancel", "Close"])
    keys("Return")
    screen.row("Registration Key", "HKEY_CURRENT_USER\\Software\\Quill")
    _press_key(screen, "Start")
    screen.see_results()
    keys("ctrl+f", "Return", "Down")
    keys("shift+F10")
    screen.see("the menu", name="#32768")
    screen.picture("menu")
    # Select None.
    keys("Down", "Down", "Return")
    screen.see("no row is ticked", lambda window: not any(
        row["ticked"] for row in window.list(RESULTS_LIST).rows))
    screen.display.keys("space")
    screen.see("one row is ticked", lambda window: any(
        row["ticked"] for row in window.list(RESULTS_LIST).rows))
    _press_key(screen, "Fix Selected")
    screen.see("the question", name=BOX)
    expect("its answers", _walk_and_read(screen, BOX), ["Yes", "No", "Close"])
    _press_key(screen, "No", BOX)
    wait_until("the question is closed", lambda: not screen.window(BOX))
    _go_to(screen, "About")
    keys("Return")
    screen.see("the About dialog", name=SMALL)
    screen.picture("about")
    keys("Escape")
    screen.see("the window again")
