// Tables of a binary workbook (.xls as written since 1997). Values alone: what a formula came to, not how.
#pragma once

#include "prices/PriceText.h"

#include <QStringList>
#include <vector>

namespace sorvanto {

class XlsBook {
public:
    /// file: the whole compound file.
    explicit XlsBook(const QByteArray& file);

    PriceFault fault() const { return m_fault; }
    QStringList sheets() const;
    ReadTable read(int sheet, const PriceProgress& goesOn = {}) const;

private:
    struct Sheet {
        QString name;
        qsizetype at;  ///< its first record in the stream
    };
    void readGlobals();

    QByteArray m_stream;
    std::vector<Sheet> m_sheets;
    QStringList m_strings;  ///< shared by all sheets
    PriceFault m_fault;
};

}  // namespace sorvanto
