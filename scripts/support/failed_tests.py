#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Shows what the tests that failed printed, from the JUnit reports that ctest wrote.

A whole run prints thousands of lines, and who looks at the end of a log is to find there what is
wrong: this repeats the failures, and nothing else, with the end of what each of them printed.

    failed_tests.py REPORT.xml ...
"""

import sys
import xml.etree.ElementTree as xml

LINES_OF_EACH = 60


def failures(report):
    """The failed cases of a report: name, why, and the last lines that each printed."""
    for case in xml.parse(report).getroot().iter("testcase"):
        failure = case.find("failure")
        if failure is None and case.get("status") not in ("fail", "notrun"):
            continue
        why = failure.get("message", "") if failure is not None else case.get("status")
        printed = (case.findtext("system-out") or "").rstrip().splitlines()
        yield case.get("name"), why, printed[-LINES_OF_EACH:]


def main(reports):
    for report in reports:
        try:
            found = list(failures(report))
        except (OSError, xml.ParseError) as error:
            print(f"{report}: cannot be read: {error}", file=sys.stderr)
            continue
        for name, why, printed in found:
            print(f"\n==> FAILED: {name} ({why})", file=sys.stderr)
            for line in printed:
                print(f"    {line}", file=sys.stderr)


if __name__ == "__main__":
    main(sys.argv[1:])
