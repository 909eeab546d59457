-- What a PostgreSQL payroll database needs before schema.sql: the payroll
-- server's functions, the exact money type and the case-blind collation that
-- the schema's SQL names. Written for PostgreSQL itself and run as it stands;
-- every other data/*.sql file is written once for both databases and goes
-- through the dialect layer, which renames the few calls that PostgreSQL
-- already knows differently (ROUND -> IRAS_ROUND, DATE -> IRAS_DATE) and
-- turns the schema's REAL money columns into money_amount.
--
-- Rounding agrees with the records to the cent: on NUMERIC, PostgreSQL's own
-- round() already rounds half away from zero on the decimal value, and a
-- DOUBLE PRECISION value is first read as the decimal it prints as.

-- The look-up functions read tables that schema.sql makes after this script.
SET LOCAL check_function_bodies = off;

-- COLLATE NOCASE of the schema: equal when equal but for letter case.
CREATE COLLATION IF NOT EXISTS nocase (provider = icu, locale = 'und-u-ks-level2', deterministic = false);

-- Amounts: dollars and cents, exact.
CREATE DOMAIN money_amount AS NUMERIC;

-- The text that the functions below give compares byte by byte, as the
-- schema's text columns do: a return sorted by a looked-up employee id must
-- not follow the server's language rules. A function's text takes the
-- collation of its text arguments, so those are payroll_text as well.
CREATE DOMAIN payroll_text AS TEXT COLLATE "C";

CREATE FUNCTION iras_round(x NUMERIC, places INTEGER DEFAULT 0) RETURNS NUMERIC
    LANGUAGE sql IMMUTABLE AS $$ SELECT round(x, places) $$;
CREATE FUNCTION iras_round(x DOUBLE PRECISION, places INTEGER DEFAULT 0) RETURNS NUMERIC
    LANGUAGE sql IMMUTABLE AS $$ SELECT round(CAST(x AS NUMERIC), places) $$;

CREATE FUNCTION truncnum(x NUMERIC, places INTEGER DEFAULT 0) RETURNS NUMERIC
    LANGUAGE sql IMMUTABLE AS $$ SELECT trunc(x, places) $$;
CREATE FUNCTION truncnum(x DOUBLE PRECISION, places INTEGER DEFAULT 0) RETURNS NUMERIC
    LANGUAGE sql IMMUTABLE AS $$ SELECT trunc(CAST(x AS NUMERIC), places) $$;

-- CAST(x AS Money) of the payroll's SQL: four decimals.
CREATE FUNCTION iras_money(x NUMERIC) RETURNS NUMERIC
    LANGUAGE sql IMMUTABLE AS $$ SELECT round(x, 4) $$;
CREATE FUNCTION iras_money(x DOUBLE PRECISION) RETURNS NUMERIC
    LANGUAGE sql IMMUTABLE AS $$ SELECT round(CAST(x AS NUMERIC), 4) $$;

-- A stored date 'YYYY-MM-DD' (a time may follow) as a date; NULL for text
-- that is not one.
CREATE FUNCTION iras_parse_date(x TEXT) RETURNS DATE LANGUAGE plpgsql IMMUTABLE AS $$
DECLARE
    y INTEGER;
    m INTEGER;
    d INTEGER;
    first DATE;
BEGIN
    -- Checked by hand, not by catching a failed cast: an exception block
    -- costs a subtransaction on every row of a query.
    IF x IS NULL OR x !~ '^\s*\d{4}-\d{2}-\d{2}([ T]\d{2}:\d{2}(:\d{2}(\.\d+)?)?)?\s*$' THEN
        RETURN NULL;
    END IF;
    y := CAST(substr(trim(x), 1, 4) AS INTEGER);
    m := CAST(substr(trim(x), 6, 2) AS INTEGER);
    d := CAST(substr(trim(x), 9, 2) AS INTEGER);
    IF y < 1 OR m < 1 OR m > 12 OR d < 1 THEN
        RETURN NULL;
    END IF;
    first := make_date(y, m, 1);
    IF d > extract(day FROM first + INTERVAL '1 month' - INTERVAL '1 day') THEN
        RETURN NULL;
    END IF;
    RETURN first + (d - 1);
END $$;

CREATE FUNCTION year(x TEXT) RETURNS INTEGER
    LANGUAGE sql IMMUTABLE AS $$ SELECT CAST(extract(year FROM iras_parse_date(x)) AS INTEGER) $$;
CREATE FUNCTION year(x DATE) RETURNS INTEGER
    LANGUAGE sql IMMUTABLE AS $$ SELECT CAST(extract(year FROM x) AS INTEGER) $$;

-- DATE(x, modifiers...) of the scripts: 'YYYY-MM-DD' text, 'now' for today
-- on the server, modifiers '+N days', '-N months', '+N years' ('localtime'
-- and 'utc' change nothing: the server's day is the day).
CREATE FUNCTION iras_date(x payroll_text, VARIADIC modifiers payroll_text[] DEFAULT '{}') RETURNS payroll_text
    LANGUAGE plpgsql STABLE AS $$
DECLARE
    day DATE;
    modifier TEXT;
    parts TEXT[];
BEGIN
    IF x IS NULL THEN
        RETURN NULL;
    END IF;
    day := CASE WHEN lower(trim(x)) = 'now' THEN current_date ELSE iras_parse_date(x) END;
    IF day IS NULL THEN
        RETURN NULL;
    END IF;
    FOREACH modifier IN ARRAY modifiers LOOP
        parts := regexp_match(lower(trim(modifier)), '^([+-]?\d+)\s+(day|month|year)s?$');
        IF parts IS NOT NULL THEN
            day := day + CAST(parts[1] || ' ' || parts[2] AS INTERVAL);
        ELSIF lower(trim(modifier)) NOT IN ('localtime', 'utc') THEN
            RETURN NULL;
        END IF;
    END LOOP;
    RETURN to_char(day, 'YYYY-MM-DD');
END $$;

-- strftime(format, date) of the scripts, for %Y, %m, %d and %%.
CREATE FUNCTION strftime(format payroll_text, x payroll_text) RETURNS payroll_text LANGUAGE plpgsql STABLE AS $$
DECLARE
    day DATE := CASE WHEN lower(trim(x)) = 'now' THEN current_date ELSE iras_parse_date(x) END;
BEGIN
    IF day IS NULL OR format IS NULL THEN
        RETURN NULL;
    END IF;
    RETURN replace(replace(replace(replace(replace(format, '%%', chr(1)), '%Y', to_char(day, 'YYYY')),
                   '%m', to_char(day, 'MM')), '%d', to_char(day, 'DD')), chr(1), '%');
END $$;

-- printf(format, numbers...) of the scripts, for %d with a width ('%04d').
CREATE FUNCTION printf(format payroll_text, VARIADIC args NUMERIC[]) RETURNS payroll_text LANGUAGE plpgsql IMMUTABLE AS $$
DECLARE
    result TEXT := '';
    rest TEXT := format;
    spec TEXT[];
    argument INTEGER := 1;
    digits TEXT;
BEGIN
    LOOP
        spec := regexp_match(rest, '^(.*?)%(0?)(\d*)d(.*)$', 's');
        EXIT WHEN spec IS NULL;
        digits := CAST(trunc(args[argument]) AS TEXT);
        argument := argument + 1;
        IF spec[3] <> '' AND length(digits) < CAST(spec[3] AS INTEGER) THEN
            digits := lpad(digits, CAST(spec[3] AS INTEGER), CASE WHEN spec[2] = '0' THEN '0' ELSE ' ' END);
        END IF;
        result := result || spec[1] || digits;
        rest := spec[4];
    END LOOP;
    RETURN result || rest;
END $$;

-- substr with the 64-bit integers that the payroll's INTEGER becomes.
CREATE FUNCTION substr(x TEXT, start BIGINT, count BIGINT) RETURNS TEXT
    LANGUAGE sql IMMUTABLE AS $$ SELECT pg_catalog.substr(x, CAST(start AS INTEGER), CAST(count AS INTEGER)) $$;
CREATE FUNCTION substr(x TEXT, start BIGINT) RETURNS TEXT
    LANGUAGE sql IMMUTABLE AS $$ SELECT pg_catalog.substr(x, CAST(start AS INTEGER)) $$;

-- julianday(date) of the scripts: days since noon of 24 November 4714 BC, so
-- that the difference of two dates is their distance in days.
CREATE FUNCTION julianday(x TEXT) RETURNS DOUBLE PRECISION LANGUAGE sql STABLE AS $$
    SELECT CAST(to_char(iras_parse_date(iras_date(x)), 'J') AS DOUBLE PRECISION) - 0.5
$$;

CREATE FUNCTION ifnull(a ANYCOMPATIBLE, b ANYCOMPATIBLE) RETURNS ANYCOMPATIBLE
    LANGUAGE sql IMMUTABLE AS $$ SELECT coalesce(a, b) $$;

-- The look-ups of the payroll's master tables. Each gives NULL for a NULL
-- argument or when there is no such row. The bodies say $1: an argument's
-- name would lose to a table of the same name (Personal, Employee).
CREATE FUNCTION FGetEmployeeIdByPersonalSysId(personal BIGINT) RETURNS payroll_text LANGUAGE sql STABLE AS $$
    SELECT EmployeeCode FROM Employee WHERE PersonalSysId = $1 ORDER BY EmployeeSysId LIMIT 1
$$;

CREATE FUNCTION FGetEmployeeSysId(code TEXT) RETURNS BIGINT LANGUAGE sql STABLE AS $$
    SELECT EmployeeSysId FROM Employee WHERE EmployeeCode = $1 ORDER BY EmployeeSysId LIMIT 1
$$;

-- The bank row entered first (the server keeps no order of entry; the
-- row's place in the table is the nearest to it).
CREATE FUNCTION FGetIRASEmployeeBank(employee BIGINT) RETURNS payroll_text LANGUAGE sql STABLE AS $$
    SELECT IRASBankCode FROM EmployeeBank WHERE EmployeeSysId = $1 ORDER BY ctid LIMIT 1
$$;

CREATE FUNCTION FGetPersonalName(personal BIGINT) RETURNS payroll_text LANGUAGE sql STABLE AS $$
    SELECT PersonalName FROM Personal WHERE PersonalSysId = $1
$$;

-- 'YYYY-MM-DD HH:MM:SS' as 'dd/mm/yyyy hh:mm:ss'; a date alone shows
-- midnight, text of another form comes back as it is.
CREATE FUNCTION FGetDateTimeFormat(x payroll_text) RETURNS payroll_text LANGUAGE plpgsql IMMUTABLE AS $$
DECLARE
    day DATE := iras_parse_date(x);
    clock TEXT := '00:00:00';
BEGIN
    IF x IS NULL THEN
        RETURN NULL;
    END IF;
    IF day IS NULL OR (length(x) > 10 AND x !~ '^\d{4}-\d{2}-\d{2}[ T]\d{2}:\d{2}') THEN
        RETURN x;
    END IF;
    IF length(x) > 10 THEN
        clock := CASE WHEN x ~ '^.{11}\d{2}:\d{2}:\d{2}' THEN substr(x, 12, 8) ELSE substr(x, 12, 5) || ':00' END;
    END IF;
    RETURN to_char(day, 'DD/MM/YYYY') || ' ' || clock;
END $$;
