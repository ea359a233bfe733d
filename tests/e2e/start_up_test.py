"""The ways in which a start goes, and the ways to end."""

import signal
import stat

from shop import END_SECONDS, TABLE, ShopTest

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
            shop.start(*arguments).expect_end(seconds=10)
        self.assertTrue(first.running())
        self.assertTrue(work_file.exists())
        self.assertEqual(shop.own_settings.stat().st_ino, before.st_ino)
        first.send_and_end()
        self.assertIn(TABLE, shop.delivered())

    def test_other_folders_and_killed_instances_do_not_count(self):
        one, other = self.shop(), self.shop()
        killed = one.start()
        killed.wait_for_start()
        other.send_once()
        killed.signal(signal.SIGKILL)
        killed.process.wait()
        one.set("FTP INIT", "1")
        one.send_once()

    def test_without_the_ticket_application_it_says_so_and_ends(self):
        shop = self.shop()
        shop.ticket_settings.unlink()
        shop.start().expect_end(error=NO_TICKET_APPLICATION)
        self.assertEqual(shop.log_messages(), [])

    def test_a_message_that_nobody_reads_does_no_harm(self):
        shop = self.shop()
        shop.ticket_settings.unlink()
        # Not as a service manager hands it on, but as it is by itself.
        run = shop.start(through=("env", "--default-signal=PIPE"))
        run.process.stderr.close()
        self.assertEqual(run.process.wait(END_SECONDS), 0)

    def test_the_first_start_creates_the_settings_and_ends(self):
        shop = self.shop()
        shop.own_settings.unlink()
        shop.start().expect_end()
        self.assertEqual([shop.setting(key) for key in ("HST FOLD", "GRUP NAME", "FTP INIT")],
                         [str(shop.folder), "るりはなリンク", "0"])
        self.assertEqual(stat.S_IMODE(shop.own_settings.stat().st_mode), 0o600)

    def test_windows_need_a_display(self):
        shop = self.shop()
        before = shop.own_settings.read_bytes()
        for argument in ("-INIT", "-GRUP"):
            with self.subTest(argument):
                shop.start(argument).expect_end(status=1, error=NO_DISPLAY, seconds=10)
        self.assertEqual(shop.own_settings.read_bytes(), before)

    def test_work_files_are_deleted_and_nothing_else(self):
        shop = self.shop("--receptions", "1")
        kept = ["a.txtx", "txt", "temp/c.txt", "Log/d.txt", "表.text", "protected.txt"]
        deleted = ["F.TXT", "表.txt", ".txt"]
        for name in kept + deleted:
            (shop.folder / name).write_text("x")
        (shop.folder / "protected.txt").chmod(0o444)
        (shop.folder / "folder.txt").mkdir()

        run = shop.start()
        run.wait_for_start()
        for name in deleted:
            self.assertFalse((shop.folder / name).exists(), name)
        (shop.folder / "late.txt").write_text("x")
        run.send_and_end()
        self.assertFalse((shop.folder / "late.txt").exists())
        for name in [*kept, "folder.txt"]:
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

    def test_a_settings_request_leaves_it_resident_without_a_display(self):
        shop = self.shop("--receptions", "1")
        run = shop.start()
        run.wait_for_start()
        run.request("FTP INIT", 2)
        run.wait_until(lambda: shop.setting("FTP INIT") == "0", "request answered")
        run.wait_for_tick()
        run.send_and_end()
        self.assertIn(TABLE, shop.delivered())
