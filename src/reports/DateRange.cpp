#include "reports/DateRange.h"

#include "platform/ask/Ask.h"
#include "reports/frmReportDate.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

std::optional<DateRange> askDateRange() {
    frmReportDate question;
    question.showModal();
    if (question.cancelled())
        return std::nullopt;
    return DateRange{question.beginDate(), question.endDate()};
}

void sayNoRecords() {
    basMain::reportCancelled = true;
    platform::MsgBox(translated(u"No records"_s));
}

}  // namespace sorvanto
