"""From the reception files to the output folder, by the real program."""

import datetime

from shop import CODE_PAGE, SHOP_INFO, TABLE, ShopTest

INFO = "12\t00345\t北陸グループ\t能登表町店\thokuriku\tnoto345\t\t\t\r\n".encode(CODE_PAGE)
RECEPTIONS = (
    "2\t10:00:00\t10:07:30\t\t済\tｱﾄﾞﾚｽ\t\t3\t\t\t\r\n"
    "8\t10:00:00\t10:12:30\t\t1\t\t\t0\t\t\t"
).encode(CODE_PAGE)
FIGURES = "2 0 1 1 0 2 0 0 0 0 0 0 10 13 5"
NOTHING = "0 " * 14 + "0"


def row(desk, name, figures):
    return ["12", "北陸グループ", "00345", "能登表町店", str(desk), name, *figures.split()]


class DeliveryTest(ShopTest):
    def test_a_day_is_delivered_in_place_of_an_older_one(self):
        shop = self.shop("--receptions", "0", "--desks", "3")
        shop.desk_file(2).write_bytes(RECEPTIONS)
        shop.desk_file(3).unlink()
        shop.set("OUT FOLD", f"{shop.name_of(shop.out)}//")
        with open(shop.own_settings, "ab") as file:
            file.write(b"GRUP BACK=0800077\r\n")
        for name in (TABLE, SHOP_INFO, "0800077.inf", "9900001.inf"):
            (shop.out / name).write_bytes(b"old")
        names_before = shop.names()
        settings_before = shop.own_settings.read_bytes()
        begin = datetime.datetime.now().replace(microsecond=0)

        shop.send_once()

        delivered = shop.delivered()
        header, *rows, rest = [line.split("\t") for line in
                               delivered.pop(TABLE).decode(CODE_PAGE).split("\r\n")]
        self.assertEqual((len(header), header[0], rest), (23, "日付", [""]))
        self.assertEqual([fields[2:] for fields in rows],
                         [row(1, "総合受付", NOTHING), row(2, "予約窓口", FIGURES),
                          row(3, "会計", NOTHING)])
        written = datetime.datetime.strptime(" ".join(rows[0][:2]), "%Y/%m/%d %H:%M:%S")
        self.assertTrue(begin <= written <= datetime.datetime.now(), (begin, written))
        self.assertEqual(delivered, {SHOP_INFO: INFO, "9900001.inf": b"old"})
        self.assertEqual(shop.log_messages()[-1], "HS-FTP:------------------------ Snd Exit")
        self.assertEqual(shop.names(), names_before)
        self.assertEqual(shop.own_settings.read_bytes(),
                         settings_before.replace(b"FTP INIT=1", b"FTP INIT=0")
                         .replace(b"BACK=0800077", b"BACK=1200345"))
