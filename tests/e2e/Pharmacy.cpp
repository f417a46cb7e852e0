// Folder, mixer and screen of one test.
#include "Pharmacy.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

constexpr int longestTour = 600'000;  // milliseconds; on an idle machine it takes half a minute

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
    ASSERT_TRUE(m_bench.layOut(mixerSpeed()));
}

Ending Pharmacy::tour(const QStringList& options) {
    QProcess process;
    process.setProcessEnvironment(tourEnvironment());
    process.start(executable("sorvanto-tour"), QStringList{m_bench.folder()} + options);
    const bool ended = process.waitForFinished(longestTour);
    if (!ended) {
        process.kill();
        process.waitForFinished();
    }
    const Ending end{process.exitStatus() == QProcess::CrashExit, process.exitCode(),
                     QString::fromUtf8(process.readAllStandardOutput()),
                     QString::fromUtf8(process.readAllStandardError())};
    EXPECT_TRUE(ended) << "The tour hangs.\n" << end.out.toStdString() << end.err.toStdString();
    return end;
}

QString Pharmacy::optionsWithPrinter(const QString& printer) const {
    return m_bench.options(path("sorvanto.mdb"), printer);
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
