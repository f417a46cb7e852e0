#!/usr/bin/env python3
"""Adds up a test run: names each case that was skipped and why, then prints one line "N passed, N failed".

Reads build/results as ./test leaves it: <preset>.xml of ctest, one entry a test program, and
<preset>/*.xml of the test programs, one entry a test case. A program that ended without a word of its own
(crash, time-out) counts as one failure beside the cases it tells of.
"""
import pathlib
import sys
import xml.etree.ElementTree as ElementTree


def cases_of(folder, program):
    """(passed, failed) of one test program, or None when it left no file. Skipped cases are neither."""
    file = folder / f"test_{program}.xml"
    try:
        root = ElementTree.parse(file).getroot()
    except (OSError, ElementTree.ParseError):
        return None
    cases = list(root.iter("testcase"))
    failed = sum(1 for case in cases if case.find("failure") is not None)
    skipped = [case for case in cases if case.find("skipped") is not None]
    for case in skipped:
        reason = case.find("skipped").get("message", "").strip().splitlines()
        print(f"skipped: {case.get('classname')}.{case.get('name')}: {reason[-1] if reason else 'no reason given'}")
    return len(cases) - failed - len(skipped), failed


def count(results):
    passed = failed = 0
    for junit in sorted(results.glob("*.xml")):
        for program in ElementTree.parse(junit).getroot().iter("testcase"):
            good = program.get("status") == "run"
            cases = cases_of(results / junit.stem, program.get("name"))
            if cases is None:
                cases = (1, 0) if good else (0, 1)
            elif not good and cases[1] == 0:
                cases = (cases[0], 1)
            passed += cases[0]
            failed += cases[1]
    return passed, failed


def main(arguments):
    passed, failed = count(pathlib.Path(arguments[0]))
    if "--and-checks" in arguments:
        codes = arguments[arguments.index("--and-checks") + 1:]
        passed += codes.count("0")
        failed += len(codes) - codes.count("0")
    print(f"{passed} passed, {failed} failed")


if __name__ == "__main__":
    main(sys.argv[1:])
