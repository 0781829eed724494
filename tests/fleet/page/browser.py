"""A headless Chromium, driven through its DevTools protocol."""

import json
import os
import shutil
import subprocess
import tempfile
import time
from pathlib import Path

import websocket

LIMIT = 60  # seconds for any answer


class Browser:
    """Use it with `with`; nothing of the browser is left behind."""

    def __enter__(self):
        self.profile = tempfile.mkdtemp(prefix="zelvreg-browser-")
        command = ["chromium", "--headless=new", "--remote-debugging-port=0", "--no-first-run",
                   "--disable-background-networking", "--disable-component-update", "--disable-gpu",
                   "--disable-dev-shm-usage", "--hide-scrollbars", "--remote-allow-origins=*",
                   f"--user-data-dir={self.profile}", "about:blank"]
        if os.geteuid() == 0:
            command.insert(1, "--no-sandbox")  # it refuses to sandbox itself as root
        self.process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                        start_new_session=True)
        try:
            self.connect()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        self.process.terminate()
        try:
            self.process.wait(10)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        shutil.rmtree(self.profile, ignore_errors=True)

    def connect(self):
        port_file, end = Path(self.profile, "DevToolsActivePort"), time.monotonic() + LIMIT
        while not (port_file.exists() and port_file.read_text().count("\n") == 1):
            if self.process.poll() is not None or time.monotonic() > end:
                raise RuntimeError("chromium does not start")
            time.sleep(0.05)
        port, path = port_file.read_text().split()
        self.socket = websocket.create_connection(f"ws://127.0.0.1:{port}{path}", timeout=LIMIT)
        self.number, self.session, self.events = 0, None, []
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Network", "Runtime", "Log", "Accessibility"):
            self.call(f"{domain}.enable")

    def call(self, method, **parameters):
        self.number += 1
        message = {"id": self.number, "method": method, "params": parameters}
        if self.session:
            message["sessionId"] = self.session
        self.socket.send(json.dumps(message))
        while True:
            answer = json.loads(self.socket.recv())
            if answer.get("id") == self.number:
                if "error" in answer:
                    raise RuntimeError(f"{method}: {answer['error']['message']}")
                return answer["result"]
            self.events.append(answer)

    def open(self, path):
        """The events until the page has been loaded."""
        self.events = []
        self.call("Page.navigate", url=Path(path).absolute().as_uri())
        while not any(event.get("method") == "Page.loadEventFired" for event in self.events):
            self.events.append(json.loads(self.socket.recv()))

    def run(self, script):
        """The value of an expression in the page; of a promise, what it brings."""
        result = self.call("Runtime.evaluate", expression=script, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in result:
            raise RuntimeError(result["exceptionDetails"].get("exception", {}).get("description", script))
        return result["result"].get("value")

    def type(self, text):
        self.call("Input.insertText", text=text)

    def press(self, key, code):
        for kind in ("keyDown", "keyUp"):
            self.call("Input.dispatchKeyEvent", type=kind, key=key, code=key, windowsVirtualKeyCode=code,
                      **({"text": "\r"} if key == "Enter" and kind == "keyDown" else {}))

    def look(self, width, height, scheme, media=""):
        """The size of the window, and whether the system is light or dark."""
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1,
                  mobile=False)
        self.call("Emulation.setEmulatedMedia", media=media,
                  features=[{"name": "prefers-color-scheme", "value": scheme}])

    def requests(self):
        """Every address that the page has asked for."""
        return [event["params"]["request"]["url"] for event in self.events
                if event.get("method") == "Network.requestWillBeSent"]

    def complaints(self):
        """What the browser has to say of the page."""
        return [event["params"]["entry"]["text"] for event in self.events
                if event.get("method") == "Log.entryAdded"] + \
               [event["params"]["exceptionDetails"]["text"] for event in self.events
                if event.get("method") == "Runtime.exceptionThrown"]

    def picture(self, path, whole=False):
        import base64
        data = self.call("Page.captureScreenshot", captureBeyondViewport=whole)["data"]
        Path(path).write_bytes(base64.b64decode(data))
