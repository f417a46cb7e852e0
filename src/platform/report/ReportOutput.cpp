// PDF by a page writer in memory, its file replaced whole; paper by the system's printer.
#include "platform/report/ReportOutput.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/SettingsFile.h"
#include "platform/report/PagePainter.h"
#include "platform/report/PrintService.h"
#include "platform/widgets/WindowState.h"

#include <QBuffer>
#include <QMarginsF>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

QString nameOf(const PageDocument& document) {
    return document.caption.isEmpty() ? document.definition.name : document.caption;
}

QPageLayout sheet(const PageDocument& document) {
    const ReportDefinition& definition = document.definition;
    const QSizeF points(definition.paperWidth / 20.0, definition.paperHeight / 20.0);
    const QPageSize letter(QPageSize::Letter);
    const QPageSize size =
        points == letter.size(QPageSize::Point) ? letter : QPageSize(points, QPageSize::Point);
    return QPageLayout(size, QPageLayout::Portrait, QMarginsF());
}

/// Pages from first to last, counted from 0.
struct PageRange {
    int first, last;
};

PageRange wholeOf(const PageDocument& document) { return {0, static_cast<int>(document.pages.size()) - 1}; }

/// Draws the pages, the device told of each new page.
template <class NewPage>
bool paintPages(const PageDocument& document, QPainter& painter, PageRange range, NewPage newPage,
                const PageProgress& go) {
    PagePainter pages(document);
    for (int page = range.first; page <= range.last; ++page) {
        if (page > range.first && !newPage())
            throw RuntimeError(error::deviceIo, u"The printer refused a page"_s);
        pages.paint(painter, document.pages[static_cast<std::size_t>(page)]);
        if (go && !go(page - range.first + 1))
            return false;
    }
    return true;
}

/// The pages as PDF, nothing when stopped. It is made in memory, because the writer doesn't say when the disk
/// under it is full.
std::optional<QByteArray> pdfOf(const PageDocument& document, PageRange range, QPoint offset,
                                const PageProgress& go) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(twipsOfInch);
    writer.setPageLayout(sheet(document));
    writer.setTitle(nameOf(document));
    QPainter painter;
    if (!painter.begin(&writer))
        throw RuntimeError(error::deviceIo, u"The PDF could not be composed"_s);
    painter.translate(offset);
    const bool whole = paintPages(
        document, painter, range, [&] { return writer.newPage(); }, go);
    painter.end();
    return whole ? std::optional(bytes) : std::nullopt;
}

QString offsetKey(const QString& printer) {
    return u"LabelOffset/"_s + QString::fromLatin1(printer.toUtf8().toPercentEncoding());
}

}  // namespace

bool savePdf(const PageDocument& document, const QString& path, const PageProgress& go) {
    const std::optional<QByteArray> bytes = pdfOf(document, wholeOf(document), {}, go);
    if (bytes)
        writeFile(path, *bytes, Readers::UsersChoice);
    return bytes.has_value();
}

void preparePrinter(QPrinter& printer, const PageDocument& document) {
    printer.setFullPage(true);
    printer.setResolution(twipsOfInch);
    printer.setPageLayout(sheet(document));
    printer.setDocName(nameOf(document));
}

bool printDocument(const PageDocument& document, QPrinter& printer, QPoint offset, const PageProgress& go) {
    PageRange range = wholeOf(document);
    if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
        const int last = range.last;
        range.first = std::clamp(printer.fromPage() - 1, 0, last);
        range.last = std::clamp(printer.toPage() - 1, range.first, last);
    }
    if (!printer.outputFileName().isEmpty()) {
        const std::optional<QByteArray> bytes = pdfOf(document, range, offset, go);
        if (bytes)
            writeFile(printer.outputFileName(), *bytes, Readers::UsersChoice);
        return bytes.has_value();
    }
    QPainter painter;
    if (!painter.begin(&printer))
        throw RuntimeError(error::deviceIo, u"Printer %1 can't be used"_s.arg(printer.printerName()));
    // A driver may insist on a resolution of its own.
    const double twip = 1.0 * printer.resolution() / twipsOfInch;
    painter.scale(twip, twip);
    painter.translate(offset);
    const bool whole = paintPages(
        document, painter, range, [&] { return printer.newPage(); }, go);
    if (!whole)
        printer.abort();
    const bool ended = painter.end();
    const QString refusal = whole ? printServiceRefusal() : QString();
    if (!refusal.isEmpty())
        throw RuntimeError(error::deviceIo,
                           u"Printer %1 did not take the document: %2"_s.arg(printer.printerName(), refusal));
    if (!ended || printer.printerState() == QPrinter::Error)
        throw RuntimeError(error::deviceIo, u"Printer %1 reported an error"_s.arg(printer.printerName()));
    return whole;
}

QPoint printerOffset(const QString& printer) {
    return SettingsFile(windowStateFile()).value(offsetKey(printer)).toPoint();
}

void setPrinterOffset(const QString& printer, QPoint offset) {
    SettingsFile(windowStateFile()).setValue(offsetKey(printer), offset);
}

}  // namespace platform
