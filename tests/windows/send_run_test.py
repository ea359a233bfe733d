#!/usr/bin/python3
"""The Windows program beside the Linux program on the same shop: both must leave the same."""

import re
import unittest

from windows_shop import WindowsShop

from ftp_servers import PyftpdServer  # found by windows_shop
from shop import CODE_PAGE, SHOP_INFO, TABLE, Shop

SITE_FOLDER = "本部/集計表"  # no blank: Wine cuts the names that a server lists at one
COMMANDS_THAT_MATTER = ("USER", "PASS", "CWD", "STOR", "DELE", "RNFR", "RNTO")


def without_stamps(files):
    """Date and time are those of the run."""
    stamp = re.compile(rb"^\d{4}/\d\d/\d\d\t\d\d:\d\d:\d\d\t", re.MULTILINE)
    return {name: stamp.sub(b"(date)\t(time)\t", content) for name, content in files.items()}


def settings(shop):
    """The lines of both files, in order; the two shops differ in where they are. Wine writes a file
    anew without the blanks and the empty lines in it."""
    lines = []
    for file in (shop.own_settings, shop.ticket_settings):
        text = file.read_bytes().decode(CODE_PAGE)
        for line in filter(None, text.split("\r\n")):
            name, equals, value = line.partition("=")
            here = name in ("HST FOLD", "OUT FOLD", "FTP PORT")
            lines.append(name.strip() + equals + ("(here)" if here and value else value.strip()))
    return lines


def names(shop):
    return [name for name in shop.names() if name not in ("karvel", "karvel.exe")]


class SendRunTest(unittest.TestCase):
    maxDiff = None

    def check_same(self, linux, windows):
        self.assertEqual(windows.log_messages(), linux.log_messages())
        self.assertEqual(settings(windows), settings(linux))
        self.assertEqual(names(windows), names(linux))
        self.assertEqual(without_stamps(windows.delivered()), without_stamps(linux.delivered()))

    def test_a_run_into_a_folder(self):
        shops = [kind(self, "--receptions", "400", "--seed", "7") for kind in (Shop, WindowsShop)]
        for shop in shops:
            (shop.out / TABLE).write_text("old")
            shop.desk_file(5).unlink()
            shop.send_once()
        self.check_same(*shops)
        self.assertEqual(set(shops[0].delivered()), {TABLE, SHOP_INFO})
        self.assertGreater(len(shops[0].delivered()[TABLE]), len("old"))

    def test_a_run_to_a_site(self):
        shops, files, commands = [], [], []
        for kind in (Shop, WindowsShop):
            server = PyftpdServer(self)
            server.make(SITE_FOLDER, {TABLE: b"old", SHOP_INFO: b"old"})
            shop = kind(self, "--receptions", "100", *server.shop_options(SITE_FOLDER))
            shop.send_once()
            shops.append(shop)
            files.append(without_stamps(server.files(SITE_FOLDER)))
            commands.append([line for line in server.commands if line[0] in COMMANDS_THAT_MATTER])
        self.check_same(*shops)
        self.assertEqual(commands[1], commands[0])
        self.assertEqual(files[1], files[0])
        for name in (TABLE, SHOP_INFO):
            self.assertGreater(len(files[0][name]), len("old"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
