#include "HalfLoggedTest.h"

#include "mixer/MixJournal.h"
#include "records/clsFormula.h"
#include "records/clsLog.h"
#include "support/Hindrances.h"
#include "support/Settle.h"

using namespace sorvanto;

namespace {

platform::XmlDocumentPtr documentOf(const QString& xml) {
    auto made = platform::XmlDocument::create();
    EXPECT_TRUE(made->loadXML(xml)) << str(xml);
    return made;
}

}  // namespace

void ReadySigner::setFormula(const platform::XmlDocumentPtr& document) {
    m_formula = clsFormula().openFormula(1, QString());
    m_formula->makeQuantity(25);
    m_formula->frm_Mix->loadXML(document->selectSingleNode("//Formula/CustomMix").xml());
}

class MixerDesk::Window : public BarOnlyWindow {
public:
    bool addLog(const platform::XmlDocumentPtr& formula, const platform::XmlDocumentPtr& results) override {
        return clsLog().addLog(formula, results) != nullptr;
    }
};

MixerDesk::MixerDesk() : m_window(std::make_unique<Window>()) {
    screen = std::make_unique<frmSorvanto>(basMain::context());
    m_window->control = &screen->control();
    screen->Form_Load();
    makeSigningDialog = [] { return std::make_unique<ReadySigner>(); };
}

MixerDesk::~MixerDesk() {
    screen->closeForm();
    basMain::Main = nullptr;
}

QPushButton* MixerDesk::logButton() const { return screen->findChild<QPushButton*>("mixerLogMix"); }

bool MixerDesk::logTheOffer() {
    logButton()->click();
    support::settle();
    return !offers();
}

QString MixerDesk::notice() const {
    const auto* card = support::child<QWidget>(*screen, "mixerNotice");
    const auto* label = card->findChild<QLabel*>();
    return card->isHidden() || !label ? QString() : label->text();
}

QString MixerDesk::account() const {
    const auto* label = support::child<QLabel>(*screen, "mixerAccount");
    return label->isHidden() ? QString() : label->text();
}

StatementWatch::StatementWatch(sqlite3* database, std::function<void(const QByteArray&)> before)
    : m_database(database), m_before(std::move(before)) {
    sqlite3_trace_v2(m_database, SQLITE_TRACE_STMT, called, this);
}

StatementWatch::~StatementWatch() { sqlite3_trace_v2(m_database, 0, nullptr, nullptr); }

int StatementWatch::called(unsigned, void* self, void*, void* text) {
    const QByteArray statement(static_cast<const char*>(text));
    // A trigger's statement is told as a remark inside of the one that sets it off.
    if (!statement.startsWith("--"))
        static_cast<StatementWatch*>(self)->m_before(statement);
    return 0;
}

void HalfLogged::SetUp() {
    TestProgram::SetUp();
    createDatabase();
    QFile identity(QString::fromLatin1(SORVANTO_SOURCE_DIR "/data/identity.sql"));
    ASSERT_TRUE(identity.open(QIODevice::ReadOnly));
    sql(QString::fromUtf8(identity.readAll()));
    sql("INSERT INTO Chemical (ChemicalID, chm_Name, chm_Units, chm_Lot, chm_NDC, chm_Cost, chm_AWP, chm_Supplier,"
        " chm_Form, chm_GUID) VALUES (1, 'Camphor''s', 'GMS', 'L1', '1-1', 2, 4.5, 'Beta', 'Crystal', 'G1'),"
        " (2, 'Menthol ' || char(1) || 'x', 'GMS', NULL, NULL, 0.1, 0.2, NULL, 'Crystal', 'G2'),"
        " (3, 'Вода', 'MLS', 'L3', '3-3', NULL, NULL, 'Alpha', '', 'G3');"
        "INSERT INTO Formula (FormulaID, frm_Name, frm_Quantity, frm_JarSize, frm_FormType, frm_Mix) VALUES"
        " (1, 'Cooling Gel', 10, 3, 9, '<CustomMix PreGrind=\"0\" FreeSpin=\"1\"/>');"
        "INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty, fch_QS, fch_Active)"
        " VALUES (1, 1, 1.2345, 0, 1), (1, 2, 0.1, 0, 1), (1, 3, 7, -1 * -1, 0);");
    ASSERT_EQ(openDB()->state(), 1);
    // No mixer may answer: the first port is a file that is none.
    ASSERT_TRUE(QDir(folder.path()).mkdir("ports"));
    folder.write("ports/COM1", {});
}

void HalfLogged::TearDown() {
    desk.reset();
    TestProgram::TearDown();
}

void HalfLogged::leaveFinishedMix(const char* mix, int preparation) {
    const auto identity = basMain::gConnection ? BatchBook(basMain::context()).identity() : QString();
    MixJournal journal;
    journal.read();
    journal.load(
        mix,
        documentOf("<Formula><ID>1</ID><Name>Cooling Gel</Name><Type>5</Type><Size>3</Size><QTY>10</QTY>"
                   "<Make>25</Make><CustomMix PreGrind=\"3\" FreeSpin=\"4\"/></Formula>"),
        identity);
    journal.start(mix, "SV0426");
    journal.finish(mix,
                   documentOf(QString("<Results Value=\"SV0426\"><PreparationNumber Value=\"%1\"/>"
                                      "<HardwareVersion Value=\"2.1\"/></Results>")
                                  .arg(preparation, 4, 10, QChar('0'))),
                   false);
}

MixerDesk& HalfLogged::restart() {
    desk.reset();
    desk = std::make_unique<MixerDesk>();
    desk->start();
    return *desk;
}

QString HalfLogged::batches() const {
    QStringList values;
    for (const char* table : {"Log", "LogChem"}) {
        QStringList columns;
        for (const QStringList& column : sql(QString("SELECT name FROM pragma_table_info('%1')").arg(table)))
            columns << QString("typeof(%1) || ':' || coalesce(hex(%1), '')").arg(column.first());
        values << sqlText(QString("SELECT %1 FROM %2 ORDER BY 1").arg(columns.join(", "), table));
    }
    return values.join("\n--\n");
}

void HalfLogged::leaveHalfWritten(int lines) {
    leaveFinishedMix();
    MixerDesk& at = restart();
    ASSERT_TRUE(at.offers());
    {
        std::unique_ptr<support::FullDisk> full;
        int added = 0;
        const StatementWatch watch(
            platform::sqlite::handleOf(basMain::gConnection->engine()), [&](const QByteArray& statement) {
                if (statement.startsWith("INSERT INTO \"LogChem\"") && added++ == lines)
                    full = std::make_unique<support::FullDisk>();
            });
        EXPECT_FALSE(at.logTheOffer());
    }
    expectReports("clsLog:addLog");
    ASSERT_EQ(str(sqlText("SELECT (SELECT count(*) FROM Log), (SELECT count(*) FROM LogChem)")),
              str(QString("1|%1").arg(lines)));
}

QByteArray HalfLogged::closedFile() const {
    const QStringList names = QDir(folder.path("mixes/closed")).entryList(QDir::Files);
    return names.size() == 1 ? folder.read("mixes/closed/" + names.first()) : QByteArray();
}
