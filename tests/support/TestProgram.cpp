// Setting the program up around a test and looking at what it left behind.
#include "TestProgram.h"

#include "config/clsLanguage.h"
#include "config/clsOptions.h"
#include "history/HistorySeal.h"
#include "shared/basMain.h"

#include <QApplication>

namespace basMain = sorvanto::basMain;

namespace support {

void RecordingReporter::setFailedStatement(const QString& statement) noexcept {
    m_statement = statement;
    ErrorReporter::setFailedStatement(statement);
}

void RecordingReporter::ReportError(const QString& description, const QString& number, const QString& source,
                                    std::int32_t statementNumber, const QString& tag, const QString& empty,
                                    bool flag1, bool flag2, bool flag3, bool flag4) noexcept {
    calls.push_back({description,
                     number,
                     source,
                     statementNumber,
                     tag,
                     empty,
                     {flag1, flag2, flag3, flag4},
                     m_statement});
    ErrorReporter::ReportError(description, number, source, statementNumber, tag, empty, flag1, flag2, flag3,
                               flag4);
}

void TestProgram::SetUp() {
    basMain::reset();
    platform::setApplicationTitle("Sorvanto Control Panel");
    reporter = std::make_shared<RecordingReporter>();
    reporter->ReportPath(folder.path());
    basMain::ErrorReporter = reporter;
    basMain::gConnection = std::make_shared<platform::Connection>();
    basMain::endProgram = [this] { ++programEnds; };
    context.restartProgram = [this](bool onCopy) { restarts.push_back(onCopy); };
    if (const QByteArray options = optionsXml(); !options.isEmpty()) {
        folder.write("options.xml", options);
        startConfiguration();
    }
}

void TestProgram::TearDown() {
    asker.verify();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    basMain::reset();
    for (const ReportCall& call : reporter->calls)
        ADD_FAILURE() << "Unexpected report: " << qPrintable(call.tag) << ", error "
                      << qPrintable(call.number) << ": " << qPrintable(call.description) << "\n"
                      << qPrintable(call.statement);
    warnings.verify();
}

QByteArray TestProgram::optionsXml() const {
    return "<Configuration><Version>1</Version><Options><CommPort>1</CommPort><DBLocation>" +
           place().location(databasePath()).toHtmlEscaped().toUtf8() +
           "</DBLocation><Language>0</Language><DefPrinter/><DefCurrency>$</DefCurrency></Options>"
           "<Pharmacy><StoreName>Kelmar Systems</StoreName><Address>418 Larkspur Ct.</Address>"
           "<City>Fenwick</City><State>ZZ</State><PostalCode>54321</PostalCode>"
           "<Phone>(555)010-0188</Phone><Fax>(555)010-0189</Fax><DEA>123456789</DEA>"
           "<ShowPatients>1</ShowPatients><OverrideSpeed>0</OverrideSpeed></Pharmacy></Configuration>";
}

void TestProgram::startConfiguration(std::int16_t language) {
    basMain::Options = std::make_shared<sorvanto::clsOptions>(context);
    const auto store = std::make_shared<sorvanto::clsLanguage>();
    store->setLanguage(language);
    basMain::Language = store;
}

void TestProgram::createDatabase() { place().create(databasePath()); }

void TestProgram::openDatabase() {
    createDatabase();
    if (const QString location = place().location(databasePath()); location != databasePath()) {
        basMain::gConnection->open("Data Source=" + location);
        sorvanto::keepHistory(*basMain::gConnection);
    }
    const auto connection = sorvanto::openDB();
    ASSERT_EQ(connection->state(), 1);
    connection->setTrace([this](const QString& statement) { statements << statement; });
}

ReportCall TestProgram::expectReport(const QString& tag) {
    if (reporter->calls.empty()) {
        ADD_FAILURE() << "No report came; expected was " << qPrintable(tag);
        return {};
    }
    const ReportCall call = reporter->calls.front();
    reporter->calls.erase(reporter->calls.begin());
    EXPECT_EQ(call.tag.toStdString(), tag.toStdString())
        << "error " << qPrintable(call.number) << ": " << qPrintable(call.description);
    return call;
}

void TestProgram::expectReports(const QString& tag) {
    const auto taken =
        std::erase_if(reporter->calls, [&](const ReportCall& call) { return call.tag == tag; });
    EXPECT_GT(taken, 0U) << "No report with the tag " << qPrintable(tag);
}

}  // namespace support
