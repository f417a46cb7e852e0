// A report's way from first to last page.
#include "platform/report/ReportRun.h"

#include "platform/basic/RuntimeError.h"

#include <utility>

namespace platform {

ReportRun::ReportRun(std::unique_ptr<Report> report, std::unique_ptr<TextMeasure> measure, PageUse use)
    : m_report(std::move(report)), m_measure(measure ? std::move(measure) : fontMeasure()),
      m_maker(deref(m_report), m_document, *m_measure, use) {}

ReportRun::~ReportRun() = default;

bool ReportRun::makePage() {
    if (m_over)
        return false;
    try {
        m_over = !m_maker.makePage();
    } catch (const LayoutEnded&) {
        m_over = m_cancelled = true;
    } catch (...) {
        m_over = true;
        throw;
    }
    return !m_over;
}

bool ReportRun::makeAll(const std::function<bool(double)>& go) {
    while (makePage()) {
        if (go && !go(progress())) {
            cancel();
            return false;
        }
    }
    return true;
}

Page ReportRun::takePage() { return std::exchange(m_document.pages.back(), {}); }

void ReportRun::cancel() {
    if (m_over)
        return;
    m_over = m_cancelled = true;
    m_maker.end();
}

double ReportRun::progress() const {
    const RecordsetPtr& rows = m_report->rows();
    if (m_over)
        return 1;
    if (!rows || !rows->isOpen() || rows->recordCount() <= 0)
        return -1;
    return rows->eof() ? 1.0
                       : static_cast<double>(rows->position()) / static_cast<double>(rows->recordCount());
}

}  // namespace platform
