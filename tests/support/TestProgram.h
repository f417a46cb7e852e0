// The base of tests that need the program around them: a program folder of its own with options.xml, the
// English language store, a fixed clock, scripted answers, and a reporter that fails the test for every
// report that it did not expect.
#pragma once

#include "FixedClock.h"
#include "RecordsPlace.h"
#include "ScriptedAsker.h"
#include "TempProgramFolder.h"
#include "TestDatabase.h"
#include "WarningTrap.h"
#include "shared/ErrorReporter.h"
#include "shared/basMain.h"

#include <QString>
#include <QStringList>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace support {

/// One call of ReportError with all that it was given.
struct ReportCall {
    QString description, number, source;
    std::int32_t statementNumber = 0;
    QString tag, empty;
    std::vector<bool> flags;
    QString statement;
};

/// Keeps each call and hands it on to the real reporter.
class RecordingReporter : public sorvanto::ErrorReporter {
public:
    void ReportError(const QString& description, const QString& number, const QString& source,
                     std::int32_t statementNumber, const QString& tag, const QString& empty, bool flag1,
                     bool flag2, bool flag3, bool flag4) noexcept override;
    void setFailedStatement(const QString& statement) noexcept override;

    std::vector<ReportCall> calls;

private:
    QString m_statement;
};

class TestProgram : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// options.xml as SetUp writes it, before the program's objects are made; override for another one,
    /// an empty text writes none.
    virtual QByteArray optionsXml() const;
    /// Makes options and language anew, as the program's start does.
    void startConfiguration(std::int16_t language = 0);

    /// Records with the delivered schema, sorvanto.mdb where they are a file; the program opens them at its first statement.
    void createDatabase();
    /// createDatabase, then the shared connection opened, every statement of it kept in statements.
    void openDatabase();
    /// Forgets the statements so far.
    void clearStatements() { statements.clear(); }
    /// Straight on the records, past the program's data layer.
    Rows sql(const QString& text) const { return place().run(databasePath(), text); }
    QString sqlText(const QString& text) const { return rowsText(sql(text)); }
    /// Of the file, where the records are one.
    QString databasePath() const { return folder.path("sorvanto.mdb"); }
    static RecordsPlace& place() { return RecordsPlace::current(); }

    /// To be called after the action: asserts that the oldest report not yet taken has this tag, and takes it.
    ReportCall expectReport(const QString& tag);
    /// Takes all reports of that tag, at least one.
    void expectReports(const QString& tag);
    /// Forgets the reports so far, for tests that look at something else.
    void dropReports() { reporter->calls.clear(); }

    /// The program's own, to be handed to what is made.
    inline static sorvanto::Context& context = sorvanto::basMain::context();
    TempProgramFolder folder;
    FixedClock clock;
    WarningTrap warnings;
    ScriptedAsker asker;
    std::shared_ptr<RecordingReporter> reporter;
    /// Texts of the statements handed to the shared connection since openDatabase.
    QStringList statements;
    /// How often the program was told to end at once.
    int programEnds = 0;
    /// Each start anew that was asked for: whether on the server's copy.
    std::vector<bool> restarts;
};

}  // namespace support
