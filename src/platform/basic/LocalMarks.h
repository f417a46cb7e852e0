// Numbers for people: the system's own decimal and thousands marks in place of the point and the comma.
// Statements, XML and stored values keep the point and never come here.
#pragma once

#include <QLocale>
#include <QString>

namespace platform {

/// A number formatted by a picture (point, comma between thousands, any text around) with the locale's own
/// marks. Marks outside the digits stay, such as those of "Fr. 1,234.50"; a text without digits stays whole.
QString withLocalMarks(const QString& formatted, const QLocale& locale);

/// The same with the marks of systemLocale(): what paper, panel and screens show.
QString shownNumber(const QString& formatted);

}  // namespace platform
