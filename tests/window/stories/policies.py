"""What an administrator has decided is shown, and told to those who do not see it, and stays."""

from driver.scene import SETTINGS
from driver.screen import ROWS_LIST
from driver.waiting import expect

POLICIES = r"HKEY_LOCAL_MACHINE\Software\Policies\zelvane\zelvreg"
KEYS = "Registration Key"
EXCLUSION = r"HKEY_LOCAL_MACHINE\SOFTWARE\Acme"
WHO = "Set by your administrator"
READ_ONLY = 0x40


def _rows(screen, name):
    lists = [each.accessible for each in screen.accessible().controls if each.accessible]
    return next(each for each in lists if each["name"] == name and "rows" in each)["rows"]


def _ticked(window):
    return [row["cells"][0] for row in window.list(ROWS_LIST).rows if row["ticked"]]


def categories_stay_as_they_are_set(scene):
    scene.box.add_to_registry(f'[{POLICIES}]\n"categories"="fonts,uninstall"\n')
    screen = scene.screen
    screen.start()
    window = screen.see("the categories", lambda shown: shown.list(ROWS_LIST))
    wanted = ["Fonts", "Installed programs"]
    expect("those that are set", _ticked(window), wanted)
    for row in _rows(screen, "Categories"):
        expect("who has set it", row["description"].split(".")[0], WHO)
        expect("it cannot be changed", row["state"] & READ_ONLY, READ_ONLY)
    screen.click_box(ROWS_LIST, "Shared DLLs")
    screen.press("Select All")
    screen.picture("categories")
    expect("they are the same", _ticked(screen.window()), wanted)
    screen.press("Start")
    screen.see_results()
    screen.picture("scanned")


def exclusions_and_boxes_are_locked(scene):
    key = EXCLUSION.replace("\\", "\\\\")
    scene.box.add_to_registry(f'[{POLICIES}]\n"saveundo"="1"\n"protect"="1"\n\n'
                              f'[{POLICIES}\\Exclusions]\n"1"="{key}"\n')
    screen = scene.screen
    screen.start()
    screen.press("Manage undo options")
    box = screen.see("the box", lambda window: window.find(
        "Button", "Automatically Save Undo Information")).find(
            "Button", "Automatically Save Undo Information")
    expect("it is on and cannot be pressed", (box.ticked, box.enabled), (True, False))
    told = {each.accessible["name"]: each.accessible["description"]
            for each in screen.accessible().controls if each.accessible}
    expect("who has set it", told["Automatically Save Undo Information"], WHO)
    expect("who has set a safeguard", told["Spare what others need"], WHO)
    expect("nobody has set the next", told["Export before each repair"], "")
    screen.picture("undo")
    screen.press("Exclusions")
    screen.click_row(KEYS, EXCLUSION)
    expect("who has set the exclusion", _rows(screen, "Exclusions")[-1]["description"], WHO + ".")
    window = screen.window()
    for caption in ("Edit Key", "Remove"):
        expect(f"{caption} cannot be pressed", window.find("Button", caption).enabled, False)
    screen.picture("exclusions")
    expect("no setting was changed", scene.box.value(SETTINGS, "saveundo"), None)
