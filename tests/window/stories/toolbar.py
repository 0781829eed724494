"""The commands as small buttons."""

from driver.screen import RESULTS_LIST
from driver.waiting import expect

COMMANDS = ["Search Location", "Exclusions", "Start", "Fix Selected", "Cancel", "Select All",
            "Select None", "Create Report"]


def small_buttons_do_what_the_commands_do(scene):
    screen = scene.screen
    program = screen.start()
    wide = screen.window().find("Button", "Start").place
    screen.press("Manage undo options")
    screen.press("Small command buttons")
    window = screen.see("small buttons", lambda window: window.find("Button", "Start") and
                        window.find("Button", "Start").place[2] == 36)
    expect("all of them", [name for name in COMMANDS if not window.find("Button", name)], [])
    screen.picture("undo-page")
    screen.press("Start")
    results = screen.see_results()
    screen.picture("results")
    expect("Fix can be pressed", results.find("Button", "Fix Selected").enabled, True)
    screen.press("Search Location")
    screen.see("the options, and nothing to fix", lambda window: not window.find(
        "Button", "Fix Selected").enabled)
    screen.press("Exclusions")
    screen.see("one title", lambda window: len([each for each in window.controls if
               each.text == "Exclude part of registry keys that start with." and
               each.kind == "Static"]) == 1)
    screen.picture("exclusions")
    screen.press_picture("chameleonButton4")
    program.wait()
    screen.start()
    expect("the next start has them", screen.window().find("Button", "Start").place[2] < wide[2],
           True)
    screen.press("Manage undo options")
    screen.press("Small command buttons")
    screen.see("the captions again", lambda window: window.find("Button", "Start").place == wide)


def only_one_page_is_shown_at_a_time(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    screen.see_results()
    screen.press("Manage undo options")
    window = screen.see("the undo options", lambda shown: shown.find(
        "Button", "Undo Selected Changes"))
    expect("no results under them", window.list(RESULTS_LIST), None)
    screen.picture("undo")
