#include "screens/TypedBoxes.h"

#include "platform/widgets/Boxes.h"
#include "platform/widgets/RecordGrid.h"
#include "platform/widgets/ReportList.h"
#include "screens/BoxText.h"

#include <QEvent>
#include <QLabel>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

bool isBox(QWidget& control) {
    const QString name = control.objectName();
    if (name.contains("txt"_L1) || name.contains("cbo"_L1))
        return dynamic_cast<platform::Lockable*>(&control) != nullptr;
    if (name.contains("lblSet"_L1))
        return qobject_cast<QLabel*>(&control) != nullptr;
    return name.contains("lst"_L1) && qobject_cast<platform::ReportList*>(&control);
}

}  // namespace

TypedBoxes::TypedBoxes(QWidget& form) : m_form(form) {}

void TypedBoxes::settle() {
    if (m_boxes.empty())
        findBoxes();
    for (Box& box : m_boxes)
        box.before = boxText(*box.widget);
    m_settled = true;
    emit edited();
}

void TypedBoxes::findBoxes() {
    for (QWidget* control : m_form.findChildren<QWidget*>()) {
        if (isBox(*control))
            m_boxes.push_back({control, {}});
        if (auto* grid = qobject_cast<platform::RecordGrid*>(control)) {
            m_grids.push_back(grid);
            grid->viewport()->installEventFilter(this);
        }
        follow(*control);
    }
}

// Labels say nothing of a change; the arrows beside them do.
void TypedBoxes::follow(QWidget& control) {
    if (auto* line = qobject_cast<QLineEdit*>(&control)) {
        connect(line, &QLineEdit::textChanged, this, &TypedBoxes::edited);
    } else if (auto* memo = qobject_cast<QPlainTextEdit*>(&control)) {
        connect(memo, &QPlainTextEdit::textChanged, this, &TypedBoxes::edited);
    } else if (auto* choice = qobject_cast<QComboBox*>(&control)) {
        connect(choice, &QComboBox::currentIndexChanged, this, &TypedBoxes::edited);
    } else if (auto* arrows = qobject_cast<platform::UpDown*>(&control)) {
        connect(arrows, &platform::UpDown::changed, this, &TypedBoxes::edited);
    } else if (auto* list = qobject_cast<platform::ReportList*>(&control)) {
        connect(list->model(), &QAbstractItemModel::rowsInserted, this, &TypedBoxes::edited);
        connect(list->model(), &QAbstractItemModel::rowsRemoved, this, &TypedBoxes::edited);
        connect(list->model(), &QAbstractItemModel::modelReset, this, &TypedBoxes::edited);
    }
}

// A cell's editor comes and goes; it is complete when it is polished.
bool TypedBoxes::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::ChildPolished) {
        if (auto* line = qobject_cast<QLineEdit*>(static_cast<QChildEvent*>(event)->child())) {
            connect(line, &QLineEdit::textEdited, this, &TypedBoxes::edited);
            connect(line, &QObject::destroyed, this, &TypedBoxes::edited);
        }
    }
    return false;
}

bool TypedBoxes::any() const {
    return !typed().empty() ||
           std::any_of(m_grids.begin(), m_grids.end(), [](const auto* grid) { return grid->isCellOpen(); });
}

std::vector<DraftField> TypedBoxes::typed() const {
    std::vector<DraftField> fields;
    if (!m_settled)
        return fields;
    for (const Box& box : m_boxes) {
        const QString now = boxText(*box.widget);
        if (now != box.before)
            fields.push_back({box.widget->objectName(), labelOf(*box.widget), now, box.before});
    }
    return fields;
}

std::vector<DraftField> TypedBoxes::shown() const {
    std::vector<DraftField> fields;
    for (const Box& box : m_boxes) {
        const QString now = boxText(*box.widget);
        fields.push_back({box.widget->objectName(), labelOf(*box.widget), now, now});
    }
    return fields;
}

QString TypedBoxes::labelOf(const QWidget& box) const {
    for (const QLabel* label : m_form.findChildren<QLabel*>()) {
        if (label->buddy() == &box)
            return label->text();
    }
    return box.accessibleName();
}

QLineEdit* TypedBoxes::editorOf(const platform::RecordGrid& grid) const {
    for (auto* line : grid.viewport()->findChildren<QLineEdit*>(Qt::FindDirectChildrenOnly)) {
        if (grid.isCellOpen() && line->isVisible() && line->isModified())
            return line;
    }
    return nullptr;
}

std::vector<DraftField> TypedBoxes::openCell() const {
    for (const platform::RecordGrid* grid : m_grids) {
        if (const QLineEdit* editor = editorOf(*grid))
            return {cellField(*grid, *editor)};
    }
    return {};
}

// Named after its column and the first text of its row; a number names nothing.
DraftField TypedBoxes::cellField(const platform::RecordGrid& grid, const QLineEdit& editor) const {
    const QModelIndex cell = grid.currentIndex();
    QString row;
    for (int column = 0; column < grid.model()->columnCount() && row.isEmpty(); ++column) {
        const QString text = cell.siblingAtColumn(column).data().toString();
        const bool hasLetter = std::any_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
        if (column != cell.column() && !grid.isColumnHidden(column) && hasLetter)
            row = text;
    }
    return {grid.objectName(), u"%1: %2"_s.arg(row, grid.shownCaption(cell.column())), editor.text(),
            cell.data().toString(), true};
}

void TypedBoxes::dropOpenCell() {
    for (platform::RecordGrid* grid : m_grids)
        grid->dropEdit();
}

QString TypedBoxes::shown(const QString& control) const {
    const auto found = std::find_if(m_boxes.begin(), m_boxes.end(),
                                    [&](const Box& box) { return box.widget->objectName() == control; });
    return found == m_boxes.end() ? QString() : boxText(*found->widget);
}

void TypedBoxes::stillTyped(const DraftField& field) {
    for (Box& box : m_boxes) {
        if (box.widget->objectName() == field.control)
            box.before = field.replaced;
    }
}

void TypedBoxes::type(const std::vector<DraftField>& fields) {
    for (const DraftField& field : fields) {
        for (const Box& box : m_boxes) {
            if (!field.cell && box.widget->objectName() == field.control)
                typeIntoBox(*box.widget, field.typed);
        }
    }
}

}  // namespace sorvanto
