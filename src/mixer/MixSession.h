// Link, run and journal together: takes formulas in, hands finished mixes out, each exactly once, and
// keeps those that were not logged on offer.
#pragma once

#include "mixer/BatchAccount.h"
#include "mixer/Desk.h"
#include "mixer/LoadedFormula.h"
#include "mixer/MixJournal.h"
#include "mixer/MixRun.h"
#include "mixer/MixerLink.h"

#include <QList>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

namespace sorvanto {

/// What the control gets from its surroundings; tests put their own in.
struct MixerEnvironment {
    std::function<std::unique_ptr<platform::SerialPort>()> makePort;
    std::function<QString(int)> portPath;
    std::function<protocol::MixId()> makeMixId;
    LinkTiming timing;
    int deskInterval = 200;  ///< milliseconds between two looks at the desk

    /// Real ports, random numbers, real times.
    static MixerEnvironment real();
};

/// A mix that can be logged, waits for its mixer, or ended without results.
struct Offer {
    protocol::MixId mix;
    JournalState state = JournalState::Finished;
    QString name, quantity, lot, serial;
    platform::XmlDocumentPtr formula;  ///< as it was sent
    bool otherDatabase = false;        ///< made while another one was open: not to be logged into this one
    bool waitsForServer = false;       ///< only a copy of its log is open
};

class MixSession : public QObject {
    Q_OBJECT

public:
    explicit MixSession(MixerEnvironment environment, QObject* parent = nullptr);

    void setPort(int port, bool overrideSpeed);
    void setLoggedTest(std::function<bool(const QString&)> test) { m_account.setLoggedTest(std::move(test)); }
    /// The log of the open database; outlives the session.
    void setLogBook(LogBook* book) { m_account.setLogBook(book); }

    /// Another database is open now, or the first one: a little later the journal is held against its log.
    void databaseOpened();

    /// Where the user sits; outlives the session. Without one a finished mix is handed over at once.
    void setDesk(Desk* desk) { m_desk = desk; }

    void open();
    void close();
    bool isOpen() const { return m_link.state() != MixerLink::State::Closed; }
    void loadFormula(const platform::XmlDocumentPtr& document);
    /// Sends the formula shown once more, after it was refused or its mix ended without results.
    void loadAgain();
    bool canLoadAgain() const;
    bool canStart() const;
    void start();
    void acknowledge();
    /// The dialog of the hand-over has answered.
    void initialsClosed();
    /// The mix being handed over is in the log.
    void logged();

    /// The rows of the mix being handed over are about to be written: they are taken down first. Throws when the
    /// journal can't be written, and when the mix belongs to another database than the open one.
    void takeDown(const BatchRows& rows);
    /// A batch is about to be deleted from the log; undoDeletion when it was not. Both throw when the journal
    /// can't be written.
    void noteDeletion(const BatchRows& rows) { m_journal.noteDeletion(rows); }
    void undoDeletion() { m_journal.undoDeletion(); }
    /// A batch that was deleted is in the log again. Throws when the journal can't be written.
    void noteRestored(const BatchRows& rows) { m_journal.noteRestored(rows); }

    std::vector<Offer> offers() const;
    /// Whether a mix of the open database was started that may still be logged.
    bool hasUnlogged() const;
    /// Key of the stored formula that may still be mixed: loaded, or to be loaded again. 0: it has none; nothing: no formula
    /// of the open database is left to be mixed.
    std::optional<int> formulaToMix() const;
    /// Whether an offered mix may be handed over now.
    bool canLog() const { return m_handed.isEmpty() && !m_run.isBusy(); }
    void logOffer(const protocol::MixId& mix);
    /// A finished mix waits until the desk is free, or until the user asks for it.
    bool isWaiting() const { return m_waiting && !m_toHandOver.isEmpty(); }
    /// Hands the waiting mix over at the user's own wish; typed text is kept as a draft first.
    void signNow();
    /// Name of the formula of a mix in the journal; empty for one that has none.
    QString nameOf(const protocol::MixId& mix) const;
    /// Key of its formula; 0 for one that is not stored in the open database.
    int storedFormulaOf(const protocol::MixId& mix) const;
    /// Invalid for one that is not in the journal.
    QDateTime startOf(const protocol::MixId& mix) const;
    /// Says in the panel that the mix being handed over can't be logged: its formula is gone.
    void tellFormulaGone();
    void putAside(const protocol::MixId& mix);

    MixRun& run() { return m_run; }
    const MixRun& run() const { return m_run; }
    const MixerLink& link() const { return m_link; }
    /// Last formula that was accepted; nothing before the first and after it was mixed.
    const std::optional<LoadedFormula>& formula() const { return m_formula; }
    int port() const { return m_port; }
    /// How far the mix being handed over came; nothing when that was not followed here.
    std::optional<protocol::Status> reached() const;
    /// A mix is handed over and its initials are awaited.
    bool isSigning() const { return m_signing; }
    /// Why the last formula was refused, why a start was not possible, what the journal complains of.
    const PanelMessage& notice() const { return m_notice; }
    /// What was done about batches that a failure had left half written.
    const std::vector<PanelMessage>& findings() const { return m_account.findings(); }
    const Reconciliation& reconciliation() const { return m_account.reconciliation(); }

signals:
    void changed();
    /// Handlers may block in an event loop of their own and close or destroy this session.
    void mixDone(const platform::XmlDocumentPtr& formula, const platform::XmlDocumentPtr& results);
    void enableForm();

private:
    void mixerConnected();
    void mixFinished(const protocol::MixResults& results, bool seen);
    void mixAborted(const protocol::MixId& mix);
    /// False, and said in the panel, while another bench has a mixer of the same serial number.
    bool isMixerOurs();
    bool journalStart(const protocol::MixId& mix);
    void sendFormula();
    /// Gives the formula's programme an id of its own, and takes it down.
    void journalLoad();
    void startUndone(const protocol::MixId& mix);
    void dropLogged();
    bool settle(const protocol::MixId& mix, BatchAccount::Settled& settled);
    void askLastResults();
    void compareResults(const protocol::MixId& mix);
    void lookAtForeignEnd(const protocol::Status& status);
    /// asked: at the user's own wish, which needs no free desk.
    void handOverLater(const protocol::MixId& mix, bool asked);
    void handOverSoon();
    void handOverNext();
    void wait();
    bool isToBeHandedOver(const protocol::MixId& mix) const;
    void handOver(const protocol::MixId& mix);
    void handedOver(const protocol::MixId& mix);
    /// Runs a step of the journal; its failure becomes a notice with that text.
    bool journal(PanelText failure, const std::function<void()>& step);

    MixerEnvironment m_environment;
    MixerLink m_link;
    MixRun m_run;
    MixJournal m_journal;
    BatchAccount m_account{m_journal};
    bool m_journalRead = false;
    QSet<protocol::MixId> m_compared;  ///< mixes whose results the mixer was asked for to compare them
    std::optional<LoadedFormula> m_formula;
    PanelMessage m_notice;
    int m_port = 1;
    bool m_overrideSpeed = false;
    protocol::MixId m_handed;  ///< being handed over
    bool m_loggedNow = false, m_signing = false;
    struct HandOver {
        protocol::MixId mix;
        bool asked = false;
        bool told = false;  ///< the user's attention was called
    };
    QList<HandOver> m_toHandOver;
    Desk* m_desk = nullptr;
    bool m_waiting = false;
    QTimer m_deskAgain;  ///< looks at the desk again
};

}  // namespace sorvanto
