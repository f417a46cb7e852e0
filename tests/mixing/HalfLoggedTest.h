// Base of the tests of half written batches: a finished mix in the journal, a formula of three lines, a signing
// dialog without a window, and the real mixer screen over the real log. Usable in a child process, too.
#pragma once

#include "MixingTest.h"
#include "mixing/frmSorvanto.h"
#include "platform/data/sqlite/FileEngine.h"
#include "records/SigningDialog.h"

#include <sqlite3.h>

/// Signs every batch with the same initials.
class ReadySigner : public sorvanto::SigningDialog {
public:
    void setFormula(const platform::XmlDocumentPtr& document) override;
    void log_Lot(const QString&) override {}
    void showModal() override {}
    sorvanto::clsFormulaPtr getFormula() override { return m_formula; }
    QString initials() const override { return "AB"; }
    QString verified() const override { return "CD"; }

private:
    sorvanto::clsFormulaPtr m_formula;
};

/// The mixer screen of one start of the program, with a log that writes to the database.
class MixerDesk {
public:
    MixerDesk();
    ~MixerDesk();
    MixerDesk(const MixerDesk&) = delete;
    MixerDesk& operator=(const MixerDesk&) = delete;

    void start() { screen->control().StartControl(); }
    bool offers() const { return logButton() != nullptr; }
    /// Signs the mix on offer; true when it is no longer on offer then.
    bool logTheOffer();
    QString notice() const;
    QString account() const;
    const sorvanto::Reconciliation& reconciliation() const { return screen->control().reconciliation(); }

    std::unique_ptr<sorvanto::frmSorvanto> screen;

private:
    class Window;
    QPushButton* logButton() const;
    std::unique_ptr<Window> m_window;
};

/// Calls back before each statement of the connection, until it goes.
class StatementWatch {
public:
    StatementWatch(sqlite3* database, std::function<void(const QByteArray& statement)> before);
    ~StatementWatch();
    StatementWatch(const StatementWatch&) = delete;
    StatementWatch& operator=(const StatementWatch&) = delete;

private:
    static int called(unsigned, void* self, void*, void* text);
    sqlite3* m_database;
    std::function<void(const QByteArray&)> m_before;
};

class HalfLogged : public support::TestProgram {
protected:
    void SetUp() override;
    void TearDown() override;

    /// The journal of an earlier run, which ended between the end of a mix and its way to the log.
    static void leaveFinishedMix(const char* mix = "3FA21C09", int preparation = 12);
    /// The next start of the program in this folder.
    MixerDesk& restart();
    /// Every value of both tables with its storage class.
    QString batches() const;
    /// Leaves a row that has so many of its three lines.
    void leaveHalfWritten(int lines);
    QStringList openFiles() const { return QDir(folder.path("mixes")).entryList({"*.xml"}, QDir::Files); }
    QByteArray closedFile() const;

    std::unique_ptr<MixerDesk> desk;
};
