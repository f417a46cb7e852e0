-- Fills every table of the sample pharmacy up to the count in Wanted (a temporary table of one row and one
-- column, rows), for measuring. The same count always gives the same rows.

CREATE TEMP TABLE Number AS
WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < (SELECT rows FROM Wanted))
SELECT i FROM n WHERE i <= (SELECT rows FROM Wanted);

-- What there was before; the new rows are variations of it.
CREATE TEMP TABLE Start AS SELECT
    (SELECT max(ChemicalID) FROM Chemical) AS chemicals, (SELECT max(FormulaID) FROM Formula) AS formulas,
    (SELECT max(FormChemID) FROM FormChem) AS lines, (SELECT max(LogID) FROM Log) AS batches,
    (SELECT max(LogChemID) FROM LogChem) AS frozen, (SELECT max(PatientID) FROM Patient) AS patients,
    (SELECT max(RXsID) FROM RXs) AS prescriptions;

INSERT INTO Chemical
SELECT i, chm_Name || printf(' %05d', i), chm_Units, printf('L%05d', i), printf('%05d-%04d-%02d', i, i % 9973, i % 97),
       round(chm_Cost * (1 + i % 7 / 10.0), 4), round(chm_AWP * (1 + i % 7 / 10.0), 4), chm_Notes, chm_Form,
       printf('%08X-%04X-4%03X-8%03X-%012X', i * 2654435761 % 4294967296, i * 40503 % 65536, i * 1103 % 4096, i * 2011 % 4096,
              i * 11400714819323 % 281474976710656), chm_Supplier
FROM Number, Start JOIN Chemical ON ChemicalID = 1 + i % chemicals
WHERE i > chemicals ORDER BY i;

INSERT INTO Formula
SELECT i, frm_Name || printf(' %05d', i), frm_Desc, frm_Strength, frm_Units, frm_Instructions, frm_Quantity, frm_JarSize, frm_FormType, 0,
       printf('%05d-%04d-%02d', i, i % 9967, i % 89),
       printf('%08X-%04X-4%03X-9%03X-%012X', i * 2246822519 % 4294967296, i * 60493 % 65536, i * 3301 % 4096, i * 1733 % 4096,
              i * 14029467366897 % 281474976710656), frm_Mix
FROM Number, Start JOIN Formula ON FormulaID = 1 + i % formulas
WHERE i > formulas ORDER BY i;

INSERT INTO FormChem
SELECT i, 1 + formulas + (i - lines) / 3 % (rows - formulas), 1 + i * 7919 % rows, 0.5 + i % 40, i % 3 = 0, i % 3 = 1
FROM Number, Start, Wanted WHERE i > lines ORDER BY i;

UPDATE Formula SET frm_AWP = (
    SELECT round(coalesce(sum(chm_AWP * fch_Qty), 0), 4)
    FROM FormChem JOIN Chemical USING (ChemicalID) WHERE FormChem.FormulaID = Formula.FormulaID)
WHERE FormulaID > (SELECT formulas FROM Start);

INSERT INTO Log
SELECT i, FormulaID, log_Name, log_Strength, log_Desc, log_Units, log_FormType, log_Quantity, log_JarSize, log_NDC,
       datetime('2026-08-30 18:00:00', printf('-%d minutes', (rows - i) * 37)), printf('SV25%05d', i), log_Initials, log_Verified,
       log_Results, log_Version, log_AWP, log_Cost, '', log_Mix
FROM Number, Start, Wanted JOIN Log ON LogID = 1 + i % batches
WHERE i > batches ORDER BY i;

INSERT INTO LogChem
SELECT i, 1 + batches + (i - frozen) / 3 % (rows - batches), ChemicalID, lch_Name, lch_Units, lch_Lot, lch_NDC, lch_Cost, lch_AWP,
       lch_Supplier, lch_Form, lch_GUID, lch_QTY
FROM Number, Start, Wanted JOIN LogChem ON LogChemID = 1 + i % frozen
WHERE i > frozen ORDER BY i;

INSERT INTO Patient
SELECT i, pat_FName, pat_LName || printf(' %05d', i), printf('%d Orchard Lane', i), pat_Address2, pat_City, pat_State, pat_Zip, pat_Country,
       datetime('1940-01-01', printf('+%d days', i)), printf('440-%03d-%04d', 200 + i / 10000, i % 10000), '', ''
FROM Number, Start JOIN Patient ON PatientID = 1 + i % patients
WHERE i > patients ORDER BY i;

INSERT INTO RXs
SELECT i, LogID, 1 + i * 7 % max(rows, patients), date(log_Date) || ' 00:00:00', log_Quantity, log_AWP, log_Cost, NULL, 'Dr. Helen Marsh'
FROM Number, Start, Wanted JOIN Log ON LogID = 1 + i * 7907 % max(rows, batches)
WHERE i > prescriptions ORDER BY i;

DROP TABLE Number;
DROP TABLE Start;
