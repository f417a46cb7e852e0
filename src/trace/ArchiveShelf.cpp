#include "trace/ArchiveShelf.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/Query.h"

#include <QDir>
#include <QHash>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::FieldKind;
using platform::Query;

QString identityIn(const platform::ConnectionPtr& database) {
    if (database->declaredType(u"FileIdentity"_s, u"fid_Identity"_s).isEmpty())
        return {};
    return platform::text(database->engine(), u"SELECT fid_Identity FROM FileIdentity"_s);
}

/// Everything that the database remembers of what it gave off.
std::vector<GivenOffArchive> givenOff(const platform::ConnectionPtr& database) {
    std::vector<GivenOffArchive> all;
    if (database->declaredType(u"ArchivedBatch"_s, u"abt_Lot"_s).isEmpty())
        return all;
    Query rows(database->engine(),
               u"SELECT abt_Archive, min(abt_Date), max(abt_Date), count(*) FROM ArchivedBatch "
               "WHERE abt_Archive <> '' GROUP BY abt_Archive ORDER BY 2, 1"_s,
               {});
    while (rows.step()) {
        all.push_back({rows.value(0, {FieldKind::Text}).toString(),
                       rows.value(1, {FieldKind::Date}).toDateTime().date(),
                       rows.value(2, {FieldKind::Date}).toDateTime().date(), rows.integer(3)});
    }
    return all;
}

/// The database of this file, where it is an archive; null for any other file.
platform::ConnectionPtr opened(const QString& path) {
    try {
        auto connection = std::make_shared<platform::Connection>();
        connection->open(u"Data Source="_s + path);
        const bool isArchive = !connection->declaredType(u"KeyMap"_s, u"kmp_Old"_s).isEmpty();
        return isArchive ? connection : nullptr;
    } catch (const platform::RuntimeError&) {
        return nullptr;  // no database, or one that can't be read: its archive is named as absent
    }
}

QHash<QString, platform::ConnectionPtr> archivesIn(const QStringList& folders) {
    QHash<QString, platform::ConnectionPtr> found;
    for (const QString& folder : folders) {
        const QFileInfoList files = QDir(folder).entryInfoList(
            {u"*.mdb"_s, u"*.db"_s, u"*.sqlite"_s, u"*.archive"_s}, QDir::Files | QDir::Readable);
        for (const QFileInfo& file : files) {
            if (const platform::ConnectionPtr archive = opened(file.absoluteFilePath()))
                found.insert(identityIn(archive), archive);
        }
    }
    return found;
}

}  // namespace

ArchiveShelf archivesOf(const platform::ConnectionPtr& database, const QStringList& folders) {
    ArchiveShelf shelf;
    const std::vector<GivenOffArchive> all = givenOff(database);
    if (all.empty())
        return shelf;
    const QHash<QString, platform::ConnectionPtr> found = archivesIn(folders);
    for (const GivenOffArchive& archive : all) {
        const auto file = found.value(archive.identity);
        if (file)
            shelf.open.push_back(file);
        (file ? shelf.present : shelf.absent).push_back(archive);
    }
    return shelf;
}

}  // namespace sorvanto
