#!/usr/bin/python3
"""Measures the Windows program under Wine beside a bare Win32 program with an icon; ends with 1 when
the target is missed.

Resident is a program once the notification area has taken its icon in, which can be seen of both.
Memory is what the process alone has and no file does: the anonymous pages of smaps_rollup. Code that
is mapped from its file counts as little as it does among the private bytes of a Windows process, and
as private pages it would be called dirty or clean by whether its file has reached the disk yet."""

import os
import re
import statistics
import sys
import time
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "tests" / "windows"))

from filled_shop import filled_shop  # noqa: E402
from windows_case import OnWindows  # noqa: E402
from windows_machine import WINE_RUN  # noqa: E402

BARE = os.environ["KARVEL_BARE_TRAY"]

MEMORY_RATIO = 1.5
REST_SECONDS = 4
STARTS = 7


def own_megabytes(pid):
    rollup = Path(f"/proc/{pid}/smaps_rollup").read_text()
    return int(re.search(r"^Anonymous: +(\d+) kB", rollup, re.MULTILINE)[1]) / 1024


class WindowsDesktop(OnWindows):
    def measure(self, screen, start):
        """Seconds until the icon is there, and megabytes at rest."""
        begin = time.monotonic()
        process = start()
        screen.wait_until(screen.icon, "the icon")
        seconds = time.monotonic() - begin
        time.sleep(REST_SECONDS)
        memory = own_megabytes(process.pid)
        process.kill()
        process.wait()
        screen.wait_until(lambda: not screen.icon(), "no icon")
        return seconds, memory

    def test_start_and_memory_at_rest(self):
        screen = self.screen()
        shop = filled_shop(self)
        starts = {"karvel.exe": lambda: shop.start(screen=screen).process,
                  "bare_tray.exe": lambda: screen.spawn(WINE_RUN, BARE)}
        self.measure(screen, starts["bare_tray.exe"])  # Wine's own start
        found = {name: [] for name in starts}
        for _ in range(STARTS):  # in turns, so that a busy moment of the machine hits both
            for name, start in starts.items():
                found[name].append(self.measure(screen, start))
        medians = {name: [statistics.median(values) for values in zip(*pairs)]
                   for name, pairs in found.items()}

        print(f"Under Wine, medians of {STARTS} starts:")
        for name, (seconds, memory) in medians.items():
            print(f"  {name:14}{seconds:8.3f} s to resident {memory:8.2f} MB at rest")
        program, bare = medians.values()
        ratios = [ours / theirs for ours, theirs in zip(program, bare)]
        print(f"  ratio         {ratios[0]:8.2f}               {ratios[1]:8.2f} "
              f"(at most {MEMORY_RATIO})")
        self.assertLessEqual(ratios[1], MEMORY_RATIO)


if __name__ == "__main__":
    unittest.main(verbosity=0)
