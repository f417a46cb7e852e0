// Values are read from the set cell by cell when they are painted; binding costs nothing per row.
#include "platform/widgets/RecordModel.h"

#include "platform/ask/Ask.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Format.h"
#include "platform/basic/LocalMarks.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/widgets/Texts.h"
#include "platform/widgets/UnderWay.h"

#include <QLocale>
#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

RecordModel::Kind kindOf(FieldKind kind) {
    switch (kind) {
    case FieldKind::Short:
    case FieldKind::Long:
    case FieldKind::Double:
    case FieldKind::Money:
        return RecordModel::Kind::Number;
    case FieldKind::Date:
        return RecordModel::Kind::Date;
    case FieldKind::Flag:
        return RecordModel::Kind::Flag;
    default:
        return RecordModel::Kind::Text;
    }
}

QString numberShown(const QVariant& value, const QString& picture) {
    if (picture == "Currency"_L1)
        return formatCurrency(toCurrency(value));
    const QString text = picture.isEmpty() ? valueText(value)
                         : value.metaType() == QMetaType::fromType<Currency>()
                             ? format(value.value<Currency>(), picture)
                             : format(value, picture);
    return withLocalMarks(text, QLocale());
}

}  // namespace

RecordModel::RecordModel(QObject* parent) : QAbstractTableModel(parent) {
    m_again.setSingleShot(true);
    m_again.callOnTimeout(this, [this] { whenIdle(*this, [this] { follow(); }); });
}

RecordModel::~RecordModel() {
    if (m_rows)
        m_rows->removeCallback(m_callback);
}

void RecordModel::setColumns(std::vector<GridColumn> columns) {
    beginResetModel();
    m_columns = std::move(columns);
    m_captions.clear();
    for (const GridColumn& column : m_columns)
        m_captions.push_back(column.caption);
    findFields();
    endResetModel();
}

void RecordModel::setShownCaption(int column, const QString& caption) {
    m_captions.at(static_cast<std::size_t>(column)) = caption;
    emit headerDataChanged(Qt::Horizontal, column, column);
}

void RecordModel::setNumberFormat(int column, const QString& picture) {
    m_columns.at(static_cast<std::size_t>(column)).numberFormat = picture;
    if (m_count > 0)
        emit dataChanged(index(0, column), index(m_count - 1, column));
}

void RecordModel::findFields() {
    m_fields.assign(m_columns.size(), {});
    if (!m_rows || !m_rows->isOpen())
        return;
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        if (m_rows->hasField(m_columns[i].field)) {
            const int position = m_rows->fieldIndex(m_columns[i].field);
            const FieldInfo& info = m_rows->fieldInfo(position);
            m_fields[i] = {position, kindOf(info.kind), info.kind == FieldKind::Text ? info.definedSize : 0};
        }
}

void RecordModel::setRows(const RecordsetPtr& rows) {
    beginResetModel();
    if (m_rows)
        m_rows->removeCallback(m_callback);
    m_rows = rows;
    m_count = m_rows && m_rows->isOpen() ? static_cast<int>(m_rows->recordCount()) : 0;
    if (m_rows)
        m_callback = m_rows->onChange([this] { follow(); });
    findFields();
    endResetModel();
}

void RecordModel::follow() {
    if (m_ownChange || !m_rows)
        return;
    const int count = m_rows->isOpen() ? static_cast<int>(m_rows->recordCount()) : 0;
    if (count != m_count) {
        beginResetModel();
        m_count = count;
        findFields();
        endResetModel();
    } else if (m_count > 0 && !m_columns.empty()) {
        emit dataChanged(index(0, 0), index(m_count - 1, static_cast<int>(m_columns.size()) - 1));
    }
    emit setChanged();
}

QVariant RecordModel::value(int row, int column) const {
    const int field = m_fields.at(static_cast<std::size_t>(column)).position;
    if (field < 0 || row < 0 || row >= m_count)
        return {};
    try {
        return m_rows->valueAt(row, field);
    } catch (const RuntimeError&) {
        askAgain();
        return {};  // a row that is gone paints as an empty one
    }
}

// A view that is painted while another statement waits gets no row that is not kept already: it is painted once more.
void RecordModel::askAgain() const {
    if (UnderWay::any())
        m_again.start(0);
}

bool RecordModel::makeCurrent(int row) {
    if (!m_rows || !m_rows->isOpen() || row < 0 || m_rows->position() == row)
        return true;
    const QScopedValueRollback own(m_ownChange, true);
    try {
        m_rows->setPosition(row);
        return true;
    } catch (const RuntimeError& failure) {
        refuse(failure.description());
        return false;
    }
}

int RecordModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : m_count; }

int RecordModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QString RecordModel::shown(int row, int column) const {
    const GridColumn& look = m_columns[static_cast<std::size_t>(column)];
    if (look.text)
        return look.text(row);
    const QVariant stored = value(row, column);
    if (!stored.isValid() || stored.isNull())
        return {};
    const QString& picture = look.numberFormat;
    switch (kind(column)) {
    case Kind::Number:
        return numberShown(stored, picture);
    case Kind::Flag:
        if (picture == "Yes/No"_L1)
            return widgetText(stored.toBool() ? u"Yes"_s : u"No"_s);
        return {};
    case Kind::Date:
        return dateText(stored.toDateTime());
    case Kind::Text:
        return picture.isEmpty() ? valueText(stored) : format(stored, picture);
    }
    return {};
}

// Views ask for the current cell even while there is none.
QVariant RecordModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const bool asMark = kind(index.column()) == Kind::Flag &&
                        m_columns[static_cast<std::size_t>(index.column())].numberFormat.isEmpty();
    switch (role) {
    case Qt::DisplayRole:
        return shown(index.row(), index.column()).replace(u'\n', u' ');
    case Qt::EditRole:
        return value(index.row(), index.column());
    case Qt::CheckStateRole:
        return asMark ? QVariant(value(index.row(), index.column()).toBool() ? Qt::Checked : Qt::Unchecked)
                      : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(
            asMark
                ? Qt::Alignment(Qt::AlignCenter)
                : Qt::AlignVCenter | (kind(index.column()) == Kind::Number ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::AccessibleTextRole:
        if (asMark)
            return widgetText(value(index.row(), index.column()).toBool() ? u"Yes"_s : u"No"_s);
        return {};
    default:
        return {};
    }
}

QVariant RecordModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return m_captions.at(static_cast<std::size_t>(section));
    if (role == Qt::TextAlignmentRole) {
        const Kind k = kind(section);
        return QVariant::fromValue(Qt::AlignVCenter | (k == Kind::Number ? Qt::AlignRight
                                                       : k == Kind::Flag ? Qt::AlignHCenter
                                                                         : Qt::AlignLeft));
    }
    return {};
}

Qt::ItemFlags RecordModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags result = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    const auto column = static_cast<std::size_t>(index.column());
    if (m_allowUpdate && m_columns.at(column).editable && m_fields.at(column).position >= 0)
        result |= kind(index.column()) == Kind::Flag ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable;
    return result;
}

bool RecordModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (m_telling || !(flags(index) & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable)))
        return false;
    const QVariant wanted = role == Qt::CheckStateRole ? QVariant(value.toInt() == Qt::Checked) : value;
    m_lastEditTaken = write(index.row(), index.column(), wanted);
    return m_lastEditTaken;
}

bool RecordModel::write(int row, int column, const QVariant& value) {
    if (!makeCurrent(row))
        return false;
    QString reason;
    {
        const QScopedValueRollback own(m_ownChange, true);
        try {
            m_rows->setValue(m_fields[static_cast<std::size_t>(column)].position, value);
            m_rows->update();
        } catch (const RuntimeError& failure) {
            reason = failure.description();
            m_rows->cancelUpdate();
        }
    }
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
    if (!reason.isNull())
        refuse(reason);
    return reason.isNull();
}

void RecordModel::refuse(const QString& reason) {
    m_lastEditTaken = false;
    if (m_telling)
        return;
    const QScopedValueRollback telling(m_telling, true);
    MsgBox(widgetText(u"The change was not saved."_s) + u"\n\n"_s + reason);
    emit editFailed();
}

}  // namespace platform
