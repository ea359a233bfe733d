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
INFO = "12\t00345\t北陸グループ\t能登表町店\thokuriku\tnoto345\t\t\t\r\n".encode(CODE_PAGE)
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
    def test_a_day_is_delivered_in_place_of_an_older_one(self):
        shop = self.shop("--receptions", "400", "--seed", "7")
        shop.desk_file(2).write_bytes(UNUSUAL_RECEPTIONS)
        shop.desk_file(5).unlink()
        shop.set("OUT FOLD", f"{shop.out}//")
        with open(shop.own_settings, "ab") as file:
            file.write(b"GRUP BACK=0800077\r\n")
        for name in (TABLE, SHOP_INFO, "0800077.inf", "9900001.inf"):
            (shop.out / name).write_bytes(b"old")
        names_before = shop.names()
        settings_before = shop.own_settings.read_bytes()
        begin = datetime.datetime.now().replace(microsecond=0)

        shop.send_once()

        # Date and time, the same in every row, are those of the run.
        table = shop.delivered()[TABLE]
        stamp = re.search(rb"^(..../../..)\t(..:..:..)\t", table, re.MULTILINE)
        date, clock = stamp[1].decode(), stamp[2].decode()
        written = datetime.datetime.strptime(f"{date} {clock}", "%Y/%m/%d %H:%M:%S")
        self.assertTrue(begin <= written <= datetime.datetime.now(), (begin, written))
        self.assertEqual(shop.delivered(), {TABLE: expected_table(shop, date, clock),
                                            SHOP_INFO: INFO, "9900001.inf": b"old"})
        self.assertEqual(shop.log_messages(), LOG_OF_A_RUN)
        self.assertEqual(shop.names(), names_before)
        self.assertEqual(shop.own_settings.read_bytes(),
                         settings_before.replace(b"FTP INIT=1", b"FTP INIT=0")
                         .replace(b"BACK=0800077", b"BACK=1200345"))
