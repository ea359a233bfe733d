#!/usr/bin/python3
"""The Windows program in the cases of the Linux one that need no screen."""

import unittest

from windows_shop import WindowsShop

import check_test  # found by windows_shop
import delivery_test
import ftp_servers_test


class OnWindows(unittest.TestCase):
    def shop(self, *options):
        return WindowsShop(self, *options)


class Check(OnWindows, check_test.CheckTest):
    SECONDS = 60  # with Wine's own start
    WORDS_AT_LOGIN = "230 "


class Delivery(OnWindows, delivery_test.DeliveryTest):
    pass


class FtpServers(OnWindows, ftp_servers_test.FtpServersTest):
    pass


if __name__ == "__main__":
    unittest.main(verbosity=2)
