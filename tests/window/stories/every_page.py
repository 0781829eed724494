"""All pages, in languages of each script, one of which is read from the right, in both themes, and on
screens of all resolutions."""

from driver.languages import language
from driver.scene import on_a_screen_of
from driver.tour import tour
from driver.waiting import expect

SMALLEST = (1026, 612)
# A screen with room for the window at each resolution.
SCREENS = {96: (1280, 900), 120: (1400, 900), 144: (1700, 1060), 192: (2200, 1360), 288: (3200, 2000)}


def all_pages_are_mirrored_in_arabic_and_back(scene):
    scene.speak(language("arabic"))
    screen = scene.screen
    screen.start()
    screen.is_mirrored = True
    texts = language("arabic")
    tour(screen, texts)
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
        scene.speak(language(tag))
        scene.set_resolution(resolution)
        if is_dark:
            scene.make_dark()
        screen = scene.screen
        screen.start()
        screen.is_mirrored = language(tag).is_mirrored
        expect("its size", screen.window().place[2:],
               [(length * resolution + 48) // 96 for length in SMALLEST])
        tour(screen, language(tag))
    return story


def _name(tag, resolution, is_dark):
    return f"all_pages_in_{tag}_at_{resolution}_dots_per_inch{'_in_the_dark' if is_dark else ''}"


SHOWN = {(tag, resolution, is_dark) for tag in ("english", "german", "japanese", "arabic")
         for resolution in (96, 192) for is_dark in (False, True)}
# Those in English at 96 dots per inch are stories of the themes.
SHOWN -= {("english", 96, False), ("english", 96, True)}
SHOWN |= {(tag, 96, False) for tag in ("polish", "russian", "chinese")}
SHOWN |= {("english", 120, False), ("german", 144, False), ("english", 288, False)}
for each in sorted(SHOWN):
    vars()[_name(*each)] = _story(*each)
