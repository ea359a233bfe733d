#!/usr/bin/python3
"""The Windows program in the cases of the Linux one that need no screen."""

import unittest

from windows_shop import WindowsShop

import check_test  # found by windows_shop
import delivery_test
import ftp_servers_test
import kills_stress


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


class Kills(OnWindows, kills_stress.Stress):
    LONGEST_LIFE = 4.0
    SIDE_BY_SIDE = 3
    test_a_fleet_at_one_server_that_is_restarted = None  # which asks nothing else of the program


if __name__ == "__main__":
    unittest.main(verbosity=2)
