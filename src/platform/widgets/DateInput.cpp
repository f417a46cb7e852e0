// The conversion itself is the one of all dates; here is only what it would take too generously.
#include "platform/widgets/DateInput.h"

#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Texts.h"

using namespace Qt::StringLiterals;

namespace platform {

QDateTime readTypedDate(const QString& text, bool withTime) {
    bool plainNumber = false;
    text.toDouble(&plainNumber);
    if (plainNumber)
        return {};
    try {
        const QDateTime date = toDate(text);
        if (date.date() == zeroDate().date() || date.date().year() < 100)
            return {};
        return withTime ? date : QDateTime(date.date(), QTime(0, 0), Qt::UTC);
    } catch (const RuntimeError&) {
        return {};
    }
}

QString typedDateProblem() {
    return widgetText(u"Please type a date, such as %1."_s)
        .arg(dateText(QDateTime(QDate(1965, 3, 27), QTime(0, 0), Qt::UTC)));
}

}  // namespace platform
