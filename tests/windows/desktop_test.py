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
    def test_the_account_dialog_by_keys(self):
        shop = self.shop("--receptions", "1")
        screen = self.screen()
        run = shop.start("-INIT", screen=screen)
        screen.wait_for_window(PANEL)
        screen.key("Down", "Tab", "space")
        screen.wait_for_window("ユーザーサイト設定")
        for text in ("ftp.shop.example", "a&b", "noto", "pass1"):
            screen.type(text)
            screen.key("Tab")
        screen.type("1234567")
        screen.key("Tab", "Tab", "space")
        screen.picture("30-account-dialog")
        screen.key("Return")
        screen.wait_for_window(PANEL)
        screen.picture("31-own-site")

        # OK, off the button that has the focus: the new destination has not been reached yet, so
        # the program ends.
        screen.key("Tab", "Return")
        run.expect_end()
        keys = ("FTP TYPE", "FTP SEVE", "FTP FOLD", "FTP NAME", "FTP PASS", "FTP PORT", "FTP PSIV")
        self.assertEqual([shop.setting(key) for key in keys],
                         ["1", "ftp.shop.example", "a&b", "noto", "pass1", "12345", "0"])

    def test_the_minimised_panel_and_the_end_of_the_session(self):
        shop = self.shop("--receptions", "1")
        screen = self.screen()
        run = shop.start("-INIT", screen=screen)
        panel = screen.wait_for_window(PANEL)
        screen.ask("xdotool", "windowminimize", panel.number)
        screen.wait_for_icon("normal")
        work_file = shop.folder / "work.txt"
        work_file.write_text("x")
        screen.run("wineboot", "--end-session")
        run.expect_end()
        self.assertFalse(work_file.exists())
        self.assertEqual(shop.delivered(), {})

    def test_starts_that_end_when_they_are_answered(self):
        shop = self.shop()
        screen = self.screen()
        run = shop.start("-GRUP", screen=screen)
        screen.wait_for_window(resident_on_screen.GROUP_DIALOG)
        screen.key("Escape")
        run.expect_end()

        shop.ticket_settings.unlink()
        run = shop.start(screen=screen)
        screen.wait_for_window(resident_on_screen.PANEL)
        screen.picture("32-message")
        screen.key("Return")
        run.expect_end()


if __name__ == "__main__":
    unittest.main(verbosity=2)
