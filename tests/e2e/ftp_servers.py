"""Real FTP servers on loopback, each with a folder of its own."""

import logging
import os
import shutil
import socket
import subprocess
import tempfile
import threading
import time
from pathlib import Path

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import DTPHandler, FTPHandler
from pyftpdlib.ioloop import IOLoop
from pyftpdlib.servers import FTPServer

HOST = "127.0.0.1"
HIGHEST_PORT = 60000  # that the program takes
START_SECONDS = 20
logging.getLogger("pyftpdlib").addHandler(logging.NullHandler())
logging.getLogger("pyftpdlib").propagate = False
# An ordinary user with a home folder, which vsftpd wants to see before anything else.
VSFTPD_USER = "daemon"


def free_port():
    while True:
        with socket.create_server((HOST, 0)) as listener:
            port = listener.getsockname()[1]
        if port <= HIGHEST_PORT:
            return port


class Server:
    """A server and the folder that it serves. Names are bytes there, as they are on the wire."""

    def __init__(self, test, owner=None):
        self.port = free_port()
        self.owner = owner
        self.root = Path(tempfile.mkdtemp(prefix="karvel-ftp-"))
        test.addCleanup(shutil.rmtree, self.root)
        self.root.chmod(0o755)

    def shop_options(self, folder):
        """Of a sample shop that sends into that folder."""
        return ("--destination", "own-site", "--host", HOST, "--port", str(self.port), "--user",
                self.user, "--password", self.password, "--site-folder", folder)

    def path(self, folder):
        return self.root / os.fsdecode(folder.encode("cp932"))

    def make(self, folder, files):
        self.path(folder).mkdir(parents=True, exist_ok=True)
        for name, content in files.items():
            (self.path(folder) / name).write_bytes(content)
        if self.owner is not None:
            # vsftpd refuses a login folder that its user may write to.
            subprocess.run(["chown", "-R", self.owner, *self.root.iterdir()], check=True)

    def files(self, folder):
        return {path.name: path.read_bytes()
                for path in self.path(folder).iterdir() if path.is_file()}


class BytesDataHandler(DTPHandler):
    """Keeps a text as it arrives, as a server does whose own line ends are CR LF."""

    def _posix_ascii_data_wrapper(self, chunk):
        return chunk


class BytesHandler(FTPHandler):
    """Hands names through as they are; the library takes them for UTF-8."""

    dtp_handler = BytesDataHandler
    unicode_errors = "surrogateescape"

    def pre_process_command(self, line, cmd, arg):
        self.commands.append((cmd, arg))
        super().pre_process_command(line, cmd, arg)

    def push(self, s):
        # Past FTPHandler.push, which would encode without that.
        super(FTPHandler, self).push(s.encode("utf8", self.unicode_errors))


class PyftpdServer(Server):
    user = "shop"
    password = "se cret%2F@:"

    def __init__(self, test, connections=0):
        """Serves as many clients at a time as it is asked to serve, or all."""
        super().__init__(test)
        self.connections = connections
        self.authorizer = DummyAuthorizer()
        self.authorizer.add_user(self.user, self.password, str(self.root), perm="elradfmwMT")
        self.commands = []
        # A class of its own: what is set on a handler class holds for all its servers.
        self.handler = type("Handler", (BytesHandler,), {
            "authorizer": self.authorizer, "banner": "ready", "auth_failed_timeout": 0,
            "commands": self.commands})
        self.start()
        test.addCleanup(self.stop)

    def start(self):
        self.server = FTPServer((HOST, self.port), self.handler, ioloop=IOLoop())
        self.server.max_cons = self.connections
        self.stopping = False
        self.thread = threading.Thread(target=self.serve)
        self.thread.start()

    def restart(self):
        """Drops all its clients on the way."""
        self.stop()
        self.start()

    def serve(self):
        while not self.stopping:
            self.server.ioloop.loop(timeout=0.1, blocking=False)
        self.server.close_all()

    def stop(self):
        self.stopping = True
        self.thread.join()


class VsftpdServer(Server):
    """Needs a super user. Its anonymous user may do what a shop's account may, with any password."""

    user = "anonymous"
    password = "shop-password"

    def __init__(self, test):
        super().__init__(test, VSFTPD_USER)
        empty = tempfile.mkdtemp(prefix="karvel-vsftpd-")
        test.addCleanup(shutil.rmtree, empty)
        settings = {
            "listen": "YES", "listen_address": HOST, "listen_port": self.port, "background": "NO",
            "anonymous_enable": "YES", "local_enable": "NO", "ftp_username": VSFTPD_USER,
            "anon_root": self.root, "anon_world_readable_only": "NO", "anon_umask": "022",
            "write_enable": "YES", "anon_upload_enable": "YES", "anon_mkdir_write_enable": "YES",
            "anon_other_write_enable": "YES", "ascii_upload_enable": "NO",
            "secure_chroot_dir": empty, "nopriv_user": "nobody",
            "seccomp_sandbox": "NO", "xferlog_enable": "NO", "connect_from_port_20": "NO",
        }
        self.process = subprocess.Popen(
            [os.environ["KARVEL_VSFTPD"], *(f"-o{key}={value}" for key, value in settings.items())],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        test.addCleanup(self.stop)
        self.wait_for_start(test)

    def wait_for_start(self, test):
        deadline = time.monotonic() + START_SECONDS
        while not self.listens():
            ended = self.process.poll() is not None
            test.assertFalse(ended, ended and self.process.stdout.read())
            test.assertLess(time.monotonic(), deadline, "vsftpd does not answer")
            time.sleep(0.05)

    def listens(self):
        with socket.socket() as control:
            return control.connect_ex((HOST, self.port)) == 0

    def stop(self):
        self.process.terminate()
        self.process.communicate(timeout=10)
