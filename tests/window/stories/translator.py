"""The program for translators."""

from driver.languages import language
from driver.names import compare
from driver.scene import told_always
from driver.screen import MAIN, SMALL, middle, plain
from driver.waiting import expect, wait_until

TRANSLATOR = "ZelvregTranslator"
LANG = r"C:\Program Files (x86)\zelvreg\lang"


def _german(scene):
    return scene.box.folder / "lang" / "zelvreg-german.lang"


def _open(scene, tag):
    """Starts the program with the file of a language."""
    program = scene.box.start("zelvtrans.exe", rf"{LANG}\zelvreg-{tag}.lang")
    scene.screen.see("the translator", name=TRANSLATOR, seconds=30)
    return program


def _type(screen, text):
    """Types into the field for the translation, the lowest one, instead of what is there."""
    window = screen.see("the translator", name=TRANSLATOR)
    field = max((each for each in window.controls if each.kind == "Edit"),
                key=lambda each: each.place[1])
    screen.display.click(*middle(field.place))
    screen.display.keys("ctrl+a")
    screen.display.type(text)


@told_always
def what_is_missing_is_found_translated_and_shown(scene):
    screen = scene.screen
    german = language("german")
    file = _german(scene)
    whole = file.read_bytes()
    file.write_bytes(whole.replace(b"cmd_report=Bericht erstellen\r\n", b""))
    screen.start()
    screen.press_picture("chameleonButton18")
    screen.see("the About dialog", name=SMALL)
    screen.click_text("zelvtrans.exe", SMALL)
    window = screen.see("the translator", name=TRANSLATOR, seconds=30)
    choice = next(each for each in window.controls if each.kind == "ComboBox")
    screen.display.click(*middle(choice.place))
    screen.display.keys("d", "Return")
    screen.see("what is missing", lambda shown: shown.find("Static", "Missing"), TRANSLATOR)
    screen.picture("missing")
    _type(screen, "Bericht zeigen")
    screen.see("nothing is missing", lambda shown: not shown.find("Static", "Missing"), TRANSLATOR)
    screen.press("Save", TRANSLATOR)
    wait_until("the file is written", lambda: b"cmd_report=Bericht zeigen\r\n" in file.read_bytes())
    expect("nothing else is changed", sorted(file.read_bytes().split(b"\r\n")), sorted(
        whole.replace(b"Bericht erstellen", b"Bericht zeigen").split(b"\r\n")))
    screen.picture("saved")
    screen.display.keys("Escape")
    wait_until("the translator is closed", lambda: not screen.window(TRANSLATOR))
    screen.display.click(*middle(screen.window(SMALL).place))
    screen.display.keys("Escape")
    screen.see("the window", name=MAIN)
    screen.press_picture("chameleonButton13")
    screen.click_text(german.name)
    screen.see("the new text", lambda shown: shown.find("Button", "Bericht zeigen"))


def a_text_that_is_too_long_is_marked(scene):
    screen = scene.screen
    program = _open(scene, "german")
    _type(screen, "Schriftarten und alles, was ihnen irgendwie gleicht")
    screen.see("that it is too long",
               lambda shown: shown.find("Static", "Too long for its place"), TRANSLATOR)
    screen.press("Show only what needs work", TRANSLATOR)
    screen.picture("too-long")
    screen.display.keys("Escape")
    screen.see("a question", name="ZelvregMessageWindow")
    screen.picture("question")
    screen.press("Yes", "ZelvregMessageWindow")
    program.wait()
    expect("the file is as it was", b"irgendwie" in _german(scene).read_bytes(), False)


def it_is_laid_out_from_the_right(scene):
    screen = scene.screen
    arabic = language("arabic")
    scene.speak(arabic)
    scene.make_dark()
    _open(scene, "arabic")
    screen.see("its language", lambda shown: shown.find("Button", plain(arabic["zelvtrans/save"])),
               TRANSLATOR)
    screen.picture("arabic")


def its_controls_tell_what_they_are(scene):
    screen = scene.screen
    _open(scene, "german")
    compare(screen, language("english"), "translator", name=TRANSLATOR)
