#!/usr/bin/env python3
"""Draws the screen of a terminal: tmux capture-pane -p -e | docs/screen-to-svg.py COLUMNS [X Y] >picture.svg

Supports the first sixteen colours, bold, dim, underlined and plain. Wide characters have two
columns. The cursor is drawn at column X of row Y, from 0.
"""

import re
import sys
import unicodedata
from xml.sax.saxutils import escape

CELL, ROW, SIZE, MARGIN = 8.4, 18, 14, 14
PAPER, INK = "#1d2026", "#d7dae0"
PLAIN = (INK, False, False, False)
COLOURS = [
    "#5c6370", "#e06c75", "#98c379", "#e5c07b", "#61afef", "#c678dd", "#56b6c2", "#d7dae0",
    "#7f848e", "#ef7f88", "#aad48b", "#f0d08d", "#7bbdf5", "#d38fe6", "#6ac7d3", "#ffffff",
]
SEQUENCE = re.compile(r"\x1b\[([0-9;]*)m|\x1b.|\x0f|\x0e")


def width_of(text):
    return sum(2 if unicodedata.east_asian_width(c) in "WF" else 1 for c in text)


def changed(style, numbers):
    """The style (colour, whether bold, dim and underlined) after the numbers of a sequence."""
    colour, bold, dim, underlined = style
    for number in [int(n or 0) for n in numbers.split(";")]:
        if number == 0:
            colour, bold, dim, underlined = PLAIN
        elif number == 1:
            bold = True
        elif number == 2:
            dim = True
        elif number == 22:
            bold = dim = False
        elif number in (4, 24):
            underlined = number == 4
        elif 30 <= number <= 37:
            colour = COLOURS[number - 30]
        elif 90 <= number <= 97:
            colour = COLOURS[number - 82]
        elif number == 39:
            colour = INK
    return colour, bold, dim, underlined


def runs_of(line, style):
    """Pieces of one style and of one width of character: (column, text, style)."""
    column, offset, runs = 0, 0, []
    ends = [(m.start(), m.end(), m.group(1)) for m in SEQUENCE.finditer(line)]
    for start, end, numbers in ends + [(len(line), len(line), None)]:
        for piece in re.findall(r"[ -~]+|[^ -~]", line[offset:start]):
            runs.append((column, piece, style))
            column += width_of(piece)
        offset = end
        if numbers is not None:
            style = changed(style, numbers)
    return runs, style


def main():
    columns = int(sys.argv[1])
    lines = sys.stdin.read().rstrip("\n").split("\n")
    wide, high = columns * CELL + 2 * MARGIN, len(lines) * ROW + 2 * MARGIN
    print(f'<svg xmlns="http://www.w3.org/2000/svg" width="{wide:.0f}" height="{high:.0f}" '
          f'viewBox="0 0 {wide:.0f} {high:.0f}" font-size="{SIZE}" '
          'font-family="DejaVu Sans Mono, Noto Sans Mono CJK JP, monospace" xml:space="preserve">')
    print(f'<rect width="100%" height="100%" rx="8" fill="{PAPER}"/>')
    if len(sys.argv) > 2:
        x, y = int(sys.argv[2]) * CELL + MARGIN, int(sys.argv[3]) * ROW + MARGIN
        print(f'<rect x="{x:.1f}" y="{y}" width="{CELL}" height="{ROW}" fill="{INK}" opacity="0.4"/>')
    style = PLAIN
    for row, line in enumerate(lines):
        runs, style = runs_of(line, style)
        for column, text, (colour, bold, dim, underlined) in runs:
            if text.isspace():
                continue
            x, y = MARGIN + column * CELL, MARGIN + row * ROW + SIZE
            marks = ' font-weight="bold"' if bold else ""
            marks += ' opacity="0.6"' if dim else ""
            marks += ' text-decoration="underline"' if underlined else ""
            print(f'<text x="{x:.1f}" y="{y}" fill="{colour}"{marks} '
                  f'textLength="{width_of(text) * CELL:.1f}">{escape(text)}</text>')
    print("</svg>")


main()
