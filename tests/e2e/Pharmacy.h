// A program folder with the sample pharmacy, a fast simulated mixer on its port, and a screen: the base of
// the tests that run the real executables.
#pragma once

#include "Bench.h"
#include "Display.h"
#include "support/TestDatabase.h"

#include <QProcess>
#include <QStringList>
#include <gtest/gtest.h>
#include <string>

namespace e2e {

/// How a process ended and what it wrote.
struct Ending {
    bool killed = false;
    int code = -1;
    QString out, err;
};

class Pharmacy : public ::testing::Test {
protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite();
    void SetUp() override;

    static QString executable(const QString& name) { return Bench::executable(name); }
    /// Where processes find screen and system settings.
    static QProcessEnvironment environment();
    /// How much faster than a clock the simulated mixer runs.
    virtual int mixerSpeed() const { return 200; }
    virtual QProcessEnvironment tourEnvironment() const { return environment(); }
    /// The options of an earlier start in English, with the printer chosen then.
    QString optionsWithPrinter(const QString& printer) const;
    /// Runs the tour on the folder to its end.
    Ending tour(const QStringList& options = {});
    QString path(const QString& name) const { return m_bench.path(name); }
    std::string sql(const QString& statement) const {
        return support::rowsText(support::runSql(path("sorvanto.mdb"), statement)).trimmed().toStdString();
    }
    /// The results document of the one open mix in the journal.
    QString journalledResults() const;

private:
    static Display* s_display;
    Bench m_bench;
};

}  // namespace e2e
