#!/usr/bin/python3
"""The self-test for a real Windows, run as it is handed out, without what takes long."""

import os
import re
import subprocess
import tempfile
import unittest
import zipfile
from pathlib import Path

from windows_machine import PROGRAM_SECONDS, WINE_RUN, windows_path

MAKE = Path(__file__).resolve().parents[2] / "packaging/make-selftest"


class SelftestTest(unittest.TestCase):
    def test_leaves_one_page_that_tells_all(self):
        folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        report, temporary = folder / "報告.html", folder / "temp"
        temporary.mkdir()
        subprocess.run([MAKE, os.environ["KARVEL_BUILD"], folder / "kit.zip"], check=True)
        zipfile.ZipFile(folder / "kit.zip").extractall(folder)
        code = subprocess.run(
            [WINE_RUN, folder / "karvel-selftest/karvel-selftest.exe", "--quick", "--report",
             windows_path(report)], stdin=subprocess.DEVNULL, timeout=PROGRAM_SECONDS,
            env=os.environ | {"TEMP": windows_path(temporary)}).returncode
        page = report.read_text(encoding="utf-8")
        self.assertEqual(code, 0, page)
        self.assertEqual(list(temporary.iterdir()), [])
        for name in ("contract_tests", "desktop_tests"):
            row = re.search(f"<td>{name}</td>" + 4 * r'<td class="number">(\d+)</td>', page)
            planned = int(row[1])
            self.assertGreater(planned, 20)
            self.assertEqual([int(told) for told in row.groups()[1:]], [planned, 0, 0], name)
        self.assertEqual(len(re.findall(r"<h3>\d\. .*</h3>\n<p><b>.*</b></p>\n<pre>.", page)), 6)
        self.assertEqual(page.count("<li>"), 7, "known differences, which this system has")
        self.assertNotIn("答えが出ませんでした", page)


if __name__ == "__main__":
    unittest.main(verbosity=2)
