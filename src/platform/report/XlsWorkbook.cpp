// The records of the workbook in the order that readers ask for, and the container around them.
#include "platform/report/XlsWorkbook.h"

#include "platform/basic/RuntimeError.h"
#include "platform/report/OleContainer.h"
#include "platform/report/XlsRecords.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

using namespace xls;

namespace {

constexpr int firstOwnFormat = 164;  // lower numbers are the application's own

void putFont(QByteArray& out, const CellStyle& style) {
    QByteArray data;
    for (const int word : {style.twips, style.italic ? 2 : 0, 0x7FFF, style.bold ? 700 : 400, 0})
        put16(data, word);
    put32(data, 0);
    record(out, Id::Font, data + shortText(style.family, false));
}

void putCellFormat(QByteArray& out, int font, int format, int typeAndParent, int align) {
    QByteArray data;
    put16(data, font >= 4 ? font + 1 : font);  // number 4 is never used
    put16(data, format);
    put16(data, typeAndParent);
    put8(data, align);
    put8(data, 0);
    put8(data, 0);
    put8(data, typeAndParent == 1 ? 0x1C : 0);  // number, font and alignment are the cell's own
    put32(data, 0);
    put32(data, 0);
    put16(data, 0x20C0);
    record(out, Xf, data);
}

}  // namespace

XlsWorkbook::XlsWorkbook(const QString& sheetName) : m_sheets{Sheet(sheetName)} { addStyle({}); }

std::uint16_t XlsWorkbook::addStyle(const CellStyle& style) {
    auto place = std::find(m_styles.begin(), m_styles.end(), style);
    if (place == m_styles.end())
        place = m_styles.insert(place, style);
    return static_cast<std::uint16_t>(place - m_styles.begin());
}

void XlsWorkbook::addText(int row, int column, std::uint16_t style, const QString& text) {
    if (text.size() > mostCharacters)
        throw RuntimeError(error::overflow, u"A text of the report has more than 32,767 characters, which a "
                                            u"spreadsheet cell can't hold: \"%1 ...\""_s.arg(text.left(40)));
    sheet().addText(row, column, style, textNumber(column, text));
    ++m_textUses;
}

/// Number among the shared texts. Columns often repeat what stands above, which is found without a search.
std::uint32_t XlsWorkbook::textNumber(int column, const QString& text) {
    const auto index = static_cast<std::size_t>(column);
    if (index >= m_above.size())
        m_above.resize(index + 1);
    Numbered& above = m_above[index];
    if (above.number < 0 || above.text != text) {
        std::uint32_t& place = m_textIndex[text];
        if (place == 0) {
            m_texts.push_back(text);
            place = static_cast<std::uint32_t>(m_texts.size());
        }
        above = {text, std::int64_t{place} - 1};
    }
    return static_cast<std::uint32_t>(above.number);
}

QByteArray XlsWorkbook::sharedTexts() const {
    QByteArray out;
    {
        qsizetype size = 0;
        for (const QString& text : m_texts)
            size += 3 + text.size() * 2;
        out.reserve(size);
        LongRecord texts(out, SharedTexts);
        QByteArray counts;
        put32(counts, m_textUses);
        put32(counts, static_cast<std::uint32_t>(m_texts.size()));
        texts.append(counts);
        for (const QString& text : m_texts)
            texts.appendText(text);
    }
    return out;
}

void XlsWorkbook::putStyles(QByteArray& out) const {
    // A font and, where it has one, a number format for each style; equal ones are few enough to repeat.
    for (const CellStyle& style : m_styles)
        putFont(out, style);
    for (std::size_t i = m_styles.size(); i < 4; ++i)
        putFont(out, {});
    for (std::size_t i = 0; i < m_styles.size(); ++i) {
        if (m_styles[i].numberFormat.isEmpty())
            continue;
        QByteArray data;
        put16(data, firstOwnFormat + static_cast<int>(i));
        record(out, Id::Format, data + shortText(m_styles[i].numberFormat, true));
    }
    for (int i = 0; i < styleFormats; ++i)
        putCellFormat(out, 0, 0, 0xFFF5, 0x20);
    for (std::size_t i = 0; i < m_styles.size(); ++i) {
        const CellStyle& style = m_styles[i];
        const int align = style.alignGiven ? 1 + static_cast<int>(style.align == TextAlign::Centre) +
                                                 2 * static_cast<int>(style.align == TextAlign::Right)
                                           : 0;
        const int index = static_cast<int>(i);
        const int format =
            style.numberFormat.isEmpty() ? static_cast<int>(style.date) : firstOwnFormat + index;
        constexpr int wrapped = 0x08, atBottom = 0x20;  // several lines stand at the top
        putCellFormat(out, index, format, 1, align | (style.wrapped ? wrapped : atBottom));
    }
    putWords(out, Style, {0x8000, 0xFF00});
}

QByteArray XlsWorkbook::globals() const {
    QByteArray out;
    putBof(out, 0x0005);
    putWords(out, CodePage, {1200});
    putWords(out, Window1, {0, 0, 0x4000, 0x2000, 0x0038, 0, 0, 1, 0x0258});
    putWords(out, DateMode, {0});
    putStyles(out);
    return out;
}

QByteArray XlsWorkbook::bytes() {
    std::vector<QByteArray> sheets, names;
    std::vector<Table> tables;
    int drawings = 0;
    qsizetype listSize = 0;
    for (Sheet& one : m_sheets) {
        tables.push_back(one.table());
        sheets.push_back(one.bytes(static_cast<int>(sheets.size()), drawings + 1));
        drawings += one.table().filtered() ? 1 : 0;
        names.push_back(shortText(one.name(), false));
        listSize += 4 + 6 + names.back().size();
    }
    const QByteArray texts = tableNames(tables) + sharedTexts();
    QByteArray stream = globals();
    // What still comes before the first sheet: the sheets' list, names and texts, and the end mark.
    qsizetype start = stream.size() + listSize + texts.size() + 4;
    for (std::size_t i = 0; i < sheets.size(); start += sheets[i++].size()) {
        QByteArray data;
        put32(data, static_cast<std::uint32_t>(start));
        put16(data, 0);
        record(stream, BoundSheet, data + names[i]);
    }
    stream += texts;
    record(stream, Eof, {});
    stream.reserve(start);
    for (const QByteArray& one : sheets)
        stream += one;
    return inOleContainer("Workbook"_ba, stream);
}

}  // namespace platform
