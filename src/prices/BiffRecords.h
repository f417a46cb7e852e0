// The records of a binary workbook's stream, one after the other, and the pieces that their values are made of. Nothing
// reads beyond the record that it is in: what a broken file lacks reads as zeros.
#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <optional>
#include <vector>

namespace sorvanto {

enum class Biff : std::uint16_t {
    formula = 0x0006,
    endOfPart = 0x000A,
    filePass = 0x002F,
    continued = 0x003C,
    boundSheet = 0x0085,
    mulRk = 0x00BD,
    richString = 0x00D6,
    sharedStrings = 0x00FC,
    labelShared = 0x00FD,
    number = 0x0203,
    label = 0x0204,
    string = 0x0207,
    rk = 0x027E,
    beginOfPart = 0x0809
};

struct BiffRecord {
    Biff kind{};
    QByteArrayView data;

    std::uint8_t byte(qsizetype at) const {
        return at >= 0 && at < data.size() ? static_cast<std::uint8_t>(data[at]) : std::uint8_t{0};
    }
    std::uint16_t word(qsizetype at) const {
        return static_cast<std::uint16_t>(byte(at) | byte(at + 1) << 8);
    }
    std::uint32_t longWord(qsizetype at) const {
        return word(at) | static_cast<std::uint32_t>(word(at + 2)) << 16;
    }
    double real(qsizetype at) const;
    /// A number packed into four bytes.
    double packed(qsizetype at) const;
    /// Characters of one or two bytes, as the byte before them says.
    QString characters(qsizetype at, int count) const;
};

class BiffReader {
public:
    BiffReader(const QByteArray& stream, qsizetype at) : m_stream(stream), m_at(at) {}
    /// Nothing at the stream's end, and where a record goes beyond it.
    std::optional<BiffRecord> next();
    bool isCut() const { return m_cut; }

private:
    QByteArrayView m_stream;
    qsizetype m_at;
    bool m_cut = false;
};

/// The shared strings: a record and those that continue it, parted anywhere, within a string too.
QStringList sharedStringsIn(const std::vector<BiffRecord>& records);

}  // namespace sorvanto
