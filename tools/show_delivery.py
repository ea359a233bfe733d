"""Shows what a shop has delivered: the statistics table, the shop information file, the run log.

Usage: show_delivery.py OUTPUT_FOLDER LOG_FOLDER
"""

import sys
import unicodedata
from pathlib import Path

CODE_PAGE = "cp932"
DESK_NUMBER_COLUMN = 6  # the columns before it are the same in every row of a day


def display_width(text):
    """Columns that a text takes in a terminal: Japanese characters take two."""
    return sum(2 if unicodedata.east_asian_width(c) in "WF" else 1 for c in text)


def padded(text, width):
    return text + " " * (width - display_width(text))


def right_aligned(text, width):
    return " " * (width - display_width(text)) + text


def only_file(folder, pattern):
    files = sorted(Path(folder).glob(pattern))
    if len(files) != 1:
        sys.exit(f"expected one {pattern} in {folder}, found {len(files)}")
    return files[0]


def read_rows(file):
    text = file.read_bytes().decode(CODE_PAGE)
    return [line.split("\t") for line in text.removesuffix("\r\n").split("\r\n")]


def heading(title, file):
    print(f"== {title}: {file.name}\n")


def show_table(file):
    """Prints the table turned on its side, so that it fits a terminal: a column for each desk."""
    titles, *rows = read_rows(file)
    if not rows:
        sys.exit(f"{file} holds no rows")
    columns = list(zip(titles, *rows, strict=True))
    heading("Statistics, a column per desk", file)
    label_width = max(map(display_width, titles)) + 2
    for title, value, *_ in columns[:DESK_NUMBER_COLUMN]:
        print(padded(title, label_width) + value)
    print()
    width = max(display_width(row[DESK_NUMBER_COLUMN + 1]) for row in rows) + 2
    for title, *values in columns[DESK_NUMBER_COLUMN:]:
        print(padded(title, label_width) + "".join(right_aligned(v, width) for v in values))
    print()


def show_lines(title, file):
    heading(title, file)
    for row in read_rows(file):
        print("  ".join(row).rstrip())
    print()


def main(out_folder, log_folder):
    sys.stdout.reconfigure(errors="replace")
    show_table(only_file(out_folder, "*.txt"))
    show_lines("Shop information", only_file(out_folder, "*.inf"))
    logs = sorted(Path(log_folder).glob("*.log"))  # two where a run crosses midnight
    if not logs:
        sys.exit(f"no run log in {log_folder}")
    for log in logs:
        show_lines("Run log", log)


if __name__ == "__main__":
    main(*sys.argv[1:])
