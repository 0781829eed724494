"""Screens of several resolutions, to which the window comes while it runs."""

from driver.scene import on_a_screen_of
from driver.screen import BOX, MAIN
from driver.waiting import expect

RESOLUTIONS = (120, 144, 192, 96)


@on_a_screen_of(2200, 1360)
def it_follows_the_resolution(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    screen.see_results()
    screen.click_row("Bad Reference Value", "OldTool")
    for resolution in RESOLUTIONS:
        screen.tell_resolution(MAIN, resolution, 60, 40)
        width, height = 1026 * resolution / 96, 612 * resolution / 96
        window = screen.see(f"the window at {resolution}", lambda window: abs(
            window.place[2] - width) <= 1 and abs(window.place[3] - height) <= 1)
        expect("where the system wants it", window.place[:2], [60, 40])
        screen.picture(str(resolution))


@on_a_screen_of(1700, 1060)
def a_message_follows_the_resolution(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    screen.see_results()
    screen.press("Remove selected item")
    first = screen.see("the question", name=BOX).place
    for resolution in 288, *RESOLUTIONS:
        screen.tell_resolution(BOX, resolution, 100, 80)
        screen.see(f"the question at {resolution}", lambda box: abs(
            box.place[2] - first[2] * resolution / 96) <= 1, BOX)
        screen.picture(str(resolution))
    screen.press("No", BOX)
    screen.see_results()
