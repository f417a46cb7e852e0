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
    static const QLocale other(QLocale::English, QLocale::UnitedStates);
    const QLocale locale = chosenLocale() ? *chosenLocale() : QLocale::system();
    return locale.language() == QLocale::C ? other : locale;
}

void setSystemLocale(const std::optional<QLocale>& locale) { chosenLocale() = locale; }

}  // namespace platform
