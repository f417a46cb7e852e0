// The rows of a record list: found by any part of any column, sorted by a column, told apart by their keys.
#pragma once

#include "platform/data/TableReader.h"

#include <QAbstractTableModel>
#include <QDate>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <cstdint>
#include <functional>
#include <vector>

namespace platform {

enum class ListKind { Words, Number, Date };

struct ListColumn {
    QString heading;
    ListKind kind = ListKind::Words;
    int width = 0;  ///< in pixels at 100 %; 0 takes what is left
    /// Words a value in its own way; a number or date still sorts by its value.
    std::function<QString(const QVariant&)> wording{};
};

class RecordListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit RecordListModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

    /// Drops all rows, and says how those to come are sorted.
    void setColumns(std::vector<ListColumn> columns, int sortColumn, Qt::SortOrder order);
    const std::vector<ListColumn>& columns() const { return m_columns; }

    /// Rows are collected first, in as many pieces as the reader likes, and shown at once.
    void collect(const std::vector<KeyedRow>& rows);
    /// Shows what was collected in place of what stood here.
    void showCollected();
    /// What was collected is forgotten.
    void dropCollected() { m_collected.clear(); }

    /// Rows that have each word of the text somewhere, without regard to case and accents.
    void setFilter(const QString& text);
    /// Of the column, which is one of dates, only rows of these days; a null date is no bound, and without any bound
    /// rows that have no date are shown as well.
    void setDays(int column, const QDate& from, const QDate& to);
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;
    int sortColumn() const { return m_sortColumn; }
    Qt::SortOrder sortOrder() const { return m_sortOrder; }

    /// Texts of the column in rows from all over the list, the hidden ones included; at most so many.
    QStringList sample(int column, int most) const;
    /// All rows, those that the filter hides included.
    int total() const { return static_cast<int>(m_rows.size()); }
    std::int64_t keyAt(int row) const;
    /// -1 where the key is not among the rows that are shown.
    int rowOf(std::int64_t key) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    /// Texts of all columns stand in one string each, split by a mark that no text has.
    struct Row {
        std::int64_t key;
        QString shown, folded;
        std::vector<double> numbers;  ///< of the columns that sort by them, in their order
    };

    Row made(const KeyedRow& read) const;
    int numberPlace(int column) const;
    void order();
    void filter();
    bool isInDays(const Row& row) const;

    std::vector<ListColumn> m_columns;
    std::vector<Row> m_rows, m_collected;
    std::vector<int> m_order;  ///< places in m_rows, sorted
    std::vector<int> m_shown;  ///< those of m_order that the filter lets through
    QStringList m_words;
    int m_dayColumn = 0;
    QDate m_from, m_to;
    int m_sortColumn = 0;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
};

}  // namespace platform
