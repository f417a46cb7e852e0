// A program folder with the languages, and a fast simulated mixer on its port.
#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace e2e {

class Bench {
public:
    Bench() = default;
    ~Bench();
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    /// speed: how much faster than a clock the mixer runs. serial: its own; SV0426 where it is empty. False when something is missing.
    bool layOut(int speed, const QString& serial = {});
    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString folder() const { return m_folder.path(); }
    /// Options of an earlier start in English, with the place of the records and the printer chosen then.
    QString options(const QString& location, const QString& printer = {}) const;

    /// Of the build.
    static QString executable(const QString& name);

private:
    QTemporaryDir m_folder;
    QProcess m_simulator;
};

}  // namespace e2e
