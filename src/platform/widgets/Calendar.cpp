// What a style sheet can't say about a calendar.
#include "platform/widgets/Calendar.h"

#include "platform/widgets/SystemTexts.h"
#include "platform/widgets/Texts.h"
#include "platform/widgets/Theme.h"

#include <QCalendarWidget>
#include <QTextCharFormat>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace platform {

void dressCalendar(QCalendarWidget& calendar) {
    calendar.setLocale(systemLanguage());
    calendar.setFirstDayOfWeek(QLocale().firstDayOfWeek());
    calendar.setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar.setGridVisible(false);
    calendar.setMinimumSize(304, 240);
    QTextCharFormat plain;
    plain.setForeground(theme().text);
    calendar.setWeekdayTextFormat(Qt::Saturday, plain);
    calendar.setWeekdayTextFormat(Qt::Sunday, plain);
    const auto arrow = [&calendar](const char* name, const char* picture, const QString& tip) {
        if (auto* button = calendar.findChild<QToolButton*>(QLatin1String(name))) {
            button->setIcon(icon(QLatin1String(picture)));
            button->setToolTip(tip);
            button->setAccessibleName(tip);
        }
    };
    arrow("qt_calendar_prevmonth", "left", widgetText(u"Previous Month"_s));
    arrow("qt_calendar_nextmonth", "right", widgetText(u"Next Month"_s));
}

}  // namespace platform
