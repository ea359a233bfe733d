"""The program beside public FTP clients, on loopback servers that this script starts.

usage: compare_ftp_clients.py SITE_RUN SAMPLE_SHOP
"""

import os
import statistics
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent.parent / "tests" / "e2e"))
from ftp_servers import HOST, PyftpdServer, VsftpdServer  # noqa: E402

SITE_RUN, SAMPLE_SHOP = map(os.path.abspath, sys.argv[1:])
MOST_COMMANDS = 44
ROUNDS = 7
BULK_DAYS = 500
BULK_FILES = 6000
LIMIT_SECONDS = 900
DAY = "240105"
FILES = {f"00345_{DAY}.txt": b"old\r\n", "1200345.inf": b"old\r\n"}


def run(*command):
    done = subprocess.run([str(part) for part in command], check=True, capture_output=True,
                          timeout=LIMIT_SECONDS, text=True)
    return done.stdout


def wall_time(*command):
    begin = time.perf_counter()
    run(*command)
    return (time.perf_counter() - begin) * 1000


def lay_out(base, server, folder, *options):
    shop = Path(tempfile.mkdtemp(dir=base))
    run(SAMPLE_SHOP, "--folder", shop, "--out-folder", base, "--destination", "own-site",
        "--day", DAY, "--host", HOST, "--port", server.port, "--user", server.user,
        "--password", server.password, "--site-folder", folder, *options)
    return shop


def compare_uploads(case, base):
    server = PyftpdServer(case)
    server.password = "secret"
    server.authorizer.user_table[server.user]["pwd"] = server.password
    site = f"ftp://{server.user}:{server.password}@{HOST}:{server.port}/in/"
    for name in FILES:
        (base / name).write_bytes(b"x" * 2000)
    sources = [base / name for name in FILES]
    lftp = "set xfer:use-temp-file yes; set net:max-retries 1; set ftp:sync-mode yes; "

    def program():
        shop = lay_out(base, server, "in", "--receptions", "300")
        return wall_time(SITE_RUN, shop, "send")

    def by_lftp():
        put = " ".join(str(source) for source in sources)
        return wall_time("lftp", "-c", f"{lftp} open {site}; mput -O . {put}")

    def by_ncftpput():
        return wall_time("ncftpput", "-t", "10", "-u", server.user, "-p", server.password, "-P",
                         server.port, "-S", ".xxx", HOST, "in", *sources)

    print(f"two files replaced, one folder deep, median of {ROUNDS} runs of each process:")
    medians = {}
    for name, client in (("program", program), ("lftp", by_lftp), ("ncftpput", by_ncftpput)):
        times = []
        for _ in range(ROUNDS):
            server.make("in", FILES)
            server.commands.clear()
            times.append(client())
        medians[name] = statistics.median(times)
        print(f"  {name:9} {medians[name]:8.1f} ms  {len(server.commands):3} commands"
              f"  ratio {medians['program'] / medians[name]:.2f}")
        if name == "program":
            case.assertLessEqual(len(server.commands), MOST_COMMANDS)


def compare_listings(case, base):
    print("one refresh of a folder, beside a whole lftp ls of it:")
    for count in (10, 1000, 10_000):
        server = VsftpdServer(case)
        server.make(".", {f"00345_{i:06}.txt": b"x" for i in range(count)})
        shop = lay_out(base, server, "")
        refresh, listed = run(SITE_RUN, shop, "refresh").split()
        case.assertEqual(int(listed), count)
        site = f"ftp://{server.user}:{server.password}@{HOST}:{server.port}/"
        lftp = statistics.median(wall_time("lftp", "-c", f"open {site}; ls") for _ in range(ROUNDS))
        print(f"  {count:6} entries {float(refresh):8.2f} ms, {float(refresh) * 1000 / count:7.2f}"
              f" us each  lftp {lftp:7.1f} ms")


def measure_bulk(case, base):
    server = VsftpdServer(case)
    server.make("in", {f"99999_{i:06}.txt": b"x" for i in range(BULK_FILES)})
    shop = lay_out(base, server, "in", "--receptions", "20", "--desks", "2",
                   "--days", str(BULK_DAYS))
    total = float(run(SITE_RUN, shop, "bulk"))
    arrived = len(server.files("in")) - BULK_FILES
    case.assertGreaterEqual(arrived, BULK_DAYS)
    print(f"bulk run of {arrived} files into a folder of {BULK_FILES}: {total / 1000:.1f} s,"
          f" {total / arrived:.1f} ms a file")


class Comparison(unittest.TestCase):
    def runTest(self):
        with tempfile.TemporaryDirectory(prefix="karvel-bench-") as folder:
            for part in (compare_uploads, compare_listings, measure_bulk):
                part(self, Path(folder))


if __name__ == "__main__":
    Comparison().debug()
