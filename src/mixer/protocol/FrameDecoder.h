// Finds the frames in a stream of bytes, whatever lies between them.
#pragma once

#include "mixer/protocol/Frame.h"

#include <vector>

namespace sorvanto::protocol {

/// A start character begins a frame anew wherever it comes, so that the decoder is in step again at the
/// first whole frame after any disturbance. Bytes outside a frame are dropped; memory stays bounded.
class FrameDecoder {
public:
    /// Only frames of that direction are given.
    explicit FrameDecoder(Direction direction) : m_direction(direction) {}

    /// The frames that these bytes complete, in order.
    std::vector<Frame> feed(const QByteArray& bytes);
    /// Forgets a frame begun.
    void reset() { m_line.clear(); }
    /// Frames begun and given up since the start: broken, too long, of a wrong check.
    int damaged() const { return m_damaged; }

private:
    void finishLine(std::vector<Frame>& frames);

    Direction m_direction;
    QByteArray m_line;
    int m_damaged = 0;
};

}  // namespace sorvanto::protocol
