#include "core/CopyJob.h"

#include "core/CopyShelf.h"
#include "db/RecordsCopy.h"
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

template <typename Deed>
std::exception_ptr failureOf(Deed deed) {
    try {
        deed();
    } catch (...) {
        return std::current_exception();
    }
    return {};
}

/// Whether the folder has a copy of that name already.
bool holds(const QString& folder, const QString& copy) {
    return QFileInfo::exists(folder + '/'_L1 + QFileInfo(copy).fileName());
}

/// Its number stands above the other's: a stick may have come along from another computer. Throws where the name can't
/// be changed.
QString numberedAbove(const CopyShelf& other, const CopyShelf& shelf, const KeptCopy& copy) {
    const int number = other.newestNumber();
    if (copy.number > number)
        return copy.path;
    const QString path = shelf.pathFor(copy.made, number);
    if (!QFile::rename(copy.path, path))
        throw platform::RuntimeError(platform::error::deviceIo,
                                     u"The copy %1 can't be given a newer number"_s.arg(copy.path));
    return path;
}

}  // namespace

QString copiesFolder() { return platform::programFolder() + u"\\backups"_s; }

CopyResult makeCopy(const CopyJob& job, const platform::Cancelled& cancelled) {
    const CopyShelf shelf(copiesFolder(), job.identity);
    CopyResult result;
    const QString copy = shelf.pathFor(job.moment);
    tidy(QFileInfo(copy).path());
    if (!copyToFile(job.location, copy, cancelled))
        return result;
    result.copied = true;
    shelf.thinOut();
    if (job.rehearse)
        result.rehearsal = failureOf([&] { rehearse(copy, cancelled); });
    return result;
}

void fillSecondPlace(const SecondPlaceJob& job, const platform::Cancelled& cancelled) {
    if (!QFileInfo(job.place).isDir()) {
        if (!job.justCopied)
            return;
        throw platform::RuntimeError(platform::error::fileNotFound,
                                     u"The second place for copies is not there: "_s + job.place);
    }
    const CopyShelf second(job.place, job.identity);
    if (!job.justCopied && second.hasOneOf(job.day))
        return;
    const CopyShelf shelf(copiesFolder(), job.identity);
    const auto copies = shelf.copies();
    if (copies.empty() || holds(job.place, copies.front().path))
        return;
    const QString copy = numberedAbove(second, shelf, copies.front());
    tidy(job.place);
    if (platform::copyDatabase(copy, job.place + '/'_L1 + QFileInfo(copy).fileName(), cancelled))
        second.thinOut();
}

}  // namespace sorvanto
