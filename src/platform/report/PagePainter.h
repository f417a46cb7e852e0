// Draws a page of a document with a QPainter whose unit is the twip: the one path for screen, printer
// and PDF.
#pragma once

#include "platform/report/PageDocument.h"

#include <QFont>
#include <vector>

class QPainter;

namespace platform {

class PagePainter {
public:
    /// The document may grow while the painter lives, and outlives it.
    explicit PagePainter(const PageDocument& document) : m_document(document) {}

    /// Draws what stands on the page; the paper itself is left to the caller.
    void paint(QPainter& painter, const Page& page);

private:
    void useRulePen(QPainter& painter, QRgb color);
    void paintText(QPainter& painter, const Page& page, const PageItem& item);
    void paintBars(QPainter& painter, const PageItem& item);
    const TextStyle& styleOf(const PageItem& item) const { return m_document.styles[item.style]; }

    const PageDocument& m_document;
    std::vector<QFont> m_fonts;    ///< by style
    int m_fontSet = -1;            ///< style whose font the painter has
    std::int64_t m_penColor = -1;  ///< color of the painter's pen
};

}  // namespace platform
