#include "reports/ReportTexts.h"

#include "config/clsOptions.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Format.h"
#include "platform/basic/RuntimeError.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

#include <QRegularExpression>

namespace sorvanto {

void setOptionsMoney(platform::Report& report, const char* name, const QVariant& value,
                     const QString& picture) {
    const QString currency = platform::deref(basMain::Options).DefCurrency();
    report.setValue(name, value, currency + picture, currency + platform::format(value, picture));
}

// The picture is for the spreadsheet: what stands before and after the digits of an amount.
void setSystemMoney(platform::Report& report, const char* name, platform::Currency value) {
    static const QRegularExpression digits("0([^0]0+)?");
    const QString zero = platform::formatCurrency({});
    const bool decimals = digits.match(zero).capturedLength() > 1;
    const QString picture = QString(zero).replace(digits, decimals ? amountPicture : "###,##0");
    report.setValue(name, QVariant::fromValue(value), picture, platform::formatCurrency(value));
}

QString optionsPricePicture() {
    return platform::deref(basMain::Options).DefCurrency() + " ###,##0.00";
}

QString reportDates(const QDateTime& begin, const QDateTime& end) {
    return translated("Report Dates") + ": " + platform::dateText(begin) + " -- " + platform::dateText(end);
}

QString boundText(const QDateTime& date) {
    return platform::formatDate(date, "MM-DD-YYYY");
}

}  // namespace sorvanto
