#include "core/MomentText.h"

#include "platform/basic/Dates.h"
#include "platform/basic/TimeOfDay.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

QString momentText(const QDateTime& moment) {
    const QString time = platform::timeOfDay(moment.time());
    if (moment.date() == platform::today().date())
        return time;
    return platform::dateText(QDateTime(moment.date(), QTime(0, 0), Qt::UTC)) + ' '_L1 + time;
}

}  // namespace sorvanto
