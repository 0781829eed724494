"""The window itself: the notification area, the About dialog, the report, the exit."""

from driver.scene import told_always
from driver.screen import BOX, MAIN, RESULTS, RESULTS_LIST, ROWS_LIST, SMALL, middle
from driver.waiting import expect, wait_until

TICKS = r"HKEY_LOCAL_MACHINE\Software\Wow6432Node\zelvane\Zelvane Tuner Deluxe\timer\reg"


def it_goes_to_the_notification_area_and_comes_back(scene):
    screen = scene.screen
    screen.start()
    expect("no icon yet", screen.tray_icon(), None)
    screen.press_picture("chameleonButton23")
    wait_until("the window is hidden", lambda: not screen.window())
    place = wait_until("an icon in the notification area", screen.tray_icon)
    screen.picture("minimised")
    screen.display.click(*middle(place))
    screen.see("the window")
    wait_until("the icon is gone", lambda: not screen.tray_icon())
    screen.picture("back")
    screen.press("Start")
    screen.see_results()


def it_casts_a_shadow(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    left, top, width, height = screen.see_results() and screen.window().place
    screen.picture("shadow")
    reach = 14
    ground = screen.display.brightness(left - 60, top - 20, 1, 1)[0]
    for side, part in {
            "left": screen.display.brightness(left - reach, top + height // 2, reach, 1),
            "right": screen.display.brightness(left + width, top + height // 2, reach, 1)[::-1],
            "below": screen.display.brightness(left + width // 2, top + height, 1, reach)[::-1],
    }.items():
        expect(f"{side} it ends within {reach} pixels", part[0], ground)
        expect(f"{side} it grows darker towards the window", part, sorted(part, reverse=True))
        expect(f"{side} it can be seen", part[-1] < ground - 10, True)


@told_always
def it_shows_its_about_dialog(scene):
    screen = scene.screen
    screen.start()
    screen.press_picture("chameleonButton18")
    screen.see("the dialog", lambda dialog: dialog.says("About"), SMALL)
    expect("the window is hidden", screen.window(MAIN), None)
    screen.picture("about")
    screen.display.keys("Escape")
    wait_until("the dialog is closed", lambda: not screen.window(SMALL))
    screen.see("the window")
    screen.picture("closed")


def a_report_is_written_and_shown(scene):
    screen = scene.screen
    # Windows has a viewer for text files; in a Wine prefix the viewer is not associated with them.
    scene.box.add_to_registry('[HKEY_LOCAL_MACHINE\\Software\\Classes\\.txt]\n@="txtfile"\n')
    screen.start()
    screen.press("Start")
    rows = screen.see_results().list(RESULTS_LIST).rows
    screen.press("Create Report")
    screen.see("the dialog for its place", name="Save As")
    screen.picture("save-as")
    screen.display.type("C:\\report.txt")
    screen.display.keys("Return")
    report = scene.prefix / "drive_c" / "report.txt"
    wait_until("the report", lambda: report.exists() and
               b"This Report Made by Zelvane Tuner" in report.read_bytes())
    screen.see("the viewer of texts", name="Notepad", seconds=30)
    screen.picture("report")
    lines = report.read_bytes().decode("cp1252").split("\r\n")
    expect("a line for each row", lines[4:4 + len(rows)], [
        "  |  ".join(row["cells"][index].strip() for index in (0, 3, 4, 1)) for row in rows])


@told_always
def it_searches_the_registry(scene):
    screen = scene.screen
    screen.start()
    screen.press("Find")
    window = screen.see("what it found", lambda window: window.list(RESULTS_LIST) and
                        window.says(f"{RESULTS} 3"), seconds=60)
    expect("the files of the user that are gone", window.list(RESULTS_LIST).column(RESULTS_LIST), [
        r"c:\users\ann\sketch.ico", r"c:\users\ann\plugins\sketch.dll",
        r"c:\users\ann\documents\poster.pdf"])
    screen.picture("searched")


def it_keeps_the_ticks(scene):
    screen = scene.screen
    program = screen.start()
    screen.tick_row(ROWS_LIST, "Fonts")
    screen.tick_row(ROWS_LIST, "Help files")
    screen.picture("unticked")
    screen.press_picture("chameleonButton4")
    program.wait()
    wanted = {"font": "0", "dll": "1", "help": "0", "16": "1"}
    expect("the ticks are kept", {name: scene.box.value(TICKS, name) for name in wanted}, wanted)
    screen.start()
    rows = screen.see("the rows", lambda window: window.list(ROWS_LIST)).list(ROWS_LIST).rows
    expect("the next start has them", [row["cells"][0] for row in rows if not row["ticked"]],
           ["Fonts", "Help files"])
    screen.picture("next-start")
    screen.press("Start")
    expect("no font is found", [row for row in screen.see_results().list(RESULTS_LIST).rows
                                if row["cells"][2] == "1"], [])


def a_row_is_ticked_by_the_keyboard(scene):
    screen = scene.screen
    screen.start()
    screen.click_row(ROWS_LIST, "Fonts")
    screen.display.keys("Down", "space")
    wait_until("the tick changes", lambda: not screen.row(ROWS_LIST, "Shared DLLs")[1]["ticked"])
    screen.picture("by-keyboard")


def it_can_be_used_by_the_keyboard_alone(scene):
    screen = scene.screen
    keys = screen.display.keys
    screen.start()
    # Start has the focus.
    keys("Return")
    screen.see_results()
    keys("Tab", "Tab", "Tab", "shift+Tab", "Escape")
    screen.see_results()
    screen.picture("results")
    screen.press_picture("chameleonButton13")
    screen.see("the picker", lambda window: window.find("Static", "Deutsch"))
    keys("Down", "Return")
    screen.see("German", lambda window: window.find("Button", "Auswahl reparieren"))
    screen.picture("german")
    keys("space")
    screen.see("the picker again", lambda window: window.find("Static", "Deutsch"))
    keys("Up", "Escape")
    screen.see("no picker, and German still", lambda window: window.find(
        "Button", "Auswahl reparieren") and not window.find("Static", "Deutsch"))


def a_message_keeps_the_window_waiting(scene):
    """A question must be answered, even if another program was in front when it was shown."""
    screen = scene.screen
    screen.start()
    screen.press("Start")
    screen.see_results()
    screen.press("Remove selected item")
    screen.see("the question", name=BOX)
    window = screen.see("the window")
    screen.picture("question")
    start = window.find("Button", "Start")
    screen.display.click(*middle(start.place))
    expect("the question is still there", screen.window(BOX) is not None, True)
    screen.press("No", BOX)
    screen.see_results()


def a_second_start_ends_at_once(scene):
    screen = scene.screen
    first = screen.start()
    for arguments in ((), ("w4",), ("r-c",)):
        second = scene.box.start("zelvreg.exe", *arguments)
        second.wait(10)
    expect("the first one goes on", first.has_ended(), False)
    expect("nothing was listed", scene.box.file("regtmp.txt"), None)
    screen.press("Start")
    screen.see_results()


def a_field_answers_the_mouse(scene):
    screen = scene.screen
    screen.start()
    window = screen.see("the window")
    fields = [each for each in window.controls if each.kind == "ComboBox"]
    expect("two lists can be opened here", len(fields), 2)
    for field in fields:
        left, top, width, height = field.place
        screen.display.leave()

        def edge(place=field.place):
            return screen.display.pixels(place[0], place[1], place[2], 1)
        quiet = edge()
        # On its text, which may be a window of its own, and on its arrow.
        for x in left + 20, left + width - 8:
            screen.display.point(x, top + 12)
            wait_until("its edge is marked", lambda: edge() != quiet)
        screen.picture("hovered", pointing=True)
        screen.display.leave()
        wait_until("its edge is as before", lambda: edge() == quiet)
