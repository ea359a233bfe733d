"""The ways in which a start goes, and the ways to end."""

import signal

from shop import END_SECONDS, TABLE, ShopTest

NO_DISPLAY = "karvel: 画面がないため設定を表示できません。\n"
NO_TICKET_APPLICATION = "集計管理: 発券システムの情報が見つかりません。　　\r\n\n"


class StartUpTest(ShopTest):
    def test_a_resident_stays_whatever_is_asked_of_it_or_started_beside_it(self):
        shop = self.shop("--receptions", "10")
        first = shop.start()
        first.wait_for_tick(request=2)
        first.wait_for_tick(request=1)
        shop.work_file.write_text("of the first")
        shop.start().expect_end(seconds=10)
        self.assertTrue(first.running())
        self.assertTrue(shop.work_file.exists())
        first.send_and_end()
        self.assertIn(TABLE, shop.delivered())

    def test_a_message_goes_to_standard_error_if_somebody_reads_it(self):
        shop = self.shop()
        shop.ticket_settings.unlink()
        shop.start().expect_end(error=NO_TICKET_APPLICATION)
        # Not as a service manager hands it on, but as it is by itself.
        run = shop.start(restore_signals=True)
        run.process.stderr.close()
        self.assertEqual(run.process.wait(END_SECONDS), 0)

    def test_windows_need_a_display_that_answers(self):
        shop = self.shop()
        before = shop.own_settings.read_bytes()
        for argument, display in (
                ("-INIT", {}), ("-GRUP", {}), ("-INIT", {"DISPLAY": "nonsense"}),
                ("-INIT", {"DISPLAY": ":4711", "QT_QPA_PLATFORM": "xcb"}),
                ("-INIT", {"WAYLAND_DISPLAY": "wayland-4711"}),
                ("-INIT", {"WAYLAND_DISPLAY": "/" + 500 * "x"}),
                ("-INIT", {"WAYLAND_DISPLAY": "/nonexistent", "QT_QPA_PLATFORM": "wayland"})):
            with self.subTest(argument, **display):
                run = shop.start(argument, variables=display)
                run.expect_end(status=1, error=NO_DISPLAY, seconds=10)
        self.assertEqual(shop.own_settings.read_bytes(), before)
        run = shop.start("-INIT", variables={"DISPLAY": ":4711", "QT_QPA_PLATFORM": "offscreen",
                                             "QT_LOGGING_RULES": "default.warning=false"})
        run.wait_for_start()
        run.end_in_order(run.process.terminate)

    def test_signals_end_it_in_order(self):
        shop = self.shop("--receptions", "1")
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(number):
                run = shop.start()
                run.wait_for_tick()
                run.end_in_order(lambda: run.process.send_signal(number), seconds=10)
                self.assertEqual(shop.delivered(), {})
