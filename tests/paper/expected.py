"""What each paper must show: read from the database by its own statements, worked out in exact fractions.

A sheet is a list of rows; a row is a list of fields that stand on one line from left to right. A row of one
field may stand beside others.
"""
import sqlite3
from fractions import Fraction

import customs
import fixtures
from customs import decimal_of

JARS = ["", "15 ml", "20 ml", "30 ml", "50 ml", "100 ml", "200 ml", "300 ml", "500 ml", "1000 ml"]
TYPES = ["Combination", "Cream", "Ointment", "Gel", "Lotion", "Suspension", "Paste", "Powder Blend", "Suppository Base",
         "Custom"]
BEGIN, END = "2026-01-01", "2026-12-31"


class Field:
    """One text. kind: "value" stands whole, or as #### where its place (in twips) can't hold it at five points;
    "name" may be shortened in front of its strength; "words" may end in an ellipsis; "running" goes on over
    lines and pages; "column" takes lines of its own column and is never shortened."""

    def __init__(self, texts, kind="value", width=None, number=None):
        self.texts = [texts] if isinstance(texts, str) else texts
        self.kind = kind
        self.width = width
        self.number = number  # what a spreadsheet's cell holds; None: a text
        self.sans = False     # set in the wider of the two kinds of type
        self.column = None    # left and right edge on the page, in twips

    def is_empty(self):
        return not self.texts[0].split()

    def __repr__(self):
        return f"{self.kind} {self.texts[0]!r}"


class Sheet:
    def __init__(self, rows, labels=None, sans=False):
        self.rows = [[field for field in row if not field.is_empty()] for row in rows]
        self.rows = [row for row in self.rows if row]
        self.labels = labels  # (first position, count, pitch down in twips)
        for field in (field for row in self.rows for field in row):
            field.sans = sans

    def count(self):
        return sum(len(row) for row in self.rows)


class Pharmacy:
    """The data of one order in one system's customs."""

    def __init__(self, path, system, currency, words):
        """words: the language's texts by their English ones."""
        self.database = sqlite3.connect(f"file:{path}?mode=ro", uri=True)
        self.database.row_factory = sqlite3.Row
        self.customs = customs.SYSTEMS[system]
        self.currency = currency
        self.types = [words.get(name, name) for name in TYPES]

    def rows(self, statement, *values):
        return self.database.execute(statement, values).fetchall()

    def money(self, value, width=None, blank=""):
        value = decimal_of(value or 0)
        return Field(customs.options_money(value, self.currency, self.customs, blank), width=width, number=value)

    def system_money(self, value, width=None):
        return Field(customs.system_money(value, self.customs), width=width, number=value)

    def quantity(self, value, places, width=None):
        value = decimal_of(value or 0)
        return Field(customs.fixed(value, places, self.customs), width=width, number=value)

    def plain(self, value, width=None):
        return Field(customs.plain(value, self.customs), width=width, number=None if value is None else decimal_of(value))

    def date(self, stored, width=None):
        return Field(customs.date_texts(stored, self.customs) if stored else "", width=width, number=stored)


def text(value, kind="value", width=None):
    return Field(value or "", kind, width)


def store_block():
    store = fixtures.STORE
    return [[text(store["StoreName"], "words")], [text(store["Address"], "words")],
            [text(f"{store['City']}, {store['State']} {store['PostalCode']}")],
            [text(store["Phone"]), text(store["Fax"])], [text(store["DEA"])]]


def worksheet(data, key, make):
    formula = data.rows("SELECT * FROM Formula WHERE FormulaID = ?", key)[0]
    lines = data.rows("SELECT * FROM FormChem JOIN Chemical USING (ChemicalID) WHERE FormulaID = ?", key)
    factor = Fraction(make, formula["frm_Quantity"])
    rows = [[text(f"{formula['frm_Name'].strip()} {formula['frm_Strength'].strip()} {data.types[formula['frm_FormType']]}",
                  "name")]]
    totals = []
    for column in ("chm_Cost", "chm_AWP"):
        total = sum((decimal_of(line["fch_Qty"]) * decimal_of(line[column]) for line in lines), Fraction(0))
        totals.append(customs.half_even(customs.half_even(total, 4) * factor, 4))
    rows.append([data.quantity(make, 2, 990), text(formula["frm_Units"], width=990), data.system_money(totals[0], 990),
                 data.system_money(totals[1], 1080)])
    for line in lines:
        quantity = customs.near_ties(decimal_of(line["fch_Qty"]) * factor, 3)[0]
        price = customs.near_ties(quantity * decimal_of(line["chm_Cost"]), 2)[0]
        rows.append([text(line["chm_Name"], "name"), text(line["chm_Form"], "words"), data.quantity(quantity, 3, 810),
                     text(line["chm_Units"], width=540), data.system_money(price, 810), text(line["chm_Notes"], "words")])
    rows.append([text(formula["frm_Desc"], "running")])
    rows.append([text(formula["frm_Instructions"], "running")])
    return Sheet(rows + store_block(), sans=True)


def formula_log(data, key):
    log = data.rows("SELECT * FROM Log WHERE LogID = ?", key)[0]
    formula = data.rows("SELECT * FROM Formula WHERE FormulaID = ?", log["FormulaID"])
    rows = [[text(f"{log['log_Name'].strip()} {log['log_Strength'].strip()}", "name"), text(data.types[log["log_FormType"]])],
            [data.date(log["log_Date"], 2520), text(log["log_Initials"], "words"), text(log["log_Verified"], "words")],
            [data.quantity(log["log_Quantity"], 2, 990), text(log["log_Units"], width=630), data.money(log["log_Cost"], 990),
             data.money(log["log_AWP"], 1080)]]
    for line in data.rows("SELECT * FROM LogChem WHERE LogID = ?", key):
        rows.append([text(line["lch_Name"], "name"), text(line["lch_Form"], "words"), data.quantity(line["lch_QTY"], 3, 810),
                     text(line["lch_Units"], width=540), text(line["lch_Lot"], width=1170), text(line["lch_Supplier"], "words"),
                     data.money(line["lch_Cost"], 990)])
    rows.append([text(log["log_Desc"], "running")])
    if formula:
        rows.append([text(formula[0]["frm_Instructions"], "running")])
    rows.append([text(log["log_Lot"], width=2070)])
    return Sheet(rows + store_block(), sans=True)


def batch_labels(data, key, count, position):
    log = data.rows("SELECT * FROM Log WHERE LogID = ?", key)[0]
    label = [[text(log["log_Name"], "name"), text(log["log_Strength"], width=900)],
             [data.plain(log["log_Quantity"], 1080), text(data.types[log["log_FormType"]], "words"),
              text(log["log_Initials"], "words"), text(log["log_Verified"], "words")],
             [data.money(log["log_Cost"], 1080), data.money(log["log_AWP"], 1080)],
             [text(log["log_Lot"], width=2700)]]
    return Sheet(label * count, (position, count, 1440), sans=True)


def rx_labels(data, key, count, position):
    row = data.rows("SELECT * FROM RXs JOIN Log USING (LogID) JOIN Patient USING (PatientID) WHERE RXsID = ?", key)[0]
    store = fixtures.STORE
    label = [[text(store["StoreName"], "words"), text(row["log_Lot"], width=1260)],
             [text(f"{store['Address']} {store['City']}, {store['State']} {store['PostalCode']} {store['Phone']}")],
             [text(f"# {row['RXsID']}"), text(row["rxs_Doctor"], "words")],
             [text(f"{row['pat_FName']} {row['pat_LName']}", "words"), data.date(row["rxs_Date"], 810)],
             [text(row["rxs_Consult"], "words")],
             [text(f"{row['log_Name']} {row['log_Strength']}", "name"), data.plain(row["rxs_QTY"], 450)]]
    return Sheet(label * count, (position, count, 1470))


def log_report(data, key):
    logs = data.rows("SELECT * FROM Log WHERE FormulaID = ? AND log_Date >= ? AND log_Date <= ? ORDER BY LogID", key,
                     BEGIN + " 00:00:00", END + " 00:00:00")
    first = logs[0]
    rows = [[text(f"{first['log_Name']} {first['log_Strength']}", "name"), text(data.types[first["log_FormType"]], "words"),
             text(first["log_NDC"])],
            [text(first["log_Desc"], "words")]]
    rows += [[data.date(log["log_Date"], 2160), text(log["log_Lot"], width=1620), text(JARS[log["log_JarSize"]], width=1440),
              data.plain(log["log_Quantity"], 1440), text(log["log_Initials"], "words"), text(log["log_Verified"], "words"),
              data.money(log["log_Cost"], 1260)] for log in logs]
    total = sum((decimal_of(log["log_Cost"]) for log in logs), Fraction(0))
    quantity = sum(log["log_Quantity"] for log in logs)
    rows.append([text(str(len(logs))), text(customs.plain(quantity, data.customs)[0] + " ml"),
                 Field([each for each in customs.options_money(total, data.currency, data.customs)]
                       + [data.currency + customs.fixed(total, 2, data.customs)[0]], width=1620, number=total)])
    return Sheet(rows)


def jar_usage(data):
    counts = data.rows("SELECT log_JarSize, count(*) AS used FROM Log WHERE log_Date >= ? AND log_Date <= ? "
                       "GROUP BY log_JarSize", BEGIN + " 00:00:00", END + " 00:00:00")
    return Sheet([[text(JARS[row["log_JarSize"]], width=1350), data.plain(row["used"], 1260)] for row in counts])


def patient(data, key):
    person = data.rows("SELECT * FROM Patient WHERE PatientID = ?", key)[0]
    rows = [[text(str(key)), text(f"{person['pat_FName']} {person['pat_LName']}", "words")],
            [data.date(person["pat_BDay"])], [text(person["pat_Phone"])], [text(person["pat_Fax"])],
            [text(person["pat_Address1"], "words")], [text(person["pat_Address2"], "words")],
            [text(f"{person['pat_City']}, {person['pat_State']} {person['pat_Zip']}")], [text(person["pat_Country"], "words")]]
    rows[1][0].number = None  # stands behind its caption, as a text
    found = data.rows("SELECT * FROM RXs JOIN Log USING (LogID) JOIN Formula USING (FormulaID) WHERE PatientID = ? AND "
                      "rxs_Date >= ? AND rxs_Date <= ?", key, BEGIN + " 00:00:00", END + " 00:00:00")
    rows += [[data.plain(row["RXsID"], 540), data.date(row["rxs_Date"], 1080), text(row["frm_Name"], "name"),
              text(row["frm_Strength"], width=1260), data.plain(row["rxs_QTY"], 540), text(row["log_Lot"], width=1350),
              text(row["rxs_Doctor"], "words"), data.money(row["rxs_Price"], 900, " ")] for row in found]
    total = sum((decimal_of(row["rxs_Price"]) for row in found), Fraction(0))
    shown = customs.plain(float(customs.rounded(total, 2)), data.customs)[0]
    rows.append([text(str(len(found))), Field(data.currency + shown, width=1440, number=customs.rounded(total, 2))])
    return Sheet(rows + store_block())


def chemicals(data):
    return Sheet([[text(row["chm_Name"], "name"), text(row["chm_Form"], "words"), text(row["chm_Units"], width=900),
                   text(row["chm_NDC"], width=1170), text(row["chm_Lot"], width=1170), data.money(row["chm_Cost"], 900, " "),
                   data.money(row["chm_AWP"], 810, " "), text(row["chm_Supplier"], "words")]
                  for row in data.rows("SELECT * FROM Chemical")])


def in_column(texts, left, width):
    field = Field(texts, "column")
    field.column = (720 + left, 720 + left + width)
    return field


def tainted_batches(data, name):
    """Batches with an ingredient whose name holds the text, and all that were made with them; and those without lines."""
    lines = data.rows("SELECT LogID, lch_Name, lch_Lot FROM LogChem")
    lots = {row["LogID"]: row["log_Lot"] for row in data.rows("SELECT LogID, log_Lot FROM Log")}
    reached = {line["LogID"] for line in lines if name in line["lch_Name"].lower()}
    while True:
        made = {lots[key] for key in reached if lots[key]}
        more = {line["LogID"] for line in lines if line["lch_Lot"] in made} - reached
        if not more:
            return reached, set(lots) - {line["LogID"] for line in lines} - reached
        reached |= more


def recall(data, name):
    def day(stored):
        return data.date(stored[:10] + " 00:00:00").texts

    def amount(quantity, units):
        return [f"{each} {units}" for each in customs.plain(quantity, data.customs)]

    reached, unknown = tainted_batches(data, name)
    rows, called = [], {}
    for key in reached | unknown:
        log = data.rows("SELECT * FROM Log WHERE LogID = ?", key)[0]
        rows.append([in_column(day(log["log_Date"]), 0, 1080),
                     in_column(f"{log['log_Name']} {log['log_Strength'] or ''}", 1170, 2700), in_column(log["log_Lot"], 3960, 1440),
                     in_column(amount(log["log_Quantity"], log["log_Units"]), 7020, 1080),
                     in_column(log["log_Initials"] or "", 8280, 1215), in_column(log["log_Verified"] or "", 9585, 1215)])
        for rx in data.rows("SELECT * FROM RXs JOIN Patient USING (PatientID) WHERE LogID = ?", key if key in reached else 0):
            called.setdefault(rx["PatientID"], rx)
            rows.append([in_column([f"{date}, {log['log_Name']}, {quantity}, " for date in day(rx["rxs_Date"])
                                    for quantity in amount(rx["rxs_QTY"], log["log_Units"])], 4590, 3780)])
    rows += [[in_column(f"{person['pat_LName']}, {person['pat_FName']}", 450, 2340), in_column(person["pat_Phone"], 2880, 1620)]
             for person in called.values()]
    return Sheet(rows)


RANGE = ["--from", BEGIN, "--to", END]
# Name, its arguments, and what it shows.
REPORTS = {
    "worksheet": (["--formula", "1", "--quantity", "1250"], lambda data: worksheet(data, 1, 1250)),
    "formula-log": (["--log", "2"], lambda data: formula_log(data, 2)),
    "batch-labels": (["--log", "2", "--labels", "7", "--position", "5"], lambda data: batch_labels(data, 2, 7, 5)),
    "log-report": (["--formula", "1", *RANGE], lambda data: log_report(data, 1)),
    "jar-usage": (RANGE, jar_usage),
    "rx-labels": (["--rx", "3", "--labels", "4", "--position", "1"], lambda data: rx_labels(data, 3, 4, 1)),
    "patient": (["--patient", "1", *RANGE], lambda data: patient(data, 1)),
    "chemicals": ([], chemicals),
    "recall": (["--name", "e"], lambda data: recall(data, "e")),
}
