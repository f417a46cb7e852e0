#include "reports/ReportTexts.h"

#include "config/clsOptions.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Format.h"
#include "platform/basic/RuntimeError.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

namespace sorvanto {

QString optionsMoney(const QVariant& value) {
    return platform::deref(basMain::Options).DefCurrency() + platform::format(value, amountPicture);
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
