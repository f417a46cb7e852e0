// From the formula to the end of its mix.
#include "mixer/MixSession.h"

#include "mixer/ResultsDocument.h"
#include "platform/basic/RuntimeError.h"
#include "platform/serial/QtSerialPort.h"

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
    connect(&m_run, &MixRun::startUndone, this, &MixSession::startUndone);
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
        m_account.reopenLost();
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
    isMixerOurs();
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
    journalLoad();
    m_run.load(m_formula->programme);
    emit changed();
}

void MixSession::journalLoad() {
    do {
        m_formula->programme.id = m_environment.makeMixId();
    } while (m_journal.find(m_formula->programme.id));
    m_account.readIdentity();
    // A journal that can't be written keeps the mix from being started, and says so then.
    journal(PanelText::Count,
            [&] { m_journal.load(m_formula->programme.id, m_formula->document, m_account.identity()); });
}

// An id whose start went out is never used again.
void MixSession::startUndone(const MixId& mix) {
    m_journal.undoStart(mix);
    if (!m_formula || m_formula->programme.id != mix)
        return;
    journalLoad();
    m_run.loadAgain(m_formula->programme);
    emit changed();
}

bool MixSession::canLoadAgain() const {
    const bool idle = m_run.state() == RunState::Ready || m_run.state() == RunState::Loaded;
    const bool refused = m_run.message().text == PanelText::StartRefused || !m_run.hasProgramme();
    return m_formula && m_handed.isEmpty() && !m_run.isBusy() && idle && refused;
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

// Lots are a mixer's serial number and its count.
bool MixSession::isMixerOurs() {
    const QString serial = QString::fromLatin1(m_link.identity().serial);
    const QString other = m_account.otherBenchWith(serial);
    if (!other.isEmpty())
        m_notice = {PanelText::MixerTwice, {other, serial}};
    return other.isEmpty();
}

bool MixSession::journalStart(const MixId& mix) {
    if (!isMixerOurs()) {
        emit changed();
        return false;
    }
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
        journal(PanelText::JournalPutAside, [&] { m_journal.close(mix, JournalState::PutAside); });
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
    journal(PanelText::JournalAborted, [&] { m_journal.abort(mix); });
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

}  // namespace sorvanto
