#!/usr/bin/python3
"""Runs the end-to-end tests side by side: they spend their time waiting for the program."""

import sys
import unittest
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path


def cases_of(suite):
    if isinstance(suite, unittest.TestCase):
        return [suite]
    return [case for entry in suite for case in cases_of(entry)]


def run(case):
    result = unittest.TestResult()
    case.run(result)
    return case, result


def main(pattern="*_test.py", side_by_side="12"):
    suite = unittest.defaultTestLoader.discover(Path(__file__).parent, pattern)
    cases = cases_of(suite)
    failed = 0
    with ThreadPoolExecutor(int(side_by_side)) as pool:
        for case, result in pool.map(run, cases):
            print("ok    " if result.wasSuccessful() else "FAILED", case.id(), flush=True)
            for _, trace in result.errors + result.failures:
                print(trace, flush=True)
            failed += not result.wasSuccessful()
    print(f"{len(cases)} cases, {failed} failed")
    return 1 if failed or not cases else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
