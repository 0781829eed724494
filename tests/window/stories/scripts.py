"""Names in every script: found, searched for, excluded, repaired and restored."""

from driver import findings
from driver.scene import on_a_computer_in
from driver.screen import BOX, RESULTS, RESULTS_LIST, middle
from driver.waiting import expect, wait_until

CURRENT = "Software\\Microsoft\\Windows\\CurrentVersion"
LIVING = ["users/Иван/app.exe", "ポケット/x.exe", "windows/Fonts/予.ttf"]
FIREWALL = ("SYSTEM\\CurrentControlSet\\services\\SharedAccess\\Parameters\\FirewallPolicy\\"
            "FirewallRules")
# Of the programs more are there than not, or none would be called dead.
REGISTRY = rf"""[HKEY_LOCAL_MACHINE\{CURRENT}\Run]
"Иван"="C:\\Users\\Иван\\app.exe"
"Пётр"="C:\\Users\\Иван\\gone.exe"

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows NT\CurrentVersion\Fonts]
"ソ (TrueType)"="予.ttf"
"表 (TrueType)"="會.ttf"

[HKEY_LOCAL_MACHINE\{FIREWALL}]
"ポ1"="v2.30|Action=Allow|Active=TRUE|Dir=In|App=C:\\ポケット\\x.exe|Name=ポ|"
"ポ2"="v2.30|Action=Allow|Active=TRUE|Dir=In|App=C:\\ポケット\\gone.exe|Name=ポ|"

[HKEY_LOCAL_MACHINE\{CURRENT}\Uninstall\表計算]

[HKEY_CURRENT_USER\Software\Ветер]
"Живой"="C:\\Users\\Иван\\app.exe"
"Путь"="C:\\Users\\Иван\\ветер.txt"

[HKEY_LOCAL_MACHINE\{CURRENT}\App Paths\Иван.exe]
@="C:\\Users\\Иван\\app.exe"

[HKEY_LOCAL_MACHINE\{CURRENT}\App Paths\Пётр.exe]
@="C:\\Users\\Иван\\app.exe"

[HKEY_LOCAL_MACHINE\{CURRENT}\App Paths\ポ.exe]
@="C:\\ポケット\\x.exe"

[HKEY_LOCAL_MACHINE\{CURRENT}\App Paths\😀.exe]
@="C:\\App\\😀\\gone.exe"

[HKEY_LOCAL_MACHINE\{CURRENT}\App Paths\שלום.exe]
@="C:\\שלום\\gone.exe"
"""
# The findings: location, bad value, kind code. No name of a file that exists is among them.
FOUND = {
    ("Startup programs", "Пётр", "144"),
    ("表 (TrueType)", "會.ttf", "1"),
    ("v2.30|Action=Allow|Active=TRUE|Dir=In|App=C:\\ポケット\\gone.exe|Name=ポ|", "ポ2", "11"),
    ("Add/Remove programs", "表計算", "133"),
    ("Путь", "Путь", "3"),
    ("c:\\app\\😀\\gone.exe", "😀.exe", "3"),
    ("c:\\שלום\\gone.exe", "שלום.exe", "3"),
}
RUN = f"HKEY_LOCAL_MACHINE\\{CURRENT}\\Run"
RECORD = r"HKEY_LOCAL_MACHINE\Software\Microsoft\windows\currentversion\Uninstall" "\\表計算"
JOURNALS = "Date and Time Of Creation"


def _add_names(scene):
    for name in LIVING:
        path = scene.prefix / "drive_c" / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(b"")
    scene.box.add_to_registry(REGISTRY)


def _in_scripts(rows):
    """Those of the findings that have a letter outside ASCII."""
    return {row[:3] for row in rows if not "".join(row).isascii()}


def names_of_every_script_are_found(scene):
    _are_found(scene)


@on_a_computer_in("ja_JP")
def names_of_every_script_are_found_on_a_japanese_computer(scene):
    _are_found(scene)


def _are_found(scene):
    _add_names(scene)
    console = findings.of_json(scene.box.sh("wine zelvreg-console.exe scan --json")[1])
    expect("what the console program finds", _in_scripts(console), FOUND)
    screen = scene.screen
    screen.start()
    screen.press("Start")
    told = findings.of_list(screen.see_results().list(RESULTS_LIST))
    expect("the window finds what the console program finds", told, console)
    screen.click_row(RESULTS_LIST, "表 (TrueType)")
    screen.see("the bad value below the list", lambda window: window.says("會.ttf"))
    screen.picture("japanese")
    screen.click_row(RESULTS_LIST, "c:\\שלום\\gone.exe")
    screen.see("the path below the list", lambda window: window.says("c:\\שלום\\gone.exe"))
    screen.picture("hebrew-and-emoji")


def a_name_in_cyrillic_is_searched_for(scene):
    _add_names(scene)
    screen = scene.screen
    with screen.display.keyboard("ru"):
        screen.start()
        field = screen.find("the field for a text", lambda window: next(
            (each for each in window.controls if each.kind == "Edit"), None))
        screen.display.click(*middle(field.place))
        # The keyboard has no A to select everything.
        screen.display.keys("End", "shift+Home")
        screen.display.type("Иван\\")
        screen.see("what is typed", lambda window: window.find("Edit", "Иван\\"))
    screen.press("Find")
    window = screen.see("what it found", lambda window: window.list(RESULTS_LIST) and
                        window.says(f"{RESULTS} 1"), seconds=60)
    expect("the file that is gone", window.list(RESULTS_LIST).column(RESULTS_LIST),
           ["c:\\users\\иван\\ветер.txt"])
    screen.picture("searched")


def a_name_in_japanese_is_excluded(scene):
    # Text that the code page does not have makes the file UTF-8.
    _is_excluded(scene, "utf-8-sig")


@on_a_computer_in("ja_JP")
def a_name_in_japanese_is_excluded_on_a_japanese_computer(scene):
    _is_excluded(scene, "cp932")


def _is_excluded(scene, encoding):
    _add_names(scene)
    screen = scene.screen
    before = scene.box.file("exregscan.txt")
    screen.start()
    screen.press("Start")
    screen.see_results()
    screen.click_row("Bad Reference Value", "表計算")
    screen.press_exclude()
    screen.see("the row has gone", lambda window: "表計算" not in
               window.list(RESULTS_LIST).column("Bad Reference Value"))
    screen.picture("excluded")
    expect("the file of exclusions", scene.box.file("exregscan.txt"),
           (before.decode("ascii") + RECORD + "\r\n").encode(encoding))
    screen.press("refresh")
    rows = findings.of_list(screen.see_results().list(RESULTS_LIST))
    expect("all others are found again", _in_scripts(rows),
           {row for row in FOUND if row[1] != "表計算"})
    screen.press("Exclusions")
    screen.row("Registration Key", RECORD)
    screen.picture("exclusions")


def a_name_in_cyrillic_is_repaired_and_restored(scene):
    _is_repaired_and_restored(scene)


@on_a_computer_in("ja_JP")
def a_name_in_cyrillic_is_repaired_and_restored_on_a_japanese_computer(scene):
    _is_repaired_and_restored(scene)


def _is_repaired_and_restored(scene):
    _add_names(scene)
    screen = scene.screen
    screen.start()
    screen.press("Manage undo options")
    screen.press("Automatically Save Undo Information")
    screen.press("Start")
    count = screen.see_results().list(RESULTS_LIST).count
    screen.press("Select None")
    screen.tick_row("Bad Reference Value", "Пётр")
    screen.picture("ticked")
    screen.press("Fix Selected")
    screen.press("Yes", BOX)
    screen.see("it is repaired", lambda window: window.list(RESULTS_LIST) and
               window.list(RESULTS_LIST).count == count - 1, seconds=60)
    screen.picture("repaired")
    values = scene.box.registry(RUN)[RUN]
    expect("the dead entry has gone", "Пётр" in values, False)
    expect("the living one is there", values.get("Иван"), r'"C:\\Users\\Иван\\app.exe"')

    screen.press("Manage undo options")
    journals = screen.see("a journal", lambda window: window.list(JOURNALS) and
                          window.list(JOURNALS).rows).list(JOURNALS)
    screen.click_row(JOURNALS, next(name for name in journals.column(JOURNALS) if " t " in name))
    screen.press("Undo Selected Changes")
    screen.see("the undo has ended", lambda box: box.says("Finished Retriving undo data"), BOX, 60)
    screen.picture("undone")
    screen.press("OK", BOX)
    wait_until("the entry is back", lambda: scene.box.value(RUN, "Пётр") ==
               "C:\\Users\\Иван\\gone.exe")
