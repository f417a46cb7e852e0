// A finished document on paper or in a PDF file. Measures on paper are the document's own: the whole sheet
// is the drawing area and one device unit is one twip.
#pragma once

#include "platform/report/PageDocument.h"

#include <QPoint>
#include <QString>
#include <functional>

class QPrinter;

namespace platform {

/// Told after each page how many are done; false stops.
using PageProgress = std::function<bool(int done)>;

/// Writes the document as PDF with embedded fonts, whole or not at all. False when stopped.
/// Throws permissionDenied or deviceIo with the path.
bool savePdf(const PageDocument& document, const QString& path, const PageProgress& go = {});

/// Sets a printer up for the document: paper, orientation, no margins, twips.
void preparePrinter(QPrinter& printer, const PageDocument& document);

/// Prints the pages that the printer's range names (all when it names none), each moved by the offset in
/// twips. False when stopped. Throws deviceIo when the printer refuses.
bool printDocument(const PageDocument& document, QPrinter& printer, QPoint offset = {},
                   const PageProgress& go = {});

/// How far a printer's sheets are to be moved, in twips, right and down; kept by printer in the program's
/// window state file. (0, 0) where nothing was set.
QPoint printerOffset(const QString& printer);
void setPrinterOffset(const QString& printer, QPoint offset);

}  // namespace platform
