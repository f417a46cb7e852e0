-- The benches that work on these records, and what a program has to be for that. Run once by the owner, after schema.sql.
--
-- Every bench holds the lock (2, 0) shared for as long as it is connected. Whoever changes the tables needs it alone. A name
-- that one bench keeps for itself is the lock (3, its hash): of a mixer, of a record that is being edited.

SET search_path = sorvanto;

-- The oldest program that works with these tables; an update replaces this function.
CREATE FUNCTION needs_program() RETURNS text LANGUAGE sql IMMUTABLE AS $$SELECT '1.0.0'$$;

-- What each bench says of itself: account, computer and version of the program. A bench sees nothing else of the sessions of
-- others, not even which there are.
CREATE FUNCTION benches() RETURNS TABLE (bench text) LANGUAGE sql STABLE
    SECURITY DEFINER SET search_path = pg_catalog, pg_temp AS $$
    SELECT application_name FROM pg_stat_activity JOIN pg_locks USING (pid)
    WHERE locktype = 'advisory' AND classid = 2 AND objid = 0 AND pg_locks.database = datid AND mode = 'ShareLock' AND granted
    ORDER BY backend_start, pid
$$;

-- The lock of a name as the list of locks shows it.
CREATE FUNCTION name_lock(name text) RETURNS oid LANGUAGE sql IMMUTABLE AS 'SELECT (hashtext($1)::bigint & 4294967295)::oid';

-- Keeps a name for this connection, once however often it is asked; false while another one keeps it.
CREATE FUNCTION keep_name(name text) RETURNS boolean LANGUAGE plpgsql AS $$
BEGIN
    IF EXISTS (SELECT FROM pg_locks WHERE locktype = 'advisory' AND pid = pg_backend_pid() AND classid = 3
               AND objid = name_lock(name) AND granted) THEN
        RETURN true;
    END IF;
    RETURN pg_try_advisory_lock(3, hashtext(name));
END
$$;
CREATE FUNCTION give_up_name(name text) RETURNS boolean LANGUAGE sql AS 'SELECT pg_advisory_unlock(3, hashtext($1))';

-- What the bench that keeps a name says of itself; nothing where none does.
CREATE FUNCTION name_keeper(name text) RETURNS text LANGUAGE sql STABLE
    SECURITY DEFINER SET search_path = pg_catalog, pg_temp AS $$
    SELECT application_name FROM pg_stat_activity JOIN pg_locks USING (pid)
    WHERE locktype = 'advisory' AND classid = 3 AND objid = sorvanto.name_lock(name) AND pg_locks.database = datid AND granted
$$;
