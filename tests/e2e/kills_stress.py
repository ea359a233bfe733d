"""The real program, killed at random moments of its runs, and many shops at one server."""

import itertools
import os
import random
import time
from concurrent.futures import ThreadPoolExecutor

from delivery_test import INFO
from ftp_servers import PyftpdServer
from shop import CODE_PAGE, SHOP_INFO, TABLE, ShopTest

SECONDS = float(os.environ.get("KARVEL_STRESS_SECONDS", "3"))
SHOPS = int(os.environ.get("KARVEL_STRESS_SHOPS", "6"))
SMALL_SHOP = ("--receptions", "60", "--desks", "2")
OLD_FILES = {TABLE: b"old", SHOP_INFO: b"old"}
CHANGED_BY_A_RUN = ("FTP EXIT", "FTP INIT", "FTP CHKC", "FTP CHKF", "GRUP BACK")


def settings(shop):
    """Every key and its value, in order."""
    lines = shop.own_settings.read_bytes().decode(CODE_PAGE).split("\r\n")
    return [tuple(part.strip() for part in line.partition("="))
            for line in lines if line and not line.startswith(CHANGED_BY_A_RUN)]


class Stress(ShopTest):
    LONGEST_LIFE = 1.0  # seconds, of a program that is killed; a whole one takes less when alone
    SIDE_BY_SIDE = 6

    def run_for(self, seconds, attempt):
        """Attempts side by side, each in a case of its own, until the time is up; their number."""
        end = time.monotonic() + seconds

        def work(_):
            count = 0
            while time.monotonic() < end:
                case = type(self)()
                try:
                    attempt(case)
                finally:
                    case.doCleanups()
                count += 1
            return count

        with ThreadPoolExecutor(self.SIDE_BY_SIDE) as pool:
            return sum(pool.map(work, range(self.SIDE_BY_SIDE)))

    def kill_once(self, shop, files):
        """`files()` are those at the destination."""
        before, names = settings(shop), shop.names()
        run = shop.start()
        moment = random.uniform(0, self.LONGEST_LIFE)
        time.sleep(moment / 2)
        try:
            run.request("FTP EXIT", 1)
        except ValueError:
            pass  # no such key yet
        time.sleep(moment / 2)
        run.stop()
        what = f"killed after {moment:.3f} s"
        self.assertEqual(settings(shop), before, what)
        for name, content in files().items():
            if name == SHOP_INFO:
                self.assertIn(content, (b"old", INFO), what)
            elif name == TABLE:
                self.assertTrue(content == b"old" or self.is_whole(content), (what, content))
        self.live_again(shop)
        there = files()
        self.assertEqual(set(there), {SHOP_INFO, TABLE}, what)
        self.assertTrue(self.is_whole(there[TABLE]) and there[SHOP_INFO] == INFO, what)
        self.assertEqual(shop.names(), names, what)
        self.assertEqual(settings(shop), before, what)

    def live_again(self, shop):
        shop.set("FTP INIT", "1")  # what the start resets last
        shop.send_once()

    def is_whole(self, table):
        rows = table.decode(CODE_PAGE).split("\r\n")
        return len(rows) == 4 and rows[-1] == "" and {row.count("\t") for row in rows[:3]} == {22}

    def test_kills_of_runs_into_a_folder(self):
        def attempt(case):
            shop = case.shop(*SMALL_SHOP)
            for name, content in OLD_FILES.items():
                (shop.out / name).write_bytes(content)
            self.kill_once(shop, shop.delivered)
        print(f"kills, folder: {self.run_for(SECONDS, attempt)}", flush=True)

    def test_kills_of_runs_to_a_site(self):
        server = PyftpdServer(self)
        numbers = itertools.count()

        def attempt(case):
            folder = f"in{next(numbers)}"
            server.make(folder, OLD_FILES)
            shop = case.shop(*SMALL_SHOP, *server.shop_options(folder))
            self.kill_once(shop, lambda: server.files(folder))
        print(f"kills, site: {self.run_for(SECONDS, attempt)}", flush=True)

    def test_a_fleet_at_one_server_that_is_restarted(self):
        server = PyftpdServer(self, connections=max(2, SHOPS // 5))
        shops = []
        for number in range(SHOPS):
            folder = f"shop{number}"
            server.make(folder, {})
            shops.append(self.shop(*SMALL_SHOP, *server.shop_options(folder)))
        begin = time.monotonic()

        def send_until_delivered(number):
            lives = 0
            while TABLE not in server.files(f"shop{number}"):
                self.assertLess(lives, 50, "never delivered")
                time.sleep(lives)
                self.live_again(shops[number])
                lives += 1
            return lives

        with ThreadPoolExecutor(SHOPS) as pool:
            lives = [pool.submit(send_until_delivered, number) for number in range(SHOPS)]
            while sum(life.done() for life in lives) < SHOPS // 4:
                time.sleep(0.05)
            server.restart()
            total = sum(life.result() for life in lives)
        seconds = time.monotonic() - begin
        print(f"fleet: {SHOPS} shops, {total} lives, the last table after {seconds:.1f} s",
              flush=True)
        for number in range(SHOPS):
            files = server.files(f"shop{number}")
            self.assertTrue(self.is_whole(files[TABLE]), number)
            # What a broken run has left under a temporary name waits for the next one.
            self.assertLessEqual(set(files), {TABLE, SHOP_INFO, SHOP_INFO[:-3] + "xxx"}, number)
