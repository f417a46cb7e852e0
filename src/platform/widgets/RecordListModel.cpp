// A row holds two strings, its texts and the folded ones, so that 32,000 rows are a few megabytes and a filter
// is one search in each of them.
#include "platform/widgets/RecordListModel.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Folding.h"
#include "platform/basic/LocalMarks.h"
#include "platform/basic/Values.h"

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr QChar split(u'\x1F');

QStringView part(const QString& joined, int column) {
    qsizetype from = 0;
    for (; column > 0; --column)
        from = joined.indexOf(split, from) + 1;
    const qsizetype end = joined.indexOf(split, from);
    return QStringView(joined).mid(from, end < 0 ? -1 : end - from);
}

/// What a column of numbers or dates sorts by; what is missing stands before all.
double sortNumber(const QVariant& value) {
    if (!value.isValid() || value.isNull())
        return -std::numeric_limits<double>::infinity();
    if (value.metaType() == QMetaType::fromType<QDateTime>())
        return static_cast<double>(value.toDateTime().toMSecsSinceEpoch());
    return value.metaType() == QMetaType::fromType<Currency>() ? value.value<Currency>().toDouble()
                                                               : value.toDouble();
}

QString shownText(const QVariant& value, const ListColumn& column) {
    if (!value.isValid() || value.isNull())
        return {};
    if (column.wording)
        return column.wording(value);
    if (value.metaType() == QMetaType::fromType<QDateTime>())
        return dateText(value.toDateTime());
    const QString text = valueText(value);
    return column.kind == ListKind::Number ? withLocalMarks(text, QLocale()) : text;
}

}  // namespace

void RecordListModel::setColumns(std::vector<ListColumn> columns, int sortColumn, Qt::SortOrder order) {
    beginResetModel();
    m_columns = std::move(columns);
    m_rows.clear();
    m_collected.clear();
    m_order.clear();
    m_shown.clear();
    m_from = m_to = QDate();
    m_sortColumn = sortColumn;
    m_sortOrder = order;
    endResetModel();
}

RecordListModel::Row RecordListModel::made(const KeyedRow& read) const {
    Row row{read.key, {}, {}, {}};
    for (std::size_t column = 0; column < m_columns.size(); ++column) {
        const QVariant value = column < read.values.size() ? read.values[column] : QVariant();
        QString text = shownText(value, m_columns[column]);
        for (QChar& c : text)
            if (c.unicode() < u' ')
                c = u' ';
        if (column > 0)
            row.shown += split;
        row.shown += text;
        if (m_columns[column].kind != ListKind::Words)
            row.numbers.push_back(sortNumber(value));
    }
    row.folded = folded(row.shown);
    return row;
}

void RecordListModel::collect(const std::vector<KeyedRow>& rows) {
    for (const KeyedRow& row : rows)
        m_collected.push_back(made(row));
}

void RecordListModel::showCollected() {
    beginResetModel();
    m_rows = std::move(m_collected);
    m_collected.clear();
    order();
    filter();
    endResetModel();
}

void RecordListModel::setFilter(const QString& text) {
    const QStringList words = foldedWords(text);
    if (words == m_words)
        return;
    beginResetModel();
    m_words = words;
    filter();
    endResetModel();
}

void RecordListModel::setDays(int column, const QDate& from, const QDate& to) {
    beginResetModel();
    m_dayColumn = column;
    m_from = from;
    m_to = to;
    filter();
    endResetModel();
}

void RecordListModel::sort(int column, Qt::SortOrder order_) {
    if (column < 0 || column >= columnCount())
        return;
    beginResetModel();
    m_sortColumn = column;
    m_sortOrder = order_;
    order();
    filter();
    endResetModel();
}

int RecordListModel::numberPlace(int column) const {
    const auto kind = [this](int c) { return m_columns[static_cast<std::size_t>(c)].kind; };
    if (kind(column) == ListKind::Words)
        return -1;
    int place = 0;
    for (int before = 0; before < column; ++before)
        place += kind(before) != ListKind::Words;
    return place;
}

// Rows that a column doesn't tell apart stand by their keys, in either direction.
void RecordListModel::order() {
    m_order.resize(m_rows.size());
    std::iota(m_order.begin(), m_order.end(), 0);
    if (m_columns.empty())
        return;
    const int place = numberPlace(m_sortColumn);
    std::vector<QStringView> texts;
    std::vector<double> numbers;
    for (const Row& row : m_rows)
        if (place >= 0)
            numbers.push_back(row.numbers[static_cast<std::size_t>(place)]);
        else
            texts.push_back(part(row.folded, m_sortColumn));
    const auto compare = [&](std::size_t a, std::size_t b) {
        if (place >= 0)
            return numbers[a] < numbers[b] ? -1 : numbers[a] > numbers[b];
        return texts[a].compare(texts[b]);
    };
    const int direction = m_sortOrder == Qt::AscendingOrder ? 1 : -1;
    std::sort(m_order.begin(), m_order.end(), [&](int a, int b) {
        const int difference = compare(static_cast<std::size_t>(a), static_cast<std::size_t>(b)) * direction;
        return difference != 0
                   ? difference < 0
                   : m_rows[static_cast<std::size_t>(a)].key < m_rows[static_cast<std::size_t>(b)].key;
    });
}

void RecordListModel::filter() {
    m_shown.clear();
    for (const int place : m_order) {
        const Row& row = m_rows[static_cast<std::size_t>(place)];
        if (isInDays(row) && std::all_of(m_words.begin(), m_words.end(),
                                         [&](const QString& word) { return row.folded.contains(word); }))
            m_shown.push_back(place);
    }
}

bool RecordListModel::isInDays(const Row& row) const {
    if (!m_from.isValid() && !m_to.isValid())
        return true;
    const auto startOf = [](const QDate& day) {
        return static_cast<double>(QDateTime(day, QTime(0, 0), Qt::UTC).toMSecsSinceEpoch());
    };
    const double moment = row.numbers[static_cast<std::size_t>(numberPlace(m_dayColumn))];
    return std::isfinite(moment) && (!m_from.isValid() || moment >= startOf(m_from)) &&
           (!m_to.isValid() || moment < startOf(m_to.addDays(1)));
}

std::int64_t RecordListModel::keyAt(int row) const {
    return m_rows[static_cast<std::size_t>(m_shown.at(static_cast<std::size_t>(row)))].key;
}

int RecordListModel::rowOf(std::int64_t key) const {
    const auto found = std::find_if(m_shown.begin(), m_shown.end(), [&](int place) {
        return m_rows[static_cast<std::size_t>(place)].key == key;
    });
    return found == m_shown.end() ? -1 : static_cast<int>(found - m_shown.begin());
}

int RecordListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

int RecordListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant RecordListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const ListColumn& column = m_columns[static_cast<std::size_t>(index.column())];
    if (role == Qt::DisplayRole) {
        const int place = m_shown.at(static_cast<std::size_t>(index.row()));
        return part(m_rows[static_cast<std::size_t>(place)].shown, index.column()).toString();
    }
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignVCenter |
                                   (column.kind == ListKind::Number ? Qt::AlignRight : Qt::AlignLeft));
    return {};
}

QStringList RecordListModel::sample(int column, int most) const {
    QStringList texts;
    const std::size_t step = m_rows.size() / static_cast<std::size_t>(most) + 1;
    for (std::size_t row = 0; row < m_rows.size(); row += step)
        texts << part(m_rows[row].shown, column).toString();
    return texts;
}

QVariant RecordListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    const ListColumn& column = m_columns[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return column.heading;
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignVCenter |
                                   (column.kind == ListKind::Number ? Qt::AlignRight : Qt::AlignLeft));
    return {};
}

}  // namespace platform
