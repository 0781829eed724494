"""Where a story takes place: a prefix of its own, a screen, and the findings to expect."""

import shutil
import subprocess

from . import findings
from .box import BUILD, NOTES, Box, copy_prefix
from .languages import LANGUAGES
from .screen import Screen
from .waiting import Unmet, wait_until

# Where the program keeps what its user has chosen.
SETTINGS = r"HKEY_LOCAL_MACHINE\Software\Wow6432Node\zelvane\Zelvane Tuner Deluxe\regscan"
LANGUAGE = r"HKEY_LOCAL_MACHINE\Software\Wow6432Node\zelvane\zelvane tuner\zelvreg"
DEMO_KEY = r"HKEY_LOCAL_MACHINE\Software\Classes\Northwind.Palette"


def on_a_computer_in(locale):
    """Marks a story that runs in another locale, which decides the code page."""
    def marked(story):
        story.locale = locale
        return story
    return marked


def on_a_screen_of(width, height):
    """Marks a story that needs another screen than the usual one."""
    def marked(story):
        story.screen = (width, height)
        return story
    return marked


def told_always(story):
    """Marks a story that ./test tells, too: together these go through every page and every window.
    All the others are told when they are asked for, or all are."""
    story.is_told_always = True
    return story


class Stage:
    """What all stories share."""

    def __init__(self, build, work, pictures, display, limit=900):
        """`display` is for what comes before the first scene; `limit` is how many seconds a scene
        may take."""
        self.limit = limit
        self.build, self.work, self.pictures, self.display = build, work, pictures, display
        self.empty, self.demo = work / "empty", work / "demo"
        tool = findings.CHECKOUT / "tools" / "demo-prefix"
        subprocess.run([tool, "--empty", build, self.empty], check=True)
        subprocess.run([tool, build, self.demo], check=True)
        # The findings of the console program, with the demo machine and without.
        self.own = self._scan("scan-empty", self.empty, None)
        self.console = self._scan("scan-demo", self.demo, self.demo / "demo.reg") - self.own

    def _scan(self, name, source, registry):
        prefix = self.work / name
        copy_prefix(source, prefix)
        box = Box(self.build, prefix, self.display.name, registry)
        try:
            return findings.of_json(box.sh("wine zelvreg-console.exe scan --json")[1])
        finally:
            box.close()

    def scene(self, story, locale=None, display=None):
        return Scene(self, story, locale, display or self.display)


class Scene:
    """The demo machine, as new; to be used in a with statement."""

    def __init__(self, stage, story, locale, display):
        self.stage, self.story, self.locale = stage, story, locale
        self.display = display
        self.prefix = stage.work / story

    def __enter__(self):
        try:
            self.box = self._box()
        except Unmet as difference:
            # Nothing of the program has run by then; Wine itself has failed to start.
            print(f"   {self.story.replace('_', ' ')} is set once more: {difference}", flush=True)
            shutil.rmtree(self.prefix)
            self.box = self._box()
        self.display.clear()
        self.screen = Screen(self.box, self.display, self.stage.pictures, self.story)
        return self

    def _box(self):
        copy_prefix(self.stage.demo, self.prefix)
        box = Box(self.stage.build, self.prefix, self.display.name,
                  self.stage.demo / "demo.reg", self.stage.limit, self.locale)
        # The registry editor ends with status 0 whether it has imported anything or not.
        if not box.registry(DEMO_KEY):
            box.close()
            raise Unmet(f"the demo machine's registry has {DEMO_KEY}")
        return box

    def add_dead_fonts(self, count):
        """Adds fonts without files, so many that a scan takes seconds."""
        self._add_fonts(f'"Gone {number}"="gone{number}.ttf"' for number in range(count))

    def add_living_fonts(self, count):
        """Adds fonts with a file: where most of them were dead, the program would say so."""
        self._add_fonts(f'"There {number}"="..\\\\regedit.exe"' for number in range(count))

    def _add_fonts(self, values):
        lines = "\n".join(values)
        self.box.add_to_registry("[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows NT\\"
                                 f"CurrentVersion\\Fonts]\n{lines}\n")

    def add_classes(self, count):
        """Adds COM classes without anything in them, so many that a scan takes minutes."""
        lines = "\n".join(f"[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\Class {number}]"
                          for number in range(count))
        self.box.add_to_registry(lines + "\n")

    def set_resolution(self, resolution):
        """Gives the screen a resolution for programs that are started from now on."""
        self.box.add_to_registry("[HKEY_CURRENT_USER\\Control Panel\\Desktop]\n"
                                 f'"LogPixels"=dword:{resolution:08x}\n')
        self.screen.resolution = resolution

    def make_dark(self):
        """Gives Windows its dark theme."""
        self.box.add_to_registry("[HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\"
                                 'Themes\\Personalize]\n"AppsUseLightTheme"=dword:00000000\n')

    def speak(self, language):
        """Has chosen a language for programs that are started from now on."""
        self.box.add_to_registry(
            f'[{LANGUAGE}]\n"lang"="{language.tag}"\n"langcode"="{language.charset}"\n'
            f'"langindex"="{LANGUAGES.index(language)}"\n')

    def start_in_high_contrast(self):
        """Starts the program as it looks in a scheme of high contrast. It looks for its files beside
        itself."""
        shutil.copy(self.stage.build / "window-contrast.exe", self.box.folder)
        self.screen.opened(self.box.start("window-contrast.exe"))

    def start_suite(self):
        """Starts the stand-in for the suite's window; returns a function for its lines so far."""
        heard = self.box.notes / "heard"
        self.box.start("window-suite.exe", f"Z:\\zelvreg\\prefix\\{NOTES}\\heard", folder=BUILD)
        wait_until("the suite's window", lambda: self.screen.window("Zelvane Tuner"))
        return lambda: heard.read_text("ascii").splitlines()

    def __exit__(self, *_):
        self.screen.close()
        self.box.close()
