#!/usr/bin/env python3
"""A recall worked out a second time, from the tables alone and in the plainest way, to compare with the program's.

  tests/trace/recall.py DATABASE < asked    a line for each "lot TEXT" or "ndc TEXT": batches | prescriptions |
                                            patients, keys in order
"""
import sqlite3
import sys


def alike(text):
    """As the database compares: the case of A to Z makes no difference."""
    return "".join(sign.lower() if sign.isascii() else sign for sign in text or "")


def main():
    with sqlite3.connect(f"file:{sys.argv[1]}?mode=ro", uri=True) as file:
        made_as = {key: alike(lot) for key, lot in file.execute("SELECT LogID, log_Lot FROM Log")}
        lines = [(key, alike(lot), alike(ndc)) for key, lot, ndc in
                 file.execute("SELECT LogID, lch_Lot, lch_NDC FROM LogChem")]
        prescribed = file.execute("SELECT RXsID, LogID, PatientID FROM RXs").fetchall()
    for asked in sys.stdin.read().split("\n")[:-1]:
        by, wanted = asked.split(" ", 1)
        batches = {line[0] for line in lines if line[1 if by == "lot" else 2] == alike(wanted)}
        tainted = {made_as[key] for key in batches}
        grown = True
        while grown:
            more = {key for key, lot, _ in lines if lot and lot in tainted} - batches
            batches |= more
            tainted |= {made_as[key] for key in more}
            grown = bool(more)
        rows = [row for row in prescribed if row[1] in batches]
        print(*[" ".join(map(str, sorted(keys))) for keys in
                (batches, {row[0] for row in rows}, {row[2] for row in rows})], sep="|")


if __name__ == "__main__":
    main()
