"""A shop as on Windows, with the program running on a screen."""

import os
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parents[2] / "e2e"))

from screen import SETTLE_SECONDS, WAIT_SECONDS, WINE_RUN  # noqa: E402
from shop import DAY, PROGRAM, SAMPLE_SHOP, Shop  # noqa: E402

# The program's two pauses at its end, its last run, and a slow machine.
END_SECONDS = 40
TRAY_ATTEMPTS = 4


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


class WindowsShop(Shop):
    """The folders hold Japanese, blanks, and characters whose second byte is a backslash."""

    def __init__(self, test, screen, *options):
        self.test = test
        self.screen = screen
        self.base = Path(tempfile.mkdtemp(prefix="karvel-e2e-"))
        test.addCleanup(shutil.rmtree, self.base)
        self.folder = self.base / "集計 ソフト"
        self.out = self.base / "本部 表"
        self.out.mkdir()
        # The tool takes plain letters only.
        plain = self.base / "plain"
        subprocess.run([WINE_RUN, SAMPLE_SHOP, "--folder", plain, "--out-folder", "/out",
                        "--day", DAY, *options], env=screen.environment, cwd="/",
                       stdin=subprocess.DEVNULL, check=True)
        plain.rename(self.folder)
        self.set("HST FOLD", windows_path(self.folder))
        self.set("OUT FOLD", windows_path(self.out))
        shutil.copy(PROGRAM, self.folder)

    def start(self, *arguments):
        return WindowsRun(self, arguments)


class WindowsRun:
    def __init__(self, shop, arguments):
        self.shop = shop
        self.test = shop.test
        self.screen = shop.screen
        self.process = self.screen.start(shop.folder / "karvel.exe", *arguments)
        self.test.addCleanup(self.stop)

    def stop(self):
        self.process.kill()
        self.process.communicate()

    def wait_until(self, condition, what, seconds=WAIT_SECONDS):
        deadline = time.monotonic() + seconds
        while not (found := condition()):
            if self.process.poll() is not None:
                self.test.fail(f"ended before: {what}: {self.process.communicate()}")
            if time.monotonic() > deadline:
                self.screen.picture("failure")
                self.test.fail(f"not in {seconds} s: {what}; windows: {self.screen.windows()}")
            time.sleep(0.1)
        return found

    def shown(self, title):
        """The window of this title, once it is shown."""
        def named():
            return [number for number, name in self.screen.windows().items() if name == title]
        return self.wait_until(named, f"window {title}")[0]

    def window(self, title):
        """The window of this title, once it has the keyboard."""
        window = self.shown(title)
        self.wait_until(lambda: self.screen.focused() == window, f"focus in {title}")
        time.sleep(SETTLE_SECONDS)
        return window

    def no_window(self):
        self.wait_until(lambda: not self.screen.windows(), "no window")

    def menu(self):
        """The notification area's menu, opened; it has no title."""
        icon = self.tray_icon()
        self.screen.click(*icon, button=3)
        return self.shown("")

    def tray_icon(self):
        """The middle of the program's icon, once it is to be seen.

        Now and then an icon that Wine hands to the notification area stays blank and deaf: then
        the panel is brought back by request and sent away once more."""
        for _ in range(TRAY_ATTEMPTS):
            icon = self.wait_until(self.screen.tray_icon, "icon in the notification area")
            for _ in range(10):
                if self.screen.icon_is_drawn(icon):
                    return icon
                time.sleep(0.2)
            self.request("FTP INIT", 1)
            self.window("集計管理")
            self.screen.press("Escape")
            self.no_window()
        return self.test.fail("the icon stays blank")

    def request(self, key, value):
        """Puts a digit in place of the digit that a request key holds."""
        position = self.shop.own_settings.read_bytes().index(f"{key}=".encode()) + len(key) + 1
        with open(self.shop.own_settings, "r+b", buffering=0) as file:
            os.pwrite(file.fileno(), str(value).encode(), position)

    def wait_for_setting(self, key, value, file=None):
        self.wait_until(lambda: self.shop.setting(key, file) == value, f"{key} is {value}")

    def expect_end(self):
        try:
            output, _ = self.process.communicate(timeout=END_SECONDS)
        except subprocess.TimeoutExpired:
            self.screen.picture("failure")
            self.test.fail(f"still running after {END_SECONDS} s")
        self.test.assertEqual((self.process.returncode, output), (0, b""))
        self.test.assertIsNone(self.screen.tray_icon())
