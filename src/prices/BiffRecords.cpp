#include "prices/BiffRecords.h"

#include <QStringList>
#include <bit>

namespace sorvanto {
namespace {

constexpr int wide = 1, withPhonetics = 4, withRuns = 8;  // flags of a string
constexpr int bytesOfRun = 4;

/// Bytes of records that belong together.
class Joined {
public:
    explicit Joined(const std::vector<BiffRecord>& records) : m_records(records) { toFilled(); }

    bool atEnd() const { return m_record >= m_records.size(); }
    /// Whether the next byte is the first of a record that continues another.
    bool atContinuation() const { return m_at == 0; }
    std::uint8_t byte() {
        if (atEnd())
            return 0;
        const std::uint8_t value = m_records[m_record].byte(m_at++);
        toFilled();
        return value;
    }
    std::uint16_t word() {
        const std::uint8_t low = byte();
        return static_cast<std::uint16_t>(low | byte() << 8);
    }
    std::uint32_t longWord() {
        const std::uint16_t low = word();
        return low | static_cast<std::uint32_t>(word()) << 16;
    }
    void skip(std::uint64_t count) {
        for (; count > 0 && !atEnd(); --count)
            byte();
    }

private:
    void toFilled() {
        while (!atEnd() && m_at >= m_records[m_record].data.size()) {
            ++m_record;
            m_at = 0;
        }
    }

    const std::vector<BiffRecord>& m_records;
    std::size_t m_record = 0;
    qsizetype m_at = 0;
};

QString stringAt(Joined& bytes) {
    int count = bytes.word();
    int flags = bytes.byte();
    const std::uint64_t runs = flags & withRuns ? bytes.word() : 0;
    const std::uint64_t phonetics = flags & withPhonetics ? bytes.longWord() : 0;
    QString text;
    for (; count > 0 && !bytes.atEnd(); --count) {
        if (bytes.atContinuation())
            flags = bytes.byte();
        text += QChar(flags & wide ? bytes.word() : bytes.byte());
    }
    bytes.skip(runs * bytesOfRun + phonetics);
    return text;
}

}  // namespace

double BiffRecord::real(qsizetype at) const {
    return std::bit_cast<double>(longWord(at) | static_cast<std::uint64_t>(longWord(at + 4)) << 32);
}

double BiffRecord::packed(qsizetype at) const {
    const std::uint32_t bits = longWord(at);
    const double value = bits & 2U ? static_cast<double>(static_cast<std::int32_t>(bits) >> 2)
                                   : std::bit_cast<double>(static_cast<std::uint64_t>(bits & ~3U) << 32);
    return bits & 1U ? value / 100 : value;
}

QString BiffRecord::characters(qsizetype at, int count) const {
    const bool two = byte(at++) & wide;
    QString text;
    for (; count > 0 && at < data.size(); --count, at += two ? 2 : 1)
        text += QChar(two ? word(at) : byte(at));
    return text;
}

std::optional<BiffRecord> BiffReader::next() {
    constexpr qsizetype head = 4;
    if (m_at < 0 || m_at + head > m_stream.size()) {
        m_cut = m_at != m_stream.size();
        return std::nullopt;
    }
    const BiffRecord start{{}, m_stream.sliced(m_at, head)};
    const qsizetype length = start.word(2);
    if (m_at + head + length > m_stream.size()) {
        m_cut = true;
        return std::nullopt;
    }
    const BiffRecord record{static_cast<Biff>(start.word(0)), m_stream.sliced(m_at + head, length)};
    m_at += head + length;
    return record;
}

QStringList sharedStringsIn(const std::vector<BiffRecord>& records) {
    Joined bytes(records);
    bytes.longWord();  // how often they are used
    const std::uint32_t count = bytes.longWord();
    QStringList strings;
    while (!bytes.atEnd() && static_cast<std::uint64_t>(strings.size()) < count)
        strings << stringAt(bytes);
    return strings;
}

}  // namespace sorvanto
