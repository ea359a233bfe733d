"""A screen of its own with a window manager and a notification area, and Windows programs on it."""

import os
import re
import subprocess
import time
from pathlib import Path

WINE_RUN = os.environ["KARVEL_WINE_RUN"]
WAIT_SECONDS = 30
SETTLE_SECONDS = 0.5
ICON_SIZE = 16
BLANK_ICON_COLOURS = 2


class Screen:
    def __init__(self, pictures):
        self.pictures = Path(pictures)
        self.pictures.mkdir(parents=True, exist_ok=True)
        self.servers = []
        read_end, write_end = os.pipe()
        self.serve("Xvfb", "-displayfd", str(write_end), "-screen", "0", "1024x768x24",
                   "-nolisten", "tcp", pass_fds=[write_end])
        os.close(write_end)
        with open(read_end, encoding="ascii") as numbers:
            self.display = ":" + numbers.readline().strip()
        self.environment = {**os.environ, "DISPLAY": self.display}
        self.serve("openbox", env=self.environment)
        self.serve("trayer", "--edge", "bottom", "--align", "right", "--widthtype", "request",
                   "--height", "28", env=self.environment)
        self.wine("reg", "add", r"HKCU\Control Panel\Desktop", "/v", "FontSmoothing", "/d", "2",
                  "/f")

    def serve(self, *command, **options):
        self.servers.append(subprocess.Popen(command, stdin=subprocess.DEVNULL,
                                             stdout=subprocess.DEVNULL,
                                             stderr=subprocess.DEVNULL, **options))

    def close(self):
        self.wine("wineboot", "--kill")
        for server in reversed(self.servers):
            server.terminate()
            server.wait(WAIT_SECONDS)

    def start(self, program, *arguments):
        return subprocess.Popen([WINE_RUN, program, *arguments], cwd="/", env=self.environment,
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT)

    def wine(self, *command):
        subprocess.run([WINE_RUN, *command], env=self.environment, stdin=subprocess.DEVNULL,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=180,
                       check=True)

    def ask(self, *command):
        """What a tool of the X server says; nothing when it finds nothing."""
        return subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=30,
                              check=False).stdout.decode()

    def press(self, *keys):
        self.ask("xdotool", "key", "--delay", "60", *keys)
        time.sleep(SETTLE_SECONDS)

    def type(self, text):
        self.ask("xdotool", "type", "--delay", "30", text)
        time.sleep(SETTLE_SECONDS)

    def click(self, x, y, button=1):
        self.ask("xdotool", "mousemove", str(x), str(y), "click", str(button))
        time.sleep(SETTLE_SECONDS)

    def windows(self):
        """Number and title of the windows that the program shows."""
        found = {}
        for number in self.ask("xdotool", "search", "--onlyvisible", "--class",
                               r"^karvel\.exe$").split():
            found[number] = self.ask("xdotool", "getwindowname", number).strip()
        return found

    def focused(self):
        return self.ask("xdotool", "getwindowfocus").strip()

    def area(self, window):
        text = self.ask("xdotool", "getwindowgeometry", "--shell", window)
        values = dict(line.split("=") for line in text.split())
        return tuple(int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))

    def tray_icon(self):
        """The middle of the one icon in the notification area, or None."""
        tree = self.ask("xwininfo", "-root", "-tree")
        panel = re.search(r'"panel": \("panel" "trayer"\).*((?:\n {10,}.*)*)', tree)
        icon = panel and re.search(r'"explorer\.exe"\) +(\d+)x(\d+)\S+ +\+(\d+)\+(\d+)', panel[1])
        if not icon:
            return None
        width, height, x, y = map(int, icon.groups())
        return x + width // 2, y + height // 2

    def picture(self, name, window="root"):
        """Keeps a picture for people to look at; its pixels as one text."""
        file = self.pictures / f"{name}.png"
        self.ask("import", "-window", window, str(file))
        return self.ask("identify", "-format", "%#", str(file))

    def colours_of_icon(self, middle):
        """Pixels of the notification area's icon by colour, as one text."""
        x, y = middle[0] - ICON_SIZE // 2, middle[1] - ICON_SIZE // 2
        shot = subprocess.run(["import", "-window", "root", "png:-"], env=self.environment,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, check=True).stdout
        crop = f"{ICON_SIZE}x{ICON_SIZE}+{x}+{y}"
        return subprocess.run(["convert", "png:-", "-crop", crop, "-unique-colors", "-depth", "8",
                               "txt:-"], input=shot, stdout=subprocess.PIPE,
                              check=True).stdout.decode()

    def icon_is_drawn(self, middle):
        return self.colours_of_icon(middle).count("#") > BLANK_ICON_COLOURS

    def icon_is_red(self, middle):
        colours = re.findall(r"#([0-9A-F]{2})([0-9A-F]{2})([0-9A-F]{2})", self.colours_of_icon(middle))
        return any(int(red, 16) > 160 and int(green, 16) < 80 and int(blue, 16) < 80
                   for red, green, blue in colours)
