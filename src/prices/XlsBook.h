// Tables of a binary workbook (.xls as written since 1997).
#pragma once

#include "prices/Workbook.h"

#include <vector>

namespace sorvanto {

class XlsBook : public Workbook {
public:
    /// file: the whole compound file.
    explicit XlsBook(const QByteArray& file);

    ReadTable read(int sheet, const PriceProgress& goesOn = {}) const override;

private:
    void readGlobals();

    QByteArray m_stream;
    std::vector<qsizetype> m_starts;  ///< of each sheet in the stream
};

}  // namespace sorvanto
