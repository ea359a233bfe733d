"""A fresh shop is set up as a person does it, from the first start to the end."""

import shutil
import time

from screen_case import ScreenTest
from shop import TABLE

PANEL = "集計管理"


class SetUp(ScreenTest):
    def test_from_the_first_start_to_the_end(self):
        shop = self.shop("--receptions", "20")
        shop.own_settings.unlink()
        screen = self.screen()
        run = shop.start("-INIT", screen=screen)

        panel = screen.wait_for_window("ｸﾞﾙｰﾌﾟ:9999/るりはなリンク 店舗:/能登表町店")
        self.register_group(shop, screen, panel)
        panel = screen.wait_for_window("ｸﾞﾙｰﾌﾟ:07/Noto & Co 店舗:00345/能登表町店")
        self.choose_folder(shop, screen, panel, run)
        panel.press("FtpForm", "OK")
        self.watch_resident(shop, screen, run)
        self.return_to_panel(shop, screen, run)

        run.end_in_order(lambda: screen.choose(3))
        self.assertEqual(screen.icon(), None)

    def register_group(self, shop, screen, panel):
        panel.press("FtpForm", "ｸﾞﾙｰﾌﾟ登録")
        dialog = screen.wait_for_window("グループ登録")
        screen.type("x7")  # the first field has the focus, and its text is selected
        dialog.fill("GrpForm", "ｸﾞﾙｰﾌﾟ名", "Noto & Co")
        dialog.fill("GrpForm", "店舗ｺｰﾄﾞ", "3-45")
        self.assertEqual(shop.setting("FTP CODE"), "")
        dialog.press("GrpForm", "登　録")
        screen.wait_until(lambda: "グループ登録" not in screen.windows(), "the dialog's end")
        self.assertEqual([shop.setting(key) for key in ("FTP CODE", "GRUP CODE", "GRUP NAME")],
                         ["00345", "07", "Noto & Co"])

    def choose_folder(self, shop, screen, panel, run):
        panel.press("FtpForm", "ﾌｫﾙﾀﾞ設定 ( 指定ﾌｫﾙﾀﾞへ出力 )")
        panel.fill("FtpForm", "出力ﾌｫﾙﾀﾞ", shop.name_of(shop.out))
        panel.press("FtpForm", "60分")
        panel.press("FtpForm", "接続確認")
        self.wait_for_run(run, 1)
        self.assertEqual(
            [shop.setting(key) for key in ("FTP CHKC", "OUT FOLD", "FTP TYPE", "FTP TIME")],
            ["1", shop.name_of(shop.out), "0", "4"])
        self.assertEqual(set(shop.delivered()), {TABLE, "0700345.inf"})

        (shop.out / TABLE).unlink()
        panel.press("FtpForm", "手動転送", times=2)  # is one run
        self.wait_for_run(run, 2)
        self.assertIn(TABLE, shop.delivered())

    def wait_for_run(self, run, count):
        run.wait_for_runs(count)
        time.sleep(1)  # clicks are discarded until the panel is ready again, a moment later

    def watch_resident(self, shop, screen, run):
        screen.wait_for_icon("normal")
        screen.wait_for_no_window()
        screen.click_icon(times=2)
        screen.open_menu()
        self.assertEqual(screen.windows(), {})
        screen.click(300, 600)
        screen.wait_until(lambda: not screen.popup(), "the menu's end")

        shutil.rmtree(shop.out)
        screen.choose(1)
        screen.wait_for_icon("failure")
        shop.out.mkdir()
        shop.out.chmod(0o777)
        screen.choose(1)
        screen.wait_for_icon("normal")
        self.assertIn(TABLE, shop.delivered())

    def return_to_panel(self, shop, screen, run):
        screen.choose(2)
        panel = screen.wait_for_window(PANEL)
        screen.wait_until(lambda: not screen.icon(), "no icon")

        panel.press("FtpForm", "ﾕｰｻﾞｰ管理ｻｲﾄ")
        panel.press("FtpForm", "ユーザーサイト設定")
        dialog = screen.wait_for_window("ユーザーサイト設定")
        dialog.fill("UserForm", "ｻｲﾄ", "ftp.example.jp")
        screen.key("Escape")
        screen.wait_until(lambda: "ユーザーサイト設定" not in screen.windows(), "the dialog's end")
        panel.press("FtpForm", "ﾌｫﾙﾀﾞ設定 ( 指定ﾌｫﾙﾀﾞへ出力 )")
        panel.press("FtpForm", "参照")
        screen.wait_for_window(self.FOLDER_BROWSER)
        screen.key("Escape")
        screen.wait_until(lambda: self.FOLDER_BROWSER not in screen.windows(), "the browser's end")

        panel.press("FtpForm", "ｷｬﾝｾﾙ")
        screen.wait_for_icon("normal")
        screen.wait_for_no_window()
