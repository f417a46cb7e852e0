// From formula to handed-over results.
#include "mixer/MixSession.h"

#include "mixer/ResultsDocument.h"
#include "platform/basic/RuntimeError.h"
#include "platform/serial/QtSerialPort.h"

#include <QPointer>
#include <QRandomGenerator>
#include <QTimer>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {

using protocol::MixId;

MixerEnvironment MixerEnvironment::real() {
    return {[] { return std::make_unique<platform::QtSerialPort>(); },
            [](int port) { return platform::portPath(port); },
            [] {
                return QByteArray::number(QRandomGenerator::global()->generate(), 16)
                    .toUpper()
                    .rightJustified(8, '0');
            },
            {}};
}

MixSession::MixSession(MixerEnvironment environment, QObject* parent)
    : QObject(parent), m_environment(std::move(environment)),
      m_link(
          m_environment.makePort(), [this] { return m_environment.portPath(m_port); }, m_environment.timing),
      m_run(m_link) {
    connect(&m_link, &MixerLink::connected, this, &MixSession::mixerConnected);
    connect(&m_run, &MixRun::changed, this, &MixSession::changed);
    connect(&m_run, &MixRun::finished, this, &MixSession::mixFinished);
    connect(&m_run, &MixRun::aborted, this, &MixSession::mixAborted);
    connect(&m_run, &MixRun::startUndone, this, [this](const MixId& mix) {
        journal(PanelText::JournalStart, [&] { m_journal.undoStart(mix); });
    });
    m_deskAgain.setSingleShot(true);
    connect(&m_deskAgain, &QTimer::timeout, this, &MixSession::handOverNext);
    connect(&m_link, &MixerLink::status, this, &MixSession::lookAtForeignEnd);
    m_run.beforeStart = [this](const MixId& mix) { return journalStart(mix); };
}

void MixSession::setPort(int port, bool overrideSpeed) {
    m_port = port;
    m_overrideSpeed = overrideSpeed;
}

void MixSession::open() {
    if (!m_journalRead) {
        m_journal.read();
        m_journalRead = true;
        if (!m_journal.unreadable().isEmpty())
            m_notice = {PanelText::JournalUnreadable, {m_journal.unreadable().join(u", "_s)}};
        journal(PanelText::Count, [&] { m_account.reopenLost(); });
    }
    dropLogged();
    m_account.reconcile();
    m_link.open();
    emit changed();
}

void MixSession::close() { m_link.close(); }

void MixSession::mixerConnected() {
    const QString serial = QString::fromLatin1(m_link.identity().serial);
    for (const JournalEntry& entry : m_journal.open()) {
        if (entry.state != JournalState::Started)
            continue;
        if (entry.serial == serial)
            m_run.watch(entry.mix);
        else
            m_run.forget(entry.mix);
    }
    askLastResults();
}

// ---- formula in -----------------------------------------------------------------------------------

void MixSession::loadFormula(const platform::XmlDocumentPtr& document) {
    if (!m_handed.isEmpty() || m_run.isBusy()) {
        m_notice = {m_run.isBusy() && m_run.state() != RunState::Done ? PanelText::BusyMixing
                                                                      : PanelText::BusySigning,
                    {}};
        emit changed();
        return;
    }
    auto read = readFormula(document, m_overrideSpeed);
    if (const auto* refusal = std::get_if<PanelMessage>(&read)) {
        // Nor may the formula before it be started now, in the belief that it is this one.
        m_formula.reset();
        m_run.unload();
        m_notice = *refusal;
        emit changed();
        return;
    }
    m_formula = std::move(std::get<LoadedFormula>(read));
    if (!isOpen())
        open();
    sendFormula();
}

void MixSession::sendFormula() {
    m_notice = {};
    m_account.clearFindings();
    do {
        m_formula->programme.id = m_environment.makeMixId();
    } while (m_journal.find(m_formula->programme.id));
    m_account.readIdentity();
    // A journal that can't be written keeps the mix from being started, and says so then.
    journal(PanelText::Count,
            [&] { m_journal.load(m_formula->programme.id, m_formula->document, m_account.identity()); });
    m_run.load(m_formula->programme);
    emit changed();
}

bool MixSession::canLoadAgain() const {
    const bool idle = m_run.state() == RunState::Ready || m_run.state() == RunState::Loaded;
    const bool refused = m_run.message().text == PanelText::ProgrammeRefused ||
                         m_run.message().text == PanelText::Misstored ||
                         m_run.message().text == PanelText::StartRefused;
    const bool without = m_run.state() == RunState::Ready && !m_run.isSending() && m_formula &&
                         !m_journal.find(m_formula->programme.id);
    return m_formula && m_handed.isEmpty() && idle && (refused || without);
}

void MixSession::loadAgain() {
    if (canLoadAgain())
        sendFormula();
}

// ---- the mix --------------------------------------------------------------------------------------

bool MixSession::canStart() const {
    return m_run.state() == RunState::Loaded && m_handed.isEmpty() && m_toHandOver.isEmpty() &&
           !m_run.isBusy() && !m_link.isStale();
}

void MixSession::start() {
    if (!canStart())
        return;
    m_notice = {};
    m_run.start();
    emit changed();
}

bool MixSession::journalStart(const MixId& mix) {
    const QString serial = QString::fromLatin1(m_link.identity().serial);
    return journal(PanelText::JournalStart, [&] { m_journal.start(mix, serial); });
}

void MixSession::acknowledge() {
    // A mix that ended without results has been seen: nothing is left to be done with it.
    std::vector<MixId> aborted;
    for (const JournalEntry& entry : m_journal.open()) {
        if (entry.state == JournalState::Aborted && m_formula && entry.mix == m_formula->programme.id)
            aborted.push_back(entry.mix);
    }
    for (const MixId& mix : aborted)
        journal(PanelText::Count, [&] { m_journal.close(mix, JournalState::PutAside); });
    m_run.acknowledge();
    emit enableForm();
}

void MixSession::mixFinished(const protocol::MixResults& results, bool seen) {
    const platform::XmlDocumentPtr document = makeResultsDocument(m_link.identity(), results);
    const bool lotTaken = m_account.isLotLogged(lotOf(document));
    journal(PanelText::JournalResults, [&] { m_journal.finish(results.mix, document, lotTaken); });
    if (seen)
        handOverLater(results.mix, false);
    emit changed();
}

void MixSession::mixAborted(const MixId& mix) {
    journal(PanelText::Count, [&] { m_journal.abort(mix); });
    emit enableForm();
}

bool MixSession::journal(PanelText failure, const std::function<void()>& step) {
    try {
        step();
        return true;
    } catch (...) {
        if (failure != PanelText::Count) {
            QString why = platform::currentError().description();
            if (!why.endsWith('.'_L1))
                why += '.'_L1;
            m_notice = {failure, {why}};
        }
        emit changed();
        return false;
    }
}

// ---- results out ----------------------------------------------------------------------------------

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
    if (m_desk && !(asked ? m_desk->canOpenDialog() : m_desk->isFree()))
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

bool MixSession::isToBeHandedOver(const MixId& mix) const {
    return std::any_of(m_toHandOver.begin(), m_toHandOver.end(),
                       [&](const HandOver& next) { return next.mix == mix; });
}

void MixSession::handOver(const MixId& mix) {
    const JournalEntry* entry = m_journal.find(mix);
    if (!entry || !entry->results)
        return;
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
    m_handed.clear();
    m_signing = false;
    if (m_notice.text == PanelText::BusyMixing || m_notice.text == PanelText::BusySigning)
        m_notice = {};
    if (m_formula && m_formula->programme.id == mix)
        m_formula.reset();
    m_run.release();
    m_account.reconcile();
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
    if (m_journal.find(m_handed))
        m_journal.sign(m_handed, rows);
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
                              entry.serial, entry.formula, !entry.belongsTo(identity)});
    }
    return offers;
}

void MixSession::logOffer(const MixId& mix) {
    const JournalEntry* entry = m_journal.find(mix);
    if (!canLog() || !entry || entry->state != JournalState::Finished)
        return;
    if (!entry->belongsTo(m_account.identity()))
        return;
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
    journal(PanelText::Count, [&] { m_journal.close(MixId(mix), JournalState::PutAside); });
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
