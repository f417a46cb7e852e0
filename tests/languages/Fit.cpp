// Each kind of widget tells its need in its own way.
#include "Fit.h"

#include "platform/widgets/Boxes.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTabBar>
#include <QTextDocument>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace languages {
namespace {

constexpr int textMargin = 2;  // beside the text of a box, at least

QString plain(const QString& text) {
    if (!text.contains('<'))
        return text;
    QTextDocument document;
    document.setHtml(text);
    return document.toPlainText();
}

QString fault(const QWidget& widget, const QString& text, int needed, int given) {
    return u"%1 \"%2\" needs %3, has %4"_s
        .arg(widget.objectName().isEmpty() ? QString(widget.metaObject()->className()) : widget.objectName(),
             plain(text).simplified())
        .arg(needed)
        .arg(given);
}

void checkLabel(const QLabel& label, QStringList& faults) {
    if (label.text().isEmpty() || label.property("elided").toBool())
        return;
    const int margins = label.contentsMargins().left() + label.contentsMargins().right() + 2 * label.margin();
    if (!label.wordWrap()) {
        const int needed = label.sizeHint().width();
        if (label.width() < needed)
            faults << fault(label, label.text(), needed, label.width());
        return;
    }
    const int height = label.heightForWidth(label.width());
    if (label.height() < height)
        faults << fault(label, label.text(), height, label.height()) + " in height";
    for (const QString& word : plain(label.text()).split(QRegularExpression("\\s"), Qt::SkipEmptyParts)) {
        const int needed = label.fontMetrics().horizontalAdvance(word) + margins;
        if (label.width() < needed)
            faults << fault(label, word, needed, label.width());
    }
}

void checkButton(const QAbstractButton& button, QStringList& faults) {
    if (button.text().isEmpty())
        return;
    const auto* tool = qobject_cast<const QToolButton*>(&button);
    if (tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly && !tool->icon().isNull())
        return;
    const int needed = button.minimumSizeHint().width();
    if (button.width() < needed)
        faults << fault(button, button.text(), needed, button.width());
}

void checkHeader(const QHeaderView& header, QStringList& faults) {
    if (header.orientation() != Qt::Horizontal || header.property("elided").toBool())
        return;  // the latter ends in dots and has the whole heading as its tip
    for (int i = 0; i < header.count(); ++i) {
        if (!header.isSectionHidden(i) && header.sectionSize(i) < header.sectionSizeHint(i))
            faults << fault(header, header.model()->headerData(i, Qt::Horizontal).toString(),
                            header.sectionSizeHint(i), header.sectionSize(i));
    }
}

void checkTabs(const QTabBar& tabs, QStringList& faults) {
    for (int i = 0; i < tabs.count(); ++i) {
        const int needed = tabs.fontMetrics().horizontalAdvance(tabs.tabText(i));
        if (tabs.tabRect(i).width() < needed || tabs.tabRect(i).right() > tabs.width())
            faults << fault(tabs, tabs.tabText(i), needed, tabs.tabRect(i).width());
    }
}

void checkChoice(const QComboBox& box, QStringList& faults) {
    const int needed = box.fontMetrics().horizontalAdvance(box.currentText());
    const int given = box.lineEdit() ? box.lineEdit()->width() : box.width() - 24;
    if (given < needed)
        faults << fault(box, box.currentText(), needed, given);
}

void checkPlaceholder(const QLineEdit& box, QStringList& faults) {
    constexpr int margins = 16;
    if (!box.text().isEmpty() || box.placeholderText().isEmpty())
        return;
    const int needed = box.fontMetrics().horizontalAdvance(box.placeholderText()) + margins;
    if (box.width() < needed)
        faults << fault(box, box.placeholderText(), needed, box.width());
}

/// A date is read whole or it is another one.
void checkDate(const QLineEdit& box, QStringList& faults) {
    if (!qobject_cast<const platform::DateBox*>(box.parentWidget()))
        return;
    const QMargins inside = box.textMargins();
    const int needed =
        box.fontMetrics().horizontalAdvance(box.text()) + inside.left() + inside.right() + 2 * textMargin;
    if (needed > box.width())
        faults << fault(*box.parentWidget(), box.text(), needed, box.width());
}

void checkGroup(const QGroupBox& group, QStringList& faults) {
    constexpr int margins = 16;
    const int needed = group.fontMetrics().horizontalAdvance(group.title()) + margins;
    if (group.width() < needed)
        faults << fault(group, group.title(), needed, group.width());
}

/// A text that is checked, or a box that may not lie under another.
void checkLine(const QLineEdit& box, QStringList& faults) {
    checkPlaceholder(box, faults);
    checkDate(box, faults);
}

bool counts(const QWidget& widget) {
    if (widget.objectName().startsWith("cmdPosition_"))
        return false;  // labels as they lie on the sheet, edge to edge
    return widget.isVisible() && !widget.isWindow() && widget.width() > 0 &&
           (qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QLineEdit*>(&widget) ||
            qobject_cast<const QComboBox*>(&widget) ||
            (qobject_cast<const QLabel*>(&widget) && !static_cast<const QLabel&>(widget).text().isEmpty()));
}

void checkOverlaps(const QWidget& parent, QStringList& faults) {
    if (qobject_cast<const QComboBox*>(&parent) || qobject_cast<const QLineEdit*>(&parent) ||
        parent.property("dateFrame").toBool())
        return;  // their buttons lie inside
    QList<const QWidget*> boxes;
    for (const QObject* found : parent.children()) {
        const auto* widget = qobject_cast<const QWidget*>(found);
        if (!widget || !counts(*widget))
            continue;
        for (const QWidget* other : boxes) {
            const QRect common = other->geometry().intersected(widget->geometry());
            if (common.width() > 1 && common.height() > 1)
                faults << widget->objectName() + " lies on " + other->objectName();
        }
        boxes << widget;
    }
}

}  // namespace

QStringList misfits(const QWidget& window) {
    QStringList faults;
    checkOverlaps(window, faults);
    for (const auto* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible())
            continue;
        checkOverlaps(*widget, faults);
        if (const auto* label = qobject_cast<const QLabel*>(widget))
            checkLabel(*label, faults);
        else if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            checkButton(*button, faults);
        else if (const auto* header = qobject_cast<const QHeaderView*>(widget))
            checkHeader(*header, faults);
        else if (const auto* tabs = qobject_cast<const QTabBar*>(widget))
            checkTabs(*tabs, faults);
        else if (const auto* choice = qobject_cast<const QComboBox*>(widget))
            checkChoice(*choice, faults);
        else if (const auto* line = qobject_cast<const QLineEdit*>(widget))
            checkLine(*line, faults);
        else if (const auto* group = qobject_cast<const QGroupBox*>(widget))
            checkGroup(*group, faults);
    }
    return faults;
}

}  // namespace languages
