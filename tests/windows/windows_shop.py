"""A shop with the Windows program, in folders with Japanese and blanks in their names."""

import os
import sys
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parents[1] / "e2e"))

from shop import Shop  # noqa: E402
from windows_machine import WINE_RUN, windows_path  # noqa: E402


class WindowsShop(Shop):
    FOLDER, OUT_FOLDER = "集計 ソフト 表", "本部 表"
    PROGRAM = Path(os.environ["KARVEL_WINDOWS_PROGRAM"])
    THROUGH = (WINE_RUN,)

    def __init__(self, test, *options):
        super().__init__(test, *options)
        self.set("HST FOLD", windows_path(self.folder))
        self.set("OUT FOLD", windows_path(self.out))

    name_of = staticmethod(windows_path)

    def hand_over(self):
        return {}
