// The reckoning shares nothing with the program but the rules of rounding.
#include "BatchCheck.h"

#include "RawDatabase.h"
#include "Stop.h"

#include "platform/basic/Dates.h"

#include <QRegularExpression>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tour {
namespace {

constexpr int minutesOfABatch = 10;

/// In units of the last decimal kept, half away from zero, judged on 15 digits as written.
long long rounded(double value, int decimals) {
    const long double written = QString::number(value, 'g', 15).toDouble();
    constexpr long double belowAnyDigit = 1e-7L;
    const long double scaled = written * std::pow(10.0L, decimals);
    return static_cast<long long>(std::floor(std::fabs(scaled) + 0.5L + belowAnyDigit)) *
           (scaled < 0 ? -1 : 1);
}

/// Money in ten-thousandths, a tie to the even neighbour.
long long money(double value) {
    const double written = QString::number(value, 'g', 15).toDouble();
    return std::llrint(QString::number(written * 10000, 'g', 15).toDouble());
}

int jarOf(int quantity) {
    const int largest[] = {15, 20, 30, 50, 100, 200, 300, 500, 1000};
    int jar = 1;
    while (quantity > largest[jar - 1])
        ++jar;
    return jar;
}

QString attribute(const QString& document, const QString& element) {
    const QRegularExpression pattern(u"<%1 Value=\"([^\"]*)\""_s.arg(element));
    const auto match = pattern.match(document);
    require(match.hasMatch(), u"the results hold no %1."_s.arg(element));
    return match.captured(1);
}

void requireNumber(const QString& what, long long found, long long expected) {
    requireSame(what, QString::number(found), QString::number(expected));
}

}  // namespace

BatchCheck::BatchCheck(const QString& database, const QString& formulaName, int quantity)
    : m_database(database), m_name(formulaName), m_quantity(quantity), m_jar(jarOf(quantity)) {
    const RawDatabase file(database);
    const QString quoted = QString(formulaName).replace('\''_L1, "''"_L1);
    const auto found =
        file.rows("SELECT FormulaID, frm_Quantity, frm_FormType, frm_Mix FROM Formula WHERE frm_Name = '" +
                  quoted + "'");
    require(found.size() == 1, u"there is no formula \"%1\" in the file."_s.arg(formulaName));
    m_formula = found.first()[0].toInt();
    m_type = found.first()[2].toInt();
    m_mix = found.first()[3];
    const double factor = quantity / found.first()[1].toDouble();
    double cost = 0, awp = 0;
    const auto lines = file.rows(u"SELECT c.ChemicalID, chm_Name, fch_Qty, chm_Cost, chm_AWP "
                                 u"FROM FormChem f JOIN Chemical c ON c.ChemicalID = f.ChemicalID "
                                 u"WHERE FormulaID = %1 ORDER BY FormChemID"_s.arg(m_formula));
    for (const QStringList& row : lines) {
        const double base = row[2].toDouble();
        const long long thousandths = rounded(base * factor, 3);
        const double scaled = static_cast<double>(thousandths) / 1000.0;
        m_lines.append({row[0].toInt(), row[1], thousandths, rounded(scaled * row[3].toDouble(), 2),
                        rounded(scaled * row[4].toDouble(), 2)});
        cost += row[3].toDouble() * base;
        awp += row[4].toDouble() * base;
    }
    m_cost = money(static_cast<double>(money(cost)) / 10000 * factor);
    m_awp = money(static_cast<double>(money(awp)) / 10000 * factor);
}

int BatchCheck::requireLogged(const QString& compounder, const QString& verifier) const {
    const RawDatabase file(m_database);
    const auto found =
        file.rows("SELECT LogID, FormulaID, log_Name, log_Quantity, log_JarSize, log_FormType, "
                  "log_Cost, log_AWP, log_Initials, log_Verified, log_Lot, log_Results, "
                  "log_Version, log_Mix, log_Date FROM Log ORDER BY LogID DESC LIMIT 1");
    require(!found.isEmpty(), "the log is empty.");
    const QStringList& row = found.first();
    requireNumber("the log's formula", row[1].toInt(), m_formula);
    requireSame("the log's name", row[2], m_name);
    requireNumber("the quantity", row[3].toInt(), m_quantity);
    requireNumber("the jar", row[4].toInt(), m_jar);
    requireNumber("the type", row[5].toInt(), m_type);
    requireNumber("the cost in ten-thousandths", money(row[6].toDouble()), m_cost);
    requireNumber("the AWP in ten-thousandths", money(row[7].toDouble()), m_awp);
    requireSame("the compounder", row[8], compounder);
    requireSame("the verifier", row[9], verifier);
    requireLot(row[11], row[10]);
    requireSame("the version", row[12], attribute(row[11], "HardwareVersion"));
    requireSame("the programme", row[13], m_mix);
    const auto made = QDateTime::fromString(QString(row[14]).replace(' ', 'T') + 'Z', Qt::ISODate);
    require(std::abs(made.secsTo(platform::now())) < qint64{60} * minutesOfABatch,
            u"the batch is dated %1."_s.arg(row[14]));
    requireLines(row[0].toInt());
    return row[0].toInt();
}

void BatchCheck::requireLot(const QString& results, const QString& lot) const {
    requireSame("the lot", lot, attribute(results, "Results") + attribute(results, "PreparationNumber"));
    require(!lot.isEmpty(), "the batch has no lot.");
}

void BatchCheck::requireLines(int log) const {
    const RawDatabase file(m_database);
    const auto found = file.rows(u"SELECT ChemicalID, lch_Name, lch_QTY, lch_Cost, lch_AWP FROM LogChem "
                                 u"WHERE LogID = %1 ORDER BY LogChemID"_s.arg(log));
    requireNumber("the number of lines", found.size(), m_lines.size());
    for (qsizetype i = 0; i < found.size(); ++i) {
        const QString which = u"line %1: "_s.arg(i + 1);
        requireNumber(which + "chemical", found[i][0].toInt(), m_lines[i].chemical);
        requireSame(which + "name", found[i][1], m_lines[i].name);
        requireNumber(which + "quantity in thousandths", std::llround(found[i][2].toDouble() * 1000),
                      m_lines[i].thousandths);
        requireNumber(which + "cost in ten-thousandths", money(found[i][3].toDouble()),
                      m_lines[i].cost * 100);
        requireNumber(which + "AWP in ten-thousandths", money(found[i][4].toDouble()), m_lines[i].awp * 100);
    }
}

}  // namespace tour
