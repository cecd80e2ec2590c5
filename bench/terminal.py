#!/usr/bin/env python3
"""Measures how long a user at a terminal waits for each key: bench/terminal.py CLUI >terminal.csv

Types into clui in a pseudo-terminal, in a language of 10,000 words that are all allowed, and times
each key from its writing to the first bytes of the response, by the wall clock: other programs of
the machine count. The results have the format of peer_bench; the exit status is 1 when a bound is
not kept or clui does not respond.
"""

import fcntl
import itertools
import os
import pty
import random
import select
import struct
import sys
import tempfile
import termios
import time
from collections import defaultdict
from pathlib import Path

TYPED_WORDS = 500
LISTED_EVERY = 10  # words
PATIENCE = 10  # seconds
MEDIAN_BOUND, HIGH_BOUND = 1, 5  # milliseconds


def language():
    """10,000 words of four syllables."""
    syllables = [[c + v for c in "kstnhmyrwg"] for v in "aeio"]
    return ["".join(word) for word in itertools.product(*syllables)]


def script(words):
    names = " ".join(f'"{word}"' for word in words)
    return ("(define p (clui-parser-new 0))\n(clui-set-syntax p (apply clui-oneof (map"
            f" (lambda (name) (clui-syntax (clui-token p name) \"#t\")) '({names}))))\n")


class Terminal:
    """A program in a terminal of 100 columns and 30 lines."""

    def __init__(self, command):
        child, self.terminal = pty.fork()
        if child == 0:
            os.execv(command[0], command)
        fcntl.ioctl(self.terminal, termios.TIOCSWINSZ, struct.pack("HHHH", 30, 100, 0, 0))
        self.times = defaultdict(list)
        self.read(PATIENCE)
        while self.read(0.5):
            pass

    def read(self, seconds):
        """The number of bytes that can be read within that time."""
        ready, _, _ = select.select([self.terminal], [], [], seconds)
        return len(os.read(self.terminal, 65536)) if ready else 0

    def press(self, name, key, least=1):
        """Writes a key and reads the response, of at least so many bytes."""
        start = time.perf_counter()
        os.write(self.terminal, key.encode())
        count = self.read(PATIENCE)
        self.times[name].append((time.perf_counter() - start) * 1000)
        while more := self.read(PATIENCE if count < least else 0.003):
            count += more
        if count < least:
            sys.exit(f"clui did not respond to {name}")


def type_words(terminal, words):
    numbers = random.Random(1)
    for count in range(TYPED_WORDS):
        word = numbers.choice(words)
        for letter in word[:6]:
            terminal.press("a letter", letter)
        terminal.press("completion", "\t")
        terminal.press("listing of 10", "\t")
        terminal.press("a letter", word[6])
        terminal.press("completion", "\t")
        terminal.press("Return", "\r")
        if count % LISTED_EVERY == 0:
            terminal.press("listing of all", "?", 1000)
            for letter in word[:4] + "x" + word[5:]:
                terminal.press("a letter", letter)
            terminal.press("Return after an unknown word", "\r", 8)


def print_times(times):
    """Prints the times of each key and returns whether the bounds are kept."""
    print("table,row,kind,column,value,ratio")
    all_kept = True
    for name, values in times.items():
        values.sort()
        median, high = values[len(values) // 2], values[len(values) * 99 // 100]
        columns = {"keys": len(values), "median ms": median, "99 % ms": high, "max ms": values[-1]}
        for column, value in columns.items():
            print(f'terminal,"{name}",,{column},{value:.4g},')
        kept = median <= MEDIAN_BOUND and high <= HIGH_BOUND
        print("kept    " if kept else "not kept", name, file=sys.stderr)
        all_kept = all_kept and kept
    return all_kept


def main(program):
    words = language()
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder, "language.scm")
        path.write_text(script(words), encoding="utf-8")
        os.environ.update(XDG_STATE_HOME=folder, TERM="xterm-256color", LC_ALL="C.UTF-8")
        terminal = Terminal([program, str(path)])
        type_words(terminal, words)
        os.close(terminal.terminal)
    return 0 if print_times(terminal.times) else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
