// The texts that are not the program's own: Qt's file and print dialogs, and the names of months and days
// in the calendar. Numbers, dates and money keep the ways of the user's system.
#pragma once

#include <QLocale>
#include <QString>

namespace platform {

/// From now on those texts are in this language. The folder is Qt's own one unless told; without a
/// catalogue for the language the dialogs stay in English.
void setSystemLanguage(const QLocale& language, const QString& folder = {});
/// The language set last; before that, the user's.
QLocale systemLanguage();

}  // namespace platform
