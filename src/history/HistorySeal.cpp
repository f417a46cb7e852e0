// The seal is made by a trigger of the connection's own (in its temporary schema), since a trigger of the file could not
// call a function of the program: other programs that change the file would fail.
#include "history/HistorySeal.h"

#include "history/HistoryDeed.h"
#include "history/HistoryLinks.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Version.h"
#include "platform/data/Query.h"

#include <QCryptographicHash>
#include <QSysInfo>
#include <array>
#include <charconv>
#include <functional>
#include <pwd.h>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int secondsInMinute = 60;

/// Of UTC, by the clock of this computer.
int minutesAhead() {
    const QDateTime wall = platform::now();
    return QDateTime(wall.date(), wall.time(), Qt::LocalTime).offsetFromUtc() / secondsInMinute;
}

std::function<void()>& longSealing() {
    static std::function<void()> told;
    return told;
}

/// Nothing that is stored can be read in two ways: type, length, bytes. The sealing asks for a row's digest twice in
/// turn: the second time it is remembered.
class HistoryHash {
public:
    QVariant operator()(const std::vector<platform::PlainValue>& values) {
        qsizetype size = 0;
        for (const platform::PlainValue& value : values)
            size += headLength + value.bytes.size();
        m_text.resize(0);
        m_text.reserve(size);
        for (const platform::PlainValue& value : values)
            add(value);
        if (m_hash.isNull() || m_text != m_last) {
            m_hash = QCryptographicHash::hash(m_text, QCryptographicHash::Sha256);
            std::swap(m_text, m_last);
        }
        countOthers(values);
        return m_hash;
    }

private:
    void add(const platform::PlainValue& value) {
        std::array<char, headLength> head{value.kind};
        char* end = std::to_chars(head.data() + 1, head.data() + head.size() - 1, value.bytes.size()).ptr;
        *end++ = ':';
        m_text.append(head.data(), end - head.data());
        m_text.append(value.bytes);
    }

    /// Rows of other programs come one after the other, and then this program's own.
    void countOthers(const std::vector<platform::PlainValue>& values) {
        if (values.size() != sealedValues)
            return;
        m_others = values[programOfSeal].bytes == QByteArrayView(outsideProgram) ? m_others + 1 : 0;
        if (m_others == quicklySealed + 1 && longSealing())
            longSealing()();
    }

    static constexpr qsizetype headLength = 24;                         // at most
    static constexpr std::size_t sealedValues = 13, programOfSeal = 9;  // see sealArguments
    QByteArray m_text, m_last, m_hash;
    int m_others = 0;
};

QString quoted(QString text) { return u'\'' + text.replace(u"'"_s, u"''"_s) + u'\''; }

/// Seals the new row as that writer's, and before it the rows that another program has left without a seal; in the order of
/// their keys, which is the engine's for such an update, so that each finds the one before it sealed.
QString sealing(const HistoryWriter& writer) {
    const auto own = [](const QString& value, const QString& ofStray) {
        return u"iif(HistoryID = NEW.HistoryID, %1, %2)"_s.arg(value, ofStray);
    };
    const QString person = own(quoted(writer.person), u"''"_s);
    // The file begins its history itself.
    const QString program = u"iif(HistoryID = NEW.HistoryID OR hst_What = 'begun', %1, %2)"_s.arg(
        quoted(writer.program), quoted(QLatin1String(outsideProgram)));
    const QString deed = own(u"history_deed()"_s, u"NULL"_s);
    const QString note = own(u"history_note()"_s, u"NULL"_s);
    const QString digest = u"history_hash(hst_Salt, hst_Name, hst_Fields)"_s;
    const QString before = u"(SELECT p.hst_Seal FROM History p WHERE p.HistoryID < History.HistoryID "
                           "ORDER BY p.HistoryID DESC LIMIT 1)"_s;
    return u"UPDATE History SET hst_Person = %1, hst_Program = %2, hst_Deed = %3, hst_Note = %4, hst_Digest = %5, "
           "hst_Seal = history_hash(%6) WHERE HistoryID <= NEW.HistoryID AND HistoryID > coalesce((SELECT "
           "s.HistoryID FROM History s WHERE s.hst_Seal IS NOT NULL ORDER BY s.HistoryID DESC LIMIT 1), 0);"_s
               .arg(person, program, deed, note, digest,
                    sealArguments().arg(before, person, program, deed, note, digest));
}

/// A file that was copied from a server has a chain a bench. From the first program on that works on the file there is one
/// again, and a row that says so.
void joinChains(platform::Engine& database) {
    const QString last = platform::text(database, u"SELECT hst_Note FROM History WHERE hst_Table = '' AND "
                                                  "hst_What = 'begun' ORDER BY HistoryID DESC LIMIT 1"_s);
    if (last == QLatin1StringView(chainOfEachBench) && !database.refusesChanges())
        platform::run(database, u"INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_What, hst_Fields) "
                                "SELECT '', 0, 0, 'begun', coalesce(group_concat(name || '=' || seq), '') "
                                "FROM sqlite_sequence WHERE name <> 'History'"_s);
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

void onLongSealing(std::function<void()> told) { longSealing() = std::move(told); }

void installHistoryHash(platform::Engine& database) {
    database.addFunction("history_hash", platform::FunctionResult::Same, HistoryHash());
}

QByteArray historyHash(const std::vector<platform::PlainValue>& values) {
    return HistoryHash()(values).toByteArray();
}

QString sealArguments() {
    return u"%1, HistoryID, hst_When, hst_Zone, hst_Table, hst_Key, hst_Record, hst_What, %2, %3, %4, %5, %6"_s;
}

void keepHistory(const platform::Connection& connection, const HistoryWriter& writer) {
    if (connection.state() == 0)
        return;
    platform::Engine& database = connection.engine();
    if (!hasHistory(database) || database.tellWriter({writer.person, writer.program, minutesAhead}))
        return;
    installHistoryHash(database);
    installHistoryDeed(database);
    for (const QString& sql :
         {u"PRAGMA temp_store = MEMORY"_s, u"DROP TRIGGER IF EXISTS temp.History_Sealing"_s,
          u"CREATE TEMP TRIGGER History_Sealing AFTER INSERT ON main.History BEGIN %1 END"_s.arg(
              sealing(writer))})
        platform::Query(database, sql, sql).step();
    joinChains(database);
}

}  // namespace sorvanto
