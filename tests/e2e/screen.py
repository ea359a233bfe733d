"""A screen of a test's own, with a window manager and a notification area, and a hand on it."""

import functools
import json
import os
import re
import shutil
import subprocess
import tempfile
import time
from pathlib import Path

ICONS = Path(__file__).resolve().parents[2] / "assets" / "icons"
PICTURES = Path(os.environ["KARVEL_SCREENS"])

SIZE = "1024x768x24"
ICON_PIXELS = 16
WAIT_SECONDS = 60  # on a busy machine
# Of 1, on average over an icon's pixels. The two icons differ by more than 0.1.
CLOSE_ENOUGH = 0.05

# No word on clicks: a click that the window manager looks at first is overtaken by the keys behind.
WINDOW_MANAGER_RULES = """<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew></focus>
  <keyboard><keybind key="A-F4"><action name="Close"/></keybind></keyboard>
  <mouse></mouse>
</openbox_config>"""


class Screen:
    def __init__(self, add_cleanup, with_tray=True):
        self.add_cleanup = add_cleanup
        self.home = tempfile.mkdtemp(prefix="karvel-screen-")
        add_cleanup(shutil.rmtree, self.home, ignore_errors=True)
        self.environment = {**os.environ, "HOME": self.home, "LC_ALL": "C.UTF-8"}
        self.environment.pop("WAYLAND_DISPLAY", None)
        self.display = self.environment["DISPLAY"] = self.start_server()
        rules = Path(self.home, "window-manager.xml")
        rules.write_text(WINDOW_MANAGER_RULES, encoding="utf-8")
        self.spawn("openbox", "--sm-disable", "--config-file", rules)
        self.wait_until(lambda: "window id" in self.ask("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"),
                        "a window manager")
        if with_tray:
            self.start_tray()

    def start_server(self):
        """Starts a server on a number that it finds free itself; the display's name."""
        server = self.spawn("Xvfb", "-displayfd", "1", "-screen", "0", SIZE, "-nolisten", "tcp",
                            "-noreset", stdout=subprocess.PIPE, text=True)
        return f":{server.stdout.readline().strip()}"

    def start_tray(self):
        # It keeps its place and size: Wine learns where an icon stands when it is taken in, not when
        # the area moves afterwards, and an icon that it believes elsewhere stays blank and deaf.
        tray = self.spawn("trayer", "--edge", "top", "--align", "right", "--widthtype", "pixel",
                          "--width", "100", "--height", str(ICON_PIXELS + 2),
                          "--SetDockType", "true", "--expand", "false")
        self.wait_until(lambda: self.ask("xdotool", "search", "--name", "^panel$"),
                        "a notification area")
        return tray

    def spawn(self, *command, **how):
        quietly = dict.fromkeys(("stdin", "stdout", "stderr"), subprocess.DEVNULL)
        process = subprocess.Popen(command, env=self.environment, **(quietly | how))
        self.add_cleanup(self.end, process)
        return process

    def end(self, process):
        process.kill()
        process.communicate()

    def ask(self, *command, encoding="utf-8"):
        """What a tool says; empty when it finds nothing."""
        return subprocess.run(command, env=self.environment, check=False, timeout=WAIT_SECONDS,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL).stdout.decode(encoding)

    def wait_until(self, condition, what):
        deadline = time.monotonic() + WAIT_SECONDS
        while not condition():
            if time.monotonic() > deadline:
                PICTURES.mkdir(parents=True, exist_ok=True)
                picture = PICTURES / f"failed{self.display}.png"
                self.ask("import", "-window", "root", picture)
                raise AssertionError(f"not in {WAIT_SECONDS} s: {what}; windows: {self.windows()}; "
                                     f"picture: {picture}")
            time.sleep(0.05)

    # Windows

    def windows(self):
        """The windows on the screen: number by title."""
        numbers = re.findall(r"0x[0-9a-f]+", self.ask("xprop", "-root", "_NET_CLIENT_LIST"))
        titled = {self.ask("xdotool", "getwindowname", number).rstrip("\n"): number
                  for number in numbers}
        titled.pop("panel", None)  # the notification area's
        return titled

    def place(self, window):
        """Its left and upper edge on the screen, its width and its height."""
        about = self.ask("xwininfo", "-id", window)
        return [int(value) for value in
                re.findall(r"(?:Absolute upper-left [XY]|Width|Height): +(-?\d+)", about)]

    def wait_for_window(self, title):
        """Waits until the window is there and has the keyboard, which its program may take later
        than the window manager calls it the active one."""
        def ready():
            number = self.windows().get(title)
            return number and all(int(self.ask("xdotool", question) or 0) == int(number, 16)
                                  for question in ("getactivewindow", "getwindowfocus"))
        self.wait_until(ready, f"window {title!r}")
        return FormWindow(self, self.windows()[title])

    def wait_for_no_window(self):
        self.wait_until(lambda: not self.windows(), "no window")

    # Mouse and keyboard

    def type(self, text):
        self.ask("xdotool", "type", "--delay", "5", text)

    def key(self, *keys):
        self.ask("xdotool", "key", "--delay", "20", *keys)

    def click(self, x, y, button=1, times=1):
        self.ask("xdotool", "mousemove", str(x), str(y),
                 "click", "--repeat", str(times), "--delay", "60", str(button))

    def close_window(self):
        """Closes the active window by the window manager, as its close box does."""
        self.key("alt+F4")

    # The program's icon and its menu

    def icon(self):
        """The window that the notification area has taken in; or None."""
        for panel in self.ask("xdotool", "search", "--name", "^panel$").split():
            tree = self.ask("xwininfo", "-tree", "-id", panel)
            found = re.search(r'(0x[0-9a-f]+) .*\("(?:karvel|explorer\.exe)"', tree)
            if found:
                return found[1]
        return None

    def click_icon(self, **how):
        x, y, width, height = self.place(self.icon())
        self.click(x + width // 2, y + height // 2, **how)

    def icon_is(self, name):
        """Whether the drawing, laid over what is shown, changes little of it."""
        icon = self.icon()
        change = icon and self.ask(
            "convert", "x:" + icon, "(", "+clone", ICONS / f"{name}-16.png", "-gravity", "center",
            "-composite", ")", "-metric", "MAE", "-compare", "-format", "%[distortion]", "info:")
        return float(change or 1) < CLOSE_ENOUGH

    def wait_for_icon(self, name):
        self.wait_until(lambda: self.icon_is(name), f"the icon {name}")

    def popup(self):
        """The open menu's window; or None. The icon's own window and its tip are kept from the
        window manager, too."""
        for window in self.ask("xdotool", "search", "--onlyvisible", "--class", "karvel").split():
            about = self.ask("xwininfo", "-stats", "-wm", "-id", window)
            kept_from_manager = "Override Redirect State: yes" in about
            if kept_from_manager and "Tooltip" not in about and "Kde" not in about:
                return window
        return None

    def open_menu(self):
        self.click_icon(button=3)
        self.wait_until(self.popup, "the menu")

    def choose(self, entry):
        """Chooses the menu's first, second or third entry."""
        self.open_menu()
        menu = self.popup()
        x, y, width, height = self.place(menu)
        place = [x + width // 2, y + height * (2 * entry - 1) // 6]
        # A menu that has only just opened takes a click for the end of the click that opened it,
        # until a hand has moved and an entry is marked under it.
        plain = self.ask("import", "-window", menu, "txt:-")

        def marked():
            place[0] += 1
            self.ask("xdotool", "mousemove", *map(str, place))
            return self.ask("import", "-window", menu, "txt:-") != plain
        self.wait_until(marked, "a marked entry")
        self.ask("xdotool", "click", "1")
        self.wait_until(lambda: not self.popup(), "the menu's end")


@functools.cache
def forms():
    """The tables of the forms, as the program itself was built with them."""
    return json.loads(subprocess.run([os.environ["KARVEL_FORM_TABLES"]], check=True,
                                     stdout=subprocess.PIPE).stdout)


class FormWindow:
    """A form's window, and where its table has put the controls."""

    def __init__(self, screen, number):
        self.screen = screen
        self.number = number

    def press(self, form, caption, times=1):
        """Clicks on the control of that caption or, for a field, name."""
        table = forms()[form]
        # A field's label comes before it, under the same words.
        left, top, across, down = [
            control["rect"] for control in table["controls"]
            if caption in (control["caption"], control["accessibleName"])
            and not control["hidden"]][-1]
        width, height = table["size"]
        x, y, wide, high = self.screen.place(self.number)
        self.screen.click(x + (2 * left + min(across, 20)) * wide // (2 * width),
                          y + (2 * top + down) * high // (2 * height), times=times)

    def fill(self, form, caption, text):
        self.press(form, caption)
        self.screen.type(text)

