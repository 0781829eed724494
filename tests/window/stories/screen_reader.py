"""What somebody hears who does not see the window."""

from driver.screen import BOX, RESULTS_LIST
from driver.waiting import Unmet, expect

# The system's numbers of roles and states.
BUTTON, CHECK_BOX, OPTION, LIST, ROW, TEXT, COMBO = 43, 44, 45, 33, 34, 41, 46
PROGRESS = 48
CHECKED, PRESSED = 0x10, 0x8
# What a user can act on must have a name; the header of a list has those of its columns.
NAMED = {BUTTON, CHECK_BOX, OPTION, LIST, COMBO, PROGRESS}


def _told(window):
    return [each.accessible for each in window.controls if each.accessible]


def _expect_names(window, when):
    nameless = [each.kind for each in window.controls if each.accessible and
                each.accessible["role"] in NAMED and not each.accessible["name"].strip()]
    expect(f"{when}: each control has a name", nameless, [])


def _one(window, role, name):
    for facts in _told(window):
        if (facts["role"], facts["name"]) == (role, name):
            return facts
    raise Unmet(f"nothing has role {role} and the name “{name}”, but: "
                f"{sorted({(each['role'], each['name']) for each in _told(window)})}")


def every_control_has_a_name(scene):
    screen = scene.screen
    screen.start()
    window = screen.accessible()
    _expect_names(window, "options")
    for role, name in [(BUTTON, "Language"), (BUTTON, "About"), (BUTTON, "Minimize"),
                       (BUTTON, "Exit"), (BUTTON, "Help"), (BUTTON, "Start"),
                       (COMBO, "Text to find"), (COMBO, "Root to search"),
                       (CHECK_BOX, "Match Case"), (OPTION, "Anywhere"), (LIST, "Categories"),
                       (TEXT, "Registry Scan Options")]:
        _one(window, role, name)
    expect("the root", _one(window, COMBO, "Root to search")["value"], "HKEY_CURRENT_USER")
    expect("an option", _one(window, OPTION, "Anywhere")["state"] & CHECKED, CHECKED)
    first = _one(window, LIST, "Categories")["rows"][0]
    expect("the first category", (first["name"], first["role"], first["state"] & CHECKED),
           ("Fonts", ROW, CHECKED))
    expect("what it is about", first["description"],
           "Description: Font entries whose font file no longer exists. # Problems: 0.")
    screen.press("Manage undo options")
    screen.see("the undo options", lambda shown: shown.find("Button", "Undo Selected Changes"))
    window = screen.accessible()
    _expect_names(window, "undo options")
    expect("the page", _one(window, BUTTON, "Manage undo options")["state"] & PRESSED, PRESSED)
    expect("the colors", _one(window, COMBO, "Colors")["value"], "Colors: same as Windows")


def rows_tell_their_tick_and_how_sure_they_are(scene):
    screen = scene.screen
    screen.start()
    screen.press("Start")
    shown = screen.see_results().list(RESULTS_LIST)
    window = screen.accessible()
    _expect_names(window, "results")
    rows = _one(window, LIST, "Findings")["rows"]
    for told, row in zip(rows, shown.rows):
        expect("its name", told["name"], row["cells"][0])
        expect("its tick", bool(told["state"] & CHECKED), row["ticked"])
        expect("how sure it is", told["description"].split(".")[0] in (
            "Sure", "Likely", "Unsure"), True)
    screen.press("Fix Selected")
    screen.see("the question", name=BOX)
    question = screen.accessible(BOX)
    _expect_names(question, "question")
    for name in ("Yes", "No", "Close"):
        _one(question, BUTTON, name)


def a_letter_with_alt_presses_a_button(scene):
    screen = scene.screen
    screen.start()
    window = screen.see("the window")
    marked = [each.text for each in window.controls if each.kind == "Button" and "&" in each.text]
    letters = [text[text.index("&") + 1].lower() for text in marked]
    expect("no letter is there twice", sorted(letters), sorted(set(letters)))
    letter = next(text[text.index("&") + 1].lower() for text in marked
                  if text.replace("&", "") == "Exclusions")
    screen.display.keys(f"alt+{letter}")
    screen.see("the exclusions", lambda shown: shown.find("Button", "Add Keys"))
    screen.picture("exclusions")
