"""How sure each finding is: the box on the options page, and ticks, marks and sentences of the rows."""

from driver import findings
from driver.scene import SETTINGS, told_always
from driver.screen import RESULTS_LIST, ROWS_LIST
from driver.waiting import expect, wait_until

BOX = "Careful: tick nothing that is unsure"
POLICIES = r"HKEY_LOCAL_MACHINE\Software\Policies\zelvane\zelvreg"


def _box(scene):
    return scene.screen.see("the box", lambda window: window.find("Button", BOX)).find("Button", BOX)


def _see_box(scene, ticked):
    scene.screen.see("the tick", lambda window: window.find("Button", BOX).ticked == ticked)


def the_box_is_on_at_first_and_kept(scene):
    screen = scene.screen
    program = screen.start()
    expect("it is ticked", _box(scene).ticked, True)
    screen.picture("first-start")
    screen.press(BOX)
    _see_box(scene, False)
    wait_until("it is kept", lambda: scene.box.value(SETTINGS, "careful") == "0")
    screen.press_picture("chameleonButton4")
    program.wait()
    screen.start()
    expect("the next start has it", _box(scene).ticked, False)
    screen.picture("next-start")
    # A click gives it the focus; the space bar presses it again.
    screen.press(BOX)
    _see_box(scene, True)
    screen.display.keys("space")
    _see_box(scene, False)
    screen.display.keys("space")
    _see_box(scene, True)
    wait_until("that is kept, too", lambda: scene.box.value(SETTINGS, "careful") == "1")


def a_policy_decides_it(scene):
    scene.box.add_to_registry(f'[{POLICIES}]\n"careful"="0"\n')
    scene.screen.start()
    box = _box(scene)
    expect("it cannot be pressed", (box.ticked, box.enabled), (False, False))
    scene.screen.picture("policy")
    scene.screen.press("Start")
    rows = scene.screen.see_results().list(RESULTS_LIST).rows
    expect("each row is ticked", all(row["ticked"] for row in rows), True)


@told_always
def rows_say_how_sure_they_are(scene):
    screen = scene.screen
    sure, likely, unsure = "Quill Script (TrueType)", ".hbc", "Unnamed Face (TrueType)"
    confidences = findings.confidences_of_json(
        scene.box.sh("wine zelvreg-console.exe scan --json")[1])
    screen.start()
    screen.press("Start")
    results = screen.see_results()
    expect("what is not unsure is ticked", findings.ticked_of_list(results.list(RESULTS_LIST)),
           {each for each, confidence in confidences.items() if confidence != "unsure"})
    screen.picture("results")
    marks = [screen.mark(RESULTS_LIST, name) for name in (sure, likely, unsure)]
    expect("each confidence has its mark", len(set(marks)), 3)
    expect("which is the same in each row", screen.mark(RESULTS_LIST, "Small Fonts"), marks[0])

    screen.click_row(RESULTS_LIST, likely)
    screen.see("why it is likely", lambda window: window.says(
        "Likely. What it names is not registered on this computer."))
    screen.picture("likely")
    screen.click_row(RESULTS_LIST, "Small Fonts")
    screen.see("why it is sure", lambda window: window.says("Sure. What it names does not exist."))
    screen.picture("sure")
    screen.display.keys("Down")
    screen.see("why it is unsure", lambda window: window.says(
        "Unsure. The entry holds no text that names a file."))
    screen.picture("unsure")


def why_is_said_in_the_language_in_use(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    screen.see_results()
    screen.click_row(RESULTS_LIST, "Quill Script (TrueType)")
    screen.see("why", lambda window: window.says("Sure. What it names does not exist."))
    screen.press_picture("chameleonButton13")
    screen.click_text("Deutsch")
    screen.see("no row is described", lambda window: window.says("Wählen Sie einen Eintrag") and
               not window.says("What it names"))
    screen.click_row("Ort der ungültigen Daten", "Quill Script (TrueType)")
    screen.see("why, in German", lambda window: window.says(
        "Sicher. Das Ziel des Eintrags ist nicht vorhanden."))
    screen.picture("german")


def careful_takes_the_ticks_of_unsure_rows(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    ticked = findings.ticked_of_list(screen.see_results().list(RESULTS_LIST))
    screen.press("Select All")
    screen.see("each row is ticked", lambda window: all(
        row["ticked"] for row in window.list(RESULTS_LIST).rows))
    screen.tick_row(RESULTS_LIST, "Quill Script (TrueType)")
    screen.press("Search Location")
    for is_on in (False, True):
        screen.press(BOX)
        _see_box(scene, is_on)
    screen.click_row(ROWS_LIST, "Fonts", times=2)
    left = findings.ticked_of_list(screen.see_results().list(RESULTS_LIST))
    expect("only one row more has no tick than after the scan",
           sorted(each[0] for each in ticked - left), ["Quill Script (TrueType)"])
    expect("no row has got one", left - ticked, set())
    screen.picture("careful-again")
