"""The modes of the suite: no window, result files, a running count for the suite's window."""

from driver import findings
from driver.scene import told_always
from driver.waiting import expect, wait_until

SETTINGS = r"HKEY_LOCAL_MACHINE\Software\Wow6432Node\zelvane\Zelvane Tuner Deluxe"
RUN = r"HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Run"
MANY = 40000


def _run(scene, argument, seconds=90):
    program = scene.box.start("zelvreg.exe", argument)
    windows = []

    def ended():
        windows.extend(each.text for each in scene.screen.windows() if each.process and
                       each.kind.startswith("Zelvreg"))
        return program.has_ended()
    wait_until(f"{argument} ends", ended, seconds)
    expect("no window was shown", windows, [])


def _listed(scene):
    text = scene.box.file("regtmp.txt")
    return None if text is None else text.decode("cp1252").split("\r\n")[:-1]


def _setting(scene, key, name):
    return scene.box.value(f"{SETTINGS}\\{key}", name)


def _old_tool(scene):
    return scene.box.value(RUN, "OldTool")


def w4_lists_and_ends(scene):
    scene.start_suite()
    _run(scene, "w4")
    found = _listed(scene)
    expect("the findings are listed", set(found) - {each[0] for each in scene.stage.own},
           {each[0] for each in scene.stage.console} - {each[0] for each in scene.stage.own})
    expect("their number", scene.box.file("regst.txt"), b" %d \r\n" % len(found))
    expect("nothing is repaired", _old_tool(scene) is not None, True)


def w4_tells_the_suite_how_many_it_has(scene):
    scene.add_dead_fonts(MANY)
    told = scene.start_suite()
    _run(scene, "w4")
    counts = [int(line.removeprefix("r|")) for line in told()]
    expect("the count rises", counts, sorted(counts))
    expect("it was told while the scan ran", counts != [] and 0 < counts[0] < MANY, True)
    expect("the list is whole", len(_listed(scene)) > MANY, True)


def w4_without_the_suite_ends_in_mid_scan(scene):
    scene.add_dead_fonts(MANY)
    _run(scene, "w4")
    expect("no list", _listed(scene), None)
    expect("no number", scene.box.file("regst.txt"), None)


@told_always
def w4_c4_repairs_and_ends(scene):
    scene.start_suite()
    _run(scene, "w4-c4")
    expect("it is repaired", _old_tool(scene), None)
    expect("no list", _listed(scene), None)
    expect("a number", scene.box.file("regst.txt").strip().isdigit(), True)
    expect("no fix-list backup", list(scene.box.folder.glob("backup/fixreg/*")), [])


def w4_c4_without_the_suite_ends_in_mid_scan(scene):
    scene.add_dead_fonts(MANY)
    _run(scene, "w4-c4")
    expect("nothing is repaired", _old_tool(scene) is not None, True)
    expect("no number", scene.box.file("regst.txt"), None)


def r_rechecks_the_ticked_rows(scene):
    _run(scene, "r")
    expect("it has run", _setting(scene, "real", "rc"), "1")
    expect("nothing is repaired", _old_tool(scene) is not None, True)
    expect("no number", scene.box.file("regst.txt"), None)


def r_tells_the_suite_nothing_but_that_it_has_run(scene):
    told = scene.start_suite()
    _run(scene, "r")
    expect("it has run", _setting(scene, "real", "rc"), "1")
    expect("no running count", told(), [])
    expect("nothing is repaired", _old_tool(scene) is not None, True)


def r_c_also_repairs_while_the_suite_runs(scene):
    told = scene.start_suite()
    _run(scene, "r-c")
    expect("it has run", _setting(scene, "real", "rc"), "1")
    expect("no running count", told(), [])
    expect("the startup entry is repaired", _old_tool(scene), None)


def r_c_repairs_the_ticked_rows(scene):
    scene.box.add_to_registry(f'[{SETTINGS}\\timer\\reg]\n"14"="0"\n')
    _run(scene, "r-c")
    expect("it has run", _setting(scene, "real", "rc"), "1")
    expect("a row that is not ticked is left alone", _old_tool(scene) is not None, True)
    expect("the others are repaired", scene.box.value(
        r"HKEY_LOCAL_MACHINE\Software\Northwind Studio", "Palette"), None)


def d_opens_without_start_while_the_suite_runs(scene):
    told = scene.start_suite()
    _opens_without_start(scene)
    expect("no running count", told(), [])


def d_opens_without_start(scene):
    _opens_without_start(scene)


def _opens_without_start(scene):
    screen = scene.screen
    program = scene.box.start("zelvreg.exe", "d")
    window = screen.see("the window")
    screen.picture("d")
    expect("Start cannot be pressed", window.find("Button", "Start").enabled, False)
    screen.press("refresh")
    expect("refresh scans", findings.of_list(screen.see_results().list("Invalid Data Location"))
           >= scene.stage.console, True)
    screen.press_picture("chameleonButton4")
    program.wait()
