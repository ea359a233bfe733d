#!/usr/bin/python3
"""The real Windows program on a screen: the cases of the Linux program, and what is Windows' own."""

import unittest

from windows_case import OnWindows

import resident_on_screen  # found by windows_case
import set_up_on_screen

PANEL = resident_on_screen.SHOP_CAPTION


class SetUp(OnWindows, set_up_on_screen.SetUp):
    pass


class Resident(OnWindows, resident_on_screen.Resident):
    # Wine would take the icon into a window of its own for good.
    test_a_late_notification_area_gets_the_icon = None


class Windows(OnWindows):
    def test_the_minimised_panel_and_the_end_of_the_session(self):
        shop = self.shop("--receptions", "1")
        screen = self.screen()
        run = shop.start("-INIT", screen=screen)
        panel = screen.wait_for_window(PANEL)
        screen.ask("xdotool", "windowminimize", panel.number)
        screen.wait_for_icon("normal")
        run.end_in_order(lambda: screen.run("wineboot", "--end-session"))
        self.assertEqual(shop.delivered(), {})


if __name__ == "__main__":
    unittest.main(verbosity=2)
