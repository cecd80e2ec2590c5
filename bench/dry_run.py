#!/usr/bin/env python3
"""Compares a dry run of 1,000,000 lines with their run by commands that do nothing.

usage: dry_run.py CLUI

Prints the seconds of both, their ratio (at most 2 is wanted), and the memory of dry runs of 100,000
and 1,000,000 lines (the same is wanted).
"""

import os
import resource
import subprocess
import sys
import tempfile
import time

LANGUAGE = """
(define p (clui-parser-new 0))
(define box (clui-token p "box:" 3 3))
(define at (clui-token p "at:" 4))
(define say (clui-token p "say:" 1))
(argument-help p box 1 "WIDTH" "in millimetres" 1 1000000)
(define (nothing . values) #f)
(clui-set-syntax p (clui-oneof (clui-syntax box at "(nothing $0[0] $0[1] '($1[0]))")
                               say "(nothing (token-argument $p -1 0))"))
"""
LINES = ["box: %d, 4 at: 12,13  # a comment\n", 'say: "line %d" say: b\n', "box: %d,\n", "  2 at: 3,4\n"]


def write(name, count):
    with open(name, "w") as file:
        for i in range(count):
            line = LINES[i % len(LINES)]
            file.write(line % (i + 1) if "%d" in line else line)


def run(clui, *arguments):
    """Seconds, and the most memory of any child so far in KiB."""
    begin = time.monotonic()
    result = subprocess.run([clui, "-q", *arguments], stdout=subprocess.DEVNULL)
    if result.returncode != 0:
        sys.exit("dry_run.py: the run failed")
    return time.monotonic() - begin, resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss


def main():
    clui = os.path.abspath(sys.argv[1])
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        with open("l.scm", "w") as file:
            file.write(LANGUAGE)
        write("small.cmd", 100000)
        write("large.cmd", 1000000)
        _, small = run(clui, "--dry-run", "l.scm", "small.cmd")
        dry, large = run(clui, "--dry-run", "l.scm", "large.cmd")
        dry = min(dry, run(clui, "--dry-run", "l.scm", "large.cmd")[0])
        full = min(run(clui, "l.scm", "large.cmd")[0] for _ in range(2))
    print(f"dry run {dry:.2f} s, run {full:.2f} s, ratio {dry / full:.2f}")
    print(f"memory of a dry run: 100,000 lines {small} KiB, 1,000,000 lines {large} KiB")


main()
