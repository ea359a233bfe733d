"""A Japanese Windows of the tests' own: a Wine prefix, a screen, and its registry."""

import os
import re
import subprocess
import sys
import time
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parents[1] / "e2e"))

from screen import Screen  # noqa: E402

WINE_RUN = Path(__file__).resolve().parents[2] / "scripts" / "wine-run"

# Generous: the first program of a prefix waits until Wine has set it up, on a busy machine.
PROGRAM_SECONDS = 180
SETTLE_SECONDS = 2


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


class WindowsMachine(Screen):
    """One screen for one life of Wine: what it runs draws where its first program has."""

    def __init__(self, add_cleanup, with_tray=True):
        super().__init__(add_cleanup, with_tray)
        self.prefix = Path(os.environ["KARVEL_WINEPREFIX"])
        add_cleanup(self.run, "wineboot", "--kill")
        # What the first program starts besides itself keeps that program's output open.
        self.run("wineboot")

    def start(self, program, *arguments, **how):
        return self.spawn(WINE_RUN, program, *arguments, **how)

    def run(self, program, *arguments):
        """Runs a program to its end; its exit code."""
        return subprocess.run([WINE_RUN, program, *arguments], env=self.environment,
                              stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, timeout=PROGRAM_SECONDS).returncode

    def settled_window(self, title):
        """The window with this in its title, when nothing moves in it any more."""
        def shown():
            return self.ask("xdotool", "search", "--onlyvisible", "--name", title).split()
        self.wait_until(shown, title)
        time.sleep(SETTLE_SECONDS)
        return shown()[-1]

    def registry_values(self, key):
        """The texts under a key of the user's; empty when there is no such key."""
        told = self.ask(WINE_RUN, "reg", "query", f"HKCU\\{key}", encoding="cp932")
        return dict(re.findall(r"^    (\S+)    REG_SZ    (.*)\r$", told, re.MULTILINE))
