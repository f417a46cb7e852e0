// Tables of a workbook of zipped XML (.xlsx). Values alone: what a formula came to, not how.
#pragma once

#include "prices/PriceText.h"

#include <QStringList>
#include <vector>

namespace sorvanto {

class XlsxBook {
public:
    /// file: the whole zip.
    explicit XlsxBook(QByteArray file);

    PriceFault fault() const { return m_fault; }
    QStringList sheets() const;
    ReadTable read(int sheet, const PriceProgress& goesOn = {}) const;

private:
    struct Sheet {
        QString name;
        QByteArray path;  ///< in the zip
    };
    PriceFault readSheets();
    PriceFault readStrings();

    QByteArray m_file;
    std::vector<Sheet> m_sheets;
    QStringList m_strings;  ///< shared by all sheets
    PriceFault m_fault;
};

}  // namespace sorvanto
