// Texts, pictures and the look of the title that several reports share.
#pragma once

#include "platform/basic/Currency.h"
#include "platform/report/Report.h"

#include <QDateTime>
#include <QColor>
#include <QString>
#include <QVariant>

namespace sorvanto {

inline constexpr const char* amountPicture = "###,##0.00";

/// The title in its box with a drop shadow.
inline constexpr QRgb shadowGrey = 0xFF9AA5B1;
inline constexpr QRgb paperWhite = 0xFFFFFFFF;
inline constexpr double titlePoints = 14.5;
/// Moment and dates of a list report; headings of its columns.
inline constexpr double datePoints = 8.5, headingPoints = 9;
/// What the rows of the lists are set in.
inline constexpr const char* detailFamily = "Times New Roman";

/// Writes the currency of the options directly followed by the amount ("$1,234.50").
void setOptionsMoney(platform::Report& report, const char* name, const QVariant& value,
                     const QString& picture = amountPicture);

/// Writes an amount in the manner of the system's locale, whatever the currency of the options.
void setSystemMoney(platform::Report& report, const char* name, platform::Currency value);

/// "$" of the options, a blank, the picture: format of a bound price.
QString optionsPricePicture();

/// "Report Dates: begin -- end" in the user's language, as default date text.
QString reportDates(const QDateTime& begin, const QDateTime& end);

/// A bound of a main statement: "MM-DD-YYYY".
QString boundText(const QDateTime& date);

}  // namespace sorvanto
