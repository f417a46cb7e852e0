#include "prices/XlsBook.h"

#include "prices/BiffRecords.h"
#include "prices/WorkbookParts.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr std::uint16_t version8 = 0x0600;
constexpr int recordsAtOnce = 4096;

/// Fills a table with the cells of the records.
class SheetReader {
public:
    explicit SheetReader(const QStringList& strings) : m_strings(strings) {}

    PriceTable table;

    /// False where a cell lies beyond the bounds.
    bool take(const BiffRecord& record) {
        switch (record.kind) {
        case Biff::labelShared:
            return put(record, {m_strings.value(static_cast<qsizetype>(record.longWord(6))), false});
        case Biff::number:
            return put(record, number(record.real(6)));
        case Biff::rk:
            return put(record, number(record.packed(6)));
        case Biff::label:
        case Biff::richString:
            return put(record, {record.characters(8, record.word(6)), false});
        case Biff::formula:
            return takeFormula(record);
        case Biff::string:  // what the formula before it came to
            return put(m_formula, {record.characters(2, record.word(0)), false});
        case Biff::mulRk:
            return takeNumbers(record);
        default:
            return true;
        }
    }

private:
    static PriceCell number(double value) { return {numberInCell(value), true}; }
    bool put(const BiffRecord& record, PriceCell cell) {
        return putCell(table, record.word(0), record.word(2), std::move(cell));
    }
    bool takeFormula(const BiffRecord& record) {
        m_formula = record;
        const bool isNumber = record.word(12) != 0xFFFF;
        return !isNumber || put(record, number(record.real(6)));
    }
    bool takeNumbers(const BiffRecord& record) {
        int column = record.word(2);
        for (qsizetype at = 4; at + 6 < record.data.size(); at += 6) {
            if (!putCell(table, record.word(0), column++, number(record.packed(at + 2))))
                return false;
        }
        return true;
    }

    const QStringList& m_strings;
    BiffRecord m_formula;
};

}  // namespace

XlsBook::XlsBook(const QByteArray& file) {
    WorkbookPart part = streamOf(file, "Workbook");
    m_fault = part.fault;
    if (m_fault == PriceFault::notATable && streamOf(file, "Book").fault == PriceFault::none)
        m_fault = PriceFault::oldWorkbook;
    else if (m_fault == PriceFault::notATable && streamOf(file, "EncryptedPackage").fault == PriceFault::none)
        m_fault = PriceFault::locked;
    m_stream = std::move(part.bytes);
    if (m_fault == PriceFault::none)
        readGlobals();
}

void XlsBook::readGlobals() {
    BiffReader reader(m_stream, 0);
    std::vector<BiffRecord> strings;
    bool amongStrings = false;
    auto record = reader.next();
    if (!record || record->kind != Biff::beginOfPart)
        m_fault = PriceFault::broken;
    else if (record->word(0) != version8)
        m_fault = PriceFault::oldWorkbook;
    while (m_fault == PriceFault::none && (record = reader.next()) && record->kind != Biff::endOfPart) {
        amongStrings =
            record->kind == Biff::sharedStrings || (amongStrings && record->kind == Biff::continued);
        if (amongStrings)
            strings.push_back(*record);
        if (record->kind == Biff::filePass)
            m_fault = PriceFault::locked;
        const bool hasCells = record->kind == Biff::boundSheet && record->byte(5) == 0;
        if (hasCells) {
            m_sheets << record->characters(7, record->byte(6));
            m_starts.push_back(static_cast<qsizetype>(record->longWord(0)));
        }
    }
    if (m_fault == PriceFault::none && (reader.isCut() || m_sheets.isEmpty()))
        m_fault = PriceFault::broken;
    m_strings = sharedStringsIn(strings);
}

ReadTable XlsBook::read(int sheet, const PriceProgress& goesOn) const {
    BiffReader reader(m_stream, m_starts.at(static_cast<std::size_t>(sheet)));
    SheetReader cells(m_strings);
    int depth = 0;  // a drawing is a part within the sheet's
    for (int count = 0;; ++count) {
        const auto record = reader.next();
        if (!record || (count == 0 && record->kind != Biff::beginOfPart))
            return {{}, PriceFault::broken, {}};
        if (goesOn && count % recordsAtOnce == 0 && !goesOn(-1))
            return {{}, PriceFault::stopped, {}};
        if (record->kind == Biff::beginOfPart)
            ++depth;
        if (record->kind == Biff::endOfPart && --depth == 0)
            break;
        if (depth == 1 && !cells.take(*record))
            return {{}, PriceFault::tooLarge, {}};
    }
    return readWhole(std::move(cells.table));
}

}  // namespace sorvanto
