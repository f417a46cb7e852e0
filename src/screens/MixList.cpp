#include "screens/MixList.h"

#include "mixer/MixTables.h"
#include "platform/basic/Plurals.h"
#include "platform/widgets/ReportList.h"
#include "platform/xml/XmlDocument.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

constexpr int timeCell = 2;
constexpr int cyclesCell = 3;

/// Seconds, and cycles beside them; nothing where a cell can't be read.
struct MixLength {
    bool known = true;
    int seconds = 0;
    int cycles = 0;
};

MixLength lengthOf(const platform::ReportList& list) {
    MixLength length;
    for (int row = 0; row < list.count(); ++row) {
        const QStringList cells = list.row(row);
        bool isCount = false;
        const int seconds = secondsOfTime(cells.value(timeCell));
        const int cycles = cells.value(cyclesCell).toInt(&isCount);
        if (seconds < 0 || !isCount || cycles < 0)
            return {.known = false};
        length.seconds += seconds;
        length.cycles += cycles;
    }
    return length;
}

QString lengthText(const platform::ReportList& list) {
    const MixLength length = lengthOf(list);
    const QString cycles = platform::counted(translated(u"%1 cycle | %1 cycles"_s), length.cycles);
    if (!length.known || (length.seconds == 0 && length.cycles == 0))
        return {};
    if (length.seconds == 0)
        return cycles;
    const QString time = translated(u"%1 in all"_s).arg(timeText(length.seconds));
    return length.cycles == 0 ? time : time + u" + "_s + cycles;
}

}  // namespace

void listMixSteps(const platform::XmlDocument& document, platform::ReportList& list) {
    for (const platform::XmlNode& step : document.getElementsByTagName(u"Mix"_s)) {
        QStringList cells{step.attribute(u"LiftRPM"_s)};
        try {
            for (const QString& attribute : {u"MixRPM"_s, u"MixTime"_s, u"Cycles"_s})
                cells << step.attribute(attribute);
        } catch (...) {
            list.addRow(cells);
            throw;
        }
        list.addRow(cells);
    }
}

QString mixListText(const platform::ReportList& list, int most) {
    QStringList parts;
    if (most == 0)
        parts << platform::counted(translated(u"%1 step | %1 steps"_s), list.count());
    else
        parts << translated(u"%1 of %2 steps"_s).arg(list.count()).arg(most);
    if (const QString length = lengthText(list); !length.isEmpty())
        parts << length;
    if (most > 0 && list.count() >= most)
        parts << translated(u"The list is full."_s);
    return parts.join(u"  \u00B7  "_s);
}

}  // namespace sorvanto
