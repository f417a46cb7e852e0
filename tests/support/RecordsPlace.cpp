#include "RecordsPlace.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace support {
namespace {

RecordsPlace* chosen = nullptr;

QString delivered(const QString& name) {
    QFile file(QString::fromUtf8(SORVANTO_SOURCE_DIR "/data/") + name);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("There is no " + file.fileName().toStdString());
    return QString::fromUtf8(file.readAll());
}

}  // namespace

RecordsPlace& RecordsPlace::current() {
    static RecordsPlace file;
    return chosen ? *chosen : file;
}

void RecordsPlace::setCurrent(RecordsPlace& place) { chosen = &place; }

void RecordsPlace::addSample(const QString& file) { runSql(file, delivered(u"sample.sql"_s)); }

void RecordsPlace::refuse(const QString& file, const Refusal& refusal) {
    run(file,
        u"CREATE TRIGGER refuse BEFORE %1 ON %2 WHEN NEW.%3 = '%4' BEGIN SELECT RAISE(ABORT, 'no room'); END"_s
            .arg(refusal.event, refusal.table, refusal.column, refusal.value));
}

void RecordsPlace::doAfterInsert(const QString& file, const QString& table, const QString& statement) {
    run(file, u"CREATE TRIGGER meddle AFTER INSERT ON %1 BEGIN %2; END"_s.arg(table, statement));
}

void RecordsPlace::slowDown(const QString& file, const QString& table) {
    run(file,
        u"CREATE TRIGGER slow AFTER UPDATE ON %1 BEGIN SELECT (WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
        "SELECT i + 1 FROM n WHERE i < 3000) SELECT sum(i) FROM n); END"_s.arg(table));
}

void RecordsPlace::giveIdentity(const QString& file) {
    run(file, u"CREATE TABLE FileIdentity (fid_Identity TEXT(32) NOT NULL, fid_Parent TEXT(32),"
              " fid_Changes INTEGER NOT NULL DEFAULT 0);"
              "INSERT INTO FileIdentity (fid_Identity) VALUES (lower(hex(randomblob(16))))"_s);
}

void RecordsPlace::beginHistory(const QString& file) { run(file, delivered(u"history.sql"_s)); }

void RecordsPlace::unlockHistory(const QString& file) {
    run(file, u"DROP TRIGGER IF EXISTS History_Sealed; DROP TRIGGER IF EXISTS History_Kept"_s);
}

void RecordsPlace::moveHistory(const QString& file, const QString& span) {
    unlockHistory(file);
    run(file, u"UPDATE History SET hst_When = strftime('%Y-%m-%d %H:%M:%f', hst_When, '%1')"_s.arg(span));
}

}  // namespace support
