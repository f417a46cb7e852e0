// A session on a device in memory, its mixes and what it hands out.
#pragma once

#include "MemoryLine.h"
#include "support/FixedClock.h"
#include "support/Settle.h"
#include "support/TempProgramFolder.h"

#include <gtest/gtest.h>

namespace sorvanto {

inline constexpr std::int64_t shortTotal = 20'000;  // ten seconds, and two cycles of five

/// A log that can be read and holds no batch.
class EmptyLog : public LogBook {
public:
    QString identity() override { return "3f2a9c01"; }
    bool hasLot(const QString&) override { return false; }
    BatchStanding settle(const BatchRows&) override { return {}; }
    int batchCount() override { return 0; }
    QHash<Batch, int> linesSince(const QString&) override { return {}; }
    bool isArchived(const Batch&) override { return false; }
    QString otherBenchWith(const QString&) override { return otherBench; }

    QString otherBench;  ///< with a mixer of the same number
};

class MixSessionTest : public testing::Test {
protected:
    MixSessionTest() { make(); }

    void make() {
        session.reset();
        session = std::make_unique<MixSession>(line.environment());
        session->setPort(1, false);
        session->setLoggedTest([this](const QString& lot) { return logged.contains(lot); });
        QObject::connect(
            session.get(), &MixSession::mixDone, session.get(),
            [this](const platform::XmlDocumentPtr& formula, const platform::XmlDocumentPtr& results) {
                ++done;
                lastFormula = formula->xml();
                lastResults = results->xml();
                if (onDone)
                    onDone();
            });
        QObject::connect(session.get(), &MixSession::enableForm, session.get(), [this] { ++enabled; });
    }
    RunState state() const { return session->run().state(); }
    bool reaches(RunState wanted) {
        return test::waitFor([&] { return state() == wanted; });
    }
    void loadShort() {
        session->open();
        session->loadFormula(test::shortFormula());
        ASSERT_TRUE(test::waitFor([&] { return session->canStart(); })) << text();
    }
    void startShort() {
        loadShort();
        session->start();
        ASSERT_TRUE(reaches(RunState::Mixing)) << text();
    }
    void finishShort() {
        startShort();
        line.run(shortTotal);
        ASSERT_TRUE(test::waitFor([&] { return done == 1 && state() == RunState::Ready; }));
    }
    /// Waits until the mixer has been asked some more questions and has answered them: what was on its way
    /// before has happened then.
    void exchangeWords() {
        constexpr qsizetype frames = 8;
        const qsizetype enough = line.transcript.size() + frames;
        ASSERT_TRUE(test::waitFor([&] { return line.transcript.size() >= enough; }));
    }
    QStringList openFiles() const { return QDir(folder.path("mixes")).entryList(QDir::Files); }
    QStringList closedFiles() const { return QDir(folder.path("mixes/closed")).entryList(QDir::Files); }
    std::string text() const { return PanelTexts()(session->run().message()).toStdString(); }
    PanelText message() const { return session->run().message().text; }
    PanelText notice() const { return session->notice().text; }
    /// Replies that mean a start, among all frames so far.
    int startsExecuted() const { return line.mixer.preparations() - 11; }

    support::TempProgramFolder folder;
    support::FixedClock clock;
    test::MemoryLine line;
    QStringList logged;
    EmptyLog log;
    std::unique_ptr<MixSession> session;
    std::function<void()> onDone;
    int done = 0, enabled = 0;
    QString lastFormula, lastResults;
};

}  // namespace sorvanto
