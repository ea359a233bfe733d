"""Cases on a screen with the Windows program in the place of the Linux one."""

import functools
import unittest

from windows_machine import WindowsMachine
from windows_shop import WindowsShop

from screen_case import ScreenTest  # found by windows_shop


@functools.cache
def machine():
    """One for all cases: Wine takes its time to start, and its programs draw where the first has."""
    return WindowsMachine(unittest.addModuleCleanup)


class TypedShop(WindowsShop):
    OUT_FOLDER = "out"  # a name that the tests' keyboard has the keys for


class OnWindows(ScreenTest):
    FOLDER_BROWSER = "フォルダーの参照"
    UNTITLED = ""

    def shop(self, *options):
        return TypedShop(self, *options)

    def screen(self):
        screen = machine()
        screen.wait_until(lambda: not screen.windows() and not screen.icon(), "a clear screen")
        return screen
