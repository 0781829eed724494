"""Fix, look at the registry, undo."""

from driver import findings
from driver.scene import told_always
from driver.screen import BOX, RESULTS_LIST
from driver.waiting import expect, wait_until

RUN = r"Software\Microsoft\Windows\CurrentVersion\Run"
CARD = r"HKEY_LOCAL_MACHINE\Software\Classes\MIME\Database\Content Type\application/x-harbour-card"
ICON = r"HKEY_LOCAL_MACHINE\Software\Classes\Northwind.Palette\DefaultIcon"
FONTS = r"HKEY_LOCAL_MACHINE\Software\Microsoft\Windows NT\CurrentVersion\Fonts"
JOURNALS = "Date and Time Of Creation"

# Key, value name, and the value before and after the repair. The undo restores all of it.
FACTS = [
    (CARD, "Extension", ".hbc", None),
    (ICON, "@", r"C:\Program Files\Northwind Atelier\palette.ico,0", None),
    ("HKEY_LOCAL_MACHINE\\" + RUN, "OldTool", r"C:\Program Files\Old Tool\oldtool.exe /tray", None),
    ("HKEY_LOCAL_MACHINE\\" + RUN.replace("Software", r"Software\Wow6432Node"), "OldTool", None,
     None),
    (FONTS, "Quill Script (TrueType)", "quill.ttf", None),
    (FONTS, "Harbour Mono (TrueType)", "harbour.ttf", "harbour.ttf"),
]


def _check(scene, when, column):
    for fact in FACTS:
        expect(f"{when}: {fact[0]}, {fact[1]}", scene.box.value(fact[0], fact[1]), fact[column])


@told_always
def a_repair_changes_the_registry_and_is_undone(scene):
    screen = scene.screen
    _check(scene, "before", 2)
    screen.start()
    screen.press("Manage undo options")
    screen.see("no journal yet", lambda window: window.list(JOURNALS))
    screen.press("Automatically Save Undo Information")
    screen.see("the option is ticked", lambda window: window.find(
        "Button", "Automatically Save Undo Information").ticked)
    screen.picture("undo-options")

    screen.press("Start")
    found = screen.see_results().list(RESULTS_LIST)
    unsure = findings.of_list(found) - findings.ticked_of_list(found)
    screen.press("Fix Selected")
    screen.see("how sure the rows are", lambda box: box.says("unsure and left alone"), BOX)
    screen.picture("question")
    screen.press("No", BOX)
    screen.see("nothing is repaired", lambda window: window.list(RESULTS_LIST).rows)
    _check(scene, "after a No", 2)
    screen.press("Fix Selected")
    screen.press("Yes", BOX)
    screen.see("what stayed is told", lambda box: box.says("stays in the list, without a tick"),
               BOX, 60)
    screen.picture("outcome")
    screen.press("OK", BOX)
    left = screen.see("what was not repaired is left", lambda window: window.list(
        RESULTS_LIST) and len(window.list(RESULTS_LIST).rows) < len(found.rows)).list(RESULTS_LIST)
    expect("none of it is ticked", findings.ticked_of_list(left), set())
    expect("all that is unsure is left", unsure - findings.of_list(left), set())
    screen.picture("repaired")
    wait_until("the safety export", lambda: list(scene.box.folder.glob("backup/registry/*")))
    _check(scene, "after the repair", 3)

    screen.press("Manage undo options")
    journals = screen.see("a journal", lambda window: window.list(JOURNALS) and
                          window.list(JOURNALS).rows).list(JOURNALS)
    journal = next(name for name in journals.column(JOURNALS) if " t " in name)
    screen.click_row(JOURNALS, journal)
    screen.picture("journals")
    screen.press("Undo Selected Changes")
    screen.see("the undo has ended", lambda box: box.says("Finished Retriving undo data"), BOX, 60)
    screen.picture("undone")
    screen.press("OK", BOX)
    _check(scene, "after the undo", 2)
    screen.press("Remove Selected Item")
    screen.see("the journal has gone", lambda window: journal not in window.list(
        JOURNALS).column(JOURNALS))
