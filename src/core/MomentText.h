// A moment within a sentence.
#pragma once

#include <QDateTime>
#include <QString>

namespace sorvanto {

/// The time alone for today, else the day before it. moment: by the clock of the program, as platform::now().
QString momentText(const QDateTime& moment);

}  // namespace sorvanto
