"""Aggregates one desk file with the program's reader and with public tools, and compares them.

Usage: compare_readers.py READ_DESK AWK_PROGRAM PROGRAM_FOLDER DAY

Desk 1's file is taken. Exit status 1 when the figures differ or a target is missed.
"""

import subprocess
import sys
import time
from pathlib import Path

ROUNDS = 9
LEAST_RATIO_TO_MAWK = 15
MOST_MEMORY_KIB = 64 * 1024


def timed(command):
    begin = time.perf_counter()
    output = subprocess.run(command, check=True, capture_output=True, text=True).stdout
    return time.perf_counter() - begin, output.splitlines()


def main(read_desk, awk_program, folder, day):
    desk_file = str(Path(folder) / "temp" / f"{day}_1.tmp")
    commands = {
        "wc -l": ["wc", "-l", desk_file],
        "mawk": ["mawk", "-f", awk_program, desk_file],
        "reader": [read_desk, folder, day, "1"],
    }
    best = dict.fromkeys(commands, float("inf"))
    outputs = {}
    for _ in range(ROUNDS):  # in turns, so that a busy moment of the machine hits them all
        for name, command in commands.items():
            seconds, outputs[name] = timed(command)
            best[name] = min(best[name], seconds)

    records = outputs["wc -l"][0].split()[0]
    size = Path(desk_file).stat().st_size / 1e6
    figures, measured = outputs["reader"]
    memory = int(measured.split()[1])
    print(f"One desk file of {records} records, {size:.1f} MB; whole processes, best of {ROUNDS}:")
    for name, seconds in best.items():
        print(f"  {name:8}{seconds:8.3f} s   {seconds / best['reader']:6.2f} x the reader")
    print(f"  the reader's peak memory: {memory / 1024:.1f} MiB")

    ratio = best["mawk"] / best["reader"]
    checks = {
        f"same figures as mawk: {figures}": figures == outputs["mawk"][0],
        f"at least {LEAST_RATIO_TO_MAWK} times as fast as mawk: {ratio:.1f}":
            ratio >= LEAST_RATIO_TO_MAWK,
        f"at most {MOST_MEMORY_KIB // 1024} MiB": 0 < memory <= MOST_MEMORY_KIB,
    }
    for text, good in checks.items():
        print("ok    " if good else "MISSED", text)
    return 0 if all(checks.values()) else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
