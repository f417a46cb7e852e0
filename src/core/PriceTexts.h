// Prices of a unit as the windows about them show them: with up to four decimals, in the system's marks.
#pragma once

#include "platform/basic/Currency.h"

#include <QString>

namespace sorvanto {

inline const QString pricePicture = QStringLiteral("#0.00##");

QString priceText(platform::Currency price);
/// With its sign: "+0.25", "-1.00", "0.00".
QString differenceText(platform::Currency from, platform::Currency to);

}  // namespace sorvanto
