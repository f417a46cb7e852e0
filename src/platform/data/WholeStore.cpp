#include "platform/data/WholeStore.h"

#include "platform/basic/RuntimeError.h"

#include <QCryptographicHash>
#include <QLocale>
#include <algorithm>
#include <cmath>
#include <iterator>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// Ends a reading from within.
struct Ended {};

class Counter {
public:
    Counter(WholeStore& store, const QStringList& tables, const RowProgress& progress)
        : m_progress(progress) {
        for (const QString& table : tables)
            m_all += store.rowCount(table);
    }
    void add(std::size_t rows) {
        m_done += static_cast<std::int64_t>(rows);
        if (m_progress && !m_progress(m_done, m_all))
            throw Ended();
    }

private:
    const RowProgress& m_progress;
    std::int64_t m_done = 0, m_all = 0;
};

/// Those of the tables that the store has.
QStringList presentIn(WholeStore& store, const QStringList& tables) {
    const QStringList present = store.tables();
    QStringList both;
    std::copy_if(tables.begin(), tables.end(), std::back_inserter(both),
                 [&](const QString& table) { return present.contains(table); });
    return both;
}

void refuseHomeless(WholeStore& from, WholeStore& to, const QString& table) {
    const QStringList places = to.columns(table);
    for (const QString& column : from.columns(table)) {
        if (!places.contains(column) && (!places.isEmpty() || from.rowCount(table) > 0))
            throw RuntimeError(error::general,
                               u"There is no place for column %1 of table %2"_s.arg(column, table),
                               u"Copy"_s);
    }
}

/// The key, or what stands first in a table without one, and a sum of all values: rows may be long.
struct RowSum {
    QByteArray first, sum;
};

RowSum sumOf(const StoredRow& row) {
    QCryptographicHash sum(QCryptographicHash::Sha256);
    for (const PlainValue& value : row)
        sum.addData(value.kind + QByteArray::number(value.bytes.size()) + ':' + value.bytes);
    return {row.front().bytes, sum.result()};
}

QString differenceIn(WholeStore& one, WholeStore& other, const QString& table, Counter& counter) {
    const std::int64_t rows = one.rowCount(table), otherRows = other.rowCount(table);
    if (rows != otherRows)
        return u"Table %1 has %2 rows here and %3 there"_s.arg(table).arg(rows).arg(otherRows);
    const QStringList columns = one.columns(table);
    std::vector<RowSum> sums;
    one.read(table, columns, [&](const std::vector<StoredRow>& piece) {
        std::transform(piece.begin(), piece.end(), std::back_inserter(sums), sumOf);
        counter.add(0);
    });
    QString difference;
    std::size_t place = 0;
    other.read(table, columns, [&](const std::vector<StoredRow>& piece) {
        for (const StoredRow& row : piece) {
            const RowSum& own = sums.at(place++);
            if (difference.isEmpty() && own.sum != sumOf(row).sum)
                difference = u"Row %1 of %2 differs"_s.arg(QString::fromUtf8(own.first), table);
        }
        counter.add(piece.size());
    });
    return difference;
}

}  // namespace

PlainValue realValue(double number) {
    return {'r', QByteArray::number(number, 'g', QLocale::FloatingPointShortest)};
}

PlainValue moneyValue(double amount) {
    constexpr int decimals = 4;
    constexpr double wholeLimit = 9e18;  // whole ones beyond it don't fit the engines' whole numbers
    const double money = QByteArray::number(amount, 'f', decimals).toDouble();
    if (std::abs(money) < wholeLimit && money == std::trunc(money))
        return {'i', QByteArray::number(static_cast<qint64>(money))};
    return realValue(money);
}

bool carryOver(WholeStore& from, WholeStore& to, const QStringList& tables, const RowProgress& progress) {
    const QStringList carried = presentIn(from, tables);
    for (const QString& table : carried)
        refuseHomeless(from, to, table);
    const QStringList places = presentIn(to, tables);
    to.clear(places);
    Counter counter(from, carried, progress);
    try {
        for (const QString& table : carried) {
            const QStringList columns = from.columns(table);
            from.read(table, columns, [&](const std::vector<StoredRow>& rows) {
                to.add(table, columns, rows);
                counter.add(rows.size());
            });
        }
    } catch (const Ended&) {
        return false;
    }
    to.setLastKeys(from.lastKeys());
    return true;
}

QString firstDifference(WholeStore& one, WholeStore& other, const QStringList& tables,
                        const RowProgress& progress) {
    Counter counter(one, presentIn(one, tables), progress);
    try {
        for (const QString& table : presentIn(one, tables)) {
            if (one.rowCount(table) == 0 && other.rowCount(table) == 0)
                continue;
            if (const QString difference = differenceIn(one, other, table, counter); !difference.isEmpty())
                return difference;
        }
    } catch (const Ended&) {
        return {};
    }
    return one.lastKeys() == other.lastKeys() ? QString() : u"The last keys differ"_s;
}

}  // namespace platform
