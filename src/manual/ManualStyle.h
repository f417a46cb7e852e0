// Makes a document that was read from Markdown look like the program: sizes, distances, tables, keys.
#pragma once

#include <QFont>

class QTextDocument;

namespace sorvanto {

/// font: that of plain text. To be called once for a document, before its pictures get their sizes.
void styleManual(QTextDocument& document, const QFont& font);

}  // namespace sorvanto
