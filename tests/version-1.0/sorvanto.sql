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
-- A sample pharmacy: believable stock, recipes, batches, patients and prescriptions. All names of suppliers,
-- people and stores are invented. Runs on an empty file made by schema.sql.
--
-- Costs and AWP are per unit. Quantities of a formula's lines add up to its base batch.

INSERT INTO Chemical (ChemicalID, chm_Name, chm_Units, chm_Lot, chm_NDC, chm_Cost, chm_AWP, chm_Form, chm_Supplier, chm_Notes) VALUES
    ( 1, 'Hydrocortisone Micronized', 'GMS', 'HC24118',  '00000-2101-25', 2.85,   6.90,   'PWD',   'Northfield', 'Levigate with glycerin first.'),
    ( 2, 'Glycerin',                  'MLS', 'GL0093',   '00000-1140-48', 0.018,  0.045,  'LIQU',  'Harbor', ''),
    ( 3, 'Vanishing Cream Base',      'GMS', 'VB5512',   '00000-3302-16', 0.0202, 0.0425, 'CRM',   'Larkspur', 'Oil in water, pH 5.5'),
    ( 4, 'Ketoprofen',                'GMS', 'KP7741',   '00000-2207-10', 0.92,   2.30,   'PWD',   'Northfield', ''),
    ( 5, 'Lecithin Isopropyl Palmitate', 'MLS', 'LIP331', '00000-3310-08', 0.11,  0.28,   'SOLN',  'Larkspur', 'Protect from light; do not refrigerate.'),
    ( 6, 'Poloxamer 407 20% Gel',     'GMS', 'PX2040',   '00000-3311-16', 0.045,  0.12,   'GEL',   'Larkspur', 'Liquid when cold. Keep refrigerated.'),
    ( 7, 'Diclofenac Sodium',         'GMS', 'DS1019',   '00000-2210-10', 1.15,   2.95,   'PWD',   'Quill & Co.', ''),
    ( 8, 'Baclofen',                  'GMS', 'BC0467',   '00000-2215-05', 6.40,   15.80,  'PWD',   'Quill & Co.', ''),
    ( 9, 'Lidocaine',                 'GMS', 'LD8823',   '00000-2140-25', 0.78,   1.95,   'CRYS',  'Northfield', 'Forms a eutectic mixture with prilocaine.'),
    (10, 'Zinc Oxide',                'GMS', 'ZO1177',   '00000-1505-16', 0.024,  0.06,   'PWD',   'Harbor', 'Sieve before use.'),
    (11, 'Corn Starch',               'GMS', 'CS4410',   '00000-1510-16', 0.012,  0.03,   'PWD',   'Harbor', ''),
    (12, 'White Petrolatum',          'GMS', 'WP9034',   '00000-1601-35', 0.0095, 0.024,  'UNG',   'Harbor', ''),
    (13, 'Benzoic Acid',              'GMS', 'BA2281',   '00000-1522-16', 0.055,  0.14,   'CRYS',  'Northfield', ''),
    (14, 'Salicylic Acid',            'GMS', 'SA3390',   '00000-1524-16', 0.061,  0.155,  'PWD',   'Northfield', 'Irritating dust: use the hood.'),
    (15, 'Polyethylene Glycol Ointment', 'GMS', 'PEG771', '00000-1610-16', 0.031, 0.075,  'UNG',   'Larkspur', 'Water soluble base'),
    (16, 'Diphenhydramine 12.5 mg/5 mL', 'MLS', 'DP6650', '00000-4102-16', 0.014, 0.036,  'SOLN',  'Harbor', 'Alcohol free'),
    (17, 'Lidocaine Viscous 2%',      'MLS', 'LV2107',   '00000-4110-10', 0.062,  0.16,   'SOLN',  'Harbor', ''),
    (18, 'Antacid Suspension',        'MLS', 'AN3008',   '00000-4120-12', 0.011,  0.028,  'SUSP',  'Harbor', 'Shake well.'),
    (19, 'Omeprazole',                'GMS', 'OM1502',   '00000-2301-05', 4.10,   10.40,  'PWD',   'Quill & Co.', 'Degrades in acid.'),
    (20, 'Sodium Bicarbonate',        'GMS', 'SB7010',   '00000-1530-16', 0.0125, 0.032,  'PWD',   'Harbor', ''),
    (21, 'Purified Water',            'MLS', 'PW1126',   '00000-1001-01', 0.0015, 0.004,  'LIQU',  'In-house', ''),
    (22, 'Metronidazole Benzoate',    'GMS', 'MB5528',   '00000-2306-25', 0.66,   1.70,   'PWD',   'Quill & Co.', '1 g of base = 1.6 g of benzoate.'),
    (23, 'Suspending Vehicle',        'MLS', 'SV0812',   '00000-3401-16', 0.034,  0.088,  'SUSP',  'Larkspur', 'Sugar free, pH 4.2'),
    (24, 'Sweetening Syrup',          'MLS', 'SS0813',   '00000-3402-16', 0.031,  0.082,  'LIQU',  'Larkspur', ''),
    (25, 'Progesterone Micronized',   'GMS', 'PG4471',   '00000-2401-25', 1.95,   4.90,   'PWD',   'Ashdown', 'Wettable grade'),
    (26, 'Propylene Glycol',          'MLS', 'PRG209',   '00000-1150-16', 0.021,  0.054,  'LIQU',  'Harbor', ''),
    (27, 'Estriol Micronized',        'GMS', 'ET1190',   '00000-2405-05', 9.80,   24.50,  'PWD',   'Ashdown', ''),
    (28, 'Estradiol Hemihydrate',     'GMS', 'ED0655',   '00000-2406-05', 12.40,  31.00,  'PWD',   'Ashdown', ''),
    (29, 'Testosterone Micronized',   'GMS', 'TS3021',   '00000-2410-10', 3.60,   9.20,   'PWD',   'Ashdown', 'Controlled: count on receipt.'),
    (30, 'Alcohol 95%',               'MLS', 'AL9500',   '00000-1105-16', 0.027,  0.068,  'LIQU',  'Harbor', 'Flammable'),
    (31, 'Carbomer 940',              'GMS', 'CB2240',   '00000-3120-04', 0.19,   0.48,   'PWD',   'Larkspur', 'Sprinkle slowly, let it hydrate.'),
    (32, 'Urea',                      'GMS', 'UR5560',   '00000-1540-16', 0.028,  0.07,   'CRYS',  'Northfield', ''),
    (33, 'Coal Tar Solution',         'MLS', 'CT1288',   '00000-1620-16', 0.085,  0.21,   'SOLN',  'Harbor', 'Stains.'),
    (34, 'Hydroquinone',              'GMS', 'HQ7719',   '00000-2501-10', 0.74,   1.85,   'CRYS',  'Northfield', 'Oxidises: add sodium metabisulfite.'),
    (35, 'Tretinoin',                 'GMS', 'TR0092',   '00000-2502-01', 38.50,  96.25,  'PWD',   'Quill & Co.', 'Protect from light.'),
    (36, 'Sodium Metabisulfite',      'GMS', 'SM3316',   '00000-1550-16', 0.036,  0.09,   'PWD',   'Northfield', ''),
    (37, 'Nifedipine',                'GMS', 'NF4402',   '00000-2601-05', 5.20,   13.00,  'PWD',   'Quill & Co.', 'Work under subdued light.'),
    (38, 'Sildenafil Citrate',        'GMS', 'SC6677',   '00000-2605-05', 7.30,   18.25,  'PWD',   'Quill & Co.', '1 g of base = 1.405 g of citrate.'),
    (39, 'Capsaicin',                 'GMS', 'CP0011',   '00000-2610-01', 21.00,  52.50,  'CRYS',  'Northfield', 'Mask and gloves.'),
    (40, 'Tacrolimus',                'GMS', 'TC0305',   '00000-2615-01', 182.00, 455.00, 'PWD',   'Quill & Co.', ''),
    (41, 'Naltrexone Hydrochloride',  'GMS', 'NX2019',   '00000-2620-05', 16.20,  40.50,  'PWD',   'Quill & Co.', ''),
    (42, 'Cetyl Esters Wax',          'GMS', 'CE8105',   '00000-1630-16', 0.072,  0.18,   'FLAKE', 'Larkspur', ''),
    (43, 'White Wax',                 'GMS', 'WW4407',   '00000-1631-16', 0.058,  0.145,  'SOLID', 'Larkspur', ''),
    (44, 'Mineral Oil',               'GMS', 'MO2230',   '00000-1632-32', 0.013,  0.033,  'LIQU',  'Harbor', ''),
    (45, 'Sodium Borate',             'GMS', 'BO1014',   '00000-1560-16', 0.03,   0.075,  'CRYS',  'Northfield', ''),
    (46, 'Crème Mère O''Leary',       'GMS', 'CMO 17/4', '00000-3350-16', 0.064,  0.16,   'CRM',   'Évrard SA', 'Base de crème émolliente');

INSERT INTO Formula (FormulaID, frm_Name, frm_Desc, frm_Strength, frm_Units, frm_Quantity, frm_JarSize, frm_FormType, frm_NDC, frm_Instructions) VALUES
    ( 1, 'Hydrocortisone 1% Cream', 'Topical corticosteroid in vanishing base', '1 %', 'GMS', 100, 5, 9, '00000-0101-10',
      'Levigate the powder with a little glycerin. Add half of the base, mix, scrape the jar, add the rest.'),
    ( 2, 'Ketoprofen 10% Gel', 'Topical anti-inflammatory', '10 %', 'GMS', 100, 5, 9, '00000-0102-10',
      'Wet the ketoprofen with the lecithin solution until smooth, then add the cold gel.'),
    ( 3, 'Triple Relief Gel', 'Diclofenac, baclofen and lidocaine in transdermal gel', '3/2/5 %', 'GMS', 100, 5, 9, '00000-0103-10',
      'Triturate the powders together, wet with the lecithin solution, add the cold gel.'),
    ( 4, 'Lassar''s Zinc Paste', 'Protective paste', '25 %', 'GMS', 200, 6, 6, '00000-0104-20',
      'Sieve zinc oxide and starch. Melt the petrolatum and let it cool to 40 degrees before mixing.'),
    ( 5, 'Whitfield''s Ointment', 'Benzoic and salicylic acid ointment', '6 % / 3 %', 'GMS', 50, 4, 2, '00000-0105-05',
      'Reduce both acids to a fine powder. Mix under the hood.'),
    ( 6, 'Magic Mouthwash', 'Swish and spit, equal parts', '1:1:1', 'MLS', 240, 7, 5, '00000-0106-24',
      'Measure each part, add the antacid last. Shake well. Good for 14 days.'),
    ( 7, 'Omeprazole 2 mg/mL Suspension', 'Oral suspension in bicarbonate', '2 mg/mL', 'MLS', 100, 5, 5, '00000-0107-10',
      'Dissolve the bicarbonate in most of the water, add the omeprazole, bring to volume. Refrigerate.'),
    ( 8, 'Metronidazole 50 mg/mL Suspension', 'Oral suspension, tasteless ester', '50 mg/mL', 'MLS', 100, 5, 5, '00000-0108-10',
      'Wet the powder with glycerin to a smooth paste. Protect from light.'),
    ( 9, 'Progesterone 10% Cream', 'Transdermal hormone cream', '100 mg/g', 'GMS', 30, 3, 9, '00000-0109-03',
      'Wet the progesterone with the propylene glycol.'),
    (10, 'Estriol & Estradiol Cream', 'Transdermal hormone cream, 80:20', '2.5 mg/g', 'GMS', 30, 3, 9, '00000-0110-03',
      'Triturate the hormones geometrically. Use a dedicated jar.'),
    (11, 'Testosterone 2% Gel', 'Hydroalcoholic gel', '20 mg/g', 'GMS', 50, 4, 3, '00000-0111-05',
      'Dissolve the testosterone in the alcohol. Sprinkle the carbomer on the water, let it hydrate, combine.'),
    (12, 'Urea 20% & Salicylic Acid 6% Cream', 'Keratolytic cream', '20 % / 6 %', 'GMS', 100, 5, 1, '00000-0112-10',
      'Dissolve the urea in the water before adding it to the base.'),
    (13, 'Crème à l''Urée 10%', 'Crème émolliente, peau très sèche', '10 %', 'GMS', 200, 6, 1, '00000-0113-20',
      'Dissoudre l''urée dans l''eau, incorporer à la crème. Étiqueter « usage externe ».'),
    (14, 'Coal Tar 5% Ointment', 'For plaque psoriasis', '5 %', 'GMS', 100, 5, 2, '00000-0114-10',
      'Add the solution in portions. The jar stains.'),
    (15, 'Hydroquinone 4% Tretinoin 0.05% Cream', 'Depigmenting cream', '4 % / 0.05 % / 1 %', 'GMS', 30, 3, 9, '00000-0115-03',
      'Dissolve the metabisulfite in the glycerin. Work under subdued light. Good for 30 days.'),
    (16, 'Nifedipine 0.3% Lidocaine 1.5% Ointment', 'Rectal ointment', '0.3 % / 1.5 %', 'GMS', 30, 3, 2, '00000-0116-03',
      'Levigate with propylene glycol under subdued light.'),
    (17, 'Sildenafil Suspension', 'Oral suspension for children', '2.5 mg/mL', 'MLS', 100, 5, 5, '00000-0117-10',
      'Triturate with a little of the vehicle, then equal parts of vehicle and syrup. Shake well.'),
    (18, 'Capsaicin 0.075% Cream', 'Topical analgesic', '0.075 %', 'GMS', 50, 4, 1, '00000-0118-05',
      'Dissolve the capsaicin in the alcohol. Mask and gloves.'),
    (19, 'Tacrolimus 0.1% Ointment', 'For atopic dermatitis', '0.1 %', 'GMS', 30, 3, 9, '00000-0119-03',
      'Levigate with mineral oil, then geometric dilution.'),
    (20, 'Naltrexone Suspension', 'Low dose oral suspension', '1 mg/mL', 'MLS', 50, 4, 5, '00000-0120-05',
      'Dissolve in the water, bring to volume with the vehicle.'),
    (21, 'Cold Cream, Sixteen Steps', 'Slow cooling programme for a fine emulsion', '', 'GMS', 100, 5, 9, '00000-0121-10',
      'Melt the waxes and the oil at 70 degrees, dissolve the borate in water of the same temperature, combine and start at once.'),
    (22, 'Teething Gel (in development)', 'Recipe not settled yet', '', 'GMS', 30, 3, 3, '', '');

-- Formula, chemical, quantity, quantum satis, active.
INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty, fch_QS, fch_Active) VALUES
    ( 1,  1, 1,     0, 1), ( 1,  2, 2,    0, 0), ( 1,  3, 97,   1, 0),
    ( 2,  4, 10,    0, 1), ( 2,  5, 22,   0, 0), ( 2,  6, 68,   1, 0),
    ( 3,  7, 3,     0, 1), ( 3,  8, 2,    0, 1), ( 3,  9, 5,    0, 1), ( 3,  5, 22,   0, 0), ( 3,  6, 68,  1, 0),
    ( 4, 10, 50,    0, 1), ( 4, 11, 50,   0, 0), ( 4, 12, 100,  1, 0),
    ( 5, 13, 3,     0, 1), ( 5, 14, 1.5,  0, 1), ( 5, 15, 45.5, 1, 0),
    ( 6, 16, 80,    0, 1), ( 6, 17, 80,   0, 1), ( 6, 18, 80,   0, 1),
    ( 7, 19, 0.2,   0, 1), ( 7, 20, 8.4,  0, 0), ( 7, 21, 91.4, 1, 0),
    ( 8, 22, 8,     0, 1), ( 8,  2, 5,    0, 0), ( 8, 23, 87,   1, 0),
    ( 9, 25, 3,     0, 1), ( 9, 26, 1.5,  0, 0), ( 9,  3, 25.5, 1, 0),
    (10, 27, 0.06,  0, 1), (10, 28, 0.015, 0, 1), (10, 26, 1.5,  0, 0), (10,  3, 28.425, 1, 0),
    (11, 29, 1,     0, 1), (11, 30, 33,   0, 0), (11, 31, 0.5,  0, 0), (11, 21, 15.5, 1, 0),
    (12, 32, 20,    0, 1), (12, 14, 6,    0, 1), (12, 21, 14,   0, 0), (12,  3, 60,   1, 0),
    (13, 32, 20,    0, 1), (13, 21, 20,   0, 0), (13, 46, 160,  1, 0),
    (14, 33, 5,     0, 1), (14, 12, 95,   1, 0),
    (15, 34, 1.2,   0, 1), (15, 35, 0.015, 0, 1), (15,  1, 0.3,  0, 1), (15, 36, 0.06, 0, 0), (15,  2, 1.5, 0, 0), (15,  3, 26.925, 1, 0),
    (16, 37, 0.09,  0, 1), (16,  9, 0.45, 0, 1), (16, 26, 0.9,  0, 0), (16, 12, 28.56, 1, 0),
    (17, 38, 0.351, 0, 1), (17, 23, 49.649, 0, 0), (17, 24, 50,  1, 0),
    (18, 39, 0.0375, 0, 1), (18, 30, 1,   0, 0), (18,  3, 48.9625, 1, 0),
    (19, 40, 0.03,  0, 1), (19, 44, 0.6,  0, 0), (19, 12, 29.37, 1, 0),
    (20, 41, 0.05,  0, 1), (20, 21, 9.95, 0, 0), (20, 23, 40,   1, 0),
    (21, 42, 12.5,  0, 0), (21, 43, 12,   0, 0), (21, 44, 56,   0, 1), (21, 45, 0.5,  0, 0), (21, 21, 19,  0, 0);

-- Mix programmes: none but the two settings for a preset, steps for the custom type.
UPDATE Formula SET frm_Mix = '<CustomMix PreGrind="0" FreeSpin="1"/>';
UPDATE Formula SET frm_Mix = '<CustomMix PreGrind="1" FreeSpin="2">'
    || '<Mix LiftRPM="1200" MixRPM="600" MixTime="00:00:30" Cycles="0"/>'
    || '<Mix LiftRPM="1200" MixRPM="1200" MixTime="00:01:30" Cycles="0"/>'
    || '<Mix LiftRPM="960" MixRPM="1800" MixTime="00:02:00" Cycles="0"/></CustomMix>'
    WHERE FormulaID = 1;
UPDATE Formula SET frm_Mix = '<CustomMix PreGrind="2" FreeSpin="1">'
    || '<Mix LiftRPM="1200" MixRPM="1200" MixTime="00:00:00" Cycles="6"/>'
    || '<Mix LiftRPM="1440" MixRPM="2004" MixTime="00:03:00" Cycles="0"/></CustomMix>'
    WHERE FormulaID IN (2, 3);
UPDATE Formula SET frm_Mix = '<CustomMix PreGrind="4" FreeSpin="2">'
    || '<Mix LiftRPM="720" MixRPM="900" MixTime="00:01:00" Cycles="0"/>'
    || '<Mix LiftRPM="1200" MixRPM="1800" MixTime="00:02:30" Cycles="0"/>'
    || '<Mix LiftRPM="1200" MixRPM="2400" MixTime="00:00:00" Cycles="12"/></CustomMix>'
    WHERE FormulaID IN (9, 10, 15, 19);
UPDATE Formula SET frm_Mix = '<CustomMix PreGrind="0" FreeSpin="4">'
    || '<Mix LiftRPM="480" MixRPM="300" MixTime="00:00:10" Cycles="0"/>'
    || '<Mix LiftRPM="600" MixRPM="600" MixTime="00:00:20" Cycles="0"/>'
    || '<Mix LiftRPM="720" MixRPM="900" MixTime="00:00:30" Cycles="0"/>'
    || '<Mix LiftRPM="960" MixRPM="1200" MixTime="00:01:00" Cycles="0"/>'
    || '<Mix LiftRPM="1200" MixRPM="1500" MixTime="00:01:30" Cycles="0"/>'
    || '<Mix LiftRPM="1200" MixRPM="1800" MixTime="00:02:00" Cycles="0"/>'
    || '<Mix LiftRPM="1200" MixRPM="2100" MixTime="00:02:00" Cycles="0"/>'
    || '<Mix LiftRPM="1200" MixRPM="2292" MixTime="00:01:00" Cycles="0"/>'
    || '<Mix LiftRPM="960" MixRPM="1800" MixTime="00:02:00" Cycles="0"/>'
    || '<Mix LiftRPM="960" MixRPM="1500" MixTime="00:02:00" Cycles="0"/>'
    || '<Mix LiftRPM="720" MixRPM="1200" MixTime="00:02:30" Cycles="0"/>'
    || '<Mix LiftRPM="720" MixRPM="900" MixTime="00:03:00" Cycles="0"/>'
    || '<Mix LiftRPM="480" MixRPM="600" MixTime="00:03:00" Cycles="0"/>'
    || '<Mix LiftRPM="480" MixRPM="480" MixTime="00:00:00" Cycles="8"/>'
    || '<Mix LiftRPM="240" MixRPM="300" MixTime="00:00:00" Cycles="4"/>'
    || '<Mix LiftRPM="240" MixRPM="120" MixTime="00:00:00" Cycles="2"/></CustomMix>'
    WHERE FormulaID = 21;

-- Identity texts of the form that the program makes.
UPDATE Chemical SET chm_GUID = printf('%08X-%04X-4%03X-8%03X-%012X', ChemicalID * 2654435761 % 4294967296,
    ChemicalID * 40503 % 65536, ChemicalID * 1103 % 4096, ChemicalID * 2011 % 4096, ChemicalID * 11400714819323 % 281474976710656);
UPDATE Formula SET frm_GUID = printf('%08X-%04X-4%03X-9%03X-%012X', FormulaID * 2246822519 % 4294967296,
    FormulaID * 60493 % 65536, FormulaID * 3301 % 4096, FormulaID * 1733 % 4096, FormulaID * 14029467366897 % 281474976710656);

UPDATE Formula SET frm_AWP = (
    SELECT round(coalesce(sum(chm_AWP * fch_Qty), 0), 4)
    FROM FormChem JOIN Chemical USING (ChemicalID) WHERE FormChem.FormulaID = Formula.FormulaID);

-- Batches: key, formula, quantity, date, compounder, verifier, preparation number, notes.
CREATE TEMP TABLE Batch (id, formula, quantity, made, initials, verified, preparation, notes);
INSERT INTO Batch VALUES
    ( 1,  1, 100, '2026-08-31 09:12:40', 'MR', 'JT', 1, ''),
    ( 2,  6, 240, '2026-08-31 10:05:11', 'MR', 'JT', 2, ''),
    ( 3,  2,  60, '2026-09-03 14:41:09', 'AK', 'MR', 3, 'First jar leaked at the lid, remade.'),
    ( 4, 10,  30, '2026-09-08 11:20:55', 'AK', 'JT', 4, ''),
    ( 5, 13, 400, '2026-09-15 08:58:02', 'JT', 'MR', 5, 'Étiquette bilingue'),
    ( 6,  3, 120, '2026-09-21 16:30:47', 'MR', 'AK', 6, ''),
    ( 7, 17, 100, '2026-10-02 13:15:30', 'AK', 'JT', 7, 'Flavor: cherry'),
    ( 8,  1,  50, '2026-10-09 09:47:18', 'MR', 'JT', 8, ''),
    ( 9, 21, 100, '2026-10-14 15:03:26', 'JT', 'AK', 9, ''),
    (10,  5,  50, '2026-10-22 10:33:51', 'AK', 'MR', 10, ''),
    (11, 20,  50, '2026-11-05 12:08:14', 'MR', 'JT', 11, ''),
    (12,  2, 100, '2026-11-12 17:22:36', 'AK', 'JT', 12, '');

CREATE TEMP TABLE Jar (code, largest, name);
INSERT INTO Jar VALUES (1, 15, '15 ml'), (2, 20, '20 ml'), (3, 30, '30 ml'), (4, 50, '50 ml'), (5, 100, '100 ml'),
    (6, 200, '200 ml'), (7, 300, '300 ml'), (8, 500, '500 ml'), (9, 1000, '1000 ml');

CREATE TEMP TABLE MixType (code, name);
INSERT INTO MixType VALUES (1, 'Cream'), (2, 'Ointment'), (3, 'Gel'), (4, 'Lotion'), (5, 'Suspension'), (6, 'Paste'),
    (7, 'Powder Blend'), (8, 'Suppository Base'), (9, 'Custom');

INSERT INTO Log (LogID, FormulaID, log_Name, log_Strength, log_Desc, log_Units, log_FormType, log_Quantity, log_JarSize, log_NDC,
                 log_Date, log_Lot, log_Initials, log_Verified, log_Results, log_Version, log_AWP, log_Cost, log_Notes, log_Mix)
SELECT id, FormulaID, frm_Name, frm_Strength, frm_Desc, frm_Units, frm_FormType, quantity,
       (SELECT min(code) FROM Jar WHERE quantity <= largest), frm_NDC,
       made, printf('SV26%04d', preparation), initials, verified,
       printf('<Results Value="SV26"><Size Value="%s"/><Type Value="%s"/><LiftingCycles Value="%d"/><Interuption Value="A"/>'
              || '<PreGrind Value="%d"/><PreparationNumber Value="%04d"/><TotalMixingRevolutions Value="%d"/>'
              || '<HardwareVersion Value="2.1"/></Results>',
              (SELECT name FROM Jar WHERE quantity <= largest ORDER BY code LIMIT 1),
              (SELECT MixType.name FROM MixType WHERE MixType.code = frm_FormType),
              18 + 2 * preparation, CASE frm_FormType WHEN 9 THEN 2 ELSE 0 END, preparation, 4100 + 370 * preparation),
       '2.1', round(frm_AWP * quantity / frm_Quantity, 4),
       (SELECT round(sum(chm_Cost * fch_Qty) * quantity / frm_Quantity, 4)
        FROM FormChem JOIN Chemical USING (ChemicalID) WHERE FormChem.FormulaID = Formula.FormulaID),
       notes, frm_Mix
FROM Batch JOIN Formula ON FormulaID = formula;

-- The lines as they were: quantity to three decimals, price of the line to two.
INSERT INTO LogChem (LogID, ChemicalID, lch_Name, lch_Units, lch_Lot, lch_NDC, lch_Cost, lch_AWP, lch_Supplier, lch_Form, lch_GUID, lch_QTY)
SELECT id, ChemicalID, chm_Name, chm_Units, chm_Lot, chm_NDC,
       round(round(fch_Qty * quantity / frm_Quantity, 3) * chm_Cost, 2),
       round(round(fch_Qty * quantity / frm_Quantity, 3) * chm_AWP, 2),
       chm_Supplier, chm_Form, chm_GUID, round(fch_Qty * quantity / frm_Quantity, 3)
FROM Batch JOIN Formula ON Formula.FormulaID = formula
           JOIN FormChem ON FormChem.FormulaID = formula
           JOIN Chemical USING (ChemicalID)
ORDER BY id, FormChemID;

INSERT INTO Patient (PatientID, pat_FName, pat_LName, pat_Address1, pat_Address2, pat_City, pat_State, pat_Zip, pat_Country,
                     pat_BDay, pat_Phone, pat_Fax, pat_Notes) VALUES
    (1, 'Margaret', 'Abernathy', '14 Orchard Lane', '',        'Millbrook',  'OH', '44017', 'USA', '1951-03-07 00:00:00', '440-555-0117', '', 'Allergic to lanolin'),
    (2, 'Seán',     'O''Brien',  '208 Quarry Road', 'Apt. 3B', 'Millbrook',  'OH', '44017', 'USA', '1980-10-31 00:00:00', '440-555-0142', '', ''),
    (3, 'Lucía',    'Nuñez',     '77 Elm Street',   '',        'Fairhaven',  'OH', '44118', 'USA', '2019-06-15 00:00:00', '440-555-0163', '440-555-0164', 'Weight 18 kg. Mother picks up.'),
    (4, 'Walter',   'Katz',      '5 Station Square', '',       'Millbrook',  'OH', '44018', 'USA', '1944-12-01 00:00:00', '440-555-0175', '', ''),
    (5, 'Élodie',   'Tremblay',  '1120 rue du Port', '',       'Saint-Paul', 'QC', 'G0X 1A0', 'Canada', NULL,          '418-555-0109', '', 'Étiquettes en français'),
    (6, 'Jin',      'Xu',        '39 Harbor View',  'Unit 12', 'Fairhaven',  'OH', '44118', 'USA', '1992-02-29 00:00:00', '440-555-0188', '', '');

-- Prescriptions carry the figures of the batch: its AWP as cost, its cost as price.
INSERT INTO RXs (LogID, PatientID, rxs_Date, rxs_QTY, rxs_Cost, rxs_Price, rxs_Consult, rxs_Doctor)
SELECT batch, patient, day, log_Quantity, log_AWP, log_Cost, consult, doctor
FROM (SELECT 1 AS batch, 1 AS patient, '2026-08-31 00:00:00' AS day, 'Consult' AS consult, 'Dr. Helen Marsh' AS doctor
      UNION ALL SELECT 2, 4, '2026-08-31 00:00:00', NULL, 'Dr. P. Okafor'
      UNION ALL SELECT 4, 1, '2026-09-08 00:00:00', 'Consult', 'Dr. Helen Marsh'
      UNION ALL SELECT 5, 5, '2026-09-15 00:00:00', NULL, 'Dre Anne L''Écuyer'
      UNION ALL SELECT 6, 2, '2026-09-22 00:00:00', NULL, 'Dr. P. Okafor'
      UNION ALL SELECT 7, 3, '2026-10-02 00:00:00', 'Consult with mother', 'Dr. S. Brandt'
      UNION ALL SELECT 8, 1, '2026-10-09 00:00:00', NULL, 'Dr. Helen Marsh'
      UNION ALL SELECT 11, 6, '2026-11-05 00:00:00', NULL, 'Dr. S. Brandt')
JOIN Log ON LogID = batch;

DROP TABLE Batch;
DROP TABLE Jar;
DROP TABLE MixType;
