-- The database of several benches: the tables of a file (schema.sql), on a server. Run once by the owner in an empty
-- database with C collation and UTF-8; scripts/start-server.sh does so.
--
-- A domain's name is the declared type of a file's column, so that the program knows a column's kind by its domain.
-- Names are written as the program writes them, therefore in quotes.

CREATE SCHEMA sorvanto;
SET search_path = sorvanto;
CREATE EXTENSION citext WITH SCHEMA sorvanto;

-- Text of up to about so many characters; case is ignored when it is compared or sorted, and a longer one is kept.
CREATE DOMAIN "TEXT(20)" AS citext;
CREATE DOMAIN "TEXT(30)" AS citext;
CREATE DOMAIN "TEXT(32)" AS citext;
CREATE DOMAIN "TEXT(40)" AS citext;
CREATE DOMAIN "TEXT(50)" AS citext;
CREATE DOMAIN "TEXT(60)" AS citext;
CREATE DOMAIN "TEXT(80)" AS citext;
CREATE DOMAIN "TEXT(100)" AS citext;
CREATE DOMAIN "TEXT(255)" AS citext;
CREATE DOMAIN "LONGTEXT" AS text;
CREATE DOMAIN "SMALLINT" AS smallint;
CREATE DOMAIN "INTEGER" AS integer;
CREATE DOMAIN "DOUBLE" AS double precision;
-- No precision: a numeric that has one rounds without a word.
CREATE DOMAIN "CURRENCY" AS numeric CHECK (VALUE = round(VALUE, 4));
-- A fraction of a second is refused, not rounded; so this is no timestamp(0).
CREATE DOMAIN "DATETIME" AS timestamp CHECK (VALUE = date_trunc('second', VALUE));
CREATE DOMAIN "YESNO" AS smallint CHECK (VALUE IN (0, 1));

CREATE TABLE "Chemical" (
    "ChemicalID" "INTEGER" PRIMARY KEY,
    "chm_Name" "TEXT(100)",
    "chm_Units" "TEXT(20)",
    "chm_Lot" "TEXT(40)",
    "chm_NDC" "TEXT(30)",
    "chm_Cost" "CURRENCY",
    "chm_AWP" "CURRENCY",
    "chm_Notes" "LONGTEXT",
    "chm_Form" "TEXT(20)",
    "chm_GUID" "TEXT(40)",
    "chm_Supplier" "TEXT(80)"
);

CREATE TABLE "Formula" (
    "FormulaID" "INTEGER" PRIMARY KEY,
    "frm_Name" "TEXT(100)",
    "frm_Desc" "TEXT(255)",
    "frm_Strength" "TEXT(40)",
    "frm_Units" "TEXT(20)",
    "frm_Instructions" "LONGTEXT",
    "frm_Quantity" "SMALLINT",
    "frm_JarSize" "SMALLINT",
    "frm_FormType" "SMALLINT",
    "frm_AWP" "CURRENCY",
    "frm_NDC" "TEXT(30)",
    "frm_GUID" "TEXT(40)",
    "frm_Mix" "LONGTEXT"
);

CREATE TABLE "FormChem" (
    "FormChemID" "INTEGER" PRIMARY KEY,
    "FormulaID" "INTEGER" NOT NULL REFERENCES "Formula",
    "ChemicalID" "INTEGER" NOT NULL REFERENCES "Chemical",
    "fch_Qty" "DOUBLE",
    "fch_QS" "YESNO" NOT NULL DEFAULT 0,
    "fch_Active" "YESNO" NOT NULL DEFAULT 0
);

CREATE TABLE "Log" (
    "LogID" "INTEGER" PRIMARY KEY,
    "FormulaID" "INTEGER",
    "log_Name" "TEXT(100)",
    "log_Strength" "TEXT(40)",
    "log_Desc" "TEXT(255)",
    "log_Units" "TEXT(20)",
    "log_FormType" "SMALLINT",
    "log_Quantity" "SMALLINT",
    "log_JarSize" "SMALLINT",
    "log_NDC" "TEXT(30)",
    "log_Date" "DATETIME",
    "log_Lot" "TEXT(40)",
    "log_Initials" "TEXT(20)",
    "log_Verified" "TEXT(20)",
    "log_Results" "LONGTEXT",
    "log_Version" "TEXT(40)",
    "log_AWP" "CURRENCY",
    "log_Cost" "CURRENCY",
    "log_Notes" "LONGTEXT",
    "log_Mix" "LONGTEXT"
);

CREATE TABLE "LogChem" (
    "LogChemID" "INTEGER" PRIMARY KEY,
    "LogID" "INTEGER" NOT NULL REFERENCES "Log" ON DELETE CASCADE,
    "ChemicalID" "INTEGER",
    "lch_Name" "TEXT(100)",
    "lch_Units" "TEXT(20)",
    "lch_Lot" "TEXT(40)",
    "lch_NDC" "TEXT(30)",
    "lch_Cost" "CURRENCY",
    "lch_AWP" "CURRENCY",
    "lch_Supplier" "TEXT(80)",
    "lch_Form" "TEXT(20)",
    "lch_GUID" "TEXT(40)",
    "lch_QTY" "DOUBLE"
);

CREATE TABLE "Patient" (
    "PatientID" "INTEGER" PRIMARY KEY,
    "pat_FName" "TEXT(50)",
    "pat_LName" "TEXT(50)",
    "pat_Address1" "TEXT(100)",
    "pat_Address2" "TEXT(100)",
    "pat_City" "TEXT(60)",
    "pat_State" "TEXT(30)",
    "pat_Zip" "TEXT(20)",
    "pat_Country" "TEXT(40)",
    "pat_BDay" "DATETIME",
    "pat_Phone" "TEXT(30)",
    "pat_Fax" "TEXT(30)",
    "pat_Notes" "LONGTEXT"
);

CREATE TABLE "RXs" (
    "RXsID" "INTEGER" PRIMARY KEY,
    "LogID" "INTEGER" NOT NULL REFERENCES "Log",
    "PatientID" "INTEGER" NOT NULL REFERENCES "Patient",
    "rxs_Date" "DATETIME",
    "rxs_QTY" "DOUBLE",
    "rxs_Cost" "CURRENCY",
    "rxs_Price" "CURRENCY",
    "rxs_Consult" "TEXT(60)",
    "rxs_Doctor" "TEXT(80)"
);

CREATE TABLE "Options" ("opt_Version" "DOUBLE");
INSERT INTO "Options" VALUES (1.1);

CREATE TABLE "FileIdentity" (
    "fid_Identity" "TEXT(32)" NOT NULL,
    "fid_Parent" "TEXT(32)",
    "fid_Changes" "INTEGER" NOT NULL DEFAULT 0
);
INSERT INTO "FileIdentity" ("fid_Identity") VALUES (replace(gen_random_uuid()::text, '-', ''));

-- What an archive run has left, here or in a file that was copied: old and new keys of the rows, lot and moment of each
-- batch that went into an archive, and, without an archive's name, of those deleted before.
CREATE TABLE "KeyMap" (
    "kmp_Archive" "TEXT(32)" NOT NULL,
    "kmp_Table" "TEXT(40)" NOT NULL,
    "kmp_Old" "INTEGER" NOT NULL,
    "kmp_New" "INTEGER" NOT NULL,
    PRIMARY KEY ("kmp_Table", "kmp_Old")
);
CREATE TABLE "ArchivedBatch" (
    "abt_Archive" "TEXT(32)" NOT NULL,
    "abt_Lot" "TEXT(40)",
    "abt_Date" "DATETIME"
);
CREATE INDEX "ArchivedBatch_Lot" ON "ArchivedBatch" ("abt_Lot", "abt_Date");

-- Each table's last key. A sequence would lose keys with every insert that is refused, and sixteen bits hold few. The row
-- stays locked until the insert has ended, so keys have no gaps; a key is never given out twice.
CREATE TABLE "KeyCounter" (
    "key_Table" name PRIMARY KEY,
    "key_Last" integer NOT NULL DEFAULT 0
);
INSERT INTO "KeyCounter" ("key_Table")
    VALUES ('Chemical'), ('Formula'), ('FormChem'), ('Log'), ('LogChem'), ('Patient'), ('RXs');

-- Gives a row its key where it has none; the argument is the key's column.
CREATE FUNCTION give_key() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER SET search_path = sorvanto, pg_temp AS $$
DECLARE
    own integer := (to_jsonb(NEW) ->> TG_ARGV[0])::integer;
    given integer;
BEGIN
    UPDATE "KeyCounter" SET "key_Last" = greatest("key_Last", coalesce(own, "key_Last" + 1))
        WHERE "key_Table" = TG_TABLE_NAME RETURNING "key_Last" INTO STRICT given;
    IF own IS NULL THEN
        NEW := jsonb_populate_record(NEW, jsonb_build_object(TG_ARGV[0], given));
    END IF;
    RETURN NEW;
END
$$;

-- Counts what happens to the records. A sequence, since a counted row would make every bench wait for every other.
CREATE SEQUENCE changes MINVALUE 0;
SELECT nextval('changes');
CREATE FUNCTION count_change() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER SET search_path = sorvanto, pg_temp AS $$
BEGIN
    PERFORM nextval('changes');
    RETURN NULL;
END
$$;

DO $$
DECLARE
    tab text;
BEGIN
    FOREACH tab IN ARRAY ARRAY['Chemical', 'Formula', 'FormChem', 'Log', 'LogChem', 'Patient', 'RXs'] LOOP
        EXECUTE format('CREATE TRIGGER give_key BEFORE INSERT ON %I FOR EACH ROW EXECUTE FUNCTION give_key(%L)',
                       tab, tab || 'ID');
        EXECUTE format('CREATE TRIGGER count_change AFTER INSERT OR UPDATE OR DELETE ON %I '
                       'FOR EACH ROW EXECUTE FUNCTION count_change()', tab);
    END LOOP;
END
$$;

-- Searches look through these instead of through the whole rows; the one of Log gives the newest first.
CREATE INDEX "Chemical_Name" ON "Chemical" ("chm_Name");
CREATE INDEX "Chemical_NDC" ON "Chemical" ("chm_NDC");
CREATE INDEX "Chemical_Lot" ON "Chemical" ("chm_Lot");
CREATE INDEX "Formula_Name" ON "Formula" ("frm_Name");
CREATE INDEX "Formula_NDC" ON "Formula" ("frm_NDC");
CREATE INDEX "Log_Date" ON "Log" ("log_Date", "log_Name", "log_NDC", "log_Lot");
CREATE INDEX "Patient_Name" ON "Patient" ("pat_LName", "pat_FName");
CREATE INDEX "Patient_Phone" ON "Patient" ("pat_Phone");
CREATE INDEX "FormChem_Formula" ON "FormChem" ("FormulaID");
CREATE INDEX "FormChem_Chemical" ON "FormChem" ("ChemicalID");
CREATE INDEX "Log_Formula" ON "Log" ("FormulaID", "log_Date");
CREATE INDEX "LogChem_Log" ON "LogChem" ("LogID");
CREATE INDEX "RXs_Patient" ON "RXs" ("PatientID", "rxs_Date");
CREATE INDEX "RXs_Log" ON "RXs" ("LogID");
CREATE INDEX "LogChem_Lot" ON "LogChem" ("lch_Lot", "lch_Name", "lch_NDC");
CREATE INDEX "LogChem_Name" ON "LogChem" ("lch_Name");
CREATE INDEX "LogChem_NDC" ON "LogChem" ("lch_NDC");
