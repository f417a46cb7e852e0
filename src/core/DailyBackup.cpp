#include "core/DailyBackup.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "platform/data/DatabaseCopy.h"
#include "shared/Guard.h"
#include "shared/basMain.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int pause = 5;          // milliseconds between two pieces
constexpr int pagesAtOnce = 128;  // half a megabyte: a few milliseconds
constexpr int copiesKept = 14;
const QString prefix = u"sorvanto-"_s;

QString folder() { return platform::programFolder() + u"\\backups"_s; }

QString todaysCopy() {
    const QString day = platform::today().date().toString(Qt::ISODate);
    return folder() + '\\'_L1 + prefix + day + u".mdb"_s;
}

/// Names of dated copies alone: what a user or an update keeps beside them stays.
void dropOldCopies() {
    QDir copies(platform::platformPath(folder()));
    const QStringList names = copies.entryList({prefix + u"[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9].mdb"_s},
                                               QDir::Files, QDir::Name | QDir::Reversed);
    for (const QString& name : names.mid(copiesKept))
        copies.remove(name);
}

}  // namespace

DailyBackup::DailyBackup(int startDelay) : m_startDelay(startDelay) {
    m_timer.setSingleShot(true);
    m_timer.callOnTimeout([this] {
        try {
            proceed();
        } catch (...) {
            m_copy.reset();
            reportCurrentError(u"DailyBackup:copy"_s);
        }
    });
}

DailyBackup::~DailyBackup() = default;

void DailyBackup::startSoon() {
    if (m_started)
        return;
    m_started = true;
    m_timer.start(m_startDelay);
}

void DailyBackup::stop() {
    m_timer.stop();
    m_copy.reset();
}

void DailyBackup::begin() {
    const auto connection = basMain::gConnection;
    if (connection && connection->state() == 1 && !platform::fileExists(todaysCopy()))
        m_copy = std::make_unique<platform::DatabaseCopy>(connection, todaysCopy());
}

void DailyBackup::proceed() {
    if (!m_copy)
        begin();
    if (!m_copy)
        return;
    if (!m_copy->step(pagesAtOnce))
        return m_timer.start(pause);
    m_copy.reset();
    dropOldCopies();
}

}  // namespace sorvanto
