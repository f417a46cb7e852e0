#include "reports/ReportTexts.h"

#include "config/clsOptions.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Format.h"
#include "platform/basic/LocalMarks.h"
#include "platform/basic/Plurals.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/SystemLocale.h"
#include "platform/data/DateLiteral.h"
#include "shared/Context.h"
#include "shared/Translator.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace sorvanto {

void translateCaptions(platform::Report& report,
                       std::initializer_list<std::pair<const char*, const char*>> captions) {
    for (const auto& [name, key] : captions)
        report.setText(QLatin1String(name), translated(QLatin1String(key)));
}

void setOptionsMoney(const Context& context, platform::Report& report, const char* name,
                     const QVariant& value, const QString& picture) {
    const QString currency = platform::deref(context.options).DefCurrency();
    report.setValue(QLatin1String(name), value, currency + picture,
                    currency + platform::shownText(value, picture));
}

// The picture is for the spreadsheet: what stands before and after the digits of an amount.
void setSystemMoney(platform::Report& report, const char* name, platform::Currency value,
                    std::optional<int> decimals) {
    const auto shown = [&](platform::Currency amount) {
        return decimals ? platform::formatCurrency(amount, *decimals) : platform::formatCurrency(amount);
    };
    static const QRegularExpression digits(u"0(?:[^0](0+))?"_s);
    QString picture = shown({}).replace(platform::systemLocale().zeroDigit(), u"0"_s);
    const QString fraction = digits.match(picture).captured(1);
    picture.replace(digits, fraction.isEmpty() ? u"###,##0"_s : u"###,##0."_s + fraction);
    report.setValue(QLatin1String(name), QVariant::fromValue(value), picture, shown(value));
}

void showLayoutNumber(platform::Report& report, const char* name) {
    report.setText(QLatin1String(name), platform::shownNumber(report.control(QLatin1String(name)).text));
}

QString optionsPricePicture(const Context& context) {
    return platform::deref(context.options).DefCurrency() + u" ###,##0.00"_s;
}

QString reportDates(const QDateTime& begin, const QDateTime& end) {
    return translated(u"Report Dates"_s) + u": "_s + platform::dateText(begin) + u" -- "_s +
           platform::dateText(end);
}

namespace {

/// The totals' bounds are default date text, which a statement may read month first.
bool isReadOtherwise(const QDateTime& date) {
    return platform::dateLiteral(platform::dateText(date)) != date;
}

}  // namespace

void explainTotals(platform::Report& report, const ListAndTotals& counts, const QDateTime& begin,
                   const QDateTime& end) {
    if (counts.listed == counts.counted)
        return;
    const QString reason = isReadOtherwise(begin) || isReadOtherwise(end)
                               ? translated(u"the totals read the two dates month first."_s)
                               : counts.reason;
    QString note = platform::counted(counts.forms, counts.listed);
    note.replace(u"%2"_s, platform::systemLocale().toString(counts.counted));
    report.addNote(note.replace(u"%3"_s, reason));
}

QString boundText(const QDateTime& date) { return platform::formatDate(date, u"MM-DD-YYYY"_s); }

}  // namespace sorvanto
