"""What screen readers hear, in every language."""

from driver.languages import LANGUAGES
from driver.names import CHECKED, compare
from driver.screen import BOX, SMALL, plain
from driver.waiting import Unmet, expect, wait_until


def _rows(screen, language):
    """The rows of the two long lists: their names, ticks and how sure they are."""
    for facts in (each.accessible for each in screen.accessible().controls if each.accessible):
        if facts["name"] == language["name-categories"]:
            first = facts["rows"][0]
            expect("a category", (first["name"], first["state"] & CHECKED),
                   (language["a1"], CHECKED))
            expect("what it is about", language["b1"] in first["description"], True)
            return
        if facts["name"] == language["name-findings"]:
            sure = tuple(language[f"Evidence/{each}"] for each in ("sure", "likely", "unsure"))
            expect("how sure a finding is",
                   [row for row in facts["rows"] if not row["description"].startswith(sure)], [])
            return
    raise Unmet("a list with rows")


def _pages(screen, language):
    compare(screen, language, "every", "options")
    _rows(screen, language)
    screen.press(plain(language["chameleonButton7"]))
    screen.see("the exclusions", lambda window: window.find(
        "Button", plain(language["chameleonButton5"])))
    compare(screen, language, "every", "exclusions")
    screen.press(plain(language["chameleonButton1"]))
    screen.see("the undo options", lambda window: window.find(
        "Button", plain(language["chameleonButton2"])))
    compare(screen, language, "every", "undo")


def _results(screen, language):
    screen.press(plain(language["orubutton1"]))
    bad = language["View2.ColumnHeaders.Item(2)"]
    screen.see("the results", lambda window: window.list(bad) and window.says(language["Label10"])
               and window.find("Button", plain(language["cmd_start"])).enabled, seconds=60)
    screen.click_row(bad, "OldTool")
    screen.see("its details", lambda window: window.find("Button", plain(language["Command28"])))
    compare(screen, language, "every", "results")
    _rows(screen, language)


def _dialogs(screen, language):
    screen.press(plain(language["cmd_fix"]))
    screen.see("the question", name=BOX)
    compare(screen, language, "question", name=BOX)
    screen.display.keys("Escape")
    wait_until("the question is closed", lambda: not screen.window(BOX))
    screen.press(plain(language["chameleonButton7"]))
    screen.press(plain(language["chameleonButton5"]))
    screen.see("the dialog of an exclusion", name=SMALL)
    compare(screen, language, "exclusion", name=SMALL)
    screen.display.keys("Escape")
    wait_until("the dialog is closed", lambda: not screen.window(SMALL))
    screen.press_picture("chameleonButton18")
    screen.see("the About dialog", name=SMALL)
    compare(screen, language, "about", name=SMALL)
    screen.display.keys("Escape")
    wait_until("the About dialog is closed", lambda: not screen.window(SMALL))
    screen.press(plain(language["orubutton4"]))
    screen.see("the options", lambda window: window.find(
        "Button", plain(language["CarefulBox"])))


def _all_controls_tell_what_they_are(scene, languages):
    screen = scene.screen
    screen.start()
    for language in languages:
        if language.tag != "english":
            _choose(screen, language)
        _pages(screen, language)
        _results(screen, language)
        _dialogs(screen, language)
        screen.picture(language.tag)


def controls_tell_what_they_are_in_english_german_french_and_spanish(scene):
    _all_controls_tell_what_they_are(scene, LANGUAGES[:4])


def controls_tell_what_they_are_in_portuguese_polish_italian_and_dutch(scene):
    _all_controls_tell_what_they_are(scene, LANGUAGES[4:8])


def controls_tell_what_they_are_in_russian_japanese_chinese_and_arabic(scene):
    _all_controls_tell_what_they_are(scene, LANGUAGES[8:])
