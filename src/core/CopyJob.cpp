#include "core/CopyJob.h"

#include "core/CopyShelf.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Backup.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

/// What a process that was killed in the midst of a copy has left.
void tidy(const QString& place) {
    QDir copies(place);
    for (const QString& name : copies.entryList(
             {u"sorvanto-*.part"_s, u"sorvanto-*.part-journal"_s, u"sorvanto-*.rehearsal*"_s}, QDir::Files))
        copies.remove(name);
}

/// What can be had back: the copy is put into a scratch file as a restore would, and looked through.
void rehearse(const QString& copy, const platform::Cancelled& cancelled) {
    const QString scratch = copy + u".rehearsal"_s;
    if (platform::copyDatabase(copy, scratch, cancelled))
        QFile::remove(platform::platformPath(scratch));
}

void copyToSecondPlace(const CopyJob& job, const QString& copy, const platform::Cancelled& cancelled) {
    if (!QFileInfo(job.secondPlace).isDir())
        throw platform::RuntimeError(platform::error::fileNotFound,
                                     u"The second place for copies is not there: "_s + job.secondPlace);
    tidy(job.secondPlace);
    platform::copyDatabase(copy, job.secondPlace + '/'_L1 + QFileInfo(copy).fileName(), cancelled);
    CopyShelf(job.secondPlace, job.identity).thinOut();
}

/// Whether the second place is there, and lacks a copy of the day.
bool secondPlaceLacks(const CopyJob& job) {
    return QFileInfo(job.secondPlace).isDir() &&
           !CopyShelf(job.secondPlace, job.identity).hasOneOf(job.moment.date());
}

template <typename Deed>
std::exception_ptr failureOf(Deed deed) {
    try {
        deed();
    } catch (...) {
        return std::current_exception();
    }
    return {};
}

}  // namespace

QString copiesFolder() { return platform::programFolder() + u"\\backups"_s; }

// Numbered newer than in both places: a stick may have come along from another computer.
CopyResult makeCopy(const CopyJob& job, const platform::Cancelled& cancelled) {
    const CopyShelf shelf(copiesFolder(), job.identity);
    CopyResult result;
    QString copy;
    if (job.first) {
        const CopyShelf second(job.secondPlace, job.identity);
        copy = shelf.pathFor(job.moment, job.secondPlace.isEmpty() ? 0 : second.newestNumber());
        tidy(QFileInfo(copy).path());
        if (!platform::copyDatabase(job.file, copy, cancelled))
            return result;
        result.copied = true;
        shelf.thinOut();
        if (job.rehearse)
            result.rehearsal = failureOf([&] { rehearse(copy, cancelled); });
    } else if (secondPlaceLacks(job)) {
        if (const auto copies = shelf.copies(); !copies.empty())
            copy = copies.front().path;
    }
    if (!job.secondPlace.isEmpty() && !copy.isEmpty())
        result.secondPlace = failureOf([&] { copyToSecondPlace(job, copy, cancelled); });
    return result;
}

}  // namespace sorvanto
