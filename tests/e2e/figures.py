"""A desk's figures, computed the slow and obvious way to judge the program's by."""

import math
import re

BAND_ENDS = (9, 11, 13, 15, 17, 19, 21, 24)
SECONDS_PER_DAY = 86400


def desk_figures(data):
    """The 15 numbers of a desk's table row, from the bytes of its reception file."""
    records = [record for record in map(fields, lines(data)) if len(record) == 11]
    handled = [record for record in records if record[4]]
    waits = [wait for wait in (wait_seconds(record[1], record[2]) for record in handled)
             if wait is not None]
    return [
        len(handled),
        len(records) - len(handled),
        sum(1 for record in handled if record[5]),
        sum(1 for record in handled if numeric_value(record[7]) > 0),
        *bands([record[1] for record in handled]),
        whole_minutes(sum(waits) / len(handled)) if handled else 0,
        whole_minutes(max(waits, default=0)),
        call_interval([record[2] for record in handled]),
    ]


def lines(data):
    # Every byte is a character: nothing that counts is double-byte.
    return [line.removesuffix("\r") for line in data.decode("latin-1").split("\n")]


def fields(line):
    return [field.strip(" ") for field in line.split("\t")]


def seconds_of_day(text):
    match = re.fullmatch(r"([0-9]{1,2}):([0-9]{1,2})(?::([0-9]{1,2}))?", text)
    if not match:
        return None
    hour, minute, second = (int(part or 0) for part in match.groups())
    if hour > 23 or minute > 59 or second > 59:
        return None
    return hour * 3600 + minute * 60 + second


def wait_seconds(issued, called):
    begin, end = seconds_of_day(issued), seconds_of_day(called)
    if begin is None or end is None:
        return None
    return (end - begin) % SECONDS_PER_DAY


def numeric_value(text):
    text = re.sub(r"[ \t\n]", "", text)
    if match := re.match(r"&[hH]([0-9a-fA-F]+)", text):
        return int(match[1], 16)
    if match := re.match(r"&[oO]([0-7]+)", text):
        return int(match[1], 8)
    match = re.match(r"[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([eEdD][+-]?[0-9]+)?", text)
    return float(match[0].lower().replace("d", "e")) if match else 0


def bands(issue_times):
    counts = [0] * len(BAND_ENDS)
    for issued in issue_times:
        hour = numeric_value(issued[:2])
        if len(issued) == 8 and hour < BAND_ENDS[-1]:
            counts[next(i for i, end in enumerate(BAND_ENDS) if hour < end)] += 1
    return counts


def call_interval(call_times):
    times = [seconds_of_day(text) for text in sorted(call_times)]
    times = [time for time in times if time is not None]
    counted = [b - a for a, b in zip(times, times[1:]) if 1 <= b - a <= 3599]
    return whole_minutes(sum(counted) / len(counted)) if counted else 0


def whole_minutes(seconds):
    return math.floor(seconds / 60 + 0.5)
