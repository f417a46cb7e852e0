#include "records/BatchBook.h"

#include "history/HistoryDeed.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Query.h"
#include "platform/data/Transaction.h"
#include "records/BatchRecord.h"
#include "shared/Context.h"
#include "shared/FileIdentity.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::Query;

using platform::asText;

/// The lines that a row still lacks; nothing when those that it has are not the first of the signed ones.
std::optional<QJsonArray> missingLines(const QJsonArray& standing, const QJsonArray& asSigned) {
    if (standing.size() > asSigned.size())
        return std::nullopt;
    for (qsizetype i = 0; i < standing.size(); ++i) {
        if (standing.at(i) != asSigned.at(i))
            return std::nullopt;
    }
    QJsonArray missing;
    for (qsizetype i = standing.size(); i < asSigned.size(); ++i)
        missing.append(asSigned.at(i));
    return missing;
}

/// By the history, which a server's triggers write whoever it was.
bool wasDeleted(const platform::Connection& server, const LogBook::Batch& batch) {
    const auto quoted = [](QString text) { return u'\'' + text.replace(u"'"_s, u"''"_s) + u'\''; };
    Query row(
        server.engine(),
        u"SELECT 1 FROM History WHERE hst_Table = 'Log' AND hst_What = 'deleted' AND position(? IN hst_Fields) > 0"_s,
        {});
    row.bind(1, u"log_Date=%1,log_Lot=%2,"_s.arg(quoted(batch.second), quoted(batch.first)));
    return row.step();
}

/// How a batch stands in the log, and the lines that its row lacks.
struct Look {
    BatchStanding standing;
    std::int64_t key = 0;
    QJsonArray missing{};
};

Look lookFor(const platform::Connection& connection, const BatchRows& rows) {
    using Kind = BatchStanding::Kind;
    const auto keys = rowsOfBatch(connection, rows);
    if (keys.empty())
        return {{Kind::Absent}};
    if (keys.size() > 1) {
        BatchStanding twice{Kind::Twice};
        for (const auto key : keys)
            twice.twins << QString::number(key);
        return {twice};
    }
    const auto missing = missingLines(storedBatch(connection, keys.front()).lines, rows.lines);
    if (!missing)
        return {{Kind::Different}};
    if (missing->isEmpty())
        return {{Kind::Whole}};
    return {{Kind::Completed, static_cast<int>(missing->size())}, keys.front(), *missing};
}

}  // namespace

BatchJournal* batchJournal = nullptr;

QString BatchBook::identity() {
    const auto connection = m_context.connection;
    const auto identity = connection ? knownFileIdentity(*connection) : std::nullopt;
    return identity ? identity->identity : QString();
}

bool BatchBook::isCopy() { return m_context.standIn.has_value(); }

bool BatchBook::hasLot(const QString& lot) {
    Query found(openDB(m_context)->engine(), u"SELECT 1 FROM Log WHERE log_Lot = ?"_s, {});
    found.bind(1, lot);
    return found.step();
}

QString BatchBook::otherBenchWith(const QString& serial) {
    const auto connection =
        m_context.connection;  // asked when a mixer answers, where no question may come up
    const QString name = u"mixer "_s + serial;
    if (!connection || connection->state() == 0 || connection->engine().keepName(name))
        return {};
    const QString keeper = connection->engine().nameKeeper(name);
    return keeper.isEmpty() ? u"?"_s : keeper.section(' '_L1, 0, 0);
}

BatchStanding BatchBook::settle(const BatchRows& rows) {
    const auto connection = openDB(m_context);
    Look look = lookFor(*connection, rows);
    if (look.missing.isEmpty())
        return look.standing;
    // Once more, now that nobody else can complete it. Each look sees the latest: what another bench adds is waited for.
    platform::Transaction whole(connection->engine(), u"INSERT INTO LogChem"_s);
    connection->engine().holdRow(u"Log"_s, look.key);
    look = lookFor(*connection, rows);
    if (!look.missing.isEmpty()) {
        const HistoryDeed deed(connection->engine(), Deed::Signed);
        addLines(*connection, look.key, look.missing);
        whole.commit();
    }
    return look.standing;
}

int BatchBook::batchCount() {
    return static_cast<int>(platform::number(openDB(m_context)->engine(), u"SELECT count(*) FROM Log"_s));
}

QHash<LogBook::Batch, int> BatchBook::linesSince(const QString& moment) {
    Query found(openDB(m_context)->engine(),
                u"SELECT log_Lot, log_Date, (SELECT count(*) FROM LogChem WHERE LogChem.LogID = Log.LogID)"
                " FROM Log WHERE log_Date >= ?"_s,
                {});
    found.bind(1, moment);
    QHash<Batch, int> lines;
    while (found.step()) {
        const Batch batch{found.value(0, asText).toString(), found.value(1, asText).toString()};
        lines[batch] = qMax(lines.value(batch), static_cast<int>(found.integer(2)));
    }
    return lines;
}

bool BatchBook::isArchived(const Batch& batch) {
    const auto connection = openDB(m_context);
    if (connection->isServer() && wasDeleted(*connection, batch))
        return true;
    if (connection->declaredType(u"ArchivedBatch"_s, u"abt_Lot"_s).isEmpty())
        return false;
    Query found(connection->engine(), u"SELECT 1 FROM ArchivedBatch WHERE abt_Lot = ? AND abt_Date = ?"_s,
                {});
    found.bind(1, batch.first);
    found.bind(2, batch.second);
    return found.step();
}

}  // namespace sorvanto
