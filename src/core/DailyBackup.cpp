#include "core/DailyBackup.h"

#include "core/CopyShelf.h"
#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "platform/data/Engine.h"
#include "shared/Context.h"
#include "shared/FileIdentity.h"
#include "shared/Guard.h"

#include <chrono>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int batchesBetweenCopies = 50;
constexpr int askingPause = 20;        // milliseconds, while a copy is being made
constexpr int looksAfterFailure = 60;  // an hour, instead of a report a minute

template <typename Result>
bool isReady(const std::future<Result>& job) {
    return job.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

/// How many batches were ever logged; keys are never given out twice.
std::int64_t batchesLogged(const platform::Connection& connection) {
    return connection.engine().lastKey(u"Log"_s);
}

}  // namespace

DailyBackup::DailyBackup(const Context& context, int startDelay, int interval, int patience, int late)
    : m_context(context), m_startDelay(startDelay), m_interval(interval), m_patience(patience), m_late(late) {
    m_timer.setSingleShot(true);
    m_timer.callOnTimeout([this] {
        m_waitLonger = false;
        try {
            look();
        } catch (...) {
            m_waitLonger = true;
            reportCurrentError(u"DailyBackup:copy"_s);
        }
        m_looked = true;
        const bool asks = m_job.valid() || (m_second.valid() && !m_secondTold);
        m_timer.start(asks ? askingPause : m_waitLonger ? m_interval * looksAfterFailure : m_interval);
    });
}

DailyBackup::~DailyBackup() { stop(); }

void DailyBackup::startSoon() {
    if (m_started)
        return;
    m_started = true;
    m_timer.start(m_startDelay);
}

void DailyBackup::stop() {
    m_timer.stop();
    m_looked = true;
    m_cancelled = true;
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(m_patience);
    if (m_job.valid() && m_job.wait_until(end) == std::future_status::ready)
        m_job = {};
    if (m_second.valid() && m_second.wait_until(end) == std::future_status::ready)
        m_second = {};
}

// A second place that hangs holds up copies until it was told as late, no longer.
void DailyBackup::look() {
    if (m_job.valid()) {
        if (isReady(m_job))
            finish();
    } else if (m_second.valid() && isReady(m_second)) {
        finishSecond();
    } else if (m_second.valid() && !m_secondTold) {
        tellSecondWhenLate();
    } else {
        begin();
    }
}

void DailyBackup::begin() {
    const auto connection = m_context.connection;
    if (!connection || connection->state() != 1 || m_context.standIn)
        return;
    if (connection->engine().awayFor() > 0)  // told as such; the copy is made once the server is back
        return;
    const auto identity = readFileIdentity(*connection);
    m_identity = identity ? identity->identity : QString();
    const CopySettings settings = CopySettings::read(m_identity);
    const std::int64_t batches = batchesLogged(*connection);
    const bool first = isDue(settings, batches);
    m_secondPlace = settings.secondPlace;
    if (!first)
        return beginSecond(false);
    const QString month = platform::today().toString(u"yyyy-MM"_s);
    const CopyJob job{.location = connection->location(),
                      .identity = m_identity,
                      .moment = platform::now(),
                      .rehearse = settings.lastRehearsal != month};
    m_rehearsal = job.rehearse ? month : QString();
    m_batches = batches;
    m_job = std::async(std::launch::async,
                       [job, this] { return makeCopy(job, [this] { return m_cancelled.load(); }); });
}

// While an earlier one hangs there is no second: what it lacks it gets once that has ended.
void DailyBackup::beginSecond(bool justCopied) {
    if (m_secondPlace.isEmpty())
        return;
    if (m_second.valid()) {
        m_secondTold = m_secondTold && !justCopied;
        return;
    }
    const SecondPlaceJob job{.place = m_secondPlace,
                             .identity = m_identity,
                             .day = platform::today().date(),
                             .justCopied = justCopied};
    m_secondTold = false;
    m_secondBegan.start();
    m_second = std::async(std::launch::async,
                          [job, this] { fillSecondPlace(job, [this] { return m_cancelled.load(); }); });
}

void DailyBackup::tellSecondWhenLate() {
    if (!m_secondBegan.hasExpired(m_late))
        return;
    m_secondTold = true;
    guarded(u"DailyBackup:secondPlace"_s, [&] {
        throw platform::RuntimeError(platform::error::deviceIo,
                                     u"The second place for copies does not answer: "_s + m_secondPlace);
    });
}

void DailyBackup::finishSecond() {
    try {
        m_second.get();
    } catch (...) {
        m_waitLonger = true;
        reportCurrentError(u"DailyBackup:secondPlace"_s);
    }
}

/// Without a note of the batches at the last copy, fifty count from the first look on.
bool DailyBackup::isDue(const CopySettings& settings, std::int64_t batches) {
    if (!CopyShelf(copiesFolder(), m_identity).hasOneOf(platform::today().date()))
        return true;
    if (!m_batchesAtFirstLook)
        m_batchesAtFirstLook = batches;
    return batches - settings.batchesAtCopy.value_or(*m_batchesAtFirstLook) >= batchesBetweenCopies;
}

// A failure behind the copy is told as what it is; what comes after it happens all the same.
void DailyBackup::finish() {
    const CopyResult result = m_job.get();
    if (result.copied) {
        if (m_copied)
            m_copied();
        guarded(u"DailyBackup:note"_s, [&] { note(result); });
    }
    if (result.rehearsal)
        guarded(u"DailyBackup:rehearse"_s, [&] { std::rethrow_exception(result.rehearsal); });
    if (result.copied)
        beginSecond(true);
}

void DailyBackup::note(const CopyResult& result) {
    CopySettings settings = CopySettings::read(m_identity);
    settings.batchesAtCopy = m_batches;
    if (!m_rehearsal.isEmpty() && !result.rehearsal)
        settings.lastRehearsal = m_rehearsal;
    settings.write();
}

}  // namespace sorvanto
