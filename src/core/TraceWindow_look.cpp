// How the trace looks: stage by stage, each in pieces between which the window is painted and heard. Whatever is asked for
// meanwhile ends what runs and is done then; so nothing is ever on show that belongs to something else. What was not looked
// through to its end is not shown, and nothing of it can be printed.
#include "core/TraceList.h"
#include "core/TraceWindow.h"
#include "platform/widgets/LongWork.h"
#include "platform/widgets/UnderWay.h"
#include "platform/widgets/WorkLine.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

#include <QLabel>
#include <QLineEdit>
#include <QScopeGuard>
#include <QSignalBlocker>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

QString incomplete() { return translated(u"The list is not complete yet."_s); }

}  // namespace

void TraceWindow::begin() {
    m_begins = true;
    lookFrom(Stage::Text);
    m_begins = false;
}

void TraceWindow::done(int result) {
    m_closed = m_ends = true;
    QDialog::done(result);
}

// The lists stand at once; what joins them later follows by itself.
void TraceWindow::lookFrom(Stage stage) {
    m_typing.stop();
    m_stage = std::min(m_stage, stage);
    m_again = m_ends = true;
    if (m_work)
        return;
    while (std::exchange(m_again, false))
        lookUpTo(Stage::Offers);
    platform::whenIdle(*this, [this] { lookOn(); });
}

/// What the lists wait for.
void TraceWindow::lookOn() {
    if (m_work || m_stage <= Stage::Offers)
        return;
    lookUpTo(Stage::Lacking);
    if (m_again)
        return lookFrom(m_stage);
    if (m_stage != Stage::Complete)
        return;
    showTotals();
    if (m_whenComplete)
        std::exchange(m_whenComplete, {})();
}

void TraceWindow::lookUpTo(Stage last) {
    guarded(u"TraceWindow:search"_s, [&] {
        platform::LongWork work(incomplete(), *m_line);
        m_work = &work;
        m_ends = false;
        m_unfinished.reset();
        const auto atEnd = qScopeGuard([this] {
            m_work = nullptr;
            m_tracer.setPace({});
        });
        m_tracer.setPace([&] { return goesOn(work); });
        try {
            const auto moment = m_tracer.oneMoment();
            while (m_stage <= last)
                doStage();
        } catch (const TraceEnded&) {
            if (m_line->wasStopped())
                showStopped();
        } catch (...) {
            showUnfinished();
            throw;
        }
    });
    if (m_whenIdle)
        std::exchange(m_whenIdle, {})();
}

/// Asked between two pieces.
bool TraceWindow::goesOn(platform::LongWork& work) {
    if (work.isDue()) {
        if (std::exchange(m_unfinished, m_stage) != m_stage)
            showUnfinished();
        if (m_begins && !isVisible() && !m_closed) {
            setModal(true);
            show();
        }
    }
    return work.goesOn(-1) && !m_ends;
}

void TraceWindow::leaveIfEnded() const {
    if (m_ends)
        throw TraceEnded();
}

void TraceWindow::doStage() {
    switch (m_stage) {
    case Stage::Text:
        findText();
        break;
    case Stage::Found:
        findContents();
        break;
    case Stage::Recall:
        findRecall();
        break;
    case Stage::Offers:
        findOffers();
        break;
    case Stage::Others:
        findOthers();
        break;
    case Stage::Lacking:
        findLacking();
        break;
    case Stage::Complete:
        return;
    }
    leaveIfEnded();
    m_stage = static_cast<Stage>(static_cast<int>(m_stage) + 1);
}

void TraceWindow::whenComplete(std::function<void()> then) {
    m_whenComplete = std::move(then);
    m_stage = std::min(m_stage, Stage::Lacking);  // looks whether the records are still those that are listed
    lookOn();
}

/// For what asks the records itself.
void TraceWindow::whenIdle(std::function<void()> then) {
    if (!m_work)
        return then();
    m_ends = true;
    m_whenIdle = [this, then = std::move(then)] {
        then();
        if (!m_closed)
            m_again = true;  // what has ended for its sake
    };
}

// The lists are those of another text from now on.
void TraceWindow::takeEdit() {
    m_typing.start();
    m_stage = Stage::Text;
    m_ends = true;
    m_whenComplete = {};
    enableOutput(false);
}

void TraceWindow::showUnfinished() {
    if (m_stage <= Stage::Recall) {
        const QSignalBlocker quiet(m_batches);
        m_list = {};
        m_shown.clear();
        for (TraceList* list : {m_usedIn, m_batches, m_prescriptions})
            list->clear();
        enableOutput(false);
        say({});
    }
    if (m_stage <= Stage::Found) {
        const QSignalBlocker quiet(m_found);
        m_found->clear();
        dropOffers();
    }
    if (m_stage > Stage::Recall)
        showTotals();
    const QString totals = m_stage > Stage::Recall ? m_totals->text() + u" · "_s : QString();
    m_totals->setText(totals + incomplete());
}

void TraceWindow::showStopped() {
    m_whenComplete = {};
    showUnfinished();
    say(translated(u"Stopped: the list is not complete. Enter in the text searches again."_s));
}

void TraceWindow::findRecall() {
    std::vector<std::int64_t> state = m_tracer.state();
    RecallList found = list();
    leaveIfEnded();
    m_asOf = std::move(state);
    m_list = std::move(found);
    say(message());
    enableOutput(!m_list.asked.isEmpty());
    showUsedIn();
    showBatches();
    showPrescriptions();
}

/// Others may have changed the records since the list was made: then it is made anew.
void TraceWindow::findLacking() {
    if (m_tracer.state() != m_asOf) {
        m_stage = Stage::Recall;
        m_again = m_ends = true;
        return;
    }
    const std::size_t known = m_tracer.batchesThatLackLines();
    if (!m_tracer.lookForLackingLines() || known + m_tracer.batchesThatLackLines() == 0)
        return;
    const bool followed = m_list.by != TraceHits::By::Nothing || m_list.formula;
    if (m_list.patient || !followed)
        return;
    Recall recall = m_list.recall;
    m_tracer.nameUncertain(recall, m_list.days);
    leaveIfEnded();
    m_list.recall = std::move(recall);
    showBatches();
    showPrescriptions();
}

}  // namespace sorvanto
