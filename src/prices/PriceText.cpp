#include "prices/PriceText.h"

#include <QMap>
#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr qsizetype sampledBytes = 64'000;
constexpr qsizetype sampledText = 32'000;
constexpr int sampledRows = 200;
// Where none of the usual four parts a row: signs that hardly stand in names, and the two that were made for it.
constexpr QStringView rareSeparators = u"~^\u00A6\u00A7\u001F\u001E:=*!#";

// Without a mark: Latin letters leave every other byte of UTF-16 empty.
bool halfEmpty(const QByteArray& bytes, qsizetype first) {
    const qsizetype length = std::min(bytes.size(), sampledBytes) / 2 * 2;
    qsizetype empty = 0;
    for (qsizetype at = first; at < length; at += 2)
        empty += bytes[at] == 0 ? 1 : 0;
    return length >= 2 && empty * 2 > length / 2;
}

bool isUtf8(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    Q_UNUSED(text)
    return !decoder.hasError();
}

// Where letters beyond the Latin ones stand beside each other, words are written in them.
bool isCyrillic(const QByteArray& bytes) {
    const auto letter = [&](qsizetype at) {
        const auto byte = static_cast<unsigned char>(bytes[at]);
        return byte >= 0xC0 || byte == 0xA8 || byte == 0xB8;
    };
    int together = 0, alone = 0;
    for (qsizetype at = 0; at < std::min(bytes.size(), sampledBytes); ++at) {
        if (!letter(at))
            continue;
        const bool beside = (at > 0 && letter(at - 1)) || (at + 1 < bytes.size() && letter(at + 1));
        ++(beside ? together : alone);
    }
    return together > alone;
}

const char* nameOf(TextEncoding encoding) {
    constexpr std::array names{"UTF-8", "UTF-16LE", "UTF-16BE", "windows-1252", "windows-1251"};
    return names[static_cast<std::size_t>(encoding)];
}

/// Takes cells off a text, one after the other.
class CellReader {
public:
    CellReader(const QString& text, QChar separator) : m_text(text), m_separator(separator) {}

    bool atEnd() const { return m_at >= m_text.size(); }
    double done() const { return static_cast<double>(m_at) / static_cast<double>(m_text.size()); }
    /// Whether a quotation mark was left open.
    bool isOpen() const { return m_open; }

    PriceRow row() {
        PriceRow cells;
        if (atLineEnd()) {
            skipLineEnd();
            return cells;
        }
        while (true) {
            cells.push_back({cell(), false});
            if (atEnd() || m_text[m_at] != m_separator)
                break;
            ++m_at;
        }
        skipLineEnd();
        return cells;
    }

private:
    bool atLineEnd() const { return !atEnd() && (m_text[m_at] == u'\n' || m_text[m_at] == u'\r'); }
    void skipLineEnd() {
        if (atEnd())
            return;
        m_at += m_text[m_at] == u'\r' && m_at + 1 < m_text.size() && m_text[m_at + 1] == u'\n' ? 2 : 1;
    }
    QString cell() {
        QString text = !atEnd() && m_text[m_at] == u'"' ? quoted() : QString();
        const qsizetype from = m_at;
        while (!atEnd() && !atLineEnd() && m_text[m_at] != m_separator)
            ++m_at;
        return text += QStringView(m_text).mid(from, m_at - from);
    }
    QString quoted() {
        QString text;
        while (true) {
            const qsizetype end = m_text.indexOf(u'"', ++m_at);
            m_open = end < 0;
            text += QStringView(m_text).mid(m_at, m_open ? -1 : end - m_at);
            m_at = m_open ? m_text.size() : end + 1;
            if (atEnd() || m_text[m_at] != u'"')
                return text;
            text += u'"';
        }
    }

    const QString& m_text;
    QChar m_separator;
    qsizetype m_at = 0;
    bool m_open = false;
};

constexpr QStringView announcement = u"sep=";

bool announcesSeparator(QStringView text) {
    return text.startsWith(announcement, Qt::CaseInsensitive) && text.size() > announcement.size() &&
           (text.size() == announcement.size() + 1 || text[announcement.size() + 1] == u'\n' ||
            text[announcement.size() + 1] == u'\r');
}

/// How many rows of the sample have the most frequent count of cells, and what that is.
std::pair<int, int> evenRows(const QString& sample, QChar separator) {
    CellReader reader(sample, separator);
    QMap<int, int> rowsByCells;
    for (int row = 0; row < sampledRows && !reader.atEnd(); ++row) {
        if (const auto cells = static_cast<int>(reader.row().size()); cells > 1)
            ++rowsByCells[cells];
    }
    std::pair<int, int> best{0, 0};
    for (auto each = rowsByCells.cbegin(); each != rowsByCells.cend(); ++each)
        best = std::max(best, {each.value(), each.key()});
    return best;
}

/// The sign that makes the most rows alike; none where no row has two cells.
std::optional<QChar> mostEven(const QString& sample, QStringView separators) {
    std::optional<QChar> best;
    std::pair<int, int> most{0, 0};
    for (const QChar separator : separators) {
        if (const auto even = evenRows(sample, separator); even > most) {
            most = even;
            best = separator;
        }
    }
    return best;
}

}  // namespace

TextEncoding detectedEncoding(const QByteArray& bytes) {
    if (bytes.startsWith("\xFF\xFE") || halfEmpty(bytes, 1))
        return TextEncoding::utf16Little;
    if (bytes.startsWith("\xFE\xFF") || halfEmpty(bytes, 0))
        return TextEncoding::utf16Big;
    if (isUtf8(bytes))
        return TextEncoding::utf8;
    return isCyrillic(bytes) ? TextEncoding::windows1251 : TextEncoding::windows1252;
}

QString decoded(const QByteArray& bytes, TextEncoding encoding) {
    QStringDecoder decoder(nameOf(encoding));
    QString text = decoder(bytes);
    return text.startsWith(QChar::ByteOrderMark) ? text.mid(1) : text;
}

QChar detectedSeparator(const QString& text) {
    if (announcesSeparator(text))
        return text[announcement.size()];
    const QString sample = text.left(sampledText);
    return mostEven(sample, u";\t|,"_s).value_or(mostEven(sample, rareSeparators).value_or(u','));
}

ReadTable readWhole(PriceTable table) {
    const bool empty = table.columns() == 0;
    return {std::move(table), empty ? PriceFault::empty : PriceFault::none, {}};
}

ReadTable separated(const QString& text, QChar separator, const PriceProgress& goesOn) {
    PriceTable table;
    CellReader reader(text, separator);
    if (announcesSeparator(text)) {
        reader.row();
        table.rows.emplace_back();
    }
    while (!reader.atEnd()) {
        const auto rows = static_cast<int>(table.rows.size());
        if (goesOn && rows % rowsBetweenAsks == 0 && !goesOn(reader.done()))
            return {{}, PriceFault::stopped, {}};
        PriceRow row = reader.row();
        if (reader.isOpen())
            return {{}, PriceFault::openQuotation, QString::number(rows + 1)};
        if (rows >= mostPriceRows || row.size() > static_cast<std::size_t>(mostPriceColumns))
            return {{}, PriceFault::tooLarge, {}};
        table.rows.push_back(std::move(row));
    }
    return readWhole(std::move(table));
}

}  // namespace sorvanto
