// The session once a mix has ended: its results are handed over, logged, and offered again where that failed.
#include "mixer/MixSession.h"

#include "mixer/ResultsDocument.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/UnderWay.h"

#include <QPointer>
#include <QTimer>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {

using protocol::MixId;

void MixSession::handOverLater(const MixId& mix, bool asked) {
    m_toHandOver.append({mix, asked, false});
    handOverSoon();
}

// Out of the port's own handler: it would get no more bytes while the user signs.
void MixSession::handOverSoon() { QTimer::singleShot(0, this, &MixSession::handOverNext); }

void MixSession::handOverNext() {
    if (!m_handed.isEmpty() || m_toHandOver.isEmpty())
        return;
    const bool asked = m_toHandOver.first().asked;
    const bool comesUp = !m_account.isLogCopy();  // else there is no dialog to be waited for
    if (m_desk && comesUp && !(asked ? m_desk->canOpenDialog() : m_desk->isFree()))
        return wait();
    m_waiting = false;
    m_deskAgain.stop();
    const HandOver next = m_toHandOver.takeFirst();
    if (m_desk && next.asked)
        m_desk->keepTypedText();
    handOver(next.mix);
}

void MixSession::wait() {
    m_deskAgain.start(m_environment.deskInterval);
    HandOver& next = m_toHandOver.first();
    if (!next.told)
        m_desk->callAttention();
    if (m_waiting && next.told)
        return;
    next.told = true;
    m_waiting = true;
    emit changed();
}

void MixSession::signNow() {
    if (!isWaiting() || (m_desk && !m_desk->canOpenDialog()))
        return;
    m_toHandOver.first().asked = true;
    handOverSoon();
}

void MixSession::tellFormulaGone() {
    const JournalEntry* entry = m_journal.find(m_handed);
    if (!entry)
        return;
    m_notice = {PanelText::FormulaGone, {entry->name()}};
    emit changed();
}

QString MixSession::nameOf(const MixId& mix) const {
    const JournalEntry* entry = m_journal.find(mix);
    return entry ? entry->name() : QString();
}

int MixSession::storedFormulaOf(const MixId& mix) const {
    const JournalEntry* entry = m_journal.find(mix);
    return entry && entry->belongsTo(m_account.identity()) ? formulaKey(entry->formula) : 0;
}

QDateTime MixSession::startOf(const MixId& mix) const {
    const JournalEntry* entry = m_journal.find(mix);
    return entry ? entry->started : QDateTime();
}

bool MixSession::isToBeHandedOver(const MixId& mix) const {
    return std::any_of(m_toHandOver.begin(), m_toHandOver.end(),
                       [&](const HandOver& next) { return next.mix == mix; });
}

void MixSession::handOver(const MixId& mix) {
    const JournalEntry* entry = m_journal.find(mix);
    if (!entry || !entry->results)
        return;
    // The user may have opened another database since the formula was loaded: its formulas are others.
    m_account.readIdentity();
    if (!entry->belongsTo(m_account.identity())) {
        m_notice = {PanelText::OfferOtherDatabase, {entry->name()}};
        return handedOver(mix);
    }
    if (m_account.isLogCopy()) {
        m_notice = {PanelText::KeptForServer, {entry->name()}};
        return handedOver(mix);
    }
    m_handed = mix;
    m_loggedNow = false;
    m_signing = true;
    emit changed();
    const platform::XmlDocumentPtr formula = entry->formula->cloneDeep(),
                                   results = entry->results->cloneDeep();
    const QPointer<MixSession> alive(this);
    emit mixDone(formula, results);
    if (!alive)
        return;
    if (m_loggedNow && m_journal.find(mix))
        journal(PanelText::Count, [&] { m_journal.close(mix, JournalState::Logged); });
    if (m_notice.text == PanelText::BusyMixing || m_notice.text == PanelText::BusySigning)
        m_notice = {};
    handedOver(mix);
}

// Whatever became of it: the mixer is free for the next.
void MixSession::handedOver(const MixId& mix) {
    m_handed.clear();
    m_signing = false;
    if (m_formula && m_formula->programme.id == mix)
        m_formula.reset();
    m_run.release();
    m_account.reconcile();
    const QPointer<MixSession> alive(this);
    emit changed();
    emit enableForm();
    if (alive && !m_toHandOver.isEmpty())
        handOverSoon();
}

std::optional<protocol::Status> MixSession::reached() const {
    const auto& reached = m_run.reached();
    return reached && !m_handed.isEmpty() && reached->mix == m_handed ? reached : std::nullopt;
}

void MixSession::initialsClosed() {
    m_signing = false;
    emit changed();
}

void MixSession::logged() {
    m_loggedNow = !m_handed.isEmpty();
    // At once, and not only when the handler ends: the program may die in between.
    if (m_loggedNow)
        journal(PanelText::Count, [&] { m_journal.close(m_handed, JournalState::Logged); });
    emit changed();
}

void MixSession::takeDown(const BatchRows& rows) {
    const JournalEntry* entry = m_journal.find(m_handed);
    if (!entry)
        return;
    m_account.readIdentity();
    if (!entry->belongsTo(m_account.identity()))
        throw platform::RuntimeError(platform::error::permissionDenied,
                                     u"The mix was made with another database"_s);
    if (m_account.isLogCopy())
        throw platform::RuntimeError(platform::error::permissionDenied, u"The log is only a copy"_s);
    m_journal.sign(m_handed, rows);
}

void MixSession::databaseOpened() {
    platform::whenIdle(*this, [this] {
        if (!m_journalRead)
            return;
        if (m_notice.text == PanelText::OfferOtherDatabase)
            m_notice = {};
        m_account.reopenLost();
        dropLogged();
        m_account.reconcile();
        emit changed();
    });
}

bool MixSession::settle(const MixId& mix, BatchAccount::Settled& settled) {
    return journal(PanelText::Count, [&] { settled = m_account.settle(mix); });
}

void MixSession::dropLogged() {
    std::vector<MixId> waiting;
    for (const JournalEntry& entry : m_journal.open()) {
        if (entry.mix != m_handed && !isToBeHandedOver(entry.mix))
            waiting.push_back(entry.mix);
    }
    for (const MixId& mix : waiting) {
        BatchAccount::Settled ignored{};
        settle(mix, ignored);
    }
}

std::vector<Offer> MixSession::offers() const {
    std::vector<Offer> offers;
    const QString& identity = m_account.identity();
    for (const JournalEntry& entry : m_journal.open()) {
        const bool shownElsewhere =
            entry.state == JournalState::Loaded || entry.mix == m_handed || entry.mix == m_run.running() ||
            isToBeHandedOver(entry.mix) ||
            (entry.state == JournalState::Aborted && m_run.state() == RunState::Fault && m_formula &&
             entry.mix == m_formula->programme.id);
        if (!shownElsewhere)
            offers.push_back({entry.mix, entry.state, entry.name(), entry.quantity(), entry.lot(),
                              entry.serial, entry.formula, !entry.belongsTo(identity),
                              m_account.isLogCopy()});
    }
    return offers;
}

bool MixSession::hasUnlogged() const {
    const auto open = m_journal.open();
    return std::any_of(open.begin(), open.end(), [this](const JournalEntry& entry) {
        return entry.state != JournalState::Loaded && entry.state != JournalState::Aborted &&
               entry.belongsTo(m_account.identity());
    });
}

std::optional<int> MixSession::formulaToMix() const {
    if (!m_formula)
        return std::nullopt;
    const JournalEntry* entry = m_journal.find(m_formula->programme.id);
    if (entry && !entry->belongsTo(m_account.identity()))
        return std::nullopt;
    return formulaKey(m_formula->document);
}

void MixSession::logOffer(const MixId& mix) {
    const JournalEntry* entry = m_journal.find(mix);
    if (!canLog() || !entry || entry->state != JournalState::Finished)
        return;
    m_account.readIdentity();
    if (!entry->belongsTo(m_account.identity()) || m_account.isLogCopy())
        return emit changed();
    m_account.clearFindings();
    auto settled = BatchAccount::Settled::NotInLog;
    settle(mix, settled);
    m_account.reconcile();
    if (settled != BatchAccount::Settled::NotInLog)
        return emit changed();
    handOverLater(MixId(mix), true);
    emit changed();
}

void MixSession::putAside(const MixId& mix) {
    const JournalEntry* entry = m_journal.find(mix);
    if (!entry || mix == m_handed || mix == m_run.running())
        return;
    m_run.forget(mix);
    journal(PanelText::JournalPutAside, [&] { m_journal.close(MixId(mix), JournalState::PutAside); });
    m_account.reconcile();
    emit changed();
}

// ---- the mixer's memory ---------------------------------------------------------------------------

void MixSession::askLastResults() {
    constexpr int remembered = 8;
    const QString serial = QString::fromLatin1(m_link.identity().serial);
    int asked = 0;
    for (const ClosedMix& closed : m_journal.closed()) {
        if (closed.serial != serial || m_compared.contains(closed.mix))
            continue;
        if (++asked > remembered)
            return;
        compareResults(closed.mix);
    }
}

// A mix that ended in the mixer without this program, or whose journal is gone.
void MixSession::lookAtForeignEnd(const protocol::Status& status) {
    if (status.state != protocol::MixerState::Done || status.mix.isEmpty() || m_journal.find(status.mix) ||
        m_compared.contains(status.mix))
        return;
    compareResults(status.mix);
}

void MixSession::compareResults(const MixId& mix) {
    m_compared.insert(mix);
    m_link.send(protocol::resultCommand(mix), [this, mix](const auto& reply) {
        if (!reply)
            m_compared.remove(mix);
        const auto results = reply ? protocol::readResults(*reply) : std::nullopt;
        if (!results || results->mix != mix)
            return;
        const QString lot = lotOf(makeResultsDocument(m_link.identity(), *results));
        if (m_journal.find(mix) || m_journal.closedLot(mix) == lot)
            return;
        m_account.noteUnknown(lot);
        emit changed();
    });
}

}  // namespace sorvanto
