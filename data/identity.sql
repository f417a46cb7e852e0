-- Version 1.1 of a file: what tells it from every other database, the count of its changes, and the indices by which
-- a lot is followed. dbupdate.xml does the same to an older file. A copy has the identity of what it was copied from; an archive has one of its own
-- and names the file that it was taken from as its parent.
CREATE TABLE FileIdentity (
    fid_Identity TEXT(32) NOT NULL,
    fid_Parent TEXT(32),
    fid_Changes INTEGER NOT NULL DEFAULT 0
);
INSERT INTO FileIdentity (fid_Identity) VALUES (lower(hex(randomblob(16))));
CREATE TRIGGER Chemical_Inserted AFTER INSERT ON Chemical
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER Chemical_Updated AFTER UPDATE ON Chemical
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER Chemical_Deleted AFTER DELETE ON Chemical
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER Formula_Inserted AFTER INSERT ON Formula
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER Formula_Updated AFTER UPDATE ON Formula
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER Formula_Deleted AFTER DELETE ON Formula
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER FormChem_Inserted AFTER INSERT ON FormChem
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER FormChem_Updated AFTER UPDATE ON FormChem
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER FormChem_Deleted AFTER DELETE ON FormChem
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER Log_Inserted AFTER INSERT ON Log
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER Log_Updated AFTER UPDATE ON Log
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER Log_Deleted AFTER DELETE ON Log
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER LogChem_Inserted AFTER INSERT ON LogChem
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER LogChem_Updated AFTER UPDATE ON LogChem
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER LogChem_Deleted AFTER DELETE ON LogChem
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER Patient_Inserted AFTER INSERT ON Patient
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER Patient_Updated AFTER UPDATE ON Patient
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER Patient_Deleted AFTER DELETE ON Patient
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER RXs_Inserted AFTER INSERT ON RXs
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER RXs_Updated AFTER UPDATE ON RXs
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
CREATE TRIGGER RXs_Deleted AFTER DELETE ON RXs
BEGIN UPDATE FileIdentity SET fid_Changes = fid_Changes + 1; END;
-- Where a lot went is looked up through these.
CREATE INDEX LogChem_Lot ON LogChem (lch_Lot, lch_Name, lch_NDC);
CREATE INDEX LogChem_Name ON LogChem (lch_Name);
CREATE INDEX LogChem_NDC ON LogChem (lch_NDC);
UPDATE Options SET opt_Version = 1.1;
PRAGMA user_version = 11000;
