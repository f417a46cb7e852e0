#include "platform/widgets/StepEntry.h"

#include "platform/widgets/Boxes.h"
#include "platform/widgets/Hint.h"
#include "platform/widgets/Texts.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QRegularExpressionValidator>

using namespace Qt::StringLiterals;

namespace platform {

StepEntry::StepEntry(UpDown& upDown, QLabel& label, int unit)
    : QLineEdit(upDown.parentWidget()), m_upDown(upDown), m_label(label), m_unit(unit) {
    setObjectName(u"entry"_s);
    setAlignment(Qt::AlignRight);
    setFocusPolicy(Qt::ClickFocus);
    setValidator(new QRegularExpressionValidator(QRegularExpression(u"[0-9]{0,6}"_s), this));
    hide();
    upDown.installEventFilter(this);
    connect(&upDown, &QObject::destroyed, this, [this] { m_open = false; });
}

bool StepEntry::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::EnabledChange && !m_upDown.isEnabled())
        drop();
    if (event->type() == QEvent::KeyPress) {
        const QString text = static_cast<QKeyEvent*>(event)->text();
        if (text.size() == 1 && text[0] >= u'0' && text[0] <= u'9') {
            begin(text);
            return true;
        }
    }
    return QLineEdit::eventFilter(watched, event);
}

void StepEntry::begin(const QString& digits) {
    const QRect place(m_label.mapTo(parentWidget(), QPoint()), m_label.size());
    resize(place.width(), qMax(place.height(), sizeHint().height()));
    move(place.left(), place.center().y() - height() / 2);
    setAccessibleName(m_upDown.accessibleName());
    setText(digits);
    m_open = true;
    show();
    raise();
    setFocus();
    deselect();
}

bool StepEntry::acceptable() {
    if (take())
        return true;
    setFocus();
    return take();  // the hint shows on a visible field alone
}

// Values of an up-down are counted from its minimum.
QString StepEntry::problem() const {
    const int number = text().toInt();
    const int lowest = m_upDown.minimum() * m_unit;
    const int highest = m_upDown.maximum() * m_unit;
    const int stride = m_upDown.step() * m_unit;
    if (number < lowest)
        return widgetText(u"At least %1."_s).arg(lowest);
    if (number > highest)
        return widgetText(u"At most %1."_s).arg(highest);
    const int below = number - (number - lowest) % stride;
    if (below == number)
        return {};
    if (below + stride > highest)
        return widgetText(u"At most %1."_s).arg(below);
    return widgetText(u"%1 cannot be set. The nearest are %2 and %3."_s)
        .arg(QString::number(number), QString::number(below), QString::number(below + stride));
}

bool StepEntry::take() {
    if (!m_open)
        return true;
    const QString typed = text();
    const QString refused = typed.isEmpty() ? QString() : problem();
    Hint::tell(*this, refused);
    if (!refused.isEmpty())
        return false;
    close();
    if (!typed.isEmpty())
        set(typed.toInt());
    return true;
}

// The label may show something else than the up-down's value, which then counts as changed.
void StepEntry::set(int number) {
    m_upDown.setValue(number / m_unit);
    if (m_label.text() == QString::number(number))
        return;
    m_label.setText(QString::number(number));
    emit m_upDown.changed(m_upDown.value());
}

void StepEntry::drop() {
    if (!m_open)
        return;
    Hint::tell(*this, {});
    close();
}

// A hidden widget's focus would go to the next in the row.
void StepEntry::close() {
    m_open = false;
    if (hasFocus())
        m_upDown.setFocus();
    hide();
}

void StepEntry::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        take();
        return;
    case Qt::Key_Escape:
        drop();
        return;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        if (take())
            QCoreApplication::sendEvent(&m_upDown, event);
        return;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

// A menu or another window takes the focus for a while only.
void StepEntry::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        take();
}

}  // namespace platform
