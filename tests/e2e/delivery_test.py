"""From the reception files to the output folder, by the real program."""

import datetime
import re

from figures import desk_figures
from shop import CODE_PAGE, SHOP_INFO, TABLE, ShopTest

HEADER = ("日付 時間 グループNo グループ名 店舗No 店舗名 受付No 受付名 処理済 未処理 メール 予約数 "
          "～09時 09時～ 11時～ 13時～ 15時～ 17時～ 19時～ 21時～ 平均(分) 最長(分) 処理(分)")
LOG_OF_A_RUN = [
    "HS-FTP:------------------------ Snd Start",
    "HS-FTP:----------------------------- Make_Csv2Send Start",
    "HS-FTP:---------------------------------- Ftp_ShopFold Start",
    "HS-FTP:---------------------------------- Ftp_ShopFold Exit",
    "HS-FTP:----------------------------- Make_Csv2Send Exit",
    "HS-FTP:------------------------ Snd Exit",
]
# The unusual beside the ordinary: next day, half a minute, other lengths of a time, no times at
# all, blanks, marks in Japanese, wrong numbers of fields, a lone LF, no line end at the end.
UNUSUAL_RECEPTIONS = (
    "1\t23:58:00\t00:03:00\t\t1\t\t\t0\t\t\t\r\n"
    "2\t10:00:00\t10:07:30\t\t済\tｱﾄﾞﾚｽ\t\t3\t\t\t\r\n"
    "3\t9:05:00\t9:09\t\t1\t\t\t 2x\t\t\t\n"
    "4\t 08:59:59 \t 09:01:00 \t\t 1 \t \t\t&H1\t\t\t\r\n"
    "5\t21:00:00\t\t\t   \tx\t\t1\t\t\t\r\n"
    "6\t24:00:00\t25:00:00\t\t1\t\t\t-1\t\t\t\r\n"
    "7\tいつか\tあとで\t\t1\t\t\t\t\t\t\r\n"
    "8\t11:00:00\t11:05:00\t\t1\t\t\t0\t\t\r\n"
    "9\t11:00:00\t11:05:00\t\t1\t\t\t0\t\t\t\t\r\n"
    "\r\n"
    "10\t12:00:00\t12:04:00\t\t1\t\t\t0\t\t\t"
).encode(CODE_PAGE)


def expected_table(shop, date, clock):
    ticket = shop.ticket_settings
    lines = [HEADER.replace(" ", "\t")]
    for desk in range(1, int(shop.setting("SHINSATSU", ticket)) + 2):
        file = shop.desk_file(desk)
        numbers = desk_figures(file.read_bytes() if file.is_file() else b"")
        lines.append("\t".join([
            date, clock, shop.setting("GRUP CODE"), shop.setting("GRUP NAME"),
            shop.setting("FTP CODE"), shop.setting("USER NAME", ticket), str(desk),
            shop.setting(f"TASHIN{desk}", ticket), *map(str, numbers)]))
    return "".join(line + "\r\n" for line in lines).encode(CODE_PAGE)


class DeliveryTest(ShopTest):
    def check_table(self, shop, begin):
        """Every byte; date and time, the same in every row, are those of the run."""
        table = shop.delivered()[TABLE]
        stamp = re.search(rb"^(..../../..)\t(..:..:..)\t", table, re.MULTILINE)
        date, clock = stamp[1].decode(), stamp[2].decode()
        self.assertEqual(table, expected_table(shop, date, clock))
        written = datetime.datetime.strptime(f"{date} {clock}", "%Y/%m/%d %H:%M:%S")
        self.assertTrue(begin <= written <= datetime.datetime.now(), (begin, written))

    def test_a_day_is_delivered(self):
        shop = self.shop("--receptions", "400", "--seed", "7")
        shop.desk_file(2).write_bytes(UNUSUAL_RECEPTIONS)
        shop.desk_file(5).unlink()
        names_before = shop.names()
        settings_before = shop.own_settings.read_bytes()
        begin = datetime.datetime.now().replace(microsecond=0)

        shop.send_once()

        self.assertEqual(set(shop.delivered()), {TABLE, SHOP_INFO})
        self.check_table(shop, begin)
        self.assertEqual(shop.delivered()[SHOP_INFO].decode(CODE_PAGE),
                         "12\t00345\t北陸グループ\t能登表町店\thokuriku\tnoto345\t\t\t\r\n")
        self.assertEqual(shop.log_messages(), LOG_OF_A_RUN)
        self.assertEqual(shop.names(), names_before)
        self.assertEqual(shop.own_settings.read_bytes(),
                         settings_before.replace(b"FTP INIT=1", b"FTP INIT=0")
                         + b"GRUP BACK=1200345\r\n")

    def test_older_deliveries_are_replaced(self):
        shop = self.shop("--receptions", "30", "--desks", "2")
        shop.set("OUT FOLD", f" {shop.out}// ")
        shop.own_settings.write_bytes(shop.own_settings.read_bytes() + b"GRUP BACK=0800077\r\n")
        for name in (TABLE, SHOP_INFO, "0800077.inf", "9900001.inf", "other.txt"):
            (shop.out / name).write_text("old")
        begin = datetime.datetime.now().replace(microsecond=0)

        shop.send_once()

        self.assertEqual(set(shop.delivered()), {TABLE, SHOP_INFO, "9900001.inf", "other.txt"})
        self.check_table(shop, begin)
        self.assertNotEqual(shop.delivered()[SHOP_INFO], b"old")
        self.assertEqual(shop.delivered()["other.txt"], b"old")
        self.assertEqual(shop.setting("GRUP BACK"), "1200345")

    def test_without_a_log_folder_all_else_is_the_same(self):
        shop = self.shop("--receptions", "30")
        shop.log_folder.rmdir()
        begin = datetime.datetime.now().replace(microsecond=0)
        shop.send_once()
        self.check_table(shop, begin)
        self.assertFalse(shop.log_folder.exists())

    def test_a_group_code_of_four_digits_has_no_shop_information(self):
        shop = self.shop("--receptions", "30", "--desks", "1")
        shop.set("GRUP CODE", "9999")
        begin = datetime.datetime.now().replace(microsecond=0)
        shop.send_once()
        self.assertEqual(set(shop.delivered()), {TABLE})
        self.check_table(shop, begin)

    def test_a_shop_without_an_interval_sends_nothing(self):
        shop = self.shop("--interval", "0")
        shop.send_once()
        self.assertEqual(shop.delivered(), {})
        self.assertEqual(shop.log_messages(), [])
        self.assertEqual(shop.setting("FTP EXIT"), "1")
