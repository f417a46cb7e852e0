// The fields of a row of History: name=value of a row that was made or deleted, name=before>after of one that changed,
// joined by commas; values are literals of the engine.
#pragma once

#include "platform/data/Engine.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <vector>

namespace sorvanto {

struct HistoryField {
    QString name;
    QVariant before;  ///< of a change; else invalid
    QVariant after;   ///< of a deleted row its last value
    bool operator==(const HistoryField&) const = default;
};

/// The literals as they stand there: parts of the text that they were read from.
struct HistoryLiterals {
    QStringView name, before, after;
};

/// As readHistoryFields, but no value is made of a literal: for those who read many.
std::vector<HistoryLiterals> readHistoryLiterals(QStringView text);
/// The value of one.
QVariant historyValueOf(QStringView literal);

/// In the order in which they stand there. Texts come as QString, whole numbers as qint64, others as double, NULL as an
/// invalid value, what is none of these as the QString that stands there. Stops where the text is not of this form.
std::vector<HistoryField> readHistoryFields(const QString& text);

/// An expression for these columns of a row as the history would write it down.
QString fieldsSql(platform::Engine& database, const QString& table, const QStringList& columns);

}  // namespace sorvanto
