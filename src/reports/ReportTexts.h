// Texts, pictures and sizes of type that several reports share.
#pragma once

#include "platform/basic/Currency.h"
#include "platform/report/Report.h"

#include <QDateTime>
#include <QString>
#include <QVariant>
#include <initializer_list>
#include <optional>
#include <utility>

namespace sorvanto {

struct Context;

inline constexpr QLatin1String amountPicture{"###,##0.00"};

/// Titles; the moment and the dates of a list report.
inline constexpr double titlePoints = 14.5, datePoints = 8.5;
/// What the rows of the lists are set in.
inline constexpr QLatin1String detailFamily{"Times New Roman"};

/// Puts captions in the user's language into controls: name of each and its key.
void translateCaptions(platform::Report& report,
                       std::initializer_list<std::pair<const char*, const char*>> captions);

/// Writes the currency of the options directly followed by the amount ("$1,234.50").
void setOptionsMoney(const Context& context, platform::Report& report, const char* name,
                     const QVariant& value, const QString& picture = amountPicture);

/// Writes an amount in the manner of the system's locale, whatever the currency of the options; with the
/// locale's own number of decimals unless one is given.
void setSystemMoney(platform::Report& report, const char* name, platform::Currency value,
                    std::optional<int> decimals = std::nullopt);

/// Leaves the number that the layout holds ("0.00"), in the system's marks.
void showLayoutNumber(platform::Report& report, const char* name);

/// "$" of the options, a blank, the picture: format of a bound price.
QString optionsPricePicture(const Context& context);

/// "Report Dates: begin -- end" in the user's language, as default date text.
QString reportDates(const QDateTime& begin, const QDateTime& end);

/// What a list leaves out or has beyond its totals, and why.
struct ListAndTotals {
    qint64 listed, counted;
    /// By the rows in the list (%1): "The list shows %1 batch, the totals count %2: %3 | ... %1 batches ...".
    QString forms;
    /// Why they differ where the dates are read alike.
    QString reason;
};
/// Says on the preview why list and totals differ, where they do.
void explainTotals(platform::Report& report, const ListAndTotals& counts, const QDateTime& begin,
                   const QDateTime& end);

/// A bound of a main statement: "MM-DD-YYYY".
QString boundText(const QDateTime& date);

}  // namespace sorvanto
