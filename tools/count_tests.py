#!/usr/bin/env python3
"""Counts the tests in a report that ctest wrote with --output-junit.

    tools/count_tests.py REPORT

Prints how many passed, failed and did not run, on one line. A program of GoogleTest is one test to ctest and counts as those
that it said it would run: what has neither passed nor been skipped has failed, whatever ended the program. A test that was
found but has no program counts as failed. Which did not run, and what failed ones printed, goes to the standard error.
"""

import re
import sys
import xml.etree.ElementTree

ANNOUNCED = re.compile(r"^\[={10}\] Running (\d+) tests?", re.MULTILINE)
# A test may have printed a line without its end.
PASSED = re.compile(r"\[       OK \] \S+.* \(\d+ ms\)$", re.MULTILINE)
SKIPPED = re.compile(r"\[  SKIPPED \] (\S+).* \(\d+ ms\)$", re.MULTILINE)


def counts(report):
    total = [0, 0, 0]
    for case in xml.etree.ElementTree.parse(report).getroot().iter("testcase"):
        for index, count in enumerate(counts_of(case)):
            total[index] += count
    return total


def counts_of(case):
    """How many tests of one program passed, failed and did not run."""
    if case.get("status") == "disabled" or is_skip(case):
        print_skipped([case.get("name")])
        return 0, 0, 1
    output = case.findtext("system-out") or ""
    announced = ANNOUNCED.search(output)
    good = case.get("status") == "run"
    passed, failed, skipped = int(good), 0, []
    if announced:
        passed, skipped = len(PASSED.findall(output)), SKIPPED.findall(output)
        failed = int(announced[1]) - passed - len(skipped)
    print_skipped(skipped)
    if failed:
        print_failures(case.get("name"), output)
    elif not good:
        print(f"{case.get('name')}: {output[-4000:]}", file=sys.stderr)
    # A program that fails after its last test, as a sanitizer makes it do, has not passed.
    return passed, failed or int(not good), len(skipped)


def print_skipped(names):
    for name in names:
        print(f"Did not run: {name}", file=sys.stderr)


def print_failures(program, output):
    """What each test printed that has not ended well, which may be far from the end of what the program printed."""
    for block in re.split(r"^(?=\[ RUN      \])", output, flags=re.MULTILINE)[1:]:
        if not PASSED.search(block) and not SKIPPED.search(block):
            print(f"{program}: {block.partition('[----------]')[0]}", file=sys.stderr)


def is_skip(case):
    """Whether the test itself decided not to run; ctest says the same of a test that it could not start."""
    skipped = case.find("skipped")
    return skipped is not None and skipped.get("message", "").startswith("SKIP")


if __name__ == "__main__":
    print(*counts(sys.argv[1]))
