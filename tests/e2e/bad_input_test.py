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


# What may be wrong with a file.

def empty(file):
    file.write_bytes(b"")


def binary(file):
    file.write_bytes(random.Random(5).randbytes(50_000))


def gigantic(file):
    with open(file, "ab") as out:
        out.truncate(out.tell() + GIGANTIC)


def folder(file):
    file.unlink()
    file.mkdir()


def unreadable(file):
    file.chmod(0)


class FoldersTest(ShopTest):
    def test_output_folders_that_take_nothing(self):
        def missing(out):
            out.rmdir()

        def a_file(out):
            out.rmdir()
            out.write_bytes(b"")

        def read_only(out):
            out.chmod(0o555)

        def older_files_read_only(out):
            for name in (TABLE, SHOP_INFO):
                (out / name).write_bytes(b"old")
                (out / name).chmod(0o444)

        for name, shop, run in self.started("out", missing, a_file, read_only,
                                            older_files_read_only):
            with self.subTest(name):
                run.send_and_end()
                self.assertEqual(shop.log_messages(), LOG_OF_A_RUN)
                self.assertEqual(shop.names(), ["Log", "karvel", "karvel.hnb", "karvel.ini", "temp"])
                if shop.out.is_dir():
                    self.assertLessEqual(set(shop.delivered().values()), {b"old"})

    def test_full_disk(self):
        # A limit on the size of files stands for the full disk: it needs no mount and no right to
        # one. It binds in every folder, so the table breaks off where it is made.
        shop = self.shop("--receptions", "1")
        (shop.out / TABLE).write_bytes(b"old")
        shop.send_once(through=("prlimit", f"--fsize={FULL_DISK_BYTES}", "--core=0"))
        self.assertEqual(shop.delivered()[TABLE], b"old")
        self.assertEqual(shop.names(), ["Log", "karvel", "karvel.hnb", "karvel.ini", "temp"])

    def test_program_folder_read_only(self):
        # The settings file itself takes what is written to it; nothing can be made beside it.
        shop = self.shop("--receptions", "1")
        before = self.other_files(shop)
        for path, _, _ in os.walk(shop.folder):
            os.chmod(path, 0o555)
        shop.send_once()
        self.assertEqual(self.other_files(shop), before)
        self.assertEqual(shop.delivered(), {})

    @staticmethod
    def other_files(shop):
        return {path: path.read_bytes() for path in shop.folder.rglob("*")
                if path.is_file() and path != shop.own_settings}


class ReceptionFilesTest(ShopTest):
    def test_each_desk_has_another_trouble(self):
        shop = self.shop("--receptions", "1")
        shop.desk_file(1).unlink()
        for desk, trouble in ((2, empty), (3, binary), (5, folder), (6, unreadable)):
            trouble(shop.desk_file(desk))
        with open(shop.desk_file(3), "ab") as file:
            file.write(b"\n" + RECEPTION)
        shop.desk_file(4).unlink()
        os.mkfifo(shop.desk_file(4))
        shop.send_once()
        shop.desk_file(6).unlink()
        self.check_table(shop)

    def test_gigantic(self):
        shop = self.shop("--desks", "2")
        for desk, begin in ((1, RECEPTION), (2, b"")):
            shop.desk_file(desk).write_bytes(begin)
            gigantic(shop.desk_file(desk))
            with open(shop.desk_file(desk), "ab") as file:
                file.write(b"\r\n" + RECEPTION)
        shop.send_once()
        shop.desk_file(1).write_bytes(RECEPTION * 2)
        shop.desk_file(2).write_bytes(RECEPTION)
        self.check_table(shop)

    def check_table(self, shop):
        table = shop.delivered()[TABLE]
        date, clock = re.search(r"^(..../../..)\t(..:..:..)", table.decode(CODE_PAGE),
                                re.MULTILINE).groups()
        self.assertEqual(table, expected_table(shop, date, clock))


class SettingsFilesTest(ShopTest):
    def test_own_settings_without_content_end_the_start(self):
        for name, shop, run in self.started("own_settings", empty, binary, gigantic, folder,
                                            unreadable):
            with self.subTest(name):
                run.expect_end()
                self.assertEqual(shop.delivered(), {})

    def test_damaged_ticket_files_do_no_harm(self):
        for name, shop, run in self.started("ticket_settings", empty, binary, gigantic,
                                            folder):
            with self.subTest(name):
                run.send_and_end()
                self.assertEqual(shop.log_messages(), LOG_OF_A_RUN)
                self.assertEqual(set(shop.delivered()), {"00345_.txt", SHOP_INFO})
