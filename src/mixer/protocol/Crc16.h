// The check of a frame: CRC-16 with the polynomial 0x1021, started at 0xFFFF, most significant bit first.
#pragma once

#include <QByteArrayView>
#include <cstdint>

namespace sorvanto::protocol {

/// Finds every change of up to three bits and every burst of up to sixteen in what it is taken over. The
/// check itself travels as text, where one changed bit can be several of it: of changes that meet both, up to
/// two bits are surely found.
/// Of the nine characters "123456789" it is 0x29B1.
std::uint16_t crc16(QByteArrayView bytes);

}  // namespace sorvanto::protocol
