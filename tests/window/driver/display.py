"""A virtual display with a window manager and a notification area, and its mouse and keyboard."""

import contextlib
import os
import subprocess

from .waiting import wait_until

WIDTH, HEIGHT = 1280, 900
TRAY_HEIGHT = 24
# The arguments of xdotool for clicks.
CLICK = {1: ["click", "1"], 2: ["click", "--repeat", "2", "--delay", "60", "1"]}


class Display:
    def __init__(self, folder, width, height):
        """The output of the display's programs goes to `folder`."""
        self.width, self.height = width, height
        self.running = []
        self.logs = folder
        reading, writing = os.pipe()
        # The server chooses a free number and prints it. Memory cannot be shared with the box. When
        # its last program ends it would begin anew, and refuse one that comes in that moment.
        self._start("Xvfb", "-displayfd", str(writing), "-screen", "0", f"{width}x{height}x24",
                    "-dpi", "96", "-extension", "MIT-SHM", "-nolisten", "tcp", "-noreset",
                    pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as number:
            self.name = ":" + number.readline().strip()
        self.settings = {**os.environ, "DISPLAY": self.name}
        # A letter that no key has is typed by changing a key, which programs notice late.
        self._lay_out_keyboard("us")
        self.clear()
        self._start("openbox", "--sm-disable")
        self._start("xcompmgr", "-n")
        self._start("trayer", "--edge", "bottom", "--align", "right", "--widthtype", "pixel", "--width", "60",
                    "--height", str(TRAY_HEIGHT), "--SetDockType", "false", "--tint", "0xEEF2F7",
                    "--alpha", "255", "--transparent", "true")
        wait_until("a window manager", lambda: "window id" in self._ask(
            "xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))
        wait_until("a notification area", self.tray)

    def _start(self, *command, **more):
        with open(self.logs / f"{command[0]}.log", "a", encoding="utf-8") as log:
            self.running.append(subprocess.Popen(command, stdout=log, stderr=log, env=getattr(
                self, "settings", None), **more))

    def _ask(self, *command):
        return subprocess.run(command, env=self.settings, text=True, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, check=False).stdout

    def clear(self):
        """Paints the ground anew: something of a large window that was closed may be left on it."""
        subprocess.run(["hsetroot", "-solid", "#DCE4EE"], env=self.settings, check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def close(self):
        for process in reversed(self.running):
            process.terminate()
            process.wait()

    def tray(self):
        """The windows of X of the notification area's icons, or the area itself."""
        return self._ask("xdotool", "search", "--class", "trayer").split()

    def picture(self, path):
        subprocess.run(["import", "-silent", "-window", "root", path], env=self.settings,
                       check=True)

    def pixels(self, left, top, width, height):
        """The colors of a part of the screen, as one text that changes when they do."""
        return subprocess.run(
            ["import", "-silent", "-window", "root", "-crop", f"{width}x{height}+{left}+{top}",
             "-format", "%#", "info:"], env=self.settings, check=True, text=True,
            stdout=subprocess.PIPE).stdout

    def brightness(self, left, top, width, height):
        """How bright each pixel of a part of the screen is, 0 to 255, row by row."""
        return list(subprocess.run(
            ["import", "-silent", "-window", "root", "-crop", f"{width}x{height}+{left}+{top}",
             "-colorspace", "Gray", "-depth", "8", "gray:-"], env=self.settings, check=True,
            stdout=subprocess.PIPE).stdout)

    def _act(self, *words):
        subprocess.run(["xdotool", *words], env=self.settings, check=True)

    def point(self, left, top):
        self._act("mousemove", "--sync", str(left), str(top))

    def leave(self):
        """Moves the mouse to where there is nothing; it may be there already."""
        self._act("mousemove", "4", "4")

    def click(self, left, top, times=1, button=1):
        words = CLICK[times] if button == 1 else ["click", str(button)]
        self._act("mousemove", str(left), str(top), *words)

    def drag(self, left, top, to_left, to_top):
        """Presses at the first point and lets go at the second, by way of one between them."""
        self._act("mousemove", "--sync", str(left), str(top), "mousedown", "1")
        for x, y in ((left + to_left) // 2, (top + to_top) // 2), (to_left, to_top):
            self._act("mousemove", "--sync", str(x), str(y))
        self._act("mouseup", "1")

    def keys(self, *names):
        self._act("key", "--delay", "30", *names)

    def _lay_out_keyboard(self, layout):
        subprocess.run(["setxkbmap", "-layout", layout], env=self.settings, check=True)

    @contextlib.contextmanager
    def keyboard(self, layout):
        """A keyboard with other letters, for programs that are started meanwhile: a program that
        already runs notices new letters, or a change of layout, too late."""
        self._lay_out_keyboard(layout)
        try:
            yield
        finally:
            self._lay_out_keyboard("us")

    def type(self, text):
        self._act("type", "--delay", "15", text)


class Displays:
    """A display for each size of a screen that is asked for; it stays for the next story."""

    def __init__(self, folder):
        self.folder = folder
        self.of_size = {}

    def __getitem__(self, size):
        size = size or (WIDTH, HEIGHT)
        if size not in self.of_size:
            self.of_size[size] = Display(self.folder, *size)
        return self.of_size[size]

    def close(self):
        for display in self.of_size.values():
            display.close()
