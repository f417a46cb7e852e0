#include "core/DatabaseUpdater.h"

#include "core/UpdateFile.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/DatabaseCopy.h"
#include "platform/data/Sqlite.h"

#include <QFile>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

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
    throw platform::RuntimeError(platform::error::general, why, u"DatabaseUpdater"_s, statement);
}

/// The steps as one transaction, taken back by the destructor unless committed. A table may be rebuilt
/// meanwhile: the relations are checked once, at the end.
class UpdateTransaction {
public:
    explicit UpdateTransaction(sqlite3* database) : m_database(database) {
        run(m_database, u"PRAGMA foreign_keys = OFF"_s);
        try {
            run(m_database, u"BEGIN IMMEDIATE"_s);
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
                refuse(u"A step may not end the transaction"_s, statement);
        }
    }
    void commit(std::int64_t reached) {
        if (number(m_database, u"SELECT count(*) FROM pragma_foreign_key_check"_s) != 0)
            refuse(u"The updated tables break a relation"_s);
        run(m_database, u"PRAGMA user_version = %1"_s.arg(reached));
        run(m_database, u"COMMIT"_s);
    }

private:
    void switchRelationsOn() {
        sqlite3_exec(m_database, "PRAGMA foreign_keys = ON", nullptr, nullptr, nullptr);
    }

    sqlite3* m_database;
};

void keepCopy(const platform::ConnectionPtr& connection, const QString& version) {
    const QString name = u"\\backups\\before-update-from-%1.mdb"_s.arg(version.trimmed());
    platform::DatabaseCopy copy(connection, platform::programFolder() + name);
    if (!copy.step(-1))
        refuse(u"The database is in use by another program"_s);
}

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
    QFile file(platform::platformPath(platform::programFolder() + u"\\backups\\updates.txt"_s));
    if (!file.open(QIODevice::Append | QIODevice::Text))
        return;
    const QString line = u"%1   %2 -> %3   %4 %5\n"_s.arg(platform::storedDate(platform::now()), from, to,
                                                          m_storeName, m_phone);
    file.write(line.toUtf8());
}

void DatabaseUpdater::ApplyUpdates(const platform::ConnectionPtr& connection, const QString& updateFilePath,
                                   QString& version, bool& applied) {
    applied = false;
    if (!connection || connection->state() != 1 || !platform::fileExists(updateFilePath))
        return;
    const auto all = readUpdateFile(updateFilePath);
    const auto stated = versionNumber(version);
    const auto marked = number(connection->handle(), u"PRAGMA user_version"_s);
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
