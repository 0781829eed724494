"""What a user does with the results: the outcome of a repair, the filter, the order."""

from driver.screen import BOX, RESULTS, RESULTS_LIST
from driver.waiting import expect

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
