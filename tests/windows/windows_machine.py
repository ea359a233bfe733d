"""A Japanese Windows of the tests' own: a Wine prefix, a display, and its registry."""

import os
import re
import subprocess
import time
from pathlib import Path

WINE_RUN = Path(__file__).resolve().parents[2] / "scripts" / "wine-run"

# Generous: the first program of a prefix waits until Wine has set it up, on a busy machine.
PROGRAM_SECONDS = 180
WAIT_SECONDS = 60
SETTLE_SECONDS = 2


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def wait_until(condition, what, seconds=WAIT_SECONDS):
    deadline = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > deadline:
            raise AssertionError(f"not in {seconds} s: {what}")
        time.sleep(0.1)


class WindowsMachine:
    def __init__(self, prefix):
        self.prefix = Path(prefix)
        self.display, number = self._start_display()
        self.environment = {**os.environ, "KARVEL_WINEPREFIX": str(prefix),
                            "DISPLAY": f":{number}"}
        # It draws the windows' titles and gives them the keys.
        self.window_manager = subprocess.Popen(["openbox"], env=self.environment,
                                               stdout=subprocess.DEVNULL,
                                               stderr=subprocess.DEVNULL)

    @staticmethod
    def _start_display():
        display = subprocess.Popen(["Xvfb", "-displayfd", "1", "-screen", "0", "1024x768x24",
                                    "-nolisten", "tcp"],
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        number = display.stdout.readline().decode().strip()
        if not number:
            raise RuntimeError("no display")
        return display, number

    def shut_down(self):
        for process in (self.window_manager, self.display):
            process.terminate()
            process.wait()
        self.display.stdout.close()

    @property
    def home(self):
        """The user's folder; everybody's is the other one."""
        homes = [home for home in (self.prefix / "drive_c" / "users").iterdir()
                 if home.name != "Public"]
        return homes[0]

    def start(self, program, *arguments):
        return subprocess.Popen([WINE_RUN, program, *arguments], env=self.environment,
                                stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL)

    def run(self, program, *arguments):
        """Runs a program to its end; its exit code."""
        return subprocess.run([WINE_RUN, program, *arguments], env=self.environment,
                              stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, timeout=PROGRAM_SECONDS).returncode

    def start_holding(self, file, folder):
        """Starts something that has a file open for writing, and has written to it, until its
        standard input ends; `folder` takes the script."""
        script = folder / "hold.bat"
        script.write_bytes(f'@pause >> "{windows_path(file)}"\r\n'.encode("cp932"))
        return subprocess.Popen([WINE_RUN, "cmd", "/c", windows_path(script)],
                                env=self.environment, stdin=subprocess.PIPE,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def x(self, *command):
        """What xdotool says to a command; nothing when it failed."""
        return subprocess.run(["xdotool", *command], env=self.environment, check=False,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                              text=True).stdout.split()

    def wait_for_window(self, title):
        """The window with this title, when it has settled."""
        wait_until(lambda: self.x("search", "--onlyvisible", "--name", title), title)
        time.sleep(SETTLE_SECONDS)
        return self.x("search", "--onlyvisible", "--name", title)[-1]

    def press(self, *keys):
        self.x("key", *keys)

    def registry_values(self, key):
        """The texts and numbers under a key of the user's; empty when there is no such key."""
        export = self.prefix / "export.reg"
        export.unlink(missing_ok=True)
        self.run("reg", "export", f"HKCU\\{key}", windows_path(export), "/y")
        if not export.exists():
            return {}
        lines = export.read_text(encoding="utf-16").splitlines()
        pairs = (re.fullmatch(r'"([^"]+)"=(?:"(.*)"|dword:(\w+))', line) for line in lines)
        return {pair[1]: int(pair[3], 16) if pair[3] else re.sub(r"\\(.)", r"\1", pair[2])
                for pair in pairs if pair}

    def delete_key(self, key):
        self.run("reg", "delete", f"HKCU\\{key}", "/f")

    def delete_value(self, key, name):
        self.run("reg", "delete", f"HKCU\\{key}", "/v", name, "/f")
