// What sorvanto-report is asked for: the words of its command line, checked as far as they can be without
// the database.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <stdexcept>

namespace sorvanto {

enum class Paper {
    Worksheet,
    FormulaLog,
    BatchLabels,
    LogReport,
    JarUsage,
    RxLabels,
    Patient,
    Chemicals,
    Recall
};

/// One report to make. A field that the report doesn't take keeps its default.
struct Order {
    Paper paper = Paper::Worksheet;
    QString database;      ///< a file, or the address of a server
    QString pdf, xls;      ///< files to write; at least one is given
    int language = -1;     ///< number as in the options, -1: the one of the options
    QString options;       ///< file; empty: options.xml of the program's folder
    QString folder;        ///< the program's folder; empty: the one that the program itself would take
    std::int16_t key = 0;  ///< of the formula, batch, prescription or patient
    std::int16_t quantity = 0;
    std::int16_t labels = 0;
    int position = 0;  ///< 1 to 30, row by row
    QDateTime begin, end;
    QString lot, ndc, name, batch;  ///< what is recalled; without one of them the patient of the key
};

/// A command line that can't be followed; what() says why, in UTF-8.
class WrongUse : public std::runtime_error {
public:
    explicit WrongUse(const QString& why) : std::runtime_error(why.toStdString()) {}
};

/// Reads the arguments (without the program's name). Throws WrongUse.
Order readOrder(const QStringList& arguments);

/// Whether help is asked for, whatever else stands there.
bool asksForHelp(const QStringList& arguments);

/// Names of the languages in the order of their numbers.
const QStringList& languageNames();

/// What --help prints.
QString usage();

}  // namespace sorvanto
