#include "core/DatabaseUpdater.h"

#include "platform/data/DatabaseCopy.h"
#include "core/UpdateFile.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Sqlite.h"

#include <QFile>
#include <sqlite3.h>

namespace sorvanto {
namespace {

using platform::sqlite::Statement;

void run(sqlite3* database, const QString& sql) {
    Statement statement(database, sql, sql);
    while (statement.step()) {
    }
}

std::int64_t number(sqlite3* database, const QString& sql) {
    Statement statement(database, sql, sql);
    return statement.step() ? statement.integer(0) : 0;
}

[[noreturn]] void refuse(const QString& why, const QString& statement = {}) {
    throw platform::RuntimeError(platform::error::general, why, QStringLiteral("DatabaseUpdater"), statement);
}

/// The steps as one transaction, taken back by the destructor unless committed. A table may be rebuilt
/// meanwhile: the relations are checked once, at the end.
class UpdateTransaction {
public:
    explicit UpdateTransaction(sqlite3* database) : m_database(database) {
        run(m_database, QStringLiteral("PRAGMA foreign_keys = OFF"));
        try {
            run(m_database, QStringLiteral("BEGIN IMMEDIATE"));
        } catch (...) {
            switchRelationsOn();
            throw;
        }
    }
    ~UpdateTransaction() {
        if (!sqlite3_get_autocommit(m_database))
            sqlite3_exec(m_database, "ROLLBACK", nullptr, nullptr, nullptr);
        switchRelationsOn();
    }
    UpdateTransaction(const UpdateTransaction&) = delete;
    UpdateTransaction& operator=(const UpdateTransaction&) = delete;

    void apply(const UpdateStep& step) {
        for (const QString& statement : step.statements) {
            run(m_database, statement);
            if (sqlite3_get_autocommit(m_database))
                refuse(QStringLiteral("A step may not end the transaction"), statement);
        }
    }
    void commit(std::int64_t reached) {
        if (number(m_database, QStringLiteral("SELECT count(*) FROM pragma_foreign_key_check")) != 0)
            refuse(QStringLiteral("The updated tables break a relation"));
        run(m_database, QStringLiteral("PRAGMA user_version = %1").arg(reached));
        run(m_database, QStringLiteral("COMMIT"));
    }

private:
    void switchRelationsOn() {
        sqlite3_exec(m_database, "PRAGMA foreign_keys = ON", nullptr, nullptr, nullptr);
    }

    sqlite3* m_database;
};

void keepCopy(const platform::ConnectionPtr& connection, const QString& version) {
    const QString name = QStringLiteral("\\backups\\before-update-from-%1.mdb").arg(version.trimmed());
    platform::DatabaseCopy copy(connection, platform::programFolder() + name);
    if (!copy.step(-1))
        refuse(QStringLiteral("The database is in use by another program"));
}

/// "11000" as "1.1": the text of a version that is only known as a mark in the file.
QString versionText(std::int64_t version) {
    QString text = QStringLiteral("%1.%2").arg(version / 10000).arg(version % 10000, 4, 10, QLatin1Char('0'));
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    return text.endsWith(QLatin1Char('.')) ? text.chopped(1) : text;
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
    QFile file(platform::platformPath(platform::programFolder() + QStringLiteral("\\backups\\updates.txt")));
    if (!file.open(QIODevice::Append | QIODevice::Text))
        return;
    const QString line = QStringLiteral("%1   %2 -> %3   %4 %5\n")
                             .arg(platform::storedDate(platform::now()), from, to, m_storeName, m_phone);
    file.write(line.toUtf8());
}

void DatabaseUpdater::ApplyUpdates(const platform::ConnectionPtr& connection, const QString& updateFilePath,
                                   QString& version, bool& applied) {
    applied = false;
    if (!connection || connection->state() != 1 || !platform::fileExists(updateFilePath))
        return;
    const auto all = readUpdateFile(updateFilePath);
    const auto stated = versionNumber(version);
    const auto marked = number(connection->handle(), QStringLiteral("PRAGMA user_version"));
    const auto present = qMax(stated, marked);
    const auto steps = stepsFrom(all, present);
    if (!steps.empty()) {
        keepCopy(connection, version);
        UpdateTransaction transaction(connection->handle());
        for (const UpdateStep& step : steps)
            transaction.apply(step);
        transaction.commit(versionNumber(steps.back().to));
        writeHistory(version, steps.back().to);
        version = steps.back().to;
        applied = true;
    } else if (marked > stated) {
        version = versionText(marked);
        applied = true;
    }
}

}  // namespace sorvanto
