// A part of this test program run in a process of its own, which is killed in the midst of its work. The child
// is a test of its own: it finds the folder that it works in by folderOfChild(), and does nothing without one.
#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace support {

inline constexpr const char* childFolderVariable = "SORVANTO_TEST_CHILD_IN";
inline constexpr const char* childNumberVariable = "SORVANTO_TEST_CHILD_AT";

/// Empty in an ordinary run.
inline QString folderOfChild() { return qEnvironmentVariable(childFolderVariable); }
/// What the parent has counted out to the child.
inline int numberOfChild() { return qEnvironmentVariableIntValue(childNumberVariable); }

/// This run's environment without what tells it its own share of the tests and the place of its report.
inline QProcessEnvironment childEnvironment(const QString& folder, int number = 0) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString& name : environment.keys()) {
        if (name.startsWith(QLatin1String("GTEST_")))
            environment.remove(name);
    }
    environment.insert(QLatin1String(childFolderVariable), folder);
    environment.insert(QLatin1String(childNumberVariable), QString::number(number));
    return environment;
}

/// Runs the child to its end; true when it was killed, false when it came to its own.
inline bool childIsKilled(const QString& filter, const QString& folder, int number) {
    QProcess child;
    child.setProcessEnvironment(childEnvironment(folder, number));
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(), {QLatin1String("--gtest_filter=") + filter});
    constexpr int patience = 60'000;
    child.waitForFinished(patience);
    const bool killed = child.exitStatus() == QProcess::CrashExit;
    if (!killed)
        qWarning("%s", child.readAll().constData());
    return killed;
}

}  // namespace support
