#!/usr/bin/python3
"""What a shop gets: the installer and the portable zip, tried out under Wine."""

import hashlib
import os
import shutil
import socket
import subprocess
import tempfile
import time
import unittest
import zipfile
from pathlib import Path

from windows_machine import WindowsMachine, windows_path
from windows_shop import WindowsShop

from shop import CODE_PAGE, TABLE  # found by windows_shop

PROGRAM = WindowsShop.PROGRAM
VERSION = os.environ["KARVEL_VERSION"]
WORK = Path(os.environ["KARVEL_WORK_FOLDER"])
MAKE_PACKAGES = Path(__file__).resolve().parents[2] / "packaging" / "make-packages"

PACKAGES = WORK / "packages"
SETUP = PACKAGES / f"karvel-{VERSION}-setup.exe"
PORTABLE = PACKAGES / f"karvel-{VERSION}-portable.zip"
PARTS = PACKAGES / f"karvel-{VERSION}.spdx.json"

PRODUCT = "るりはなリンク集計管理"
UNINSTALL_KEY = r"Software\Microsoft\Windows\CurrentVersion\Uninstall\karvel"
RUN_KEY = r"Software\Microsoft\Windows\CurrentVersion\Run"

DONE, REFUSED, STILL_RUNNING = 0, 2, 3

machine = None


def setUpModule():
    global machine
    WORK.mkdir(exist_ok=True)
    shutil.rmtree(PACKAGES, ignore_errors=True)
    make_packages(PACKAGES)
    machine = WindowsMachine(unittest.addModuleCleanup, with_tray=False)


def make_packages(folder, **variables):
    subprocess.run([MAKE_PACKAGES, PROGRAM, VERSION, folder], check=True,
                   env=os.environ | variables)


def content_of(folder):
    """Path and content of every file below a folder."""
    return {str(path.relative_to(folder)): path.read_bytes()
            for path in folder.rglob("*") if path.is_file()}


class PackagesTest(unittest.TestCase):
    def test_what_is_beside_the_packages(self):
        subprocess.run(["sha256sum", "--check", "--status", "SHA256SUMS"], cwd=PACKAGES, check=True)
        summed = (PACKAGES / "SHA256SUMS").read_text().split()[1::2]
        self.assertEqual(set(summed), {SETUP.name, PORTABLE.name, PARTS.name,
                                       "karvel.exe.debug", "karvel-check.exe.debug"})
        self.assertEqual(set(content_of(PACKAGES)), {"SHA256SUMS", *summed})
        parts = PARTS.read_text()
        programs = PROGRAM, PROGRAM.with_name("karvel-check.exe")
        for part in ("libstdc++", "winpthreads", "NSIS",
                     *(hashlib.sha256(file.read_bytes()).hexdigest() for file in programs)):
            self.assertIn(part, parts)

    def test_the_packages_are_the_same_whenever_they_are_made(self):
        with tempfile.TemporaryDirectory(dir=WORK) as again:
            make_packages(again, TZ="Asia/Tokyo")
            self.assertEqual(content_of(Path(again)), content_of(PACKAGES))

    def test_the_portable_zip_is_ready_to_be_unpacked_and_started(self):
        with zipfile.ZipFile(PORTABLE) as package:
            names = package.namelist()
            top = f"karvel-{VERSION}/"
            self.assertEqual(package.read(top + "karvel.exe"), PROGRAM.read_bytes())
            self.assertIn(top + "Log/", names)
            self.assertIn(top + "karvel-manual/manual.ja.html", names)
            self.assertEqual([name for name in names if not name.startswith(top)], [])
            self.assertEqual([name for name in names if name.lower().endswith(".txt")], [])


def throw_away_certificate(folder):
    """Variables that name a new certificate with its key, and the certificate's file."""
    pem, both, password = (folder / name for name in ("pem", "p12", "password"))
    password.write_text("throw-away")
    for command in (("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-subj", "/CN=test",
                     "-addext", "extendedKeyUsage=codeSigning", "-keyout", pem, "-out", pem),
                    ("pkcs12", "-export", "-in", pem, "-out", both,
                     "-passout", f"file:{password}")):
        subprocess.run(["openssl", *command], check=True, stderr=subprocess.DEVNULL)
    return {"KARVEL_SIGN_CERTIFICATE": both, "KARVEL_SIGN_PASSWORD_FILE": password}, pem


class SetupTest(unittest.TestCase):
    def setUp(self):
        machine.run("reg", "delete", f"HKCU\\{UNINSTALL_KEY}", "/f")
        machine.run("reg", "delete", f"HKCU\\{RUN_KEY}", "/v", "karvel", "/f")
        self.shop = WindowsShop(self, "--receptions", "5")
        self.base, self.folder = self.shop.base, self.shop.folder
        # The package comes first.
        self.laid_out = self.folder.rename(self.base / "laid out")
        (self.laid_out / PROGRAM.name).unlink()

    def set_up(self, *switches, setup=SETUP):
        """A silent run of the installer. It takes the rest of its command line for the folder,
        blanks and all, and must not see it in quotes."""
        target = f"/D={windows_path(self.folder)}".split(" ")
        return machine.run(setup, "/S", *switches, *target)

    def uninstall(self):
        """Returns when the uninstaller is done; it works from a copy of itself."""
        machine.run(self.folder / "karvel-uninstall.exe", "/S")
        machine.wait_until(self.uninstalled, "uninstalled")

    def uninstalled(self):
        # The entry goes last; but where the registry cannot be asked, it looks gone, too.
        return (not (self.folder / "karvel-uninstall.exe").exists()
                and not machine.registry_values(UNINSTALL_KEY))

    def write(self, name, text):
        file = self.folder / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(text.encode(CODE_PAGE))

    def menus(self):
        """The product's folders in the users' start menus."""
        programs = "AppData/Roaming/Microsoft/Windows/Start Menu/Programs"
        return [*machine.prefix.glob(f"drive_c/users/*/{programs}/{PRODUCT}")]

    def hold(self, file):
        """Something keeps the file open for writing."""
        size = file.stat().st_size
        machine.start("cmd", "/c", f"pause>>{file.name}", cwd=file.parent, stdin=subprocess.PIPE)
        machine.wait_until(lambda: file.stat().st_size > size, "file held")

    def start_resident(self, **changes):
        """The program in the shop that the package is in now."""
        shutil.copytree(self.laid_out, self.folder, dirs_exist_ok=True)
        for key, value in changes.items():
            self.shop.set(key.replace("_", " "), str(value))
        # Also the one that an upgrade starts.
        self.addCleanup(machine.run, "taskkill", "/f", "/im", "karvel.exe")
        run = self.shop.start(screen=machine)
        run.wait_for_start()
        return run

    def test_every_program_is_signed_where_a_certificate_is_named(self):
        variables, certificate = throw_away_certificate(self.base)
        packages = self.base / "signed"
        make_packages(packages, **variables)
        self.assertEqual(self.set_up(setup=packages / SETUP.name), DONE)
        programs = [packages / SETUP.name, *self.folder.glob("*.exe")]
        self.assertEqual(len(programs), 5)
        for program in programs:
            subprocess.run(["osslsigncode", "verify", "-CAfile", certificate, program], check=True,
                           stdout=subprocess.DEVNULL)
        self.uninstall()
        self.assertFalse(self.folder.exists())

    def test_a_first_installation(self):
        self.assertEqual(self.set_up(), DONE)

        installed = content_of(self.folder)
        self.assertEqual(installed["karvel.exe"], PROGRAM.read_bytes())
        self.assertIn("karvel-manual/manual.ja.html", installed)
        self.assertEqual({name for name in installed if not name.startswith("karvel-manual/")},
                         {"karvel.exe", "karvel-settings.exe", "karvel-check.exe",
                          "karvel-uninstall.exe"})
        self.assertTrue((self.folder / "Log").is_dir())

        entry = machine.registry_values(UNINSTALL_KEY)
        folder = windows_path(self.folder)
        self.assertEqual((entry["DisplayName"], entry["DisplayVersion"], entry["InstallLocation"],
                          entry["UninstallString"]),
                         (PRODUCT, VERSION, folder, f'"{folder}\\karvel-uninstall.exe"'))
        self.assertEqual(machine.registry_values(RUN_KEY)["karvel"], f'"{folder}\\karvel.exe"')
        (menu,) = self.menus()
        for entry, program in (("接続設定", b"\\karvel-settings.exe\0"),
                               ("診断", b"\\karvel-check.exe\0")):
            self.assertIn(program, (menu / f"集計管理 {entry}.lnk").read_bytes())

        shutil.copy(self.laid_out / "karvel.ini", self.folder)
        self.shop.start(screen=machine).expect_end()
        self.assertEqual(self.shop.setting("HST FOLD"), folder)
        self.assertEqual(self.shop.setting("GRUP NAME"), "るりはなリンク")

        # The start menu opens the settings whether the program runs or not.
        self.start_resident()
        for _ in range(2):
            self.assertEqual(machine.run(self.folder / "karvel-settings.exe"), 0)
            machine.wait_until(machine.windows, "the panel")
            machine.run("taskkill", "/f", "/im", "karvel.exe")
            machine.wait_for_no_window()

        self.uninstall()
        self.assertEqual(set(content_of(self.folder)), set(content_of(self.laid_out)))
        self.assertEqual(self.menus(), [])
        self.assertNotIn("karvel", machine.registry_values(RUN_KEY))

    def test_an_upgrade_ends_the_running_program_and_keeps_what_is_the_shops(self):
        self.assertEqual(self.set_up(), DONE)
        with open(self.folder / "karvel.exe", "ab") as program:
            program.write(b"an older one")
        (self.folder / "karvel-manual" / "old.html").write_text("of the older one")
        shops_own = {"Log/240104.log": "of another day", "kvserver.ini": "0004 ftp.example.com\r\n"}
        for name, text in shops_own.items():
            self.write(name, text)

        older = self.start_resident(GRUP_NAME="ソ連絡先表")
        self.assertEqual(self.set_up(), DONE)

        older.expect_end()
        self.assertEqual((self.folder / "karvel.exe").read_bytes(), PROGRAM.read_bytes())
        self.assertFalse((self.folder / "karvel-manual" / "old.html").exists())
        # It sent once more, as it does on request.
        self.assertEqual(self.shop.finished_runs(), 1)
        self.assertIn(TABLE, self.shop.delivered())
        for name, text in shops_own.items():
            self.assertEqual((self.folder / name).read_bytes(), text.encode(CODE_PAGE), name)
        # The new one runs: its start takes the request back.
        machine.wait_until(lambda: self.shop.setting("FTP EXIT") == "0", "started again")
        before = self.shop.own_settings.read_bytes()

        self.uninstall()
        self.assertEqual(self.shop.finished_runs(), 2)
        left = {name for name in content_of(self.folder) if not name.startswith("Log/")}
        self.assertEqual(left, {"kvserver.ini", *content_of(self.laid_out)})
        self.shop.set("FTP EXIT", "0")
        self.assertEqual(self.shop.own_settings.read_bytes(), before)
        self.assertEqual(self.shop.setting("GRUP NAME"), "ソ連絡先表")

    def test_an_upgrade_answers_the_message_of_a_failing_shop(self):
        self.assertEqual(self.set_up(), DONE)
        with socket.create_server(("127.0.0.1", 0)) as site:
            site.settimeout(60)
            run = self.start_resident(FTP_TYPE=1, FTP_CHKF=1, FTP_SEVE="127.0.0.1", FTP_FOLD="f",
                                      FTP_NAME="n", FTP_PASS="p", FTP_PORT=site.getsockname()[1])
            for request_after in (0, 1):
                run.request("FTP EXIT", 1)
                with site.accept()[0]:
                    # Taken back during the run, the request makes a run, but no end.
                    run.request("FTP EXIT", request_after)
                machine.wait_until(self.shop.finished_runs, "the first failure")
                time.sleep(1)
            machine.wait_until(lambda: "" in machine.windows(), "the untitled message box")
        self.assertEqual(self.set_up("/STOPWAIT=20"), DONE)
        run.expect_end()

    def test_the_uninstaller_removes_settings_and_logs_when_told_to(self):
        self.assertEqual(self.set_up(), DONE)
        self.write("karvel.hnb", "[FTP INFOMATION]\r\n")
        self.write("Log/240104.log", "of the program")
        self.write("Log/visits.log", "of somebody else")
        machine.start(self.folder / "karvel-uninstall.exe")
        machine.settled_window("アンインストール")
        machine.key("Return")
        machine.settled_window("アンインストール")
        machine.key("Left", "Return")
        machine.wait_until(self.uninstalled, "uninstalled")
        self.assertEqual(set(content_of(self.folder)), {"Log/visits.log"})
        machine.settled_window("アンインストール")
        machine.key("Return")

    def test_a_program_that_does_not_end_is_left_alone(self):
        self.assertEqual(self.set_up(), DONE)
        # Whoever has the file open for writing keeps it from being replaced, too.
        held = self.folder / "karvel.exe"
        self.hold(held)
        before = held.read_bytes()
        self.assertEqual(self.set_up("/STOPWAIT=1"), STILL_RUNNING)
        self.assertFalse((self.folder / "karvel.hnb").exists())
        self.write("karvel.hnb", "[FTP INFOMATION]\r\nFTP EXIT=0\r\nFTP INIT=0\r\n")
        self.assertEqual(self.set_up("/STOPWAIT=3"), STILL_RUNNING)
        self.assertEqual(held.read_bytes(), before)
        self.assertEqual(self.shop.setting("FTP EXIT"), "0")

    def test_an_upgrade_that_cannot_replace_a_file_fails_and_the_program_runs_on(self):
        self.assertEqual(self.set_up(), DONE)
        self.hold(self.folder / "karvel-manual" / "manual.ja.html")
        self.start_resident()
        self.assertEqual(self.set_up(), REFUSED)
        machine.wait_until(lambda: self.shop.setting("FTP EXIT") == "0", "started again")

    def test_a_folder_with_other_peoples_texts_is_refused(self):
        self.write("memo.txt", "大事なメモ")
        self.assertEqual(self.set_up(), REFUSED)
        self.assertEqual(content_of(self.folder), {"memo.txt": "大事なメモ".encode(CODE_PAGE)})
        shutil.copy(self.laid_out / "karvel.ini", self.folder)
        # The start with Windows stays as chosen.
        for switches, starts in ((["/AUTOSTART=0"], False), ([], False),
                                 (["/AUTOSTART=1"], True), ([], True)):
            self.assertEqual(self.set_up(*switches), DONE)
            self.assertEqual("karvel" in machine.registry_values(RUN_KEY), starts, switches)
        self.uninstall()


if __name__ == "__main__":
    unittest.main(verbosity=2)
