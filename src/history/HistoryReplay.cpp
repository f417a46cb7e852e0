// A table's rows and its part of the history are read side by side in the order of the keys; each row's changes are put
// together to what it should be now.
#include "history/HistoryReplay.h"

#include "history/HistoryFields.h"
#include "history/HistorySeal.h"
#include "platform/data/Query.h"

#include <QMap>
#include <QSet>
#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::asText;
using platform::Query;
constexpr int mostProblems = 20;
constexpr std::array tables{"Chemical", "Formula", "FormChem", "Log", "LogChem", "Patient", "RXs"};

using Fields = QMap<QString, QVariant>;

/// What the history says of one row, put together from the newest change to the oldest.
struct Told {
    enum class State { Unknown, There, Gone };
    State state = State::Unknown;
    std::vector<std::pair<QString, QString>> literals{};  ///< of the fields that are known, by name
    bool seen = false;                                    ///< it says anything
    bool whole = false;  ///< what is older has no say: it was made, deleted or blanked since

    const QString* literal(QStringView name) const {
        const auto found = std::find_if(literals.begin(), literals.end(),
                                        [&](const auto& each) { return each.first == name; });
        return found == literals.end() ? nullptr : &found->second;
    }
};

/// The highest key of each table when the history began.
Fields keysAtBegin(platform::Engine& database) {
    Query row(
        database,
        u"SELECT hst_Fields FROM History WHERE hst_What IN ('begun', 'archived') ORDER BY HistoryID LIMIT 1"_s,
        {});
    Fields keys;
    if (row.step()) {
        for (const HistoryField& field : readHistoryFields(row.value(0, asText).toString()))
            keys[field.name] = field.after;
    }
    return keys;
}

/// The rows as the history would write them down.
QString rowsSql(platform::Engine& database, const QString& table, QString& key) {
    const QStringList columns = database.columns(table);
    key = columns.value(0);
    return u"SELECT \"%1\", %2 FROM \"%3\" ORDER BY 1"_s.arg(key, fieldsSql(database, table, columns.mid(1)),
                                                             table);
}

class TableReplay {
public:
    TableReplay(platform::Engine& database, const QString& table, qint64 firstKnown)
        : m_database(database), m_table(table), m_firstKnown(firstKnown),
          m_rows(database, rowsSql(database, table, m_key), {}),
          m_history(database,
                    u"SELECT hst_Key, hst_What, hst_Fields FROM History WHERE hst_Table = ? "
                    "ORDER BY hst_Key, HistoryID DESC"_s,
                    {}) {
        m_history.bind(1, table);
    }

    QStringList problems() {
        bool row = m_rows.step();
        bool history = m_history.step();
        while ((row || history) && m_problems.size() < mostProblems) {
            const std::int64_t key = !row       ? m_history.integer(0)
                                     : !history ? m_rows.integer(0)
                                                : std::min(m_rows.integer(0), m_history.integer(0));
            Told told;
            for (; history && m_history.integer(0) == key; history = m_history.step())
                add(told);
            const bool there = row && m_rows.integer(0) == key;
            compare(key, told, there);
            if (there)
                row = m_rows.step();
        }
        return m_problems;
    }

private:
    void add(Told& told) {
        if (told.whole)
            return;
        const QString what = m_history.value(1, asText).toString();
        const QVariant fields = m_history.value(2, asText);
        const bool deleted = what == "deleted"_L1;
        const bool blanked = !deleted && !fields.isValid();  // on request
        if (!told.seen)
            told.state = deleted ? Told::State::Gone : blanked ? Told::State::Unknown : Told::State::There;
        told.seen = true;
        told.whole = deleted || blanked || what == "made"_L1;
        if (deleted || blanked)
            return;
        const QString text = fields.toString();
        for (const HistoryLiterals& field : readHistoryLiterals(text)) {
            if (!told.literal(field.name))
                told.literals.emplace_back(field.name.toString(), field.after.toString());
        }
    }
    /// Rows that another program has given another key: theirs can't be told.
    bool isMoved(std::int64_t key) {
        if (!m_moved)
            m_moved = movedKeys();
        return m_moved->contains(key);
    }
    QSet<qint64> movedKeys() const {
        Query moves(
            m_database,
            u"SELECT hst_Key, hst_Fields FROM History WHERE hst_Table = ?1 AND hst_What = 'changed' AND "
            "substr(hst_Fields, 1, length(?2) + 1) = ?2 || '='"_s,
            {});
        moves.bind(1, m_table);
        moves.bind(2, m_key);
        QSet<qint64> keys;
        while (moves.step()) {
            keys << moves.integer(0);
            if (const auto fields = readHistoryFields(moves.value(1, asText).toString()); !fields.empty())
                keys << fields.front().after.toLongLong();
        }
        return keys;
    }
    /// Empty where the row is what it should be.
    QString difference(std::int64_t key, const Told& told, bool there) {
        if (there != (told.state == Told::State::There) && told.state != Told::State::Unknown)
            return there ? u"is there, although the history says that it was deleted"_s
                         : u"is not there, although the history doesn't say that it was deleted"_s;
        if (!there)
            return {};
        if (!told.seen && key > m_firstKnown)
            return u"is there, although the history doesn't say that it was made"_s;
        if (told.literals.empty())
            return {};
        const QString row = m_rows.value(1, asText).toString();
        for (const HistoryLiterals& field : readHistoryLiterals(row)) {
            const QString* literal = told.literal(field.name);
            // A number may have been written in other digits by another version of the engine.
            if (literal && field.after != *literal && historyValueOf(*literal) != historyValueOf(field.after))
                return u"differs in %1 from what the history says"_s.arg(field.name);
        }
        return {};
    }
    void compare(std::int64_t key, const Told& told, bool there) {
        const QString what = difference(key, told, there);
        if (!what.isEmpty() && !isMoved(key))
            m_problems << u"%1 %2 %3"_s.arg(m_table).arg(key).arg(what);
    }

    platform::Engine& m_database;
    QString m_table, m_key;
    qint64 m_firstKnown;
    Query m_rows, m_history;
    std::optional<QSet<qint64>> m_moved;
    QStringList m_problems;
};

}  // namespace

QStringList recordProblems(platform::Engine& database) {
    if (!hasHistory(database))
        return {};
    const auto look = database.beginLook();
    const Fields known = keysAtBegin(database);
    QStringList problems;
    for (const char* table : tables) {
        const QString name = QLatin1String(table);
        problems += TableReplay(database, name, known.value(name).toLongLong()).problems();
    }
    return problems.mid(0, mostProblems);
}

}  // namespace sorvanto
