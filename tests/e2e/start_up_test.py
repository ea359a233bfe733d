"""The ways in which a start goes, and the ways to end."""

import signal
import stat

from shop import CODE_PAGE, TABLE, ShopTest

NO_DISPLAY = "karvel: 画面がないため設定を表示できません。\n"
NO_TICKET_APPLICATION = "集計管理: 発券システムの情報が見つかりません。　　\r\n\n"


class StartUpTest(ShopTest):
    def test_a_second_instance_leaves_the_first_alone(self):
        shop = self.shop("--receptions", "10")
        first = shop.start()
        first.wait_for_start()
        first.wait_for_tick()
        work_file = shop.folder / "work.txt"
        work_file.write_text("of the first")
        before = shop.own_settings.stat()

        for arguments in ((), ("-init",)):
            second = shop.start(*arguments)
            second.expect_end(seconds=10)

        self.assertTrue(first.running())
        self.assertTrue(work_file.exists())
        self.assertEqual(shop.own_settings.stat().st_ino, before.st_ino)
        first.request("FTP EXIT", 1)
        first.expect_end()
        self.assertIn(TABLE, shop.delivered())

    def test_other_folders_and_killed_instances_do_not_count(self):
        one, other = self.shop(), self.shop()
        killed = one.start()
        killed.wait_for_start()
        self.start_and_end(other)
        killed.signal(signal.SIGKILL)
        killed.process.wait()
        one.set("FTP INIT", "1")
        self.start_and_end(one)

    def start_and_end(self, shop):
        run = shop.start()
        run.wait_for_start()
        run.request("FTP EXIT", 1)
        run.expect_end()

    def test_without_the_ticket_application_it_says_so_and_ends(self):
        shop = self.shop()
        shop.ticket_settings.unlink()
        shop.start().expect_end(error=NO_TICKET_APPLICATION)
        self.assertEqual((shop.setting("FTP EXIT"), shop.setting("FTP INIT")), ("0", "0"))
        self.assertEqual(shop.log_messages(), [])

    def test_the_first_start_creates_the_settings_and_ends(self):
        shop = self.shop()
        shop.own_settings.unlink()
        shop.start().expect_end()
        self.assertEqual(
            shop.own_settings.read_bytes().decode(CODE_PAGE),
            "[FTP INFOMATION]\r\nFTP SEVE=\r\nFTP FOLD=\r\nFTP NAME=\r\nFTP PASS=\r\n"
            "FTP PORT=21\r\nFTP PSIV=1\r\nFTP CODE=\r\nFTP TIME=0\r\n"
            f"HST FOLD={shop.folder}\r\nOUT FOLD=\r\nFTP TYPE=3\r\nFTP CHKC=0\r\nFTP CHKF=0\r\n"
            "GRUP CODE=9999\r\nGRUP NAME=るりはなリンク\r\nFTP EXIT=0\r\nFTP INIT=0\r\n")
        self.assertEqual(stat.S_IMODE(shop.own_settings.stat().st_mode), 0o600)

    def test_windows_need_a_display(self):
        shop = self.shop()
        before = shop.own_settings.read_bytes()
        for argument in ("-INIT", "-GRUP"):
            with self.subTest(argument):
                shop.start(argument).expect_end(status=1, error=NO_DISPLAY, seconds=10)
        self.assertEqual(shop.own_settings.read_bytes(), before)

    def test_without_a_confirmed_destination_it_ends(self):
        cases = [
            {"FTP CHKC": "0"},
            {"FTP TYPE": "1"},
            {"FTP TYPE": "2"},
            {"FTP TYPE": "3"},
            {"FTP CODE": ""},
            {"FTP CODE": "00000"},
            {"FTP CODE": "x345"},
        ]
        runs = []
        for case in cases:
            shop = self.shop("--receptions", "1")
            for key, value in case.items():
                shop.set(key, value)
            runs.append((case, shop, shop.start()))
        for case, shop, run in runs:
            with self.subTest(case):
                run.expect_end()
                self.assertEqual(shop.delivered(), {})
                self.assertEqual(shop.log_messages(), [])

    def test_an_empty_ticket_folder_becomes_the_programs_own(self):
        shop = self.shop("--receptions", "1")
        shop.set("HST FOLD", "")
        shop.send_once()
        self.assertEqual(shop.setting("HST FOLD"), str(shop.folder))
        self.assertIn(TABLE, shop.delivered())

    def test_work_files_are_deleted_and_nothing_else(self):
        shop = self.shop("--receptions", "1")
        kept = ["a.txtx", "txt", "b.csv", "temp/c.txt", "Log/d.txt", "表.text"]
        deleted = ["e.txt", "F.TXT", "表.txt", ".txt"]
        for name in kept + deleted:
            (shop.folder / name).write_text("x")
        (shop.folder / "folder.txt").mkdir()
        protected = shop.folder / "protected.txt"
        protected.write_text("x")
        protected.chmod(0o444)

        run = shop.start()
        run.wait_for_start()
        for name in deleted:
            self.assertFalse((shop.folder / name).exists(), name)
        (shop.folder / "late.txt").write_text("x")
        run.request("FTP EXIT", 1)
        run.expect_end()
        self.assertFalse((shop.folder / "late.txt").exists())
        for name in [*kept, "folder.txt", "protected.txt"]:
            self.assertTrue((shop.folder / name).exists(), name)


class EndTest(ShopTest):
    def test_signals_end_it_in_order(self):
        runs = []
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            shop = self.shop("--receptions", "1")
            runs.append((number, shop, shop.start()))
        for number, shop, run in runs:
            with self.subTest(number):
                run.wait_for_start()
                run.wait_for_tick()
                (shop.folder / "work.txt").write_text("x")
                run.signal(number)
                run.expect_end(seconds=10)
                self.assertFalse((shop.folder / "work.txt").exists())
                self.assertEqual(shop.delivered(), {})

    def test_settings_requests_leave_it_resident_without_a_display(self):
        runs = []
        for request in (1, 2, 3):
            shop = self.shop("--receptions", "1")
            runs.append((request, shop, shop.start()))
        for request, shop, run in runs:
            with self.subTest(request):
                run.wait_for_start()
                run.request("FTP INIT", request)
                run.wait_until(lambda: shop.setting("FTP INIT") == "0", "request answered")
                run.wait_for_tick()
                run.request("FTP EXIT", 1)
                run.expect_end()
                self.assertIn(TABLE, shop.delivered())

    def test_an_exit_request_wins_over_a_settings_request(self):
        shop = self.shop("--receptions", "1")
        run = shop.start()
        run.wait_for_start()
        run.request("FTP EXIT", 9)
        run.request("FTP INIT", 2)
        run.expect_end()
        self.assertEqual((shop.setting("FTP INIT"), shop.setting("FTP EXIT")), ("2", "9"))
        self.assertIn(TABLE, shop.delivered())
