// The check of a frame, bit by bit: a frame has under a hundred characters, a table would gain nothing.
#include "mixer/protocol/Crc16.h"

namespace sorvanto::protocol {

std::uint16_t crc16(QByteArrayView bytes) {
    std::uint16_t crc = 0xFFFF;
    for (const char byte : bytes) {
        crc = static_cast<std::uint16_t>(crc ^ (static_cast<unsigned char>(byte) << 8));
        for (int bit = 0; bit < 8; ++bit) {
            const bool carry = (crc & 0x8000) != 0;
            crc = static_cast<std::uint16_t>(crc << 1);
            if (carry)
                crc = static_cast<std::uint16_t>(crc ^ 0x1021);
        }
    }
    return crc;
}

}  // namespace sorvanto::protocol
