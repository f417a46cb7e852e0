// The check of a frame: CRC-16 with the polynomial 0x1021, started at 0xFFFF, most significant bit first. The toolkit's
// checksum starts at the other end.
#pragma once

#include <QByteArrayView>
#include <cstdint>

namespace sorvanto::protocol {

/// Finds every change of up to three bits, and every change within sixteen neighbouring bits, in the bytes that it is
/// taken over. The check travels as hexadecimal text, where one changed bit can change several bits of the number that
/// it stands for: of changes in both the bytes and the check, any two bits are found for certain.
/// Of the nine characters "123456789" it is 0x29B1.
std::uint16_t crc16(QByteArrayView bytes);

}  // namespace sorvanto::protocol
