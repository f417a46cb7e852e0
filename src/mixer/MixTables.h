// The mixer's vocabulary: type names, jars, times, the speed that a jar allows, and the preset programmes.
#pragma once

#include "mixer/protocol/Messages.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace sorvanto {

inline constexpr int combinationType = 0;
inline constexpr int customType = 9;

/// Ten names; the position is the type code.
QStringList mixTypeNames();
/// Names by jar code from 1 to 9; element 0 is empty.
QStringList jarNames();
/// 256 times, "00:00:00" to "01:00:00": steps of one second to 20 s, two to 2 min, five to 10 min
/// (element 166), thirty to 49 min, one minute to the hour.
QStringList mixTimeTexts();

/// "00:06:00"; hours may exceed 99.
QString timeText(int seconds);
/// "06:00", or with hours where there are some.
QString shortTime(int seconds);
/// Seconds of hours:minutes:seconds; -1 when the text is no time.
int secondsOfTime(const QString& text);

/// Highest mix speed recommended for a jar, in revolutions a minute; for any other code the mixer's own.
int recommendedMixRpm(int jar);

/// The programme of a preset type (1 to 8) in a jar, within the jar's speed. Empty for any other type.
std::vector<protocol::Step> presetSteps(int type, int jar);

}  // namespace sorvanto
