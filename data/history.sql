-- Version 1.2 of a file: every change of every record is kept, in the same transaction as the change, also one made by
-- another program. dbupdate.xml does the same to an older file. Only the engine's own functions are used here;
-- the program adds who it was and the seal (see docs/database.md).
--
-- hst_When is UTC, hst_Zone the minutes that the computer's clock was ahead of it. hst_Record is the key of the
-- record that a line belongs to (formula, batch, patient), else the row's own. hst_Fields holds each field of a row
-- that was made or deleted as name=value, and of a change those that changed as name=before>after, joined by commas, with values as
-- the engine quotes them.
CREATE TABLE History (
    HistoryID INTEGER PRIMARY KEY AUTOINCREMENT,
    hst_When TEXT(23) NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M:%f', 'now')),
    hst_Zone INTEGER NOT NULL DEFAULT ((strftime('%s', 'now', 'localtime') - strftime('%s', 'now')) / 60),
    hst_Table TEXT(40) NOT NULL,
    hst_Key INTEGER NOT NULL,
    hst_Record INTEGER NOT NULL,
    hst_What TEXT(20) NOT NULL,
    hst_Person TEXT(100),
    hst_Program TEXT(40),
    hst_Deed TEXT(20),
    hst_Note TEXT(200),
    hst_Digest BLOB,
    hst_Seal BLOB,
    hst_Salt BLOB DEFAULT (randomblob(16)),
    hst_Name TEXT(100),
    hst_Fields LONGTEXT
);
INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_What, hst_Fields)
    SELECT '', 0, 0, 'begun', coalesce(group_concat(name || '=' || seq), '') FROM sqlite_sequence WHERE name <> 'History';
CREATE INDEX History_Record ON History (hst_Table, hst_Record);
CREATE TRIGGER History_Chemical_Made AFTER INSERT ON Chemical
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    VALUES ('Chemical', NEW.ChemicalID, NEW.ChemicalID, NEW.chm_Name, 'made',
        'chm_Name=' || quote(NEW.chm_Name) ||
        ',chm_Units=' || quote(NEW.chm_Units) ||
        ',chm_Lot=' || quote(NEW.chm_Lot) ||
        ',chm_NDC=' || quote(NEW.chm_NDC) ||
        ',chm_Cost=' || quote(NEW.chm_Cost) ||
        ',chm_AWP=' || quote(NEW.chm_AWP) ||
        ',chm_Notes=' || quote(NEW.chm_Notes) ||
        ',chm_Form=' || quote(NEW.chm_Form) ||
        ',chm_GUID=' || quote(NEW.chm_GUID) ||
        ',chm_Supplier=' || quote(NEW.chm_Supplier));
END;
CREATE TRIGGER History_Chemical_Changed AFTER UPDATE ON Chemical
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    SELECT 'Chemical', OLD.ChemicalID, OLD.ChemicalID, NEW.chm_Name, 'changed', substr(fields, 2) FROM (SELECT
        iif(OLD.ChemicalID IS NEW.ChemicalID, '', ',ChemicalID=' || quote(OLD.ChemicalID) || '>' || quote(NEW.ChemicalID)) ||
        iif(OLD.chm_Name COLLATE BINARY IS NEW.chm_Name, '', ',chm_Name=' || quote(OLD.chm_Name) || '>' || quote(NEW.chm_Name)) ||
        iif(OLD.chm_Units COLLATE BINARY IS NEW.chm_Units, '', ',chm_Units=' || quote(OLD.chm_Units) || '>' || quote(NEW.chm_Units)) ||
        iif(OLD.chm_Lot COLLATE BINARY IS NEW.chm_Lot, '', ',chm_Lot=' || quote(OLD.chm_Lot) || '>' || quote(NEW.chm_Lot)) ||
        iif(OLD.chm_NDC COLLATE BINARY IS NEW.chm_NDC, '', ',chm_NDC=' || quote(OLD.chm_NDC) || '>' || quote(NEW.chm_NDC)) ||
        iif(OLD.chm_Cost IS NEW.chm_Cost, '', ',chm_Cost=' || quote(OLD.chm_Cost) || '>' || quote(NEW.chm_Cost)) ||
        iif(OLD.chm_AWP IS NEW.chm_AWP, '', ',chm_AWP=' || quote(OLD.chm_AWP) || '>' || quote(NEW.chm_AWP)) ||
        iif(OLD.chm_Notes IS NEW.chm_Notes, '', ',chm_Notes=' || quote(OLD.chm_Notes) || '>' || quote(NEW.chm_Notes)) ||
        iif(OLD.chm_Form COLLATE BINARY IS NEW.chm_Form, '', ',chm_Form=' || quote(OLD.chm_Form) || '>' || quote(NEW.chm_Form)) ||
        iif(OLD.chm_GUID COLLATE BINARY IS NEW.chm_GUID, '', ',chm_GUID=' || quote(OLD.chm_GUID) || '>' || quote(NEW.chm_GUID)) ||
        iif(OLD.chm_Supplier COLLATE BINARY IS NEW.chm_Supplier, '', ',chm_Supplier=' || quote(OLD.chm_Supplier) || '>' || quote(NEW.chm_Supplier)) AS fields)
    WHERE fields <> '';
END;
CREATE TRIGGER History_Chemical_Deleted AFTER DELETE ON Chemical
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    VALUES ('Chemical', OLD.ChemicalID, OLD.ChemicalID, OLD.chm_Name, 'deleted',
        'chm_Name=' || quote(OLD.chm_Name) ||
        ',chm_Units=' || quote(OLD.chm_Units) ||
        ',chm_Lot=' || quote(OLD.chm_Lot) ||
        ',chm_NDC=' || quote(OLD.chm_NDC) ||
        ',chm_Cost=' || quote(OLD.chm_Cost) ||
        ',chm_AWP=' || quote(OLD.chm_AWP) ||
        ',chm_Notes=' || quote(OLD.chm_Notes) ||
        ',chm_Form=' || quote(OLD.chm_Form) ||
        ',chm_GUID=' || quote(OLD.chm_GUID) ||
        ',chm_Supplier=' || quote(OLD.chm_Supplier));
END;
CREATE TRIGGER History_Formula_Made AFTER INSERT ON Formula
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    VALUES ('Formula', NEW.FormulaID, NEW.FormulaID, NEW.frm_Name, 'made',
        'frm_Name=' || quote(NEW.frm_Name) ||
        ',frm_Desc=' || quote(NEW.frm_Desc) ||
        ',frm_Strength=' || quote(NEW.frm_Strength) ||
        ',frm_Units=' || quote(NEW.frm_Units) ||
        ',frm_Instructions=' || quote(NEW.frm_Instructions) ||
        ',frm_Quantity=' || quote(NEW.frm_Quantity) ||
        ',frm_JarSize=' || quote(NEW.frm_JarSize) ||
        ',frm_FormType=' || quote(NEW.frm_FormType) ||
        ',frm_AWP=' || quote(NEW.frm_AWP) ||
        ',frm_NDC=' || quote(NEW.frm_NDC) ||
        ',frm_GUID=' || quote(NEW.frm_GUID) ||
        ',frm_Mix=' || quote(NEW.frm_Mix));
END;
CREATE TRIGGER History_Formula_Changed AFTER UPDATE ON Formula
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    SELECT 'Formula', OLD.FormulaID, OLD.FormulaID, NEW.frm_Name, 'changed', substr(fields, 2) FROM (SELECT
        iif(OLD.FormulaID IS NEW.FormulaID, '', ',FormulaID=' || quote(OLD.FormulaID) || '>' || quote(NEW.FormulaID)) ||
        iif(OLD.frm_Name COLLATE BINARY IS NEW.frm_Name, '', ',frm_Name=' || quote(OLD.frm_Name) || '>' || quote(NEW.frm_Name)) ||
        iif(OLD.frm_Desc COLLATE BINARY IS NEW.frm_Desc, '', ',frm_Desc=' || quote(OLD.frm_Desc) || '>' || quote(NEW.frm_Desc)) ||
        iif(OLD.frm_Strength COLLATE BINARY IS NEW.frm_Strength, '', ',frm_Strength=' || quote(OLD.frm_Strength) || '>' || quote(NEW.frm_Strength)) ||
        iif(OLD.frm_Units COLLATE BINARY IS NEW.frm_Units, '', ',frm_Units=' || quote(OLD.frm_Units) || '>' || quote(NEW.frm_Units)) ||
        iif(OLD.frm_Instructions IS NEW.frm_Instructions, '', ',frm_Instructions=' || quote(OLD.frm_Instructions) || '>' || quote(NEW.frm_Instructions)) ||
        iif(OLD.frm_Quantity IS NEW.frm_Quantity, '', ',frm_Quantity=' || quote(OLD.frm_Quantity) || '>' || quote(NEW.frm_Quantity)) ||
        iif(OLD.frm_JarSize IS NEW.frm_JarSize, '', ',frm_JarSize=' || quote(OLD.frm_JarSize) || '>' || quote(NEW.frm_JarSize)) ||
        iif(OLD.frm_FormType IS NEW.frm_FormType, '', ',frm_FormType=' || quote(OLD.frm_FormType) || '>' || quote(NEW.frm_FormType)) ||
        iif(OLD.frm_AWP IS NEW.frm_AWP, '', ',frm_AWP=' || quote(OLD.frm_AWP) || '>' || quote(NEW.frm_AWP)) ||
        iif(OLD.frm_NDC COLLATE BINARY IS NEW.frm_NDC, '', ',frm_NDC=' || quote(OLD.frm_NDC) || '>' || quote(NEW.frm_NDC)) ||
        iif(OLD.frm_GUID COLLATE BINARY IS NEW.frm_GUID, '', ',frm_GUID=' || quote(OLD.frm_GUID) || '>' || quote(NEW.frm_GUID)) ||
        iif(OLD.frm_Mix IS NEW.frm_Mix, '', ',frm_Mix=' || quote(OLD.frm_Mix) || '>' || quote(NEW.frm_Mix)) AS fields)
    WHERE fields <> '';
END;
CREATE TRIGGER History_Formula_Deleted AFTER DELETE ON Formula
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    VALUES ('Formula', OLD.FormulaID, OLD.FormulaID, OLD.frm_Name, 'deleted',
        'frm_Name=' || quote(OLD.frm_Name) ||
        ',frm_Desc=' || quote(OLD.frm_Desc) ||
        ',frm_Strength=' || quote(OLD.frm_Strength) ||
        ',frm_Units=' || quote(OLD.frm_Units) ||
        ',frm_Instructions=' || quote(OLD.frm_Instructions) ||
        ',frm_Quantity=' || quote(OLD.frm_Quantity) ||
        ',frm_JarSize=' || quote(OLD.frm_JarSize) ||
        ',frm_FormType=' || quote(OLD.frm_FormType) ||
        ',frm_AWP=' || quote(OLD.frm_AWP) ||
        ',frm_NDC=' || quote(OLD.frm_NDC) ||
        ',frm_GUID=' || quote(OLD.frm_GUID) ||
        ',frm_Mix=' || quote(OLD.frm_Mix));
END;
CREATE TRIGGER History_FormChem_Made AFTER INSERT ON FormChem
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    VALUES ('FormChem', NEW.FormChemID, NEW.FormulaID, (SELECT chm_Name FROM Chemical WHERE ChemicalID = NEW.ChemicalID), 'made',
        'FormulaID=' || quote(NEW.FormulaID) ||
        ',ChemicalID=' || quote(NEW.ChemicalID) ||
        ',fch_Qty=' || quote(NEW.fch_Qty) ||
        ',fch_QS=' || quote(NEW.fch_QS) ||
        ',fch_Active=' || quote(NEW.fch_Active));
END;
CREATE TRIGGER History_FormChem_Changed AFTER UPDATE ON FormChem
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    SELECT 'FormChem', OLD.FormChemID, OLD.FormulaID, (SELECT chm_Name FROM Chemical WHERE ChemicalID = NEW.ChemicalID), 'changed', substr(fields, 2) FROM (SELECT
        iif(OLD.FormChemID IS NEW.FormChemID, '', ',FormChemID=' || quote(OLD.FormChemID) || '>' || quote(NEW.FormChemID)) ||
        iif(OLD.FormulaID IS NEW.FormulaID, '', ',FormulaID=' || quote(OLD.FormulaID) || '>' || quote(NEW.FormulaID)) ||
        iif(OLD.ChemicalID IS NEW.ChemicalID, '', ',ChemicalID=' || quote(OLD.ChemicalID) || '>' || quote(NEW.ChemicalID)) ||
        iif(OLD.fch_Qty IS NEW.fch_Qty, '', ',fch_Qty=' || quote(OLD.fch_Qty) || '>' || quote(NEW.fch_Qty)) ||
        iif(OLD.fch_QS IS NEW.fch_QS, '', ',fch_QS=' || quote(OLD.fch_QS) || '>' || quote(NEW.fch_QS)) ||
        iif(OLD.fch_Active IS NEW.fch_Active, '', ',fch_Active=' || quote(OLD.fch_Active) || '>' || quote(NEW.fch_Active)) AS fields)
    WHERE fields <> '';
END;
CREATE TRIGGER History_FormChem_Deleted AFTER DELETE ON FormChem
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    VALUES ('FormChem', OLD.FormChemID, OLD.FormulaID, (SELECT chm_Name FROM Chemical WHERE ChemicalID = OLD.ChemicalID), 'deleted',
        'FormulaID=' || quote(OLD.FormulaID) ||
        ',ChemicalID=' || quote(OLD.ChemicalID) ||
        ',fch_Qty=' || quote(OLD.fch_Qty) ||
        ',fch_QS=' || quote(OLD.fch_QS) ||
        ',fch_Active=' || quote(OLD.fch_Active));
END;
CREATE TRIGGER History_Log_Made AFTER INSERT ON Log
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    VALUES ('Log', NEW.LogID, NEW.LogID, NEW.log_Name, 'made',
        'FormulaID=' || quote(NEW.FormulaID) ||
        ',log_Name=' || quote(NEW.log_Name) ||
        ',log_Strength=' || quote(NEW.log_Strength) ||
        ',log_Desc=' || quote(NEW.log_Desc) ||
        ',log_Units=' || quote(NEW.log_Units) ||
        ',log_FormType=' || quote(NEW.log_FormType) ||
        ',log_Quantity=' || quote(NEW.log_Quantity) ||
        ',log_JarSize=' || quote(NEW.log_JarSize) ||
        ',log_NDC=' || quote(NEW.log_NDC) ||
        ',log_Date=' || quote(NEW.log_Date) ||
        ',log_Lot=' || quote(NEW.log_Lot) ||
        ',log_Initials=' || quote(NEW.log_Initials) ||
        ',log_Verified=' || quote(NEW.log_Verified) ||
        ',log_Results=' || quote(NEW.log_Results) ||
        ',log_Version=' || quote(NEW.log_Version) ||
        ',log_AWP=' || quote(NEW.log_AWP) ||
        ',log_Cost=' || quote(NEW.log_Cost) ||
        ',log_Notes=' || quote(NEW.log_Notes) ||
        ',log_Mix=' || quote(NEW.log_Mix));
END;
CREATE TRIGGER History_Log_Changed AFTER UPDATE ON Log
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    SELECT 'Log', OLD.LogID, OLD.LogID, NEW.log_Name, 'changed', substr(fields, 2) FROM (SELECT
        iif(OLD.LogID IS NEW.LogID, '', ',LogID=' || quote(OLD.LogID) || '>' || quote(NEW.LogID)) ||
        iif(OLD.FormulaID IS NEW.FormulaID, '', ',FormulaID=' || quote(OLD.FormulaID) || '>' || quote(NEW.FormulaID)) ||
        iif(OLD.log_Name COLLATE BINARY IS NEW.log_Name, '', ',log_Name=' || quote(OLD.log_Name) || '>' || quote(NEW.log_Name)) ||
        iif(OLD.log_Strength COLLATE BINARY IS NEW.log_Strength, '', ',log_Strength=' || quote(OLD.log_Strength) || '>' || quote(NEW.log_Strength)) ||
        iif(OLD.log_Desc COLLATE BINARY IS NEW.log_Desc, '', ',log_Desc=' || quote(OLD.log_Desc) || '>' || quote(NEW.log_Desc)) ||
        iif(OLD.log_Units COLLATE BINARY IS NEW.log_Units, '', ',log_Units=' || quote(OLD.log_Units) || '>' || quote(NEW.log_Units)) ||
        iif(OLD.log_FormType IS NEW.log_FormType, '', ',log_FormType=' || quote(OLD.log_FormType) || '>' || quote(NEW.log_FormType)) ||
        iif(OLD.log_Quantity IS NEW.log_Quantity, '', ',log_Quantity=' || quote(OLD.log_Quantity) || '>' || quote(NEW.log_Quantity)) ||
        iif(OLD.log_JarSize IS NEW.log_JarSize, '', ',log_JarSize=' || quote(OLD.log_JarSize) || '>' || quote(NEW.log_JarSize)) ||
        iif(OLD.log_NDC COLLATE BINARY IS NEW.log_NDC, '', ',log_NDC=' || quote(OLD.log_NDC) || '>' || quote(NEW.log_NDC)) ||
        iif(OLD.log_Date IS NEW.log_Date, '', ',log_Date=' || quote(OLD.log_Date) || '>' || quote(NEW.log_Date)) ||
        iif(OLD.log_Lot COLLATE BINARY IS NEW.log_Lot, '', ',log_Lot=' || quote(OLD.log_Lot) || '>' || quote(NEW.log_Lot)) ||
        iif(OLD.log_Initials COLLATE BINARY IS NEW.log_Initials, '', ',log_Initials=' || quote(OLD.log_Initials) || '>' || quote(NEW.log_Initials)) ||
        iif(OLD.log_Verified COLLATE BINARY IS NEW.log_Verified, '', ',log_Verified=' || quote(OLD.log_Verified) || '>' || quote(NEW.log_Verified)) ||
        iif(OLD.log_Results IS NEW.log_Results, '', ',log_Results=' || quote(OLD.log_Results) || '>' || quote(NEW.log_Results)) ||
        iif(OLD.log_Version COLLATE BINARY IS NEW.log_Version, '', ',log_Version=' || quote(OLD.log_Version) || '>' || quote(NEW.log_Version)) ||
        iif(OLD.log_AWP IS NEW.log_AWP, '', ',log_AWP=' || quote(OLD.log_AWP) || '>' || quote(NEW.log_AWP)) ||
        iif(OLD.log_Cost IS NEW.log_Cost, '', ',log_Cost=' || quote(OLD.log_Cost) || '>' || quote(NEW.log_Cost)) ||
        iif(OLD.log_Notes IS NEW.log_Notes, '', ',log_Notes=' || quote(OLD.log_Notes) || '>' || quote(NEW.log_Notes)) ||
        iif(OLD.log_Mix IS NEW.log_Mix, '', ',log_Mix=' || quote(OLD.log_Mix) || '>' || quote(NEW.log_Mix)) AS fields)
    WHERE fields <> '';
END;
CREATE TRIGGER History_Log_Deleted AFTER DELETE ON Log
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    VALUES ('Log', OLD.LogID, OLD.LogID, OLD.log_Name, 'deleted',
        'FormulaID=' || quote(OLD.FormulaID) ||
        ',log_Name=' || quote(OLD.log_Name) ||
        ',log_Strength=' || quote(OLD.log_Strength) ||
        ',log_Desc=' || quote(OLD.log_Desc) ||
        ',log_Units=' || quote(OLD.log_Units) ||
        ',log_FormType=' || quote(OLD.log_FormType) ||
        ',log_Quantity=' || quote(OLD.log_Quantity) ||
        ',log_JarSize=' || quote(OLD.log_JarSize) ||
        ',log_NDC=' || quote(OLD.log_NDC) ||
        ',log_Date=' || quote(OLD.log_Date) ||
        ',log_Lot=' || quote(OLD.log_Lot) ||
        ',log_Initials=' || quote(OLD.log_Initials) ||
        ',log_Verified=' || quote(OLD.log_Verified) ||
        ',log_Results=' || quote(OLD.log_Results) ||
        ',log_Version=' || quote(OLD.log_Version) ||
        ',log_AWP=' || quote(OLD.log_AWP) ||
        ',log_Cost=' || quote(OLD.log_Cost) ||
        ',log_Notes=' || quote(OLD.log_Notes) ||
        ',log_Mix=' || quote(OLD.log_Mix));
END;
CREATE TRIGGER History_LogChem_Made AFTER INSERT ON LogChem
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    VALUES ('LogChem', NEW.LogChemID, NEW.LogID, NEW.lch_Name, 'made',
        'LogID=' || quote(NEW.LogID) ||
        ',ChemicalID=' || quote(NEW.ChemicalID) ||
        ',lch_Name=' || quote(NEW.lch_Name) ||
        ',lch_Units=' || quote(NEW.lch_Units) ||
        ',lch_Lot=' || quote(NEW.lch_Lot) ||
        ',lch_NDC=' || quote(NEW.lch_NDC) ||
        ',lch_Cost=' || quote(NEW.lch_Cost) ||
        ',lch_AWP=' || quote(NEW.lch_AWP) ||
        ',lch_Supplier=' || quote(NEW.lch_Supplier) ||
        ',lch_Form=' || quote(NEW.lch_Form) ||
        ',lch_GUID=' || quote(NEW.lch_GUID) ||
        ',lch_QTY=' || quote(NEW.lch_QTY));
END;
CREATE TRIGGER History_LogChem_Changed AFTER UPDATE ON LogChem
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    SELECT 'LogChem', OLD.LogChemID, OLD.LogID, NEW.lch_Name, 'changed', substr(fields, 2) FROM (SELECT
        iif(OLD.LogChemID IS NEW.LogChemID, '', ',LogChemID=' || quote(OLD.LogChemID) || '>' || quote(NEW.LogChemID)) ||
        iif(OLD.LogID IS NEW.LogID, '', ',LogID=' || quote(OLD.LogID) || '>' || quote(NEW.LogID)) ||
        iif(OLD.ChemicalID IS NEW.ChemicalID, '', ',ChemicalID=' || quote(OLD.ChemicalID) || '>' || quote(NEW.ChemicalID)) ||
        iif(OLD.lch_Name COLLATE BINARY IS NEW.lch_Name, '', ',lch_Name=' || quote(OLD.lch_Name) || '>' || quote(NEW.lch_Name)) ||
        iif(OLD.lch_Units COLLATE BINARY IS NEW.lch_Units, '', ',lch_Units=' || quote(OLD.lch_Units) || '>' || quote(NEW.lch_Units)) ||
        iif(OLD.lch_Lot COLLATE BINARY IS NEW.lch_Lot, '', ',lch_Lot=' || quote(OLD.lch_Lot) || '>' || quote(NEW.lch_Lot)) ||
        iif(OLD.lch_NDC COLLATE BINARY IS NEW.lch_NDC, '', ',lch_NDC=' || quote(OLD.lch_NDC) || '>' || quote(NEW.lch_NDC)) ||
        iif(OLD.lch_Cost IS NEW.lch_Cost, '', ',lch_Cost=' || quote(OLD.lch_Cost) || '>' || quote(NEW.lch_Cost)) ||
        iif(OLD.lch_AWP IS NEW.lch_AWP, '', ',lch_AWP=' || quote(OLD.lch_AWP) || '>' || quote(NEW.lch_AWP)) ||
        iif(OLD.lch_Supplier COLLATE BINARY IS NEW.lch_Supplier, '', ',lch_Supplier=' || quote(OLD.lch_Supplier) || '>' || quote(NEW.lch_Supplier)) ||
        iif(OLD.lch_Form COLLATE BINARY IS NEW.lch_Form, '', ',lch_Form=' || quote(OLD.lch_Form) || '>' || quote(NEW.lch_Form)) ||
        iif(OLD.lch_GUID COLLATE BINARY IS NEW.lch_GUID, '', ',lch_GUID=' || quote(OLD.lch_GUID) || '>' || quote(NEW.lch_GUID)) ||
        iif(OLD.lch_QTY IS NEW.lch_QTY, '', ',lch_QTY=' || quote(OLD.lch_QTY) || '>' || quote(NEW.lch_QTY)) AS fields)
    WHERE fields <> '';
END;
CREATE TRIGGER History_LogChem_Deleted AFTER DELETE ON LogChem
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    VALUES ('LogChem', OLD.LogChemID, OLD.LogID, OLD.lch_Name, 'deleted',
        'LogID=' || quote(OLD.LogID) ||
        ',ChemicalID=' || quote(OLD.ChemicalID) ||
        ',lch_Name=' || quote(OLD.lch_Name) ||
        ',lch_Units=' || quote(OLD.lch_Units) ||
        ',lch_Lot=' || quote(OLD.lch_Lot) ||
        ',lch_NDC=' || quote(OLD.lch_NDC) ||
        ',lch_Cost=' || quote(OLD.lch_Cost) ||
        ',lch_AWP=' || quote(OLD.lch_AWP) ||
        ',lch_Supplier=' || quote(OLD.lch_Supplier) ||
        ',lch_Form=' || quote(OLD.lch_Form) ||
        ',lch_GUID=' || quote(OLD.lch_GUID) ||
        ',lch_QTY=' || quote(OLD.lch_QTY));
END;
CREATE TRIGGER History_Patient_Made AFTER INSERT ON Patient
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    VALUES ('Patient', NEW.PatientID, NEW.PatientID, trim(coalesce(NEW.pat_LName, '') || ', ' || coalesce(NEW.pat_FName, ''), ', '), 'made',
        'pat_FName=' || quote(NEW.pat_FName) ||
        ',pat_LName=' || quote(NEW.pat_LName) ||
        ',pat_Address1=' || quote(NEW.pat_Address1) ||
        ',pat_Address2=' || quote(NEW.pat_Address2) ||
        ',pat_City=' || quote(NEW.pat_City) ||
        ',pat_State=' || quote(NEW.pat_State) ||
        ',pat_Zip=' || quote(NEW.pat_Zip) ||
        ',pat_Country=' || quote(NEW.pat_Country) ||
        ',pat_BDay=' || quote(NEW.pat_BDay) ||
        ',pat_Phone=' || quote(NEW.pat_Phone) ||
        ',pat_Fax=' || quote(NEW.pat_Fax) ||
        ',pat_Notes=' || quote(NEW.pat_Notes));
END;
CREATE TRIGGER History_Patient_Changed AFTER UPDATE ON Patient
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    SELECT 'Patient', OLD.PatientID, OLD.PatientID, trim(coalesce(NEW.pat_LName, '') || ', ' || coalesce(NEW.pat_FName, ''), ', '), 'changed', substr(fields, 2) FROM (SELECT
        iif(OLD.PatientID IS NEW.PatientID, '', ',PatientID=' || quote(OLD.PatientID) || '>' || quote(NEW.PatientID)) ||
        iif(OLD.pat_FName COLLATE BINARY IS NEW.pat_FName, '', ',pat_FName=' || quote(OLD.pat_FName) || '>' || quote(NEW.pat_FName)) ||
        iif(OLD.pat_LName COLLATE BINARY IS NEW.pat_LName, '', ',pat_LName=' || quote(OLD.pat_LName) || '>' || quote(NEW.pat_LName)) ||
        iif(OLD.pat_Address1 COLLATE BINARY IS NEW.pat_Address1, '', ',pat_Address1=' || quote(OLD.pat_Address1) || '>' || quote(NEW.pat_Address1)) ||
        iif(OLD.pat_Address2 COLLATE BINARY IS NEW.pat_Address2, '', ',pat_Address2=' || quote(OLD.pat_Address2) || '>' || quote(NEW.pat_Address2)) ||
        iif(OLD.pat_City COLLATE BINARY IS NEW.pat_City, '', ',pat_City=' || quote(OLD.pat_City) || '>' || quote(NEW.pat_City)) ||
        iif(OLD.pat_State COLLATE BINARY IS NEW.pat_State, '', ',pat_State=' || quote(OLD.pat_State) || '>' || quote(NEW.pat_State)) ||
        iif(OLD.pat_Zip COLLATE BINARY IS NEW.pat_Zip, '', ',pat_Zip=' || quote(OLD.pat_Zip) || '>' || quote(NEW.pat_Zip)) ||
        iif(OLD.pat_Country COLLATE BINARY IS NEW.pat_Country, '', ',pat_Country=' || quote(OLD.pat_Country) || '>' || quote(NEW.pat_Country)) ||
        iif(OLD.pat_BDay IS NEW.pat_BDay, '', ',pat_BDay=' || quote(OLD.pat_BDay) || '>' || quote(NEW.pat_BDay)) ||
        iif(OLD.pat_Phone COLLATE BINARY IS NEW.pat_Phone, '', ',pat_Phone=' || quote(OLD.pat_Phone) || '>' || quote(NEW.pat_Phone)) ||
        iif(OLD.pat_Fax COLLATE BINARY IS NEW.pat_Fax, '', ',pat_Fax=' || quote(OLD.pat_Fax) || '>' || quote(NEW.pat_Fax)) ||
        iif(OLD.pat_Notes IS NEW.pat_Notes, '', ',pat_Notes=' || quote(OLD.pat_Notes) || '>' || quote(NEW.pat_Notes)) AS fields)
    WHERE fields <> '';
END;
CREATE TRIGGER History_Patient_Deleted AFTER DELETE ON Patient
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    VALUES ('Patient', OLD.PatientID, OLD.PatientID, trim(coalesce(OLD.pat_LName, '') || ', ' || coalesce(OLD.pat_FName, ''), ', '), 'deleted',
        'pat_FName=' || quote(OLD.pat_FName) ||
        ',pat_LName=' || quote(OLD.pat_LName) ||
        ',pat_Address1=' || quote(OLD.pat_Address1) ||
        ',pat_Address2=' || quote(OLD.pat_Address2) ||
        ',pat_City=' || quote(OLD.pat_City) ||
        ',pat_State=' || quote(OLD.pat_State) ||
        ',pat_Zip=' || quote(OLD.pat_Zip) ||
        ',pat_Country=' || quote(OLD.pat_Country) ||
        ',pat_BDay=' || quote(OLD.pat_BDay) ||
        ',pat_Phone=' || quote(OLD.pat_Phone) ||
        ',pat_Fax=' || quote(OLD.pat_Fax) ||
        ',pat_Notes=' || quote(OLD.pat_Notes));
END;
CREATE TRIGGER History_RXs_Made AFTER INSERT ON RXs
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    VALUES ('RXs', NEW.RXsID, NEW.PatientID, (SELECT log_Name FROM Log WHERE LogID = NEW.LogID), 'made',
        'LogID=' || quote(NEW.LogID) ||
        ',PatientID=' || quote(NEW.PatientID) ||
        ',rxs_Date=' || quote(NEW.rxs_Date) ||
        ',rxs_QTY=' || quote(NEW.rxs_QTY) ||
        ',rxs_Cost=' || quote(NEW.rxs_Cost) ||
        ',rxs_Price=' || quote(NEW.rxs_Price) ||
        ',rxs_Consult=' || quote(NEW.rxs_Consult) ||
        ',rxs_Doctor=' || quote(NEW.rxs_Doctor));
END;
CREATE TRIGGER History_RXs_Changed AFTER UPDATE ON RXs
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    SELECT 'RXs', OLD.RXsID, OLD.PatientID, (SELECT log_Name FROM Log WHERE LogID = NEW.LogID), 'changed', substr(fields, 2) FROM (SELECT
        iif(OLD.RXsID IS NEW.RXsID, '', ',RXsID=' || quote(OLD.RXsID) || '>' || quote(NEW.RXsID)) ||
        iif(OLD.LogID IS NEW.LogID, '', ',LogID=' || quote(OLD.LogID) || '>' || quote(NEW.LogID)) ||
        iif(OLD.PatientID IS NEW.PatientID, '', ',PatientID=' || quote(OLD.PatientID) || '>' || quote(NEW.PatientID)) ||
        iif(OLD.rxs_Date IS NEW.rxs_Date, '', ',rxs_Date=' || quote(OLD.rxs_Date) || '>' || quote(NEW.rxs_Date)) ||
        iif(OLD.rxs_QTY IS NEW.rxs_QTY, '', ',rxs_QTY=' || quote(OLD.rxs_QTY) || '>' || quote(NEW.rxs_QTY)) ||
        iif(OLD.rxs_Cost IS NEW.rxs_Cost, '', ',rxs_Cost=' || quote(OLD.rxs_Cost) || '>' || quote(NEW.rxs_Cost)) ||
        iif(OLD.rxs_Price IS NEW.rxs_Price, '', ',rxs_Price=' || quote(OLD.rxs_Price) || '>' || quote(NEW.rxs_Price)) ||
        iif(OLD.rxs_Consult COLLATE BINARY IS NEW.rxs_Consult, '', ',rxs_Consult=' || quote(OLD.rxs_Consult) || '>' || quote(NEW.rxs_Consult)) ||
        iif(OLD.rxs_Doctor COLLATE BINARY IS NEW.rxs_Doctor, '', ',rxs_Doctor=' || quote(OLD.rxs_Doctor) || '>' || quote(NEW.rxs_Doctor)) AS fields)
    WHERE fields <> '';
END;
CREATE TRIGGER History_RXs_Deleted AFTER DELETE ON RXs
BEGIN
    INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_Name, hst_What, hst_Fields)
    VALUES ('RXs', OLD.RXsID, OLD.PatientID, (SELECT log_Name FROM Log WHERE LogID = OLD.LogID), 'deleted',
        'LogID=' || quote(OLD.LogID) ||
        ',PatientID=' || quote(OLD.PatientID) ||
        ',rxs_Date=' || quote(OLD.rxs_Date) ||
        ',rxs_QTY=' || quote(OLD.rxs_QTY) ||
        ',rxs_Cost=' || quote(OLD.rxs_Cost) ||
        ',rxs_Price=' || quote(OLD.rxs_Price) ||
        ',rxs_Consult=' || quote(OLD.rxs_Consult) ||
        ',rxs_Doctor=' || quote(OLD.rxs_Doctor));
END;
CREATE TRIGGER History_Sealed BEFORE UPDATE ON History WHEN OLD.hst_Seal IS NOT NULL
BEGIN SELECT RAISE(ABORT, 'what happened can''t be changed'); END;
CREATE TRIGGER History_Kept BEFORE DELETE ON History
BEGIN SELECT RAISE(ABORT, 'what happened can''t be deleted'); END;
UPDATE Options SET opt_Version = 1.2;
PRAGMA user_version = 12000;
