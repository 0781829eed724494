"""The shadow of the window beside the windows of other programs."""

from driver.waiting import expect, wait_until

NOTEPAD = "Notepad"


def another_programs_window_is_never_under_the_shadow(scene):
    screen = scene.screen
    screen.start()
    left, top, width, height = screen.see("the window").place
    scene.box.start("notepad.exe", folder="C:/windows")
    other = wait_until("another window", lambda: screen.window(NOTEPAD)).place
    screen.display.drag(other[0] + other[2] // 2, other[1] + 8,
                        left + width - 150, top + height - 40)
    window = wait_until("it is over a corner", lambda: (found := screen.window(NOTEPAD)) and
                        found.place != other and found).place
    screen.picture("other-in-front")
    # Below the lower edge of the window, which is below the other one.
    white = screen.display.brightness(window[0] + 40, top + height + 1, 200, 9)
    expect("nothing is on the other window", set(white), {255})
    screen.display.click(left + 500, top + 20)
    wait_until("the shadow is back", lambda: screen.display.brightness(
        left - 2, top + height // 2, 1, 1)[0] < screen.display.brightness(60, 60, 1, 1)[0] - 10)
    screen.picture("window-in-front")
