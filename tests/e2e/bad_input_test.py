"""Folders and files that are not as they should be: the rest goes on, and nothing crashes."""

import os
import random
import re

from delivery_test import LOG_OF_A_RUN, expected_table
from shop import CODE_PAGE, SHOP_INFO, TABLE, ShopTest

RECEPTION = b"1\t10:00:00\t10:05:00\t\t1\t\t\t0\t\t\t\r\n"
GIGANTIC = 1 << 30
# Enough for the settings, not for the table.
FULL_DISK_BYTES = 480


def make_sparse(file, size):
    with open(file, "ab") as out:
        out.truncate(out.tell() + size)


class OutputFolderTest(ShopTest):
    def refuse_delivery(self, shop):
        shop.send_once()
        self.assertEqual(shop.log_messages(), LOG_OF_A_RUN)
        self.assertEqual(shop.names(), ["Log", "karvel", "karvel.hnb", "karvel.ini", "temp"])
        self.assertEqual(shop.setting("FTP CHKC"), "1")

    def test_missing(self):
        shop = self.shop("--receptions", "1")
        shop.out.rmdir()
        self.refuse_delivery(shop)
        self.assertFalse(shop.out.exists())

    def test_a_file(self):
        shop = self.shop("--receptions", "1")
        shop.out.rmdir()
        shop.out.write_bytes(b"a file")
        self.refuse_delivery(shop)
        self.assertEqual(shop.out.read_bytes(), b"a file")

    def test_read_only(self):
        shop = self.shop("--receptions", "1")
        (shop.out / TABLE).write_bytes(b"old")
        shop.out.chmod(0o555)
        self.refuse_delivery(shop)
        self.assertEqual(shop.delivered(), {TABLE: b"old"})

    def test_older_table_read_only(self):
        shop = self.shop("--receptions", "1")
        (shop.out / TABLE).write_bytes(b"old")
        (shop.out / TABLE).chmod(0o444)
        self.refuse_delivery(shop)
        self.assertEqual(shop.delivered()[TABLE], b"old")
        self.assertIn(SHOP_INFO, shop.delivered())

    def test_names_too_short(self):
        shop = self.shop("--receptions", "1")
        shop.set("OUT FOLD", "/")
        self.refuse_delivery(shop)

    def test_full_disk(self):
        # A limit on the size of files stands for the full disk: it needs no mount and no right to
        # one. It binds in every folder, so the table breaks off where it is made.
        shop = self.shop("--receptions", "1")
        (shop.out / TABLE).write_bytes(b"old")
        shop.send_once(through=("prlimit", f"--fsize={FULL_DISK_BYTES}", "--core=0"))
        self.assertEqual(shop.delivered()[TABLE], b"old")
        self.assertEqual(shop.names(), ["Log", "karvel", "karvel.hnb", "karvel.ini", "temp"])
        self.assertEqual(shop.setting("GRUP BACK"), "1200345")


class ProgramFolderTest(ShopTest):
    def test_read_only(self):
        # The start cannot take back the exit request, so the first tick ends the program.
        shop = self.shop("--receptions", "1")
        before = {path: path.read_bytes() for path in shop.folder.rglob("*") if path.is_file()}
        for folder, _, _ in os.walk(shop.folder):
            os.chmod(folder, 0o555)
        shop.start().expect_end()
        after = {path: path.read_bytes() for path in shop.folder.rglob("*") if path.is_file()}
        self.assertEqual(after, before)
        self.assertEqual(shop.delivered(), {})


class ReceptionFilesTest(ShopTest):
    def test_each_desk_has_another_trouble(self):
        shop = self.shop("--receptions", "1")
        shop.desk_file(1).unlink()
        shop.desk_file(2).write_bytes(b"")
        shop.desk_file(3).write_bytes(random.Random(3).randbytes(1 << 20) + b"\n" + RECEPTION)
        shop.desk_file(4).unlink()
        os.mkfifo(shop.desk_file(4))
        shop.desk_file(5).unlink()
        shop.desk_file(5).mkdir()
        shop.desk_file(6).chmod(0)
        shop.send_once()
        shop.desk_file(6).unlink()
        self.check_table(shop)

    def test_gigantic(self):
        shop = self.shop("--desks", "2")
        for desk, begin in ((1, RECEPTION), (2, b"")):
            shop.desk_file(desk).write_bytes(begin)
            make_sparse(shop.desk_file(desk), GIGANTIC)
            with open(shop.desk_file(desk), "ab") as file:
                file.write(b"\r\n" + RECEPTION)
        shop.send_once()
        shop.desk_file(1).write_bytes(RECEPTION * 2)
        shop.desk_file(2).write_bytes(RECEPTION)
        self.check_table(shop)

    def test_no_folder(self):
        shop = self.shop("--receptions", "0")
        for file in (shop.folder / "temp").iterdir():
            file.unlink()
        (shop.folder / "temp").rmdir()
        shop.send_once()
        self.check_table(shop)

    def check_table(self, shop):
        table = shop.delivered()[TABLE]
        date, clock = re.search(r"^(..../../..)\t(..:..:..)", table.decode(CODE_PAGE),
                                re.MULTILINE).groups()
        self.assertEqual(table, expected_table(shop, date, clock))


class SettingsFilesTest(ShopTest):
    def test_own_settings_without_content_end_the_start(self):
        def empty(file):
            file.write_bytes(b"")

        def binary(file):
            file.write_bytes(random.Random(5).randbytes(50_000))

        def gigantic(file):
            make_sparse(file, GIGANTIC)

        def folder(file):
            file.unlink()
            file.mkdir()

        def unreadable(file):
            file.chmod(0)

        runs = []
        for damage in (empty, binary, gigantic, folder, unreadable):
            shop = self.shop("--receptions", "1")
            damage(shop.own_settings)
            runs.append((damage.__name__, shop, shop.start()))
        for name, shop, run in runs:
            with self.subTest(name):
                run.expect_end()
                self.assertEqual(shop.delivered(), {})

    def test_read_only_own_settings_become_writable(self):
        shop = self.shop("--receptions", "1")
        shop.own_settings.chmod(0o400)
        run = shop.start()
        run.wait_for_start()
        run.request("FTP EXIT", 1)
        run.expect_end()
        self.assertIn(TABLE, shop.delivered())

    def test_an_empty_ticket_file_makes_an_empty_table(self):
        shop = self.shop("--receptions", "5")
        shop.ticket_settings.write_bytes(b"")
        shop.send_once()
        name = "00345_.txt"
        self.assertEqual(set(shop.delivered()), {name, SHOP_INFO})
        _, row, end = shop.delivered()[name].decode(CODE_PAGE).split("\r\n")
        self.assertEqual(row.split("\t")[2:],
                         ["12", "北陸グループ", "00345", "", "1", "", *["0"] * 15])
        self.assertEqual(end, "")

    def test_damaged_ticket_files_do_no_harm(self):
        def binary(file):
            file.write_bytes(random.Random(6).randbytes(50_000))

        def gigantic(file):
            make_sparse(file, GIGANTIC)

        def folder(file):
            file.unlink()
            file.mkdir()

        runs = []
        for damage in (binary, gigantic, folder):
            shop = self.shop("--receptions", "1")
            damage(shop.ticket_settings)
            runs.append((damage.__name__, shop, shop.start()))
        for name, shop, run in runs:
            with self.subTest(name):
                run.wait_for_start()
                run.request("FTP EXIT", 1)
                run.expect_end()
                self.assertEqual(shop.log_messages(), LOG_OF_A_RUN)
