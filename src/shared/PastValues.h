// The values of a record as it was on a day, to be put into the boxes of today's record.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <cstdint>

namespace sorvanto {

struct PastValues {
    std::int64_t key = 0;          ///< of the record
    QString day;                   ///< as the user has chosen it
    QMap<QString, QVariant> then;  ///< of all columns of the record, as stored then
    QStringList changed;           ///< the columns that hold another value now
    QStringList lines;  ///< what differs in its lines, in the user's words: "Urea · Qty: 1.5, now 2"
};

class TakesPastValues {
public:
    virtual ~TakesPastValues() = default;
    /// Fills the boxes, as if they were typed; nothing is saved. What it could not do it says in the status line.
    virtual void useValues(const PastValues& past) = 0;
};

}  // namespace sorvanto
