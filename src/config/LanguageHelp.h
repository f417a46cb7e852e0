// What stands beside the names of the languages: each language and its country as its own readers write them.
#pragma once

#include <QString>
#include <array>

namespace sorvanto {

/// By the number of the language.
inline const std::array<QString, 8> languageHelp{
    QStringLiteral("English"),    QString::fromUtf8("Español (España)"),
    QStringLiteral("Deutsch"),    QString::fromUtf8("Français (France)"),
    QString::fromUtf8("Русский"), QString::fromUtf8("Português (Portugal)"),
    QStringLiteral("Italiano"),   QString::fromUtf8("Français (Suisse)"),
};

}  // namespace sorvanto
