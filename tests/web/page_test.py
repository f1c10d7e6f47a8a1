#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
# The game's page in a real browser: Debian's chromium, headless, loads build/web/ from a local
# server and is driven through its DevTools protocol (a small websocket client, standard library
# only). The main menu must be drawn as the Linux build draws it under Xvfb (linux-menu.sh, the
# same pointer place); a click starts a one-player game; held keys move the player; the page's link downloads
# the run's recording, which the Linux build's checker must replay to its end; a recording opened in
# the page plays to the final state hash the Linux build gives it; the controls screen names the keys
# as the Linux build does, in the same font; the console shows no error.
#   page_test.py PAGE_FOLDER LINUX_GAME LINUX_VERIFY RECORDING ARTEFACTS
import base64, functools, glob, http.server, json, os, re, socket, struct, subprocess, sys, tempfile, threading
import time
import urllib.parse, urllib.request

POINTER = (400, 200)                 # where both pictures put the pointer, on the game's screen
ONE_PLAYER, FIRST_CHARACTER = (160, 260), (160, 328)
SETTINGS, CONTROLS = (160, 328), (160, 360)   # the main menu's entry, then the settings screen's
NAME_EDGES = 150                              # blurred pixels the key names' edges may differ in
WAIT = 60                            # seconds for anything to happen: the machine may be loaded


class WebSocket:
    """A client's text frames over one connection, as the DevTools protocol needs them."""

    def __init__(self, url):
        parts = urllib.parse.urlparse(url)
        self.sock = socket.create_connection((parts.hostname, parts.port), timeout=WAIT)
        key = base64.b64encode(os.urandom(16)).decode()
        self.sock.sendall((f"GET {parts.path} HTTP/1.1\r\nHost: {parts.netloc}\r\nUpgrade: websocket\r\n"
                           f"Connection: Upgrade\r\nSec-WebSocket-Key: {key}\r\nSec-WebSocket-Version: 13\r\n\r\n").encode())
        reply = b""
        while b"\r\n\r\n" not in reply:
            reply += self.sock.recv(1)
        if b" 101 " not in reply.split(b"\r\n")[0]:
            raise RuntimeError("no websocket: " + reply.decode(errors="replace"))

    def read(self, count):
        data = b""
        while len(data) < count:
            chunk = self.sock.recv(count - len(data))
            if not chunk:
                raise RuntimeError("the browser closed the connection")
            data += chunk
        return data

    def send(self, text):
        payload, mask = text.encode(), os.urandom(4)
        size = len(payload)
        header = struct.pack("!BB", 0x81, 0x80 | size) if size < 126 else (
            struct.pack("!BBH", 0x81, 0x80 | 126, size) if size < 65536 else struct.pack("!BBQ", 0x81, 0x80 | 127, size))
        self.sock.sendall(header + mask + bytes(b ^ mask[i % 4] for i, b in enumerate(payload)))

    def receive(self):
        message = b""
        while True:
            first, second = self.read(2)
            size = second & 0x7F
            if size == 126:
                size = struct.unpack("!H", self.read(2))[0]
            elif size == 127:
                size = struct.unpack("!Q", self.read(8))[0]
            payload = self.read(size)
            if first & 0x0F in (1, 2, 0):
                message += payload
                if first & 0x80:
                    return message.decode()


class Browser:
    """Chromium with one page, its console's errors collected."""

    def __init__(self, profile):
        self.process = subprocess.Popen(
            ["chromium", "--headless=new", "--no-sandbox", "--remote-debugging-port=0", f"--user-data-dir={profile}",
             "--use-gl=swiftshader", "--enable-unsafe-swiftshader", "--mute-audio", "--window-size=900,700",
             "--no-first-run", "--no-default-browser-check", "about:blank"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        port_file = os.path.join(profile, "DevToolsActivePort")
        deadline = time.time() + WAIT
        while not (os.path.exists(port_file) and open(port_file).read().count("\n") >= 1):
            if time.time() > deadline or self.process.poll() is not None:
                raise RuntimeError("chromium did not start")
            time.sleep(0.1)
        port = open(port_file).read().split("\n")[0]
        targets = json.load(urllib.request.urlopen(f"http://127.0.0.1:{port}/json/list", timeout=WAIT))
        self.socket = WebSocket(next(t for t in targets if t["type"] == "page")["webSocketDebuggerUrl"])
        self.next_id, self.errors, self.lines = 0, [], []
        for domain in ("Page", "Runtime", "Log"):
            self.call(domain + ".enable")

    def call(self, method, **params):
        self.next_id += 1
        self.socket.send(json.dumps({"id": self.next_id, "method": method, "params": params}))
        while True:
            message = json.loads(self.socket.receive())
            if message.get("id") == self.next_id:
                if "error" in message:
                    raise RuntimeError(f"{method}: {message['error']}")
                return message["result"]
            self.note(message)

    def wait_for_console(self, pattern, what):
        """The first console line that matches pattern, reading events as they come."""
        deadline = time.time() + WAIT
        while time.time() < deadline:
            for line in self.lines:
                match = re.search(pattern, line)
                if match:
                    return match
            self.evaluate("0")
            time.sleep(0.5)
        raise RuntimeError("waited in vain for " + what)

    def note(self, event):
        method, params = event.get("method"), event.get("params", {})
        if method == "Runtime.consoleAPICalled":
            text = " ".join(str(a.get("value", a.get("description", ""))) for a in params["args"])
            print("console:", text)
            self.lines.append(text)
            if params["type"] == "error":
                self.errors.append(text)
        elif method == "Runtime.exceptionThrown":
            details = params["exceptionDetails"]
            self.errors.append(details.get("exception", {}).get("description", details["text"]).split("\n")[0])
        elif method == "Log.entryAdded" and params["entry"]["level"] == "error":
            self.errors.append(params["entry"]["text"])

    def evaluate(self, expression):
        return self.call("Runtime.evaluate", expression=expression, returnByValue=True)["result"].get("value")

    def wait_for(self, expression, what):
        deadline = time.time() + WAIT
        while time.time() < deadline:
            try:
                if self.evaluate(expression):
                    return
            except RuntimeError:
                pass                # the page is between two documents
            time.sleep(0.2)
        raise RuntimeError("waited in vain for " + what)

    def canvas_png(self, path):
        """The canvas's pixels once the picture holds still: two looks a second apart agree."""
        previous = path + ".before.png"
        self.capture(previous)
        deadline = time.time() + WAIT
        while True:
            time.sleep(1)
            self.capture(path)
            if differing_pixels(previous, path) == 0 or time.time() > deadline:
                os.remove(previous)
                return path
            os.replace(path, previous)

    def capture(self, path):
        left, top = self.evaluate("(() => { const r = canvas.getBoundingClientRect(); return [r.left, r.top]; })()")
        clip = {"x": left, "y": top, "width": 640, "height": 480, "scale": 1}
        data = self.call("Page.captureScreenshot", format="png", clip=clip)["data"]
        with open(path, "wb") as file:
            file.write(base64.b64decode(data))

    def mouse(self, kind, x, y, **more):
        left, top = self.evaluate("(() => { const r = canvas.getBoundingClientRect(); return [r.left, r.top]; })()")
        self.call("Input.dispatchMouseEvent", type=kind, x=left + x, y=top + y, **more)

    def click(self, x, y):
        self.mouse("mouseMoved", x, y)
        self.mouse("mousePressed", x, y, button="left", clickCount=1)
        time.sleep(0.2)
        self.mouse("mouseReleased", x, y, button="left", clickCount=1)
        time.sleep(0.5)

    def hold_key(self, key, code, key_code, seconds):
        common = {"key": key, "code": code, "windowsVirtualKeyCode": key_code, "nativeVirtualKeyCode": key_code}
        self.call("Input.dispatchKeyEvent", type="keyDown", **common)
        time.sleep(seconds)
        self.call("Input.dispatchKeyEvent", type="keyUp", **common)

    def close(self):
        self.process.terminate()
        self.process.wait(timeout=WAIT)


def check_hidden_pauses(browser, playing, artefacts):
    """A tab hidden and shown again finds the game paused, as a window that lost its focus."""
    for hidden in ("true", "false"):
        browser.evaluate(f"""Object.defineProperty(document, 'hidden', {{ value: {hidden}, configurable: true }});
            Object.defineProperty(document, 'visibilityState', {{ value: {hidden} ? 'hidden' : 'visible', configurable: true }});
            document.dispatchEvent(new Event('visibilitychange'))""")
        time.sleep(0.5)
    paused = browser.canvas_png(os.path.join(artefacts, "web-paused.png"))
    changed = differing_pixels(playing, paused)
    print(f"hidden and shown again: the picture held still, {changed} pixels from play")
    return [] if changed > 10000 else ["a hidden tab did not pause the game"]


def check_download(browser, linux_verify, artefacts):
    """The page's link gives the run so far, which the Linux build replays checkpoint by checkpoint."""
    folder = os.path.join(artefacts, "downloads")
    os.makedirs(folder, exist_ok=True)
    browser.call("Browser.setDownloadBehavior", behavior="allow", downloadPath=os.path.abspath(folder))
    browser.evaluate("document.getElementById('download').click()")
    deadline = time.time() + WAIT
    while not glob.glob(os.path.join(folder, "*.kmr")):
        if time.time() > deadline:
            return ["the page's link downloaded no recording"]
        time.sleep(0.2)
    time.sleep(0.5)
    made = glob.glob(os.path.join(folder, "*.kmr"))[0]
    check = subprocess.run([linux_verify, made], capture_output=True, text=True)
    print("the downloaded recording on Linux:", check.stdout.strip().replace("\n", "; "))
    return [] if check.returncode == 0 else ["the downloaded recording went another way on Linux: " + check.stdout]


def check_replay(browser, linux_verify, recording):
    """A recording opened in the page plays to the final state hash the Linux build gives it."""
    expected = re.search(r"Final state hash: (\w+)", subprocess.run([linux_verify, recording], capture_output=True,
                                                                    text=True).stdout).group(1)
    with open(recording, "rb") as file:
        data = base64.b64encode(file.read()).decode()
    browser.evaluate(f"sessionStorage.setItem(REPLAY_KEY, '{data}'); location.reload()")
    time.sleep(1)
    browser.wait_for("typeof Module !== 'undefined' && Module.calledRun === true", "the replay to start")
    # Any key but Escape plays it four times as fast.
    common = {"key": "x", "code": "KeyX", "windowsVirtualKeyCode": 88, "nativeVirtualKeyCode": 88}
    browser.call("Input.dispatchKeyEvent", type="keyDown", **common)
    try:
        match = browser.wait_for_console(r"Replay left at step (\d+) of (\d+); state hash: (\w+)", "the replay's end")
    finally:
        browser.call("Input.dispatchKeyEvent", type="keyUp", **common)
    step, steps, reached = match.groups()
    print(f"the replay in the page: step {step} of {steps}, {reached}; on Linux {expected}")
    return [] if step == steps and reached == expected else [f"the replay in the page ended at {match.group(0)}"]


def open_controls(browser, url, artefacts, name):
    """A fresh visit's controls screen, the pointer where the Linux picture has it."""
    browser.call("Page.navigate", url=url)
    time.sleep(1)
    browser.wait_for("typeof Module !== 'undefined' && Module.calledRun === true", "the game to start again")
    browser.evaluate("canvas.style.width = '640px'")
    browser.canvas_png(os.path.join(artefacts, name + "-start.png"))
    for place in (SETTINGS, CONTROLS):
        browser.click(*place)
        browser.canvas_png(os.path.join(artefacts, name + "-after-click.png"))
    browser.mouse("mouseMoved", *POINTER)
    return browser.canvas_png(os.path.join(artefacts, name + ".png"))


def check_controls(browser, url, linux_game, artefacts):
    """The controls screen as the Linux build draws it."""
    linux_png = os.path.abspath(os.path.join(artefacts, "linux-controls.png"))
    subprocess.run([os.path.join(os.path.dirname(__file__), "linux-menu.sh"), os.path.abspath(linux_game),
                    *map(str, POINTER), linux_png, "%d,%d" % SETTINGS, "%d,%d" % CONTROLS], check=True)
    controls = open_controls(browser, url, artefacts, "web-controls")
    # The names' edges may differ by a shade: the desktop's SDL2_ttf places the glyphs through
    # HarfBuzz, the page's without. Blurred a little, only a name missing or moved still differs.
    differ, blurred = differing_pixels(controls, linux_png), differing_pixels(controls, linux_png, blur=True)
    print(f"controls screen: {differ} pixels differ from the Linux build's, {blurred} once blurred")
    return [] if blurred <= NAME_EDGES else [f"the controls screen differs from the Linux build's in {blurred} pixels"]


def differing_pixels(first, second, blur=False):
    """Pixels that differ; blurred, those that differ by more than a fifth."""
    options = []
    if blur:
        options = ["-fuzz", "20%"]
        for picture in (first, second):
            subprocess.run(["convert", picture, "-blur", "0x1", picture + ".blurred.png"], check=True)
        first, second = first + ".blurred.png", second + ".blurred.png"
    result = subprocess.run(["compare", "-metric", "AE", *options, first, second, "null:"], capture_output=True, text=True)
    return int(float(result.stderr.split()[0]))


def serve(folder):
    class Quiet(http.server.SimpleHTTPRequestHandler):
        def log_message(self, *args):
            pass
    handler = functools.partial(Quiet, directory=folder)
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return server


def main():
    folder, linux_game, linux_verify, recording, artefacts = sys.argv[1:6]
    linux_png = os.path.abspath(os.path.join(artefacts, "linux-menu.png"))
    subprocess.run([os.path.join(os.path.dirname(__file__), "linux-menu.sh"), os.path.abspath(linux_game),
                    *map(str, POINTER), linux_png], check=True)
    server = serve(folder)
    url = f"http://127.0.0.1:{server.server_address[1]}/index.html"
    failures = []
    with tempfile.TemporaryDirectory() as profile:
        browser = Browser(profile)
        try:
            browser.call("Page.navigate", url=url)
            browser.wait_for("typeof Module !== 'undefined' && Module.calledRun === true", "the game to start")
            # The canvas at its own size, so that the screenshot holds its pixels one to one.
            browser.evaluate("canvas.style.width = '640px'")
            # The game places the pointer itself as it starts: the test's place comes after.
            browser.canvas_png(os.path.join(artefacts, "web-start.png"))
            browser.mouse("mouseMoved", *POINTER)
            menu = browser.canvas_png(os.path.join(artefacts, "web-menu.png"))
            differ = differing_pixels(menu, linux_png)
            print(f"main menu: {differ} pixels differ from the Linux build's")
            if differ != 0:
                failures.append(f"the main menu differs from the Linux build's in {differ} pixels")
            # Each click once the picture it leads to holds still, so that a slow browser cannot
            # take two clicks in one step.
            browser.click(*ONE_PLAYER)
            browser.canvas_png(os.path.join(artefacts, "web-select.png"))
            browser.click(*FIRST_CHARACTER)
            # Play goes on by itself (lamps, enemies): a second alone against a second with D held.
            time.sleep(1.5)
            still, idle, moved = (os.path.join(artefacts, f"web-play-{i}.png") for i in (1, 2, 3))
            browser.capture(still)
            time.sleep(1)
            browser.capture(idle)
            browser.hold_key("d", "KeyD", 68, 1.5)
            browser.capture(moved)
            by_time, by_keys = differing_pixels(still, idle), differing_pixels(idle, moved)
            print(f"in play: {by_time} pixels changed in a second alone, {by_keys} while D was held")
            if differing_pixels(menu, still) < 10000:
                failures.append("the clicks did not start a game")
            if by_keys <= 2 * by_time + 100:
                failures.append("holding D did not move the player")
            failures += check_hidden_pauses(browser, moved, artefacts)
            failures += check_download(browser, linux_verify, artefacts)
            failures += check_replay(browser, linux_verify, recording)
            failures += check_controls(browser, url, linux_game, artefacts)
            time.sleep(0.5)
            browser.evaluate("0")           # collects the last console events
            failures += ["console error: " + error for error in browser.errors]
        finally:
            browser.close()
            server.shutdown()
    for failure in failures:
        print("FAIL:", failure)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
