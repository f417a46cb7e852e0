// The customs that default date texts and money texts follow: those of the user's system.
#pragma once

#include <QLocale>
#include <optional>

namespace platform {

/// The system's locale; US English where the system has none of its own (C and POSIX).
QLocale systemLocale();

/// Puts another locale in its place; std::nullopt restores the system's. For tests.
void setSystemLocale(const std::optional<QLocale>& locale);

}  // namespace platform
