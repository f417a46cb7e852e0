// The first step of a date-range report: the two dates.
#pragma once

#include <QDateTime>
#include <optional>

namespace sorvanto {

struct Context;

struct DateRange {
    QDateTime begin, end;
};

/// Asks in the date dialog; nothing when it was cancelled.
std::optional<DateRange> askDateRange();

/// "No records", and nothing is to be shown: reportCancelled.
void sayNoRecords(Context& context);

}  // namespace sorvanto
