-- Who may do what. Run by the server's administrator in the database of the records: after schema.sql, and again with each
-- start-server.sh, so that a server that was made earlier has today's rights. All of it together or nothing.
--
-- sorvanto_owner owns the tables and brings them up to date. sorvanto_bench is what every bench may do: read and write
-- rows. A search text reaches the server as it was typed; so a bench can't make, empty or drop a table, read a file of the
-- server, run a server's program, or make an object that outlasts its statement.

REVOKE ALL ON SCHEMA public FROM PUBLIC;
REVOKE ALL ON SCHEMA sorvanto FROM PUBLIC;
REVOKE ALL ON SCHEMA sorvanto FROM sorvanto_bench;
REVOKE ALL ON ALL TABLES IN SCHEMA sorvanto FROM PUBLIC, sorvanto_bench;
REVOKE ALL ON ALL SEQUENCES IN SCHEMA sorvanto FROM PUBLIC, sorvanto_bench;
GRANT USAGE ON SCHEMA sorvanto TO sorvanto_bench;

GRANT SELECT, INSERT, UPDATE, DELETE ON sorvanto."Chemical", sorvanto."Formula", sorvanto."FormChem", sorvanto."Log",
    sorvanto."LogChem", sorvanto."Patient", sorvanto."RXs" TO sorvanto_bench;
GRANT SELECT ON sorvanto."Options", sorvanto."FileIdentity", sorvanto."KeyCounter", sorvanto.changes, sorvanto."KeyMap",
    sorvanto."ArchivedBatch" TO sorvanto_bench;
-- What happened is read; it is written by the triggers alone.
GRANT SELECT ON sorvanto."History", sorvanto."HistoryChain" TO sorvanto_bench;

-- The owner tells benches which others are at work (benches.sql).
GRANT pg_read_all_stats TO sorvanto_owner;

-- What a bench never needs and a hostile search text could use: who else may log in, large objects (tables that the rights
-- above don't know), statements in texts, settings, waiting for ever.
REVOKE SELECT ON pg_roles, pg_user, pg_group, pg_settings, pg_stat_activity, pg_stats FROM PUBLIC;
DO $$
DECLARE
    dangerous text;
BEGIN
    FOR dangerous IN
        SELECT oid::regprocedure FROM pg_proc
        WHERE pronamespace = 'pg_catalog'::regnamespace
            AND proname ~ '^(lo_.*|lowrite|loread|query_to_.*|table_to_.*|schema_to_.*|database_to_.*|cursor_to_.*|pg_sleep.*|pg_cancel_backend|pg_terminate_backend|pg_stat_get_activity|pg_read_.*|pg_ls_.*|pg_stat_file|set_config|pg_show_all_settings|ts_stat|pg_notify|pg_logical_emit_message|pg_export_snapshot)$'
    LOOP
        EXECUTE 'REVOKE EXECUTE ON FUNCTION ' || dangerous || ' FROM PUBLIC';
    END LOOP;
END
$$;
GRANT SELECT ON pg_stat_activity TO sorvanto_owner;
GRANT EXECUTE ON FUNCTION pg_stat_get_activity TO sorvanto_owner;

-- No statements of a language inside a statement; the owner makes the triggers anew with an update.
REVOKE USAGE ON LANGUAGE plpgsql, sql FROM PUBLIC;
GRANT USAGE ON LANGUAGE plpgsql, sql TO sorvanto_owner;
