-- What the operators and functions of the program's statements calculate, as functions of the server: the same values and
-- the same failures as with a file. Run once by the owner, after schema.sql. A bench calls them, and no others.
--
-- A value is whole, floating or a text; a date is a count of days in a calculation. Failures that a calculation alone
-- knows have states of the class DX, for the rest the server's own: 22012 a division by zero, 42804 a text that is no
-- number.

SET search_path = sorvanto;

CREATE FUNCTION dialect_overflow() RETURNS double precision LANGUAGE plpgsql AS $$
BEGIN
    RAISE 'Overflow' USING ERRCODE = 'DX006';
END
$$;
CREATE FUNCTION dialect_mismatch() RETURNS integer LANGUAGE plpgsql AS $$
BEGIN
    RAISE 'Data type mismatch in expression' USING ERRCODE = 'datatype_mismatch';
END
$$;

-- A value as a number: whole ones stay whole.
CREATE FUNCTION dialect_number(smallint) RETURNS bigint LANGUAGE sql IMMUTABLE AS 'SELECT $1::bigint';
CREATE FUNCTION dialect_number(integer) RETURNS bigint LANGUAGE sql IMMUTABLE AS 'SELECT $1::bigint';
CREATE FUNCTION dialect_number(bigint) RETURNS bigint LANGUAGE sql IMMUTABLE AS 'SELECT $1';
CREATE FUNCTION dialect_number(double precision) RETURNS double precision LANGUAGE sql IMMUTABLE AS 'SELECT $1';
CREATE FUNCTION dialect_number(numeric) RETURNS double precision LANGUAGE sql IMMUTABLE AS 'SELECT $1::double precision';
CREATE FUNCTION dialect_number(timestamp) RETURNS double precision LANGUAGE sql IMMUTABLE AS
    $$SELECT extract(epoch FROM $1 - timestamp '1899-12-30')::double precision / 86400$$;
CREATE FUNCTION dialect_number(text) RETURNS double precision LANGUAGE plpgsql IMMUTABLE STRICT AS $$
BEGIN
    IF $1 ~ '^\s*[-+]?(\d+\.?\d*|\.\d+)([eEdD][-+]?\d+)?\s*$' THEN
        RETURN translate($1, 'dD', 'ee')::double precision;
    ELSIF $1 ~ '^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d$' THEN
        RETURN dialect_number($1::timestamp);
    END IF;
    RETURN dialect_mismatch();
END
$$;

-- A value as a text.
CREATE FUNCTION dialect_text(text) RETURNS text LANGUAGE sql IMMUTABLE AS 'SELECT $1';
CREATE FUNCTION dialect_text(bigint) RETURNS text LANGUAGE sql IMMUTABLE AS 'SELECT $1::text';
CREATE FUNCTION dialect_text(integer) RETURNS text LANGUAGE sql IMMUTABLE AS 'SELECT $1::text';
CREATE FUNCTION dialect_text(smallint) RETURNS text LANGUAGE sql IMMUTABLE AS 'SELECT $1::text';
CREATE FUNCTION dialect_text(numeric) RETURNS text LANGUAGE sql IMMUTABLE AS 'SELECT trim_scale($1)::text';
CREATE FUNCTION dialect_text(double precision) RETURNS text LANGUAGE sql IMMUTABLE AS 'SELECT upper($1::text)';
CREATE FUNCTION dialect_text(timestamp) RETURNS text LANGUAGE sql IMMUTABLE AS
    $$SELECT to_char($1, 'YYYY-MM-DD HH24:MI:SS')$$;

-- A value as a part of a sum, which two texts have as well.
CREATE FUNCTION dialect_part(smallint) RETURNS bigint LANGUAGE sql IMMUTABLE AS 'SELECT $1::bigint';
CREATE FUNCTION dialect_part(integer) RETURNS bigint LANGUAGE sql IMMUTABLE AS 'SELECT $1::bigint';
CREATE FUNCTION dialect_part(bigint) RETURNS bigint LANGUAGE sql IMMUTABLE AS 'SELECT $1';
CREATE FUNCTION dialect_part(double precision) RETURNS double precision LANGUAGE sql IMMUTABLE AS 'SELECT $1';
CREATE FUNCTION dialect_part(numeric) RETURNS double precision LANGUAGE sql IMMUTABLE AS 'SELECT $1::double precision';
CREATE FUNCTION dialect_part(timestamp) RETURNS double precision LANGUAGE sql IMMUTABLE AS 'SELECT dialect_number($1)';
CREATE FUNCTION dialect_part(text) RETURNS text LANGUAGE sql IMMUTABLE AS 'SELECT $1';

CREATE FUNCTION dialect_add(double precision, double precision) RETURNS double precision LANGUAGE sql IMMUTABLE STRICT AS
    $$SELECT CASE WHEN abs($1 / 2 + $2 / 2) > 8.9884656743115785e307 THEN dialect_overflow() ELSE $1 + $2 END$$;
CREATE FUNCTION dialect_add(bigint, bigint) RETURNS bigint LANGUAGE sql IMMUTABLE AS 'SELECT $1 + $2';
CREATE FUNCTION dialect_add(text, text) RETURNS text LANGUAGE sql IMMUTABLE AS 'SELECT $1 || $2';
CREATE FUNCTION dialect_add(text, double precision) RETURNS double precision LANGUAGE sql IMMUTABLE AS
    'SELECT dialect_add(dialect_number($1), $2)';
CREATE FUNCTION dialect_add(double precision, text) RETURNS double precision LANGUAGE sql IMMUTABLE AS
    'SELECT dialect_add($1, dialect_number($2))';
CREATE FUNCTION dialect_subtract(double precision, double precision) RETURNS double precision LANGUAGE sql IMMUTABLE AS
    'SELECT dialect_add($1, -$2)';
CREATE FUNCTION dialect_subtract(bigint, bigint) RETURNS bigint LANGUAGE sql IMMUTABLE AS 'SELECT $1 - $2';
CREATE FUNCTION dialect_multiply(double precision, double precision) RETURNS double precision LANGUAGE sql IMMUTABLE AS
    $$SELECT CASE WHEN abs($1) > 1 AND abs($2) > 1.7976931348623157e308 / abs($1) THEN dialect_overflow()
        ELSE $1 * $2 END$$;
CREATE FUNCTION dialect_multiply(bigint, bigint) RETURNS bigint LANGUAGE sql IMMUTABLE AS 'SELECT $1 * $2';
CREATE FUNCTION dialect_divide(double precision, double precision) RETURNS double precision LANGUAGE sql IMMUTABLE AS
    $$SELECT CASE WHEN $2 <> 0 AND abs($2) < 1 AND abs($1) > 1.7976931348623157e308 * abs($2) THEN dialect_overflow()
        ELSE $1 / $2 END$$;

-- Both sides are rounded to whole numbers of 32 bits first.
CREATE FUNCTION dialect_rounded(double precision) RETURNS integer LANGUAGE sql IMMUTABLE STRICT AS
    $$SELECT CASE WHEN round($1) BETWEEN -2147483648 AND 2147483647 THEN $1::integer ELSE dialect_overflow()::integer END$$;
CREATE FUNCTION dialect_whole(double precision, double precision) RETURNS integer LANGUAGE sql IMMUTABLE AS
    'SELECT dialect_rounded($1) / dialect_rounded($2)';
CREATE FUNCTION dialect_mod(double precision, double precision) RETURNS integer LANGUAGE sql IMMUTABLE AS
    'SELECT dialect_rounded($1) % dialect_rounded($2)';
CREATE FUNCTION dialect_power(double precision, double precision) RETURNS double precision LANGUAGE plpgsql IMMUTABLE STRICT AS $$
BEGIN
    IF $1 = 0 AND $2 < 0 THEN
        RETURN $1 / 0;
    ELSIF $1 < 0 AND $2 <> trunc($2) THEN
        RAISE 'Invalid procedure call' USING ERRCODE = 'syntax_error_or_access_rule_violation';
    END IF;
    RETURN power($1, $2);
EXCEPTION WHEN numeric_value_out_of_range THEN
    RETURN dialect_overflow();
END
$$;
CREATE FUNCTION dialect_join(text, text) RETURNS text LANGUAGE sql IMMUTABLE AS
    $$SELECT CASE WHEN $1 IS NULL AND $2 IS NULL THEN NULL ELSE coalesce($1, '') || coalesce($2, '') END$$;

-- -1, 0 or 1. Texts without regard to case, and never with a number.
CREATE FUNCTION dialect_compare(double precision, double precision) RETURNS integer LANGUAGE sql IMMUTABLE AS
    'SELECT sign($1 - $2)::integer';
CREATE FUNCTION dialect_compare(text, text) RETURNS integer LANGUAGE sql IMMUTABLE STRICT AS
    $$SELECT CASE WHEN a < b THEN -1 WHEN a > b THEN 1 ELSE 0 END
        FROM (SELECT lower($1 COLLATE "und-x-icu") COLLATE "C" AS a, lower($2 COLLATE "und-x-icu") COLLATE "C" AS b) AS both_texts$$;
CREATE FUNCTION dialect_compare(timestamp, timestamp) RETURNS integer LANGUAGE sql IMMUTABLE AS
    'SELECT dialect_compare(dialect_number($1), dialect_number($2))';
CREATE FUNCTION dialect_compare(timestamp, text) RETURNS integer LANGUAGE sql IMMUTABLE AS
    'SELECT dialect_compare(dialect_text($1), $2)';
CREATE FUNCTION dialect_compare(text, timestamp) RETURNS integer LANGUAGE sql IMMUTABLE AS
    'SELECT dialect_compare($1, dialect_text($2))';
CREATE FUNCTION dialect_compare(text, double precision) RETURNS integer LANGUAGE plpgsql IMMUTABLE STRICT AS
    'BEGIN RETURN dialect_mismatch(); END';
CREATE FUNCTION dialect_compare(double precision, text) RETURNS integer LANGUAGE plpgsql IMMUTABLE STRICT AS
    'BEGIN RETURN dialect_mismatch(); END';

CREATE FUNCTION dialect_truth(double precision) RETURNS boolean LANGUAGE sql IMMUTABLE AS 'SELECT $1 <> 0';
CREATE FUNCTION dialect_truth(text) RETURNS boolean LANGUAGE sql IMMUTABLE AS 'SELECT dialect_number($1) <> 0';
CREATE FUNCTION dialect_truth(timestamp) RETURNS boolean LANGUAGE sql IMMUTABLE AS 'SELECT dialect_number($1) <> 0';
CREATE FUNCTION dialect_truth(boolean) RETURNS boolean LANGUAGE sql IMMUTABLE AS 'SELECT $1';
CREATE FUNCTION dialect_iif(boolean, anycompatible, anycompatible) RETURNS anycompatible LANGUAGE sql IMMUTABLE AS
    'SELECT CASE WHEN $1 THEN $2 ELSE $3 END';
CREATE FUNCTION dialect_iif(boolean, text, double precision) RETURNS text LANGUAGE sql IMMUTABLE AS
    'SELECT CASE WHEN $1 THEN $2 ELSE dialect_text($3) END';
CREATE FUNCTION dialect_iif(boolean, double precision, text) RETURNS text LANGUAGE sql IMMUTABLE AS
    'SELECT CASE WHEN $1 THEN dialect_text($2) ELSE $3 END';

-- Functions of one number.
DO $$
DECLARE
    name text;
    argument text;
BEGIN
    FOR name, argument IN
        SELECT n, a FROM (VALUES ('abs', 'abs'), ('int', 'floor'), ('fix', 'trunc'), ('sgn', 'sign')) AS f(n, own),
            (VALUES ('double precision'), ('text'), ('timestamp')) AS t(a)
    LOOP
        EXECUTE format('CREATE FUNCTION %I(%s) RETURNS double precision LANGUAGE sql IMMUTABLE AS %L', 'dialect_' || name,
                       argument, format('SELECT %I(dialect_number($1)::double precision)',
                                        CASE name WHEN 'int' THEN 'floor' WHEN 'fix' THEN 'trunc' WHEN 'sgn' THEN 'sign'
                                            ELSE name END));
    END LOOP;
END
$$;

-- To so many decimals; a tie goes to the even neighbour, judged on the shortest digits of the number.
CREATE FUNCTION dialect_even(numeric, integer) RETURNS numeric LANGUAGE sql IMMUTABLE STRICT AS
    $$SELECT CASE WHEN abs($1 - trunc($1, $2)) * power(10::numeric, $2) = 0.5
        THEN 2 * round($1 / 2, $2) ELSE round($1, $2) END$$;
CREATE FUNCTION dialect_round(double precision, integer) RETURNS double precision LANGUAGE plpgsql IMMUTABLE STRICT AS $$
BEGIN
    IF $2 NOT BETWEEN 0 AND 15 THEN
        RAISE 'Invalid procedure call' USING ERRCODE = 'syntax_error_or_access_rule_violation';
    END IF;
    RETURN dialect_even($1::text::numeric, $2)::double precision;
END
$$;
CREATE FUNCTION dialect_round(double precision) RETURNS double precision LANGUAGE sql IMMUTABLE AS
    'SELECT dialect_round($1, 0)';
CREATE FUNCTION dialect_round(text) RETURNS double precision LANGUAGE sql IMMUTABLE AS
    'SELECT dialect_round(dialect_number($1), 0)';
CREATE FUNCTION dialect_val(text) RETURNS double precision LANGUAGE sql IMMUTABLE AS
    $$SELECT coalesce(substring(regexp_replace($1, '[ \t\n\r]', '', 'g')
        FROM '^[-+]?(?:\d+\.?\d*|\.\d+)(?:[eE][-+]?\d+)?')::double precision, 0)$$;
CREATE FUNCTION dialect_val(double precision) RETURNS double precision LANGUAGE sql IMMUTABLE AS 'SELECT coalesce($1, 0)';

-- A calculated value as a column of that kind holds it.
DO $$
DECLARE
    kind text;
    argument text;
    value text;
BEGIN
    FOR kind, argument IN
        SELECT k, a FROM unnest(ARRAY['text', 'longtext', 'smallint', 'integer', 'double', 'currency', 'datetime', 'yesno']) AS k,
            unnest(ARRAY['double precision', 'text', 'timestamp']) AS a
    LOOP
        value := CASE WHEN kind = 'datetime' AND argument = 'timestamp' THEN '$1'
                      WHEN kind LIKE '%text' THEN 'dialect_text($1)'
                      ELSE 'dialect_number($1)::double precision' END;
        EXECUTE format('CREATE FUNCTION %I(%s) RETURNS %s LANGUAGE sql IMMUTABLE AS %L', 'dialect_to_' || kind, argument,
            CASE kind WHEN 'longtext' THEN 'text' WHEN 'double' THEN 'double precision' WHEN 'currency' THEN 'numeric'
                WHEN 'datetime' THEN 'timestamp' WHEN 'yesno' THEN 'smallint' ELSE kind END,
            'SELECT ' || CASE kind
                WHEN 'smallint' THEN value || '::smallint'
                WHEN 'integer' THEN value || '::integer'
                WHEN 'currency' THEN format('dialect_even((%s)::text::numeric, 4)', value)
                WHEN 'yesno' THEN format('(%s <> 0)::integer::smallint', value)
                WHEN 'datetime' THEN CASE argument WHEN 'timestamp' THEN value
                    ELSE format($f$date_trunc('second', timestamp '1899-12-30' + (%s) * interval '1 day' + interval '0.5 second')$f$,
                                value) END
                ELSE value END);
    END LOOP;
END
$$;
CREATE FUNCTION dialect_to_currency(numeric) RETURNS numeric LANGUAGE sql IMMUTABLE AS 'SELECT dialect_even($1, 4)';

-- Where a text stands in another, for statements of the program's own making.
CREATE FUNCTION instr(text, text) RETURNS integer LANGUAGE sql IMMUTABLE AS 'SELECT strpos($1, $2)';
