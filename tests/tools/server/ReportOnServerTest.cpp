// sorvanto-report, the executable itself, with the records on a server.
#include "ServerCommandTest.h"
#include "db/DatabaseFile.h"
#include "platform/data/Query.h"
#include "platform/data/Transaction.h"

#include <QFile>
#include <QProcess>
#include <QTest>
#include <optional>

namespace sorvanto {
namespace {

using namespace Qt::StringLiterals;

class ReportOnServerTest : public ServerCommandTest {
protected:
    void SetUp() override {
        createSample(path("s.mdb"));
        support::makeServerRecords(path("s.mdb"));
        ASSERT_TRUE(QFile::copy(SORVANTO_SOURCE_DIR "/languages/EnglishTranslation.xml",
                                path("EnglishTranslation.xml")));
        write(
            "options.xml",
            "<Configuration><Version>1</Version><Options><CommPort>1</CommPort><DBLocation/><Language>0</Language>"
            "<DefPrinter/><DefCurrency>$</DefCurrency></Options><Pharmacy><StoreName>Kelmar Systems</StoreName>"
            "<Address/><City/><State/><PostalCode/><Phone/><Fax/><DEA/><ShowPatients>1</ShowPatients>"
            "<OverrideSpeed>0</OverrideSpeed></Pharmacy></Configuration>");
    }
    void write(const char* name, const QByteArray& bytes) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    void start(const QStringList& report) {
        m_tool.setWorkingDirectory(path({}));
        m_tool.start(SORVANTO_BIN_DIR "/sorvanto-report",
                     report +
                         QStringList{"--database", bench(), "--options", "options.xml", "--pdf", "out.pdf"});
    }
    /// Gives the exit code.
    int finish() {
        EXPECT_TRUE(m_tool.waitForFinished(60'000)) << qPrintable(m_tool.errorString());
        err = QString::fromUtf8(m_tool.readAllStandardError());
        return m_tool.exitCode();
    }
    QString paper() const {
        QProcess process;
        process.start("pdftotext", {"-layout", path("out.pdf"), "-"});
        EXPECT_TRUE(process.waitForFinished(60'000));
        return QString::fromUtf8(process.readAllStandardOutput());
    }

private:
    QProcess m_tool;
};

TEST_F(ReportOnServerTest, AllThatItReadsIsOfOneMoment) {
    platform::Connection other;
    other.open(u"Data Source="_s + owner());
    std::optional<platform::Transaction> span(other.engine());
    platform::run(other.engine(), u"LOCK TABLE LogChem IN ACCESS EXCLUSIVE MODE"_s);
    start({"formula-log", "--log", "1"});
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return told(u"SELECT count(*) FROM pg_locks WHERE NOT granted"_s) != "0"; }, 60'000))
        << "the batch is read, its lines are waited for";
    other.execute(u"UPDATE Formula SET frm_Instructions = 'Written meanwhile'"_s);
    span->commit();
    ASSERT_EQ(finish(), 0) << qPrintable(err);
    EXPECT_FALSE(paper().contains(u"Written meanwhile"_s)) << qPrintable(paper());
    start({"formula-log", "--log", "1"});
    ASSERT_EQ(finish(), 0) << qPrintable(err);
    EXPECT_TRUE(paper().contains(u"Written meanwhile"_s)) << "the next one has it";
}

TEST_F(ReportOnServerTest, RecordsOfAnotherVersionAreRefused) {
    write("out.pdf", "old");
    support::runOnServer(u"UPDATE \"Options\" SET \"opt_Version\" = 9"_s);
    start({"chemicals"});
    EXPECT_EQ(finish(), 1);
    EXPECT_TRUE(err.contains(u"belong to a newer program"_s)) << qPrintable(err);
    support::runOnServer(u"UPDATE \"Options\" SET \"opt_Version\" = 0.1"_s);
    start({"chemicals"});
    EXPECT_EQ(finish(), 1);
    EXPECT_TRUE(err.contains(u"older than this program"_s)) << qPrintable(err);
    QFile file(path("out.pdf"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "old");
}

}  // namespace
}  // namespace sorvanto
