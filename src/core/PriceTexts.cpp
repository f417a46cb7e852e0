#include "core/PriceTexts.h"

#include "platform/basic/Format.h"
#include "platform/basic/LocalMarks.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

using platform::Currency;

QString priceText(Currency price) {
    return platform::shownNumber(platform::format(price, u"###,##0.00##"_s));
}

QString differenceText(Currency from, Currency to) {
    const auto difference = Currency::fromTenThousandths(to.tenThousandths() - from.tenThousandths());
    return (difference > Currency() ? u"+"_s : QString()) + priceText(difference);
}

}  // namespace sorvanto
