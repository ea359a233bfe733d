"""A shop with the Windows program, in folders with Japanese and blanks in their names."""

import os
import sys
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parents[1] / "e2e"))

from shop import SAMPLE_SHOP, Run, Shop, environment_on  # noqa: E402
from windows_machine import WINE_RUN, windows_path  # noqa: E402

PROGRAM = os.environ["KARVEL_WINDOWS_PROGRAM"]
if not Path(SAMPLE_SHOP).is_file():
    sys.exit(f"{SAMPLE_SHOP} is missing: build it for Linux first")


class WineRun(Run):
    @staticmethod
    def own_words(errors):
        # Wine's own, now and then, when it first looks at the drives.
        return "".join(line for line in errors.splitlines(keepends=True)
                       if not line.startswith("wine: Read access denied for device"))


class WindowsShop(Shop):
    FOLDER, OUT_FOLDER = "集計 ソフト 表", "本部 表"

    def install(self, program):
        self.set("HST FOLD", windows_path(self.folder))
        self.set("OUT FOLD", windows_path(self.out))
        super().install(PROGRAM)

    name_of = staticmethod(windows_path)

    def start(self, *arguments, screen=None):
        return WineRun(self, [WINE_RUN, self.folder / "karvel.exe", *arguments],
                       environment_on(screen))
