// The seal is made by a trigger of the connection's own (in its temporary schema), since a trigger of the file could not
// call a function of the program: other programs that change the file would fail.
#include "history/HistorySeal.h"

#include "history/HistoryDeed.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Version.h"
#include "platform/data/Query.h"

#include <QCryptographicHash>
#include <QSysInfo>
#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int secondsInMinute = 60;

/// Of UTC, by the clock of this computer.
int minutesAhead() {
    const QDateTime wall = platform::now();
    return QDateTime(wall.date(), wall.time(), Qt::LocalTime).offsetFromUtc() / secondsInMinute;
}

/// Nothing that is stored can be read in two ways: type, length, bytes.
QVariant historyHash(const std::vector<platform::PlainValue>& values) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const platform::PlainValue& value : values)
        hash.addData(QByteArray(1, value.kind) + QByteArray::number(value.bytes.size()) + ':' + value.bytes);
    return hash.result();
}

QString quoted(QString text) { return u'\'' + text.replace(u"'"_s, u"''"_s) + u'\''; }

/// Seals the rows of History that meet the condition; in the order of their keys, which is the engine's for such an
/// update, so that each finds the one before it sealed.
QString sealing(const QString& person, const QString& program, const QString& deed, const QString& note,
                const QString& condition) {
    const QString digest = u"history_hash(hst_Salt, hst_Name, hst_Fields)"_s;
    const QString before = u"(SELECT p.hst_Seal FROM History p WHERE p.HistoryID < History.HistoryID "
                           "ORDER BY p.HistoryID DESC LIMIT 1)"_s;
    return u"UPDATE History SET hst_Person = %1, hst_Program = %2, hst_Deed = %3, hst_Note = %4, hst_Digest = %5, "
           "hst_Seal = history_hash(%6) WHERE %7;"_s.arg(
               person, program, deed, note, digest,
               sealArguments().arg(before, person, program, deed, note, digest), condition);
}

}  // namespace

HistoryWriter currentWriter() {
    const passwd* account = ::getpwuid(::geteuid());
    const QString name = account ? QString::fromLocal8Bit(account->pw_name) : QString::number(::geteuid());
    return {name + u'@' + QSysInfo::machineHostName(), platform::programVersion()};
}

bool hasHistory(platform::Engine& database) {
    return !database.declaredType(u"History"_s, u"hst_Seal"_s).isEmpty();
}

void installHistoryHash(platform::Engine& database) {
    database.addFunction("history_hash", platform::FunctionResult::Same, historyHash);
}

QString sealArguments() {
    return u"%1, HistoryID, hst_When, hst_Zone, hst_Table, hst_Key, hst_Record, hst_What, %2, %3, %4, %5, %6"_s;
}

void keepHistory(const platform::Connection& connection, const HistoryWriter& writer) {
    if (connection.state() == 0)
        return;
    platform::Engine& database = connection.engine();
    if (!hasHistory(database) || database.tellWriter({writer.person, writer.program, minutesAhead()}))
        return;
    installHistoryHash(database);
    installHistoryDeed(database);
    const QString outside = quoted(QLatin1String(outsideProgram));
    const QString person = quoted(writer.person);
    const QString program = quoted(writer.program);
    // The file begins its history itself.
    const QString strays = sealing(
        u"''"_s, u"iif(hst_What = 'begun', %1, %2)"_s.arg(program, outside), u"NULL"_s, u"NULL"_s,
        u"hst_Seal IS NULL AND HistoryID < NEW.HistoryID AND HistoryID > coalesce((SELECT s.HistoryID FROM "
        "History s WHERE s.hst_Seal IS NOT NULL ORDER BY s.HistoryID DESC LIMIT 1), 0)"_s);
    const QString own =
        sealing(person, program, u"history_deed()"_s, u"history_note()"_s, u"HistoryID = NEW.HistoryID"_s);
    for (const QString& sql :
         {u"PRAGMA temp_store = MEMORY"_s, u"DROP TRIGGER IF EXISTS temp.History_Sealing"_s,
          u"CREATE TEMP TRIGGER History_Sealing AFTER INSERT ON main.History BEGIN %1 %2 END"_s.arg(strays,
                                                                                                    own)})
        platform::Query(database, sql, sql).step();
}

}  // namespace sorvanto
