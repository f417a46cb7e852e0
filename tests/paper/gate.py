#!/usr/bin/python3
"""The paper gate: makes reports with sorvanto-report and checks that every value of the data stands on them whole.

  gate.py PROGRAMS LANGUAGES             a seeded sample of the combinations (SEED to repeat one)
  gate.py PROGRAMS LANGUAGES --long      all of them
  gate.py PROGRAMS LANGUAGES --server    each report with each data, its records on a server; with --long all
  gate.py --self-test                    planted faults, on made-up pages

PROGRAMS is the folder of sorvanto-report and sorvanto-db, LANGUAGES that of the language files. Combinations are
reports x languages with their systems' customs x currencies x data. What must stand there is worked out by
expected.py, which shares nothing with the program. Prints the count of combinations and values; exit code 1 with
the faults, each with the command that shows it.
"""
import argparse
import concurrent.futures
import contextlib
import itertools
import os
import pathlib
import random
import subprocess
import sys
import tempfile
from xml.etree import ElementTree

import expected
import fixtures
import pages
import self_test
import served
import sheets

SYSTEMS = {"English": "en_US", "Spanish": "es_ES", "German": "de_DE", "French": "fr_FR", "Russian": "ru_RU",
           "Portuguese": "pt_PT", "Italian": "it_IT", "Swiss": "fr_CH"}
CURRENCIES = {"dollars": "$", "euros": "€", "francs": "CHF", "reais": "R$"}
SHOWN_FAULTS = 60
SERVED_BOOKS = 4  # spreadsheets of a normal run on a server: the office program takes most of the time


class Combination:
    def __init__(self, report, language, currency, fixture):
        self.report, self.language, self.currency, self.fixture = report, language, currency, fixture

    def __str__(self):
        return f"{self.report} {self.language} {self.currency} {self.fixture}"


class Desk:
    """Where a run's files lie, and the way to make one paper."""

    def __init__(self, programs, languages, folder, server=None):
        self.programs, self.folder, self.server = programs, folder, server
        self.words = {}
        for file in languages.glob("*Translation.xml"):
            (folder / file.name).write_bytes(file.read_bytes())
            root = ElementTree.parse(file).getroot()
            self.words[root.get("Language")] = {entry.get("English"): entry.get("Translated") for entry in root}
        for name, symbol in CURRENCIES.items():
            fixtures.write_options(folder / f"{name}.xml", symbol)
        self.databases = fixtures.make_databases(folder, programs / "sorvanto-db")
        if server:
            served.copy_all(server, programs / "sorvanto-db", self.databases)

    def command(self, combination, pdf, xls=None):
        place = (served.address(self.server, combination.fixture) if self.server
                 else self.databases[combination.fixture])
        arguments = [self.programs / "sorvanto-report", combination.report, *expected.REPORTS[combination.report][0],
                     "--database", place, "--language", combination.language,
                     "--options", self.folder / f"{combination.currency}.xml", "--pdf", pdf]
        return [str(each) for each in arguments + (["--xls", xls] if xls else [])]

    def wanted(self, combination):
        data = expected.Pharmacy(self.databases[combination.fixture], SYSTEMS[combination.language],
                                 CURRENCIES[combination.currency], self.words[combination.language])
        return expected.REPORTS[combination.report][1](data)

    def check(self, number, combination, with_sheet):
        """Makes one paper; gives its faults and how many values stand on it. A spreadsheet is made on the way."""
        pdf = self.folder / f"{number}.pdf"
        xls = self.folder / f"{number}.xls" if with_sheet else None
        environment = {**os.environ, "LC_ALL": SYSTEMS[combination.language] + ".UTF-8", "TZ": "UTC"}
        environment.pop("LANGUAGE", None)
        if self.server:
            environment |= served.password(self.server)
        run = subprocess.run(self.command(combination, pdf, xls), capture_output=True, env=environment, check=False)
        sheet = self.wanted(combination)
        if run.returncode != 0:
            why = run.stderr.decode().strip()
            if sheet.labels and hides(sheet) and "label is not printed" in why:
                return [], 0
            return [f"exit code {run.returncode}: {why}"], 0
        found = pages.faults(pages.read(pdf), sheet)
        pdf.unlink()
        return found, sheet.count()


def hides(sheet):
    """Whether a value of the labels is too long for its place, so that none may print."""
    return any(field.kind == "value" and pages.may_hide(field) for row in sheet.rows for field in row)


def all_combinations():
    return [Combination(*each) for each in itertools.product(expected.REPORTS, SYSTEMS, CURRENCIES, fixtures.FIXTURES)]


def sample(seed):
    """Each report with each data and each language, each currency in turn."""
    chance = random.Random(seed)
    chosen = []
    for index, (report, fixture) in enumerate(itertools.product(expected.REPORTS, fixtures.FIXTURES)):
        languages = chance.sample(list(SYSTEMS), len(SYSTEMS))
        currencies = list(CURRENCIES)
        for turn, language in enumerate(languages[:len(languages) if index % 2 == 0 else 4]):
            chosen.append(Combination(report, language, currencies[(index + turn) % len(currencies)], fixture))
    return chosen


def first_of_each(combinations):
    """Each report with each data once, the languages in turn."""
    pairs = {}
    for combination in combinations:
        pairs.setdefault((combination.report, combination.fixture), []).append(combination)
    return [each[index % len(each)] for index, each in enumerate(pairs.values())]


def spread(combinations, count):
    """So many combinations, each report with each data among them."""
    first = {}
    for combination in combinations:
        first.setdefault((combination.report, combination.fixture), combination)
    rest = [each for each in combinations if each not in first.values()]
    return set((list(first.values()) + rest)[:count])


def run(programs, languages, combinations, sheet_count, server=None):
    with tempfile.TemporaryDirectory(prefix="paper-") as place:
        desk = Desk(programs, languages, pathlib.Path(place), server)
        # A recall's spreadsheet has two sheets, which its own tests read.
        with_sheet = {each for each in spread(combinations, sheet_count) if each.report != "recall"}
        faults, values = [], 0
        with concurrent.futures.ThreadPoolExecutor(max_workers=2) as pool:
            jobs = [pool.submit(desk.check, number, combination, combination in with_sheet)
                    for number, combination in enumerate(combinations)]
            for combination, job in zip(combinations, jobs):
                found, count = job.result()
                values += count
                faults += [f"{combination}: {fault}" for fault in found]
        made = {number: combination for number, combination in enumerate(combinations)
                if combination in with_sheet and (desk.folder / f"{number}.xls").exists()}
        told, cells = sheets.check(desk, made)
        faults += told
    return faults, values, len(made), cells


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("programs", nargs="?", type=pathlib.Path)
    parser.add_argument("languages", nargs="?", type=pathlib.Path)
    parser.add_argument("--long", action="store_true")
    parser.add_argument("--self-test", action="store_true")
    parser.add_argument("--only", default="", help="combinations whose name has this text, of all")
    parser.add_argument("--server", action="store_true", help="the records on a server of its own")
    parser.add_argument("--paper-only", action="store_true", help="no spreadsheets")
    arguments = parser.parse_args()
    if arguments.self_test:
        return self_test.run()
    if not arguments.programs or not arguments.languages:
        parser.error("PROGRAMS and LANGUAGES are needed")
    whole = arguments.long or os.environ.get("SORVANTO_LONG") == "1"
    seed = int(os.environ.get("SEED", "1"))
    combinations = all_combinations() if whole or arguments.only else sample(seed)
    combinations = [each for each in combinations if arguments.only in str(each)]
    books = 0 if arguments.paper_only else len(combinations) if whole or arguments.only else 32
    with contextlib.ExitStack() as at_the_end:
        server = None
        if arguments.server:
            server = served.start(at_the_end)
            if not whole and not arguments.only:
                combinations, books = first_of_each(combinations), min(books, SERVED_BOOKS)
        faults, values, books, cells = run(arguments.programs, arguments.languages, combinations, books, server)
    for fault in faults[:SHOWN_FAULTS]:
        print(fault)
    if len(faults) > SHOWN_FAULTS:
        print(f"... and {len(faults) - SHOWN_FAULTS} more")
    name = "paper on a server" if arguments.server else "paper"
    print(f"{name}: {len(combinations)} combinations, {values} values; {books} spreadsheets, {cells} cells; "
          f"{len(faults)} faults" + ("" if whole else f" (seed {seed})"))
    return 1 if faults or not combinations else 0


if __name__ == "__main__":
    sys.exit(main())
