"""What is on the screen, as the reader says, and what a user does with it."""

import json
import os
import re

from .box import BUILD, CHECKOUT, NOTES
from .display import TRAY_HEIGHT
from .waiting import Unmet, wait_until

# By their window classes, because two of them have the same title.
MAIN, SMALL, BOX = "ZelvregMainWindow", "ZelvregSmallWindow", "ZelvregMessageWindow"
# Lists are known by their columns.
ROWS_LIST, RESULTS_LIST = "what to scan", "Invalid Data Location"
RESULTS = "Number of invalid entries is"
SMALLEST_WIDTH = 1026
PLACE = re.compile(r"(?:of<&Form42::(\w+)>,\s*noFrame|return form\.(\w+)\[0\]; \}),"
                   r"\s*\{(\d+), (\d+), (\d+), (\d+)\}")


def places():
    """The places of the window's controls without a caption, by name, in pixels."""
    text = (CHECKOUT / "src" / "layout" / "Layout.cpp").read_text("utf-8")
    return {name or first: tuple(map(int, place)) for name, first, *place in PLACE.findall(text)}


def middle(place):
    left, top, width, height = place
    return left + width // 2, top + height // 2


def plain(caption):
    """A caption without the mark of its access key, or the letter that was added for it."""
    return re.sub(r"\(&\w\)$", "", caption).replace("&", "").strip()


class Control:
    def __init__(self, told):
        self.kind = told["class"]
        self.text = told["text"]
        self.place = told["place"]
        self.enabled = told["enabled"]
        self.focused = told["focused"]
        self.ticked = told.get("ticked", False)
        self.headings = told.get("headings", [])
        # Only the first rows of a long list; `count` counts all of them.
        self.rows = told.get("rows", [])
        self.count = told.get("count", 0)
        self.process = told.get("process")
        # What it tells screen readers; only if that was asked for.
        self.accessible = told.get("accessible")
        self.controls = [Control(each) for each in told.get("controls", [])]

    def find(self, kind, text):
        """The control with a caption, or None; an enabled one is preferred."""
        for each in sorted(self.controls, key=lambda control: not control.enabled):
            if each.kind == kind and plain(each.text) == text:
                return each
        return None

    def list(self, heading):
        """The list that has a column of that name, or None."""
        for each in self.controls:
            if heading in each.headings:
                return each
        return None

    def says(self, text):
        return any(text in each.text for each in self.controls)

    def column(self, heading):
        index = self.headings.index(heading)
        return [row["cells"][index] for row in self.rows]


class Screen:
    def __init__(self, box, display, pictures, story):
        self.box = box
        self.display = display
        self.pictures = pictures
        self.story = story
        # The files of all pictures, and of those that stood still.
        self.all_pictures, self.still_pictures = [], []
        # Whether the window is laid out from the right.
        self.is_mirrored = False
        self.resolution = 96
        for name in ("asked", "answered"):
            os.mkfifo(box.notes / name)
        inside = f"/zelvreg/prefix/{NOTES}"
        box.sh(f"{{ wine '{BUILD}/window-reader.exe' <{inside}/asked >{inside}/answered"
               f" 2>{inside}/reader.log; }} &")
        self.asked = open(box.notes / "asked", "w", encoding="utf-8")
        self.answered = open(box.notes / "answered", encoding="utf-8")

    def close(self):
        self.answered.close()
        try:
            self.asked.close()
        except BrokenPipeError:
            # It has already ended.
            pass

    def pixels(self, length):
        """A length in pixels at 96 dpi, in those of the screen."""
        return round(length * self.resolution / 96)

    # Looking

    def windows(self, question=""):
        try:
            print(question, file=self.asked, flush=True)
        except BrokenPipeError:
            raise Unmet("the reader of the screen ended") from None
        line = self.answered.readline()
        if not line:
            raise Unmet("the reader of the screen ended")
        return [Control(each) for each in json.loads(line)]

    def window(self, name=MAIN):
        """The visible window of a class or with a title, or None."""
        return next((each for each in self.windows() if name in (each.kind, each.text)), None)

    def accessible(self, name=MAIN):
        """The same with what each of its controls tells screen readers."""
        return next(each for each in self.windows("accessible") if name in (each.kind, each.text))

    def find(self, what, look, name=MAIN, seconds=20):
        """Waits until `look` finds something in that window, and returns it."""
        def looking():
            window = self.window(name)
            return window and look(window)
        return wait_until(what, looking, seconds)

    def see(self, what, look=lambda window: True, name=MAIN, seconds=20):
        """Waits until `look` is true for that window, and returns the window."""
        return self.find(what, lambda window: look(window) and window, name, seconds)

    def see_results(self, seconds=60):
        """Waits for the results of a scan that has ended."""
        return self.see("the results", lambda window: window.list(RESULTS_LIST) and
                        window.says(RESULTS) and window.find("Button", "Start").enabled,
                        seconds=seconds)

    def tray_icon(self):
        """The place of the icon in the notification area, or None."""
        for window in self.windows():
            for control in window.controls:
                if control.kind == "__winex11_tray_icon":
                    return control.place
        return None

    def picture(self, step, pointing=False, moves=False):
        """Saves a picture of the screen once it no longer changes, without the mouse in it unless it
        is `pointing` at something. What `moves` is saved as it is at once."""
        path = self.pictures / f"{self.story}-{len(self.all_pictures) + 1}-{step}.png"
        self.all_pictures.append(path)
        seen = []

        def still():
            seen.append(self.display.pixels(0, 0, self.display.width,
                                             self.display.height - TRAY_HEIGHT))
            return len(seen) > 1 and seen[-1] == seen[-2]
        try:
            if not pointing:
                # What is below the mouse may have a tip, or not yet.
                self.display.leave()
            if not moves:
                wait_until("the picture no longer changes", still, 4)
                self.still_pictures.append(path)
        except Unmet:
            # A picture that still changes is better than none.
            pass
        self.display.picture(path)
        return path

    # Acting

    def tell_resolution(self, name, resolution, left, top):
        """Tells a window of a class that its screen has that resolution now."""
        self.windows(f"resolution {name} {resolution} {left} {top}")

    def start(self, *arguments):
        """Starts the program and waits for its window."""
        return self.opened(self.box.start("zelvreg.exe", *arguments))

    def opened(self, program):
        """Waits for the window of a program that was started, and returns it."""
        wait_until("the window opens", lambda: self.window() or program.has_ended(), 30)
        if program.has_ended():
            raise Unmet(f"the window opens; the program ended with {program.status()} instead")
        return program

    def press(self, caption, name=MAIN):
        """Clicks the button with a caption, once it can be pressed."""
        button = self.find(f"a button “{caption}” that can be pressed",
                          lambda window: self._ready(window, caption), name)
        self.display.click(*middle(button.place))

    @staticmethod
    def _ready(window, caption):
        found = window.find("Button", caption)
        return found if found and found.enabled else None

    def press_picture(self, name):
        """Clicks a control without a caption, where the layout has it."""
        window = self.see("the window")
        left, top, width, height = map(self.pixels, places()[name])
        if self.is_mirrored:
            left = window.place[2] - left - width
        self.display.click(window.place[0] + left + width // 2, window.place[1] + top + height // 2)

    def press_picture_at_right(self, name):
        """The same for one that moves with the right edge of a window that is wider."""
        window = self.see("the window")
        left, top, width, height = map(self.pixels, places()[name])
        beyond = window.place[2] - self.pixels(SMALLEST_WIDTH)
        self.display.click(window.place[0] + beyond + left + width // 2,
                           window.place[1] + top + height // 2)

    def press_exclude(self):
        """Clicks the button that excludes the highlighted rows from every scan."""
        self.press("Exclude selected path from future scan")

    def click_text(self, text, name=MAIN):
        """Clicks a text, such as an entry of the list of languages."""
        label = self.find(f"the text “{text}”", lambda window: window.find("Static", text), name)
        self.display.click(*middle(label.place))

    def row(self, heading, text, name=MAIN):
        """The row of a list whose cell below `heading` is `text`, in view."""
        def look(window):
            shown = window.list(heading)
            if shown:
                for row, cell in zip(shown.rows, shown.column(heading)):
                    if cell == text:
                        return shown, row
            return None
        return self.find(f"a row “{text}” below “{heading}”", look, name)

    def row_in_view(self, heading, text):
        """The row, scrolled into view by the mouse wheel."""
        def look():
            shown, row = self.row(heading, text)
            top, height = row["place"][1], row["place"][3]
            first, last = shown.place[1] + height, shown.place[1] + shown.place[3] - height
            if first < top < last:
                return row
            self.display.click(*middle(shown.place), button=4 if top <= first else 5)
            return None
        # A turn of the wheel moves by a few rows, and the list is read again after each.
        return wait_until(f"the row “{text}” comes into view", look, 90)

    def mark(self, heading, text):
        """What stands between the tick and the icon of a row, as one text for its pixels."""
        left, top, _, height = self.row_in_view(heading, text)["place"]
        return self.display.pixels(left + self.pixels(33), top + 1, self.pixels(22), height - 3)

    def click_row(self, heading, text, times=1, button=1):
        left, top, _, height = self.row_in_view(heading, text)["place"]
        # To the right of the check box.
        self.display.click(left + self.pixels(80), top + height // 2, times, button)

    def click_box(self, heading, text):
        """Clicks the check box of a row; returns the row as it was before."""
        row = self.row_in_view(heading, text)
        left, top, _, height = row["place"]
        self.display.click(left + self.pixels(15), top + height // 2)
        return row

    def tick_row(self, heading, text):
        """The same, and waits until the tick has changed."""
        row = self.click_box(heading, text)
        wait_until(f"the tick of “{text}” changes",
                   lambda: self.row(heading, text)[1]["ticked"] != row["ticked"])
