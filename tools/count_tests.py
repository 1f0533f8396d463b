#!/usr/bin/env python3
"""Counts the tests in a report that ctest wrote with --output-junit.

    tools/count_tests.py REPORT

Prints how many passed, failed and did not run, on one line. A test that was found but has no program counts as failed.
"""

import sys
import xml.etree.ElementTree


def counts(report):
    passed = failed = not_run = 0
    for case in xml.etree.ElementTree.parse(report).getroot().iter("testcase"):
        status = case.get("status")
        if status == "run":
            passed += 1
        elif status == "disabled" or (status == "notrun" and is_skip(case)):
            not_run += 1
        else:
            failed += 1
    return passed, failed, not_run


def is_skip(case):
    """Whether the test itself decided not to run; ctest says the same of a test that it could not start."""
    skipped = case.find("skipped")
    return skipped is not None and skipped.get("message", "").startswith("SKIP")


if __name__ == "__main__":
    print(*counts(sys.argv[1]))
