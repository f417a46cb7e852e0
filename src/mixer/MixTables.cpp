// Contents of the mixer's tables.
#include "mixer/MixTables.h"

#include <QList>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using protocol::Step;

/// Presets by type code, as for a small jar. The arm lifts slowly first, so that powder is wetted before
/// it is thrown, and slowly at the end, so that air gets out.
const std::vector<Step>& presetOfType(int type) {
    static const std::array<std::vector<Step>, 9> presets{{
        {},
        /* Cream       */ {{960, 900, 30, 0}, {1200, 1800, 120, 0}, {1440, 2196, 60, 0}, {720, 900, 30, 0}},
        /* Ointment    */ {{720, 840, 60, 0}, {1200, 1596, 180, 0}, {720, 900, 60, 0}},
        /* Gel         */ {{480, 600, 60, 0}, {720, 1200, 240, 0}, {480, 480, 120, 0}},
        /* Lotion      */ {{1200, 1200, 30, 0}, {1440, 1800, 90, 0}, {960, 1200, 30, 0}},
        /* Suspension  */ {{1200, 1500, 0, 6}, {1440, 2400, 120, 0}, {1200, 1200, 0, 4}},
        /* Paste       */ {{480, 600, 60, 0}, {960, 1200, 240, 0}, {960, 1500, 180, 0}, {480, 600, 60, 0}},
        /* Powder      */ {{480, 480, 0, 8}, {720, 900, 120, 0}},
        /* Suppository */ {{720, 720, 45, 0}, {960, 1200, 120, 0}, {480, 480, 45, 0}},
    }};
    static const std::vector<Step> none;
    return type >= 1 && type <= 8 ? presets[static_cast<std::size_t>(type)] : none;
}

}  // namespace

QStringList mixTypeNames() {
    return {u"Combination"_s,      u"Cream"_s,      u"Ointment"_s, u"Gel"_s,
            u"Lotion"_s,           u"Suspension"_s, u"Paste"_s,    u"Powder Blend"_s,
            u"Suppository Base"_s, u"Custom"_s};
}

QStringList jarNames() {
    QStringList names{QString()};
    for (const int volume : {15, 20, 30, 50, 100, 200, 300, 500, 1000})
        names << u"%1 ml"_s.arg(volume);
    return names;
}

QStringList mixTimeTexts() {
    struct Stretch {
        int step, end;
    };
    QStringList times{timeText(0)};
    int seconds = 0;
    for (const Stretch stretch : {Stretch{1, 20}, {2, 120}, {5, 600}, {30, 2940}, {60, 3600}}) {
        while (seconds < stretch.end)
            times << timeText(seconds += stretch.step);
    }
    return times;
}

QString timeText(int seconds) {
    return u"%1:%2:%3"_s.arg(seconds / 3600, 2, 10, '0'_L1)
        .arg(seconds / 60 % 60, 2, 10, '0'_L1)
        .arg(seconds % 60, 2, 10, '0'_L1);
}

QString shortTime(int seconds) {
    const QString full = timeText(seconds);
    return seconds < 3600 ? full.mid(3) : full;
}

int secondsOfTime(const QString& text) {
    const QStringList parts = text.split(':'_L1);
    if (parts.size() != 3)
        return -1;
    int seconds = 0;
    for (const QString& part : parts) {
        bool isNumber = false;
        const int value = part.toInt(&isNumber);
        if (!isNumber || value < 0 || value > 99)
            return -1;
        seconds = seconds * 60 + value;
    }
    return seconds;
}

int recommendedMixRpm(int jar) {
    switch (jar) {
    case 1:
    case 2:
    case 3:
        return 2496;
    case 4:
    case 5:
    case 6:
        return 2292;
    case 7:
    case 8:
        return 2100;
    case 9:
        return 1992;
    default:
        return protocol::highestMixRpm;
    }
}

std::vector<Step> presetSteps(int type, int jar) {
    std::vector<Step> steps = presetOfType(type);
    for (Step& step : steps)
        step.mixRpm = std::min(step.mixRpm, recommendedMixRpm(jar));
    return steps;
}

}  // namespace sorvanto
