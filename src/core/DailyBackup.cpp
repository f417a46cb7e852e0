#include "core/DailyBackup.h"

#include "core/CopySettings.h"
#include "core/CopyShelf.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Backup.h"
#include "platform/data/Connection.h"
#include "platform/data/Sqlite.h"
#include "shared/FileIdentity.h"
#include "shared/Guard.h"
#include "shared/basMain.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <chrono>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int batchesBetweenCopies = 50;
constexpr int askingPause = 20;        // milliseconds, while a copy is being made
constexpr int looksAfterFailure = 60;  // an hour, instead of a report a minute

QString folder() { return platform::programFolder() + u"\\backups"_s; }

/// How many batches were ever logged; keys are never given out twice.
std::int64_t batchesLogged(const platform::Connection& connection) {
    platform::sqlite::Statement last(connection.handle(),
                                     u"SELECT seq FROM sqlite_sequence WHERE name = 'Log'"_s, {});
    return last.step() ? last.integer(0) : 0;
}

struct Job {
    QString file, identity;
    QDateTime moment;
    QString secondPlace;
    bool rehearse = false;
};

/// What a process that was killed in the midst of a copy has left.
void tidy(const QString& place) {
    QDir copies(place);
    for (const QString& name :
         copies.entryList({u"sorvanto-*.part"_s, u"sorvanto-*.rehearsal*"_s}, QDir::Files))
        copies.remove(name);
}

/// What can be had back: the copy is put into a scratch file as a restore would, and looked through.
void rehearse(const QString& copy, const platform::Cancelled& cancelled) {
    const QString scratch = copy + u".rehearsal"_s;
    if (platform::copyDatabase(copy, scratch, cancelled))
        QFile::remove(platform::platformPath(scratch));
}

/// Newer in both places than what is there: a stick may have come along from another computer.
void run(const Job& job, const platform::Cancelled& cancelled) {
    const CopyShelf shelf(folder(), job.identity);
    const CopyShelf second(job.secondPlace, job.identity);
    const QString copy = shelf.pathFor(job.moment, job.secondPlace.isEmpty() ? 0 : second.newestNumber());
    tidy(QFileInfo(copy).path());
    if (!platform::copyDatabase(job.file, copy, cancelled))
        return;
    shelf.thinOut();
    if (job.rehearse)
        rehearse(copy, cancelled);
    if (job.secondPlace.isEmpty())
        return;
    if (!QFileInfo(job.secondPlace).isDir())
        throw platform::RuntimeError(platform::error::fileNotFound,
                                     u"The second place for copies is not there: "_s + job.secondPlace);
    platform::copyDatabase(copy, job.secondPlace + '/'_L1 + QFileInfo(copy).fileName(), cancelled);
    second.thinOut();
}

}  // namespace

DailyBackup::DailyBackup(int startDelay, int interval, int patience)
    : m_startDelay(startDelay), m_interval(interval), m_patience(patience) {
    m_timer.setSingleShot(true);
    m_timer.callOnTimeout([this] {
        int pause = m_interval;
        try {
            look();
        } catch (...) {
            pause *= looksAfterFailure;
            reportCurrentError(u"DailyBackup:copy"_s);
        }
        m_looked = true;
        m_timer.start(m_job.valid() ? askingPause : pause);
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
    const std::chrono::milliseconds patience(m_patience);
    if (m_job.valid() && m_job.wait_for(patience) == std::future_status::ready)
        m_job = {};
}

void DailyBackup::look() {
    if (!m_job.valid())
        begin();
    else if (m_job.wait_for(std::chrono::seconds(0)) == std::future_status::ready)
        finish();
}

void DailyBackup::begin() {
    const auto connection = basMain::gConnection;
    if (!connection || connection->state() != 1)
        return;
    const auto identity = readFileIdentity(*connection);
    Job job{.file = QString::fromUtf8(sqlite3_db_filename(connection->handle(), "main")),
            .identity = identity ? identity->identity : QString(),
            .moment = platform::now(),
            .secondPlace = {}};
    if (!isDue(job.identity))
        return;
    const CopySettings settings = CopySettings::read();
    const QString month = platform::today().toString(u"yyyy-MM"_s);
    job.secondPlace = settings.secondPlace;
    job.rehearse = settings.lastRehearsal != month;
    m_rehearsal = job.rehearse ? month : QString();
    m_batchesAtCopy = batchesLogged(*connection);
    m_job = std::async(std::launch::async, [job, this] { run(job, [this] { return m_cancelled.load(); }); });
}

bool DailyBackup::isDue(const QString& identity) {
    const auto copies = CopyShelf(folder(), identity).copies();
    const std::int64_t batches = batchesLogged(*basMain::gConnection);
    if (copies.empty() || copies.front().made.date() != platform::today().date())
        return true;
    if (!m_batchesAtCopy)
        m_batchesAtCopy = batches;
    return batches - *m_batchesAtCopy >= batchesBetweenCopies;
}

void DailyBackup::finish() {
    m_job.get();
    if (m_copied)
        m_copied();
    if (m_rehearsal.isEmpty())
        return;
    CopySettings settings = CopySettings::read();
    settings.lastRehearsal = m_rehearsal;
    settings.write();
}

}  // namespace sorvanto
