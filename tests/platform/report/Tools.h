// Running the independent readers that tests measure with.
#pragma once

#include <QImage>
#include <QString>
#include <QStringList>
#include <vector>

namespace tools {

/// Output of a program; a program that is missing or fails fails the test.
QString output(const QString& program, const QStringList& arguments);

struct Word {
    int page;
    double left, top, right, bottom;  ///< points from the top left
    QString text;
};
/// The words of a PDF with their boxes.
std::vector<Word> words(const QString& pdf);
/// The word with that text; fails the test when there is none.
Word wordOf(const std::vector<Word>& all, const QString& text, int page = 1);

/// A page of a PDF as grey picture.
QImage picture(const QString& pdf, int page, int dotsPerInch);

/// Texts of all bar codes that the reader finds in the pictures, in their order.
QStringList barCodes(const std::vector<QImage>& images);

/// A spreadsheet as an independent reader sees it, a cell a line: row, column, type, value, format, bold.
QString cells(const QString& xls);

}  // namespace tools
