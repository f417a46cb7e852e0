// Tables of a workbook of zipped XML (.xlsx).
#pragma once

#include "prices/Workbook.h"

#include <vector>

namespace sorvanto {

class XlsxBook : public Workbook {
public:
    /// file: the whole zip.
    explicit XlsxBook(QByteArray file);

    ReadTable read(int sheet, const PriceProgress& goesOn = {}) const override;

private:
    PriceFault readSheets();
    PriceFault readStrings();

    QByteArray m_file;
    std::vector<QByteArray> m_paths;  ///< of each sheet in the zip
};

}  // namespace sorvanto
