#include "records/ChangedMeanwhile.h"

#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

QString changedText(const ChangedMeanwhile& changed) {
    if (changed.name.isEmpty() || changed.changer.isEmpty())
        return translated(
            u"Another program has changed the records meanwhile, so nothing was stored. They are now shown as "
            "they are: look at them again."_s);
    return translated(
               u"%1 was changed by %2 meanwhile, so nothing was stored. It is now shown as it is: look at it "
               "again."_s)
        .arg(changed.name, changed.changer);
}

}  // namespace sorvanto
