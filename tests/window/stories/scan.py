"""A scan by hand, what it finds, and a scan that is stopped."""

from driver import findings
from driver.scene import SETTINGS, told_always
from driver.screen import BOX, RESULTS, RESULTS_LIST, ROWS_LIST
from driver.waiting import expect, wait_until

FONTS = r"HKEY_LOCAL_MACHINE\Software\Microsoft\windows\currentversion\fonts"
REGEDIT = r"HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Applets\Regedit"


@told_always
def the_window_finds_what_the_consoles_find(scene):
    screen = scene.screen
    screen.start()
    options = screen.see("sixteen rows", lambda window: window.list(ROWS_LIST))
    expect("all sixteen rows are ticked", [row["ticked"] for row in options.list(ROWS_LIST).rows],
           [True] * 16)
    screen.picture("options")
    screen.press("Start")
    results = screen.see_results()
    screen.picture("results")
    found = results.list(RESULTS_LIST)
    expect("the title counts the rows", results.says(f"{RESULTS} {len(found.rows)}"), True)
    told = findings.of_list(found) - scene.stage.own
    expect("the window finds what the Windows console program finds", told, scene.stage.console)
    native = findings.seen_in_wine(findings.expected_of_demo()) - scene.stage.own
    expect("the window finds what the native console program finds", told, native)


def a_finding_is_explained(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    screen.see_results()
    screen.tick_row(RESULTS_LIST, "Quill Script (TrueType)")
    screen.click_row(RESULTS_LIST, "Quill Script (TrueType)")
    screen.see("the bad value below the list", lambda window: window.says("quill.ttf") and
               window.says("The path points to the missing target"))
    screen.picture("explained")
    screen.press("Select None")
    screen.see("no row is ticked", lambda window: not any(
        row["ticked"] for row in window.list(RESULTS_LIST).rows))
    screen.picture("none")


def a_double_click_opens_the_registry_editor(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    screen.see_results()
    screen.click_row(RESULTS_LIST, "Quill Script (TrueType)", times=2)
    screen.see("the editor", name="Registry Editor", seconds=60)
    expect("the key at which it opens", scene.box.value(REGEDIT, "LastKey"), FONTS)
    screen.picture("editor")


def a_right_click_shows_the_commands(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    screen.see_results()
    screen.click_row(RESULTS_LIST, "Quill Script (TrueType)", button=3)
    wait_until("the menu", lambda: screen.window("#32768"))
    screen.picture("menu")
    screen.display.keys("Down", "Down", "Return")
    screen.see("no row is ticked", lambda window: not any(
        row["ticked"] for row in window.list(RESULTS_LIST).rows))


def a_double_click_on_a_category_shows_its_findings(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    found = len(screen.see_results().list(RESULTS_LIST).rows)
    screen.press("Search Location")
    screen.see("the options again", lambda window: window.list(ROWS_LIST))
    screen.picture("counted")
    screen.click_row(ROWS_LIST, "Shared DLLs", times=2)
    results = screen.see_results()
    expect("all findings are shown", len(results.list(RESULTS_LIST).rows), found)


def _count(window):
    """The number in the title of the results; 0 where there is none yet."""
    title = next((each.text for each in window.controls if each.text.startswith(RESULTS)), "")
    return int(title[len(RESULTS):].strip() or 0)


def a_scan_is_stopped(scene):
    fonts = 40000
    scene.add_dead_fonts(fonts)
    screen = scene.screen
    screen.start()
    screen.press("Start")
    screen.see("the scan runs", lambda window: window.says("Invalid Font Reference"))
    screen.press("Cancel")
    screen.see("so many are implausible", lambda box: box.says("This is implausible"), BOX, 180)
    screen.picture("implausible")
    screen.press("OK", BOX)
    screen.see_results()
    # The results are shown at once; the row that was being tested ends after that.
    screen.see("some of its findings are counted", lambda window: 0 < _count(window) < fonts)
    screen.picture("stopped")
    screen.press("Search Location")
    options = screen.see("the options again", lambda window: window.list(ROWS_LIST))
    expect("the rows after the first were not tested",
           options.list(ROWS_LIST).column("# Problems")[1:], [""] * 15)


def a_scan_tells_how_far_it_is_and_how_long_it_will_take(scene):
    fonts = 40000
    scene.add_dead_fonts(fonts)
    parts = ["30000", "300000"] + ["2000"] * 15
    scene.box.add_to_registry(f'[{SETTINGS}]\n"scantimes"="{" ".join(parts)}"\n')
    screen = scene.screen
    screen.start()
    screen.press("Start")
    screen.see("the time that is left", lambda window: window.says("1 of 16  ·  About 6 minutes "
                                                                   "left"))
    screen.picture("time-left", moves=True)
    screen.press("Cancel")
    screen.see("so many are implausible", lambda box: box.says("This is implausible"), BOX, 180)
    screen.press("OK", BOX)
    screen.see_results()
    expect("a scan that was stopped tells nothing of the next one",
           scene.box.value(SETTINGS, "scantimes"), " ".join(parts))


def the_results_are_counted_in_another_language_too(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    found = len(screen.see_results().list(RESULTS_LIST).rows)
    screen.press_picture("chameleonButton13")
    screen.click_text("Deutsch")
    screen.see("the number in German", lambda window: window.says(f"Ungültige Einträge: {found}"))
    screen.picture("german")
