"""The gate itself, on made-up pages with planted faults: each must be found, and a faultless page pass."""
from fractions import Fraction

import customs
import pages
import sheets
from expected import Field, Sheet


def page(*lines, number=1):
    """Each line: its top and its texts with their left edges; five points of width a letter, ten high."""
    words = []
    for top, texts in lines:
        for left, text in texts:
            for part in text.split(" "):
                right = left + 5 * len(part)
                words.append(pages.Word(number, left, top, right, top + 10, part))
                left = right + 2.5
    return pages.Page(number, 612, 792, words)


NAME = Field("Antacid Suspension 1000 mcg/ml", "name")
ROW = [NAME, Field(["112.75"], width=450), Field("Quill & Co.", "words")]
GOOD = (100, [(20, "Antacid Suspension 1000 mcg/ml"), (250, "112.75"), (400, "Quill & Co.")])
NOTE = (700, [(20, "#### has no room")])
LOT = Field("LOTNUMBER-WITH-FORTY-CHARACTERS-0123456", width=540)
RUNNING = Field("Weigh each powder. CAUTION: keep cold. Fill.", "running")

# Name of the fault, what must stand there, what stands there, and whether that passes.
CASES = [
    ("faultless", [ROW], [GOOD], True),
    ("a digit cut from a number", [ROW], [(100, [(20, "Antacid Suspension 1000 mcg/ml"), (250, "112.7"), (400, "Quill & Co.")])], False),
    ("another number", [ROW], [(100, [(20, "Antacid Suspension 1000 mcg/ml"), (250, "1112.75"), (400, "Quill & Co.")])], False),
    ("a comma for a point", [ROW], [(100, [(20, "Antacid Suspension 1000 mcg/ml"), (250, "112,75"), (400, "Quill & Co.")])], False),
    ("values of two rows exchanged", [[Field("A"), Field("1")], [Field("B"), Field("2")]],
     [(100, [(20, "A"), (90, "2")]), (120, [(20, "B"), (90, "1")])], False),
    ("a value once for two rows", [[Field("7")], [Field("7")]], [(100, [(20, "7")])], False),
    ("a strength cut", [ROW], [(100, [(20, "Antacid Suspension 100"), (250, "112.75"), (400, "Quill & Co.")])], False),
    ("a strength lost behind the ellipsis", [ROW], [(100, [(20, "Antacid Suspension…"), (250, "112.75"), (400, "Quill & Co.")])], False),
    ("a name shortened before its strength", [ROW], [(100, [(20, "Antacid… 1000 mcg/ml"), (250, "112.75"), (400, "Quill & Co.")])], True),
    ("a name cut without an ellipsis", [ROW], [(100, [(20, "Antacid 1000 mcg/ml"), (250, "112.75"), (400, "Quill & Co.")])], False),
    ("words that end in an ellipsis", [ROW], [(100, [(20, "Antacid Suspension 1000 mcg/ml"), (250, "112.75"), (400, "Quill…")])], True),
    ("words cut without one", [ROW], [(100, [(20, "Antacid Suspension 1000 mcg/ml"), (250, "112.75"), (400, "Quill")])], False),
    ("an ellipsis inside a number", [[Field("pH 55 base", "words")]], [(100, [(20, "pH 5…")])], False),
    ("a value with an ellipsis", [[Field("12345", width=450)]], [(100, [(20, "123…")])], False),
    ("texts that touch", [[Field("AB"), Field("12")]], [(100, [(20, "AB"), (30.5, "12")])], False),
    ("texts over one another", [[Field("ABCD"), Field("12")]], [(100, [(20, "ABCD"), (60, "12")]), (104, [(25, "over")])], False),
    ("a text off the page", [[Field("1234567")]], [(100, [(590, "1234567")])], False),
    ("marks for a value that has room", [[Field("12345", width=900)]], [(100, [(20, "####")]), NOTE], False),
    ("marks for a value without room, with a footnote", [[LOT]], [(100, [(20, "####")]), NOTE], True),
    ("marks without a footnote", [[LOT]], [(100, [(20, "####")])], False),
    ("a running text", [[RUNNING]], [(100, [(20, "Instructions")]), (115, [(20, "Weigh each powder.")]), (130, [(20, "CAUTION: keep cold.")]),
                                     (145, [(20, "Fill.")])], True),
    ("a running text behind its caption", [[RUNNING]], [(100, [(20, "Description"), (120, "Weigh each powder. CAUTION: keep cold. Fill.")])], True),
    ("a caution lost", [[RUNNING]], [(115, [(20, "Weigh each powder.")]), (145, [(20, "Fill.")])], False),
    ("only the first line", [[RUNNING]], [(115, [(20, "Weigh each powder.")])], False),
]

LABEL_CASES = [("on its label", (40, [(20, "12.5")]), True), ("over the edge of its label", (40, [(195, "12.5")]), False),
               ("above the first label", (15, [(20, "12.5")]), False)]

# What a cell holds, what the office program prints of it, and whether that passes.
CELL_CASES = [
    ("a cell", "$ 1,234.50", [(100, [(20, "Cost"), (90, "$ 1,234.50")])], True),
    ("a cell that lost a digit", "$ 1,234.50", [(100, [(20, "Cost"), (90, "$ 1,234.5")])], False),
    ("a number too wide for its column", "1,234.50", [(100, [(20, "Cost"), (90, "###")])], False),
    ("a wrapped cell", "Lot 0101-10-22", [(100, [(90, "Lot 0101-")]), (115, [(20, "other"), (90, "10-22")])], True),
    ("a wrapped cell without its last line", "Lot 0101-10-22", [(100, [(90, "Lot 0101-")]), (115, [(20, "10-22")])], False),
]

FIGURES = [
    (customs.fixed(Fraction("18.104"), 3, customs.SYSTEMS["de_DE"]), ["18,104"]),
    (customs.fixed(Fraction("0.0005"), 3, customs.SYSTEMS["en_US"]), ["0.001"]),
    (customs.fixed(Fraction("-0.0005"), 3, customs.SYSTEMS["en_US"]), ["-0.001"]),
    (customs.fixed(Fraction("1234.5675"), 3, customs.SYSTEMS["fr_FR"]), ["1234,568"]),
    (customs.system_money(Fraction("8811.575"), customs.SYSTEMS["de_DE"]), ["8.811,58 €"]),
    (customs.system_money(Fraction("8811.58"), customs.SYSTEMS["es_ES"]), ["8811,58 €"]),
    (customs.system_money(Fraction("18811.58"), customs.SYSTEMS["es_ES"]), ["18.811,58 €"]),
    (customs.system_money(Fraction("1234567.8"), customs.SYSTEMS["fr_CH"]), ["1 234 567,80 CHF"]),
    (customs.options_money(Fraction("37033.84"), "R$", customs.SYSTEMS["pt_PT"], " "), ["R$ 37 033,84"]),
    (customs.options_money(Fraction("-5"), "$", customs.SYSTEMS["en_US"]), ["-$5.00"]),
    (customs.plain(0.0625, customs.SYSTEMS["ru_RU"]), ["0,0625"]),
    (customs.plain(100000, customs.SYSTEMS["en_US"]), ["100000"]),
    (customs.date_texts("2026-03-07 00:00:00", customs.SYSTEMS["fr_FR"]), ["07/03/2026"]),
    (customs.date_texts("2026-03-07 00:00:00", customs.SYSTEMS["en_US"]), ["3/7/2026"]),
]


def run():
    failed = []
    for name, rows, lines, passes in CASES:
        found = pages.faults([page(*lines)], Sheet(rows))
        if passes != (not found):
            failed.append(f"{name}: {found or 'not found'}")
    for name, line, passes in LABEL_CASES:
        found = pages.outside_dies(page(line), 1440)
        if passes != (not found):
            failed.append(f"{name}: {found or 'not found'}")
    if pages.faults([page((100, [(20, "Weigh each powder.")])), page((50, [(20, "CAUTION: keep cold. Fill.")]), number=2)], Sheet([[RUNNING]])):
        failed.append("a running text over two pages")
    for name, text, lines, passes in CELL_CASES:
        if sheets.stands([page(*lines)], text) != passes:
            failed.append(name)
    failed += [f"{found} instead of {wanted}" for found, wanted in FIGURES if found != wanted]
    for failure in failed:
        print("self-test:", failure)
    print(f"paper self-test: {len(CASES) + len(LABEL_CASES) + len(CELL_CASES) + len(FIGURES) + 1} cases, {len(failed)} failed")
    return 1 if failed else 0
