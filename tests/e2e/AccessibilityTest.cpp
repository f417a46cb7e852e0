// A real client of the assistive technologies uses the real program: names, presses, and what it hears.
#include "Pharmacy.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

constexpr int longest = 600'000;  // milliseconds

class AccessibilityTest : public Pharmacy {
protected:
    /// On a session bus of its own, with the registry of the assistive technologies that it starts when asked.
    Ending screenReader() const {
        QProcessEnvironment surroundings = environment();
        surroundings.insert(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
        surroundings.insert(u"XDG_RUNTIME_DIR"_s, path(u"run"_s));
        surroundings.insert(u"PYTHONDONTWRITEBYTECODE"_s, u"1"_s);
        for (const char* other : {"DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "NO_AT_BRIDGE"})
            surroundings.remove(QLatin1String(other));
        QProcess process;
        process.setProcessEnvironment(surroundings);
        process.start(u"dbus-run-session"_s,
                      {u"--"_s, u"/usr/bin/python3"_s,
                       QStringLiteral(SORVANTO_SOURCE_DIR "/tests/e2e/screen_reader.py"),
                       executable(u"sorvanto"_s), path({})});
        const bool ended = process.waitForFinished(longest);
        EXPECT_TRUE(ended) << "The client hangs.";
        if (!ended) {
            process.terminate();
            process.waitForFinished();
        }
        return {process.exitStatus() == QProcess::CrashExit, process.exitCode(),
                QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }
};

TEST_F(AccessibilityTest, AScreenReaderFindsTheControlsAndHearsWhatWasDone) {
    ASSERT_TRUE(QDir().mkdir(path(u"run"_s)));
    ASSERT_TRUE(
        QFile::setPermissions(path(u"run"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QFile options(path(u"options.xml"_s));
    ASSERT_TRUE(options.open(QIODevice::WriteOnly));
    options.write(optionsWithPrinter({}).toUtf8());
    options.close();
    const Ending end = screenReader();
    ASSERT_FALSE(end.killed) << end.out.toStdString() << end.err.toStdString();
    EXPECT_EQ(end.code, 0) << end.out.toStdString() << end.err.toStdString();
}

}  // namespace
}  // namespace e2e
