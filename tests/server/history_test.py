#!/usr/bin/env python3
"""What the server writes down of changes: the same as a file for the same change, sealed, and one chain a bench."""
import hashlib
import json
import os
import random
import sqlite3
import subprocess
import unittest

from scratch_server import PATIENCE, ROOT, LocalServer

COLUMNS = ("HistoryID", "hst_When", "hst_Zone", "hst_Table", "hst_Key", "hst_Record", "hst_What", "hst_Person",
           "hst_Program", "hst_Deed", "hst_Note", "hst_Digest", "hst_Seal", "hst_Salt", "hst_Name", "hst_Fields")
BINARY = ("hst_Digest", "hst_Seal", "hst_Salt")
BENCH_1 = ["SET sorvanto.person = 'rkent@bench1'", "SET sorvanto.program = '1.7'"]
BENCH_2 = ["SET sorvanto.person = 'mlopez@bench2'", "SET sorvanto.program = '1.7'"]


def sealed(*values):
    """The file's seal: kind, length and bytes of each value."""
    whole = b""
    for value in values:
        kind, raw = (("n", b"") if value is None else ("b", value) if isinstance(value, bytes) else
                     ("i", str(value).encode()) if isinstance(value, int) else ("t", value.encode()))
        whole += f"{kind}{len(raw)}:".encode() + raw
    return hashlib.sha256(whole).digest()


def broken_row(rows):
    """Place of the first row that is not as it was sealed in its bench's chain, else None."""
    ends = {}
    for place, row in enumerate(rows):
        if row["hst_What"] == "begun":
            ends = {"": ends.get("")}
            anchor = row
        bench = row["hst_Person"].rpartition("@")[2]
        before = ends.get(bench, anchor["hst_Seal"])
        ends[bench] = row["hst_Seal"]
        digest = sealed(row["hst_Salt"], row["hst_Name"], row["hst_Fields"])
        seal = sealed(before, *(row[name] for name in COLUMNS[:11]), row["hst_Digest"])
        if (digest, seal) != (row["hst_Digest"], row["hst_Seal"]):
            return place
    return None


class HistoryTest(LocalServer):
    def rows(self, condition="true", **who):
        parts = ", ".join(f"encode(\"{name}\", 'hex')" if name in BINARY else f'"{name}"' for name in COLUMNS)
        out = self.value(f'SELECT coalesce(json_agg(json_build_array({parts}) ORDER BY "HistoryID"), \'[]\') '
                         f'FROM "History" WHERE {condition}', **who)
        rows = [dict(zip(COLUMNS, values)) for values in json.loads(out)]
        for row in rows:
            row.update({name: bytes.fromhex(row[name]) for name in BINARY})
        return rows

    def last(self):
        return int(self.value('SELECT max("HistoryID") FROM "History"'))

    def written(self, *statements, role="bench"):
        """The rows that these statements of one shell write."""
        before = self.last()
        self.value(list(statements), role=role)
        return self.rows(f'"HistoryID" > {before}')

    def shell(self):
        """A connection that stays open and is told line by line."""
        return subprocess.Popen(
            ["psql", "-X", "-q", "-A", "-t", "-v", "ON_ERROR_STOP=1",
             f"host={self.server.folder}/run port={self.server.port} user=bench dbname=sorvanto"],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, cwd="/", bufsize=1, env={
                **os.environ, "PGPASSFILE": str(self.server.password_file("bench")),
                "PGOPTIONS": f"-c search_path=sorvanto -c statement_timeout={PATIENCE}s"})


def tell(shell, *statements):
    """Sends statements and waits until they are done."""
    shell.stdin.write(";\n".join([*statements, "\\echo done\n"]))
    while (line := shell.stdout.readline()) not in ("done\n", ""):
        pass
    assert line, shell.stderr.read()


def end(shell):
    with shell:
        return shell.communicate(timeout=2 * PATIENCE)[1]


class AsAFile(HistoryTest):
    """Each change is written down as a file writes it down."""

    KEYS = {"Chemical": [], "Formula": [], "FormChem": ["Formula", "Chemical"], "Log": [], "LogChem": ["Log"],
            "Patient": [], "RXs": ["Log", "Patient"]}
    TEXTS = ["", "a", "A", "it's", "'", "a,b=c>d", "Größe µ №", "two\nlines", "back\\slash", "NULL", "5", "%s", " blank ", "\t"]

    def setUp(self):
        self.file = sqlite3.connect(":memory:", isolation_level=None)
        for script in ("schema.sql", "identity.sql", "history.sql"):
            self.file.executescript((ROOT / "data" / script).read_text())
        self.file.execute("PRAGMA foreign_keys = ON")
        self.first = 5000  # keys that no other test uses
        self.random = random.Random(20260131)

    def value_for(self, kind):
        """A literal that both engines read."""
        pick = self.random
        if pick.random() < 0.15:
            return "NULL"
        if kind.startswith(("TEXT", "LONGTEXT")):
            return "'" + pick.choice(self.TEXTS).replace("'", "''") + "'"
        if kind == "CURRENCY":
            return pick.choice(["0", "1", "1.5", "0.0001", "-2.25", "1234567.8901", "100", "1.50", "10.0"])
        if kind == "DOUBLE":
            return pick.choice(["0", "1", "5.25", "0.1", "100", "1e-5", "0.0001", "123456.789", "1e14", "1e15", "1.5e20",
                                "-0.5", "3e-7", "99999999999999"])
        if kind == "DATETIME":
            return f"'{pick.randint(1900, 2100)}-02-0{pick.randint(1, 9)} 1{pick.randint(0, 9)}:00:59'"
        return str(pick.randint(0, 1) if kind == "YESNO" else pick.randint(-32768, 32767))

    def columns(self, table):
        related = [f"{other}ID" for other in self.KEYS[table]]
        return [(name, kind) for _, name, kind, *_ in self.file.execute(f"PRAGMA table_info({table})")
                if name not in (f"{table}ID", *related)]

    def insert(self, table, key):
        values = {f"{table}ID": str(key), **{f"{other}ID": str(key) for other in self.KEYS[table]},
                  **{name: "0" if kind == "YESNO" else self.value_for(kind) for name, kind in self.columns(table)}}
        names = ", ".join(f'"{name}"' for name in values)
        return f'INSERT INTO "{table}" ({names}) VALUES ({", ".join(values.values())})'

    def update(self, table, key):
        some = self.random.sample(self.columns(table), self.random.randint(1, 3))
        new = ", ".join(f'"{name}" = ' + (self.value_for(kind).replace("NULL", "1") if kind == "YESNO" else
                                          self.value_for(kind)) for name, kind in some)
        return f'UPDATE "{table}" SET {new} WHERE "{table}ID" = {key}'

    def both(self, statements):
        """What file and server write, without what only the server knows at once: person, program, seal."""
        for statement in statements:
            self.file.execute(statement)
        ours = self.file.execute('SELECT hst_Table, hst_Key, hst_Record, hst_What, hst_Name, hst_Fields FROM History '
                                 "WHERE hst_What <> 'begun' ORDER BY HistoryID").fetchall()
        script = self.server.scratch / "changes.sql"
        script.write_text(";\n".join([*BENCH_1, *statements]) + ";\n")
        before = self.last()
        self.value([f"\\i {script}"])
        theirs = [tuple(row[name] for name in ("hst_Table", "hst_Key", "hst_Record", "hst_What", "hst_Name", "hst_Fields"))
                  for row in self.rows(f'"HistoryID" > {before}')]
        return ours, theirs

    def test_the_same_rows_for_the_same_changes(self):
        statements = []
        for key in range(self.first, self.first + 12):
            statements += [self.insert(table, key) for table in self.KEYS]
            statements += [self.update(table, key) for table in self.KEYS for _ in range(6)]
        statements += [f'DELETE FROM "{table}" WHERE "{table}ID" = {key}' for key in range(self.first, self.first + 12, 2)
                       for table in ("RXs", "FormChem", "LogChem", "Log", "Patient", "Formula", "Chemical")]
        ours, theirs = self.both(statements)
        self.assertGreater(len(ours), 12 * 7 * 5)
        self.assertEqual(set((row[0], row[3]) for row in ours),
                         {(table, what) for table in self.KEYS for what in ("made", "changed", "deleted")})
        for one, other in zip(ours, theirs):
            self.assertEqual(one, other)
        self.assertEqual(len(ours), len(theirs))

    def test_lines_that_go_with_their_batch_and_a_key_that_changes(self):
        key = self.first + 100
        ours, theirs = self.both([
            self.insert("Log", key), self.insert("LogChem", key), f'DELETE FROM "Log" WHERE "LogID" = {key}',
            self.insert("Chemical", key), f'UPDATE "Chemical" SET "ChemicalID" = 4000 WHERE "ChemicalID" = {key}',
            'UPDATE "Chemical" SET "chm_Lot" = "chm_Lot" WHERE "ChemicalID" = 4000'])
        self.assertEqual(ours, theirs)
        self.assertEqual([row[3] for row in ours], ["made", "made", "deleted", "deleted", "made", "changed"])
        self.assertEqual([row[0] for row in ours[2:4]], ["LogChem", "Log"])

    def test_a_number_of_more_than_fifteen_digits_reads_back_the_same(self):
        key = self.first + 200
        numbers = [1 / 3, 0.1 + 0.2, 2 / 3 * 1e9, 1.1 * 1.1, 5e-324, 1.7976931348623157e308]
        statements = [self.insert(table, key) for table in ("Log", "LogChem")]
        statements += [f'UPDATE "LogChem" SET "lch_QTY" = {number!r} WHERE "LogChemID" = {key}' for number in numbers]
        ours, theirs = self.both(statements)
        read = lambda rows: [float(row[5].rpartition(">")[2]) for row in rows[2:]]
        self.assertEqual(read(theirs), numbers)
        self.assertEqual(read(ours)[:4], numbers[:4])


class Sealing(HistoryTest):
    """Every row is sealed as it is written, in the chain of its bench."""

    ADD = 'INSERT INTO "Chemical" ("chm_Name") VALUES (\'Zinc\')'

    def test_who_and_what(self):
        deed = ["SET sorvanto.deed = 'imported'", "SET sorvanto.note = 'prices.csv'", "SET sorvanto.zone = '-210'"]
        row, = self.written(*BENCH_1, *deed, self.ADD)
        self.assertEqual([row[name] for name in ("hst_Person", "hst_Program", "hst_Deed", "hst_Note", "hst_Zone")],
                         ["rkent@bench1", "1.7", "imported", "prices.csv", -210])
        self.assertRegex(row["hst_When"], r"^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}$")
        row, = self.written(*BENCH_1, "SET TimeZone = 'Asia/Kolkata'", self.ADD)
        self.assertEqual([row["hst_Deed"], row["hst_Note"], row["hst_Zone"]], [None, None, 330])

    def test_a_change_that_says_not_who_made_it_is_from_outside(self):
        for said in ([], BENCH_1[:1], BENCH_1[1:]):
            for role in ("bench", "owner"):
                row, = self.written(*said, self.ADD, role=role)
                self.assertEqual([row["hst_Person"], row["hst_Program"], row["hst_Name"]], ["", "outside", "Zinc"])
        self.assertIsNone(broken_row(self.rows()))

    def test_the_chains_hold_and_each_change_of_a_row_shows(self):
        for said in (BENCH_1, BENCH_2, [], BENCH_2, BENCH_1, BENCH_1):
            self.value([*said, self.ADD])
        rows = self.rows()
        self.assertEqual([rows[0]["hst_What"], rows[0]["hst_Note"]], ["begun", "one chain a bench"])
        self.assertIsNone(broken_row(rows))
        victim = rows[-4]
        for name in COLUMNS:
            for other in (7, None, "x", b"x"):
                if other != victim[name] and (name != "hst_Person" or isinstance(other, str)):
                    changed = [{**row, name: other} if row is victim else row for row in rows]
                    self.assertIsNotNone(broken_row(changed), name)
        for gone in range(len(rows) - 6, len(rows) - 4):  # each has a later one in its chain
            self.assertIsNotNone(broken_row(rows[:gone] + rows[gone + 1:]))

    def test_the_sum_is_that_of_a_file(self):
        """The same values and the same sum as in tests/history/SealTest.cpp."""
        self.assertEqual(sealed(None, 1, -70000, "Größe", "", b"\x00\xff").hex(),
                         "4b7598bad7da50e1d8aff7ff2110141f8e309753dcc2e4f5c272dd7feaa1262b")

    def test_the_end_of_each_chain_is_noted(self):
        self.value([*BENCH_1, self.ADD])
        self.value([*BENCH_2, self.ADD])
        ends = {}
        for row in self.rows():
            bench = row["hst_Person"].rpartition("@")[2]
            count = ends.get(bench, (0,))[0] + 1
            ends[bench] = (count, row["HistoryID"], row["hst_Seal"].hex())
        noted = json.loads(self.value("SELECT json_object_agg(\"chn_Bench\", json_build_array(\"chn_Count\", \"chn_Last\", "
                                      "encode(\"chn_Seal\", 'hex'))) FROM \"HistoryChain\" WHERE \"chn_Count\" > 0"))
        self.assertEqual({bench: tuple(end) for bench, end in noted.items()}, ends)

    def test_what_is_taken_back_leaves_nothing(self):
        self.assertEqual(self.written(*BENCH_1, "BEGIN", self.ADD, "ROLLBACK"), [])
        self.assertEqual(len(self.written(*BENCH_1, "BEGIN", self.ADD, "SAVEPOINT s", self.ADD, "ROLLBACK TO s", self.ADD,
                                          "COMMIT")), 2)
        self.assertIsNone(broken_row(self.rows()))

    def test_a_change_that_changes_nothing_is_not_written_down(self):
        self.assertEqual(self.written(*BENCH_1, 'UPDATE "Chemical" SET "chm_Name" = "chm_Name"'), [])

    def test_not_even_the_owner_changes_a_row(self):
        for statement in ('UPDATE "History" SET "hst_Person" = \'x\'', 'DELETE FROM "History"', 'TRUNCATE "History"'):
            self.assertEqual(self.state(statement, role="owner"), "42501", statement)

    def test_an_update_makes_the_triggers_anew(self):
        out = self.value(["BEGIN", 'ALTER TABLE "Patient" ADD "pat_New" "TEXT(20)"',
                          "CALL keep_history('Patient', 'PatientID', '%1$s.\"PatientID\"', '%1$s.\"pat_LName\"')",
                          "INSERT INTO \"Patient\" (\"pat_LName\", \"pat_New\") VALUES ('n', 'new')",
                          'SELECT "hst_Name", "hst_Fields" FROM "History" ORDER BY "HistoryID" DESC LIMIT 1', "ROLLBACK"],
                         role="owner")
        self.assertTrue(out.startswith("n|") and out.endswith(",pat_New='new'"), out)


class Together(HistoryTest):
    """Several benches at once."""

    def test_no_bench_waits_for_the_chain_of_another(self):
        first, second = self.shell(), self.shell()
        tell(first, *BENCH_1, "BEGIN", "INSERT INTO \"Chemical\" (\"chm_Name\") VALUES ('slow')")
        tell(second, *BENCH_2, "SET lock_timeout = '20s'", "INSERT INTO \"Patient\" (\"pat_LName\") VALUES ('quick')")
        self.assertEqual(end(second), "")
        tell(first, "INSERT INTO \"Patient\" (\"pat_LName\") VALUES ('slow')", "COMMIT")
        self.assertEqual(end(first), "")
        self.assertIsNone(broken_row(self.rows()))

    def test_two_programs_of_one_bench_never_wait_crosswise(self):
        first, second = self.shell(), self.shell()
        tell(first, *BENCH_1, "BEGIN", "INSERT INTO \"Formula\" (\"frm_Name\") VALUES ('one')")
        second.stdin.write(";\n".join([*BENCH_1, "BEGIN", "INSERT INTO \"Chemical\" (\"chm_Name\") VALUES ('two')",
                                       "INSERT INTO \"Formula\" (\"frm_Name\") VALUES ('two')", "COMMIT", ""]))
        self.server.until("SELECT count(*) > 0 FROM pg_locks WHERE NOT granted")
        tell(first, "INSERT INTO \"Chemical\" (\"chm_Name\") VALUES ('one')", "COMMIT")
        self.assertEqual((end(first), end(second)), ("", ""))
        self.assertIsNone(broken_row(self.rows()))

    def test_a_stale_transaction_is_refused_and_forks_no_chain(self):
        stale = self.shell()
        tell(stale, *BENCH_1, "BEGIN ISOLATION LEVEL REPEATABLE READ", 'SELECT count(*) FROM "History"')
        self.value([*BENCH_1, "INSERT INTO \"Patient\" (\"pat_LName\") VALUES ('x')"])
        stale.stdin.write("\\set VERBOSITY sqlstate\nINSERT INTO \"Formula\" (\"frm_Name\") VALUES ('x');\n")
        self.assertIn("40001", end(stale))
        self.assertIsNone(broken_row(self.rows()))

    def test_four_benches_write_as_fast_as_they_can(self):
        before = self.last()
        shells = [self.shell() for _ in range(4)]
        for number, shell in enumerate(shells):
            shell.stdin.write(f"SET sorvanto.person = 'a@crowd{number}'; SET sorvanto.program = '1.7';\n")
            for table, column in (("Chemical", "chm_Name"), ("Formula", "frm_Name"), ("Patient", "pat_LName")):
                shell.stdin.write(f'INSERT INTO "{table}" ("{column}") VALUES (\'crowd\');\n' * 20)
            shell.stdin.write('UPDATE "Chemical" SET "chm_Lot" = \'crowd%d\' WHERE "chm_Name" = \'zinc\';\n' % number)
        self.assertEqual([end(shell) for shell in shells], [""] * 4)
        rows = self.rows(f'"HistoryID" > {before}')
        for number in range(4):
            self.assertGreaterEqual(sum(row["hst_Person"] == f"a@crowd{number}" for row in rows), 60)
        self.assertIsNone(broken_row(self.rows()))


if __name__ == "__main__":
    unittest.main(verbosity=2)
