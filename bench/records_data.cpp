// Filling the benchmark's file.
#include "records_data.h"

#include "platform/data/Connection.h"
#include "shared/ErrorReporter.h"
#include "shared/basMain.h"

#include <QFile>
#include <stdexcept>

namespace bench {

namespace {

const char* const content = R"(
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1000)
INSERT INTO Chemical (ChemicalID, chm_Name, chm_Units, chm_Lot, chm_NDC, chm_Cost, chm_AWP, chm_Notes, chm_Form,
                      chm_GUID, chm_Supplier)
SELECT i, 'Chemical ' || i, 'GMS', 'L' || i, '100-' || i, (i % 97) * 0.35, (i % 89) * 0.7, '', 'Powder', 'G' || i,
       'Supplier' FROM n;
INSERT INTO Formula (FormulaID, frm_Name, frm_Units, frm_Quantity, frm_JarSize, frm_FormType, frm_AWP, frm_Mix)
VALUES (1, 'Thirty', 'GMS', 100, 5, 3, 0, '<CustomMix PreGrind="0" FreeSpin="1"/>'),
       (2, 'Hundred', 'GMS', 100, 5, 3, 0, '<CustomMix PreGrind="0" FreeSpin="1"/>'),
       (3, 'Thousand', 'GMS', 100, 5, 3, 0, '<CustomMix PreGrind="0" FreeSpin="1"/>');
INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty, fch_QS, fch_Active)
SELECT FormulaID, ChemicalID, (ChemicalID % 50) * 0.137, 0, 1 FROM Formula, Chemical
WHERE ChemicalID <= CASE FormulaID WHEN 1 THEN 30 WHEN 2 THEN 100 ELSE 1000 END;
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 32000)
INSERT INTO Log (LogID, FormulaID, log_Name, log_Strength, log_Desc, log_Units, log_FormType, log_Quantity,
                 log_JarSize, log_NDC, log_Date, log_Lot, log_Initials, log_Verified, log_Results, log_Version,
                 log_AWP, log_Cost, log_Notes, log_Mix)
SELECT i, 1, CASE WHEN i <= 1200 THEN 'Gel Few ' ELSE 'Gel Many ' END || i, '1 %', 'Topical', 'GMS', 3, 100, 5,
       '900-' || i, datetime('2018-01-01', '+' || (i * 97) || ' minutes'), 'AB' || i, 'AB', 'CD',
       '<Results Value="AB"><PreparationNumber Value="' || i || '"/></Results>', '1.0', i * 0.1, i * 0.05, '',
       '<CustomMix PreGrind="0" FreeSpin="1"/>' FROM n;
)";

}  // namespace

Pharmacy::Pharmacy() {
    const QString path = m_folder.filePath("bench.mdb");
    QFile schema(QString::fromUtf8(SORVANTO_SCHEMA));
    if (!schema.open(QIODevice::ReadOnly) || sqlite3_open(path.toUtf8().constData(), &m_handle) != SQLITE_OK)
        throw std::runtime_error("No file to measure with.");
    run(schema.readAll().constData());
    run((QByteArray("BEGIN;") + content + "COMMIT;").constData());
    using namespace sorvanto;
    basMain::ErrorReporter = std::make_shared<sorvanto::ErrorReporter>();
    basMain::gConnection = std::make_shared<platform::Connection>();
    basMain::databaseLocation = [path] { return path; };
}

Pharmacy::~Pharmacy() {
    sorvanto::basMain::reset();
    sqlite3_close(m_handle);
}

void Pharmacy::run(const char* statements) {
    char* message = nullptr;
    if (sqlite3_exec(m_handle, statements, nullptr, nullptr, &message) != SQLITE_OK)
        throw std::runtime_error(message);
}

int Pharmacy::bare(const char* statement) {
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v2(m_handle, statement, -1, &prepared, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(m_handle));
    int rows = 0;
    qsizetype bytes = 0;
    while (sqlite3_step(prepared) == SQLITE_ROW) {
        ++rows;
        for (int field = 0; field < sqlite3_column_count(prepared); ++field)
            bytes += sqlite3_column_text(prepared, field) ? sqlite3_column_bytes(prepared, field) : 0;
    }
    sqlite3_finalize(prepared);
    return bytes > 0 ? rows : 0;
}

platform::XmlDocumentPtr parsed(const char* xml) {
    auto document = platform::XmlDocument::create();
    document->loadXML(xml);
    return document;
}

}  // namespace bench
