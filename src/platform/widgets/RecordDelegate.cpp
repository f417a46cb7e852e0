// Editors are our own boxes, so that a cell takes a number or a date just as a field does.
#include "platform/widgets/RecordDelegate.h"

#include "platform/basic/Dates.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/DateInput.h"
#include "platform/widgets/RecordModel.h"
#include "platform/widgets/Rows.h"
#include "platform/widgets/StyleShapes.h"
#include "platform/widgets/Theme.h"
#include "platform/widgets/UnderWay.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTableView>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr int markSize = 16;
/// Of the bar at the left end of the current row.
constexpr int edgeWidth = 3;

}  // namespace

RecordDelegate::RecordDelegate(RecordModel& model, QObject* parent)
    : QStyledItemDelegate(parent), m_model(model) {}

QSize RecordDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    return {option.fontMetrics.horizontalAdvance(index.data().toString()) + 22, rowPitch};
}

void RecordDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
    const bool selected = option.state & QStyle::State_Selected;
    const bool alternate = option.features & QStyleOptionViewItem::Alternate;
    const auto* view = qobject_cast<const QTableView*>(option.widget);
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool current = view && view->currentIndex().row() == index.row();
    painter->fillRect(option.rect, selected || current ? theme().softAccent
                                   : alternate         ? theme().alternateRow
                                                       : theme().surface);
    if (current && view->columnViewportPosition(index.column()) == -view->horizontalScrollBar()->value())
        painter->fillRect(QRect(option.rect.topLeft(), QSize(edgeWidth, option.rect.height())),
                          theme().accent);
    if (index.data(Qt::CheckStateRole).isValid()) {
        if (index.data(Qt::CheckStateRole).toInt() == Qt::Checked) {
            QRect mark(0, 0, markSize, markSize);
            mark.moveCenter(option.rect.center());
            icon(u"check"_s).paint(painter, mark, Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
        }
    } else {
        const QRect room = option.rect.adjusted(m_cellMargin, 0, -m_cellMargin, 0);
        painter->setFont(option.font);
        painter->setPen(enabled ? theme().text : theme().disabledText);
        const auto alignment = index.data(Qt::TextAlignmentRole).value<Qt::Alignment>();
        painter->drawText(
            room, static_cast<int>(alignment) | Qt::TextSingleLine,
            option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, room.width()));
    }
    if (view && view->hasFocus() && view->currentIndex() == index)
        drawFocusMark(*painter, option.rect);
}

bool RecordDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                               const QModelIndex& index) {
    const QString text = index.data().toString();
    const bool cut = view->fontMetrics().horizontalAdvance(text) > option.rect.width() - 2 * m_cellMargin;
    if (event->type() != QEvent::ToolTip || !cut)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QToolTip::showText(event->globalPos(), u"<p>%1</p>"_s.arg(text.toHtmlEscaped()), view);
    return true;
}

QWidget* RecordDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                      const QModelIndex& index) const {
    QWidget* editor = nullptr;
    if (m_model.kind(index.column()) == RecordModel::Kind::Number)
        editor = new NumberBox(parent);
    else
        editor = textEditor(parent, index.column());
    editor->setObjectName(u"cellEditor"_s);
    editor->setAccessibleName(m_model.shownCaption(index.column()));
    m_editor = editor;
    return editor;
}

TextBox* RecordDelegate::textEditor(QWidget* parent, int column) const {
    auto* box = new TextBox(parent);
    if (m_model.kind(column) == RecordModel::Kind::Text)
        box->setColumnSize(m_model.definedSize(column));
    return box;
}

void RecordDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    const QVariant value = index.data(Qt::EditRole);
    if (auto* box = qobject_cast<NumberBox*>(editor)) {
        if (value.metaType() == QMetaType::fromType<Currency>())
            box->setValue(value.value<Currency>());
        else if (value.isValid())
            box->setValue(value.toDouble());
        box->selectAll();
    } else if (auto* line = qobject_cast<TextBox*>(editor)) {
        const bool date = m_model.kind(index.column()) == RecordModel::Kind::Date;
        line->setText(date && value.isValid() ? dateText(value.toDateTime()) : value.toString());
        line->selectAll();
    }
}

void RecordDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                  const QModelIndex& index) const {
    if (m_writing)
        return;
    const QScopedValueRollback writing(m_writing, true);
    const auto* line = qobject_cast<QLineEdit*>(editor);
    if (!line || !line->isModified())
        return;
    const auto* box = qobject_cast<NumberBox*>(editor);
    const QString text = line->text().trimmed();
    const RecordModel::Kind kind = m_model.kind(index.column());
    const bool empty = kind != RecordModel::Kind::Text && text.isEmpty();
    const TypedDate date =
        kind == RecordModel::Kind::Date && !empty ? readTypedDate(text, true) : TypedDate();
    if (box && !box->problem().isEmpty())
        m_model.refuse(box->problem());
    else if (empty)
        model->setData(index, QVariant(), Qt::EditRole);
    else if (!date.problem.isEmpty())
        m_model.refuse(date.problem);
    else
        model->setData(index,
                       kind == RecordModel::Kind::Date ? QVariant(date.value)
                       : box                           ? QVariant(box->text())
                                                       : QVariant(line->text()),
                       Qt::EditRole);
}

void RecordDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                          const QModelIndex&) const {
    editor->setGeometry(option.rect.adjusted(1, 1, -1, -1));
}

bool RecordDelegate::refusesToLeave(QObject* editor) const {
    auto* box = qobject_cast<NumberBox*>(editor);
    return box && !box->acceptable();
}

bool RecordDelegate::eventFilter(QObject* watched, QEvent* event) {
    // The window of a wait takes the focus and gives it back: meanwhile a cell could not be written.
    if (event->type() == QEvent::FocusOut && UnderWay::any())
        return true;
    if (m_writing)
        return event->type() == QEvent::FocusOut;
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
        const bool leaves = key == Qt::Key_Tab || key == Qt::Key_Backtab || enter;
        if (leaves && refusesToLeave(watched))
            return true;
        auto* editor = qobject_cast<QWidget*>(watched);
        if (enter)
            emit commitData(editor);
        if (enter || key == Qt::Key_Escape) {
            emit closeEditor(editor, enter ? SubmitModelCache : RevertModelCache);
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(watched, event);
}

bool RecordDelegate::editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) {
    if (!(model->flags(index) & Qt::ItemIsUserCheckable))
        return false;
    bool toggles = false;
    if (event->type() == QEvent::MouseButtonRelease) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        toggles = mouse->button() == Qt::LeftButton && option.rect.contains(mouse->position().toPoint());
    } else if (event->type() == QEvent::KeyPress) {
        toggles = static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space;
    }
    if (!toggles)
        return false;
    const bool checked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    model->setData(index, checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    return true;
}

}  // namespace platform
