// Walking over the items of all pages.
#include "platform/report/TextSearch.h"

#include "platform/report/TextMeasure.h"

#include <QFontMetricsF>
#include <algorithm>

namespace platform {

QRect TextSearch::placeOf(const Page& page, const PageItem& item) const {
    if (item.kind != ItemKind::Text)
        return {};
    for (std::uint32_t i = item.firstRun; i < item.firstRun + item.runCount; ++i) {
        const TextRun& run = page.runs[i];
        const qsizetype at = run.text.indexOf(m_words, 0, Qt::CaseInsensitive);
        if (at < 0)
            continue;
        const QFontMetricsF metrics(reportFont(m_document.styles[item.drawn]));
        const double left = run.x + metrics.horizontalAdvance(run.text.left(at));
        const double width = metrics.horizontalAdvance(run.text.mid(at, m_words.size()));
        return QRectF(left, run.baseline - metrics.ascent(), width, metrics.height()).toAlignedRect();
    }
    return {};
}

TextSearch::Place TextSearch::find(const QString& words, bool backward, int startPage) {
    const int pages = static_cast<int>(m_document.pages.size());
    if (words.isEmpty() || pages == 0)
        return m_last = {};
    if (words != m_words || m_last.page < 0) {
        m_words = words;
        m_last = {std::clamp(startPage, 0, pages - 1), -1, {}};
        if (backward)
            m_last.item =
                static_cast<int>(m_document.pages[static_cast<std::size_t>(m_last.page)].items.size());
    }
    int page = m_last.page;
    int item = m_last.item;
    // Once round, and the rest of the page it started on.
    for (int turns = 0; turns <= pages; ++turns) {
        const Page& here = m_document.pages[static_cast<std::size_t>(page)];
        const int count = static_cast<int>(here.items.size());
        for (item += backward ? -1 : 1; item >= 0 && item < count; item += backward ? -1 : 1) {
            const QRect rect = placeOf(here, here.items[static_cast<std::size_t>(item)]);
            if (!rect.isNull())
                return m_last = {page, item, rect};
        }
        page = (page + (backward ? pages - 1 : 1)) % pages;
        item =
            backward ? static_cast<int>(m_document.pages[static_cast<std::size_t>(page)].items.size()) : -1;
    }
    return m_last = {};
}

}  // namespace platform
