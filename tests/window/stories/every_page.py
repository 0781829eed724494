"""All pages in languages of other scripts, one of which is read from the right, and on screens of
other resolutions."""

from driver.box import CHECKOUT
from driver.scene import on_a_screen_of
from driver.screen import BOX, SMALL
from driver.waiting import expect, wait_until

LANGUAGE = r"HKEY_LOCAL_MACHINE\Software\Wow6432Node\zelvane\zelvane tuner"


class _Texts:
    """The texts of a language, from its file."""

    def __init__(self, tag, page):
        content = (CHECKOUT / "assets" / "lang" / f"zelvreg-{tag}.lang").read_text(page)
        form = content.split("[Form1]")[0]
        self.of_key = dict(line.split("=", 1) for line in form.split("\n") if "=" in line)

    def __getitem__(self, key):
        return self.of_key[key].strip()


def _speak(scene, tag, charset, font=None):
    lines = f'[{LANGUAGE}\\zelvreg]\n"lang"="{tag}"\n"langcode"="{charset}"\n"langindex"="0"\n'
    if font:
        lines += f'[{LANGUAGE}]\n"font name"="{font}"\n'
    scene.box.add_to_registry(lines)


def _tour(screen, texts):
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


def all_pages_speak_german(scene):
    _speak(scene, "german", 0)
    scene.screen.start()
    _tour(scene.screen, _Texts("german", "cp1252"))


def all_pages_speak_japanese(scene):
    _speak(scene, "japanese", 128)
    scene.screen.start()
    _tour(scene.screen, _Texts("japanese", "cp932"))


def all_pages_are_mirrored_in_arabic_and_back(scene):
    # The fonts of this computer that have Arabic.
    _speak(scene, "arabic", 178, "DejaVu Sans")
    screen = scene.screen
    screen.start()
    screen.is_mirrored = True
    texts = _Texts("arabic", "cp1256")
    _tour(screen, texts)
    middle = screen.window().place[0] + screen.window().place[2] // 2
    expect("the first command is at the right",
           screen.window().find("Button", texts["cmd_search"]).place[0] > middle, True)
    screen.click_text("English")
    screen.is_mirrored = False
    screen.see("the window speaks English", lambda window: window.find("Button", "Start"))
    screen.picture("english-again")
    expect("the first command is at the left",
           screen.window().find("Button", "Search Location").place[0] < middle, True)


def _tour_at(scene, resolution, tag):
    _speak(scene, tag, 0)
    scene.set_resolution(resolution)
    scene.screen.start()
    expect("its size", scene.screen.window().place[2:],
           [(length * resolution + 48) // 96 for length in (1026, 612)])
    _tour(scene.screen, _Texts(tag, "cp1252"))


@on_a_screen_of(1400, 900)
def all_pages_at_120_dots_per_inch(scene):
    _tour_at(scene, 120, "english")


@on_a_screen_of(1700, 1060)
def all_pages_at_144_dots_per_inch(scene):
    _tour_at(scene, 144, "german")


@on_a_screen_of(2200, 1360)
def all_pages_at_192_dots_per_inch(scene):
    _tour_at(scene, 192, "german")


@on_a_screen_of(3200, 2000)
def all_pages_at_288_dots_per_inch(scene):
    _tour_at(scene, 288, "english")
