// PDF by a page writer on a file that is replaced whole; paper by the system's printer.
#include "platform/report/ReportOutput.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/report/PagePainter.h"
#include "platform/report/PrintService.h"

#include <QMarginsF>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>
#include <QSettings>
#include <algorithm>

namespace platform {

namespace {

QPageLayout sheet(const PageDocument& document) {
    const ReportDefinition& definition = document.definition;
    const QSizeF points(definition.paperWidth / 20.0, definition.paperHeight / 20.0);
    const QPageSize letter(QPageSize::Letter);
    const QPageSize size =
        points == letter.size(QPageSize::Point) ? letter : QPageSize(points, QPageSize::Point);
    return QPageLayout(size, QPageLayout::Portrait, QMarginsF());
}

/// Draws pages first to last, the device told of each new page.
template <class NewPage>
bool paintPages(const PageDocument& document, QPainter& painter, int first, int last, NewPage newPage,
                const PageProgress& go) {
    PagePainter pages(document);
    for (int page = first; page <= last; ++page) {
        if (page > first && !newPage())
            throw RuntimeError(error::deviceIo, QStringLiteral("The printer refused a page"));
        pages.paint(painter, document.pages[static_cast<std::size_t>(page)]);
        if (go && !go(page - first + 1))
            return false;
    }
    return true;
}

std::function<QStringList()>& namesSource() {
    static std::function<QStringList()> source;
    return source;
}

QString offsetKey(const QString& printer) {
    return QStringLiteral("LabelOffset/") +
           QString::fromLatin1(printer.toUtf8().toPercentEncoding());
}

}  // namespace

bool savePdf(const PageDocument& document, const QString& path, const PageProgress& go) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw RuntimeError(error::permissionDenied,
                           QStringLiteral("Can't write %1: %2").arg(path, file.errorString()));
    bool whole = true;
    {
        QPdfWriter writer(&file);
        writer.setResolution(1440);
        writer.setPageLayout(sheet(document));
        writer.setTitle(document.caption);
        QPainter painter;
        if (!painter.begin(&writer))
            throw RuntimeError(error::deviceIo, QStringLiteral("Can't write %1").arg(path));
        whole = paintPages(document, painter, 0, static_cast<int>(document.pages.size()) - 1,
                           [&] { return writer.newPage(); }, go);
    }
    if (!whole) {
        file.cancelWriting();
        return false;
    }
    if (!file.commit())
        throw RuntimeError(error::deviceIo,
                           QStringLiteral("Can't write %1: %2").arg(path, file.errorString()));
    return true;
}

void preparePrinter(QPrinter& printer, const PageDocument& document) {
    printer.setFullPage(true);
    printer.setResolution(1440);
    printer.setPageLayout(sheet(document));
    printer.setDocName(document.caption.isEmpty() ? document.definition.name : document.caption);
}

bool printDocument(const PageDocument& document, QPrinter& printer, QPoint offset, const PageProgress& go) {
    const int count = static_cast<int>(document.pages.size());
    int first = 0, last = count - 1;
    if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
        first = std::clamp(printer.fromPage() - 1, 0, count - 1);
        last = std::clamp(printer.toPage() - 1, first, count - 1);
    }
    const bool toFile = !printer.outputFileName().isEmpty();
    QPainter painter;
    if (!painter.begin(&printer))
        throw RuntimeError(error::deviceIo,
                           QStringLiteral("Printer %1 can't be used").arg(printer.printerName()));
    const double twip = printer.resolution() / 1440.0;  // a driver may insist on a resolution of its own
    painter.scale(twip, twip);
    painter.translate(offset);
    const bool whole = paintPages(document, painter, first, last, [&] { return printer.newPage(); }, go);
    if (!whole)
        printer.abort();
    const bool ended = painter.end();
    const QString refusal = whole && !toFile ? printServiceRefusal() : QString();
    if (!refusal.isEmpty())
        throw RuntimeError(error::deviceIo, QStringLiteral("Printer %1 did not take the document: %2")
                                                .arg(printer.printerName(), refusal));
    if (!ended || printer.printerState() == QPrinter::Error)
        throw RuntimeError(error::deviceIo,
                           QStringLiteral("Printer %1 reported an error").arg(printer.printerName()));
    return whole;
}

QStringList printerNames() {
    return namesSource() ? namesSource()() : QPrinterInfo::availablePrinterNames();
}

void setPrinterNames(std::function<QStringList()> names) {
    namesSource() = std::move(names);
}

namespace {
QString settingsPath() {
    return programFolder() + QStringLiteral("/window.ini");
}
}  // namespace

QPoint printerOffset(const QString& printer) {
    const QSettings settings(settingsPath(), QSettings::IniFormat);
    return settings.value(offsetKey(printer)).toPoint();
}

void setPrinterOffset(const QString& printer, QPoint offset) {
    QSettings settings(settingsPath(), QSettings::IniFormat);
    settings.setValue(offsetKey(printer), offset);
    settings.sync();
    if (settings.status() != QSettings::NoError)
        throw RuntimeError(error::permissionDenied, QStringLiteral("Can't write %1").arg(settingsPath()));
}

}  // namespace platform
