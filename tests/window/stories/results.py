"""What a user does with the results: the outcome of a repair, the filter, the order."""

from driver.scene import told_always
from driver.screen import BOX, RESULTS, RESULTS_LIST, ROWS_LIST
from driver.waiting import expect, wait_until

ICON = r"HKEY_LOCAL_MACHINE\Software\Classes\Northwind.Palette\DefaultIcon"
PICTURE = r"C:\Program Files\Northwind Atelier\palette.ico,0"


def a_repair_is_undone_where_its_outcome_is_shown(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    screen.see_results()
    screen.press("Fix Selected")
    screen.press("Yes", BOX)
    screen.see("what stayed is told", lambda box: box.says("stays in the list"), BOX, 60)
    screen.press("OK", BOX)
    screen.see("the outcome instead of the number", lambda window: window.says(" repaired, ") and
               not window.says(RESULTS))
    expect("the icon's reference is gone", scene.box.value(ICON, "@"), None)
    screen.picture("outcome")
    screen.press("Undo this repair")
    screen.see("the undo has ended", lambda box: box.says("Finished Retriving undo data"), BOX, 60)
    screen.press("OK", BOX)
    expect("the icon's reference is back", scene.box.value(ICON, "@"), PICTURE)
    screen.see("the number again", lambda window: window.says(RESULTS) and
               not window.find("Button", "Undo this repair"))
    screen.picture("undone")


def _locations(window):
    return window.list(RESULTS_LIST).column(RESULTS_LIST)


@told_always
def the_filter_shows_the_rows_that_hold_a_text(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    found = screen.see_results().list(RESULTS_LIST)
    screen.display.keys("ctrl+f")
    screen.display.type("QUILL")
    window = screen.see("the rows with the text", lambda window: window.list(RESULTS_LIST) and
                        0 < len(window.list(RESULTS_LIST).rows) < len(found.rows))
    shown = window.list(RESULTS_LIST).rows
    expect("each row holds the text", [row["cells"] for row in shown if not any(
        "quill" in cell.lower() for cell in row["cells"])], [])
    screen.see("how many", lambda window: window.says(f"{len(shown)} of {len(found.rows)} shown"))
    screen.picture("filtered")
    screen.press("Select None")
    screen.see("none of them is ticked", lambda window: not any(
        row["ticked"] for row in window.list(RESULTS_LIST).rows))
    screen.press("Fix Selected")
    screen.see("the question tells of hidden rows",
               lambda box: box.says("Ticked rows that the filter hides: "), BOX)
    screen.picture("question")
    screen.press("No", BOX)
    wait_until("the question is closed", lambda: not screen.window(BOX))
    screen.display.keys("ctrl+f", "Escape")
    screen.see("all rows again", lambda window: len(window.list(
        RESULTS_LIST).rows) == len(found.rows))


def a_click_on_a_heading_sorts(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    before = screen.see_results().list(RESULTS_LIST)
    own = before.column(RESULTS_LIST)
    upwards = sorted(own, key=str.lower)

    def click_heading():
        screen.display.click(before.place[0] + 100, before.place[1] + 12)
    click_heading()
    screen.see("the first letters first", lambda window: _locations(window) == upwards)
    screen.picture("upwards")
    click_heading()
    screen.see("the last letters first", lambda window: _locations(window) == sorted(
        own, key=str.lower, reverse=True))
    screen.picture("downwards")
    click_heading()
    screen.see("the own order", lambda window: _locations(window) == own)


def a_bar_shows_the_findings_of_its_category(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    found = len(screen.see_results().list(RESULTS_LIST).rows)
    bar = screen.find("the bar of the fonts", lambda window: next(
        (each for each in window.controls if each.text.startswith("Fonts: ")), None)).text
    screen.picture("bars")
    screen.press(bar)
    screen.see("only the fonts", lambda window: len(window.list(RESULTS_LIST).rows) == int(
        bar.split(": ")[1]))
    screen.picture("fonts")
    screen.press(bar)
    screen.see("all rows again", lambda window: len(window.list(RESULTS_LIST).rows) == found)
    screen.click_row("Bad Reference Value", "OldTool")
    screen.see("the details instead of the bars", lambda window: not window.find("Button", bar))
    screen.picture("details")


def the_keyboard_opens_the_menu_of_a_row(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    screen.see_results()
    screen.click_row("Bad Reference Value", "OldTool")
    screen.display.keys("shift+F10")
    wait_until("the menu", lambda: screen.window("#32768"))
    screen.picture("menu")
    screen.display.keys("Down", "Down", "Return")
    screen.see("no row is ticked", lambda window: not any(
        row["ticked"] for row in window.list(RESULTS_LIST).rows))


def the_save_dialog_opens_over_the_window(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    around = screen.see_results().place
    screen.press("Create Report")
    dialog = screen.see("the dialog", name="Save As").place
    screen.picture("save-as")
    # The screen's own title is above what the dialog calls its place.
    title = 32
    for start, length, what in ((0, 2, "across"), (1, 3, "down")):
        apart = (2 * around[start] + around[length]) - (2 * dialog[start] + dialog[length])
        expect(f"it is in the middle {what}", abs(apart) <= 2 * title, True)
    screen.display.keys("Escape")


def a_hundred_thousand_findings_are_filtered_and_sorted(scene):
    fonts = 100000
    scene.add_dead_fonts(fonts)
    screen = scene.screen
    screen.start()
    screen.press("Start")
    screen.see("all categories are tested", lambda window: window.list(ROWS_LIST) and
               window.list(ROWS_LIST).rows[-1]["cells"][-1] == "Finished", seconds=900)
    # To look at all of them again would take minutes here.
    screen.press("Cancel")
    screen.see_results()
    screen.picture("found")
    screen.display.keys("ctrl+f")
    screen.display.type("gone 99999")
    screen.see("one of them", lambda window: window.says("1 of 100"), seconds=60)
    screen.picture("filtered")
    screen.display.keys("Escape")
    window = screen.see("all of them", lambda window: not window.says("1 of 100"), seconds=60)
    left, top = window.list(RESULTS_LIST).place[:2]
    screen.display.click(left + 100, top + 12)
    screen.see("the first letters first", lambda window: _locations(window) == sorted(
        _locations(window), key=str.lower), seconds=60)
    screen.picture("sorted")
