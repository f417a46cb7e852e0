// The customs that default date texts and money texts follow.
#include "platform/basic/SystemLocale.h"

namespace platform {
namespace {

std::optional<QLocale>& chosenLocale() {
    static std::optional<QLocale> locale;
    return locale;
}

}  // namespace

QLocale systemLocale() {
    const QLocale locale = chosenLocale().value_or(QLocale::system());
    return locale.language() == QLocale::C ? QLocale(QLocale::English, QLocale::UnitedStates) : locale;
}

void setSystemLocale(const std::optional<QLocale>& locale) { chosenLocale() = locale; }

}  // namespace platform
