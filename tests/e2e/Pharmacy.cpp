// Folder, mixer and screen of one test.
#include "Pharmacy.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

constexpr int longestTour = 150'000;

}  // namespace

Display* Pharmacy::s_display = nullptr;

void Pharmacy::SetUpTestSuite() {
    s_display = new Display;
    if (!s_display->start()) {
        delete s_display;
        s_display = nullptr;
    }
}

void Pharmacy::TearDownTestSuite() {
    delete s_display;
    s_display = nullptr;
}

QString Pharmacy::executable(const QString& name) { return QString::fromUtf8(SORVANTO_BIN_DIR "/") + name; }

QProcessEnvironment Pharmacy::environment() {
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    result.insert("QT_QPA_PLATFORM", "xcb");
    result.insert("DISPLAY", s_display->name());
    result.remove("WAYLAND_DISPLAY");
    return result;
}

void Pharmacy::SetUp() {
    ASSERT_NE(s_display, nullptr)
        << "There is no Xvfb here; scripts/install-packages.sh display installs it.";
    ASSERT_EQ(QProcess::execute(executable("sorvanto-db"), {"sample", path("sorvanto.mdb")}), 0);
    const QDir languages(QString::fromUtf8(SORVANTO_SOURCE_DIR "/languages"));
    for (const QString& name : languages.entryList({"*.xml"}, QDir::Files))
        ASSERT_TRUE(QFile::copy(languages.filePath(name), path(name)));
    ASSERT_TRUE(QDir(m_folder.path()).mkpath("ports"));
    m_simulator.start(executable("sorvanto-mixersim"),
                      {"--link", path("ports/COM1"), "--speed", QString::number(mixerSpeed()), "--parent-pid",
                       QString::number(QCoreApplication::applicationPid())});
    ASSERT_TRUE(m_simulator.waitForStarted() && m_simulator.waitForReadyRead(20'000));
}

void Pharmacy::TearDown() {
    m_simulator.terminate();
    if (!m_simulator.waitForFinished(5000))
        m_simulator.kill();
    m_simulator.waitForFinished();
}

Ending Pharmacy::tour(const QStringList& options) {
    QProcess process;
    process.setProcessEnvironment(tourEnvironment());
    process.start(executable("sorvanto-tour"), QStringList{m_folder.path()} + options);
    const bool ended = process.waitForFinished(longestTour);
    EXPECT_TRUE(ended) << "The tour hangs.";
    if (!ended) {
        process.kill();
        process.waitForFinished();
    }
    return {process.exitStatus() == QProcess::CrashExit, process.exitCode(),
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QString Pharmacy::optionsWithPrinter(const QString& printer) const {
    return u"<Configuration><Version>1</Version><Options><CommPort>1</CommPort><DBLocation>%1"
           u"</DBLocation><Language>0</Language><DefPrinter>%2</DefPrinter><DefCurrency></DefCurrency>"
           u"</Options><Pharmacy><StoreName>Mill Road</StoreName><Address></Address><City></City>"
           u"<State></State><PostalCode></PostalCode><Phone></Phone><Fax></Fax><DEA></DEA>"
           u"<ShowPatients>1</ShowPatients><OverrideSpeed>0</OverrideSpeed></Pharmacy>"
           u"</Configuration>"_s.arg(path("sorvanto.mdb"), printer);
}

QString Pharmacy::journalledResults() const {
    const QDir mixes(path("mixes"));
    const QStringList names = mixes.entryList(QDir::Files);
    EXPECT_EQ(names.size(), 1);
    QFile file(mixes.filePath(names.value(0)));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QRegularExpression results("<Results .*</Results>", QRegularExpression::DotMatchesEverythingOption);
    return results.match(QString::fromUtf8(file.readAll())).captured();
}

}  // namespace e2e
