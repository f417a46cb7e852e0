// A line to type in with a calendar button inside its right end.
#include "platform/basic/Dates.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Calendar.h"
#include "platform/widgets/Hint.h"
#include "platform/widgets/Texts.h"
#include "platform/widgets/Theme.h"

#include <QCalendarWidget>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr int buttonRoom = 23;  // of the calendar button, inside the box

}  // namespace

DateBox::DateBox(QWidget* parent)
    : QWidget(parent), m_value(zeroDate()), m_edit(new QLineEdit(this)), m_button(new QToolButton(this)) {
    setProperty("dateFrame", true);
    m_edit->setTextMargins(0, 0, buttonRoom, 0);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_edit);
    setFocusProxy(m_edit);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_button->setIcon(icon(u"calendar"_s));
    m_button->setIconSize({18, 18});
    m_button->setFocusPolicy(Qt::NoFocus);
    m_button->setAccessibleName(widgetText(u"Calendar"_s));
    m_edit->installEventFilter(this);
    connect(m_edit, &QLineEdit::textEdited, this, &DateBox::takeTyped);
    connect(m_button, &QToolButton::clicked, this, &DateBox::openCalendar);
}

void DateBox::setValue(const QDateTime& value) {
    m_value = value.isValid() ? value : zeroDate();
    showValue();
}

QString DateBox::text() const { return m_edit->text(); }

void DateBox::setText(const QString& text) { setValue(text.isEmpty() ? zeroDate() : toDate(text)); }

void DateBox::clear() { setValue(zeroDate()); }

bool DateBox::acceptable() {
    if (m_problem.isEmpty())
        return true;
    setFocus();
    Hint::tell(*m_edit, m_problem);
    return false;
}

void DateBox::setWithTime(bool on) {
    m_withTime = on;
    showValue();
}

void DateBox::setBirthDate(bool on) { m_range = on ? DateRange::Past : DateRange::Any; }

void DateBox::setReadOnlyBox(bool on) {
    if (on == m_edit->isReadOnly())
        return;
    m_edit->setReadOnly(on);
    m_button->setVisible(!on);
    m_edit->update();
}

bool DateBox::isReadOnlyBox() const { return m_edit->isReadOnly(); }

void DateBox::showValue() {
    m_problem.clear();
    Hint::tell(*m_edit, {});
    const QDateTime shown = m_withTime ? m_value : QDateTime(m_value.date(), QTime(0, 0), Qt::UTC);
    m_edit->setText(m_value == zeroDate() ? QString() : dateText(shown));
    m_edit->setCursorPosition(0);
}

void DateBox::takeTyped() {
    const QString typed = m_edit->text().trimmed();
    const TypedDate read =
        typed.isEmpty() ? TypedDate{zeroDate(), {}} : readTypedDate(typed, m_withTime, m_range);
    m_problem = read.problem;
    if (!m_problem.isEmpty())
        return;
    const QDateTime& date = read.value;
    Hint::tell(*m_edit, {});
    if (date == m_value)
        return;
    m_value = date;
    emit valueEdited();
}

void DateBox::leave() {
    if (m_problem.isEmpty())
        showValue();
    else
        Hint::tell(*m_edit, m_problem);
}

void DateBox::openCalendar() {
    auto* popup = new QFrame(this, Qt::Popup);
    popup->setObjectName(u"calendarPopup"_s);
    setLook(*popup, "panel");
    popup->setAttribute(Qt::WA_DeleteOnClose);
    auto* calendar = new QCalendarWidget(popup);
    dressCalendar(*calendar);
    if (m_range == DateRange::Past)
        calendar->setMaximumDate(today().date());
    calendar->setSelectedDate(m_value == zeroDate() ? today().date() : m_value.date());
    auto* column = new QVBoxLayout(popup);
    column->setContentsMargins(4, 4, 4, 4);
    column->addWidget(calendar);
    const auto take = [this, popup](const QDate& day) {
        choose(day);
        popup->close();
    };
    connect(calendar, &QCalendarWidget::activated, popup, take);
    connect(calendar, &QCalendarWidget::clicked, popup, take);
    popup->adjustSize();
    const QRect room = screen()->availableGeometry();
    QPoint corner = mapToGlobal(QPoint(0, height() + 2));
    corner.setX(qBound(room.left(), corner.x(), qMax(room.left(), room.right() - popup->width())));
    if (corner.y() + popup->height() > room.bottom())
        corner = mapToGlobal(QPoint(0, -popup->height() - 2));
    popup->move(corner);
    popup->show();
    calendar->setFocus();
}

void DateBox::choose(const QDate& day) {
    const QDateTime chosen(day, m_withTime ? m_value.time() : QTime(0, 0), Qt::UTC);
    const bool differs = chosen != m_value;
    setValue(chosen);
    if (differs)
        emit valueEdited();
}

bool DateBox::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut)
        leave();
    if (event->type() == QEvent::KeyPress && !isReadOnlyBox()) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Down || key->key() == Qt::Key_F4) {
            openCalendar();
            return true;
        }
        if (key->key() == Qt::Key_Escape && !m_problem.isEmpty()) {
            showValue();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void DateBox::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_button->setGeometry(width() - 30, (height() - 26) / 2, 28, 26);
    m_button->raise();
}

}  // namespace platform
