// What a cell of a spreadsheet holds: a number or a text, and the format of a number.
#pragma once

#include <QString>
#include <QVariant>
#include <optional>

namespace platform {

/// The value as a cell's number, where it is one: numbers, money, and dates from 1 March 1900 on, before which
/// spreadsheets count days differently.
std::optional<double> cellNumber(const QVariant& value);

/// A text as its cell holds it: line ends are the spreadsheet's and none is last, tabs are gaps.
QString cellText(QString text);

/// The format of a picture in the spreadsheet's own language.
QString numberFormatOf(const QString& picture);

}  // namespace platform
