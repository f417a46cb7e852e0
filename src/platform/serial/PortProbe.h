// Where the serial ports 1 to 4 are, and whether one can be opened at this moment.
#pragma once

#include <QString>

namespace platform {

/// Path of port n (1 to 4): "ports/COMn" beside the program where that exists, also as a link to nothing;
/// else the n-th of the devices ttyUSB*, ttyACM*, ttyS*, in this order, each kind by number. Empty when
/// there is none.
QString portPath(int n);
QString portPath(int n, const QString& deviceFolder);

/// Whether port n can be opened now. A port that a program (this one included) holds for itself can't.
/// Never throws.
bool portPresent(int n);

enum class PortState {
    Present,    ///< can be opened now
    Absent,     ///< nothing there, or something that is no serial device
    Held,       ///< some program has it for itself
    Forbidden,  ///< the user lacks the right; deviceGroup() names the group that has it
};

/// Opens and closes the device for a moment to see. Never throws.
PortState portState(const QString& path);

/// The group that may use the device, as "dialout"; empty when there is none but the administrator's.
QString deviceGroup(const QString& path);

/// Why the device can't be opened now, in English, ending with what to do; empty when it can be.
QString openRefusal(const QString& path);

}  // namespace platform
