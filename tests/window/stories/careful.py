"""How sure each finding is: the box on the options page, and ticks, marks and sentences of the rows."""

from driver.screen import RESULTS_LIST
from driver.waiting import expect, wait_until

BOX = "Careful: tick nothing that is unsure"
SETTINGS = r"HKEY_LOCAL_MACHINE\Software\Wow6432Node\zelvane\Zelvane Tuner Deluxe\regscan"
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
