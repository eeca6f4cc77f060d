#!/usr/bin/env python3
"""fill_table.py LINES TABLE: puts the lines that ./bench printed into the table of docs/performance.md. A row keeps what
it says of its limit; rows of benches that were not played stay as they are, new ones are put at the end."""
import pathlib
import re
import sys

LINE = re.compile(r'(.*?): ours (.*), ratio (-?[\d.]+)(?: \(goal ([\d.]+)(, missed)?\))?$')
FIGURE = re.compile(r'\d[\d.]* (us|ms|s|MiB|bytes|% of a core)\b')


def key(name, compared):
    return name, FIGURE.sub('', compared)


def main():
    lines, table = map(pathlib.Path, sys.argv[1:])
    text = table.read_text().splitlines()
    first = next(n for n, line in enumerate(text) if line.startswith('|---')) + 1
    last = next((n for n in range(first, len(text)) if not text[n].startswith('|')), len(text))
    rows = {}
    for line in text[first:last]:
        cells = [cell.strip() for cell in line.strip('|').split('|')]
        rows[key(*cells[:2])] = cells
    filled = 0
    for line in lines.read_text().splitlines():
        match = LINE.match(line)
        if match is None:
            continue
        name, compared, ratio, goal, missed = match.groups()
        limit = rows.get(key(name, compared), [''])[-1]
        ratio = f'**{ratio}**' if missed else ratio
        rows[key(name, compared)] = [name, compared, ratio, goal or '-', limit]
        filled += 1
    text[first:last] = ['| ' + ' | '.join(cells) + ' |' for cells in rows.values()]
    table.write_text('\n'.join(text) + '\n')
    print(f'{filled} rows filled; those without a limit: '
          + (', '.join(cells[0] for cells in rows.values() if not cells[-1]) or 'none'))


if __name__ == '__main__':
    main()
