// The bytes of spreadsheet records: little-endian numbers, the texts in their two widths, and records
// that are too long for one and go on in others.
#pragma once

#include <QByteArray>
#include <QString>
#include <QtEndian>
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>

namespace platform::xls {

enum Id : std::uint16_t {
    Eof = 0x0A,
    Footer = 0x15,
    ExternSheet = 0x17,
    Name = 0x18,
    Selection = 0x1D,
    DateMode = 0x22,
    LeftMargin = 0x26,
    RightMargin = 0x27,
    TopMargin = 0x28,
    BottomMargin = 0x29,
    Continue = 0x3C,
    Window1 = 0x3D,
    Pane = 0x41,
    CodePage = 0x42,
    Font = 0x31,
    Object = 0x5D,
    ColInfo = 0x7D,
    SheetOptions = 0x81,
    BoundSheet = 0x85,
    FilterInfo = 0x9D,
    Setup = 0xA1,
    Xf = 0xE0,
    MergedCells = 0xE5,
    DrawingGroup = 0xEB,
    Drawing = 0xEC,
    SharedTexts = 0xFC,
    LabelShared = 0xFD,
    SupBook = 0x1AE,
    Dimensions = 0x200,
    Number = 0x203,
    Row = 0x208,
    Window2 = 0x23E,
    Rk = 0x27E,
    Style = 0x293,
    Format = 0x41E,
    Bof = 0x809
};

/// Most bytes of data in one record.
inline constexpr int mostData = 8224;

template <class Number>
void put(QByteArray& bytes, Number number) {
    static_assert(std::is_integral_v<Number>);
    const Number little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}
inline void put8(QByteArray& bytes, int number) { put(bytes, static_cast<std::uint8_t>(number)); }
inline void put16(QByteArray& bytes, int number) { put(bytes, static_cast<std::uint16_t>(number)); }
inline void put32(QByteArray& bytes, std::uint32_t number) { put(bytes, number); }
inline std::uint64_t bitsOf(double number) {
    std::uint64_t bits;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}
inline void putDouble(QByteArray& bytes, double number) { put(bytes, bitsOf(number)); }

/// A record of a few numbers that are put together beforehand, without a text of bytes in between.
template <class... Numbers>
void plainRecord(std::string& out, Id id, Numbers... numbers) {
    constexpr std::size_t size = (sizeof(Numbers) + ...);
    std::array<char, 4 + size> bytes;
    char* place = bytes.data();
    const auto add = [&place](auto number) {
        const auto little = qToLittleEndian(number);
        std::memcpy(place, &little, sizeof little);
        place += sizeof little;
    };
    add(static_cast<std::uint16_t>(id));
    add(static_cast<std::uint16_t>(size));
    (add(numbers), ...);
    out.append(bytes.data(), bytes.size());
}

inline void record(QByteArray& out, Id id, const QByteArray& data) {
    put16(out, id);
    put16(out, static_cast<int>(data.size()));
    out.append(data);
}

inline void putWords(QByteArray& out, Id id, std::initializer_list<int> words) {
    QByteArray data;
    for (const int word : words)
        put16(data, word);
    record(out, id, data);
}

/// Begin of the workbook (5) or of a sheet (16).
inline void putBof(QByteArray& out, int kind) {
    QByteArray data;
    for (const int word : {0x0600, kind, 0x0DBB, 0x07CC})
        put16(data, word);
    put32(data, 0);
    put32(data, 6);
    record(out, Bof, data);
}

/// Whether one byte a character is enough.
inline bool narrow(const QString& text) {
    for (const QChar character : text) {
        if (character.unicode() > 0xFF)
            return false;
    }
    return true;
}

/// Adds characters alone, in one or two bytes each.
inline void putCharacters(QByteArray& bytes, QStringView text, bool oneByte) {
    const qsizetype start = bytes.size();
    bytes.resize(start + text.size() * (oneByte ? 1 : 2));
    char* place = bytes.data() + start;
    for (const QChar character : text) {
        *place++ = static_cast<char>(character.unicode() & 0xFF);
        if (!oneByte)
            *place++ = static_cast<char>(character.unicode() >> 8);
    }
}

/// A text with a count of 8 or 16 bits in front, as fonts, formats and sheet names hold it.
inline QByteArray shortText(const QString& text, bool wideCount) {
    QByteArray bytes;
    const bool oneByte = narrow(text);
    if (wideCount)
        put16(bytes, static_cast<int>(text.size()));
    else
        put8(bytes, static_cast<int>(text.size()));
    put8(bytes, oneByte ? 0 : 1);
    putCharacters(bytes, text, oneByte);
    return bytes;
}

/// Data that goes on in further records where one is full.
class LongRecord {
public:
    LongRecord(QByteArray& out, Id id) : m_out(out), m_id(id) { m_data.reserve(mostData); }
    ~LongRecord() { flush(); }
    LongRecord(const LongRecord&) = delete;
    LongRecord& operator=(const LongRecord&) = delete;

    void append(const QByteArray& data) { m_data.append(data); }

    /// A shared text: its count and width stay together; its characters may be split between two of them,
    /// and the width is then said again.
    void appendText(const QString& text) {
        const bool oneByte = narrow(text);
        if (m_data.size() + 3 > mostData)
            flush();
        put16(m_data, static_cast<int>(text.size()));
        put8(m_data, oneByte ? 0 : 1);
        QStringView rest = text;
        while (!rest.isEmpty()) {
            const qsizetype room = (mostData - m_data.size()) / (oneByte ? 1 : 2);
            if (room == 0) {
                flush();
                put8(m_data, oneByte ? 0 : 1);
                continue;
            }
            const qsizetype count = std::min(room, rest.size());
            putCharacters(m_data, rest.first(count), oneByte);
            rest = rest.sliced(count);
        }
    }

private:
    void flush() {
        record(m_out, m_id, m_data);
        m_id = Continue;
        m_data.resize(0);  // its room stays
    }

    QByteArray& m_out;
    QByteArray m_data;
    Id m_id;
};

}  // namespace platform::xls
