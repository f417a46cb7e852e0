-- What happened to the records (history.sql of a file), on a server. Run once by the owner, after schema.sql.
--
-- A row of History is the same as in a file: the same columns, the same words, the same seal. What is different follows
-- from several benches at once, and from a server that has a hash function of its own:
--
-- Rows are sealed as they are written, by the trigger, also those of other programs ("outside"). A file leaves these to the
-- next program that looks, and goes by their numbers; here a number that was given first may become visible last, and
-- nobody is the next one. So no row is ever without a seal, a bench can give no wrong one, and has no right to write here
-- but by changing a record.
--
-- One chain a bench, which is what stands behind the last @ of hst_Person; what comes from outside has the empty name. One
-- chain for all would make every bench wait until every other has ended its transaction. A chain begins at the seal of
-- the row "begun". Within it numbers rise; some are missing where a transaction was taken back.
--
-- The program says who it is for its connection: SET sorvanto.person, sorvanto.program, and for a span of changes
-- sorvanto.deed and sorvanto.note; hst_Zone follows TimeZone of the connection.

SET search_path = sorvanto;

CREATE DOMAIN "TEXT(23)" AS citext;
CREATE DOMAIN "TEXT(200)" AS citext;
CREATE DOMAIN "BLOB" AS bytea;

CREATE SEQUENCE history_number;
CREATE TABLE "History" (
    "HistoryID" "INTEGER" PRIMARY KEY,
    "hst_When" "TEXT(23)" NOT NULL,
    "hst_Zone" "INTEGER" NOT NULL,
    "hst_Table" "TEXT(40)" NOT NULL,
    "hst_Key" "INTEGER" NOT NULL,
    "hst_Record" "INTEGER" NOT NULL,
    "hst_What" "TEXT(20)" NOT NULL,
    "hst_Person" "TEXT(100)",
    "hst_Program" "TEXT(40)",
    "hst_Deed" "TEXT(20)",
    "hst_Note" "TEXT(200)",
    "hst_Digest" "BLOB",
    "hst_Seal" "BLOB",
    "hst_Salt" "BLOB",
    "hst_Name" "TEXT(100)",
    "hst_Fields" "LONGTEXT"
);
CREATE INDEX "History_Record" ON "History" ("hst_Table", "hst_Record");

-- The end of each chain; room for many versions of a row on a page.
CREATE TABLE "HistoryChain" (
    "chn_Bench" text PRIMARY KEY,
    "chn_Count" integer NOT NULL DEFAULT 0,
    "chn_Last" integer NOT NULL DEFAULT 0,
    "chn_Seal" bytea
) WITH (fillfactor = 20);

-- A value that is sealed: kind, length and bytes, so that no two rows of values are the same bytes. Not in SQL: such a
-- function costs twenty times as much where the server can't take it apart.
CREATE FUNCTION sealed(kind text, value text) RETURNS text LANGUAGE plpgsql IMMUTABLE AS $$
BEGIN
    RETURN coalesce(kind || octet_length(value) || ':' || value, 'n0:');
END
$$;
CREATE FUNCTION sealed(value bytea) RETURNS bytea LANGUAGE plpgsql IMMUTABLE AS $$
BEGIN
    RETURN coalesce(convert_to('b' || octet_length(value) || ':', 'UTF8') || value, 'n0:');
END
$$;

-- What the connection says of itself; empty where it says nothing.
CREATE FUNCTION told(what text) RETURNS text LANGUAGE sql STABLE AS $$
    SELECT coalesce(current_setting('sorvanto.' || what, true), '')
$$;

-- A connection that has not said both its person and its program is outside.
CREATE FUNCTION bench() RETURNS text LANGUAGE plpgsql STABLE AS $$
BEGIN
    RETURN CASE WHEN told('program') = '' THEN '' ELSE substring(told('person') from '[^@]*$') END;
END
$$;

-- The seal of a row whose other columns are all there.
CREATE FUNCTION seal_of(entry "History", before bytea) RETURNS bytea LANGUAGE plpgsql IMMUTABLE AS $$
BEGIN
    RETURN sha256(sealed(before) || convert_to(
        sealed('i', entry."HistoryID"::text) || sealed('t', entry."hst_When"::text) || sealed('i', entry."hst_Zone"::text)
        || sealed('t', entry."hst_Table"::text) || sealed('i', entry."hst_Key"::text) || sealed('i', entry."hst_Record"::text)
        || sealed('t', entry."hst_What"::text) || sealed('t', entry."hst_Person"::text) || sealed('t', entry."hst_Program"::text)
        || sealed('t', entry."hst_Deed"::text) || sealed('t', entry."hst_Note"::text), 'UTF8') || sealed(entry."hst_Digest"));
END
$$;
CREATE FUNCTION digest_of(salt bytea, name text, fields text) RETURNS bytea LANGUAGE plpgsql IMMUTABLE AS $$
BEGIN
    RETURN sha256(sealed(salt) || convert_to(sealed('t', name) || sealed('t', fields), 'UTF8'));
END
$$;

-- Writes a row at the end of the connection's chain, which is held: so numbers and moments rise within it. A transaction
-- that sees an older end than there is can't write its own over it.
CREATE FUNCTION write_history(tab text, key integer, record integer, name text, what text, fields text, note text = NULL,
                              own text = bench()) RETURNS void LANGUAGE plpgsql AS $$
DECLARE
    number integer;
    moment text;
    zone integer := coalesce(nullif(told('zone'), '')::integer, extract(timezone FROM clock_timestamp()) / 60);
    person text := CASE WHEN own = '' THEN '' ELSE told('person') END;
    program text := CASE WHEN own = '' THEN 'outside' ELSE told('program') END;
    deed text := CASE WHEN what <> 'begun' THEN nullif(told('deed'), '') END;
    remark text := coalesce(note, CASE WHEN what <> 'begun' THEN nullif(told('note'), '') END);
    salt bytea := substr(sha256(uuid_send(gen_random_uuid()) || uuid_send(gen_random_uuid())), 1, 16);
    entry "History";
    before bytea;
BEGIN
    IF NOT EXISTS (SELECT FROM "HistoryChain") THEN
        PERFORM begin_chains();
    END IF;
    number := nextval('history_number');
    moment := to_char(clock_timestamp() AT TIME ZONE 'UTC', 'YYYY-MM-DD HH24:MI:SS.MS');
    SELECT "chn_Seal" INTO before FROM "HistoryChain" WHERE "chn_Bench" = own;
    IF NOT FOUND THEN
        SELECT "hst_Seal" INTO before FROM "History" WHERE "hst_Table" = '' AND "hst_What" = 'begun'
            ORDER BY "HistoryID" DESC LIMIT 1;
        INSERT INTO "HistoryChain" ("chn_Bench") VALUES (own);
    END IF;
    entry := (number, moment, zone, tab, key, record, what, person, program, deed, remark, digest_of(salt, name, fields), NULL,
            salt, name, fields);
    entry."hst_Seal" := seal_of(entry, before);
    INSERT INTO "History" SELECT entry.*;
    UPDATE "HistoryChain" SET "chn_Count" = "chn_Count" + 1, "chn_Last" = number, "chn_Seal" = entry."hst_Seal"
        WHERE "chn_Bench" = own;
END
$$;

-- From here on each bench has its own chain. Records that were copied from a file bring its one chain along, which goes on
-- until the first change on the server: that seals what the file's program has not sealed yet, as it would have done it.
CREATE FUNCTION begin_chains() RETURNS void LANGUAGE plpgsql AS $$
DECLARE
    stray "History";
    last "History";
    keys text;
    note text;
    parted text := 'one chain a bench';
BEGIN
    PERFORM pg_advisory_xact_lock(3, 0);
    IF EXISTS (SELECT FROM "HistoryChain") THEN
        RETURN;
    END IF;
    SELECT * INTO last FROM "History" WHERE "hst_Seal" IS NOT NULL ORDER BY "HistoryID" DESC LIMIT 1;
    FOR stray IN SELECT * FROM "History" WHERE "hst_Seal" IS NULL ORDER BY "HistoryID" LOOP
        stray."hst_Person" := '';
        stray."hst_Program" := 'outside';
        stray."hst_Digest" := digest_of(stray."hst_Salt", stray."hst_Name"::text, stray."hst_Fields"::text);
        stray."hst_Seal" := seal_of(stray, last."hst_Seal");
        UPDATE "History" SET "hst_Person" = stray."hst_Person", "hst_Program" = stray."hst_Program",
            "hst_Digest" = stray."hst_Digest", "hst_Seal" = stray."hst_Seal" WHERE "HistoryID" = stray."HistoryID";
        last := stray;
    END LOOP;
    INSERT INTO "HistoryChain" ("chn_Bench", "chn_Last", "chn_Seal")
        VALUES ('', coalesce(last."HistoryID", 0), last."hst_Seal") ON CONFLICT DO NOTHING;
    keys := (SELECT coalesce(string_agg("key_Table" || '=' || "key_Last", ',' ORDER BY "key_Table"), '')
             FROM "KeyCounter" WHERE "key_Last" > 0);
    SELECT "hst_Note" INTO note FROM "History" WHERE "hst_Table" = '' AND "hst_What" = 'begun'
        ORDER BY "HistoryID" DESC LIMIT 1;
    IF note = parted THEN  -- by a server before; what others have written since has put one behind the other
        PERFORM write_history('', 0, 0, NULL, 'begun', keys, NULL, '');
    END IF;
    PERFORM write_history('', 0, 0, NULL, 'begun', keys, parted, '');
END
$$;

-- Values as a file's engine quotes them. A double shows its point; one that fifteen digits don't hold is the shortest text
-- that reads back as the same, where a file writes twenty digits.
CREATE FUNCTION quoted(value text) RETURNS text LANGUAGE sql IMMUTABLE AS $$
    SELECT coalesce('''' || replace(value, '''', '''''') || '''', 'NULL')
$$;
CREATE FUNCTION quoted(value double precision) RETURNS text LANGUAGE sql IMMUTABLE AS $$
    SELECT coalesce(CASE WHEN value::text LIKE '%.%' THEN value::text
                         ELSE regexp_replace(value::text, '^(-?\d+)', '\1.0') END, 'NULL')
$$;
CREATE FUNCTION quoted(value numeric) RETURNS text LANGUAGE sql IMMUTABLE AS $$
    SELECT coalesce(trim_scale(value)::text, 'NULL')
$$;
CREATE FUNCTION quoted(value integer) RETURNS text LANGUAGE sql IMMUTABLE AS $$
    SELECT coalesce(value::text, 'NULL')
$$;
CREATE FUNCTION quoted(value timestamp) RETURNS text LANGUAGE sql IMMUTABLE AS $$
    SELECT quoted(to_char(value, 'YYYY-MM-DD HH24:MI:SS'))
$$;

-- Holds the chain of this connection until the transaction has ended; before any other lock, so that two programs of one
-- bench never wait for each other crosswise. The number in front tells these locks from others of the program.
CREATE FUNCTION hold_chain() RETURNS trigger LANGUAGE plpgsql
    SECURITY DEFINER SET search_path = sorvanto, pg_temp AS $$
BEGIN
    PERFORM pg_advisory_xact_lock(1, hashtext(bench()));
    RETURN NULL;
END
$$;

-- Makes the triggers of a table from its columns; to be called again when these have changed. key: name of the column;
-- record and name: what hst_Record and hst_Name of a row "%1$s" are.
CREATE PROCEDURE keep_history(tab text, key text, record text, name text) LANGUAGE plpgsql AS $make$
DECLARE
    whole text;    -- what is written of a row that was made or deleted
    changes text;  -- and of a change
    goes_along boolean;
BEGIN
    SELECT string_agg(format('%L || quoted(%%1$s.%I::%s)', attname || '=', attname, base), ' || '','' || ' ORDER BY attnum)
               FILTER (WHERE attname <> key),
           string_agg(format('CASE WHEN OLD.%1$I::%2$s IS DISTINCT FROM NEW.%1$I::%2$s THEN %3$L || quoted(OLD.%1$I::%2$s) '
                             '|| ''>'' || quoted(NEW.%1$I::%2$s) ELSE '''' END', attname, base, ',' || attname || '='),
                      ' || ' ORDER BY attnum)
        INTO whole, changes
        FROM pg_attribute JOIN pg_type ON pg_type.oid = atttypid,
            LATERAL (SELECT CASE format_type(typbasetype, NULL) WHEN 'sorvanto.citext' THEN 'text' WHEN 'citext' THEN 'text'
                            WHEN 'smallint' THEN 'integer' ELSE format_type(typbasetype, NULL) END AS base) AS known
        WHERE attrelid = format('sorvanto.%I', tab)::regclass AND attnum > 0 AND NOT attisdropped;
    EXECUTE format($function$
        CREATE OR REPLACE FUNCTION %1$I() RETURNS trigger LANGUAGE plpgsql
            SECURITY DEFINER SET search_path = sorvanto, pg_temp SET extra_float_digits = 1 AS $body$
        DECLARE
            changes text;
        BEGIN
            IF TG_OP = 'INSERT' THEN
                PERFORM write_history(%2$L, NEW.%3$I, %4$s, %5$s, 'made', %6$s);
            ELSIF TG_OP = 'DELETE' THEN
                PERFORM write_history(%2$L, OLD.%3$I, %7$s, %8$s, 'deleted', %9$s);
            ELSE
                changes := substr(%10$s, 2);
                IF changes <> '' THEN
                    PERFORM write_history(%2$L, OLD.%3$I, %7$s, %5$s, 'changed', changes);
                END IF;
            END IF;
            RETURN coalesce(NEW, OLD);
        END $body$
        $function$, 'history_of_' || lower(tab), tab, key, format(record, 'NEW'), format(name, 'NEW'), format(whole, 'NEW'),
        format(record, 'OLD'), format(name, 'OLD'), format(whole, 'OLD'), changes);
    EXECUTE format('CREATE OR REPLACE TRIGGER hold_chain BEFORE INSERT OR UPDATE OR DELETE ON %I '
                   'FOR EACH STATEMENT EXECUTE FUNCTION hold_chain()', tab);
    -- Lines that go with their record stand before it, as in a file: they are written before they go, the record behind
    -- the server's own trigger that deletes them, whose name comes before ours.
    goes_along := EXISTS (SELECT FROM pg_constraint
                          WHERE conrelid = format('sorvanto.%I', tab)::regclass AND confdeltype = 'c');
    EXECUTE format('CREATE OR REPLACE TRIGGER write_history AFTER INSERT OR UPDATE ON %I '
                   'FOR EACH ROW EXECUTE FUNCTION %I()', tab, 'history_of_' || lower(tab));
    EXECUTE format('CREATE OR REPLACE TRIGGER write_history_deleted %s DELETE ON %I '
                   'FOR EACH ROW EXECUTE FUNCTION %I()', CASE WHEN goes_along THEN 'BEFORE' ELSE 'AFTER' END, tab,
                   'history_of_' || lower(tab));
END
$make$;

CALL keep_history('Chemical', 'ChemicalID', '%1$s."ChemicalID"', '%1$s."chm_Name"');
CALL keep_history('Formula', 'FormulaID', '%1$s."FormulaID"', '%1$s."frm_Name"');
CALL keep_history('FormChem', 'FormChemID', '%1$s."FormulaID"',
    '(SELECT "chm_Name" FROM "Chemical" WHERE "ChemicalID" = %1$s."ChemicalID")');
CALL keep_history('Log', 'LogID', '%1$s."LogID"', '%1$s."log_Name"');
CALL keep_history('LogChem', 'LogChemID', '%1$s."LogID"', '%1$s."lch_Name"');
CALL keep_history('Patient', 'PatientID', '%1$s."PatientID"',
    'btrim(coalesce(%1$s."pat_LName", '''') || '', '' || coalesce(%1$s."pat_FName", ''''), '', '')');
CALL keep_history('RXs', 'RXsID', '%1$s."PatientID"', '(SELECT "log_Name" FROM "Log" WHERE "LogID" = %1$s."LogID")');

-- Nor does the owner change or drop a row by mistake; a bench has no right to.
CREATE FUNCTION refuse_change() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN
    RAISE insufficient_privilege USING MESSAGE = 'what happened can''t be changed or deleted';
END
$$;
CREATE TRIGGER history_kept BEFORE DELETE OR TRUNCATE ON "History" FOR EACH STATEMENT EXECUTE FUNCTION refuse_change();
CREATE TRIGGER history_sealed BEFORE UPDATE ON "History"
    FOR EACH ROW WHEN (OLD."hst_Seal" IS NOT NULL) EXECUTE FUNCTION refuse_change();

-- Nobody calls these but the triggers above.
REVOKE EXECUTE ON ROUTINE write_history, begin_chains, keep_history FROM PUBLIC;

-- The first row of all chains; its note tells that from here on each bench has its own.
SELECT begin_chains();
UPDATE "Options" SET "opt_Version" = 1.2;
