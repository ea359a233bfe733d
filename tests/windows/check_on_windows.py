#!/usr/bin/python3
"""karvel-check for Windows on the same shops."""

import unittest

from windows_shop import WindowsShop
from check_test import CheckTest  # found by windows_shop


class CheckOnWindows(CheckTest):
    SECONDS = SECONDS_WITH_SITE = 60  # with Wine's own start
    WORDS_AT_LOGIN = "230 "

    def shop(self, *options):
        return WindowsShop(self, *options)


del CheckTest  # its own cases are for Linux

if __name__ == "__main__":
    unittest.main(verbosity=2)
