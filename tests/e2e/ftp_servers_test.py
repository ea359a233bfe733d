"""Whole send runs by the real program to real FTP servers."""

from delivery_test import INFO
from ftp_servers import PyftpdServer, VsftpdServer
from shop import CODE_PAGE, SHOP_INFO, TABLE, ShopTest

# Counts as reached, or nothing would be sent; a run that arrives writes "1".
NOT_REACHED_YET = "01"
# The second bytes of 表, ソ and 能 are the byte of "\".
FOLDER = "支店/表ソ能"


class FtpServersTest(ShopTest):
    def site_shop(self, server, folder, passive=True):
        shop = self.shop("--receptions", "60", "--desks", "2", "--passive", str(int(passive)),
                         *server.shop_options(folder))
        shop.set("FTP CHKF", NOT_REACHED_YET)
        return shop

    def check_delivered(self, shop, files):
        self.assertEqual(shop.log_messages().count("HS-FTP:PutFile OK"), 2)
        self.assertEqual(shop.setting("FTP CHKF"), "1")
        table = files[TABLE]
        self.assertEqual(files, {SHOP_INFO: INFO, TABLE: table})
        # One line end each for the header and two desks.
        self.assertEqual([table.count(end) for end in (b"\r\n", b"\n", b"\r")], [3, 3, 3])
        self.assertIn("\t12\t北陸グループ\t00345\t能登表町店\t2\t", table.decode(CODE_PAGE))

    def check_new_and_existing(self, server):
        server.make(FOLDER, {})
        for passive, folder in ((True, f"/{FOLDER}/"), (False, FOLDER.replace("/", "\\"))):
            shop = self.site_shop(server, folder, passive)
            shop.send_once()
            self.check_delivered(shop, server.files(FOLDER))
            server.make(FOLDER, {SHOP_INFO: b"old\r\n", TABLE: b"old" * 5000})

    def test_pyftpdlib(self):
        server = PyftpdServer(self)
        self.check_new_and_existing(server)
        safe_upload = ["STOR", "RNFR", "RNTO"]
        self.assertEqual([name for name, _ in server.commands if name in (*safe_upload, "DELE")],
                         2 * safe_upload + 2 * ["STOR", "DELE", "RNFR", "RNTO"])

    def test_vsftpd(self):
        self.check_new_and_existing(VsftpdServer(self))

    def test_a_wrong_password_is_shown_nowhere(self):
        server = PyftpdServer(self)
        shop = self.site_shop(server, "")
        shop.set("FTP PASS", "not-the-word")
        shop.send_once()
        self.assertEqual(len(shop.log_messages()), 2)
        self.assertEqual(shop.setting("FTP CHKF"), NOT_REACHED_YET)
        self.assertEqual([name for name, _ in server.commands], ["USER", "PASS"])
        self.assertEqual(server.files(""), {})
        for path in shop.folder.rglob("*"):
            if path.is_file() and path.name not in ("karvel", "karvel.hnb"):
                self.assertNotIn(b"not-the-word", path.read_bytes(), path)
