#include "platform/data/postgres/Session.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/Overtaken.h"
#include "platform/data/Waiter.h"
#include "platform/data/postgres/SqlState.h"

#include <QDeadlineTimer>
#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform::postgres {

namespace {

constexpr int firstPauseMs = 50, longestPauseMs = 1000;
constexpr int firstTryMs = 1000, longestTryMs = 30000;

/// Empty as long as nothing was changed.
constexpr char transactionNumber[] = "SELECT pg_current_xact_id_if_assigned()";

/// Around a command, so that it is kept whole or not at all, and a failure leaves what was open before it.
struct Frame {
    QByteArrayList before, after, afterFailure;
};

/// together: whether it reads more than one answer, which then are of one moment.
Frame frameFor(Access access, bool inSpan, bool together) {
    const bool reads = access == Access::Reads;
    if (!inSpan && reads)
        return together ? Frame{{beginOneMoment}, {"COMMIT"}, {"ROLLBACK"}} : Frame();
    if (!inSpan)
        return {{"BEGIN READ WRITE"}, {transactionNumber}, {"ROLLBACK"}};
    const QByteArray back = "ROLLBACK TO command", end = "RELEASE command";
    if (reads)
        return {{"SAVEPOINT command", "SET LOCAL transaction_read_only = on"}, {back, end}, {back, end}};
    return {{"SAVEPOINT command"}, {end, transactionNumber}, {back, end}};
}

std::vector<Command> commandsOf(const QByteArrayList& statements) {
    std::vector<Command> commands;
    for (const QByteArray& sql : statements)
        commands.push_back({sql, {}, false});
    return commands;
}

/// Another transaction has changed what this one, which sees an older moment, was about to change.
constexpr char overtakenState[] = "40001";

void append(std::vector<Command>& commands, std::vector<Command> more) {
    std::move(more.begin(), more.end(), std::back_inserter(commands));
}

const QString notSaved = u"; the change was not saved"_s;
const QString notKnown = u"; it is not known whether the change was saved"_s;

/// Whether it may be another answer in a moment.
bool canPass(const QByteArray& state) { return state.isEmpty() || state == "57P03" || state == "53300"; }

}  // namespace

/// From the first command to the last of what was asked for.
class Session::Work {
public:
    Work(Session& session, const QString& statement) : m_session(session) {
        if (session.m_working)
            throw RuntimeError(error::permissionDenied, u"Another statement is under way"_s, u"Database"_s,
                               statement);
        session.m_working = true;
        session.m_line.forgetStop();
        const bool quiet = session.m_waiter && !session.m_waiter->isPatient();
        session.m_line.setStopTime(quiet ? session.m_limits.quietStopMs : session.m_limits.stopMs);
        session.m_sinceBegin.start();
    }
    ~Work() {
        m_session.m_working = false;
        if (m_session.m_waiter)
            m_session.m_waiter->ended();
    }
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;

private:
    Session& m_session;
};

Session::Session(const QString& address, std::shared_ptr<Waiter> waiter, const Limits& limits)
    : m_waiter(std::move(waiter)), m_limits(limits), m_line(address, limits, [this] {
          return !m_waiter || m_waiter->goesOn(static_cast<int>(m_sinceBegin.elapsed()));
      }) {
    const Work work(*this, {});
    if (open())
        return;
    const Failure failure = openFailureOf(m_line.refusal().state);
    throw RuntimeError(failure.number,
                       u"%1 (%2)"_s.arg(QString::fromUtf8(failure.text), m_line.refusal().message),
                       u"Database"_s);
}

Session::~Session() = default;

int Session::left(int milliseconds) const {
    const auto rest = m_limits.wholeMs - static_cast<int>(m_sinceBegin.elapsed());
    return std::min(milliseconds, std::max(rest, m_limits.leastMs));
}

bool Session::open() {
    if (!m_line.open(left(m_limits.openMs)))
        return false;
    greet();
    return m_line.isOpen();
}

void Session::greet() {
    std::vector<Command> all = commandsOf(m_greeting);
    all.insert(all.end(), m_questions.begin(), m_questions.end());
    m_refused.clear();
    if (all.empty())
        return;
    const Line::Outcome outcome = m_line.send(all, left(m_limits.answerMs));
    if (outcome.lost || m_questions.empty())
        return;
    if (outcome.failed())
        m_refused = u"The server is not ready (%1)"_s.arg(outcome.results.back().message());
    else
        m_refused = m_refusal(
            {outcome.results.end() - static_cast<std::ptrdiff_t>(m_questions.size()), outcome.results.end()});
}

void Session::setAdmission(std::vector<Command> questions, Refusal refusal) {
    m_questions = std::move(questions);
    m_refusal = std::move(refusal);
}

bool Session::isStandby() const { return m_line.told("in_hot_standby") == "on"; }

void Session::refresh(const QString& statement) {
    if (isSpanOpen())
        return;
    if (!m_line.isAnswering())
        reopen(statement);
    if (isRefused()) {
        m_line.close();
        throw RuntimeError(error::general, m_refused, u"Database"_s, statement);
    }
}

void Session::reopen(const QString& statement) {
    if (m_waiter && !m_waiter->isPatient() && !m_line.isOpenedInBackground())
        throw RuntimeError(error::deviceIo, u"The server can't be reached (no line)"_s, u"Database"_s,
                           statement);
    const QDeadlineTimer until(m_limits.againMs);
    for (int pause = firstPauseMs; !open(); pause = std::min(2 * pause, longestPauseMs)) {
        const bool again = canPass(m_line.refusal().state) && !until.hasExpired() && m_line.pause(pause);
        if (!again)
            throw RuntimeError(error::deviceIo,
                               u"The server can't be reached (%1)"_s.arg(m_line.refusal().message),
                               u"Database"_s, statement);
    }
}

void Session::lookAfter() {
    if (m_working || isSpanOpen() || isRefused())
        return;
    if (m_line.lookAfter()) {
        m_tryMs = 0;
    } else if (m_tryMs == 0 || m_sinceTry.hasExpired(m_tryMs)) {
        m_line.openInBackground();
        m_tryMs = std::clamp(2 * m_tryMs, firstTryMs, longestTryMs);
        m_sinceTry.start();
    }
}

std::vector<Result> Session::run(std::vector<Command> commands, Access access, const QString& statement) {
    const Work work(*this, statement);
    const bool inSpan = isSpanOpen(), changes = access == Access::Changes;
    if (const std::optional<Result> known = m_expected.take(commands); known && !changes)
        return {*known};
    refresh(statement);
    const std::vector<Command> expected = changes ? std::vector<Command>() : m_expected.commands();
    const Frame frame = frameFor(access, inSpan, !expected.empty());
    const bool tells = changes && m_beforeChanges;
    std::vector<Command> all = commandsOf(tells ? frame.before + m_beforeChanges() : frame.before);
    const auto first = static_cast<std::ptrdiff_t>(all.size());
    const auto last = first + static_cast<std::ptrdiff_t>(commands.size());
    append(all, std::move(commands));
    append(all, expected);
    const auto lastExpected = static_cast<std::ptrdiff_t>(all.size());
    append(all, commandsOf(frame.after));

    const Line::Outcome outcome = changes ? m_line.send(all) : ask(all, statement);
    if (outcome.failed()) {
        if (!outcome.lost && !frame.afterFailure.isEmpty())
            m_line.send(commandsOf(frame.afterFailure));
        if (changes || outcome.lost || outcome.results[static_cast<std::size_t>(last) - 1].failed())
            fail(outcome, statement, changes ? notSaved : QString());
    }
    const auto begin = outcome.results.begin();
    if (!changes)
        m_expected.keep(begin + last, begin + lastExpected);
    else
        changed(outcome.results.back());
    if (changes && !inSpan)
        commit(statement);
    return {begin + first, begin + last};
}

void Session::changed(const Result& transaction) {
    m_transaction = transaction.text(0, 0).toLatin1();
    ++m_changesMade;
}

void Session::runInTurn(const std::vector<Command>& changes, const QString& statement,
                        const std::function<void(const Result&)>& taken) {
    const Work work(*this, statement);
    m_expected.forget();
    const Frame frame = frameFor(Access::Changes, true, false);
    std::vector<Command> all = commandsOf(m_beforeChanges ? m_beforeChanges() : QByteArrayList());
    std::vector<std::size_t> places;
    for (const Command& change : changes) {
        append(all, commandsOf(frame.before));
        places.push_back(all.size());
        append(all, {change});
        append(all, commandsOf(frame.after));
    }
    const Line::Outcome outcome = m_line.send(all);
    if (!outcome.lost) {
        for (const std::size_t place : places) {
            if (outcome.results[place].failed())
                break;
            changed(outcome.results[place + 2]);
            taken(outcome.results[place]);
        }
        if (outcome.failed())
            m_line.send(commandsOf(frame.afterFailure));
    }
    if (outcome.failed())
        fail(outcome, statement, notSaved);
}

Line::Outcome Session::ask(const std::vector<Command>& commands, const QString& statement) {
    const Line::Outcome outcome = m_line.send(commands);
    if (!outcome.lost || isSpanOpen() || m_line.wasStopped())
        return outcome;
    refresh(statement);
    return m_line.send(commands, left(m_limits.answerMs));
}

void Session::control(const QByteArray& sql, const QString& statement) {
    const Work work(*this, statement);
    m_expected.forget();
    if (sql == "COMMIT")
        return commit(statement);
    refresh(statement);
    if (!isSpanOpen())
        m_transaction.clear();
    const Line::Outcome outcome = ask({{sql, {}, false}}, statement);
    if (outcome.failed())
        fail(outcome, statement, notSaved);
}

void Session::commit(const QString& statement) {
    const bool changes = !m_transaction.isEmpty();
    const Line::Outcome outcome = m_line.send({{"COMMIT", {}, false}});
    const Fate fate = outcome.lost && changes ? lookUp() : Fate::Saved;
    if (fate != Fate::Saved)
        fail(outcome, statement, fate == Fate::NotSaved ? notSaved : notKnown);
    if (outcome.lost) {
        if (changes && m_waiter)
            m_waiter->foundSaved();
        return;
    }
    if (outcome.failed())
        fail(outcome, statement, {});
    if (outcome.results.back().tag() != "COMMIT")
        throw RuntimeError(error::statement, u"A statement before has failed, and nothing was saved"_s,
                           u"Database"_s, statement);
}

// The transaction may still be at work on the server, or its end be on the way there; only its last state is an answer.
Session::Fate Session::lookUp() {
    const QByteArray number = std::exchange(m_transaction, {});
    m_line.forgetStop();
    const QDeadlineTimer until(m_limits.lookUpMs);
    for (int pause = firstPauseMs;; pause = std::min(2 * pause, longestPauseMs)) {
        if (m_line.isOpen() || open()) {
            const Line::Outcome outcome = m_line.send(
                {{"SELECT pg_xact_status('" + number + "')", {}, false}}, left(m_limits.answerMs));
            const QByteArray state = outcome.failed() ? QByteArray() : outcome.results.front().bytes(0, 0);
            if (state == "committed" || state == "aborted")
                return state == "committed" ? Fate::Saved : Fate::NotSaved;
        }
        if (until.hasExpired() || !m_line.pause(pause))
            return Fate::NotKnown;
    }
}

void Session::fail(const Line::Outcome& outcome, const QString& statement, const QString& fate) const {
    const auto met = std::find_if(outcome.results.begin(), outcome.results.end(), [](const Result& result) {
        return result.failed() && !result.state().isEmpty();
    });
    const bool answered = met != outcome.results.end();
    const QByteArray state = answered ? met->state() : QByteArray();
    const bool stopped = m_line.wasStopped() && (outcome.lost || state == "57014");
    const Failure failure =
        stopped ? Failure{error::permissionDenied, "The wait for the server was ended"} : failureOf(state);
    QString text = QString::fromUtf8(failure.text);
    if (answered)
        text += u" (%1)"_s.arg(met->message());
    if (outcome.lost)
        text += fate;
    if (state == overtakenState)
        throw Overtaken(failure.number, text, u"Database"_s, statement);
    throw RuntimeError(failure.number, text, u"Database"_s, statement);
}

}  // namespace platform::postgres
