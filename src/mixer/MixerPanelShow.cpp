// What the mixer panel shows of the session: link, ring, formula, notices, what is accounted for, buttons.
#include "mixer/MixerPanel.h"

#include "mixer/BatchPassport.h"
#include "mixer/FittingScrollArea.h"
#include "mixer/LinkRow.h"
#include "mixer/MixTables.h"
#include "mixer/NoticeCard.h"
#include "mixer/OfferList.h"
#include "mixer/ProgressRing.h"
#include "mixer/StepsTable.h"
#include "platform/ask/Ask.h"
#include "platform/basic/SystemLocale.h"
#include "platform/basic/TimeOfDay.h"
#include "platform/widgets/Spoken.h"
#include "platform/widgets/Theme.h"
#include "platform/widgets/UnderWay.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace sorvanto {

void MixerPanel::refresh() {
    showCaptions();
    showLink();
    showRing();
    showFormula();
    showSpeeds();
    showNotices();
    showAccount();
    showButtons();
    m_offers->show(
        m_session.offers(), m_session.canLog(),
        [this](const Offer& offer) { return unitOf(offer.mix, offer.formula); }, m_texts);
    sizeRing();
}

// The card of a mix that waits is to be seen whole: where it does not fit, the ring makes room.
void MixerPanel::sizeRing() {
    m_ring->setSmall(false);
    m_ring->setSmall(m_session.isWaiting() && !m_scroll->hasRoom());
}

void MixerPanel::showCaptions() {
    m_title->setText(m_texts(PanelText::Title));
    platform::setSpokenName(*m_scroll, m_title->text());
    m_footnote->setText(m_texts(PanelText::NotEmergencyStop));
    m_connect->setText(m_texts(PanelText::Connect));
    m_loadAgain->setText(m_texts(PanelText::LoadAgain));
    m_start->setText(m_texts(PanelText::Start));
    m_pause->setText(m_texts(PanelText::Pause));
    m_resume->setText(m_texts(PanelText::Resume));
    m_stop->setText(m_texts(PanelText::Stop));
    m_ok->setText(m_texts(PanelText::Ok));
    m_sign->setText(m_texts(PanelText::SignNow));
}

QString MixerPanel::portName() const { return u"COM%1"_s.arg(m_session.port()); }

// A mixer that has only answered the greeting has not said yet what it does.
bool MixerPanel::isHeard() const {
    return m_session.link().state() == MixerLink::State::Connected &&
           m_session.run().state() != RunState::Disconnected;
}

// The mixer says how long a programme takes with its first word after taking it.
bool MixerPanel::isToldLoaded() const {
    return m_session.run().state() == RunState::Loaded &&
           m_session.run().status().state == protocol::MixerState::Loaded;
}

void MixerPanel::showLink() {
    const MixerLink& link = m_session.link();
    const QString start = portName() + u" \u00B7 "_s;
    const QString lastWord =
        link.lastWord().isValid() ? platform::timeOfDay(link.lastWord().time()) : QString();
    const protocol::Identity& mixer = link.identity();
    const bool greetedOnly = link.state() == MixerLink::State::Connected && !isHeard() && !link.isStale();
    const QString badge = mixer.simulated() && isHeard() ? m_texts(PanelText::Simulated) : QString();
    if (link.state() == MixerLink::State::Closed)
        m_link->show(LinkRow::Kind::Off, start + m_texts(PanelText::NotConnected), {});
    else if (isHeard() && !link.isStale())
        m_link->show(LinkRow::Kind::Good,
                     start + m_texts(PanelText::Firmware, {QString::fromLatin1(mixer.hardware)}), badge);
    else if (!lastWord.isEmpty() && !greetedOnly)
        m_link->show(LinkRow::Kind::Stale, start + m_texts(PanelText::NoWordSince, {lastWord}), badge);
    else
        m_link->show(LinkRow::Kind::Searching, start + m_texts(PanelText::Searching), {});
    m_link->setToolTip(mixer.serial.isEmpty()
                           ? link.path()
                           : m_texts(PanelText::MixerNamed, {QString::fromLatin1(mixer.serial)}) + '\n'_L1 +
                                 link.path());
}

QString MixerPanel::timeLeft() const { return shortTime(m_session.run().status().secondsLeft); }

void MixerPanel::showRing() {
    const MixRun& run = m_session.run();
    const protocol::Status& status = run.status();
    const double done =
        status.secondsTotal > 0 ? 1.0 - double(status.secondsLeft) / status.secondsTotal : 0.0;
    const QString noTime = u"--:--"_s;
    const bool stale = m_session.link().isStale();
    using Tone = ProgressRing::Tone;
    switch (run.state()) {
    case RunState::Disconnected:
        m_ring->show(run.running().isEmpty() ? -1 : done, Tone::Quiet, noTime,
                     m_texts(PanelText::NotConnected));
        break;
    case RunState::Ready:
        m_ring->show(-1, Tone::Quiet, noTime,
                     m_texts(run.isSending() ? PanelText::Sending : PanelText::NothingLoaded));
        break;
    case RunState::Loaded:
        if (isToldLoaded())
            m_ring->show(0, Tone::Running, shortTime(status.secondsTotal), m_texts(PanelText::ReadyToStart));
        else
            m_ring->show(-1, Tone::Quiet, noTime, m_texts(PanelText::Sending));
        break;
    case RunState::Mixing:
        m_ring->show(
            done, stale ? Tone::Quiet : Tone::Running, timeLeft(),
            m_texts(PanelText::StepOf, {QString::number(status.step), QString::number(status.steps)}));
        break;
    case RunState::Paused:
        m_ring->show(done, stale ? Tone::Quiet : Tone::Held, timeLeft(), m_texts(PanelText::Paused));
        break;
    case RunState::Done:
        if (run.wasStopped()) {
            showStopped();
            break;
        }
        m_ring->show(1, Tone::Good, u"00:00"_s, m_texts(PanelText::Finished));
        break;
    case RunState::Fault:
        m_ring->show(1, Tone::Problem, noTime, m_texts(PanelText::Problem));
        break;
    }
}

// Without the mixer's word on how far it came the ring is dotted and says no time.
void MixerPanel::showStopped() {
    const auto& reached = m_session.run().reached();
    const bool known = reached && reached->secondsTotal > 0;
    const QString stopped = m_texts(PanelText::Stopped);
    if (!known) {
        m_ring->show(-1, ProgressRing::Tone::Held, stopped, QString());
        return;
    }
    const int done = reached->secondsTotal - reached->secondsLeft;
    m_ring->show(double(done) / reached->secondsTotal, ProgressRing::Tone::Held, shortTime(done), stopped);
}

QString MixerPanel::unitOf(const protocol::MixId& mix, const platform::XmlDocumentPtr& document) {
    if (!m_unitOf || mix.isEmpty() || formulaKey(document) == 0)
        return {};
    if (const auto known = m_units.constFind(mix); known != m_units.cend())
        return *known;
    if (platform::UnderWay::any()) {  // a wait would refuse the question, and what was not heard be kept
        if (!std::exchange(m_asksLater, true))
            platform::whenIdle(*this, [this] {
                m_asksLater = false;
                refresh();
            });
        return {};
    }
    return *m_units.insert(mix, m_unitOf(formulaKey(document)));
}

void MixerPanel::setUnitSource(std::function<QString(int)> unitOf) {
    m_unitOf = std::move(unitOf);
    m_units.clear();
    refresh();
}

void MixerPanel::showFormula() {
    const auto& formula = m_session.formula();
    const RunState state = m_session.run().state();
    const bool ours = formula && !m_session.run().isForeign();
    m_name->setText(ours ? (formula->name.isEmpty() ? m_texts(PanelText::Unnamed) : formula->name)
                         : (state == RunState::Ready ? m_texts(PanelText::ChooseFormula) : QString()));
    platform::setLook(*m_name, "heading", ours);
    m_name->setVisible(!m_name->text().isEmpty());
    m_quantity->setVisible(ours);
    if (ours || m_steps)
        steps().setVisible(ours);
    if (!ours)
        return;
    const BatchPassport batch =
        BatchPassport::of(formula->document, unitOf(formula->programme.id, formula->document));
    m_quantity->setText(m_texts(PanelText::QuantityInJar, {batch.amount(), batch.jar}));
    const bool inMix = state == RunState::Mixing || state == RunState::Paused;
    const auto& reached = m_session.run().reached();
    const bool stopped = m_session.run().wasStopped() && reached;
    steps().show(formula->programme.steps,
                 stopped ? reached->step
                 : inMix ? m_session.run().status().step
                         : 0,
                 stopped, m_texts);
}

void MixerPanel::showSpeeds() {
    const RunState state = m_session.run().state();
    const auto& reached = m_session.run().reached();
    if (m_session.run().wasStopped() && reached) {
        m_speeds->setVisible(true);
        m_speeds->setText(
            m_texts(PanelText::StoppedAt, {shortTime(reached->secondsTotal - reached->secondsLeft),
                                           QString::number(reached->step), QString::number(reached->steps)}));
        return;
    }
    const protocol::Status& status = m_session.run().status();
    m_speeds->setVisible(state == RunState::Mixing || state == RunState::Paused);
    const QString dot = u"  \u00B7  "_s;
    m_speeds->setText(m_texts(PanelText::LiftNow) + ' '_L1 + QString::number(status.liftRpm) + dot +
                      m_texts(PanelText::MixNow) + ' '_L1 + QString::number(status.mixRpm) + dot +
                      m_texts(PanelText::CyclesNow) + ' '_L1 + QString::number(status.cycles));
}

PanelMessage MixerPanel::linkMessage() const {
    const MixerLink& link = m_session.link();
    if (link.state() == MixerLink::State::NoPort) {
        const QString port = portName();
        switch (link.portTrouble()) {
        case platform::PortState::Absent:
            return {PanelText::PortAbsent, {port}};
        case platform::PortState::Held:
            return {PanelText::PortHeld, {port}};
        case platform::PortState::Present:
            return {PanelText::PortFailed, {port, link.portErrorText()}};
        case platform::PortState::Forbidden:
            break;
        }
        const QString group = platform::deviceGroup(link.path());
        return group.isEmpty() ? PanelMessage{PanelText::PortForbiddenNoGroup, {port}}
                               : PanelMessage{PanelText::PortForbidden, {port, group}};
    }
    if (link.state() == MixerLink::State::Searching && link.hasFailed())
        return {link.lastWord().isValid() ? PanelText::LostIdle : PanelText::NoAnswer, {portName()}};
    return {};
}

void MixerPanel::showNotices() {
    const MixRun& run = m_session.run();
    PanelMessage problem = run.message();
    if (problem.empty() && run.state() == RunState::Disconnected)
        problem = linkMessage();
    const bool informs = problem.text == PanelText::LidOpened || problem.text == PanelText::ForeignMix;
    m_problem->show(informs ? NoticeCard::Kind::Warning : NoticeCard::Kind::Problem,
                    problem.empty() ? QString() : m_texts(problem));

    m_sign->setVisible(m_session.isWaiting());
    QStringList waits;
    if (m_session.isWaiting())
        waits << m_texts(PanelText::MixWaits);
    if (m_session.isWaiting() && run.wasStopped())
        waits << m_texts(PanelText::Interrupted);
    m_waiting->show(waits.size() > 1 ? NoticeCard::Kind::Warning : NoticeCard::Kind::Information,
                    waits.join(' '_L1));
    const bool signing = m_session.isSigning();
    const PanelMessage& notice = m_session.notice();
    const QString found = findings();
    if (!notice.empty() || !found.isEmpty())
        m_notice->show(NoticeCard::Kind::Warning,
                       notice.empty() ? found
                                      : m_texts(notice) + (found.isEmpty() ? u""_s : '\n'_L1 + found));
    else if (signing && run.wasStopped())
        m_notice->show(NoticeCard::Kind::Warning, m_texts(PanelText::Interrupted));
    else
        m_notice->show(NoticeCard::Kind::Information,
                       signing ? m_texts(PanelText::WaitsForInitials) : QString());

    QStringList warnings;
    if (m_session.formula() && !run.isForeign()) {
        for (const PanelMessage& warning : m_session.formula()->warnings)
            warnings << m_texts(warning);
    }
    m_warnings->show(NoticeCard::Kind::Warning, warnings.join('\n'_L1));
}

QString MixerPanel::findings() const {
    QStringList lines;
    for (const PanelMessage& finding : m_session.findings())
        lines << m_texts(finding);
    return lines.join('\n'_L1);
}

void MixerPanel::showAccount() {
    const Reconciliation& all = m_session.reconciliation();
    constexpr qsizetype mostNamed = 5;
    const QString count = platform::systemLocale().toString(all.preparations);
    const bool missing = !all.missing.isEmpty();
    QStringList names = all.missing.mid(0, mostNamed);
    if (all.missing.size() > mostNamed)
        names << u"…"_s;
    m_account->setVisible(missing || (all.done && all.preparations > 1 && !m_session.isWaiting()));
    m_account->setText(
        missing ? m_texts(PanelText::NotAccountedFor,
                          {platform::systemLocale().toString(all.missing.size()), count, names.join(u", "_s)})
                : m_texts(PanelText::AllAccountedFor, {count}));
    platform::setLook(*m_account, "caution", missing);
    platform::setLook(*m_account, "quiet", !missing);
}

void MixerPanel::showButtons() {
    const RunState state = m_session.run().state();
    const bool mixing = state == RunState::Mixing, paused = state == RunState::Paused;
    const bool fault = state == RunState::Fault;
    const bool reachable = m_session.link().state() == MixerLink::State::Connected;
    m_connect->setVisible(!m_session.isOpen());
    m_loadAgain->setVisible(m_session.canLoadAgain());
    m_start->setVisible(!mixing && !paused && !fault && m_session.isOpen() && !m_session.isWaiting());
    m_start->setEnabled(m_session.canStart() && isToldLoaded());
    m_pause->setVisible(mixing);
    m_resume->setVisible(paused);
    m_stop->setVisible(mixing || paused);
    m_ok->setVisible(fault);
    for (QPushButton* button : {m_pause, m_resume, m_stop})
        button->setEnabled(reachable);
    // An empty row takes room that other parts need.
    const auto all = {m_connect, m_loadAgain, m_start, m_pause, m_resume, m_stop, m_ok};
    m_buttons->setHidden(
        std::all_of(all.begin(), all.end(), [](const QPushButton* button) { return button->isHidden(); }));
}

void MixerPanel::putAside(const Offer& offer) {
    const QString name = offer.name.isEmpty() ? m_texts(PanelText::Unnamed) : offer.name;
    const QString lot = offer.lot.isEmpty() ? m_texts(PanelText::NoLot) : offer.lot;
    const QPointer<MixerPanel> alive(this);
    const platform::Answer answer =
        platform::MsgBox(m_texts(PanelText::PutAsideQuestion, {name, lot}),
                         {platform::Buttons::YesNo, platform::Icon::Exclamation, true, false},
                         m_texts(PanelText::PutAsideTitle));
    if (alive && answer == platform::Answer::Yes)
        m_session.putAside(offer.mix);
}

}  // namespace sorvanto
