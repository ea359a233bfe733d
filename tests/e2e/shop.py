"""A shop in a temporary folder, and the real program running in it."""

import os
import re
import shutil
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

SAMPLE_SHOP = os.environ["KARVEL_SAMPLE_SHOP"]

CODE_PAGE = "cp932"
DAY = "240105"
SHOP_CODE = "00345"
TABLE = f"{SHOP_CODE}_{DAY}.txt"
SHOP_INFO = "1200345.inf"

# File permissions do not bind a super user, so the program runs as somebody else then.
NOBODY = 65534
USER = {"user": NOBODY, "group": NOBODY, "extra_groups": []} if os.geteuid() == 0 else {}

START_SECONDS = 90
END_SECONDS = 120


class ShopTest(unittest.TestCase):
    def shop(self, *options):
        return Shop(self, *options)


class Shop:
    """A laid-out shop: `folder` is the program's folder, `out` its output folder."""

    FOLDER, OUT_FOLDER = "shop", "out"
    PROGRAM = Path(os.environ["KARVEL_PROGRAM"])
    THROUGH = ()  # a command that starts programs in its turn

    def __init__(self, test, *options):
        self.test = test
        self.base = Path(tempfile.mkdtemp(prefix="karvel-e2e-"))
        test.addCleanup(shutil.rmtree, self.base)
        self.base.chmod(0o755)
        self.folder = self.base / self.FOLDER
        self.own_settings = self.folder / "karvel.hnb"
        self.ticket_settings = self.folder / "karvel.ini"
        self.log_folder = self.folder / "Log"
        self.work_file = self.folder / "work.txt"
        self.out = self.base / self.OUT_FOLDER
        self.out.mkdir()
        self.home = self.base / "home"
        subprocess.run([SAMPLE_SHOP, "--folder", self.folder, "--out-folder", self.out,
                        "--day", DAY, *options], check=True)
        # By another process: a descriptor for writing that a fork of this one inherits would keep
        # the copy from being started.
        subprocess.run(["cp", self.PROGRAM, self.folder], check=True)

    @staticmethod
    def name_of(path):
        """How the program and its settings name a path."""
        return str(path)

    def desk_file(self, desk):
        return self.folder / "temp" / f"{DAY}_{desk}.tmp"

    def setting(self, key):
        """The value of a key of the own settings, or None."""
        text = self.own_settings.read_bytes().decode(CODE_PAGE)
        match = re.search(rf"^{key}=([^\r\n]*)", text, re.MULTILINE)
        return match[1] if match else None

    def set(self, key, value):
        """Changes an existing key of the own settings."""
        text = self.own_settings.read_bytes().decode(CODE_PAGE)
        text, count = re.subn(rf"^({key}=)[^\r\n]*", lambda match: match[1] + value, text,
                              flags=re.MULTILINE)
        self.test.assertEqual(count, 1, key)
        self.own_settings.write_bytes(text.encode(CODE_PAGE))

    def log_messages(self):
        """The run log's messages, each of which stands behind a time stamp."""
        text = b"".join(log.read_bytes() for log in self.log_folder.iterdir()).decode(CODE_PAGE)
        messages = re.findall(r"\d{4}(?:/\d\d){2} \d\d(?::\d\d){2}\t(.*)\r\n", text)
        self.test.assertEqual(len(messages), text.count("\n"), text)
        return messages

    def finished_runs(self):
        return sum(log.read_bytes().count(b"Snd Exit") for log in self.log_folder.iterdir())

    def names(self):
        """What stands in the program's folder."""
        return sorted(path.name for path in self.folder.iterdir())

    def delivered(self):
        """Name and content of every file in the output folder."""
        return {path.name: path.read_bytes() for path in self.out.iterdir()}

    def start(self, *arguments, screen=None, variables=(), **how):
        self.home.mkdir(mode=0o700, exist_ok=True)
        homes = {"HOME": str(self.home), "XDG_RUNTIME_DIR": str(self.home)}
        return Run(self, self.command(self.PROGRAM.name, *arguments),
                   environment_on(screen) | homes | dict(variables), **self.hand_over(), **how)

    def command(self, program, *arguments):
        return [*self.THROUGH, self.folder / program, *arguments]

    def hand_over(self):
        """Gives the folders to the user that programs run as; how to start one so."""
        if USER:
            subprocess.run(["chown", "-R", f"{NOBODY}:{NOBODY}", self.base], check=True)
        return USER

    def send_once(self):
        """A whole life of the program: start, send on request, end in order."""
        self.start().send_and_end()


def environment_on(screen):
    """Of a program on that screen, or without one."""
    if screen is not None:
        return screen.environment
    return {key: value for key, value in os.environ.items()
            if key not in ("DISPLAY", "WAYLAND_DISPLAY")}


class Run:
    """One running program."""

    def __init__(self, shop, command, environment, restore_signals=False, **how):
        """A program whose signals are restored is ended by a pipe that nobody reads."""
        self.shop = shop
        self.test = shop.test
        self.process = subprocess.Popen(
            command, cwd="/", env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.PIPE, restore_signals=restore_signals, **how)
        self.test.addCleanup(self.stop)

    def stop(self):
        self.process.kill()
        self.process.communicate()

    def running(self):
        return self.process.poll() is None

    def wait_until(self, condition, what, seconds=START_SECONDS):
        deadline = time.monotonic() + seconds
        while not condition():
            if not self.running():
                self.test.fail(f"ended before: {what}: {self.process.communicate()}")
            if time.monotonic() > deadline:
                self.test.fail(f"not in {seconds} s: {what}")
            time.sleep(0.05)

    def wait_for_start(self):
        """Waits until the start has reset the request keys, FTP INIT last."""
        self.wait_until(lambda: self.shop.setting("FTP INIT") == "0", "request keys reset")

    def send_and_end(self):
        self.wait_for_start()
        self.end_in_order(lambda: self.request("FTP EXIT", 1))

    def end_in_order(self, ask, **how):
        """The program ends when asked to, and leaves no work file."""
        self.shop.work_file.write_text("x")
        ask()
        self.expect_end(**how)
        self.test.assertFalse(self.shop.work_file.exists())

    def wait_for_tick(self, request=1):
        """Waits until a tick has answered a settings request."""
        self.wait_for_start()
        self.request("FTP INIT", request)
        self.wait_until(lambda: self.shop.setting("FTP INIT") == "0", "settings request answered")

    def wait_for_runs(self, count):
        """Waits until that many send runs have come to their end since the shop was laid out."""
        self.wait_until(lambda: self.shop.finished_runs() >= count, f"{count} send runs")

    def request(self, key, value):
        """Puts a digit in place of the digit that a request key holds."""
        position = self.shop.own_settings.read_bytes().index(f"{key}=".encode()) + len(key) + 1
        with open(self.shop.own_settings, "r+b", buffering=0) as file:
            os.pwrite(file.fileno(), str(value).encode(), position)

    def expect_end(self, status=0, error="", seconds=END_SECONDS):
        """The program ends by itself with this status, and has said only this."""
        try:
            output, errors = self.process.communicate(timeout=seconds)
        except subprocess.TimeoutExpired:
            self.test.fail(f"still running after {seconds} s")
        # Wine has a word of its own, now and then, when it first looks at the drives.
        errors = re.sub("wine: Read access denied for device.*\n", "", errors.decode())
        self.test.assertEqual((self.process.returncode, output, errors), (status, b"", error))
