#!/usr/bin/env python3
"""compare_runs.py FIRST SECOND: the ratios of two runs of ./bench beside each other, and how far they lie apart. Ends with 1
if one differs by more than a quarter, or stands in one run alone."""
import pathlib
import sys

from fill_table import LINE, key

FURTHEST = 1.25


def ratios(lines):
    found = {}
    for line in pathlib.Path(lines).read_text().splitlines():
        if match := LINE.match(line):
            found[key(*match.groups()[:2])] = float(match[3])
    return found


def main():
    first, second = map(ratios, sys.argv[1:])
    apart = 0
    for name in first | second:
        one, other = first.get(name), second.get(name)
        alike = one is not None and other is not None and max(one, other) <= FURTHEST * min(one, other)
        apart += not alike
        print(f'{"" if alike else "apart: "}{name[0]}: {one}, {other}')
    print(f'{len(first | second)} ratios, {apart} further apart than a quarter')
    return 1 if apart else 0


if __name__ == '__main__':
    sys.exit(main())
