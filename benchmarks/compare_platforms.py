"""Aggregates one desk file with the reader of the Linux build and, under Wine, of the Windows build.

Usage: compare_platforms.py READ_DESK READ_DESK_EXE PROGRAM_FOLDER DAY

Desk 1's file is taken. Exit status 1 when the figures differ or the target is missed.
"""

import subprocess
import sys
from pathlib import Path

ROUNDS = 9
MOST_RATIO_TO_LINUX = 1.5
WINE_RUN = Path(__file__).resolve().parents[1] / "scripts" / "wine-run"


def figures_and_seconds(command):
    output = subprocess.run(command, check=True, stdin=subprocess.DEVNULL,
                            stdout=subprocess.PIPE, text=True).stdout
    figures, measured = output.splitlines()
    return figures, float(measured.split()[0])


def main(read_desk, read_desk_exe, folder, day):
    folder = Path(folder).resolve()
    windows_folder = "Z:" + str(folder).replace("/", "\\")
    commands = {
        "Linux": [read_desk, folder, day, "1"],
        "Windows": [WINE_RUN, read_desk_exe, windows_folder, day, "1"],
    }
    best = dict.fromkeys(commands, float("inf"))
    figures = {}
    for _ in range(ROUNDS):  # in turns, so that a busy moment of the machine hits both
        for name, command in commands.items():
            figures[name], seconds = figures_and_seconds(command)
            best[name] = min(best[name], seconds)

    ratio = best["Windows"] / best["Linux"]
    print(f"The same file, without the start of the process, best of {ROUNDS}:")
    for name, seconds in best.items():
        print(f"  {name:8}{seconds:8.3f} s")
    checks = {
        "same figures": figures["Windows"] == figures["Linux"],
        f"at most {MOST_RATIO_TO_LINUX} times as long as on Linux: {ratio:.2f}":
            ratio <= MOST_RATIO_TO_LINUX,
    }
    for text, good in checks.items():
        print("ok    " if good else "MISSED", text)
    return 0 if all(checks.values()) else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
