"""All pages, in languages of each script, one of which is read from the right, in both themes, and on
screens of all resolutions."""

from driver.languages import LANGUAGES, language
from driver.scene import long_by_nature, on_a_screen_of
from driver.screen import BOX, SMALL
from driver.waiting import expect, wait_until

LANGUAGE = r"HKEY_LOCAL_MACHINE\Software\Wow6432Node\zelvane\zelvane tuner\zelvreg"


CHARSETS = {"english": 0, "german": 0, "polish": 238, "russian": 204, "japanese": 128, "chinese": 134,
            "arabic": 178}
SMALLEST = (1026, 612)
# A screen with room for the window at each resolution.
SCREENS = {96: (1280, 900), 120: (1400, 900), 144: (1700, 1060), 192: (2200, 1360), 288: (3200, 2000)}


def _speak(scene, tag):
    index = LANGUAGES.index(language(tag))
    scene.box.add_to_registry(f'[{LANGUAGE}]\n"lang"="{tag}"\n"langcode"="{CHARSETS[tag]}"\n'
                              f'"langindex"="{index}"\n')


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


def all_pages_are_mirrored_in_arabic_and_back(scene):
    _speak(scene, "arabic")
    screen = scene.screen
    screen.start()
    screen.is_mirrored = True
    texts = language("arabic")
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


def _story(tag, resolution, is_dark):
    @on_a_screen_of(*SCREENS[resolution])
    def story(scene):
        _speak(scene, tag)
        scene.set_resolution(resolution)
        if is_dark:
            scene.make_dark()
        screen = scene.screen
        screen.start()
        screen.is_mirrored = language(tag).is_mirrored
        expect("its size", screen.window().place[2:],
               [(length * resolution + 48) // 96 for length in SMALLEST])
        _tour(screen, language(tag))
    return story


def _name(tag, resolution, is_dark):
    return f"all_pages_in_{tag}_at_{resolution}_dots_per_inch{'_in_the_dark' if is_dark else ''}"


# Those that show most of what can go wrong; the others take long together.
USUAL = {("german", 192, False), ("japanese", 96, True)}
SHOWN = USUAL | {(tag, resolution, is_dark) for tag in ("english", "german", "japanese", "arabic")
                 for resolution in (96, 192) for is_dark in (False, True)}
SHOWN |= {(tag, 96, False) for tag in ("polish", "russian", "chinese")}
SHOWN |= {("english", 120, False), ("german", 144, False), ("english", 288, False)}
for each in sorted(SHOWN):
    vars()[_name(*each)] = _story(*each) if each in USUAL else long_by_nature(_story(*each))
