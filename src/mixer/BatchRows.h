// The rows of one batch exactly as the database stores them: what the journal takes down when a batch is signed.
// Names of columns lead to stored values as text; NULL is JSON's null. The mixer's side never looks into them
// beyond lot and moment.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

namespace sorvanto {

struct BatchRows {
    QJsonObject row;    ///< of the table Log, without its key
    QJsonArray lines;   ///< of the table LogChem, in their order, without both keys
    QString history{};  ///< where the history of the database stood then; no part of the batch

    bool empty() const { return row.isEmpty(); }
    QString lot() const { return row.value(QLatin1String("log_Lot")).toString(); }
    /// As stored: "2026-03-07 14:05:09".
    QString moment() const { return row.value(QLatin1String("log_Date")).toString(); }
    /// Equal in all columns that nobody can change after the signing: all but initials, verifier and notes.
    bool isSameBatch(const BatchRows& other) const;
    bool operator==(const BatchRows& other) const { return row == other.row && lines == other.lines; }

    QString toText() const;
    /// Empty for a text that is none.
    static BatchRows fromText(const QString& text);
};

}  // namespace sorvanto
