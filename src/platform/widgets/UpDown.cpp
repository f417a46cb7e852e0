// Two arrows, one above the other; they repeat while held, and the arrow keys do the same. Home and End go to
// the bounds; the wheel changes nothing.
#include "platform/widgets/Boxes.h"
#include "platform/widgets/FocusMark.h"
#include "platform/widgets/Texts.h"
#include "platform/widgets/Theme.h"

#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr int pageSteps = 10;

}  // namespace

UpDown::UpDown(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    QToolButton* up = makeArrow(u"up"_s, u"Up"_s);
    QToolButton* down = makeArrow(u"down"_s, u"Down"_s);
    column->addWidget(up);
    column->addWidget(down);
    setFixedSize(28, 32);
    new FocusMark(*this);
    connect(up, &QToolButton::clicked, this, &UpDown::stepUp);
    connect(down, &QToolButton::clicked, this, &UpDown::stepDown);
}

QToolButton* UpDown::makeArrow(const QString& picture, const QString& name) {
    auto* arrow = new QToolButton(this);
    arrow->setObjectName(picture);
    arrow->setIcon(icon(picture));
    arrow->setIconSize({14, 14});
    arrow->setProperty("arrow", true);
    arrow->setAccessibleName(widgetText(name));
    arrow->setFocusPolicy(Qt::NoFocus);
    arrow->setAutoRepeat(true);
    arrow->setAutoRepeatDelay(350);
    arrow->setAutoRepeatInterval(35);
    arrow->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    return arrow;
}

void UpDown::setValue(int value) { change(qMax(m_minimum, qMin(value, m_maximum))); }

void UpDown::setBounds(int minimum, int maximum) {
    m_minimum = minimum;
    m_maximum = maximum;
}

void UpDown::setBuddy(QLabel* label) { m_buddy = label; }

void UpDown::stepUp() { stepBy(1); }

void UpDown::stepDown() { stepBy(-1); }

void UpDown::stepBy(int steps) {
    const int wanted = m_value + steps * m_step;
    if (steps > 0 && m_value < m_maximum)
        change(qBound(m_minimum, wanted, m_maximum));
    if (steps < 0 && m_value > m_minimum)
        change(qBound(m_minimum, wanted, m_maximum));
}

void UpDown::change(int value) {
    if (value == m_value)
        return;
    m_value = value;
    if (m_buddy)
        m_buddy->setText(QString::number(value));
    emit changed(value);
}

void UpDown::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Up:
        return stepBy(1);
    case Qt::Key_Down:
        return stepBy(-1);
    case Qt::Key_PageUp:
        return stepBy(pageSteps);
    case Qt::Key_PageDown:
        return stepBy(-pageSteps);
    case Qt::Key_Home:
        return change(m_minimum);
    case Qt::Key_End:
        return change(m_maximum);
    default:
        QWidget::keyPressEvent(event);
    }
}

void UpDown::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace platform
