// One frame on the line between program and mixer, as text: ">07 STATUS*0A4DDC".
// docs/mixer-protocol.md tells the whole protocol with worked frames.
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <cstdint>
#include <optional>

namespace sorvanto::protocol {

enum class Direction : char { ToMixer = '>', ToProgram = '<' };

struct Frame {
    Direction direction = Direction::ToMixer;
    /// Counted up by the program with each new command, from 255 on to 0; a reply bears its command's.
    std::uint8_t sequence = 0;
    QByteArray kind;        ///< 2 to 8 capital letters
    QByteArrayList fields;  ///< each 1 to 24 characters of A-Z, a-z, 0-9, point, minus, colon, underscore

    bool operator==(const Frame&) const = default;
};

/// Longest frame with its line end, in bytes.
inline constexpr int longestFrame = 96;

/// The bytes for the line. The frame has to be well formed: anything else is a mistake of the caller
/// and gives an empty array.
QByteArray encode(const Frame& frame);

/// One line without its line end, from the start character to the check. Nothing unless every rule holds.
std::optional<Frame> decode(const QByteArray& line);

}  // namespace sorvanto::protocol
