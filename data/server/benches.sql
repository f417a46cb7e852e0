-- The benches that work on these records, and what a program has to be for that. Run once by the owner, after schema.sql.
--
-- Every bench holds the lock (2, 0) shared for as long as it is connected. Whoever changes the tables needs it alone. A name
-- that one bench keeps for itself is the lock (3, its hash): of a mixer, of a record that is being edited. What a bench mixes are
-- the locks (4, formula) and (5, minute).

SET search_path = sorvanto;

-- The oldest program that works with these tables; an update replaces this function.
CREATE FUNCTION needs_program() RETURNS text LANGUAGE sql IMMUTABLE AS $$SELECT '1.0.0'$$;

-- What each bench says of itself: account, computer and version of the program; and what it mixes: the key of the formula, 0
-- where it is not stored here, and the minute in which that began, counted from 1970 in UTC. NULL where it mixes nothing. A
-- bench sees nothing else of the sessions of others, not even which there are.
CREATE FUNCTION benches() RETURNS TABLE (bench text, mixes integer, minute integer) LANGUAGE sql STABLE
    SECURITY DEFINER SET search_path = pg_catalog, pg_temp AS $$
    WITH held AS (SELECT pid, classid, objid::bigint::integer AS number FROM pg_locks
                  WHERE locktype = 'advisory' AND mode = 'ShareLock' AND granted
                      AND database = (SELECT oid FROM pg_database WHERE datname = current_database()))
    SELECT application_name, mixed.number, begun.number
    FROM pg_stat_activity JOIN held AS part USING (pid)
        LEFT JOIN held AS mixed ON mixed.pid = part.pid AND mixed.classid = 4
        LEFT JOIN held AS begun ON begun.pid = part.pid AND begun.classid = 5
    WHERE part.classid = 2 AND part.number = 0
    ORDER BY backend_start, part.pid
$$;

-- How far each bench has written (HistoryChain). A program asks this every few seconds, and says on the way what it mixes, as
-- above, so that this costs no way of its own: the shared locks (4, formula) and (5, minute), for which nobody ever waits, and
-- which go with the connection.
CREATE FUNCTION look_around(mixed integer, minute integer) RETURNS TABLE (bench text, number integer) LANGUAGE plpgsql AS $$
BEGIN
    IF (SELECT array_agg(objid::bigint ORDER BY classid) FROM pg_locks WHERE locktype = 'advisory' AND classid IN (4, 5)
        AND pid = pg_backend_pid()) IS DISTINCT FROM (CASE WHEN minute IS NOT NULL THEN ARRAY[mixed::bigint, minute] END) THEN
        PERFORM pg_advisory_unlock_shared(classid::bigint::integer, objid::bigint::integer) FROM pg_locks
            WHERE locktype = 'advisory' AND classid IN (4, 5) AND pid = pg_backend_pid();
        IF minute IS NOT NULL THEN
            PERFORM pg_advisory_lock_shared(4, mixed), pg_advisory_lock_shared(5, minute);
        END IF;
    END IF;
    RETURN QUERY SELECT "chn_Bench", "chn_Last" FROM "HistoryChain";
END
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
