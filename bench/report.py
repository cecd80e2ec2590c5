#!/usr/bin/env python3
"""Makes tables and a plot of benchmark results.

    bench/report.py FILE.csv...                   prints all tables as Markdown
    bench/report.py --update PAGE.md FILE.csv...  replaces the tables in a page, each between the
                                                  lines <!-- table NAME --> and <!-- end -->
    bench/report.py --svg PLOT.svg FILE.csv...    plots the cost of a line against the commands
"""

import argparse
import csv
import math
import re
from pathlib import Path

PLOTTED_ROW = "a line, ns"
COLOURS = {"loop": "#777777", "yqrtClui": "#c0392b", "libcli": "#2471a3", "Tcl": "#1e8449"}
DASHES = {"": "none", "short forms": "6 4", "with a log": "2 3", "in C++": "8 3 2 3"}
LEFT, RIGHT, TOP, BOTTOM = 80, 570, 50, 430
TIMES = ["1 ns", "10 ns", "100 ns", "1 µs", "10 µs", "100 µs", "1 ms", "10 ms", "100 ms"]


def read(paths):
    """{table: {(row, kind): {column: (value, ratio)}}}, all in the order of the files."""
    tables = {}
    for path in paths:
        with open(path, encoding="utf-8", newline="") as file:
            for line in csv.DictReader(file):
                rows = tables.setdefault(line["table"], {})
                cells = rows.setdefault((line["row"], line["kind"]), {})
                cells[line["column"]] = (line["value"], line["ratio"])
    return tables


def number(text):
    """A count with its thousands separated, any other number with three digits at least."""
    if not re.fullmatch(r"-?[0-9.]+(e[+-][0-9]+)?", text):
        return text
    value = float(text)
    if value >= 100 or value == int(value):
        return f"{value:,.0f}"
    return f"{value:.1f}" if value >= 10 else f"{value:.2f}"


def cell(value, ratio):
    return number(value) + (f" ({number(ratio)})" if ratio not in ("", "1") else "")


def markdown(table):
    columns = list(dict.fromkeys(column for cells in table.values() for column in cells))
    lines = [["", "", *map(number, columns)], ["---"] * (len(columns) + 2)]
    last = None
    for (row, kind), cells in table.items():
        values = [cell(*cells.get(column, ("-", ""))) for column in columns]
        lines.append(["" if row == last else row, kind, *values])
        last = row
    return "".join("| " + " | ".join(line) + " |\n" for line in lines)


def update(page, tables):
    text = page.read_text(encoding="utf-8")
    for name, table in tables.items():
        block = re.compile(rf"(<!-- table {name} -->\n).*?(<!-- end -->\n)", re.DOTALL)
        text = block.sub(lambda found: found[1] + markdown(table) + found[2], text)
    page.write_text(text, encoding="utf-8")


def text_at(x, y, anchor, words):
    return f'<text x="{x}" y="{y}" text-anchor="{anchor}">{words}</text>'


def plot(table):
    """An SVG picture with logarithmic axes."""
    curves = {kind: [(int(size), float(cost)) for size, (cost, _) in cells.items() if size.isdigit()]
              for (row, kind), cells in table.items() if row == PLOTTED_ROW}
    sizes, costs = zip(*sum(curves.values(), []))
    lowest, highest = math.floor(math.log10(min(costs))), math.ceil(math.log10(max(costs)))

    def x(size):
        share = math.log(size / min(sizes)) / math.log(max(sizes) / min(sizes))
        return round(LEFT + share * (RIGHT - LEFT), 1)

    def y(cost):
        return round(BOTTOM - (math.log10(cost) - lowest) / (highest - lowest) * (BOTTOM - TOP), 1)

    middle = (LEFT + RIGHT) / 2
    parts = [text_at(middle, 28, "middle", "Cost of a command line"),
             text_at(middle, BOTTOM + 44, "middle", "commands in the language")]
    for power in range(lowest, highest + 1):
        parts += [f'<path d="M{LEFT} {y(10**power)}H{RIGHT}" stroke="#dddddd"/>',
                  text_at(LEFT - 8, y(10**power) + 4, "end", TIMES[power])]
    for size in sorted(set(sizes)):
        parts += [f'<path d="M{x(size)} {TOP}V{BOTTOM}" stroke="#dddddd"/>',
                  text_at(x(size), BOTTOM + 20, "middle", f"{size:,}")]
    for legend, (kind, points) in zip(range(TOP + 10, BOTTOM, 24), curves.items()):
        name, _, variant = kind.partition(", ")
        style = (f'fill="none" stroke-width="2" stroke="{COLOURS[name]}"'
                 f' stroke-dasharray="{DASHES[variant]}"')
        path = "L".join(f"{x(size)} {y(cost)}" for size, cost in points)
        parts += [f'<path {style} d="M{path}"/>', f'<path {style} d="M{RIGHT + 16} {legend}h30"/>',
                  text_at(RIGHT + 54, legend + 4, "start", kind)]
    body = "\n".join(parts)
    return ('<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 780 490" width="780" height="490"'
            ' font-family="sans-serif" font-size="13">\n'
            f'<rect width="780" height="490" fill="white"/>\n{body}\n</svg>\n')


def main():
    arguments = argparse.ArgumentParser(description=__doc__,
                                        formatter_class=argparse.RawDescriptionHelpFormatter)
    arguments.add_argument("--update", metavar="PAGE.md", type=Path)
    arguments.add_argument("--svg", metavar="PLOT.svg", type=Path)
    arguments.add_argument("files", nargs="+", metavar="FILE.csv")
    options = arguments.parse_args()
    tables = read(options.files)
    if options.update:
        update(options.update, tables)
    if options.svg:
        options.svg.write_text(plot(tables["peers"]), encoding="utf-8")
    if not options.update and not options.svg:
        for name, table in tables.items():
            print(f"## {name}\n\n{markdown(table)}")


if __name__ == "__main__":
    main()
