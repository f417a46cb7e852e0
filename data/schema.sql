-- The database of the control panel: tables, relations and indexes of an empty file.
--
-- Declared types carry a meaning for the program's result sets: TEXT(n) text of up to about n characters,
-- LONGTEXT text of any length, SMALLINT 16 bits, INTEGER a key, DOUBLE, CURRENCY money with at most four
-- decimals, DATETIME as 'YYYY-MM-DD HH:MM:SS', YESNO as 0 or 1. The checks refuse what such a column can't hold.
-- Keys are never given out twice: a batch remembers its formula by key also when that is gone.

-- One row for each stocked ingredient lot.
CREATE TABLE Chemical (
    ChemicalID INTEGER PRIMARY KEY AUTOINCREMENT,
    chm_Name TEXT(100) COLLATE NOCASE,
    chm_Units TEXT(20) COLLATE NOCASE,
    chm_Lot TEXT(40) COLLATE NOCASE,
    chm_NDC TEXT(30) COLLATE NOCASE,
    chm_Cost CURRENCY
        CONSTRAINT chm_Cost CHECK (typeof(chm_Cost) <> 'text' AND abs(round(chm_Cost, 4) - chm_Cost) < 0.00001),
    chm_AWP CURRENCY
        CONSTRAINT chm_AWP CHECK (typeof(chm_AWP) <> 'text' AND abs(round(chm_AWP, 4) - chm_AWP) < 0.00001),
    chm_Notes LONGTEXT,
    chm_Form TEXT(20) COLLATE NOCASE,
    chm_GUID TEXT(40) COLLATE NOCASE,
    chm_Supplier TEXT(80) COLLATE NOCASE
);

-- One row for each recipe; frm_Mix holds the mix programme as XML.
CREATE TABLE Formula (
    FormulaID INTEGER PRIMARY KEY AUTOINCREMENT,
    frm_Name TEXT(100) COLLATE NOCASE,
    frm_Desc TEXT(255) COLLATE NOCASE,
    frm_Strength TEXT(40) COLLATE NOCASE,
    frm_Units TEXT(20) COLLATE NOCASE,
    frm_Instructions LONGTEXT,
    frm_Quantity SMALLINT
        CONSTRAINT frm_Quantity CHECK (typeof(frm_Quantity) IN ('integer', 'null') AND frm_Quantity BETWEEN -32768 AND 32767),
    frm_JarSize SMALLINT
        CONSTRAINT frm_JarSize CHECK (typeof(frm_JarSize) IN ('integer', 'null') AND frm_JarSize BETWEEN -32768 AND 32767),
    frm_FormType SMALLINT
        CONSTRAINT frm_FormType CHECK (typeof(frm_FormType) IN ('integer', 'null') AND frm_FormType BETWEEN -32768 AND 32767),
    frm_AWP CURRENCY
        CONSTRAINT frm_AWP CHECK (typeof(frm_AWP) <> 'text' AND abs(round(frm_AWP, 4) - frm_AWP) < 0.00001),
    frm_NDC TEXT(30) COLLATE NOCASE,
    frm_GUID TEXT(40) COLLATE NOCASE,
    frm_Mix LONGTEXT
);

-- The ingredient lines of a formula. A chemical in use can't be deleted.
CREATE TABLE FormChem (
    FormChemID INTEGER PRIMARY KEY AUTOINCREMENT,
    FormulaID INTEGER NOT NULL REFERENCES Formula (FormulaID)
        CONSTRAINT FormulaID CHECK (typeof(FormulaID) IN ('integer', 'null')),
    ChemicalID INTEGER NOT NULL REFERENCES Chemical (ChemicalID)
        CONSTRAINT ChemicalID CHECK (typeof(ChemicalID) IN ('integer', 'null')),
    fch_Qty DOUBLE
        CONSTRAINT fch_Qty CHECK (typeof(fch_Qty) IN ('real', 'null')),
    fch_QS YESNO NOT NULL DEFAULT 0
        CONSTRAINT fch_QS CHECK (fch_QS IN (0, 1)),
    fch_Active YESNO NOT NULL DEFAULT 0
        CONSTRAINT fch_Active CHECK (fch_Active IN (0, 1))
);

-- One row for each batch made, with copies of the formula's texts. FormulaID is a hint only.
CREATE TABLE Log (
    LogID INTEGER PRIMARY KEY AUTOINCREMENT,
    FormulaID INTEGER
        CONSTRAINT FormulaID CHECK (typeof(FormulaID) IN ('integer', 'null')),
    log_Name TEXT(100) COLLATE NOCASE,
    log_Strength TEXT(40) COLLATE NOCASE,
    log_Desc TEXT(255) COLLATE NOCASE,
    log_Units TEXT(20) COLLATE NOCASE,
    log_FormType SMALLINT
        CONSTRAINT log_FormType CHECK (typeof(log_FormType) IN ('integer', 'null') AND log_FormType BETWEEN -32768 AND 32767),
    log_Quantity SMALLINT
        CONSTRAINT log_Quantity CHECK (typeof(log_Quantity) IN ('integer', 'null') AND log_Quantity BETWEEN -32768 AND 32767),
    log_JarSize SMALLINT
        CONSTRAINT log_JarSize CHECK (typeof(log_JarSize) IN ('integer', 'null') AND log_JarSize BETWEEN -32768 AND 32767),
    log_NDC TEXT(30) COLLATE NOCASE,
    log_Date DATETIME
        CONSTRAINT log_Date CHECK (datetime(log_Date) IS log_Date),
    log_Lot TEXT(40) COLLATE NOCASE,
    log_Initials TEXT(20) COLLATE NOCASE,
    log_Verified TEXT(20) COLLATE NOCASE,
    log_Results LONGTEXT,
    log_Version TEXT(40) COLLATE NOCASE,
    log_AWP CURRENCY
        CONSTRAINT log_AWP CHECK (typeof(log_AWP) <> 'text' AND abs(round(log_AWP, 4) - log_AWP) < 0.00001),
    log_Cost CURRENCY
        CONSTRAINT log_Cost CHECK (typeof(log_Cost) <> 'text' AND abs(round(log_Cost, 4) - log_Cost) < 0.00001),
    log_Notes LONGTEXT,
    log_Mix LONGTEXT
);

-- The frozen ingredient lines of a batch; they go with it. ChemicalID is a hint only.
CREATE TABLE LogChem (
    LogChemID INTEGER PRIMARY KEY AUTOINCREMENT,
    LogID INTEGER NOT NULL REFERENCES Log (LogID) ON DELETE CASCADE
        CONSTRAINT LogID CHECK (typeof(LogID) IN ('integer', 'null')),
    ChemicalID INTEGER
        CONSTRAINT ChemicalID CHECK (typeof(ChemicalID) IN ('integer', 'null')),
    lch_Name TEXT(100) COLLATE NOCASE,
    lch_Units TEXT(20) COLLATE NOCASE,
    lch_Lot TEXT(40) COLLATE NOCASE,
    lch_NDC TEXT(30) COLLATE NOCASE,
    lch_Cost CURRENCY
        CONSTRAINT lch_Cost CHECK (typeof(lch_Cost) <> 'text' AND abs(round(lch_Cost, 4) - lch_Cost) < 0.00001),
    lch_AWP CURRENCY
        CONSTRAINT lch_AWP CHECK (typeof(lch_AWP) <> 'text' AND abs(round(lch_AWP, 4) - lch_AWP) < 0.00001),
    lch_Supplier TEXT(80) COLLATE NOCASE,
    lch_Form TEXT(20) COLLATE NOCASE,
    lch_GUID TEXT(40) COLLATE NOCASE,
    lch_QTY DOUBLE
        CONSTRAINT lch_QTY CHECK (typeof(lch_QTY) IN ('real', 'null'))
);

-- One row for each patient.
CREATE TABLE Patient (
    PatientID INTEGER PRIMARY KEY AUTOINCREMENT,
    pat_FName TEXT(50) COLLATE NOCASE,
    pat_LName TEXT(50) COLLATE NOCASE,
    pat_Address1 TEXT(100) COLLATE NOCASE,
    pat_Address2 TEXT(100) COLLATE NOCASE,
    pat_City TEXT(60) COLLATE NOCASE,
    pat_State TEXT(30) COLLATE NOCASE,
    pat_Zip TEXT(20) COLLATE NOCASE,
    pat_Country TEXT(40) COLLATE NOCASE,
    pat_BDay DATETIME
        CONSTRAINT pat_BDay CHECK (datetime(pat_BDay) IS pat_BDay),
    pat_Phone TEXT(30) COLLATE NOCASE,
    pat_Fax TEXT(30) COLLATE NOCASE,
    pat_Notes LONGTEXT
);

-- One row for each prescription. A batch that was prescribed can't be deleted.
CREATE TABLE RXs (
    RXsID INTEGER PRIMARY KEY AUTOINCREMENT,
    LogID INTEGER NOT NULL REFERENCES Log (LogID)
        CONSTRAINT LogID CHECK (typeof(LogID) IN ('integer', 'null')),
    PatientID INTEGER NOT NULL REFERENCES Patient (PatientID)
        CONSTRAINT PatientID CHECK (typeof(PatientID) IN ('integer', 'null')),
    rxs_Date DATETIME
        CONSTRAINT rxs_Date CHECK (datetime(rxs_Date) IS rxs_Date),
    rxs_QTY DOUBLE
        CONSTRAINT rxs_QTY CHECK (typeof(rxs_QTY) IN ('real', 'null')),
    rxs_Cost CURRENCY
        CONSTRAINT rxs_Cost CHECK (typeof(rxs_Cost) <> 'text' AND abs(round(rxs_Cost, 4) - rxs_Cost) < 0.00001),
    rxs_Price CURRENCY
        CONSTRAINT rxs_Price CHECK (typeof(rxs_Price) <> 'text' AND abs(round(rxs_Price, 4) - rxs_Price) < 0.00001),
    rxs_Consult TEXT(60) COLLATE NOCASE,
    rxs_Doctor TEXT(80) COLLATE NOCASE
);

-- One row: the version of this file.
CREATE TABLE Options (
    opt_Version DOUBLE
        CONSTRAINT opt_Version CHECK (typeof(opt_Version) = 'real')
);
INSERT INTO Options (opt_Version) VALUES (1);

-- Searches look through these instead of through the whole rows; the one of Log gives the newest first.
CREATE INDEX Chemical_Name ON Chemical (chm_Name);
CREATE INDEX Chemical_NDC ON Chemical (chm_NDC);
CREATE INDEX Chemical_Lot ON Chemical (chm_Lot);
CREATE INDEX Formula_Name ON Formula (frm_Name);
CREATE INDEX Formula_NDC ON Formula (frm_NDC);
CREATE INDEX Log_Date ON Log (log_Date, log_Name, log_NDC, log_Lot);
CREATE INDEX Patient_Name ON Patient (pat_LName, pat_FName);
CREATE INDEX Patient_Phone ON Patient (pat_Phone);

-- From a record to the rows that belong to it.
CREATE INDEX FormChem_Formula ON FormChem (FormulaID);
CREATE INDEX FormChem_Chemical ON FormChem (ChemicalID);
CREATE INDEX Log_Formula ON Log (FormulaID, log_Date);
CREATE INDEX LogChem_Log ON LogChem (LogID);
CREATE INDEX RXs_Patient ON RXs (PatientID, rxs_Date);
CREATE INDEX RXs_Log ON RXs (LogID);
