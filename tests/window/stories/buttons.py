"""The buttons that no other story presses."""

from driver.screen import BOX, RESULTS_LIST, ROWS_LIST
from driver.waiting import expect, wait_until
from stories.scan import FONTS, REGEDIT


def _all_ticked(window, heading, wanted):
    shown = window.list(heading)
    return shown and shown.rows and all(row["ticked"] == wanted for row in shown.rows)


def back_and_next_go_through_the_steps(scene):
    screen = scene.screen
    screen.start()
    screen.press("Next")
    screen.see("the exclusions", lambda window: window.find("Button", "Add Keys"))
    screen.picture("exclusions")
    screen.press("Back")
    screen.see("the options", lambda window: window.list(ROWS_LIST))
    screen.press("Next")
    screen.press("Next")
    screen.see_results()
    screen.picture("results")
    screen.press("Back")
    screen.see("the exclusions again", lambda window: window.find("Button", "Add Keys") and
               not window.list(RESULTS_LIST))
    screen.press("Select Areas Of registry To Scan For Invalid Informations.")
    screen.see("the options again", lambda window: window.list(ROWS_LIST))


def all_and_none_tick_what_is_shown(scene):
    screen = scene.screen
    screen.start()
    screen.press("Select None")
    screen.see("no category", lambda window: _all_ticked(window, ROWS_LIST, False))
    screen.picture("no-category")
    screen.press("Select All")
    screen.see("every category", lambda window: _all_ticked(window, ROWS_LIST, True))
    screen.press("Start Scanning your registry")
    screen.see_results()
    screen.press("Select All")
    screen.see("every finding", lambda window: _all_ticked(window, RESULTS_LIST, True))
    screen.picture("every-finding")
    screen.press("Select None")
    screen.see("no finding", lambda window: _all_ticked(window, RESULTS_LIST, False))
    screen.press("Remove selected item")
    screen.see("there is nothing to repair", name=BOX)
    screen.picture("nothing-ticked")


def open_in_registry_opens_the_editor_at_the_key(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    screen.see_results()
    screen.click_row(RESULTS_LIST, "Quill Script (TrueType)")
    screen.press("Open in registry")
    screen.see("the editor", name="Registry Editor", seconds=60)
    wait_until("the key at which it opens", lambda: scene.box.value(REGEDIT, "LastKey") == FONTS)
    expect("the program goes on", screen.window() is not None, True)
