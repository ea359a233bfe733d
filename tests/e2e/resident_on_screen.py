"""The program in the notification area, and what reaches it from outside."""

import os
import shutil
import signal
import subprocess
import time

from screen_case import ScreenTest
from shop import TABLE

PANEL = "集計管理"
GROUP_DIALOG = "グループ登録"
SHOP_CAPTION = "ｸﾞﾙｰﾌﾟ:12/北陸グループ 店舗:00345/能登表町店"


class Resident(ScreenTest):
    def start(self, *options, **how):
        shop = self.shop("--receptions", "5", *options)
        screen = self.screen(**how)
        return shop, screen, shop.start(screen=screen)

    def test_the_second_failure_in_a_row_shows_a_message(self):
        shop, screen, run = self.start("--interval", "4")
        screen.wait_for_icon("normal")
        shutil.rmtree(shop.out)
        # The count stands far above the shorter interval, also after a failure: ticks send.
        run.request("FTP TIME", 1)
        screen.wait_for_icon("failure")
        # Resident, the window whose caption would be the title has none.
        message = screen.wait_for_window(self.UNTITLED)
        # The message wants its answer first: the icon opens no menu.
        screen.click_icon(button=3)
        self.assertIsNone(screen.popup())
        screen.ask("xdotool", "windowactivate", message.number)
        screen.wait_for_window(self.UNTITLED)
        run.request("FTP INIT", 1)
        screen.key("Return")
        panel = screen.wait_for_window(PANEL)
        self.assertEqual(shop.setting("FTP INIT"), "0")

        shop.out.mkdir()
        shop.out.chmod(0o777)
        panel.press("FtpForm", "OK")
        screen.wait_for_icon("normal")
        run.send_and_end()
        self.assertIn(TABLE, shop.delivered())

    def test_a_late_notification_area_gets_the_icon(self):
        shop, screen, run = self.start(with_tray=False)
        for _ in range(2):
            tray = screen.start_tray()
            screen.wait_for_icon("normal")
            screen.end(tray)
        run.send_and_end()
        self.assertIn(TABLE, shop.delivered())


class OnTheBus(ScreenTest):
    def test_a_late_notification_area_that_hangs_gets_the_icon_in_the_end(self):
        shop, screen = self.shop("--receptions", "5"), self.screen(with_tray=False)

        def spawn(*command):
            return screen.spawn(*command, stdout=subprocess.PIPE, text=True, **shop.hand_over())

        def show_and_close_panel():
            run.wait_for_tick()
            screen.wait_for_window(PANEL).press("FtpForm", "OK")

        bus = spawn("dbus-daemon", "--session", "--nofork", "--print-address")
        screen.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        run = shop.start(screen=screen)
        area = spawn(os.environ["KARVEL_TRAY_AREA"])
        os.waitid(os.P_PID, area.pid, os.WSTOPPED)
        show_and_close_panel()
        begin = time.monotonic()
        show_and_close_panel()
        # One call to an area that hangs would last 25 seconds by itself.
        self.assertLess(time.monotonic() - begin, 20)
        area.send_signal(signal.SIGCONT)
        self.assertEqual(area.stdout.readline().strip(), "registered")
        run.end_in_order(run.process.terminate)


class End(ScreenTest):
    def test_it_ends_in_order_whatever_is_open(self):
        for opened in (PANEL, GROUP_DIALOG, "menu"):
            with self.subTest(opened):
                shop = self.shop()
                screen = self.screen()
                run = shop.start(screen=screen)
                screen.wait_for_icon("normal")
                if opened == "menu":
                    screen.open_menu()
                else:
                    run.request("FTP INIT", 2 if opened == GROUP_DIALOG else 1)
                    screen.wait_for_window(opened)
                run.end_in_order(screen.close_window if opened == PANEL else run.process.terminate)
                self.assertEqual(shop.delivered(), {})
                self.assertEqual((screen.windows(), screen.icon()), ({}, None))
