#include "core/DatabaseUpdater.h"

#include "db/UpdateFile.h"
#include "history/HistorySeal.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/DatabaseCopy.h"
#include "platform/data/Engine.h"
#include "shared/FileIdentity.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

/// A copy of the file as it is, under a name of its own: no other database's copy is replaced by it.
class CopyBefore {
public:
    CopyBefore(const QString& file, const QString& version) {
        const QString moment = platform::now().toString(u"yyyy-MM-dd-HHmmss"_s);
        const QString start = u"%1\\backups\\%2-before-update-from-%3-%4"_s.arg(
            platform::programFolder(), QFileInfo(file).completeBaseName(), version.trimmed(), moment);
        m_path = start + u".mdb"_s;
        for (int number = 2; platform::fileExists(m_path); ++number)
            m_path = u"%1-%2.mdb"_s.arg(start).arg(number);
        platform::copyDatabase(file, m_path);
    }
    /// For an update that was taken back: the file is what it was.
    void drop() const { QFile::remove(platform::platformPath(m_path)); }

private:
    QString m_path;
};

/// "11000" as "1.1": the text of a version that is only known as a mark in the file.
QString versionText(std::int64_t version) {
    QString text = u"%1.%2"_s.arg(version / 10000).arg(version % 10000, 4, 10, '0'_L1);
    while (text.endsWith('0'_L1))
        text.chop(1);
    return text.endsWith('.'_L1) ? text.chopped(1) : text;
}

}  // namespace

void DatabaseUpdater::IdentifyStore(const QString&, const QString&, const QString& storeName,
                                    const QString& phone, QVariant& answer) {
    m_storeName = storeName;
    m_phone = phone;
    answer.clear();
}

// One line an update. A history that can't be written is no reason to take the update back.
void DatabaseUpdater::writeHistory(const QString& from, const QString& to) const {
    const QString line = u"%1   %2 -> %3   %4 %5\n"_s.arg(platform::storedDate(platform::now()), from, to,
                                                          m_storeName, m_phone);
    try {
        platform::appendToFile(platform::programFolder() + u"\\backups\\updates.txt"_s, line.toUtf8());
    } catch (const platform::RuntimeError&) {
    }
}

void DatabaseUpdater::ApplyUpdates(const platform::ConnectionPtr& connection, const QString& updateFilePath,
                                   QString& version, bool& applied) {
    applied = false;
    if (!connection || connection->state() != 1 || !platform::fileExists(updateFilePath))
        return;
    if (connection->isServer())  // its owner brings it up to date, once all benches have left it
        return;
    // What is for reading only stays as it is: a medium that nobody can write, an archive of its year.
    const auto identity = readFileIdentity(*connection);
    if (connection->isReadOnly() || (identity && !identity->parent.isEmpty()))
        return;
    const auto all = readUpdateFile(updateFilePath);
    const auto stated = versionNumber(version);
    const auto marked = connection->engine().version();
    const auto present = qMax(stated, marked);
    const auto steps = stepsFrom(all, present);
    if (!steps.empty()) {
        const CopyBefore copy(connection->location(), version);
        try {
            QStringList statements;
            for (const UpdateStep& step : steps)
                statements << step.statements;
            connection->engine().migrate(statements, versionNumber(steps.back().to), u"DatabaseUpdater"_s);
        } catch (...) {
            copy.drop();
            throw;
        }
        keepHistory(*connection);
        writeHistory(version, steps.back().to);
        version = steps.back().to;
        applied = true;
    } else if (marked > stated) {
        version = versionText(marked);
        applied = true;
    }
}

}  // namespace sorvanto
