"""The size of the window and of its columns, by mouse and keyboard, and over a restart."""

from driver.scene import SETTINGS, told_always
from driver.screen import RESULTS_LIST
from driver.waiting import expect, wait_until

SMALLEST = [1026, 612]


def _place(scene):
    return scene.screen.see("the window").place


def _drag(scene, start, end):
    scene.screen.display.drag(*start, *end)


@told_always
def the_grip_resizes_it_and_the_next_start_has_that_size(scene):
    screen = scene.screen
    program = screen.start()
    screen.press("Start")
    screen.see_results()
    left, top, width, height = _place(scene)
    expect("its first size", [width, height], SMALLEST)
    _drag(scene, (left + width - 6, top + height - 6), (left + width + 94, top + height + 74))
    screen.see("a larger window", lambda window: window.place == [left, top, 1126, 692])
    screen.picture("larger")
    results = screen.window().list(RESULTS_LIST).place
    expect("the list takes the room", results[2], 790 + 100)
    _drag(scene, (left + 2, top + 300), (left + 900, top + 300))
    screen.see("not smaller than its smallest",
               lambda window: window.place == [left + 100, top, 1026, 692])
    screen.picture("smallest-width")
    screen.press_picture_at_right("chameleonButton4")
    program.wait()
    screen.start()
    expect("place and size", _place(scene), [left + 100, top, 1026, 692])
    screen.picture("next-start")


def a_double_click_on_the_title_maximises_it(scene):
    screen = scene.screen
    program = screen.start()
    left, top, width, height = _place(scene)
    screen.display.click(left + 500, top + 20, times=2)
    window = screen.see("all of the screen", lambda window: window.place[2:] == [1280, 900])
    screen.picture("maximised")
    button = window.find("Button", "Restore the size")
    expect("a button that restores", button is not None, True)
    screen.press_picture_at_right("chameleonButton4")
    program.wait()
    screen.start()
    screen.see("all of the screen again", lambda window: window.place[2:] == [1280, 900])
    screen.press("Restore the size")
    screen.see("the size before", lambda window: window.place == [left, top, width, height])
    screen.picture("restored")


def columns_are_dragged_and_fitted_and_kept(scene):
    screen = scene.screen
    program = screen.start()
    screen.press("Start")
    results = screen.see_results().list(RESULTS_LIST)
    left, top = results.place[:2]
    divider = left + 1 + 274
    _drag(scene, (divider, top + 12), (divider - 114, top + 12))
    wait_until("it is kept", lambda: scene.box.value(SETTINGS, "columnsview2") == "160 164 0 154 0")
    screen.picture("dragged")
    row = next(row for row in results.rows if len(row["cells"][0]) > 30)
    screen.row_in_view(RESULTS_LIST, row["cells"][0])
    place = screen.row(RESULTS_LIST, row["cells"][0])[1]["place"]
    screen.display.point(place[0] + 100, place[1] + place[3] // 2)
    screen.find("the whole text", lambda tip: tip.text.replace("\n", "").startswith(
        row["cells"][0]) and tip, "tooltips_class32")
    screen.picture("tip", pointing=True)
    screen.display.click(left + 1 + 160, top + 12, times=2)
    wait_until("it fits", lambda: int(scene.box.value(SETTINGS, "columnsview2").split()[0]) > 200)
    screen.picture("fitted")
    screen.press_picture("chameleonButton4")
    program.wait()
    widths = scene.box.value(SETTINGS, "columnsview2")
    screen.start()
    screen.press("Start")
    screen.see_results()
    screen.picture("next-start")
    expect("nothing else was kept", scene.box.value(SETTINGS, "columnsview2"), widths)
