// What a batch must look like in the log, reckoned from the recipe alone: quantities to three decimals and
// line prices to two, half away from zero; totals scaled from the unrounded ones.
#pragma once

#include <QList>
#include <QString>

namespace tour {

class BatchCheck {
public:
    /// Reads formula and chemicals as they are now, before the batch is made.
    BatchCheck(const QString& database, const QString& formulaName, int quantity);

    int formula() const { return m_formula; }
    /// Requires the newest log entry to be this batch, with these signatures; gives its key.
    int requireLogged(const QString& compounder, const QString& verifier) const;

private:
    struct Line {
        int chemical = 0;
        QString name;
        long long thousandths = 0, cost = 0, awp = 0;  ///< prices of the line in hundredths
    };

    void requireLines(int log) const;
    void requireLot(const QString& results, const QString& lot) const;

    QString m_database, m_name, m_mix;
    int m_formula = 0, m_quantity, m_jar = 0, m_type = 0;
    long long m_cost = 0, m_awp = 0;  ///< totals in ten-thousandths
    QList<Line> m_lines;
};

}  // namespace tour
