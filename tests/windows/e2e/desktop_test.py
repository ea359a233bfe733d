#!/usr/bin/python3
"""The real Windows program on a screen, driven by keys and mouse as by a person.

Each state leaves a picture in the folder that KARVEL_PICTURES names."""

import os
import unittest

from screen import Screen
from windows_shop import WindowsShop

from shop import SHOP_INFO, TABLE  # found by windows_shop

PANEL = "ｸﾞﾙｰﾌﾟ:12/北陸グループ 店舗:00345/能登表町店"


class DesktopTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.screen = Screen(os.environ["KARVEL_PICTURES"])
        cls.addClassCleanup(cls.screen.close)

    def shop(self, *options):
        return WindowsShop(self, self.screen, *options)

    def choose(self, run, entry):
        """Chooses a line of the notification area's menu: 0, 1 or, behind the separator, 2."""
        x, y, width, height = self.screen.area(run.menu())
        self.screen.click(x + width // 2, y + height * (0.17, 0.43, 0.83)[entry])

    def test_the_panel_opens_the_group_dialog(self):
        shop = self.shop("--receptions", "1")
        run = shop.start("-INIT")
        panel = run.window(PANEL)
        self.screen.picture("panel", panel)

        # Destination, output folder, "参照", interval, "ｸﾞﾙｰﾌﾟ登録".
        self.screen.press("Tab", "Tab", "Tab", "Tab", "space")
        dialog = run.window("グループ登録")
        self.screen.picture("group-dialog", dialog)
        # The first field's text is selected: what is typed replaces it, digits alone.
        self.screen.type("a7-b")
        self.screen.press("Tab", "Tab")
        self.screen.type("1x2345678")
        self.screen.picture("group-dialog-typed", dialog)
        self.screen.press("Return")

        run.window("ｸﾞﾙｰﾌﾟ:07/北陸グループ 店舗:12345/能登表町店")
        self.assertEqual([shop.setting(key) for key in ("GRUP CODE", "GRUP NAME", "FTP CODE")],
                         ["07", "北陸グループ", "12345"])
        self.screen.press("Escape")
        run.no_window()
        run.tray_icon()
        run.request("FTP EXIT", 1)
        run.expect_end()

    def test_the_account_dialog_hands_back_to_the_panel(self):
        shop = self.shop("--receptions", "1")
        run = shop.start("-INIT")
        run.window(PANEL)
        self.screen.press("Down", "Tab", "space")
        dialog = run.window("ユーザーサイト設定")
        self.screen.type("ftp.shop.example")
        self.screen.press("Tab")
        self.screen.type("a&b")
        self.screen.press("Tab")
        self.screen.type("noto")
        self.screen.press("Tab")
        self.screen.type("pass1")
        self.screen.press("Tab")
        self.screen.type("1234567")
        self.screen.press("Tab", "Tab", "space")
        self.screen.picture("account-dialog", dialog)
        self.screen.press("Return")
        panel = run.window(PANEL)
        self.screen.picture("panel-own-site", panel)

        # OK, off the button that has the focus: the new destination has not been reached yet, so
        # the program ends.
        self.screen.press("Tab", "Return")
        run.expect_end()
        keys = ("FTP TYPE", "FTP SEVE", "FTP FOLD", "FTP NAME", "FTP PASS", "FTP PORT", "FTP PSIV")
        self.assertEqual([shop.setting(key) for key in keys],
                         ["1", "ftp.shop.example", "a&b", "noto", "pass1", "12345", "0"])

    def test_the_icon_answers_the_right_button_alone(self):
        shop = self.shop("--receptions", "3")
        run = shop.start()
        icon = run.tray_icon()
        self.screen.picture("resident")
        self.screen.click(*icon)
        self.screen.click(*icon)
        self.assertEqual(self.screen.windows(), {})

        run.menu()
        self.screen.picture("menu")
        self.screen.click(300, 200)
        run.no_window()

        self.choose(run, 0)
        run.wait_until(lambda: TABLE in shop.delivered(), "manual send")
        self.choose(run, 1)
        panel = run.window("集計管理")
        self.assertIsNone(self.screen.tray_icon())
        self.screen.ask("xdotool", "windowminimize", panel)
        run.no_window()
        self.choose(run, 2)
        run.expect_end()
        self.assertEqual(set(shop.delivered()), {TABLE, SHOP_INFO})

    def test_a_failed_run_shows_in_the_icon(self):
        shop = self.shop("--receptions", "1")
        run = shop.start()
        self.assertFalse(self.screen.icon_is_red(run.tray_icon()))
        shop.out.rename(shop.out.with_name("away"))
        self.choose(run, 0)
        run.wait_until(lambda: self.screen.icon_is_red(run.tray_icon()), "failure icon")
        self.screen.picture("failure-icon")
        shop.out.with_name("away").rename(shop.out)
        self.choose(run, 0)
        run.wait_until(lambda: not self.screen.icon_is_red(run.tray_icon()), "normal icon")
        run.request("FTP EXIT", 1)
        run.expect_end()

    def test_shift_held_while_a_button_is_pressed_reaches_the_program(self):
        shop = self.shop("--receptions", "2", "--days", "2")
        run = shop.start("-INIT")
        panel = run.window(PANEL)
        self.screen.press("Tab", "Tab", "Tab", "Tab", "Tab", "Tab")
        self.screen.ask("xdotool", "keydown", "shift", "key", "--delay", "200", "space",
                        "keyup", "shift")
        # Every day that was kept, and not the current one.
        run.wait_until(lambda: {"00345_240103.txt", "00345_240104.txt"} < set(shop.delivered()),
                       "earlier days delivered")
        self.assertNotIn(TABLE, shop.delivered())
        self.screen.picture("panel-sent", panel)
        # The close box.
        self.screen.ask("xdotool", "key", "alt+F4")
        run.expect_end()

    def test_the_end_of_the_session_closes_in_order(self):
        shop = self.shop("--receptions", "1")
        run = shop.start()
        run.tray_icon()
        work_file = shop.folder / "work.txt"
        work_file.write_text("x")
        self.screen.wine("wineboot", "--end-session")
        run.expect_end()
        self.assertFalse(work_file.exists())
        self.assertEqual(shop.delivered(), {})

    def test_messages_wait_for_their_answer(self):
        shop = self.shop()
        shop.ticket_settings.unlink()
        run = shop.start()
        self.screen.picture("message", run.window("集計管理"))
        self.screen.press("Return")
        run.expect_end()

    def test_the_group_dialog_alone(self):
        shop = self.shop()
        run = shop.start("-GRUP")
        run.window("グループ登録")
        self.screen.press("Escape")
        run.expect_end()

    def test_the_folder_dialog(self):
        shop = self.shop()
        run = shop.start("-INIT")
        run.window(PANEL)
        self.screen.press("Tab", "Tab", "space")
        run.wait_until(lambda: len(self.screen.windows()) == 2, "folder dialog")
        self.screen.picture("folder-dialog")
        self.screen.press("Escape")
        run.window(PANEL)
        run.wait_until(lambda: len(self.screen.windows()) == 1, "folder dialog closed")
        self.screen.press("Escape")
        run.tray_icon()
        run.request("FTP EXIT", 1)
        run.expect_end()
        self.assertIn(shop.out.name, shop.setting("OUT FOLD"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
