// Frames to text and back; a text is accepted only when it is exactly what encode() would have written.
#include "mixer/protocol/Frame.h"

#include "mixer/protocol/Crc16.h"

#include <algorithm>

namespace sorvanto::protocol {
namespace {

constexpr char hexDigits[] = "0123456789ABCDEF";
constexpr int checkLength = 7;  // "*", two digits of the length, four of the CRC

QByteArray hex(unsigned value, int digits) {
    QByteArray text(digits, '0');
    for (int i = digits - 1; i >= 0; --i, value >>= 4)
        text[i] = hexDigits[value & 0xF];
    return text;
}

/// Upper-case hexadecimal only; -1 when it is anything else.
int fromHex(QByteArrayView text) {
    int value = 0;
    for (const char c : text) {
        const char* digit = std::find(hexDigits, hexDigits + 16, c);
        if (digit == hexDigits + 16)
            return -1;
        value = value * 16 + static_cast<int>(digit - hexDigits);
    }
    return value;
}

bool isFieldCharacter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '.' ||
           c == '-' || c == ':' || c == '_';
}

bool isKind(const QByteArray& kind) {
    return kind.size() >= 2 && kind.size() <= 8 &&
           std::all_of(kind.begin(), kind.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}

bool isField(const QByteArray& field) {
    return !field.isEmpty() && field.size() <= 24 &&
           std::all_of(field.begin(), field.end(), isFieldCharacter);
}

}  // namespace

QByteArray encode(const Frame& frame) {
    if (!isKind(frame.kind) || !std::all_of(frame.fields.begin(), frame.fields.end(), isField))
        return {};
    QByteArray text(1, static_cast<char>(frame.direction));
    text += hex(frame.sequence, 2) + ' ' + frame.kind;
    for (const QByteArray& field : frame.fields)
        text += ' ' + field;
    text += '*' + hex(static_cast<unsigned>(text.size()), 2) + hex(crc16(text), 4) + '\n';
    return text.size() <= longestFrame ? text : QByteArray();
}

std::optional<Frame> decode(const QByteArray& line) {
    const auto head = line.size() - checkLength;
    if (head < 6 || line.size() >= longestFrame || line[head] != '*')
        return std::nullopt;
    const QByteArrayView body = QByteArrayView(line).first(head);
    // The length finds every byte lost or doubled; by the CRC alone one in 65,536 of them would pass.
    if (fromHex(QByteArrayView(line).sliced(head + 1, 2)) != head ||
        fromHex(QByteArrayView(line).last(4)) != crc16(body))
        return std::nullopt;

    Frame frame;
    if (body[0] == static_cast<char>(Direction::ToProgram))
        frame.direction = Direction::ToProgram;
    else if (body[0] != static_cast<char>(Direction::ToMixer))
        return std::nullopt;
    const int sequence = fromHex(body.sliced(1, 2));
    if (sequence < 0 || body[3] != ' ')
        return std::nullopt;
    frame.sequence = static_cast<std::uint8_t>(sequence);
    frame.fields = body.sliced(4).toByteArray().split(' ');
    frame.kind = frame.fields.takeFirst();
    if (!isKind(frame.kind) || !std::all_of(frame.fields.begin(), frame.fields.end(), isField))
        return std::nullopt;
    return frame;
}

}  // namespace sorvanto::protocol
