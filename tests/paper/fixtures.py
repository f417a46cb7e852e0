"""The pharmacies that the papers are made of: the sample as delivered, and the sample with hostile data."""
import sqlite3
import subprocess

CAUTION = "CAUTION: do not heat above 40 degrees."
STORE = {"StoreName": "Kelmar Systems", "Address": "418 Larkspur Ct.", "City": "Fenwick", "State": "ZZ",
         "PostalCode": "54321", "Phone": "(555)010-0188", "Fax": "(555)010-0189", "DEA": "123456789"}

# Amounts of every length, the values that once lost a digit among them.
LARGE = """
UPDATE Chemical SET chm_Cost = 9999.9999 + ChemicalID * 1111, chm_AWP = 102345.6789 + ChemicalID;
UPDATE FormChem SET fch_Qty = CASE FormChemID % 5 WHEN 0 THEN 1234.5678 WHEN 1 THEN 0.0625 WHEN 2 THEN 18.104
    WHEN 3 THEN 0.0005 ELSE 30000.125 END;
UPDATE Formula SET frm_Quantity = 7;
UPDATE Log SET log_Quantity = CASE LogID % 3 WHEN 0 THEN 32767 WHEN 1 THEN 10000 ELSE 1000 END,
    log_Cost = 37033.84 + LogID * 100000, log_AWP = 1234567.895 + LogID, log_Initials = 'MRK', log_Verified = 'JTW';
UPDATE LogChem SET lch_QTY = 12345.678 + LogChemID, lch_Cost = 37033.8 + LogChemID, lch_AWP = 1234.5 * LogChemID;
UPDATE RXs SET rxs_QTY = CASE RXsID % 4 WHEN 0 THEN 100000 WHEN 1 THEN 112.75 WHEN 2 THEN 0.0625 ELSE 31234.5678 END,
    rxs_Price = 1234.5 * RXsID + 10000;
"""

# Words of every length, each with what must not be lost in it.
LONG = """
UPDATE Chemical SET chm_Name = substr(chm_Name || ' compounding grade 1000 mcg/ml', 1, 100),
    chm_Lot = 'LT-2026-' || printf('%06d', ChemicalID * 7919), chm_NDC = '00000-' || printf('%04d', ChemicalID) || '-16-77',
    chm_Supplier = chm_Supplier || ' Laboratories and Sons, Wholesale Chemists of Fenwick', chm_Form = 'SOLUTION CONCENTRATE',
    chm_Units = 'MILLILITRES', chm_Notes = 'Keep below 8 degrees and away from light, shake before each use; '
        || 'discard the rest 30 days after opening.';
UPDATE Formula SET frm_Name = substr(frm_Name || ' for the long-term treatment of resistant conditions', 1, 100),
    frm_Units = 'MILLILITRES', frm_Strength = '12.5mg/1.25ml', frm_Desc = substr(replace(printf('%.12c', '*'), '*', 'A description of many words. '), 1, 255),
    frm_Instructions = replace(printf('%.12c', '*'), '*', 'Weigh each powder and sieve it; levigate with a little glycerin. '
        || 'Add half of the base, mix, scrape the jar, add the rest.' || char(13, 10))
        || 'CAUTION: do not heat above 40 degrees.' || char(13, 10) || 'Fill by weight.';
UPDATE Log SET log_Name = substr(log_Name || ' Compounded Oral Suspension 1000 mcg/ml', 1, 100), log_Strength = '12.5mg/1.25ml',
    log_Lot = 'SV26-' || printf('%08d', LogID * 104729), log_NDC = '00000-0101-10-22',
    log_Desc = substr(replace(printf('%.12c', '*'), '*', 'A description of many words. '), 1, 255),
    log_Units = 'CAPSULES', log_Initials = 'MRK', log_Verified = 'JTW', log_Date = '2026-08-31 19:52:40';
UPDATE LogChem SET lch_Name = substr(lch_Name || ' compounding grade 1000 mcg/ml', 1, 100),
    lch_Lot = 'LT-2026-' || printf('%06d', LogChemID * 7919), lch_Supplier = 'Northfield Laboratories and Sons',
    lch_Form = 'SOLUTION CONCENTRATE', lch_Units = 'MILLILITRES';
UPDATE Patient SET pat_FName = 'Wilhelmina Alexandra', pat_LName = 'Featherstonehaugh-Vandenberg',
    pat_Address1 = '1208 North Old Quarry Mill Road', pat_Address2 = 'Building 4, Apartment 317B',
    pat_City = 'Lower Millbrook Heights', pat_Phone = '+1 440-555-0117 x 123', pat_Fax = '+1 440-555-0118 x 456';
UPDATE RXs SET rxs_Doctor = 'Dr. Bartholomew Featherstonehaugh-Vandenberg', rxs_Consult = 'Shake well; finish all; ask before '
    || 'driving or drinking.', rxs_Date = '2026-09-08 00:00:00';
"""

# What no type of five points can hold in some of its places.
HOSTILE = """
UPDATE Chemical SET chm_Lot = 'LOTNUMBER-WITH-FORTY-CHARACTERS-0123456', chm_NDC = '00000-0000-00-000000-000000-00',
    chm_Cost = 123456789012.3456, chm_AWP = 123456789012.3456;
UPDATE Formula SET frm_Strength = '1234567890.12345 mg / 1234567890.123 mL';
UPDATE Log SET log_Lot = 'LOTNUMBER-WITH-FORTY-CHARACTERS-0123456', log_Cost = 12345678901234.5, log_AWP = 12345678901234.5,
    log_Strength = '1234567890.12345 mg / 1234567890.123 mL';
UPDATE LogChem SET lch_Lot = 'LOTNUMBER-WITH-FORTY-CHARACTERS-0123456', lch_Cost = 12345678901234.5;
UPDATE RXs SET rxs_QTY = 123456.789012345, rxs_Price = 12345678901234.5;
"""

FIXTURES = {"sample": "", "large": LARGE, "long": LONG, "hostile": HOSTILE}


def make_databases(folder, tool):
    """One database a fixture; gives their paths by name."""
    paths = {}
    for name, statements in FIXTURES.items():
        path = folder / f"{name}.mdb"
        subprocess.run([tool, "sample", path], check=True)
        database = sqlite3.connect(path)
        database.executescript(statements)
        # Rows that a long list needs, and each record that the orders name with rows of its own.
        database.execute("UPDATE Log SET FormulaID = 1, log_Date = '2026-0' || (LogID % 9 + 1) || '-1' || (LogID % 9) || ' 00:00:00'"
                         if name != "long" else "UPDATE Log SET FormulaID = 1")
        database.execute("UPDATE RXs SET PatientID = 1")
        database.commit()
        database.close()
        paths[name] = path
    return paths


def write_options(path, currency):
    store = "".join(f"<{name}>{text}</{name}>" for name, text in STORE.items())
    path.write_text("<Configuration><Version>1</Version><Options><CommPort>1</CommPort><DBLocation/><Language>0</Language>"
                    f"<DefPrinter/><DefCurrency>{currency}</DefCurrency></Options><Pharmacy>{store}"
                    "<ShowPatients>1</ShowPatients><OverrideSpeed>0</OverrideSpeed></Pharmacy></Configuration>",
                    encoding="utf-8")
