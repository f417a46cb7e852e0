// The records' test world.
#include "RecordsTest.h"

using namespace sorvanto;

namespace {

class StubSigning : public SigningDialog {
public:
    explicit StubSigning(Signing& signing) : m_signing(signing) {}
    void setFormula(const platform::XmlDocumentPtr& document) override { m_signing.document = document; }
    void log_Lot(const QString& lot) override { m_signing.lot = lot; }
    void showModal() override { ++m_signing.shown; }
    clsFormulaPtr getFormula() override { return m_signing.formula; }
    QString initials() const override { return m_signing.initials; }
    QString verified() const override { return m_signing.verified; }

private:
    Signing& m_signing;
};

}  // namespace

void RecordsTest::SetUp() {
    TestProgram::SetUp();
    openDatabase();
    GUIDFactory::setSource([](Guid& guid) {
        guid = {0x1234ABCD, 0x00EF, 0x4001, {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88}};
        return 0;
    });
}

void RecordsTest::TearDown() {
    GUIDFactory::setSource({});
    makeSigningDialog = nullptr;
    signing = {};
    TestProgram::TearDown();
}

QString RecordsTest::traced() const {
    QString text;
    for (const QString& statement : statements)
        text += ">" + statement + "<\n";
    return text;
}

void RecordsTest::expectStatements(const QString& goldenName) const {
    support::expectGolden("records/" + goldenName, traced());
}

void RecordsTest::failStatement(const QString& part, std::int32_t number) {
    basMain::gConnection->setTrace([this, part, number](const QString& statement) {
        statements << statement;
        if (statement.contains(part))
            throw platform::RuntimeError(number, "Made to fail", "test", statement);
    });
}

void RecordsTest::seedChemicals() {
    sql("INSERT INTO Chemical (ChemicalID, chm_Name, chm_Units, chm_Lot, chm_NDC, chm_Cost, chm_AWP, "
        "chm_Notes, chm_Form, chm_GUID, chm_Supplier) VALUES "
        "(1, 'Aspirin', 'GMS', 'L1', '111-1', 0.25, 0.5, 'n1', 'Powder', 'G1', 'Alpha'),"
        "(2, 'Borax', 'GMS', 'L2', '222-2', 1.005, 2.675, 'n2', 'Powder', 'G2', 'Alpha'),"
        "(3, 'Camphor', 'GMS', 'L3', '333-3', 2, 3.5, 'keep cool', 'Crystal', 'G3', 'Beta'),"
        "(4, 'Menthol', 'GMS', 'L4', '333-4', 0.1, 0.2, 'n4', 'Crystal', 'G4', 'Beta');");
}

void RecordsTest::seedFormulas() {
    seedChemicals();
    sql("INSERT INTO Formula (FormulaID, frm_Name, frm_Desc, frm_Strength, frm_Units, frm_Instructions, "
        "frm_Quantity, frm_JarSize, frm_FormType, frm_AWP, frm_NDC, frm_GUID, frm_Mix) VALUES "
        "(1, 'Cooling Gel', 'Topical', '2 %', 'GMS', 'Stir.', 10, 4, 2, 7, '900-1', 'F1', "
        "'<CustomMix PreGrind=\"2\" FreeSpin=\"1\"><Mix LiftRPM=\"1200\" MixRPM=\"1200\" "
        "MixTime=\"00:10:00\" Cycles=\"0\"/></CustomMix>'),"
        "(2, 'Plain Base', '', '', 'MLS', '', 100, 3, 3, 0, '900-2', 'F2', "
        "'<CustomMix PreGrind=\"0\" FreeSpin=\"1\"/>');"
        "INSERT INTO FormChem (FormChemID, FormulaID, ChemicalID, fch_Qty, fch_QS, fch_Active) VALUES "
        "(1, 1, 3, 1.2345, 0, 1), (2, 1, 4, 5, 1, 1), (3, 1, 2, 0.5, 0, 0);");
}

void RecordsTest::seedLogs() {
    seedFormulas();
    sql("INSERT INTO Log (LogID, FormulaID, log_Name, log_Strength, log_Desc, log_Units, log_FormType, "
        "log_Quantity, log_JarSize, log_NDC, log_Date, log_Lot, log_Initials, log_Verified, log_Results, "
        "log_Version, log_AWP, log_Cost, log_Notes, log_Mix) VALUES "
        "(1, 1, 'Cooling Gel', '2 %', 'Topical', 'GMS', 2, 25, 3, '900-1', '2025-10-02 08:00:00', 'AA1', "
        "'EF', 'GH', '<Results Value=\"AA\"/>', '1.0', 10, 4, 'first', '<CustomMix/>'),"
        "(2, 1, 'Cooling Gel', '2 %', 'Topical', 'GMS', 2, 50, 4, '900-1', '2026-02-11 09:30:15', 'AA2', "
        "'EF', 'GH', '', '1.0', 20, 8, 'second', ''),"
        "(3, 9, 'Cooling Rub', '', '', 'MLS', 3, 10, 1, '900-3', '2025-12-24 23:59:59', 'BB3', "
        "'IJ', 'KL', NULL, NULL, NULL, NULL, NULL, NULL);"
        "INSERT INTO LogChem (LogChemID, LogID, ChemicalID, lch_Name, lch_Units, lch_Lot, lch_NDC, lch_Cost, "
        "lch_AWP, lch_Supplier, lch_Form, lch_GUID, lch_QTY) VALUES "
        "(1, 1, 3, 'Camphor', 'GMS', 'L3', '333-3', 6.17, 10.8, 'Beta', 'Crystal', 'G3', 3.086),"
        "(2, 1, 99, 'Gone', 'GMS', 'L9', '999-9', 1, 2, 'Beta', 'Crystal', 'G9', 1),"
        "(3, 2, 4, 'Menthol', 'GMS', 'L4', '333-4', 2.5, 5, 'Beta', 'Crystal', 'G4', 25);");
}

platform::XmlDocumentPtr RecordsTest::document(const QString& xml) {
    const auto made = platform::XmlDocument::create();
    EXPECT_TRUE(made->loadXML(xml)) << qPrintable(xml);
    return made;
}

platform::XmlDocumentPtr RecordsTest::results() {
    return document("<Results Value=\"AB\"><Size Value=\"50 ml\"/><PreparationNumber Value=\"0012\"/>"
                    "<HardwareVersion Value=\"SIM-2.1\"/></Results>");
}

void RecordsTest::useSigning() {
    makeSigningDialog = [this] { return std::make_unique<StubSigning>(signing); };
}

clsFormulaPtr RecordsTest::scaled(std::int16_t formula, std::int16_t quantity) {
    const auto opened = clsFormula().openFormula(formula, QString());
    opened->makeQuantity(quantity);
    return opened;
}
