"""All pages in languages of other scripts, one of which is read from the right, and on screens of
other resolutions."""

from driver.languages import LANGUAGES, language
from driver.scene import on_a_screen_of
from driver.screen import BOX, SMALL
from driver.waiting import expect, wait_until

LANGUAGE = r"HKEY_LOCAL_MACHINE\Software\Wow6432Node\zelvane\zelvane tuner\zelvreg"


def _speak(scene, tag, charset):
    index = LANGUAGES.index(language(tag))
    scene.box.add_to_registry(f'[{LANGUAGE}]\n"lang"="{tag}"\n"langcode"="{charset}"\n'
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


def all_pages_speak_german(scene):
    _speak(scene, "german", 0)
    scene.screen.start()
    _tour(scene.screen, language("german"))


def all_pages_speak_polish(scene):
    _speak(scene, "polish", 238)
    scene.screen.start()
    _tour(scene.screen, language("polish"))


def all_pages_speak_russian(scene):
    _speak(scene, "russian", 204)
    scene.screen.start()
    _tour(scene.screen, language("russian"))


def all_pages_speak_japanese(scene):
    _speak(scene, "japanese", 128)
    scene.screen.start()
    _tour(scene.screen, language("japanese"))


def all_pages_speak_chinese(scene):
    _speak(scene, "chinese", 134)
    scene.screen.start()
    _tour(scene.screen, language("chinese"))


def all_pages_are_mirrored_in_arabic_and_back(scene):
    _speak(scene, "arabic", 178)
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


def _tour_at(scene, resolution, tag):
    _speak(scene, tag, 0)
    scene.set_resolution(resolution)
    scene.screen.start()
    expect("its size", scene.screen.window().place[2:],
           [(length * resolution + 48) // 96 for length in (1026, 612)])
    _tour(scene.screen, language(tag))


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
