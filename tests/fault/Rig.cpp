// The line, what is compared on it, and the user.
#include "Rig.h"

#include "mixer/MemoryLine.h"
#include "mixer/ResultsDocument.h"

#include <QTimer>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using namespace sorvanto::protocol;

namespace fault {
namespace {

constexpr int userPause = 700;         // milliseconds between two looks of the user
constexpr int shortMixPoll = 700;      // a mix of a second is looked at once or twice
constexpr int startAgainAfter = 1000;  // of a program that was killed
constexpr qint64 hour = 3'600'000;

/// One step of a second; the name tells one batch from another.
platform::XmlDocumentPtr formulaOf(int batch) {
    return sorvanto::test::formulaDocument(
        u"<CustomMix PreGrind=\"%1\" FreeSpin=\"1\"><Mix LiftRPM=\"1200\" MixRPM=\"%2\" MixTime=\"00:00:01\""
        u" Cycles=\"0\"/></CustomMix>"_s.arg(batch % 16)
            .arg(600 + 12 * (batch % 100)),
        9, 7, 250, u"Gel %1"_s.arg(batch));
}

}  // namespace

RigPort::RigPort(Rig& rig) : m_rig(rig) { m_rig.m_port = this; }
RigPort::~RigPort() = default;

bool RigPort::open(const QString&, int) {
    m_rig.m_atProgram.reset();
    return m_open = m_rig.m_plugged;
}

bool RigPort::write(const QByteArray& bytes) {
    if (m_open)
        m_rig.toMixer(bytes);
    return m_open;
}

void RigPort::arrive(const QByteArray& bytes) {
    if (m_open)
        emit bytesRead(bytes);
}

void RigPort::pull() {
    if (m_open) {
        m_open = false;
        emit failed(u"unplugged"_s);
    }
}

Rig::Rig(VirtualTime& time) : m_time(time) {
    carry = [](Direction, const QByteArray& frame, const Hand& hand) { hand(frame); };
    start();
}

Rig::~Rig() = default;

MixerEnvironment Rig::environment() {
    return {[this] { return std::make_unique<RigPort>(*this); },
            [](int) { return u"/memory/COM1"_s; },
            [this] { return QByteArray::number(++m_ids).rightJustified(8, '0'); },
            {.mixPoll = shortMixPoll},
            200};
}

void Rig::start() {
    m_session = std::make_unique<MixSession>(environment());
    m_session->setPort(1, false);
    m_session->setLoggedTest([this](const QString& lot) { return m_logged.contains(lot.mid(6).toInt()); });
    QObject::connect(m_session.get(), &MixSession::mixDone, m_session.get(),
                     [this](const auto& formula, const auto& results) { handOver(formula, results); });
    m_session->open();
}

void Rig::later(int milliseconds, const std::function<void()>& thing) {
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &m_alive, thing);
}

void Rig::unplug(int milliseconds) {
    later(0, [this] {
        m_plugged = false;
        m_atMixer.reset();
        if (m_port)
            m_port->pull();
    });
    later(milliseconds, [this] { m_plugged = true; });
}

void Rig::kill() {
    later(0, [this] { m_session.reset(); });
    later(startAgainAfter, [this] {
        if (!m_session)
            start();
    });
}

void Rig::restartMixer() {
    m_forgotten << m_heard.id;
    if (m_mixer.state() == MixerState::Mixing && !m_preparations.empty()) {
        const auto last = std::max_element(m_preparations.begin(), m_preparations.end(),
                                           [](const auto& a, const auto& b) { return a.second < b.second; });
        m_cutOff << last->first;
    }
    m_mixer.restart();
}

// ---- the line -------------------------------------------------------------------------------------------

void Rig::toMixer(const QByteArray& frame) {
    m_sent[Direction::ToMixer] << frame;
    carry(Direction::ToMixer, frame, [this](const QByteArray& bytes) { mixerHears(bytes); });
}

void Rig::mixerHears(const QByteArray& bytes) {
    if (!m_plugged)
        return;
    m_mixer.advance(m_time.now());
    for (const Frame& command : m_atMixer.feed(bytes)) {
        ++m_accepted;
        if (!m_sent[Direction::ToMixer].contains(encode(command)))
            m_wrongs << u"the mixer took what nobody sent: "_s + QString::fromLatin1(encode(command));
        const Frame reply = m_mixer.receive(command);
        remember(command, reply);
        const QByteArray frame = encode(reply);
        m_sent[Direction::ToProgram] << frame;
        carry(Direction::ToProgram, frame,
              [this](const QByteArray& arriving) { later(1, [this, arriving] { programHears(arriving); }); });
    }
}

void Rig::programHears(const QByteArray& bytes) {
    if (!m_plugged || !m_port || !m_port->isOpen())
        return;
    for (const Frame& reply : m_atProgram.feed(bytes)) {
        ++m_accepted;
        if (!m_sent[Direction::ToProgram].contains(encode(reply)))
            m_wrongs << u"the program took what nobody sent: "_s + QString::fromLatin1(encode(reply));
    }
    m_port->arrive(bytes);
}

/// What the mixer holds and runs, as it was told.
void Rig::remember(const Frame& command, const Frame& reply) {
    if (!isOk(reply))
        return;
    if (const auto head = readLoad(command)) {
        m_forgotten << m_heard.id;
        std::tie(m_heard, m_heardSteps) = *head;
        m_heard.steps.clear();
    } else if (const auto step = readStep(command)) {
        if (static_cast<std::size_t>(step->first) == m_heard.steps.size() + 1)
            m_heard.steps.push_back(step->second);
        if (m_heard.steps.size() == m_heardSteps)
            m_forgotten.remove(m_heard.id);
    } else if (command.kind == "CLEAR") {
        m_forgotten << m_heard.id;
    } else if (command.kind == "START") {
        const MixId mix = *readMixId(command);
        if (!m_folder.read(u"mixes/%1.xml"_s.arg(QString::fromLatin1(mix))).contains("State=\"started\""))
            m_wrongs << u"started before the journal knew: "_s + QString::fromLatin1(mix);
        if (m_run.contains(mix) && m_preparations[mix] != m_mixer.preparations())
            m_wrongs << u"started twice: "_s + QString::fromLatin1(mix);
        m_run[mix] = m_heard;
        m_preparations[mix] = m_mixer.preparations();
        if (!m_wanted.contains(mix) || !(m_wanted[mix] == m_heard))
            m_wrongs << u"the mixer runs another programme than was loaded: "_s + QString::fromLatin1(mix);
    }
}

// ---- the user -------------------------------------------------------------------------------------------

void Rig::noteWanted() {
    if (m_session && m_session->formula())
        m_wanted[m_session->formula()->programme.id] = m_session->formula()->programme;
}

void Rig::actAsUser() {
    if (!m_session)
        return;
    MixSession& session = *m_session;
    noteWanted();  // it may have been loaded again, under another id
    for (const Offer& offer : session.offers()) {
        if (offer.state == JournalState::Finished && session.canLog())
            return session.logOffer(offer.mix);
        if (offer.state == JournalState::Aborted) {
            m_withoutResults << offer.mix;
            return session.putAside(offer.mix);
        }
    }
    const bool waits = !session.offers().empty();
    if (session.run().state() == RunState::Fault) {
        if (session.run().message().text == PanelText::MixLost && session.formula())
            m_withoutResults << session.formula()->programme.id;
        session.acknowledge();
    } else if (session.canStart())
        session.start();
    else if (session.canLoadAgain())
        session.loadAgain();
    else if (!waits && !session.formula() && !session.run().isBusy() && !session.isSigning())
        session.loadFormula(formulaOf(m_batches));
    noteWanted();
}

void Rig::handOver(const platform::XmlDocumentPtr& formula, const platform::XmlDocumentPtr& results) {
    const int preparation = lotOf(results).mid(6).toInt();
    const auto made = std::find_if(m_preparations.begin(), m_preparations.end(),
                                   [&](const auto& entry) { return entry.second == preparation; });
    const QString name = formulaName(formula);
    if (made == m_preparations.end()) {
        m_wrongs << u"results of a mix that was none: %1"_s.arg(preparation);
    } else {
        auto wanted = std::get<LoadedFormula>(readFormula(formula, false)).programme;
        wanted.id = made->first;
        if (!(wanted == m_run[made->first]))
            m_wrongs << u"results of %1 for %2"_s.arg(QString::fromLatin1(made->first), name);
    }
    if (m_logged.contains(preparation))
        m_wrongs << u"handed over twice: %1"_s.arg(preparation);
    m_logged << preparation;
    m_session->initialsClosed();
    m_session->logged();
}

bool Rig::makeBatch() {
    ++m_batches;
    const qint64 latest = m_time.now() + hour;
    const int logged = mixesLogged();
    const int lost = mixesWithoutResults();
    qint64 nextLook = m_time.now();
    const auto isOver = [&] {
        const bool known = mixesLogged() > logged || mixesWithoutResults() > lost;
        return known && m_session && m_session->offers().empty() && !m_session->run().isBusy() &&
               m_session->run().state() == RunState::Ready;
    };
    while (!isOver()) {
        if (m_time.now() >= latest || !m_time.step())
            return false;
        if (m_time.now() >= nextLook && mixesLogged() == logged) {
            nextLook = m_time.now() + userPause;
            actAsUser();
        } else if (m_time.now() >= nextLook && m_session) {
            nextLook = m_time.now() + userPause;
            if (!m_session->offers().empty() || m_session->run().state() == RunState::Fault)
                actAsUser();
        }
    }
    return true;
}

QStringList Rig::wrongs() const {
    QStringList all = m_wrongs;
    for (const auto& [mix, preparation] : m_preparations) {
        const QString name = QString::fromLatin1(mix);
        const bool logged = m_logged.contains(preparation), told = m_withoutResults.contains(mix);
        if (!logged && !told)
            all << u"ran, and is neither logged nor told of: "_s + name;
        if (told && (logged || !m_cutOff.contains(mix)))
            all << u"told as without results, and has some: "_s + name;
    }
    for (const MixId& mix : m_withoutResults) {
        if (!m_preparations.contains(mix) && !m_forgotten.contains(mix))
            all << u"told as without results, and never ran: "_s + QString::fromLatin1(mix);
    }
    return all;
}

int Rig::mixesToldInVain() const {
    return static_cast<int>(
        std::count_if(m_withoutResults.begin(), m_withoutResults.end(),
                      [this](const MixId& mix) { return !m_preparations.contains(mix); }));
}

int Rig::openJournals() const {
    const QDir mixes(m_folder.path(u"mixes"_s));
    const auto names = mixes.entryList(QDir::Files);
    const QString next = m_session && m_session->formula()
                             ? QString::fromLatin1(m_session->formula()->programme.id) + u".xml"_s
                             : QString();
    return static_cast<int>(std::count_if(names.begin(), names.end(), [&](const QString& name) {
        return name != next || !m_folder.read(u"mixes/"_s + name).contains("State=\"loaded\"");
    }));
}

QByteArray Rig::whereItStands() const {
    QByteArray text = QByteArray::number(static_cast<int>(m_mixer.state())) + (m_plugged ? "p" : "u");
    if (!m_session)
        return text + " dead";
    const MixSession& session = *m_session;
    text += " run " + QByteArray::number(static_cast<int>(session.run().state()));
    text += " says " + QByteArray::number(static_cast<int>(session.run().message().text));
    text += " link " + QByteArray::number(static_cast<int>(session.link().state()));
    for (const bool flag :
         {session.link().isStale(), session.link().hasFailed(), session.run().isSending(),
          session.run().isBusy(), !session.run().running().isEmpty(), session.canStart(), session.canLog(),
          session.canLoadAgain(), session.isWaiting(), session.isSigning(), session.formula().has_value()})
        text += flag ? '1' : '0';
    for (const Offer& offer : session.offers())
        text += " offer " + QByteArray::number(static_cast<int>(offer.state));
    return text;
}

}  // namespace fault
