// A supplier's list in its file: text, .xls or .xlsx, told apart by what is in it, not by its name.
#pragma once

#include "prices/PriceText.h"
#include "prices/Workbook.h"

#include <memory>

namespace sorvanto {

class PriceFile {
public:
    /// Reads the file whole; fault() says whether that went well.
    explicit PriceFile(const QString& path);

    PriceFault fault() const { return m_fault; }
    /// The system's reason where there is one.
    const QString& detail() const { return m_detail; }
    bool isText() const { return !m_workbook; }
    /// Of a workbook.
    QStringList sheets() const;
    /// Of a text, as detected.
    TextEncoding encoding() const { return m_encoding; }
    QChar separatorIn(TextEncoding encoding) const { return detectedSeparator(decoded(m_bytes, encoding)); }

    ReadTable readText(TextEncoding encoding, QChar separator, const PriceProgress& goesOn = {}) const;
    ReadTable readSheet(int sheet, const PriceProgress& goesOn = {}) const;

private:
    void tellApart();

    QByteArray m_bytes;
    PriceFault m_fault = PriceFault::none;
    QString m_detail;
    TextEncoding m_encoding = TextEncoding::utf8;
    std::unique_ptr<Workbook> m_workbook;  ///< none of a text
};

}  // namespace sorvanto
