#include "reports/RecallWorkbook.h"

#include "platform/report/CellValue.h"
#include "platform/report/XlsWorkbook.h"
#include "reports/RecallTexts.h"
#include "reports/rptRecall.h"
#include "shared/Translator.h"

#include <QVariant>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::CellStyle;
using platform::XlsWorkbook;

constexpr int twipsOfLetter = 125, narrowest = 1100, widest = 6000;

/// What is too long for a cell ends in a sign that it goes on.
QString fitting(const QString& text) {
    return text.size() <= XlsWorkbook::mostCharacters
               ? text
               : text.left(XlsWorkbook::mostCharacters - 1) + u'\u2026';
}

/// How far the rows of both sheets are.
class Progress {
public:
    Progress(const std::function<bool(double)>& goesOn, std::size_t rows) : m_goesOn(goesOn), m_all(rows) {}

    bool stopped() const { return m_stopped; }
    /// To be called before each row; false when it is not to be written.
    bool next() {
        if (m_goesOn && m_done % rowsBetween == 0 && !m_stopped)
            m_stopped = !m_goesOn(static_cast<double>(m_done) / static_cast<double>(m_all));
        ++m_done;
        return !m_stopped;
    }

private:
    static constexpr std::size_t rowsBetween = 100;
    const std::function<bool(double)>& m_goesOn;
    std::size_t m_all, m_done = 0;
    bool m_stopped = false;
};

/// What stands above the rows of each sheet.
QStringList headLines(const RecallList& list) {
    QStringList lines{translated(u"Recall List"_s) + u": "_s + recallTitle(list)};
    lines += recallIngredients(list);
    lines << fitting(recallFormulas(list)) << recallDays(list.days) << recallSearched(list)
          << recallTotals(list.recall) << recallGaps(list);
    lines.removeAll(QString());
    return lines;
}

/// Writes one sheet: what the list is about, headings, rows.
class SheetWriter {
public:
    SheetWriter(XlsWorkbook& book, const QStringList& lines, Progress& progress) : m_book(book) {
        CellStyle bold, date;
        bold.bold = true;
        date.date = platform::DateFormat::Date;
        m_bold = book.addStyle(bold);
        m_date = book.addStyle(date);
        for (const QString& text : lines) {
            if (!progress.next())
                return;
            m_book.addText(m_row, 0, m_row == 0 ? m_bold : 0, text);
            ++m_row;
        }
        ++m_row;
    }

    void writeHeadings(const QStringList& headings) {
        m_table.headingRow = m_row;
        m_table.frozen = true;
        m_table.lastColumn = static_cast<int>(headings.size()) - 1;
        for (const QString& text : headings)
            put(m_bold, text);
        endRow();
    }
    void text(const QString& text) { put(0, text); }
    void number(double number) { m_book.addNumber(m_row, m_column++, 0, number); }
    void date(const QDateTime& date) {
        const auto days = platform::cellNumber(QDateTime(date.date(), QTime(0, 0), Qt::UTC));
        if (!date.isValid() || !days)
            return put(0, recallDay(date));
        m_book.addNumber(m_row, m_column, m_date, *days);
        widen(10);
        ++m_column;
    }
    void endRow() {
        m_table.lastFiltered = m_row++;
        m_column = 0;
    }
    void finish() {
        for (std::size_t column = 0; column < m_widths.size(); ++column)
            m_book.setColumnWidth(static_cast<int>(column), m_widths[column]);
        m_book.setTable(m_table);
    }

private:
    void put(std::uint16_t style, const QString& text) {
        const QString cell = platform::cellText(text);
        m_book.addText(m_row, m_column, style, cell);
        widen(cell.size());
        ++m_column;
    }
    void widen(qsizetype letters) {
        if (m_column >= static_cast<int>(m_widths.size()))
            m_widths.resize(static_cast<std::size_t>(m_column) + 1, narrowest);
        int& width = m_widths[static_cast<std::size_t>(m_column)];
        width = std::max(width, static_cast<int>(std::min<qsizetype>(letters * twipsOfLetter, widest)));
    }

    XlsWorkbook& m_book;
    platform::xls::Table m_table;
    std::vector<int> m_widths;
    std::uint16_t m_bold = 0, m_date = 0;
    int m_row = 0, m_column = 0;
};

void writeBatches(SheetWriter& sheet, const Recall& recall, Progress& progress) {
    sheet.writeHeadings({translated(u"Date"_s), translated(u"Formula"_s), translated(u"Strength"_s),
                         translated(u"Lot"_s), translated(u"Remark"_s), translated(u"Quantity"_s),
                         translated(u"Units"_s), translated(u"Logged"_s), translated(u"Verified"_s)});
    for (const auto* part : {&recall.batches, &recall.uncertain}) {
        for (const TracedBatch& batch : *part) {
            if (!progress.next())
                return;
            sheet.date(batch.date);
            sheet.text(batch.formula);
            sheet.text(batch.strength);
            sheet.text(batch.lot);
            sheet.text(reasonOf(batch));
            sheet.number(batch.quantity);
            sheet.text(batch.units);
            sheet.text(batch.initials);
            sheet.text(batch.verified);
            sheet.endRow();
        }
    }
}

void writePrescriptions(SheetWriter& sheet, const Recall& recall, Progress& progress) {
    sheet.writeHeadings({translated(u"Patient"_s), translated(u"Phone"_s), translated(u"Date"_s),
                         translated(u"Drug Name"_s), translated(u"Quantity"_s), translated(u"Units"_s),
                         translated(u"Lot"_s), translated(u"Doctor"_s)});
    for (const TracedPrescription& one : recall.prescriptions) {
        if (!progress.next())
            return;
        sheet.text(one.patientName);
        sheet.text(one.phone);
        sheet.date(one.date);
        sheet.text(one.drug);
        sheet.number(one.quantity);
        sheet.text(one.units);
        sheet.text(one.batchLot);
        sheet.text(one.doctor);
        sheet.endRow();
    }
}

}  // namespace

QByteArray recallWorkbook(const RecallList& list, const std::function<bool(double)>& goesOn) {
    const Recall& recall = list.recall;
    const QStringList lines = headLines(list);
    Progress progress(goesOn, recall.batches.size() + recall.uncertain.size() + recall.prescriptions.size() +
                                  2 * static_cast<std::size_t>(lines.size()));
    XlsWorkbook book(translated(u"Batches"_s));
    const auto write = [&](void (*rows)(SheetWriter&, const Recall&, Progress&)) {
        SheetWriter sheet(book, lines, progress);
        rows(sheet, recall, progress);
        sheet.finish();
    };
    write(writeBatches);
    book.addSheet(translated(u"Prescriptions"_s));
    write(writePrescriptions);
    return progress.stopped() ? QByteArray() : book.bytes();
}

}  // namespace sorvanto
