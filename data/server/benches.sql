-- The benches that work on these records, and what a program has to be for that. Run once by the owner, after schema.sql.
--
-- Every bench holds the lock (2, 0) shared for as long as it is connected. Whoever changes the tables needs it alone.

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
