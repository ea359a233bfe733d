"""karvel-check on real shops: one in order, and one that does not send for two reasons."""

import hashlib
import os
import subprocess
import time
from pathlib import Path

from ftp_servers import PyftpdServer
from shop import DAY, TABLE, ShopTest, environment_on

CHECK = Path(os.environ["KARVEL_CHECK"])
IN_ORDER = "この店舗の転送を妨げるものは見つかりませんでした。"
NOTHING_IN_THE_WAY, SOMETHING_IN_THE_WAY, WRONG_USE = 0, 1, 2


class CheckTest(ShopTest):
    SECONDS = 5
    WORDS_AT_LOGIN = "220 ready"

    def run_check(self, shop, *options):
        """Beside the program, and as its user: the lock is the user's."""
        subprocess.run(["cp", CHECK, shop.folder], check=True)
        user = shop.hand_over()
        before = self.state(shop)
        began = time.monotonic()
        run = subprocess.run(shop.command(CHECK.name, *options), cwd="/", env=environment_on(None),
                             capture_output=True, stdin=subprocess.DEVNULL, **user)
        self.seconds = time.monotonic() - began
        self.assertEqual(self.state(shop), before)
        return run

    def check(self, shop, *options):
        """Exit code, text and page."""
        page = shop.base / "page.html"
        run = self.run_check(shop, "--html", shop.name_of(page), *options)
        return run.returncode, (run.stdout + run.stderr).decode(), page.read_text("utf-8")

    @staticmethod
    def state(shop):
        return {path: (path.stat().st_mtime_ns, hashlib.sha256(path.read_bytes()).digest())
                for path in [*shop.folder.rglob("*"), *shop.out.rglob("*")] if path.is_file()}

    def expect_trouble(self, told, anchor):
        code, text, page = told
        self.assertEqual(code, SOMETHING_IN_THE_WAY, text)
        lines = [line for line in text.splitlines() if line.startswith("支障")]
        self.assertTrue(lines and lines[0].endswith(f"[#{anchor}]"), text)
        self.assertIn('class="trouble"', page)

    def test_a_shop_in_order(self):
        server = PyftpdServer(self)
        server.make("支店", {TABLE: b"old"})
        shop = self.shop("--receptions", "20", "--desks", "1", *server.shop_options("支店"))
        shop.start().wait_for_tick()
        code, text, page = self.check(shop, "--probe")
        self.assertLess(self.seconds, self.SECONDS)
        self.assertEqual((code, text.splitlines()[-1]), (NOTHING_IN_THE_WAY, IN_ORDER), text)
        for told in (text, page):
            self.assertIn(self.WORDS_AT_LOGIN, told)
            self.assertNotIn(server.password, told)
        self.assertIn(("RNTO", "karvel-check.tmp"), server.commands)
        self.assertEqual(server.files("支店"), {TABLE: b"old"})

    def test_a_shop_that_does_not_send(self):
        server = PyftpdServer(self)
        server.make("支店旧", {})
        shop = self.shop(*server.shop_options("支店"))
        self.expect_trouble(self.check(shop), "target-folder")
        self.assertNotIn("STOR", [name for name, _ in server.commands])

        shop.set("FTP PASS", "not-the-word")
        told = self.check(shop)
        self.expect_trouble(told, "login")
        self.assertNotIn("not-the-word", "".join(map(str, told)))

    def test_wrong_use_writes_nothing(self):
        shop = self.shop()
        for options in (["--html", shop.name_of(shop.folder / "page.txt")],
                        ["--html", shop.name_of(shop.own_settings)], ["--folder"], [DAY]):
            self.assertEqual(self.run_check(shop, *options).returncode, WRONG_USE, options)
