// A list as text: its characters and its cells.
#pragma once

#include "prices/PriceTable.h"

#include <QByteArray>
#include <QChar>
#include <cstdint>

namespace sorvanto {

enum class TextEncoding : std::uint8_t { utf8, utf16Little, utf16Big, windows1252, windows1251 };
inline constexpr int textEncodings = 5;

/// The encoding by its mark, else by what its bytes can be.
TextEncoding detectedEncoding(const QByteArray& bytes);

/// The text without the encoding's mark. Bytes that are no character become U+FFFD.
QString decoded(const QByteArray& bytes, TextEncoding encoding);

/// Comma, semicolon, tab or bar: the one that parts most rows into the same number of cells. A first line "sep=;",
/// as spreadsheets write it, says it.
QChar detectedSeparator(const QString& text);

struct ReadTable {
    PriceTable table;
    PriceFault fault = PriceFault::none;
    QString detail;  ///< the system's reason, or the number of the line
};

/// A table that was read to its end; one without a cell is empty.
ReadTable readWhole(PriceTable table);

/// Rows by RFC 4180; line ends of all systems. Within a cell that doesn't begin with a quotation mark, one is a
/// character like any other. Empty lines are rows without cells, so that a row's number is that of its line as long
/// as no cell has a line end.
ReadTable separated(const QString& text, QChar separator, const PriceProgress& goesOn = {});

}  // namespace sorvanto
