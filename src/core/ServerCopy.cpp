#include "core/ServerCopy.h"

#include "config/ServerTexts.h"
#include "core/GoodCopy.h"
#include "platform/basic/Dates.h"
#include "platform/basic/TimeOfDay.h"
#include "platform/data/DataLocation.h"
#include "shared/Context.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

// The day as well, also of a copy of today: the program may run past midnight.
QString standInText(const StandIn& copy) {
    const QString day = platform::dateText(QDateTime(copy.made.date(), QTime(0, 0), Qt::UTC));
    return translated(u"Copy of %1 of %2, read only"_s)
        .replace(u"%2"_s, day + ' '_L1 + platform::timeOfDay(copy.made.time()))
        .replace(u"%1"_s, shortLocation(copy.server));
}

void takeStandIn(Context& context) {
    const QString place = context.databaseLocation ? context.databaseLocation() : QString();
    if (!platform::DataLocation::namesServer(place))
        return;
    const QString server = platform::DataLocation(place).text();
    if (const auto copy = newestGoodCopy(server))
        context.standIn = StandIn{server, copy->path, copy->made};
}

}  // namespace sorvanto
