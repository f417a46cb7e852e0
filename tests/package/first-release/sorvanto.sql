PRAGMA foreign_keys=OFF;
BEGIN TRANSACTION;
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
INSERT INTO Chemical VALUES(1,'Hydrocortisone Micronized','GMS','HC24118','00000-2101-25',2.8500000000000000888,6.9000000000000003552,'Levigate with glycerin first.','PWD','9E3779B1-9E37-444F-87DB-0A5E6F8E96FB','Northfield');
INSERT INTO Chemical VALUES(2,'Glycerin','MLS','GL0093','00000-1140-48',0.017999999999999998639,0.044999999999999998334,'','LIQU','3C6EF362-3C6E-489E-8FB6-14BCDF1D2DF6','Harbor');
INSERT INTO Chemical VALUES(3,'Vanishing Cream Base','GMS','VB5512','00000-3302-16',0.020199999999999999206,0.042500000000000003053,'Oil in water, pH 5.5','CRM','DAA66D13-DAA5-4CED-8791-1F1B4EABC4F1','Larkspur');
INSERT INTO Chemical VALUES(4,'Ketoprofen','GMS','KP7741','00000-2207-10',0.92000000000000003996,2.2999999999999998223,'','PWD','78DDE6C4-78DC-413C-8F6C-2979BE3A5BEC','Northfield');
INSERT INTO Chemical VALUES(5,'Lecithin Isopropyl Palmitate','MLS','LIP331','00000-3310-08',0.11000000000000000055,0.28000000000000002664,'Protect from light; do not refrigerate.','SOLN','17156075-1713-458B-8747-33D82DC8F2E7','Larkspur');
INSERT INTO Chemical VALUES(6,'Poloxamer 407 20% Gel','GMS','PX2040','00000-3311-16',0.044999999999999998334,0.11999999999999999555,'Liquid when cold. Keep refrigerated.','GEL','B54CDA26-B54A-49DA-8F22-3E369D5789E2','Larkspur');
INSERT INTO Chemical VALUES(7,'Diclofenac Sodium','GMS','DS1019','00000-2210-10',1.1499999999999999111,2.9500000000000001776,'','PWD','538453D7-5381-4E29-86FD-48950CE620DD','Quill & Co.');
INSERT INTO Chemical VALUES(8,'Baclofen','GMS','BC0467','00000-2215-05',6.4000000000000003552,15.80000000000000071,'','PWD','F1BBCD88-F1B8-4278-8ED8-52F37C74B7D8','Quill & Co.');
INSERT INTO Chemical VALUES(9,'Lidocaine','GMS','LD8823','00000-2140-25',0.78000000000000002664,1.9499999999999999555,'Forms a eutectic mixture with prilocaine.','CRYS','8FF34739-8FEF-46C7-86B3-5D51EC034ED3','Northfield');
INSERT INTO Chemical VALUES(10,'Zinc Oxide','GMS','ZO1177','00000-1505-16',0.024000000000000000499,0.059999999999999997779,'Sieve before use.','PWD','2E2AC0EA-2E26-4B16-8E8E-67B05B91E5CE','Harbor');
INSERT INTO Chemical VALUES(11,'Corn Starch','GMS','CS4410','00000-1510-16',0.012000000000000000249,0.029999999999999998889,'','PWD','CC623A9B-CC5D-4F65-8669-720ECB207CC9','Harbor');
INSERT INTO Chemical VALUES(12,'White Petrolatum','GMS','WP9034','00000-1601-35',0.009499999999999999764,0.024000000000000000499,'','UNG','6A99B44C-6A94-43B4-8E44-7C6D3AAF13C4','Harbor');
INSERT INTO Chemical VALUES(13,'Benzoic Acid','GMS','BA2281','00000-1522-16',0.055000000000000000277,0.14000000000000001332,'','CRYS','08D12DFD-08CB-4803-861F-86CBAA3DAABF','Northfield');
INSERT INTO Chemical VALUES(14,'Salicylic Acid','GMS','SA3390','00000-1524-16',0.060999999999999998667,0.15499999999999999888,'Irritating dust: use the hood.','PWD','A708A7AE-A702-4C52-8DFA-912A19CC41BA','Northfield');
INSERT INTO Chemical VALUES(15,'Polyethylene Glycol Ointment','GMS','PEG771','00000-1610-16',0.030999999999999999777,0.074999999999999997224,'Water soluble base','UNG','4540215F-4539-40A1-85D5-9B88895AD8B5','Larkspur');
INSERT INTO Chemical VALUES(16,'Diphenhydramine 12.5 mg/5 mL','MLS','DP6650','00000-4102-16',0.014000000000000000291,0.035999999999999997279,'Alcohol free','SOLN','E3779B10-E370-44F0-8DB0-A5E6F8E96FB0','Harbor');
INSERT INTO Chemical VALUES(17,'Lidocaine Viscous 2%','MLS','LV2107','00000-4110-10',0.061999999999999999555,0.16000000000000000333,'','SOLN','81AF14C1-81A7-493F-858B-B045687806AB','Harbor');
INSERT INTO Chemical VALUES(18,'Antacid Suspension','MLS','AN3008','00000-4120-12',0.010999999999999999361,0.028000000000000000582,'Shake well.','SUSP','1FE68E72-1FDE-4D8E-8D66-BAA3D8069DA6','Harbor');
INSERT INTO Chemical VALUES(19,'Omeprazole','GMS','OM1502','00000-2301-05',4.0999999999999996447,10.400000000000000355,'Degrades in acid.','PWD','BE1E0823-BE15-41DD-8541-C502479534A1','Quill & Co.');
INSERT INTO Chemical VALUES(20,'Sodium Bicarbonate','GMS','SB7010','00000-1530-16',0.012500000000000000693,0.032000000000000000666,'','PWD','5C5581D4-5C4C-462C-8D1C-CF60B723CB9C','Harbor');
INSERT INTO Chemical VALUES(21,'Purified Water','MLS','PW1126','00000-1001-01',0.0015000000000000000312,0.0040000000000000000832,'','LIQU','FA8CFB85-FA83-4A7B-84F7-D9BF26B26297','In-house');
INSERT INTO Chemical VALUES(22,'Metronidazole Benzoate','GMS','MB5528','00000-2306-25',0.66000000000000003108,1.6999999999999999555,'1 g of base = 1.6 g of benzoate.','PWD','98C47536-98BA-4ECA-8CD2-E41D9640F992','Quill & Co.');
INSERT INTO Chemical VALUES(23,'Suspending Vehicle','MLS','SV0812','00000-3401-16',0.034000000000000002442,0.087999999999999994892,'Sugar free, pH 4.2','SUSP','36FBEEE7-36F1-4319-84AD-EE7C05CF908D','Larkspur');
INSERT INTO Chemical VALUES(24,'Sweetening Syrup','MLS','SS0813','00000-3402-16',0.030999999999999999777,0.082000000000000003441,'','LIQU','D5336898-D528-4768-8C88-F8DA755E2788','Larkspur');
INSERT INTO Chemical VALUES(25,'Progesterone Micronized','GMS','PG4471','00000-2401-25',1.9499999999999999555,4.9000000000000003552,'Wettable grade','PWD','736AE249-735F-4BB7-8463-0338E4ECBE83','Ashdown');
INSERT INTO Chemical VALUES(26,'Propylene Glycol','MLS','PRG209','00000-1150-16',0.021000000000000001304,0.053999999999999999389,'','LIQU','11A25BFA-1196-4006-8C3E-0D97547B557E','Harbor');
INSERT INTO Chemical VALUES(27,'Estriol Micronized','GMS','ET1190','00000-2405-05',9.8000000000000007105,24.5,'','PWD','AFD9D5AB-AFCD-4455-8419-17F5C409EC79','Ashdown');
INSERT INTO Chemical VALUES(28,'Estradiol Hemihydrate','GMS','ED0655','00000-2406-05',12.400000000000000355,31,'','PWD','4E114F5C-4E04-48A4-8BF4-225433988374','Ashdown');
INSERT INTO Chemical VALUES(29,'Testosterone Micronized','GMS','TS3021','00000-2410-10',3.6000000000000000888,9.1999999999999992894,'Controlled: count on receipt.','PWD','EC48C90D-EC3B-4CF3-83CF-2CB2A3271A6F','Ashdown');
INSERT INTO Chemical VALUES(30,'Alcohol 95%','MLS','AL9500','00000-1105-16',0.026999999999999999694,0.068000000000000004884,'Flammable','LIQU','8A8042BE-8A72-4142-8BAA-371112B5B16A','Harbor');
INSERT INTO Chemical VALUES(31,'Carbomer 940','GMS','CB2240','00000-3120-04',0.19000000000000000222,0.47999999999999998223,'Sprinkle slowly, let it hydrate.','PWD','28B7BC6F-28A9-4591-8385-416F82444865','Larkspur');
INSERT INTO Chemical VALUES(32,'Urea','GMS','UR5560','00000-1540-16',0.028000000000000000582,0.070000000000000006661,'','CRYS','C6EF3620-C6E0-49E0-8B60-4BCDF1D2DF60','Northfield');
INSERT INTO Chemical VALUES(33,'Coal Tar Solution','MLS','CT1288','00000-1620-16',0.085000000000000006106,0.20999999999999999222,'Stains.','SOLN','6526AFD1-6517-4E2F-833B-562C6161765B','Harbor');
INSERT INTO Chemical VALUES(34,'Hydroquinone','GMS','HQ7719','00000-2501-10',0.73999999999999999111,1.8500000000000000888,'Oxidises: add sodium metabisulfite.','CRYS','035E2982-034E-427E-8B16-608AD0F00D56','Northfield');
INSERT INTO Chemical VALUES(35,'Tretinoin','GMS','TR0092','00000-2502-01',38.499999999999999999,96.25,'Protect from light.','PWD','A195A333-A185-46CD-82F1-6AE9407EA451','Quill & Co.');
INSERT INTO Chemical VALUES(36,'Sodium Metabisulfite','GMS','SM3316','00000-1550-16',0.035999999999999997279,0.089999999999999996669,'','PWD','3FCD1CE4-3FBC-4B1C-8ACC-7547B00D3B4C','Northfield');
INSERT INTO Chemical VALUES(37,'Nifedipine','GMS','NF4402','00000-2601-05',5.2000000000000001776,13,'Work under subdued light.','PWD','DE049695-DDF3-4F6B-82A7-7FA61F9BD247','Quill & Co.');
INSERT INTO Chemical VALUES(38,'Sildenafil Citrate','GMS','SC6677','00000-2605-05',7.2999999999999998223,18.25,'1 g of base = 1.405 g of citrate.','PWD','7C3C1046-7C2A-43BA-8A82-8A048F2A6942','Quill & Co.');
INSERT INTO Chemical VALUES(39,'Capsaicin','GMS','CP0011','00000-2610-01',21,52.5,'Mask and gloves.','CRYS','1A7389F7-1A61-4809-825D-9462FEB9003D','Northfield');
INSERT INTO Chemical VALUES(40,'Tacrolimus','GMS','TC0305','00000-2615-01',182,455,'','PWD','B8AB03A8-B898-4C58-8A38-9EC16E479738','Quill & Co.');
INSERT INTO Chemical VALUES(41,'Naltrexone Hydrochloride','GMS','NX2019','00000-2620-05',16.199999999999999289,40.500000000000000001,'','PWD','56E27D59-56CF-40A7-8213-A91FDDD62E33','Quill & Co.');
INSERT INTO Chemical VALUES(42,'Cetyl Esters Wax','GMS','CE8105','00000-1630-16',0.071999999999999994559,0.17999999999999999333,'','FLAKE','F519F70A-F506-44F6-89EE-B37E4D64C52E','Larkspur');
INSERT INTO Chemical VALUES(43,'White Wax','GMS','WW4407','00000-1631-16',0.058000000000000002942,0.14499999999999999,'','SOLID','935170BB-933D-4945-81C9-BDDCBCF35C29','Larkspur');
INSERT INTO Chemical VALUES(44,'Mineral Oil','GMS','MO2230','00000-1632-32',0.012999999999999999403,0.033000000000000001554,'','LIQU','3188EA6C-3174-4D94-89A4-C83B2C81F324','Harbor');
INSERT INTO Chemical VALUES(45,'Sodium Borate','GMS','BO1014','00000-1560-16',0.029999999999999998889,0.074999999999999997224,'','CRYS','CFC0641D-CFAB-41E3-817F-D2999C108A1F','Northfield');
INSERT INTO Chemical VALUES(46,'Crème Mère O''Leary','GMS','CMO 17/4','00000-3350-16',0.064000000000000001332,0.16000000000000000333,'Base de crème émolliente','CRM','6DF7DDCE-6DE2-4632-895A-DCF80B9F211A','Évrard SA');
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
INSERT INTO Formula VALUES(1,'Hydrocortisone 1% Cream','Topical corticosteroid in vanishing base','1 %','GMS','Levigate the powder with a little glycerin. Add half of the base, mix, scrape the jar, add the rest.',100,5,9,11.11250000000000071,'00000-0101-10','85EBCA77-EC4D-4CE5-96C5-0CC27D6B35F1','<CustomMix PreGrind="1" FreeSpin="2"><Mix LiftRPM="1200" MixRPM="600" MixTime="00:00:30" Cycles="0"/><Mix LiftRPM="1200" MixRPM="1200" MixTime="00:01:30" Cycles="0"/><Mix LiftRPM="960" MixRPM="1800" MixTime="00:02:00" Cycles="0"/></CustomMix>');
INSERT INTO Formula VALUES(2,'Ketoprofen 10% Gel','Topical anti-inflammatory','10 %','GMS','Wet the ketoprofen with the lecithin solution until smooth, then add the cold gel.',100,5,9,37.320000000000000284,'00000-0102-10','0BD794EE-D89A-49CA-9D8A-1984FAD66BE2','<CustomMix PreGrind="2" FreeSpin="1"><Mix LiftRPM="1200" MixRPM="1200" MixTime="00:00:00" Cycles="6"/><Mix LiftRPM="1440" MixRPM="2004" MixTime="00:03:00" Cycles="0"/></CustomMix>');
INSERT INTO Formula VALUES(3,'Triple Relief Gel','Diclofenac, baclofen and lidocaine in transdermal gel','3/2/5 %','GMS','Triturate the powders together, wet with the lecithin solution, add the cold gel.',100,5,9,64.519999999999996021,'00000-0103-10','91C35F65-C4E7-46AF-944F-26477841A1D3','<CustomMix PreGrind="2" FreeSpin="1"><Mix LiftRPM="1200" MixRPM="1200" MixTime="00:00:00" Cycles="6"/><Mix LiftRPM="1440" MixRPM="2004" MixTime="00:03:00" Cycles="0"/></CustomMix>');
INSERT INTO Formula VALUES(4,'Lassar''s Zinc Paste','Protective paste','25 %','GMS','Sieve zinc oxide and starch. Melt the petrolatum and let it cool to 40 degrees before mixing.',200,6,6,6.9000000000000003552,'00000-0104-20','17AF29DC-B134-4394-9B14-3309F5ACD7C4','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Formula VALUES(5,'Whitfield''s Ointment','Benzoic and salicylic acid ointment','6 % / 3 %','GMS','Reduce both acids to a fine powder. Mix under the hood.',50,4,2,4.0650000000000003907,'00000-0105-05','9D9AF453-9D81-4079-91D9-3FCC73180DB5','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Formula VALUES(6,'Magic Mouthwash','Swish and spit, equal parts','1:1:1','MLS','Measure each part, add the antacid last. Shake well. Good for 14 days.',240,7,5,17.920000000000001705,'00000-0106-24','2386BECA-89CE-4D5E-989E-4C8EF08343A6','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Formula VALUES(7,'Omeprazole 2 mg/mL Suspension','Oral suspension in bicarbonate','2 mg/mL','MLS','Dissolve the bicarbonate in most of the water, add the omeprazole, bring to volume. Refrigerate.',100,5,5,2.7143999999999999239,'00000-0107-10','A9728941-761B-4A43-9F63-59516DEE7997','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Formula VALUES(8,'Metronidazole 50 mg/mL Suspension','Oral suspension, tasteless ester','50 mg/mL','MLS','Wet the powder with glycerin to a smooth paste. Protect from light.',100,5,5,21.481000000000001648,'00000-0108-10','2F5E53B8-6268-4728-9628-6613EB59AF88','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Formula VALUES(9,'Progesterone 10% Cream','Transdermal hormone cream','100 mg/g','GMS','Wet the progesterone with the propylene glycol.',30,3,9,15.864800000000000678,'00000-0109-03','B54A1E2F-4EB5-440D-9CED-72D668C4E579','<CustomMix PreGrind="4" FreeSpin="2"><Mix LiftRPM="720" MixRPM="900" MixTime="00:01:00" Cycles="0"/><Mix LiftRPM="1200" MixRPM="1800" MixTime="00:02:30" Cycles="0"/><Mix LiftRPM="1200" MixRPM="2400" MixTime="00:00:00" Cycles="12"/></CustomMix>');
INSERT INTO Formula VALUES(10,'Estriol & Estradiol Cream','Transdermal hormone cream, 80:20','2.5 mg/g','GMS','Triturate the hormones geometrically. Use a dedicated jar.',30,3,9,3.2240999999999999658,'00000-0110-03','3B35E8A6-3B02-40F2-93B2-7F98E6301B6A','<CustomMix PreGrind="4" FreeSpin="2"><Mix LiftRPM="720" MixRPM="900" MixTime="00:01:00" Cycles="0"/><Mix LiftRPM="1200" MixRPM="1800" MixTime="00:02:30" Cycles="0"/><Mix LiftRPM="1200" MixRPM="2400" MixTime="00:00:00" Cycles="12"/></CustomMix>');
INSERT INTO Formula VALUES(11,'Testosterone 2% Gel','Hydroalcoholic gel','20 mg/g','GMS','Dissolve the testosterone in the alcohol. Sprinkle the carbomer on the water, let it hydrate, combine.',50,4,3,11.74600000000000044,'00000-0111-05','C121B31D-274F-4DD7-9A77-8C5B639B515B','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Formula VALUES(12,'Urea 20% & Salicylic Acid 6% Cream','Keratolytic cream','20 % / 6 %','GMS','Dissolve the urea in the water before adding it to the base.',100,5,1,4.9359999999999999431,'00000-0112-10','470D7D94-139C-4ABC-913C-991DE106874C','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Formula VALUES(13,'Crème à l''Urée 10%','Crème émolliente, peau très sèche','10 %','GMS','Dissoudre l''urée dans l''eau, incorporer à la crème. Étiqueter « usage externe ».',200,6,1,27.079999999999998295,'00000-0113-20','CCF9480B-FFE9-47A1-9801-A5E05E71BD3D','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Formula VALUES(14,'Coal Tar 5% Ointment','For plaque psoriasis','5 %','GMS','Add the solution in portions. The jar stains.',100,5,2,3.330000000000000071,'00000-0114-10','52E51282-EC36-4486-9EC6-B2A2DBDCF32E','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Formula VALUES(15,'Hydroquinone 4% Tretinoin 0.05% Cream','Depigmenting cream','4 % / 0.05 % / 1 %','GMS','Dissolve the metabisulfite in the glycerin. Work under subdued light. Good for 30 days.',30,3,9,6.9509999999999996234,'00000-0115-03','D8D0DCF9-D883-416B-958B-BF655948291F','<CustomMix PreGrind="4" FreeSpin="2"><Mix LiftRPM="720" MixRPM="900" MixTime="00:01:00" Cycles="0"/><Mix LiftRPM="1200" MixRPM="1800" MixTime="00:02:30" Cycles="0"/><Mix LiftRPM="1200" MixRPM="2400" MixTime="00:00:00" Cycles="12"/></CustomMix>');
INSERT INTO Formula VALUES(16,'Nifedipine 0.3% Lidocaine 1.5% Ointment','Rectal ointment','0.3 % / 1.5 %','GMS','Levigate with propylene glycol under subdued light.',30,3,2,2.7814999999999998614,'00000-0116-03','5EBCA770-C4D0-4E50-9C50-CC27D6B35F10','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Formula VALUES(17,'Sildenafil Suspension','Oral suspension for children','2.5 mg/mL','MLS','Triturate with a little of the vehicle, then equal parts of vehicle and syrup. Shake well.',100,5,5,14.874900000000000233,'00000-0117-10','E4A871E7-B11D-4B35-9315-D8EA541E9501','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Formula VALUES(18,'Capsaicin 0.075% Cream','Topical analgesic','0.075 %','GMS','Dissolve the capsaicin in the alcohol. Mask and gloves.',50,4,1,4.1177000000000001378,'00000-0118-05','6A943C5E-9D6A-481A-99DA-E5ACD189CAF2','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Formula VALUES(19,'Tacrolimus 0.1% Ointment','For atopic dermatitis','0.1 %','GMS','Levigate with mineral oil, then geometric dilution.',30,3,9,14.374700000000000699,'00000-0119-03','F08006D5-89B7-44FF-909F-F26F4EF500E3','<CustomMix PreGrind="4" FreeSpin="2"><Mix LiftRPM="720" MixRPM="900" MixTime="00:01:00" Cycles="0"/><Mix LiftRPM="1200" MixRPM="1800" MixTime="00:02:30" Cycles="0"/><Mix LiftRPM="1200" MixRPM="2400" MixTime="00:00:00" Cycles="12"/></CustomMix>');
INSERT INTO Formula VALUES(20,'Naltrexone Suspension','Low dose oral suspension','1 mg/mL','MLS','Dissolve in the water, bring to volume with the vehicle.',50,4,5,5.5848000000000004305,'00000-0120-05','766BD14C-7604-41E4-9764-FF31CC6036D4','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Formula VALUES(21,'Cold Cream, Sixteen Steps','Slow cooling programme for a fine emulsion','','GMS','Melt the waxes and the oil at 70 degrees, dissolve the borate in water of the same temperature, combine and start at once.',100,5,9,5.9515000000000002344,'00000-0121-10','FC579BC3-6251-4EC9-9E29-0BF449CB6CC5','<CustomMix PreGrind="0" FreeSpin="4"><Mix LiftRPM="480" MixRPM="300" MixTime="00:00:10" Cycles="0"/><Mix LiftRPM="600" MixRPM="600" MixTime="00:00:20" Cycles="0"/><Mix LiftRPM="720" MixRPM="900" MixTime="00:00:30" Cycles="0"/><Mix LiftRPM="960" MixRPM="1200" MixTime="00:01:00" Cycles="0"/><Mix LiftRPM="1200" MixRPM="1500" MixTime="00:01:30" Cycles="0"/><Mix LiftRPM="1200" MixRPM="1800" MixTime="00:02:00" Cycles="0"/><Mix LiftRPM="1200" MixRPM="2100" MixTime="00:02:00" Cycles="0"/><Mix LiftRPM="1200" MixRPM="2292" MixTime="00:01:00" Cycles="0"/><Mix LiftRPM="960" MixRPM="1800" MixTime="00:02:00" Cycles="0"/><Mix LiftRPM="960" MixRPM="1500" MixTime="00:02:00" Cycles="0"/><Mix LiftRPM="720" MixRPM="1200" MixTime="00:02:30" Cycles="0"/><Mix LiftRPM="720" MixRPM="900" MixTime="00:03:00" Cycles="0"/><Mix LiftRPM="480" MixRPM="600" MixTime="00:03:00" Cycles="0"/><Mix LiftRPM="480" MixRPM="480" MixTime="00:00:00" Cycles="8"/><Mix LiftRPM="240" MixRPM="300" MixTime="00:00:00" Cycles="4"/><Mix LiftRPM="240" MixRPM="120" MixTime="00:00:00" Cycles="2"/></CustomMix>');
INSERT INTO Formula VALUES(22,'Teething Gel (in development)','Recipe not settled yet','','GMS','',30,3,3,0,'','8243663A-4E9E-4BAE-94EE-18B6C736A2B6','<CustomMix PreGrind="0" FreeSpin="1"/>');
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
INSERT INTO FormChem VALUES(1,1,1,1.0,0,1);
INSERT INTO FormChem VALUES(2,1,2,2.0,0,0);
INSERT INTO FormChem VALUES(3,1,3,97.0,1,0);
INSERT INTO FormChem VALUES(4,2,4,10.0,0,1);
INSERT INTO FormChem VALUES(5,2,5,22.0,0,0);
INSERT INTO FormChem VALUES(6,2,6,68.0,1,0);
INSERT INTO FormChem VALUES(7,3,7,3.0,0,1);
INSERT INTO FormChem VALUES(8,3,8,2.0,0,1);
INSERT INTO FormChem VALUES(9,3,9,5.0,0,1);
INSERT INTO FormChem VALUES(10,3,5,22.0,0,0);
INSERT INTO FormChem VALUES(11,3,6,68.0,1,0);
INSERT INTO FormChem VALUES(12,4,10,50.0,0,1);
INSERT INTO FormChem VALUES(13,4,11,50.0,0,0);
INSERT INTO FormChem VALUES(14,4,12,100.0,1,0);
INSERT INTO FormChem VALUES(15,5,13,3.0,0,1);
INSERT INTO FormChem VALUES(16,5,14,1.5,0,1);
INSERT INTO FormChem VALUES(17,5,15,45.500000000000000001,1,0);
INSERT INTO FormChem VALUES(18,6,16,80.0,0,1);
INSERT INTO FormChem VALUES(19,6,17,80.0,0,1);
INSERT INTO FormChem VALUES(20,6,18,80.0,0,1);
INSERT INTO FormChem VALUES(21,7,19,0.2000000000000000111,0,1);
INSERT INTO FormChem VALUES(22,7,20,8.4000000000000003552,0,0);
INSERT INTO FormChem VALUES(23,7,21,91.400000000000005684,1,0);
INSERT INTO FormChem VALUES(24,8,22,8.0,0,1);
INSERT INTO FormChem VALUES(25,8,2,5.0,0,0);
INSERT INTO FormChem VALUES(26,8,23,87.0,1,0);
INSERT INTO FormChem VALUES(27,9,25,3.0,0,1);
INSERT INTO FormChem VALUES(28,9,26,1.5,0,0);
INSERT INTO FormChem VALUES(29,9,3,25.499999999999999999,1,0);
INSERT INTO FormChem VALUES(30,10,27,0.059999999999999997779,0,1);
INSERT INTO FormChem VALUES(31,10,28,0.014999999999999999444,0,1);
INSERT INTO FormChem VALUES(32,10,26,1.5,0,0);
INSERT INTO FormChem VALUES(33,10,3,28.42500000000000071,1,0);
INSERT INTO FormChem VALUES(34,11,29,1.0,0,1);
INSERT INTO FormChem VALUES(35,11,30,33.0,0,0);
INSERT INTO FormChem VALUES(36,11,31,0.5,0,0);
INSERT INTO FormChem VALUES(37,11,21,15.499999999999999999,1,0);
INSERT INTO FormChem VALUES(38,12,32,20.0,0,1);
INSERT INTO FormChem VALUES(39,12,14,6.0,0,1);
INSERT INTO FormChem VALUES(40,12,21,14.0,0,0);
INSERT INTO FormChem VALUES(41,12,3,60.0,1,0);
INSERT INTO FormChem VALUES(42,13,32,20.0,0,1);
INSERT INTO FormChem VALUES(43,13,21,20.0,0,0);
INSERT INTO FormChem VALUES(44,13,46,160.0,1,0);
INSERT INTO FormChem VALUES(45,14,33,5.0,0,1);
INSERT INTO FormChem VALUES(46,14,12,95.0,1,0);
INSERT INTO FormChem VALUES(47,15,34,1.1999999999999999555,0,1);
INSERT INTO FormChem VALUES(48,15,35,0.014999999999999999444,0,1);
INSERT INTO FormChem VALUES(49,15,1,0.29999999999999998889,0,1);
INSERT INTO FormChem VALUES(50,15,36,0.059999999999999997779,0,0);
INSERT INTO FormChem VALUES(51,15,2,1.5,0,0);
INSERT INTO FormChem VALUES(52,15,3,26.92500000000000071,1,0);
INSERT INTO FormChem VALUES(53,16,37,0.089999999999999996669,0,1);
INSERT INTO FormChem VALUES(54,16,9,0.4500000000000000111,0,1);
INSERT INTO FormChem VALUES(55,16,26,0.9000000000000000222,0,0);
INSERT INTO FormChem VALUES(56,16,12,28.559999999999998721,1,0);
INSERT INTO FormChem VALUES(57,17,38,0.35099999999999997868,0,1);
INSERT INTO FormChem VALUES(58,17,23,49.649000000000000909,0,0);
INSERT INTO FormChem VALUES(59,17,24,50.0,1,0);
INSERT INTO FormChem VALUES(60,18,39,0.037499999999999998612,0,1);
INSERT INTO FormChem VALUES(61,18,30,1.0,0,0);
INSERT INTO FormChem VALUES(62,18,3,48.962499999999998579,1,0);
INSERT INTO FormChem VALUES(63,19,40,0.029999999999999998889,0,1);
INSERT INTO FormChem VALUES(64,19,44,0.59999999999999997779,0,0);
INSERT INTO FormChem VALUES(65,19,12,29.370000000000000994,1,0);
INSERT INTO FormChem VALUES(66,20,41,0.050000000000000002775,0,1);
INSERT INTO FormChem VALUES(67,20,21,9.9499999999999992894,0,0);
INSERT INTO FormChem VALUES(68,20,23,40.0,1,0);
INSERT INTO FormChem VALUES(69,21,42,12.5,0,0);
INSERT INTO FormChem VALUES(70,21,43,12.0,0,0);
INSERT INTO FormChem VALUES(71,21,44,56.0,0,1);
INSERT INTO FormChem VALUES(72,21,45,0.5,0,0);
INSERT INTO FormChem VALUES(73,21,21,19.0,0,0);
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
INSERT INTO Log VALUES(1,1,'Hydrocortisone 1% Cream','1 %','Topical corticosteroid in vanishing base','GMS',9,100,5,'00000-0101-10','2026-08-31 09:12:40','SV260001','MR','JT','<Results Value="SV26"><Size Value="100 ml"/><Type Value="Custom"/><LiftingCycles Value="20"/><Interuption Value="A"/><PreGrind Value="2"/><PreparationNumber Value="0001"/><TotalMixingRevolutions Value="4470"/><HardwareVersion Value="2.1"/></Results>','2.1',11.11250000000000071,4.8453999999999997072,'','<CustomMix PreGrind="1" FreeSpin="2"><Mix LiftRPM="1200" MixRPM="600" MixTime="00:00:30" Cycles="0"/><Mix LiftRPM="1200" MixRPM="1200" MixTime="00:01:30" Cycles="0"/><Mix LiftRPM="960" MixRPM="1800" MixTime="00:02:00" Cycles="0"/></CustomMix>');
INSERT INTO Log VALUES(2,6,'Magic Mouthwash','1:1:1','Swish and spit, equal parts','MLS',5,240,7,'00000-0106-24','2026-08-31 10:05:11','SV260002','MR','JT','<Results Value="SV26"><Size Value="300 ml"/><Type Value="Suspension"/><LiftingCycles Value="22"/><Interuption Value="A"/><PreGrind Value="0"/><PreparationNumber Value="0002"/><TotalMixingRevolutions Value="4840"/><HardwareVersion Value="2.1"/></Results>','2.1',17.920000000000001705,6.9599999999999999644,'','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Log VALUES(3,2,'Ketoprofen 10% Gel','10 %','Topical anti-inflammatory','GMS',9,60,5,'00000-0102-10','2026-09-03 14:41:09','SV260003','AK','MR','<Results Value="SV26"><Size Value="100 ml"/><Type Value="Custom"/><LiftingCycles Value="24"/><Interuption Value="A"/><PreGrind Value="2"/><PreparationNumber Value="0003"/><TotalMixingRevolutions Value="5210"/><HardwareVersion Value="2.1"/></Results>','2.1',22.39199999999999946,8.8079999999999998294,'First jar leaked at the lid, remade.','<CustomMix PreGrind="2" FreeSpin="1"><Mix LiftRPM="1200" MixRPM="1200" MixTime="00:00:00" Cycles="6"/><Mix LiftRPM="1440" MixRPM="2004" MixTime="00:03:00" Cycles="0"/></CustomMix>');
INSERT INTO Log VALUES(4,10,'Estriol & Estradiol Cream','2.5 mg/g','Transdermal hormone cream, 80:20','GMS',9,30,3,'00000-0110-03','2026-09-08 11:20:55','SV260004','AK','JT','<Results Value="SV26"><Size Value="30 ml"/><Type Value="Custom"/><LiftingCycles Value="26"/><Interuption Value="A"/><PreGrind Value="2"/><PreparationNumber Value="0004"/><TotalMixingRevolutions Value="5580"/><HardwareVersion Value="2.1"/></Results>','2.1',3.2240999999999999658,1.3796999999999999264,'','<CustomMix PreGrind="4" FreeSpin="2"><Mix LiftRPM="720" MixRPM="900" MixTime="00:01:00" Cycles="0"/><Mix LiftRPM="1200" MixRPM="1800" MixTime="00:02:30" Cycles="0"/><Mix LiftRPM="1200" MixRPM="2400" MixTime="00:00:00" Cycles="12"/></CustomMix>');
INSERT INTO Log VALUES(5,13,'Crème à l''Urée 10%','10 %','Crème émolliente, peau très sèche','GMS',1,400,8,'00000-0113-20','2026-09-15 08:58:02','SV260005','JT','MR','<Results Value="SV26"><Size Value="500 ml"/><Type Value="Cream"/><LiftingCycles Value="28"/><Interuption Value="A"/><PreGrind Value="0"/><PreparationNumber Value="0005"/><TotalMixingRevolutions Value="5950"/><HardwareVersion Value="2.1"/></Results>','2.1',54.159999999999996591,21.660000000000000142,'Étiquette bilingue','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Log VALUES(6,3,'Triple Relief Gel','3/2/5 %','Diclofenac, baclofen and lidocaine in transdermal gel','GMS',9,120,6,'00000-0103-10','2026-09-21 16:30:47','SV260006','MR','AK','<Results Value="SV26"><Size Value="200 ml"/><Type Value="Custom"/><LiftingCycles Value="30"/><Interuption Value="A"/><PreGrind Value="2"/><PreparationNumber Value="0006"/><TotalMixingRevolutions Value="6320"/><HardwareVersion Value="2.1"/></Results>','2.1',77.424000000000006592,30.756000000000000226,'','<CustomMix PreGrind="2" FreeSpin="1"><Mix LiftRPM="1200" MixRPM="1200" MixTime="00:00:00" Cycles="6"/><Mix LiftRPM="1440" MixRPM="2004" MixTime="00:03:00" Cycles="0"/></CustomMix>');
INSERT INTO Log VALUES(7,17,'Sildenafil Suspension','2.5 mg/mL','Oral suspension for children','MLS',5,100,5,'00000-0117-10','2026-10-02 13:15:30','SV260007','AK','JT','<Results Value="SV26"><Size Value="100 ml"/><Type Value="Suspension"/><LiftingCycles Value="32"/><Interuption Value="A"/><PreGrind Value="0"/><PreparationNumber Value="0007"/><TotalMixingRevolutions Value="6690"/><HardwareVersion Value="2.1"/></Results>','2.1',14.874900000000000233,5.8003999999999997783,'Flavor: cherry','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Log VALUES(8,1,'Hydrocortisone 1% Cream','1 %','Topical corticosteroid in vanishing base','GMS',9,50,4,'00000-0101-10','2026-10-09 09:47:18','SV260008','MR','JT','<Results Value="SV26"><Size Value="50 ml"/><Type Value="Custom"/><LiftingCycles Value="34"/><Interuption Value="A"/><PreGrind Value="2"/><PreparationNumber Value="0008"/><TotalMixingRevolutions Value="7060"/><HardwareVersion Value="2.1"/></Results>','2.1',5.5563000000000002387,2.4226999999999998536,'','<CustomMix PreGrind="1" FreeSpin="2"><Mix LiftRPM="1200" MixRPM="600" MixTime="00:00:30" Cycles="0"/><Mix LiftRPM="1200" MixRPM="1200" MixTime="00:01:30" Cycles="0"/><Mix LiftRPM="960" MixRPM="1800" MixTime="00:02:00" Cycles="0"/></CustomMix>');
INSERT INTO Log VALUES(9,21,'Cold Cream, Sixteen Steps','','Slow cooling programme for a fine emulsion','GMS',9,100,5,'00000-0121-10','2026-10-14 15:03:26','SV260009','JT','AK','<Results Value="SV26"><Size Value="100 ml"/><Type Value="Custom"/><LiftingCycles Value="36"/><Interuption Value="A"/><PreGrind Value="2"/><PreparationNumber Value="0009"/><TotalMixingRevolutions Value="7430"/><HardwareVersion Value="2.1"/></Results>','2.1',5.9515000000000002344,2.3675000000000001598,'','<CustomMix PreGrind="0" FreeSpin="4"><Mix LiftRPM="480" MixRPM="300" MixTime="00:00:10" Cycles="0"/><Mix LiftRPM="600" MixRPM="600" MixTime="00:00:20" Cycles="0"/><Mix LiftRPM="720" MixRPM="900" MixTime="00:00:30" Cycles="0"/><Mix LiftRPM="960" MixRPM="1200" MixTime="00:01:00" Cycles="0"/><Mix LiftRPM="1200" MixRPM="1500" MixTime="00:01:30" Cycles="0"/><Mix LiftRPM="1200" MixRPM="1800" MixTime="00:02:00" Cycles="0"/><Mix LiftRPM="1200" MixRPM="2100" MixTime="00:02:00" Cycles="0"/><Mix LiftRPM="1200" MixRPM="2292" MixTime="00:01:00" Cycles="0"/><Mix LiftRPM="960" MixRPM="1800" MixTime="00:02:00" Cycles="0"/><Mix LiftRPM="960" MixRPM="1500" MixTime="00:02:00" Cycles="0"/><Mix LiftRPM="720" MixRPM="1200" MixTime="00:02:30" Cycles="0"/><Mix LiftRPM="720" MixRPM="900" MixTime="00:03:00" Cycles="0"/><Mix LiftRPM="480" MixRPM="600" MixTime="00:03:00" Cycles="0"/><Mix LiftRPM="480" MixRPM="480" MixTime="00:00:00" Cycles="8"/><Mix LiftRPM="240" MixRPM="300" MixTime="00:00:00" Cycles="4"/><Mix LiftRPM="240" MixRPM="120" MixTime="00:00:00" Cycles="2"/></CustomMix>');
INSERT INTO Log VALUES(10,5,'Whitfield''s Ointment','6 % / 3 %','Benzoic and salicylic acid ointment','GMS',2,50,4,'00000-0105-05','2026-10-22 10:33:51','SV260010','AK','MR','<Results Value="SV26"><Size Value="50 ml"/><Type Value="Ointment"/><LiftingCycles Value="38"/><Interuption Value="A"/><PreGrind Value="0"/><PreparationNumber Value="0010"/><TotalMixingRevolutions Value="7800"/><HardwareVersion Value="2.1"/></Results>','2.1',4.0650000000000003907,1.6670000000000000373,'','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Log VALUES(11,20,'Naltrexone Suspension','1 mg/mL','Low dose oral suspension','MLS',5,50,4,'00000-0120-05','2026-11-05 12:08:14','SV260011','MR','JT','<Results Value="SV26"><Size Value="50 ml"/><Type Value="Suspension"/><LiftingCycles Value="40"/><Interuption Value="A"/><PreGrind Value="0"/><PreparationNumber Value="0011"/><TotalMixingRevolutions Value="8170"/><HardwareVersion Value="2.1"/></Results>','2.1',5.5848000000000004305,2.1848999999999998422,'','<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO Log VALUES(12,2,'Ketoprofen 10% Gel','10 %','Topical anti-inflammatory','GMS',9,100,5,'00000-0102-10','2026-11-12 17:22:36','SV260012','AK','JT','<Results Value="SV26"><Size Value="100 ml"/><Type Value="Custom"/><LiftingCycles Value="42"/><Interuption Value="A"/><PreGrind Value="2"/><PreparationNumber Value="0012"/><TotalMixingRevolutions Value="8540"/><HardwareVersion Value="2.1"/></Results>','2.1',37.320000000000000284,14.679999999999999715,'','<CustomMix PreGrind="2" FreeSpin="1"><Mix LiftRPM="1200" MixRPM="1200" MixTime="00:00:00" Cycles="6"/><Mix LiftRPM="1440" MixRPM="2004" MixTime="00:03:00" Cycles="0"/></CustomMix>');
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
INSERT INTO LogChem VALUES(1,1,1,'Hydrocortisone Micronized','GMS','HC24118','00000-2101-25',2.8500000000000000888,6.9000000000000003552,'Northfield','PWD','9E3779B1-9E37-444F-87DB-0A5E6F8E96FB',1.0);
INSERT INTO LogChem VALUES(2,1,2,'Glycerin','MLS','GL0093','00000-1140-48',0.040000000000000000832,0.089999999999999996669,'Harbor','LIQU','3C6EF362-3C6E-489E-8FB6-14BCDF1D2DF6',2.0);
INSERT INTO LogChem VALUES(3,1,3,'Vanishing Cream Base','GMS','VB5512','00000-3302-16',1.9599999999999999644,4.1200000000000001065,'Larkspur','CRM','DAA66D13-DAA5-4CED-8791-1F1B4EABC4F1',97.0);
INSERT INTO LogChem VALUES(4,2,16,'Diphenhydramine 12.5 mg/5 mL','MLS','DP6650','00000-4102-16',1.1200000000000001065,2.8799999999999998934,'Harbor','SOLN','E3779B10-E370-44F0-8DB0-A5E6F8E96FB0',80.0);
INSERT INTO LogChem VALUES(5,2,17,'Lidocaine Viscous 2%','MLS','LV2107','00000-4110-10',4.9599999999999999644,12.80000000000000071,'Harbor','SOLN','81AF14C1-81A7-493F-858B-B045687806AB',80.0);
INSERT INTO LogChem VALUES(6,2,18,'Antacid Suspension','MLS','AN3008','00000-4120-12',0.88000000000000000444,2.2400000000000002131,'Harbor','SUSP','1FE68E72-1FDE-4D8E-8D66-BAA3D8069DA6',80.0);
INSERT INTO LogChem VALUES(7,3,4,'Ketoprofen','GMS','KP7741','00000-2207-10',5.5199999999999995736,13.80000000000000071,'Northfield','PWD','78DDE6C4-78DC-413C-8F6C-2979BE3A5BEC',6.0);
INSERT INTO LogChem VALUES(8,3,5,'Lecithin Isopropyl Palmitate','MLS','LIP331','00000-3310-08',1.4499999999999999555,3.7000000000000001776,'Larkspur','SOLN','17156075-1713-458B-8747-33D82DC8F2E7',13.199999999999999289);
INSERT INTO LogChem VALUES(9,3,6,'Poloxamer 407 20% Gel','GMS','PX2040','00000-3311-16',1.8400000000000000799,4.9000000000000003552,'Larkspur','GEL','B54CDA26-B54A-49DA-8F22-3E369D5789E2',40.799999999999997158);
INSERT INTO LogChem VALUES(10,4,27,'Estriol Micronized','GMS','ET1190','00000-2405-05',0.58999999999999996891,1.4699999999999999733,'Ashdown','PWD','AFD9D5AB-AFCD-4455-8419-17F5C409EC79',0.059999999999999997779);
INSERT INTO LogChem VALUES(11,4,28,'Estradiol Hemihydrate','GMS','ED0655','00000-2406-05',0.19000000000000000222,0.46999999999999997335,'Ashdown','PWD','4E114F5C-4E04-48A4-8BF4-225433988374',0.014999999999999999444);
INSERT INTO LogChem VALUES(12,4,26,'Propylene Glycol','MLS','PRG209','00000-1150-16',0.029999999999999998889,0.080000000000000001665,'Harbor','LIQU','11A25BFA-1196-4006-8C3E-0D97547B557E',1.5);
INSERT INTO LogChem VALUES(13,4,3,'Vanishing Cream Base','GMS','VB5512','00000-3302-16',0.56999999999999995115,1.2099999999999999644,'Larkspur','CRM','DAA66D13-DAA5-4CED-8791-1F1B4EABC4F1',28.42500000000000071);
INSERT INTO LogChem VALUES(14,5,32,'Urea','GMS','UR5560','00000-1540-16',1.1200000000000001065,2.7999999999999998223,'Northfield','CRYS','C6EF3620-C6E0-49E0-8B60-4BCDF1D2DF60',40.0);
INSERT INTO LogChem VALUES(15,5,21,'Purified Water','MLS','PW1126','00000-1001-01',0.059999999999999997779,0.16000000000000000333,'In-house','LIQU','FA8CFB85-FA83-4A7B-84F7-D9BF26B26297',40.0);
INSERT INTO LogChem VALUES(16,5,46,'Crème Mère O''Leary','GMS','CMO 17/4','00000-3350-16',20.480000000000000426,51.200000000000002843,'Évrard SA','CRM','6DF7DDCE-6DE2-4632-895A-DCF80B9F211A',320.0);
INSERT INTO LogChem VALUES(17,6,7,'Diclofenac Sodium','GMS','DS1019','00000-2210-10',4.1399999999999996802,10.619999999999999218,'Quill & Co.','PWD','538453D7-5381-4E29-86FD-48950CE620DD',3.6000000000000000888);
INSERT INTO LogChem VALUES(18,6,8,'Baclofen','GMS','BC0467','00000-2215-05',15.359999999999999431,37.920000000000001704,'Quill & Co.','PWD','F1BBCD88-F1B8-4278-8ED8-52F37C74B7D8',2.3999999999999999111);
INSERT INTO LogChem VALUES(19,6,9,'Lidocaine','GMS','LD8823','00000-2140-25',4.6799999999999997157,11.699999999999999289,'Northfield','CRYS','8FF34739-8FEF-46C7-86B3-5D51EC034ED3',6.0);
INSERT INTO LogChem VALUES(20,6,5,'Lecithin Isopropyl Palmitate','MLS','LIP331','00000-3310-08',2.8999999999999999111,7.3899999999999996802,'Larkspur','SOLN','17156075-1713-458B-8747-33D82DC8F2E7',26.399999999999998578);
INSERT INTO LogChem VALUES(21,6,6,'Poloxamer 407 20% Gel','GMS','PX2040','00000-3311-16',3.6699999999999999289,9.7899999999999991473,'Larkspur','GEL','B54CDA26-B54A-49DA-8F22-3E369D5789E2',81.599999999999994317);
INSERT INTO LogChem VALUES(22,7,38,'Sildenafil Citrate','GMS','SC6677','00000-2605-05',2.5600000000000000532,6.4100000000000001421,'Quill & Co.','PWD','7C3C1046-7C2A-43BA-8A82-8A048F2A6942',0.35099999999999997868);
INSERT INTO LogChem VALUES(23,7,23,'Suspending Vehicle','MLS','SV0812','00000-3401-16',1.6899999999999999467,4.3700000000000001065,'Larkspur','SUSP','36FBEEE7-36F1-4319-84AD-EE7C05CF908D',49.649000000000000909);
INSERT INTO LogChem VALUES(24,7,24,'Sweetening Syrup','MLS','SS0813','00000-3402-16',1.5500000000000000444,4.0999999999999996447,'Larkspur','LIQU','D5336898-D528-4768-8C88-F8DA755E2788',50.0);
INSERT INTO LogChem VALUES(25,8,1,'Hydrocortisone Micronized','GMS','HC24118','00000-2101-25',1.4299999999999999378,3.4500000000000001776,'Northfield','PWD','9E3779B1-9E37-444F-87DB-0A5E6F8E96FB',0.5);
INSERT INTO LogChem VALUES(26,8,2,'Glycerin','MLS','GL0093','00000-1140-48',0.020000000000000000416,0.050000000000000002775,'Harbor','LIQU','3C6EF362-3C6E-489E-8FB6-14BCDF1D2DF6',1.0);
INSERT INTO LogChem VALUES(27,8,3,'Vanishing Cream Base','GMS','VB5512','00000-3302-16',0.97999999999999998223,2.0600000000000000532,'Larkspur','CRM','DAA66D13-DAA5-4CED-8791-1F1B4EABC4F1',48.499999999999999999);
INSERT INTO LogChem VALUES(28,9,42,'Cetyl Esters Wax','GMS','CE8105','00000-1630-16',0.9000000000000000222,2.25,'Larkspur','FLAKE','F519F70A-F506-44F6-89EE-B37E4D64C52E',12.5);
INSERT INTO LogChem VALUES(29,9,43,'White Wax','GMS','WW4407','00000-1631-16',0.69999999999999995559,1.7399999999999999911,'Larkspur','SOLID','935170BB-933D-4945-81C9-BDDCBCF35C29',12.0);
INSERT INTO LogChem VALUES(30,9,44,'Mineral Oil','GMS','MO2230','00000-1632-32',0.72999999999999998223,1.8500000000000000888,'Harbor','LIQU','3188EA6C-3174-4D94-89A4-C83B2C81F324',56.0);
INSERT INTO LogChem VALUES(31,9,45,'Sodium Borate','GMS','BO1014','00000-1560-16',0.020000000000000000416,0.040000000000000000832,'Northfield','CRYS','CFC0641D-CFAB-41E3-817F-D2999C108A1F',0.5);
INSERT INTO LogChem VALUES(32,9,21,'Purified Water','MLS','PW1126','00000-1001-01',0.029999999999999998889,0.080000000000000001665,'In-house','LIQU','FA8CFB85-FA83-4A7B-84F7-D9BF26B26297',19.0);
INSERT INTO LogChem VALUES(33,10,13,'Benzoic Acid','GMS','BA2281','00000-1522-16',0.17000000000000001221,0.41999999999999998445,'Northfield','CRYS','08D12DFD-08CB-4803-861F-86CBAA3DAABF',3.0);
INSERT INTO LogChem VALUES(34,10,14,'Salicylic Acid','GMS','SA3390','00000-1524-16',0.089999999999999996669,0.23000000000000000999,'Northfield','PWD','A708A7AE-A702-4C52-8DFA-912A19CC41BA',1.5);
INSERT INTO LogChem VALUES(35,10,15,'Polyethylene Glycol Ointment','GMS','PEG771','00000-1610-16',1.40999999999999992,3.4100000000000001421,'Larkspur','UNG','4540215F-4539-40A1-85D5-9B88895AD8B5',45.500000000000000001);
INSERT INTO LogChem VALUES(36,11,41,'Naltrexone Hydrochloride','GMS','NX2019','00000-2620-05',0.81000000000000005329,2.0299999999999998046,'Quill & Co.','PWD','56E27D59-56CF-40A7-8213-A91FDDD62E33',0.050000000000000002775);
INSERT INTO LogChem VALUES(37,11,21,'Purified Water','MLS','PW1126','00000-1001-01',0.010000000000000000208,0.040000000000000000832,'In-house','LIQU','FA8CFB85-FA83-4A7B-84F7-D9BF26B26297',9.9499999999999992894);
INSERT INTO LogChem VALUES(38,11,23,'Suspending Vehicle','MLS','SV0812','00000-3401-16',1.3600000000000000976,3.5200000000000000177,'Larkspur','SUSP','36FBEEE7-36F1-4319-84AD-EE7C05CF908D',40.0);
INSERT INTO LogChem VALUES(39,12,4,'Ketoprofen','GMS','KP7741','00000-2207-10',9.1999999999999992894,23,'Northfield','PWD','78DDE6C4-78DC-413C-8F6C-2979BE3A5BEC',10.0);
INSERT INTO LogChem VALUES(40,12,5,'Lecithin Isopropyl Palmitate','MLS','LIP331','00000-3310-08',2.4199999999999999289,6.1600000000000001421,'Larkspur','SOLN','17156075-1713-458B-8747-33D82DC8F2E7',22.0);
INSERT INTO LogChem VALUES(41,12,6,'Poloxamer 407 20% Gel','GMS','PX2040','00000-3311-16',3.0600000000000000532,8.1600000000000001421,'Larkspur','GEL','B54CDA26-B54A-49DA-8F22-3E369D5789E2',68.0);
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
INSERT INTO Patient VALUES(1,'Margaret','Abernathy','14 Orchard Lane','','Millbrook','OH','44017','USA','1951-03-07 00:00:00','440-555-0117','','Allergic to lanolin');
INSERT INTO Patient VALUES(2,'Seán','O''Brien','208 Quarry Road','Apt. 3B','Millbrook','OH','44017','USA','1980-10-31 00:00:00','440-555-0142','','');
INSERT INTO Patient VALUES(3,'Lucía','Nuñez','77 Elm Street','','Fairhaven','OH','44118','USA','2019-06-15 00:00:00','440-555-0163','440-555-0164','Weight 18 kg. Mother picks up.');
INSERT INTO Patient VALUES(4,'Walter','Katz','5 Station Square','','Millbrook','OH','44018','USA','1944-12-01 00:00:00','440-555-0175','','');
INSERT INTO Patient VALUES(5,'Élodie','Tremblay','1120 rue du Port','','Saint-Paul','QC','G0X 1A0','Canada',NULL,'418-555-0109','','Étiquettes en français');
INSERT INTO Patient VALUES(6,'Jin','Xu','39 Harbor View','Unit 12','Fairhaven','OH','44118','USA','1992-02-29 00:00:00','440-555-0188','','');
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
INSERT INTO RXs VALUES(1,1,1,'2026-08-31 00:00:00',100.0,11.11250000000000071,4.8453999999999997072,'Consult','Dr. Helen Marsh');
INSERT INTO RXs VALUES(2,2,4,'2026-08-31 00:00:00',240.0,17.920000000000001705,6.9599999999999999644,NULL,'Dr. P. Okafor');
INSERT INTO RXs VALUES(3,4,1,'2026-09-08 00:00:00',30.0,3.2240999999999999658,1.3796999999999999264,'Consult','Dr. Helen Marsh');
INSERT INTO RXs VALUES(4,5,5,'2026-09-15 00:00:00',400.0,54.159999999999996591,21.660000000000000142,NULL,'Dre Anne L''Écuyer');
INSERT INTO RXs VALUES(5,6,2,'2026-09-22 00:00:00',120.0,77.424000000000006592,30.756000000000000226,NULL,'Dr. P. Okafor');
INSERT INTO RXs VALUES(6,7,3,'2026-10-02 00:00:00',100.0,14.874900000000000233,5.8003999999999997783,'Consult with mother','Dr. S. Brandt');
INSERT INTO RXs VALUES(7,8,1,'2026-10-09 00:00:00',50.0,5.5563000000000002387,2.4226999999999998536,NULL,'Dr. Helen Marsh');
INSERT INTO RXs VALUES(8,11,6,'2026-11-05 00:00:00',50.0,5.5848000000000004305,2.1848999999999998422,NULL,'Dr. S. Brandt');
CREATE TABLE Options (
    opt_Version DOUBLE
        CONSTRAINT opt_Version CHECK (typeof(opt_Version) = 'real')
);
INSERT INTO Options VALUES(1.0);
DELETE FROM sqlite_sequence;
INSERT INTO sqlite_sequence VALUES('Chemical',46);
INSERT INTO sqlite_sequence VALUES('Formula',22);
INSERT INTO sqlite_sequence VALUES('FormChem',73);
INSERT INTO sqlite_sequence VALUES('Log',12);
INSERT INTO sqlite_sequence VALUES('LogChem',41);
INSERT INTO sqlite_sequence VALUES('Patient',6);
INSERT INTO sqlite_sequence VALUES('RXs',8);
CREATE INDEX Chemical_Name ON Chemical (chm_Name);
CREATE INDEX Chemical_NDC ON Chemical (chm_NDC);
CREATE INDEX Chemical_Lot ON Chemical (chm_Lot);
CREATE INDEX Formula_Name ON Formula (frm_Name);
CREATE INDEX Formula_NDC ON Formula (frm_NDC);
CREATE INDEX Log_Date ON Log (log_Date, log_Name, log_NDC, log_Lot);
CREATE INDEX Patient_Name ON Patient (pat_LName, pat_FName);
CREATE INDEX Patient_Phone ON Patient (pat_Phone);
CREATE INDEX FormChem_Formula ON FormChem (FormulaID);
CREATE INDEX FormChem_Chemical ON FormChem (ChemicalID);
CREATE INDEX Log_Formula ON Log (FormulaID, log_Date);
CREATE INDEX LogChem_Log ON LogChem (LogID);
CREATE INDEX RXs_Patient ON RXs (PatientID, rxs_Date);
CREATE INDEX RXs_Log ON RXs (LogID);
COMMIT;
