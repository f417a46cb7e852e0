#!/usr/bin/env python3
"""What scripts/mutants.py found out: a file of results that a later run goes on from, and the table of it.

  scripts/mutant_results.py --self-test     the book over a small example

One line a trial in the results: the fault, and what noticed it. A fault is known by its file, its operator,
the text of its line and its place in that line, so that it is found again after lines moved above it.
tests/mutants/explained.tsv lists, in the same way, the faults that nobody could notice, each with its reason.
"""
import collections
import csv
import os
import pathlib
import re
import sys
import tempfile

import faults

FIELDS = ["path", "operator", "line", "place", "change"]
Key = collections.namedtuple("Key", FIELDS)
ROWS = ("drawn", "at first", "killed", "explained", "left", "gone")


def key_of(fault, text):
    begin = text.rfind("\n", 0, fault.start) + 1
    whole = text[begin:text.find("\n", fault.start)]
    place = fault.start - begin - (len(whole) - len(whole.lstrip()))
    return Key(fault.path, fault.operator, whole.strip(), str(place), faults.change(fault, text))


def read_table(path):
    """Rows without the heading; a file that is not there has none."""
    if not path.is_file():
        return []
    with path.open(encoding="utf-8", newline="") as file:
        return list(csv.reader(file, delimiter="\t", quoting=csv.QUOTE_NONE))[1:]


class Book:
    """All trials so far, the last of each fault counting."""

    def __init__(self, path, explained):
        self.path = path
        self.trials = {}
        self.explained = {Key(*row[:5]): row[5] for row in read_table(explained)}
        for row in read_table(path):
            self.trials.setdefault(Key(*row[:5]), []).append(row[5])

    def add(self, key, by):
        """by: what noticed it, an empty text for nothing, "gone" for a fault whose line is no more."""
        new = not self.path.is_file()
        with self.path.open("a", encoding="utf-8") as file:
            if new:
                file.write("\t".join([*FIELDS, "noticed by"]) + "\n")
            file.write("\t".join([*key, by]) + "\n")
        self.trials.setdefault(key, []).append(by)

    def state(self, key):
        last = self.trials[key][-1]
        if last:
            return "gone" if last == "gone" else "killed"
        return "explained" if key in self.explained else "left"

    def likely(self, path):
        """The tests that come first, as a filter: those named like the file, and those that saw a fault there."""
        noticed = [by for key, trials in self.trials.items() if key.path == path for by in trials]
        names = {by.split(": ")[1] for by in noticed if re.search(r": \w+\.", by)}
        stem = pathlib.Path(path).stem
        word = re.match(r"[A-Za-z]?[a-z]*", stem).group()
        return ":".join([f"*{stem if names else word}*", *sorted(names)])

    def survivors(self):
        return [key for key in self.trials if self.state(key) == "left"]

    def table(self):
        """(folder, figures by ROWS) of each folder, and "all" as the last."""
        rows = collections.defaultdict(collections.Counter)
        for key, trials in self.trials.items():
            for row in (os.path.dirname(key.path), "all"):
                rows[row].update(["drawn", self.state(key)] + (["at first"] if trials[0] else []))
        return sorted(rows.items(), key=lambda item: (item[0] == "all", item[0]))

    def print_table(self):
        print(f"\n{'folder':24} " + " ".join(f"{name:>9}" for name in ROWS) + "    killed   or explained")
        for folder, figures in self.table():
            of = max(1, figures["drawn"] - figures["gone"])
            killed, settled = figures["killed"], figures["killed"] + figures["explained"]
            print(f"{folder:24} " + " ".join(f"{figures[name]:9}" for name in ROWS) +
                  f" {100 * killed / of:8.0f}% {100 * settled / of:13.0f}%")


def self_test():
    text = "void f()\n{\n    g(1, 1);\n    h(2);\n}\n"
    found = [fault for fault in faults.faults_of("src/a.cpp", text) if fault.operator == "constant"]
    keys = [key_of(fault, text) for fault in found]
    moved = [key_of(fault, "\n" + text) for fault in faults.faults_of("src/a.cpp", "\n" + text)
             if fault.operator == "constant"]
    with tempfile.TemporaryDirectory() as folder:
        path, explained = pathlib.Path(folder) / "results.tsv", pathlib.Path(folder) / "explained.tsv"
        explained.write_text("\t".join([*FIELDS, "reason"]) + "\n" + "\t".join([*keys[1], "no effect"]) + "\n")
        book = Book(path, explained)
        for key, by in zip(keys, ["a: A.B", "", ""]):
            book.add(key, by)
        book.add(keys[2], "a: A.C")
        again = Book(path, explained)
    expected = {"drawn": 3, "at first": 1, "killed": 2, "explained": 1}
    table = [(name, dict(figures)) for name, figures in again.table()]
    good = (len(set(keys)) == 3 and keys == moved and again.survivors() == []
            and again.state(keys[1]) == "explained" and again.likely("src/a.cpp") == "*a*:A.B:A.C"
            and table == [("src", expected), ("all", expected)])
    print("results self-test: " + ("passed" if good else "FAILED"))
    return good


if __name__ == "__main__":
    if sys.argv[1:] != ["--self-test"]:
        sys.exit(__doc__)
    sys.exit(0 if self_test() else 1)
