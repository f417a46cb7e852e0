#!/usr/bin/env python3
"""The server of several benches, made by its one command in a folder of the test and asked by the server's own shell.

Without a network first, then with one: what the tables are, how keys are given, what a bench may do and what not,
who is let in. Nothing is left behind.
"""
import os
import pathlib
import shutil
import sqlite3
import subprocess
import tempfile
import unittest

from scratch_server import PATIENCE, ROOT, START, LocalServer, Server


class Tables(LocalServer):
    """The same tables as a file's."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.file = sqlite3.connect(":memory:")
        for script in ("schema.sql", "identity.sql", "history.sql"):
            cls.file.executescript((ROOT / "data" / script).read_text())

    def rows(self, statement):
        out = self.value(statement, role="owner")
        return [tuple(line.split("|")) for line in out.splitlines()]

    def test_columns(self):
        """But for what an archive run makes in a file; tests/tools/server has that."""
        ours = [(table, name, kind, str(int(bool(required or key and table != "Options"))))
                for (table,) in self.file.execute(
                    "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite%' ORDER BY name")
                for _, name, kind, required, _, key in self.file.execute(f"PRAGMA table_info({table})")]
        theirs = self.rows(
            "SELECT relname, attname, typname, attnotnull::int FROM pg_attribute JOIN pg_class ON pg_class.oid = attrelid "
            "JOIN pg_type ON pg_type.oid = atttypid WHERE relnamespace = 'sorvanto'::regnamespace AND relkind = 'r' "
            "AND attnum > 0 AND relname NOT IN ('KeyCounter', 'HistoryChain', 'KeyMap', 'ArchivedBatch') ORDER BY relname COLLATE \"C\", attnum")
        self.assertGreater(len(ours), 70)
        self.assertEqual(ours, theirs)

    def test_indices(self):
        ours = sorted((name, ",".join(column for _, _, column in self.file.execute(f"PRAGMA index_info({name})")))
                      for (name,) in self.file.execute("SELECT name FROM sqlite_master WHERE type = 'index' AND sql <> ''"))
        theirs = sorted(self.rows(
            "SELECT relname, string_agg(attname, ',' ORDER BY attnum) FROM pg_index JOIN pg_class ON oid = indexrelid "
            "JOIN pg_attribute ON attrelid = indexrelid WHERE NOT indisprimary AND relname <> 'ArchivedBatch_Lot' "
            "AND relnamespace = 'sorvanto'::regnamespace GROUP BY relname"))
        self.assertEqual(ours, theirs)

    def test_relations(self):
        ours = sorted((table, row[3], row[2], row[6]) for (table,) in self.file.execute(
            "SELECT name FROM sqlite_master WHERE type = 'table'") for row in self.file.execute(
            f"PRAGMA foreign_key_list({table})"))
        names = {"a": "NO ACTION", "c": "CASCADE"}
        theirs = sorted((table, column, to, names[action]) for table, column, to, action in self.rows(
            "SELECT conrelid::regclass, attname, confrelid::regclass, confdeltype FROM pg_constraint JOIN pg_attribute "
            "ON attrelid = conrelid AND attnum = conkey[1] WHERE contype = 'f'"))
        self.assertEqual(ours, [tuple(word.strip('"') for word in row) for row in theirs])

    def test_the_database_is_made_as_it_must_be(self):
        self.assertEqual(self.value("SELECT pg_encoding_to_char(encoding), datcollate, datctype FROM pg_database "
                                    "WHERE datname = 'sorvanto'"), "UTF8|C|C")
        self.assertEqual(self.value("SHOW data_checksums"), "on")
        self.assertRegex(self.value('SELECT "fid_Identity" FROM "FileIdentity"'), "^[0-9a-f]{32}$")


class Values(LocalServer):
    """What a column holds and refuses."""

    def insert(self, column, value, table="Chemical"):
        return self.state(f'INSERT INTO "{table}" ("{column}") VALUES ({value})')

    def test_money_has_four_decimals_and_is_never_rounded(self):
        self.assertEqual(self.insert("chm_Cost", "1.23456"), "23514")
        self.assertEqual(self.value('INSERT INTO "Chemical" ("chm_Cost") VALUES (922337203685477.5807) '
                                    'RETURNING "chm_Cost"'), "922337203685477.5807")

    def test_a_moment_has_no_fraction_of_a_second(self):
        self.assertEqual(self.insert("pat_BDay", "'1970-01-01 00:00:00.5'", "Patient"), "23514")
        self.assertEqual(self.insert("pat_BDay", "'1970-01-01 00:00:01'", "Patient"), "")

    def test_numbers_that_do_not_fit_are_refused(self):
        self.assertEqual(self.insert("frm_Quantity", "32768", "Formula"), "22003")
        self.assertEqual(self.insert("frm_Quantity", "-32768", "Formula"), "")

    def test_yes_and_no_are_numbers(self):
        keys = self.value(['INSERT INTO "Chemical" ("chm_Name") VALUES (\'a\') RETURNING "ChemicalID"',
                           'INSERT INTO "Formula" ("frm_Name") VALUES (\'b\') RETURNING "FormulaID"']).split()
        line = 'INSERT INTO "FormChem" ("ChemicalID", "FormulaID", "fch_QS") VALUES ({}, {}, {})'
        self.assertEqual(self.state(line.format(*keys, 1)), "")
        self.assertEqual(self.state(line.format(*keys, 2)), "23514")
        self.assertEqual(self.value('SELECT count(*) FROM "FormChem" WHERE "fch_QS" = 1'), "1")

    def test_text_ignores_the_case_of_english_letters_alone(self):
        self.value("INSERT INTO \"Patient\" (\"pat_LName\") VALUES ('Müller'), ('MÜLLER'), ('MüLLER')")
        self.assertEqual(self.value("SELECT count(*) FROM \"Patient\" WHERE \"pat_LName\" = 'müller'"), "2")

    def test_a_long_text_is_kept(self):
        self.assertEqual(self.value("INSERT INTO \"Patient\" (\"pat_State\") VALUES (repeat('x', 500)) "
                                    'RETURNING length("pat_State")'), "500")


class Keys(LocalServer):
    """Given from 1 on, without gaps, never twice."""

    ADD = 'INSERT INTO "Patient" ("pat_LName") VALUES (\'x\') RETURNING "PatientID"'

    def test_refused_deleted_and_given_ones(self):
        first = int(self.value(self.ADD))
        self.assertNotEqual(self.state('INSERT INTO "Patient" ("pat_BDay") VALUES (\'1970-01-01 00:00:00.5\')'), "")
        self.value(["BEGIN", self.ADD, "ROLLBACK"])
        self.assertEqual(int(self.value(self.ADD)), first + 1)
        self.value(f'DELETE FROM "Patient" WHERE "PatientID" = {first + 1}')
        self.assertEqual(int(self.value(self.ADD)), first + 2)
        self.value(f'INSERT INTO "Patient" ("PatientID") VALUES ({first + 10})')
        self.assertEqual(int(self.value(self.ADD)), first + 11)
        self.value(f'INSERT INTO "Patient" ("PatientID") VALUES ({first + 5})')
        self.assertEqual(int(self.value(self.ADD)), first + 12)

    def test_two_benches_at_once(self):
        many = 'INSERT INTO "Formula" ("frm_Name") VALUES (\'bench\');\n' * 40
        shells = [subprocess.Popen(
            ["psql", "-X", "-q", "-v", "ON_ERROR_STOP=1",
             f"host={self.server.folder}/run port={self.server.port} user=bench dbname=sorvanto"],
            stdin=subprocess.PIPE, text=True, cwd="/", env={
                **os.environ, "PGPASSFILE": str(self.server.password_file("bench")),
                "PGOPTIONS": "-c search_path=sorvanto"}) for _ in range(2)]
        for shell in shells:
            shell.stdin.write(many)
            shell.stdin.close()
        self.assertEqual([shell.wait(PATIENCE) for shell in shells], [0, 0])
        self.assertEqual(self.value('SELECT count(*), max("FormulaID") - min("FormulaID") + 1 FROM "Formula" '
                                    "WHERE \"frm_Name\" = 'bench'"), "80|80")

    def test_each_change_is_counted(self):
        count = lambda: int(self.value("SELECT last_value FROM changes"))
        before = count()
        key = self.value(self.ADD)
        self.value(f'UPDATE "Patient" SET "pat_Zip" = \'1\' WHERE "PatientID" = {key}')
        self.value(f'DELETE FROM "Patient" WHERE "PatientID" = {key}')
        self.assertEqual(count(), before + 3)


class Rights(LocalServer):
    """A bench reads and writes rows, and nothing else, whatever it is made to send."""

    REFUSED = [
        'DROP TABLE "Patient"', 'ALTER TABLE "Patient" ADD x int', 'TRUNCATE "Patient"', "CREATE TABLE x (y int)",
        "CREATE TEMP TABLE x (y int)", "CREATE TABLE public.x (y int)", "CREATE SCHEMA x", "CREATE ROLE x",
        "CREATE VIEW x AS SELECT 1", "SELECT 1 INTO x", 'CREATE INDEX x ON "Patient" ("pat_Zip")',
        "CREATE FUNCTION x() RETURNS int LANGUAGE sql AS 'SELECT 1'", "DO 'BEGIN END'", "CREATE EXTENSION dblink",
        'DROP TRIGGER count_change ON "Patient"', 'ALTER TABLE "Patient" DISABLE TRIGGER ALL',
        "SET session_replication_role = replica",
        "COPY \"Patient\" TO '/tmp/x'", "COPY \"Patient\" TO PROGRAM 'true'", "COPY \"Patient\" FROM '/etc/passwd'",
        "SELECT pg_read_file('/etc/passwd')", "SELECT pg_ls_dir('.')", "SELECT pg_sleep(9)", "SELECT lo_create(0)",
        "SELECT lo_from_bytea(0, '')", "SELECT query_to_xml('SELECT 1', true, true, '')",
        "SELECT set_config('work_mem', '1GB', false)", "SELECT pg_terminate_backend(1)", "SELECT pg_notify('a', 'b')",
        "SELECT * FROM pg_roles", "SELECT * FROM pg_authid", "SELECT * FROM pg_shadow", "SELECT * FROM pg_stat_activity",
        "SELECT * FROM pg_settings",
        'UPDATE "KeyCounter" SET "key_Last" = 0', 'UPDATE "FileIdentity" SET "fid_Identity" = \'x\'',
        'UPDATE "Options" SET "opt_Version" = 9', "SELECT nextval('changes')", "SELECT setval('changes', 1)",
        "SET ROLE sorvanto_owner", "SET ROLE sorvanto_admin", "ALTER ROLE bench SUPERUSER",
        'INSERT INTO "History" DEFAULT VALUES', 'UPDATE "History" SET "hst_Person" = \'x\'', 'DELETE FROM "History"',
        'TRUNCATE "History"', 'UPDATE "HistoryChain" SET "chn_Count" = 0', 'DELETE FROM "HistoryChain"',
        "SELECT nextval('history_number')", "SELECT write_history('', 0, 0, '', 'x', '')", "SELECT begin_chains()",
        "CALL keep_history('Chemical', 'ChemicalID', '1', '1')",
        "CREATE DATABASE x", "ALTER SYSTEM SET work_mem = '1GB'", "CHECKPOINT",
        # The rest of what makes, changes or drops something.
        "CREATE TYPE x AS (y int)", "CREATE DOMAIN x AS int", "CREATE SEQUENCE x", "CREATE TEMP SEQUENCE x",
        "CREATE TEMP VIEW x AS SELECT 1", "CREATE PUBLICATION x", "CREATE TABLESPACE x LOCATION '/tmp'",
        "CREATE FOREIGN DATA WRAPPER x", 'CREATE POLICY x ON "Patient"',
        'CREATE TRIGGER x BEFORE INSERT ON "Patient" EXECUTE FUNCTION hold_chain()',
        'CREATE RULE x AS ON INSERT TO "Patient" DO INSTEAD NOTHING', "COMMENT ON SCHEMA sorvanto IS '1'",
        'COMMENT ON TABLE "Patient" IS \'x\'', 'ALTER TABLE "Patient" OWNER TO bench', "ALTER SCHEMA sorvanto RENAME TO x",
        "ALTER SEQUENCE changes RESTART", "ALTER FUNCTION bench() STABLE", "ALTER DATABASE sorvanto SET work_mem = '1GB'",
        "DROP FUNCTION bench()", "DROP SCHEMA sorvanto CASCADE", "DROP DATABASE sorvanto", "DROP ROLE sorvanto_owner",
        "DROP OWNED BY sorvanto_owner", "REASSIGN OWNED BY sorvanto_owner TO bench", "GRANT sorvanto_owner TO bench",
        "SET SESSION AUTHORIZATION sorvanto_owner", 'REINDEX TABLE "Patient"', 'CLUSTER "Patient" USING "Patient_pkey"',
        "LOAD 'plpgsql'", 'DELETE FROM "Options"', 'INSERT INTO "Options" DEFAULT VALUES', 'DELETE FROM "KeyCounter"',
        'DELETE FROM "FileIdentity"', 'INSERT INTO "KeyMap" DEFAULT VALUES', 'DELETE FROM "ArchivedBatch"',
        # Files, programs and settings of the server, and what it knows of others.
        "COPY (SELECT 1) TO '/tmp/x'", "COPY (SELECT 1) TO PROGRAM 'true'", "SELECT pg_read_binary_file('/etc/passwd')",
        "SELECT pg_stat_file('/etc/passwd')", "SELECT pg_ls_logdir()", "SELECT pg_current_logfile()",
        "SELECT lo_import('/etc/passwd')", "SELECT lo_export(1, '/tmp/x')", "SELECT lo_put(1, 0, '')",
        "SELECT * FROM pg_largeobject", "SELECT * FROM pg_hba_file_rules", "SELECT * FROM pg_file_settings",
        "SELECT * FROM pg_statistic", "SELECT * FROM pg_stats", "SELECT * FROM pg_user", "SELECT * FROM pg_user_mapping",
        "SELECT * FROM pg_stat_replication", "SELECT pg_stat_get_activity(NULL)", "SELECT pg_show_all_settings()",
        "SELECT current_setting('data_directory')", "SHOW data_directory", "SET log_statement = 'all'",
        "SELECT table_to_xml('\"Patient\"', true, true, '')", "SELECT schema_to_xml('sorvanto', true, true, '')",
        "SELECT cursor_to_xml('x', 1, true, true, '')", "SELECT pg_reload_conf()", "SELECT pg_rotate_logfile()",
        "SELECT pg_switch_wal()", "SELECT pg_promote()", "SELECT pg_cancel_backend(1)", "SELECT pg_stat_reset()",
        "SELECT pg_logical_emit_message(true, 'x', 'y')", "SELECT pg_export_snapshot()", "SELECT pg_sleep_for('1 s')",
    ]

    def test_everything_else_is_refused(self):
        for statement in self.REFUSED:
            with self.subTest(statement):
                self.assertIn(self.state(statement), ("42501", "0LP01"))

    def test_an_account_may_change_its_own_password(self):
        """The server has no right that could be taken for that; docs/database.md names it."""
        secret = (self.server.folder / "bench.pgpass").read_text().strip().split(":")[-1]
        self.assertEqual(self.state(f"ALTER ROLE bench PASSWORD '{secret}'"), "")

    def test_rights_are_not_handed_on(self):
        rights = "SELECT relacl FROM pg_class WHERE relname = 'Patient'"
        before = self.value(rights)
        self.state('GRANT ALL ON "Patient" TO PUBLIC')  # no more than a warning
        self.assertEqual(self.value(rights), before)

    def test_other_databases_are_closed(self):
        for database in ("postgres", "template1"):
            self.assertIn("no pg_hba.conf entry", self.state("SELECT 1", database=database), database)

    def test_no_secret_and_no_record_is_in_the_log(self):
        self.value("INSERT INTO \"Patient\" (\"pat_LName\") VALUES ('Featherstone')")
        self.state("SELECT 'Featherstone'::int")
        self.state("INSERT INTO \"Patient\" (\"PatientID\", \"pat_LName\") VALUES (1, 'Featherstone'), (1, 'Featherstone')")
        log = (self.server.folder / "server.log").read_text()
        secret = (self.server.folder / "bench.pgpass").read_text().strip().split(":")[-1]
        self.assertIn("connection authorized", log)
        for word in ("Featherstone", secret):
            self.assertNotIn(word, log + self.server.said)

    def test_a_wrong_password_and_an_unknown_name_are_refused(self):
        self.assertIn("password authentication failed", self.state("SELECT 1", password="wrong"))
        self.assertIn("no pg_hba.conf entry", self.state("SELECT 1", user="postgres", password="wrong"))

    def test_only_the_owner_of_the_folder_reads_it(self):
        for name in ("data", "tls", "bench.pgpass", "owner.pgpass", "server.log"):
            self.assertEqual((self.server.folder / name).stat().st_mode & 0o077, 0, name)


class Command(unittest.TestCase):
    """The command itself."""

    def test_starts_again_what_is_there(self):
        server = Server("--local")
        self.addCleanup(server.end)
        server.value("INSERT INTO \"Patient\" (\"pat_LName\") VALUES ('x')")
        self.assertEqual(server.command().stdout, server.said)
        server.command("--stop")
        self.assertEqual(server.command().stdout, server.said)
        self.assertEqual(server.value('SELECT count(*) FROM "Patient"'), "1")

    def test_a_server_that_was_made_earlier_gets_the_rights_of_today(self):
        server = Server("--local")
        self.addCleanup(server.end)
        changes = ("SELECT pg_export_snapshot()", 'DELETE FROM "Options" WHERE false', "SELECT nextval('changes')",
                   "SELECT count(*) FROM pg_roles")
        server.administer("GRANT EXECUTE ON FUNCTION pg_export_snapshot TO PUBLIC; GRANT SELECT ON pg_roles TO PUBLIC;"
                          'GRANT DELETE ON sorvanto."Options" TO sorvanto_bench; GRANT USAGE ON sorvanto.changes TO PUBLIC')
        before = [server.state(change) for change in changes]
        self.assertNotIn("42501", before)
        self.assertEqual(server.command().stdout, server.said)
        self.assertEqual([server.state(change) for change in changes], ["42501"] * len(changes))
        self.assertEqual(server.state('INSERT INTO "Patient" ("pat_LName") VALUES (\'x\')'), "")

    def test_records_that_are_too_old_for_them_keep_their_rights_and_are_started(self):
        server = Server("--local")
        self.addCleanup(server.end)
        server.administer('GRANT SELECT ON pg_roles TO PUBLIC; ALTER TABLE sorvanto."KeyMap" RENAME TO "Other"')
        server.command("--stop")
        said = server.command()
        self.assertEqual(said.stdout, server.said)
        self.assertIn("The rights of the benches stay as they were.", said.stderr)
        self.assertEqual(server.state("SELECT count(*) FROM pg_roles"), "", "all or nothing")

    def test_a_lost_server_comes_back_with_its_passwords_and_certificates(self):
        lost = Server("--host", "localhost")
        self.addCleanup(lost.end)
        saved = lost.scratch / "saved"
        saved.mkdir()
        for name in ("bench.pgpass", "owner.pgpass"):
            shutil.copy(lost.folder / name, saved)
        refused = subprocess.run([START, lost.scratch / "new", "--like", saved], capture_output=True, text=True)
        self.assertEqual((refused.returncode, "tls/ca.crt; nothing was done" in refused.stderr), (1, True), refused.stderr)
        shutil.copytree(lost.folder / "tls", saved / "tls")
        new = Server("--host", "localhost", "--like", str(saved))
        self.addCleanup(new.end)
        certificate = lost.scratch / "root.crt"
        certificate.write_text((lost.folder / "tls" / "ca.crt").read_text())
        for role in ("bench", "owner"):
            secret = (lost.folder / f"{role}.pgpass").read_text().strip().split(":")[-1]
            self.assertEqual(new.state("SELECT 1", role=role, host="localhost", sslmode="verify-full", password=secret,
                                       sslrootcert=certificate), "", role)
        self.assertEqual((new.folder / "tls" / "server.key").stat().st_mode & 0o077, 0)

    def test_a_folder_with_something_else_is_left_alone(self):
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / "letter").write_text("dear")
            done = subprocess.run([START, folder, "--local"], capture_output=True, text=True)
            self.assertEqual(done.returncode, 1)
            self.assertIn("nothing was done", done.stderr)
            self.assertEqual(os.listdir(folder), ["letter"])

    def test_wrong_words_are_refused(self):
        for words in ([], ["/tmp/x", "--port", "0"], ["/tmp/x", "--port", "x"], ["/tmp/x", "--host", "a b"], ["/tmp/x", "--y"]):
            done = subprocess.run([START, *words], capture_output=True, text=True)
            self.assertEqual(done.returncode, 2, words)


class Network(unittest.TestCase):
    """From another computer: encrypted, and by the right name."""

    @classmethod
    def setUpClass(cls):
        cls.server = Server("--host", "localhost")
        cls.addClassCleanup(cls.server.end)
        cls.certificate = cls.server.scratch / "root.crt"
        cls.certificate.write_text((cls.server.folder / "tls" / "ca.crt").read_text())

    def state(self, **settings):
        return self.server.state("SELECT 1", **{"host": "localhost", "sslrootcert": self.certificate, **settings})

    def test_the_address_is_said(self):
        self.assertIn(f"postgresql://bench@localhost:{self.server.port}/sorvanto", self.server.said)

    def test_with_its_certificate(self):
        self.assertEqual(self.state(sslmode="verify-full"), "")

    def test_under_another_name(self):
        self.assertIn("does not match host name", self.state(sslmode="verify-full", host="127.0.0.1"))

    def test_with_another_certificate(self):
        self.assertIn("certificate verify failed",
                      self.state(sslmode="verify-full", sslrootcert="/etc/ssl/certs/ca-certificates.crt"))

    def test_unencrypted(self):
        self.assertIn("no encryption", self.state(sslmode="disable"))

    def test_renewed_under_another_name(self):
        """The old root certificate of a bench goes on working, and so does the new one."""
        server = Server("--host", "elsewhere.invalid")
        self.addCleanup(server.end)
        old = server.scratch / "root.crt"
        old.write_text((server.folder / "tls" / "ca.crt").read_text())
        asked = {"host": "localhost", "sslmode": "verify-full"}
        self.assertIn("does not match host name", server.state("SELECT 1", sslrootcert=old, **asked))
        said = server.command("--renew", "--host", "localhost").stdout
        self.assertIn(f"postgresql://bench@localhost:{server.port}/sorvanto", said)
        self.assertNotEqual((server.folder / "tls" / "ca.crt").read_text(), old.read_text())
        new = server.scratch / "new.crt"
        new.write_text((server.folder / "tls" / "ca.crt").read_text())
        for certificate in (old, new):
            self.assertEqual(server.state("SELECT 1", sslrootcert=certificate, **asked), "")
        self.assertEqual(server.command().stdout, said)
        self.assertEqual((server.folder / "tls" / "server.key").stat().st_mode & 0o077, 0)

    def test_the_administrator(self):
        self.assertIn("no pg_hba.conf entry", self.state(sslmode="require", user="sorvanto_admin", password="x"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
