// What a style can't say about a calendar.
#include "platform/widgets/Calendar.h"

#include "platform/widgets/SystemTexts.h"
#include "platform/widgets/Texts.h"
#include "platform/widgets/Theme.h"

#include <QCalendarWidget>
#include <QTextCharFormat>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// The bar with month and year: surface with a line below, its captions in the color of texts, which the
/// calendar takes from that of selected texts.
void dressHead(QWidget& head) {
    head.setAutoFillBackground(false);
    makeBar(head, Qt::BottomEdge);
    QPalette colors;
    colors.setColor(QPalette::HighlightedText, theme().text);
    head.setPalette(colors);
}

}  // namespace

void dressCalendar(QCalendarWidget& calendar) {
    calendar.setLocale(systemLanguage());
    calendar.setFirstDayOfWeek(QLocale().firstDayOfWeek());
    calendar.setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar.setGridVisible(false);
    calendar.setMinimumSize(304, 240);
    QPalette colors;
    colors.setColor(QPalette::AlternateBase, theme().window);  // under the names of the days
    calendar.setPalette(colors);
    if (auto* head = calendar.findChild<QWidget*>(u"qt_calendar_navigationbar"_s))
        dressHead(*head);
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
