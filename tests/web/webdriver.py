"""A small WebDriver client: headless Chromium by way of chromedriver, over plain HTTP on loopback."""
import base64
import json
import os
import subprocess
import tempfile
import urllib.error
import urllib.request

ELEMENT = "element-6066-11e4-a52e-4f735466cecf"  # the key that WebDriver gives elements
KEYS = {"Tab": "\ue004", "Enter": "\ue007", "Space": " ", "ArrowRight": "\ue014", "ArrowDown": "\ue015"}
FLAGS = ["--headless=new", "--disable-gpu", "--disable-dev-shm-usage", "--disable-background-networking",
         "--disable-component-update", "--no-first-run", "--no-proxy-server",
         "--host-resolver-rules=MAP * ~NOTFOUND, EXCLUDE 127.0.0.1"]  # it stays on this machine


class WebDriverError(Exception):
    pass


class Browser:
    """One window. Downloads go to the folder `downloads`."""

    def __init__(self, width=1280, height=800, scale=1):
        self.profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.downloads = os.path.join(self.profile.name, "downloads")
        self.address = f"http://127.0.0.1:{self._start_driver()}/session"
        flags = FLAGS + [f"--force-device-scale-factor={scale}", f"--user-data-dir={self.profile.name}"]
        if os.geteuid() == 0: flags.append("--no-sandbox")
        wanted = {"goog:chromeOptions": {"args": flags}, "goog:loggingPrefs": {"browser": "ALL"}}
        self.address += "/" + self._call("POST", "", {"capabilities": {"alwaysMatch": wanted}})["sessionId"]
        self._devtools("Browser.setDownloadBehavior", {"behavior": "allow", "downloadPath": self.downloads})
        self.resize(width, height)

    def _start_driver(self):
        """Its port. It gives up when the one that it chose for IPv6 is not free for IPv4, too."""
        for _ in range(50):
            self.driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE,
                                           stderr=subprocess.DEVNULL, text=True)
            for line in self.driver.stdout:
                if "started successfully on port" in line: return int(line.rsplit(None, 1)[-1].rstrip("."))
            self.driver.wait()
            self.driver.stdout.close()
        raise WebDriverError("chromedriver did not start")

    def close(self):
        try:
            self._call("DELETE", "")
        finally:
            self.driver.terminate()
            self.driver.wait(10)
            self.driver.stdout.close()
            self.profile.cleanup()

    def _call(self, method, path, body=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.address + path, data, {"Content-Type": "application/json"}, method=method)
        try:
            with urllib.request.urlopen(request, timeout=60) as answer: return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise WebDriverError(json.load(error)["value"]["message"]) from None

    def _devtools(self, command, parameters):
        return self._call("POST", "/goog/cdp/execute", {"cmd": command, "params": parameters})

    def resize(self, width, height, mobile=False):
        """The page's own size, whatever the window's frame takes."""
        self._devtools("Emulation.setDeviceMetricsOverride",
                       {"width": width, "height": height, "deviceScaleFactor": 0, "mobile": mobile})

    def open(self, url):
        self._call("POST", "/url", {"url": url})

    def run(self, script, *arguments):
        """What the script returns; a promise is awaited."""
        return self._call("POST", "/execute/sync", {"script": script, "args": arguments})

    def text(self, selector):
        return self.run("return document.querySelector(arguments[0])?.textContent ?? ''", selector)

    def click(self, selector):
        found = self._call("POST", "/element", {"using": "css selector", "value": selector})
        self._call("POST", f"/element/{found[ELEMENT]}/click", {})

    def choose(self, selector, value):
        self.run("""const field = document.querySelector(arguments[0]);
                    field.value = arguments[1];
                    field.dispatchEvent(new Event("change", { bubbles: true }));""", selector, value)

    def press(self, *keys):
        strokes = [{"type": kind, "value": KEYS.get(key, key)} for key in keys for kind in ("keyDown", "keyUp")]
        self._call("POST", "/actions", {"actions": [{"type": "key", "id": "keyboard", "actions": strokes}]})

    def point(self, x, y):
        move = {"type": "pointerMove", "duration": 0, "x": round(x), "y": round(y)}
        self._call("POST", "/actions", {"actions": [{"type": "pointer", "id": "mouse", "actions": [move]}]})

    def errors(self):
        """What the page has complained of since it was last asked."""
        entries = self._call("POST", "/se/log", {"type": "browser"})
        return [entry["message"] for entry in entries if entry["level"] == "SEVERE"]

    def screenshot(self, path):
        with open(path, "wb") as file: file.write(base64.b64decode(self._call("GET", "/screenshot")))
