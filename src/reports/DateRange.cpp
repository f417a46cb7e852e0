#include "reports/DateRange.h"

#include "platform/ask/Ask.h"
#include "reports/frmReportDate.h"
#include "shared/Context.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

std::optional<DateRange> askDateRange() {
    frmReportDate question;
    question.showModal();
    if (question.cancelled())
        return std::nullopt;
    return DateRange{question.beginDate(), question.endDate()};
}

void sayNoRecords(Context& context) {
    context.reportCancelled = true;
    platform::MsgBox(translated(u"No records"_s));
}

}  // namespace sorvanto
