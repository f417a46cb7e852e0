// Number, date and text pictures: "#0.000", "#0.00", "0.00", "###,##0.00", "####0;;Null", "00",
// "MM-DD-YY", "MM-DD-YYYY", "@@@@-@@", with literal text before or after the digits ("$ ###,##0.00").
#pragma once

#include "platform/basic/Currency.h"

#include <QDateTime>
#include <QString>
#include <QVariant>

namespace platform {

/// A number by its picture. Rounds half away from zero on the decimal text. The point is always ".",
/// the group separator ",". Sections are split by ";": positive, negative (empty: as positive with "-"),
/// third part, taken as it stands, for an empty value (zero shows as 0). A minus sign goes in front of
/// everything ("-$ 5.00"), and none goes before a value that rounds to zero. Text before and after the
/// digit places is literal, points and commas included ("Fr. ###,##0.00"). Throws overflow for infinity.
QString format(double value, const QString& picture);
QString format(Currency value, const QString& picture);
/// What a picture writes in front of a number, such as its currency.
QString textInFront(const QString& picture);
/// Text is formatted when the whole of it is a number, else it comes back as it is. NULL uses the third
/// section or gives an empty text.
QString format(const QVariant& value, const QString& picture);
QString format(const QString& text, const QString& picture);

/// A date by "MM", "DD", "YY", "YYYY" and literal marks between.
QString formatDate(const QDateTime& date, const QString& picture);

/// "@" pictures: characters fill the places from the right, a blank for any missing one; characters
/// beyond the places stand in front.
QString formatPlaces(const QString& text, const QString& picture);

/// Money in the manner of the system's locale (US English under C and POSIX), its own digits and symbol.
QString formatCurrency(Currency value);
/// The same with so many decimals.
QString formatCurrency(Currency value, int decimals);

}  // namespace platform
