"""Another language, now and at the next start."""

from driver.scene import LANGUAGE, told_always
from driver.screen import RESULTS_LIST
from driver.waiting import expect

LANGUAGES = {
    "Deutsch": ("german", "Auswahl reparieren", "Schriftarten", "0"),
    "Polski": ("polish", "Napraw zaznaczone", "Czcionki", "238"),
    "Français": ("french", None, None, "0"),
    "Español": ("spanish", None, None, "0"),
    "Português": ("portuguese", None, None, "0"),
    "Italiano": ("italian", "Ripara selezione", "Icone", "0"),
    "Nederlands": ("dutch", "Selectie herstellen", "Pictogrammen", "0"),
    "Русский": ("russian", "Исправить", "Шрифты", "204"),
    "日本語": ("japanese", "選択項目を修復", "フォント", "128"),
    "简体中文": ("chinese", "修复所选", "字体", "134"),
    "العربية": ("arabic", "إصلاح المحدد", "الخطوط", "178"),
}


@told_always
def every_language_can_be_chosen_and_is_kept(scene):
    screen = scene.screen
    program = screen.start()
    for name, (tag, caption, row, charset) in LANGUAGES.items():
        screen.press_picture("chameleonButton13")
        screen.see("the picker", lambda window, text=name: window.find("Static", text))
        if name == "Deutsch":
            screen.picture("picker")
        screen.click_text(name)
        screen.see("the picker is closed", lambda window, text=name: not window.find(
            "Static", text))
        if caption:
            screen.see(f"the window speaks {name}", lambda window, text=caption, cell=row:
                       window.find("Button", text) and any(
                           cell in each.column(each.headings[0]) for each in window.controls
                           if each.headings))
        screen.is_mirrored = tag == "arabic"
        screen.picture(tag)
        expect("the choice is kept", scene.box.value(LANGUAGE, "lang"), tag)
        expect("with its charset", scene.box.value(LANGUAGE, "langcode"), charset)
    screen.press_picture("chameleonButton4")
    program.wait()
    screen.start()
    screen.picture("next-start")
    screen.press_picture("chameleonButton13")
    screen.click_text("English")
    screen.is_mirrored = False
    screen.press("Start")
    screen.see_results()
    expect("the results are headed in English",
           screen.window().list(RESULTS_LIST) is not None, True)
