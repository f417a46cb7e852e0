// A document's pages, or a report's while they are made, written into a sheet one after the other.
#include "platform/report/SpreadsheetExport.h"

#include "platform/basic/Paths.h"
#include "platform/report/ReportRun.h"
#include "platform/report/SpreadsheetWriter.h"

namespace platform {

namespace {

/// The report's pages become cells as soon as the next one stands, which tells that they are not the last: of a long list
/// no more than two are ever there. No bytes where it was stopped.
QByteArray cellsOf(ReportRun& run, const ExportProgress& progress) {
    const auto stopped = [&] {
        const bool stop = progress && !progress(run.progress());
        if (stop)
            run.cancel();
        return stop;
    };
    bool more = run.makePage();
    SpreadsheetWriter writer(run.document());
    while (more) {
        const Page page = run.takePage();
        more = run.makePage();
        if (stopped())
            return {};
        writer.addPage(page, !more);
        if (stopped())
            return {};
    }
    return writer.bytes();
}

}  // namespace

QByteArray spreadsheet(const PageDocument& document, const ExportProgress& progress) {
    SpreadsheetWriter writer(document);
    double written = 0;
    for (const Page& page : document.pages) {
        writer.addPage(page, &page == &document.pages.back());
        if (progress && !progress(++written / static_cast<double>(document.pages.size())))
            return {};
    }
    return writer.bytes();
}

bool exportReport(std::unique_ptr<Report> report, const QString& path, const ExportProgress& progress) {
    ReportRun run(std::move(report), nullptr, PageUse::CellsOnly);
    const QByteArray bytes = cellsOf(run, progress);
    if (bytes.isEmpty())
        return false;
    writeFile(platformPath(path), bytes);
    return true;
}

}  // namespace platform
