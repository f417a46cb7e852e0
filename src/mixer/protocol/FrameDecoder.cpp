// The search for frames in a stream of bytes.
#include "mixer/protocol/FrameDecoder.h"

namespace sorvanto::protocol {

std::vector<Frame> FrameDecoder::feed(const QByteArray& bytes) {
    std::vector<Frame> frames;
    for (const char byte : bytes) {
        const bool isStart =
            byte == static_cast<char>(Direction::ToMixer) || byte == static_cast<char>(Direction::ToProgram);
        if (isStart) {
            if (!m_line.isEmpty())
                ++m_damaged;
            m_line = QByteArray(1, byte);
        } else if (m_line.isEmpty()) {
            continue;
        } else if (byte == '\n') {
            finishLine(frames);
        } else if (byte < ' ' || byte > '~' || m_line.size() + 1 >= longestFrame) {
            ++m_damaged;
            m_line.clear();
        } else {
            m_line += byte;
        }
    }
    return frames;
}

void FrameDecoder::finishLine(std::vector<Frame>& frames) {
    if (const std::optional<Frame> frame = decode(m_line); !frame)
        ++m_damaged;
    else if (frame->direction == m_direction)
        frames.push_back(*frame);
    m_line.clear();
}

}  // namespace sorvanto::protocol
